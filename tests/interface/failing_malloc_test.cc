// A failing malloc() under the functions that name, look up and analyse for EBU R 123. The
// program's malloc() goes before that of the C library, also for the shared library under test and
// for the operator new that it uses. Linux with glibc only.
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstdlib>
#include <new>
#include <string>

#include "tests/library_under_test.h"

namespace {

constexpr int kNever = -1;
// Atomic, because a compiler may hold that malloc() touches no variable of the program.
std::atomic<int> mallocsUntilFailure{kNever};
std::atomic<int> mallocs{0};
std::atomic<int> liveBlocks{0};

}  // namespace

extern "C" {

void* __libc_malloc(std::size_t size);
void __libc_free(void* block);

__attribute__((visibility("default"))) void* malloc(std::size_t size) {
  ++mallocs;
  if (mallocsUntilFailure == 0) return nullptr;
  if (mallocsUntilFailure > 0) --mallocsUntilFailure;
  ++liveBlocks;
  return __libc_malloc(size);
}

__attribute__((visibility("default"))) void free(void* block) {
  if (block != nullptr) --liveBlocks;
  __libc_free(block);
}
}

namespace kestrel {
namespace {

const test::Library& lib = test::library();

// A description whose services do not fit into the analyser's room on the stack.
std::string longDescription() {
  std::string text = "T1=Mono";
  for (int i = 0; i < 200; ++i) text += ",Mono";
  return text;
}

struct Call {
  ServiceMapResult* const unwritten = reinterpret_cast<ServiceMapResult*>(0x10);
  std::string description = longDescription();
  AudioStreamInfo stream;
  ServiceMapResult* block = unwritten;
  std::int32_t count = -7;
  std::int32_t item = 5;

  Call() { stream.channelCount = 1; }

  void run(int mallocsBefore) {
    mallocsUntilFailure = mallocsBefore;
    try {
      lib.getServiceMapEbuR123(description.c_str(), 0, &stream, 1, &block, &count, &item);
    } catch (...) {
      mallocsUntilFailure = kNever;
      throw;
    }
    mallocsUntilFailure = kNever;
  }
};

TEST(FailingMalloc, TheR123AnalysisRaisesAndLeavesTheOutValues) {
  Call call;
  const int before = liveBlocks;
  bool raised = false;
  try {
    call.run(0);
  } catch (const std::bad_alloc&) {
    raised = true;
  }
  EXPECT_TRUE(raised);
  EXPECT_EQ(liveBlocks, before);
  EXPECT_EQ(call.block, call.unwritten);
  EXPECT_EQ(call.count, -7);
  EXPECT_EQ(call.item, 5);
}

TEST(FailingMalloc, TheR123BlockIsNullWithItsCountStored) {
  Call call;
  const int before = liveBlocks;
  call.run(1);  // the analyser's own room is had, the block is not
  EXPECT_EQ(call.block, nullptr);
  EXPECT_EQ(call.count, 0);
  EXPECT_EQ(call.item, 5);
  EXPECT_EQ(liveBlocks, before);
}

TEST(FailingMalloc, TheR123AnalysisWorksOnTheNextCall) {
  Call call;
  const int before = liveBlocks;
  call.run(kNever);
  EXPECT_NE(call.block, nullptr);
  EXPECT_NE(call.block, call.unwritten);
  EXPECT_EQ(liveBlocks, before + 1);
  std::free(call.block);
  EXPECT_EQ(liveBlocks, before);
}

TEST(FailingMalloc, NamingAndLookingUpAllocateNothing) {
  std::array<char, 128> buffer{};
  std::array<std::int32_t, 16> numbers{};
  const int before = mallocs;
  for (std::int32_t item = 0; item < NO_SERVICE_MAP_ITEM; ++item) {
    lib.getServiceMapItemName(item, buffer.data());
    lib.getServiceMapItemNameLength(item);
    lib.getServiceMapItemRow(item);
    lib.getStreamTypes(item, numbers.data());
    for (std::int32_t i = 0; i < lib.getStreamTypesCount(item); ++i) {
      lib.getStreamTypeNameLength(item, i);
      lib.getStreamTypeName(item, i, buffer.data());
    }
  }
  for (std::int32_t type = 0; type < 5; ++type) {
    lib.getStreamTypeSymbolic(type, buffer.data());
    lib.getStreamTypeSymbol(type);
    lib.getStreamTypeSymbolicLength(type);
    lib.streamTypeFromStr(buffer.data());
  }
  for (std::int32_t row = 0; row < lib.getRowCount(); ++row) {
    lib.getServiceMapItems(row, numbers.data());
    lib.getDefaultServiceMapItem(row);
    lib.getTracksCount(row);
  }
  lib.serviceMapItemFromStr("Stereo,5.1 Mix,Stereo,5.1 Mix,Stereo,5.1 Mix,Stereo");
  lib.GetServiceMapItemByAS11R123("a text that is longer than any small string: EBU R 123: 16F");
  EXPECT_EQ(mallocs, before);
}

}  // namespace
}  // namespace kestrel
