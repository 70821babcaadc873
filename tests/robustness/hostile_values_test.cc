// Values that a careless or hostile host may pass, for every parameter of every exported function:
// each call of the table is made on a small stack, in a process of its own where there is fork().
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <set>
#include <string>
#include <utility>

#include "tests/robustness/call_row.h"
#include "tests/robustness/declarations.h"
#include "tests/robustness/isolated.h"

namespace kestrel::test {
namespace {

using Parameters = std::set<std::pair<std::string, std::string>>;

TEST(HostileValues, AreAnsweredAsTheHeadersSay) {
  int failures = 0;
  const CallRows rows = callRows();
  RecordProperty("calls", static_cast<int>(rows.size()));
  for (const CallRow& row : rows) {
    const Answer answer = askIsolated(row);
    if (answer == row.expected) continue;
    ADD_FAILURE() << nameOf(row) << "\n  answered " << answer << "\n  expected " << row.expected;
    if (++failures == 100) FAIL() << "and more";
  }
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

// A crash must not be taken for an answer, nor a wrong answer for a right one.
TEST(HostileValues, ACrashNamesItsRow) {
#if defined(_WIN32)
  GTEST_SKIP() << "all calls are made in this process";
#else
  const CallRow crash{"f", "p", "v", [](const Around&) -> Answer { std::abort(); }, {"", ""}};
  EXPECT_EQ(askIsolated(crash).end, "signal 6");
  const CallRow fails{"f", "p", "v", [](const Around&) -> Answer { throw std::bad_alloc(); }, {}};
  EXPECT_EQ(askIsolated(fails).end, "the row raised std::bad_alloc");
#endif
}

}  // namespace
}  // namespace kestrel::test
