// What the library does when memory runs out, allocation by allocation. The functions of this
// program that hand out and take back memory replace those of the standard library, for the shared
// library too; they count the blocks and can be told to fail.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <new>
#include <string>
#include <vector>

#include "api/kestrel.h"
#include "api/service_map.h"
#include "tests/c_api/c_request.h"

namespace {

std::int64_t liveBlocks = 0;
std::int64_t blocksToFailure = -1;  // -1: none fails
std::int64_t allocations = 0;

void* allocate(std::size_t size, std::size_t alignment) noexcept {
  ++allocations;
  if (blocksToFailure > 0 && --blocksToFailure == 0) return nullptr;
  const std::size_t rounded = (size + alignment) / alignment * alignment;
  void* const block = std::aligned_alloc(alignment, rounded);
  if (block != nullptr) ++liveBlocks;
  return block;
}

void* allocateOrThrow(std::size_t size, std::size_t alignment) {
  void* const block = allocate(size, alignment);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

void release(void* block) noexcept {
  if (block != nullptr) --liveBlocks;
  std::free(block);
}

constexpr std::size_t kAlignment = alignof(std::max_align_t);
std::size_t in(std::align_val_t alignment) { return static_cast<std::size_t>(alignment); }

}  // namespace

// The standard library's other forms of new and delete call these.
void* operator new(std::size_t size) { return allocateOrThrow(size, kAlignment); }
void* operator new(std::size_t size, std::align_val_t a) { return allocateOrThrow(size, in(a)); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return allocate(size, kAlignment);
}
void operator delete(void* block) noexcept { release(block); }
void operator delete(void* block, std::size_t) noexcept { release(block); }
void operator delete(void* block, std::align_val_t) noexcept { release(block); }
void operator delete(void* block, std::size_t, std::align_val_t) noexcept { release(block); }

namespace kestrel::test {
namespace {

// How a call ended, and what became of memory meanwhile.
struct Trial {
  KestrelStatus status = KESTREL_OK;
  std::int64_t allocations = 0;
  std::int64_t kept = 0;
  bool failed = false;  // an allocation did
};

using Call = std::function<KestrelStatus()>;

// Calls with the `failing`-th allocation failing; with 0 none fails.
Trial tryWith(std::int64_t failing, const Call& call) {
  Trial trial;
  const std::int64_t liveBefore = liveBlocks;
  allocations = 0;
  blocksToFailure = failing == 0 ? -1 : failing;
  trial.status = call();
  trial.failed = blocksToFailure == 0;
  blocksToFailure = -1;
  trial.allocations = allocations;
  trial.kept = liveBlocks - liveBefore;
  return trial;
}

// Lets each allocation of a call fail in turn, and `checkFailure` look at what it left behind. In
// the end the call passes; returns how many allocations it makes.
std::int64_t failEachAllocation(const Call& call, const std::function<void()>& checkFailure) {
  for (std::int64_t failing = 1;; ++failing) {
    const Trial trial = tryWith(failing, call);
    if (!trial.failed) {
      EXPECT_EQ(trial.status, KESTREL_OK);
      return trial.allocations;
    }
    SCOPED_TRACE(failing);
    EXPECT_EQ(trial.status, KESTREL_OUT_OF_MEMORY);
    EXPECT_EQ(trial.kept, 0) << "blocks are left behind";
    checkFailure();
  }
}

// --- A file with findings of all kinds

const std::vector<KestrelStream> kFiles[] = {
    {},
    {stream("1", 6, "L X L LFE  Rs"), stream("2", 2), pairCoded("3-1", 40, 1),
     pairCoded("3-2", 2, 2), stream("4 with an id that takes storage of its own", 3)},
    {stream("1", 6, "Rs Ls LFE C R L"), stream("2", 7)},
    {stream("1", 1), stream("2", 7)},
};

const char kDescription[] =
    "T13=5.1 Mix,Stereo,EMCA,A name that nobody knows and that takes storage,,Mono;"
    "T13=Mono;T8=-5.1 Mix,5.1 Mix,x";

// Asks for all services of a file, with an order that takes storage of its own.
KestrelRequest requestFor(const std::vector<KestrelStream>& streams) {
  KestrelRequest made = request(kDescription, streams);
  made.surroundChannelOrder = "L R C LFE Ls Rs, and more that takes storage of its own \xC3\xA9";
  made.reportAll = 1;
  return made;
}

Analysis analysed(const KestrelRequest& asked) {
  KestrelAnalysis* analysis = nullptr;
  EXPECT_EQ(kestrelAnalyse(&asked, &analysis, nullptr, nullptr), KESTREL_OK);
  return Analysis(analysis);
}

std::int32_t countOf(const Analysis& analysis,
                     KestrelStatus (*count)(const KestrelAnalysis*, std::int32_t*)) {
  std::int32_t number = -1;
  EXPECT_EQ(count(analysis.get(), &number), KESTREL_OK);
  return number;
}

// The sentences of an analysis and the labels of its services.
std::vector<std::string> textsOf(const Analysis& analysis) {
  std::vector<std::string> texts;
  for (std::int32_t i = 0; i < countOf(analysis, kestrelFindingCount); ++i) {
    char text[1000] = "";
    std::size_t needed = 0;
    EXPECT_EQ(kestrelFindingText(analysis.get(), i, text, sizeof text, &needed), KESTREL_OK);
    texts.emplace_back(text);
  }
  for (std::int32_t i = 0; i < countOf(analysis, kestrelServiceCount); ++i) {
    KestrelService service{};
    service.structSize = sizeof service;
    EXPECT_EQ(kestrelGetService(analysis.get(), i, &service), KESTREL_OK);
    texts.emplace_back(service.label);
  }
  return texts;
}

// --- Analyses

TEST(COutOfMemory, AnAnalysisIsMadeInFullOrNotAtAll) {
  for (const std::vector<KestrelStream>& streams : kFiles) {
    const KestrelRequest asked = requestFor(streams);
    const std::vector<std::string> expected = textsOf(analysed(asked));
    char elsewhere = 0;
    KestrelAnalysis* analysis = nullptr;
    std::size_t badByte = 77;
    std::int32_t badStream = 77;
    const auto analyse = [&] {
      analysis = reinterpret_cast<KestrelAnalysis*>(&elsewhere);
      return kestrelAnalyse(&asked, &analysis, &badByte, &badStream);
    };
    const std::int64_t made = failEachAllocation(analyse, [&] {
      EXPECT_EQ(analysis, nullptr);
      EXPECT_EQ(badByte, 77U);
      EXPECT_EQ(badStream, 77);
      EXPECT_EQ(textsOf(analysed(asked)), expected) << "the call after a failure";
    });
    EXPECT_GT(made, 0) << "the functions of this program are not those that the library calls";
    EXPECT_EQ(textsOf(Analysis(analysis)), expected);
  }
}

TEST(COutOfMemory, AFreedAnalysisKeepsNoBlock) {
  for (const std::vector<KestrelStream>& streams : kFiles) {
    const KestrelRequest asked = requestFor(streams);
    const Trial trial = tryWith(0, [&] {
      KestrelAnalysis* analysis = nullptr;
      const KestrelStatus status = kestrelAnalyse(&asked, &analysis, nullptr, nullptr);
      kestrelFreeAnalysis(analysis);
      return status;
    });
    EXPECT_EQ(trial.status, KESTREL_OK);
    EXPECT_EQ(trial.kept, 0);
  }
}

TEST(COutOfMemory, ARefusedRequestKeepsNoBlock) {
  std::vector<KestrelStream> streams = kFiles[1];
  streams.back().trackLabels = "a text with a bad byte at its end that takes storage \xFF";
  const KestrelRequest asked = requestFor(streams);
  KestrelAnalysis* analysis = nullptr;
  const auto analyse = [&] { return kestrelAnalyse(&asked, &analysis, nullptr, nullptr); };
  EXPECT_EQ(tryWith(0, analyse).status, KESTREL_BAD_TEXT);
  EXPECT_EQ(tryWith(0, analyse).kept, 0);
}

// --- Reading

TEST(COutOfMemory, ASentenceIsWrittenInFullOrNotAtAll) {
  for (const std::vector<KestrelStream>& streams : kFiles) {
    const Analysis analysis = analysed(requestFor(streams));
    const std::vector<std::string> expected = textsOf(analysis);
    const std::int32_t count = countOf(analysis, kestrelFindingCount);
    ASSERT_GT(count, 0);
    for (std::int32_t i = 0; i < count; ++i) {
      char text[1000] = "as it was";
      std::size_t needed = 77;
      const auto render = [&] {
        return kestrelFindingText(analysis.get(), i, text, sizeof text, &needed);
      };
      failEachAllocation(render, [&] {
        EXPECT_STREQ(text, "as it was");
        EXPECT_EQ(needed, 77U);
      });
      EXPECT_EQ(text, expected[static_cast<std::size_t>(i)]);
    }
  }
}

TEST(COutOfMemory, ReadingTheRestOfAnAnalysisTakesNoMemory) {
  const Analysis owner = analysed(requestFor(kFiles[1]));
  const KestrelAnalysis* analysis = owner.get();
  std::int32_t number = 0;
  std::uint32_t total = 0;
  std::int32_t totals[8];
  std::size_t needed = 0;
  KestrelService service{};
  KestrelFinding finding{};
  service.structSize = sizeof service;
  finding.structSize = sizeof finding;
  const Call calls[] = {
      [&] { return kestrelOutcome(analysis, &number, &total); },
      [&] { return kestrelServiceCount(analysis, &number); },
      [&] { return kestrelGetService(analysis, 0, &service); },
      [&] { return kestrelFindingCount(analysis, &number); },
      [&] { return kestrelGetFinding(analysis, 0, &finding); },
      [&] { return kestrelDescribedTotals(analysis, totals, 8, &needed); },
  };
  for (const Call& call : calls) {
    const Trial trial = tryWith(1, call);
    EXPECT_EQ(trial.status, KESTREL_OK) << &call - calls;
    EXPECT_EQ(trial.allocations, 0) << &call - calls;
  }
}

TEST(COutOfMemory, TheCatalogueTakesNoMemory) {
  std::int32_t numbers[16];
  const char* constant = nullptr;
  char text[200];
  std::size_t needed = 0;
  const Call calls[] = {
      [&] { return kestrelCatalogueSize(&numbers[0], &numbers[1], &numbers[2]); },
      [&] { return kestrelRowTracks(6, numbers); },
      [&] { return kestrelRowItems(5, numbers, 16, &needed); },
      [&] { return kestrelRowDefaultItem(6, numbers); },
      [&] { return kestrelItemRow(40, numbers); },
      [&] { return kestrelItemName(40, &constant); },
      [&] { return kestrelItemFromName("5.1 Mix + 2x Mono + Stereo + 6x Mono", numbers); },
      [&] { return kestrelItemStreamTypes(40, numbers, 16, &needed); },
      [&] { return kestrelItemText(40, text, sizeof text, &needed); },
      [&] { return kestrelItemFromText(text, numbers); },
      [&] { return kestrelItemStreamName(40, 9, text, sizeof text, &needed); },
      [&] { return kestrelStreamTypeName(4, &constant); },
      [&] { return kestrelStreamTypeTracks(4, numbers); },
      [&] { return kestrelStreamTypeFromName("Dolby E", numbers); },
      [&] { return kestrelItemFromLayoutCode("a long text with a layout code: 16f", numbers); },
      [&] { return kestrelLayoutCode(21, &constant, numbers); },
  };
  for (const Call& call : calls) {
    const Trial trial = tryWith(1, call);
    EXPECT_EQ(trial.status, KESTREL_OK) << &call - calls;
    EXPECT_EQ(trial.allocations, 0) << &call - calls;
  }
}

// --- The C++ analysis

const char* const kHostLabel = "a label of the host that takes storage of its own";

std::vector<ServiceMapResult> hostRecords() {
  std::vector<ServiceMapResult> records(2);
  records[1].trackCount = -77;
  records[1].label.assign(kHostLabel, kHostLabel + std::strlen(kHostLabel));
  return records;
}

std::vector<AudioStreamInfo> cppStreams() {
  std::vector<AudioStreamInfo> streams(2);
  streams[0].streamId = L"1";
  streams[0].trackLabels = L"Rs Ls LFE C R L  and more that takes storage of its own";
  streams[0].channelCount = 6;
  streams[1].streamId = L"2-1";
  streams[1].channelCount = 2;
  streams[1].isPairCoded = 1;
  return streams;
}

TEST(COutOfMemory, GetServiceMapThrowsAndLeavesTheVectorAsItWas) {
  const std::vector<AudioStreamInfo> streams = cppStreams();
  std::vector<ServiceMapResult> records = hostRecords();
  const ServiceMapResult* const storage = records.data();
  const auto call = [&] {
    try {
      const std::int32_t returned =
          getServiceMap("T2=Stereo;T8=5.1 Mix,EMCA,An unknown name that takes storage", L"L R", 0,
                        streams.data(), 2, &records, 1, 1);
      return returned == 1 ? KESTREL_OK : KESTREL_BAD_COUNT;
    } catch (const std::bad_alloc&) {
      return KESTREL_OUT_OF_MEMORY;
    }
  };
  const std::int64_t made = failEachAllocation(call, [&] {
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records.data(), storage);
    EXPECT_EQ(records[1].trackCount, -77);
    EXPECT_EQ(records[1].label, hostRecords()[1].label);
  });
  EXPECT_GT(made, 0);
  ASSERT_EQ(records.size(), 3U);
  EXPECT_EQ(records[0].label, L"Rs Ls LFE C R L");
}

TEST(COutOfMemory, GetServiceMapKeepsNothingButTheRecords) {
  const std::vector<AudioStreamInfo> streams = cppStreams();
  const Trial trial = tryWith(0, [&] {
    std::vector<ServiceMapResult> records = hostRecords();
    getServiceMap("T8=5.1 Mix,EMCA", L"", 0, streams.data(), 2, &records, 0, 1);
    return records.size() == 2 ? KESTREL_OK : KESTREL_BAD_COUNT;
  });
  EXPECT_EQ(trial.status, KESTREL_OK);
  EXPECT_EQ(trial.kept, 0);
}

}  // namespace
}  // namespace kestrel::test
