// What every function of the interface does when memory runs out: each call of the table is made
// again and again, with its first allocation failing, its second, and so on until it passes; alone
// and with all allocations behind it.
#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>

#include "api/kestrel.h"
#include "tests/robustness/asking.h"
#include "tests/robustness/call_row.h"
#include "tests/robustness/declarations.h"
#include "tests/robustness/failing_memory.h"

namespace kestrel::test {
namespace {

struct Trial {
  Answer answer;
  MemoryUse use;
};

Trial tryRow(const CallRow& row, std::int64_t failing, Lasting lasting = Lasting::kNo) {
  Trial trial;
  trial.answer = row.ask(
      [&](const std::function<void()>& call) { trial.use = withFailing(failing, lasting, call); });
  return trial;
}

bool isPlainC(const std::string& function) { return function.starts_with("kestrel"); }

// Whether an error is raised in the course of the call, be it behind the barrier of the plain C
// interface: for an unknown id, and for a request that is refused.
bool raisesInside(const CallRow& row) {
  const std::string& end = row.expected.end;
  if (row.function == "kestrelAnalyse") return end != returned(KESTREL_OK);
  return end == (isPlainC(row.function) ? returned(KESTREL_UNKNOWN_ID) : std::string(kOutOfRange));
}

// What the headers say about a call that finds no memory: all out-values are as they were, but for
// the analysis that is NULL on failure.
Answer statedFailure(const CallRow& row) {
  const std::string written = raisesInside(row) ? row.expected.written : "";
  if (!isPlainC(row.function)) return {kBadAlloc, written};
  return {returned(KESTREL_OUT_OF_MEMORY), row.function == "kestrelAnalyse" ? "no analysis" : ""};
}

// Two calls may end otherwise. The EBU R 123 analysis gives its count and no block where the block
// alone cannot be had. The room for an error that is raised can come from the C++ run-time's
// reserve; only where its text cannot be had std::bad_alloc takes its place.
bool isStatedFailure(const CallRow& row, const Answer& answer) {
  if (answer == statedFailure(row)) return true;
  if (raisesInside(row)) return answer == row.expected;
  return row.function == "getServiceMapEbuR123" && answer == Answer{kReturned, "no block of 0"};
}

// Lets each allocation fail in turn and returns how many there are.
std::int64_t failEachAllocation(const CallRow& row, Lasting lasting) {
  for (std::int64_t failing = 1;; ++failing) {
    const Trial trial = tryRow(row, failing, lasting);
    if (!trial.use.failed) {
      EXPECT_EQ(trial.answer, row.expected) << "the call that passes";
      return trial.use.allocations;
    }
    SCOPED_TRACE(failing);
    EXPECT_TRUE(isStatedFailure(row, trial.answer)) << trial.answer;
    EXPECT_EQ(trial.use.kept, 0) << "blocks are left behind";
    EXPECT_EQ(tryRow(row, 0).answer, row.expected) << "the call after the failure";
    if (testing::Test::HasFailure()) return failing;
  }
}

// Functions that may ask for memory; for an unknown id any function may, since it raises an error.
const std::set<std::string> kAllocating = {"getServiceMap", "getServiceMapEbuR123",
                                           "kestrelAnalyse", "kestrelFindingText"};

bool mayAllocate(const CallRow& row) {
  return kAllocating.contains(row.function) || raisesInside(row);
}

TEST(OutOfMemory, LeavesEverythingAsItWas) {
  std::set<std::string> allocating;
  for (const CallRow& row : callRows()) {
    SCOPED_TRACE(nameOf(row));
    const std::int64_t made = failEachAllocation(row, Lasting::kNo);
    failEachAllocation(row, Lasting::kYes);
    EXPECT_TRUE(made == 0 || mayAllocate(row)) << made;
    if (made > 0 && !raisesInside(row)) allocating.insert(row.function);
    if (HasFailure()) break;
  }
  EXPECT_EQ(allocating, kAllocating) << "these have rows that take memory";
}

TEST(OutOfMemory, NoBlockIsKeptByACallThatPasses) {
  for (const CallRow& row : callRows()) {
    tryRow(row, 0);  // what this program makes at its first use
    const std::int64_t before = liveBlocks();
    tryRow(row, 0);
    EXPECT_EQ(liveBlocks(), before) << nameOf(row);
  }
}

TEST(OutOfMemory, IsTriedForEveryExportedName) {
  std::set<std::string> tried;
  for (const CallRow& row : callRows()) tried.insert(row.function);
  EXPECT_EQ(tried, namesIn(KESTREL_API_DIRECTORY "/exported_names.txt"));
}

}  // namespace
}  // namespace kestrel::test
