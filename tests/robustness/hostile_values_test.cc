// Values that a careless or hostile host may pass, for every parameter of every exported function;
// the calls are made on a small stack, and in processes of their own where there is fork().
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <new>
#include <set>
#include <string>
#include <utility>
#include <vector>

#if !defined(_WIN32)
#include <unistd.h>
#endif

#include "tests/robustness/call_row.h"
#include "tests/robustness/declarations.h"
#include "tests/robustness/isolated.h"

namespace kestrel::test {
namespace {

using Parameters = std::set<std::pair<std::string, std::string>>;

TEST(HostileValues, AreAnsweredAsTheHeadersSay) {
  const CallRows rows = callRows();
  RecordProperty("calls", static_cast<int>(rows.size()));
  const std::vector<Answer> answers = askIsolated(rows);
  ASSERT_EQ(answers.size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i)
    EXPECT_EQ(answers[i], rows[i].expected) << nameOf(rows[i]);
}

// Every row is about a parameter of its function, and every parameter has rows; a function without
// any has a row that is about none.
TEST(HostileValues, AreTriedForEveryParameterOfEveryFunction) {
  Parameters declared;
  for (const auto& [function, parameters] : declarations(KESTREL_API_DIRECTORY)) {
    for (const std::string& parameter : parameters) declared.emplace(function, parameter);
    if (parameters.empty()) declared.emplace(function, "");
  }
  Parameters tried;
  for (const CallRow& row : callRows()) tried.emplace(row.function, row.parameter);
  EXPECT_EQ(tried, declared);
}

TEST(HostileValues, AreTriedForEveryExportedName) {
  std::set<std::string> tried;
  for (const CallRow& row : callRows()) tried.insert(row.function);
  EXPECT_EQ(tried, namesIn(KESTREL_API_DIRECTORY "/exported_names.txt"));
}

#if !defined(_WIN32)  // where all calls are made in this process
TEST(HostileValues, ACrashNamesItsRowAndEndsNoOther) {
  const auto rowThat = [](auto ask) { return CallRow{"f", "p", "v", ask, {}}; };
  const auto answers = askIsolated({
      rowThat([](const Around&) {
        return Answer{"first", "a"};
      }),
      rowThat([](const Around&) -> Answer { std::abort(); }),
      rowThat([](const Around&) -> Answer { throw std::bad_alloc(); }),
      rowThat([](const Around&) -> Answer { _exit(0); }),
      rowThat([](const Around&) {
        return Answer{"last", ""};
      }),
  });
  const std::vector<Answer> expected = {{"first", "a"},
                                        {"signal 6", ""},
                                        {"the row raised std::bad_alloc", ""},
                                        {"the process ended with status 0", ""},
                                        {"last", ""}};
  EXPECT_EQ(answers, expected);
}
#endif

}  // namespace
}  // namespace kestrel::test
