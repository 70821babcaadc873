// The plain C header as a C++ host sees it: the records stand where C puts them, the numbers are
// those that were given out once, and the header belongs to the library it is used with.
#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

#include "api/catalogue_ids.h"
#include "api/kestrel.h"
#include "api/service_map_result.h"
#include "tests/c_api/c_record_offsets.h"

namespace kestrel::test {
namespace {

// --- Records

// Sizes and offsets stand in c_record_offsets.h, for C as well.
static_assert(alignof(KestrelStream) == 8 && alignof(KestrelRequest) == 8);
static_assert(alignof(KestrelTrack) == 8 && alignof(KestrelService) == 8);
static_assert(alignof(KestrelFinding) == 8);
static_assert(sizeof(KestrelStream::reserved) == 6 && sizeof(KestrelRequest::reserved) == 2);
static_assert(sizeof(KestrelService::reserved) == 5);
static_assert(sizeof(KestrelTrack) == sizeof(TrackSlot));
static_assert(KESTREL_SLOTS == kSlotCount);

// A host may clear, copy and move the records as plain bytes.
template <class... Records>
constexpr bool kArePlain = (std::is_trivial_v<Records> && ...) &&
                           (std::is_standard_layout_v<Records> && ...);
static_assert(
    kArePlain<KestrelStream, KestrelRequest, KestrelTrack, KestrelService, KestrelFinding>);

// --- Numbers

static_assert(std::is_same_v<KestrelStatus, std::int32_t>);
static_assert(KESTREL_OK == 0 && KESTREL_UNKNOWN_ID == 1 && KESTREL_UNKNOWN_NAME == 2);
static_assert(KESTREL_BUFFER_TOO_SMALL == 3 && KESTREL_NULL_ARGUMENT == 4);
static_assert(KESTREL_BAD_TEXT == 5 && KESTREL_BAD_COUNT == 6 && KESTREL_BAD_RECORD_SIZE == 7);
static_assert(KESTREL_BAD_INDEX == 8 && KESTREL_OUT_OF_MEMORY == 9);

static_assert(KESTREL_MONO == kMono && KESTREL_STEREO == kStereo && KESTREL_51_MIX == k51Mix);
static_assert(KESTREL_71_MIX == k71Mix && KESTREL_DOLBY_E == kDolbyE && KESTREL_EMCA == kEmca);
static_assert(KESTREL_UNKNOWN == kUnknown);

static_assert(KESTREL_UNTOUCHED == 0 && KESTREL_EMPTIED == 1 && KESTREL_FILLED == 2);

static_assert(KESTREL_NO_STREAMS == 1 && KESTREL_NO_ENTRY == 2 && KESTREL_PAIR_CODED_TRACK == 3);
static_assert(KESTREL_PLAIN_TRACK == 4 && KESTREL_TOO_FEW_TRACKS == 5);
static_assert(KESTREL_KEY1_DIFFERS == 6 && KESTREL_KEY2_DIFFERS == 7 && KESTREL_KEY3_DIFFERS == 8);
static_assert(KESTREL_UNKNOWN_SERVICE == 101 && KESTREL_EMPTY_ELEMENT == 102);
static_assert(KESTREL_TRACKS_LEFT_OVER == 103 && KESTREL_LABEL_MISSING == 104);
static_assert(KESTREL_LABEL_UNKNOWN == 105 && KESTREL_LABEL_DOUBLED == 106);
static_assert(KESTREL_LABELS_REORDERED == 107 && KESTREL_RUN_TOO_LONG == 108);
static_assert(KESTREL_SERVICE_WITHOUT_TRACK == 109);

// --- The library behind the header

TEST(CHeader, IsTheOneTheLibraryWasBuiltWith) {
  EXPECT_STREQ(kestrelVersion(), KESTREL_VERSION);
  EXPECT_EQ(kestrelAbiVersion(), KESTREL_ABI);
}

TEST(CHeader, TheVersionIsWrittenOfItsThreeNumbers) {
  EXPECT_EQ(std::to_string(KESTREL_VERSION_MAJOR) + "." + std::to_string(KESTREL_VERSION_MINOR) +
                "." + std::to_string(KESTREL_VERSION_PATCH),
            KESTREL_VERSION);
}

TEST(CHeader, ConstantsStayWhereTheyAre) {
  EXPECT_EQ(kestrelVersion(), kestrelVersion());
  EXPECT_EQ(kestrelStatusText(KESTREL_BAD_TEXT), kestrelStatusText(KESTREL_BAD_TEXT));
}

TEST(StatusText, EveryStatusHasAPhraseOfItsOwn) {
  const std::vector<std::string> phrases = {
      "ok",
      "unknown id",
      "unknown name",
      "buffer too small",
      "NULL argument",
      "text is not UTF-8",
      "bad count",
      "bad record size",
      "index out of range",
      "out of memory",
  };
  for (KestrelStatus status = KESTREL_OK; status <= KESTREL_OUT_OF_MEMORY; ++status) {
    EXPECT_EQ(kestrelStatusText(status), phrases.at(static_cast<std::size_t>(status)));
  }
}

TEST(StatusText, AnyOtherNumberIsAnUnknownStatus) {
  for (const KestrelStatus status : {-1, 10, 11, 100, INT_MAX, INT_MIN}) {
    EXPECT_STREQ(kestrelStatusText(status), "unknown status") << status;
  }
}

}  // namespace
}  // namespace kestrel::test
