// Requests and analyses of the plain C interface: what is refused and what it leaves behind,
// records of other releases, texts of every kind, and sizes that a file never has.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "api/kestrel.h"
#include "tests/small_stack.h"

namespace kestrel::test {
namespace {

constexpr char kSixLabels[] = "L R C LFE Ls Rs";
constexpr std::size_t kMegabyte = 1024 * 1024;

KestrelStream stream(const char* id, std::int32_t channelCount, const char* labels = "") {
  KestrelStream made{};
  made.structSize = sizeof made;
  made.streamId = id;
  made.trackLabels = labels;
  made.channelCount = channelCount;
  return made;
}

KestrelStream sharedPair(const char* id, std::int32_t channelCount, std::int32_t group) {
  KestrelStream made = stream(id, channelCount);
  made.group = group;
  made.isPairCoded = 1;
  made.isPairShared = 1;
  return made;
}

KestrelRequest request(const char* description, const std::vector<KestrelStream>& streams) {
  KestrelRequest made{};
  made.structSize = sizeof made;
  made.layoutDescription = description;
  made.surroundChannelOrder = kSixLabels;
  made.streams = streams.data();
  made.streamCount = static_cast<std::int32_t>(streams.size());
  made.streamStride = sizeof(KestrelStream);
  made.surroundCheck = 1;
  return made;
}

struct Freer {
  void operator()(KestrelAnalysis* analysis) const { kestrelFreeAnalysis(analysis); }
};
using Analysis = std::unique_ptr<KestrelAnalysis, Freer>;

// The analysis of a request that is in order.
Analysis analysed(const KestrelRequest& request) {
  KestrelAnalysis* analysis = nullptr;
  std::size_t badByte = 77;
  std::int32_t badStream = 77;
  EXPECT_EQ(kestrelAnalyse(&request, &analysis, &badByte, &badStream), KESTREL_OK);
  EXPECT_NE(analysis, nullptr);
  EXPECT_EQ(badByte, 77U);
  EXPECT_EQ(badStream, 77);
  return Analysis(analysis);
}

struct Refusal {
  KestrelStatus status;
  std::size_t badByte;
  std::int32_t badStream;
  bool operator==(const Refusal&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Refusal& refusal) {
  return out << kestrelStatusText(refusal.status) << ", byte " << refusal.badByte << " of stream "
             << refusal.badStream;
}

// What a refused request leaves behind; the two places stay 77 where none is written.
Refusal refusalOf(const KestrelRequest* request) {
  char elsewhere = 0;
  auto* analysis = reinterpret_cast<KestrelAnalysis*>(&elsewhere);
  Refusal refusal{KESTREL_OK, 77, 77};
  refusal.status = kestrelAnalyse(request, &analysis, &refusal.badByte, &refusal.badStream);
  EXPECT_EQ(analysis, nullptr);
  return refusal;
}

Refusal refusal(KestrelStatus status) { return {status, 77, 77}; }

std::int32_t outcomeOf(const Analysis& analysis) {
  std::int32_t outcome = -1;
  EXPECT_EQ(kestrelOutcome(analysis.get(), &outcome, nullptr), KESTREL_OK);
  return outcome;
}

std::int32_t serviceCount(const Analysis& analysis) {
  std::int32_t count = -1;
  EXPECT_EQ(kestrelServiceCount(analysis.get(), &count), KESTREL_OK);
  return count;
}

std::int32_t findingCount(const Analysis& analysis) {
  std::int32_t count = -1;
  EXPECT_EQ(kestrelFindingCount(analysis.get(), &count), KESTREL_OK);
  return count;
}

KestrelService serviceAt(const Analysis& analysis, std::int32_t index) {
  KestrelService service{};
  service.structSize = sizeof service;
  EXPECT_EQ(kestrelGetService(analysis.get(), index, &service), KESTREL_OK) << index;
  return service;
}

KestrelFinding findingAt(const Analysis& analysis, std::int32_t index) {
  KestrelFinding finding{};
  finding.structSize = sizeof finding;
  EXPECT_EQ(kestrelGetFinding(analysis.get(), index, &finding), KESTREL_OK) << index;
  return finding;
}

std::string sentenceAt(const Analysis& analysis, std::int32_t index) {
  std::size_t needed = 0;
  EXPECT_EQ(kestrelFindingText(analysis.get(), index, nullptr, 0, &needed),
            KESTREL_BUFFER_TOO_SMALL);
  std::string text(needed, '?');
  EXPECT_EQ(kestrelFindingText(analysis.get(), index, text.data(), needed, &needed), KESTREL_OK);
  return text.c_str();
}

// --- Outcomes

TEST(CAnalysis, TellsTheOutcomeAndTheTrackTotal) {
  KestrelStream other = stream("2", 1);
  other.formatKey2 = 16;
  const struct {
    std::vector<KestrelStream> streams;
    std::int32_t outcome;
    std::uint32_t total;
    std::int32_t services;
  } rows[] = {{{stream("1", 2)}, KESTREL_FILLED, 2, 1},
              {{stream("1", 1), other}, KESTREL_EMPTIED, 2, 0},
              {{stream("1", 3)}, KESTREL_UNTOUCHED, 3, 0},
              {{stream("1", -1)}, KESTREL_UNTOUCHED, 4294967295U, 0},
              {{}, KESTREL_UNTOUCHED, 0, 0}};
  for (const auto& row : rows) {
    const Analysis analysis = analysed(request("T2=Stereo", row.streams));
    std::int32_t outcome = -1;
    std::uint32_t total = 77;
    EXPECT_EQ(kestrelOutcome(analysis.get(), &outcome, &total), KESTREL_OK);
    EXPECT_EQ(outcome, row.outcome);
    EXPECT_EQ(total, row.total);
    EXPECT_EQ(serviceCount(analysis), row.services);
  }
}

TEST(CAnalysis, KeepsNothingOfTheRequest) {
  std::string description = "T8=5.1 Mix,Stereo,Other";
  std::string labels = "Rs Ls LFE C R L";
  std::vector<KestrelStream> streams = {stream("1", 8, labels.c_str())};
  const Analysis analysis = analysed(request(description.c_str(), streams));
  const std::string sentence = sentenceAt(analysis, 0);
  std::fill(description.begin(), description.end(), '#');
  std::fill(labels.begin(), labels.end(), '#');
  streams.assign(1, KestrelStream{});
  EXPECT_STREQ(serviceAt(analysis, 0).label, "Rs Ls LFE C R L");
  EXPECT_EQ(sentenceAt(analysis, 0), sentence);
}

TEST(CAnalysis, ReportAllReportsServicesBehindAHyphen) {
  const std::vector<KestrelStream> streams = {stream("1", 4)};
  KestrelRequest asked = request("T4=-Stereo,Stereo", streams);
  EXPECT_EQ(serviceAt(analysed(asked), 0).serviceIndex, 1);
  for (const int yes : {1, 2, 255}) {
    asked.reportAll = static_cast<std::uint8_t>(yes);
    const Analysis analysis = analysed(asked);
    ASSERT_EQ(serviceCount(analysis), 2);
    EXPECT_EQ(serviceAt(analysis, 0).requested, 0);
    EXPECT_EQ(serviceAt(analysis, 1).requested, 1);
  }
}

// --- NULL

TEST(CAnalysisNull, IsRefusedInEveryPlaceOfARequest) {
  const std::vector<KestrelStream> streams = {stream("1", 2)};
  const KestrelRequest good = request("T2=Stereo", streams);
  EXPECT_EQ(refusalOf(nullptr), refusal(KESTREL_NULL_ARGUMENT));
  EXPECT_EQ(kestrelAnalyse(&good, nullptr, nullptr, nullptr), KESTREL_NULL_ARGUMENT);
  KestrelRequest bad = good;
  bad.layoutDescription = nullptr;
  EXPECT_EQ(refusalOf(&bad), refusal(KESTREL_NULL_ARGUMENT));
  bad = good;
  bad.surroundChannelOrder = nullptr;
  EXPECT_EQ(refusalOf(&bad), refusal(KESTREL_NULL_ARGUMENT));
  bad = good;
  bad.streams = nullptr;
  EXPECT_EQ(refusalOf(&bad), refusal(KESTREL_NULL_ARGUMENT));
}

TEST(CAnalysisNull, IsRefusedForTheTextsOfAnyStream) {
  for (const auto text : {&KestrelStream::streamId, &KestrelStream::trackLabels}) {
    for (std::size_t at = 0; at < 3; ++at) {
      std::vector<KestrelStream> streams(3, stream("1", 2));
      streams[at].*text = nullptr;
      const KestrelRequest bad = request("T6=Stereo", streams);
      EXPECT_EQ(refusalOf(&bad), refusal(KESTREL_NULL_ARGUMENT));
    }
  }
}

TEST(CAnalysisNull, IsAllowedWhereTheHeaderSaysSo) {
  const KestrelRequest empty = request("", {});
  KestrelRequest bad = empty;
  bad.layoutDescription = "\xFF";
  KestrelAnalysis* analysis = nullptr;
  EXPECT_EQ(kestrelAnalyse(&bad, &analysis, nullptr, nullptr), KESTREL_BAD_TEXT);
  EXPECT_EQ(kestrelAnalyse(&empty, &analysis, nullptr, nullptr), KESTREL_OK);
  kestrelFreeAnalysis(analysis);
  kestrelFreeAnalysis(nullptr);
}

TEST(CAnalysisNull, AnalysesAreNotRead) {
  std::int32_t number = 77;
  std::uint32_t total = 77;
  std::size_t needed = 77;
  char text[8] = "text";
  KestrelService service{};
  KestrelFinding finding{};
  service.structSize = sizeof service;
  finding.structSize = sizeof finding;
  EXPECT_EQ(kestrelOutcome(nullptr, &number, &total), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelServiceCount(nullptr, &number), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelGetService(nullptr, 0, &service), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelFindingCount(nullptr, &number), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelGetFinding(nullptr, 0, &finding), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelFindingText(nullptr, 0, text, 8, &needed), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelDescribedTotals(nullptr, &number, 1, &needed), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(number, 77);
  EXPECT_EQ(total, 77U);
  EXPECT_EQ(needed, 77U);
  EXPECT_STREQ(text, "text");
}

TEST(CAnalysisNull, OutPointersAreNeeded) {
  const Analysis owner = analysed(request("T2=Stereo", {}));
  const KestrelAnalysis* analysis = owner.get();
  std::uint32_t total = 77;
  std::int32_t totals[1] = {77};
  std::size_t needed = 77;
  char text[200] = "text";
  EXPECT_EQ(kestrelOutcome(analysis, nullptr, &total), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelServiceCount(analysis, nullptr), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelFindingCount(analysis, nullptr), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelGetFinding(analysis, 0, nullptr), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelFindingText(analysis, 0, nullptr, 8, &needed), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelFindingText(analysis, 0, text, 200, nullptr), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelDescribedTotals(analysis, nullptr, 1, &needed), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelDescribedTotals(analysis, totals, 1, nullptr), KESTREL_NULL_ARGUMENT);
  const std::vector<KestrelStream> streams = {stream("1", 2)};
  const Analysis filled = analysed(request("T2=Stereo", streams));
  EXPECT_EQ(kestrelGetService(filled.get(), 0, nullptr), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(total, 77U);
  EXPECT_EQ(totals[0], 77);
  EXPECT_EQ(needed, 77U);
  EXPECT_STREQ(text, "text");
}

// --- Counts and indices

TEST(CAnalysisCounts, ANegativeCountIsRefused) {
  const std::vector<KestrelStream> streams = {stream("1", 2)};
  for (const std::int32_t count : {-1, -2, INT_MIN + 1, INT_MIN}) {
    KestrelRequest bad = request("T2=Stereo", streams);
    bad.streamCount = count;
    EXPECT_EQ(refusalOf(&bad), refusal(KESTREL_BAD_COUNT)) << count;
    bad.streams = nullptr;
    EXPECT_NE(refusalOf(&bad).status, KESTREL_OK) << count;
  }
}

TEST(CAnalysisCounts, AHugeCountOfNothingIsRefused) {
  for (const std::uint32_t stride : {48U, 64U, 0U, 47U, 0xFFFFFFF8U, 0xFFFFFFFFU}) {
    KestrelRequest bad = request("T2=Stereo", {});
    bad.streamCount = INT_MAX;
    bad.streams = nullptr;
    bad.streamStride = stride;
    EXPECT_NE(refusalOf(&bad).status, KESTREL_OK) << stride;
  }
}

TEST(CAnalysisCounts, NoStreamsNeedNoArray) {
  const std::vector<KestrelStream> streams = {stream("1", 2)};
  KestrelRequest none = request("T2=Stereo", streams);
  none.streamCount = 0;
  EXPECT_EQ(outcomeOf(analysed(none)), KESTREL_UNTOUCHED);
  none.streams = nullptr;
  EXPECT_EQ(outcomeOf(analysed(none)), KESTREL_UNTOUCHED);
}

TEST(CAnalysisCounts, AnIndexOutsideAListIsRefused) {
  const std::vector<KestrelStream> streams = {stream("1", 3)};
  const Analysis analysis = analysed(request("T3=Stereo", streams));
  ASSERT_EQ(serviceCount(analysis), 1);
  ASSERT_EQ(findingCount(analysis), 1);
  for (const std::int32_t index : {INT_MIN, -1, 1, 2, INT_MAX}) {
    KestrelService service;
    KestrelFinding finding;
    std::memset(&service, 0x5A, sizeof service);
    std::memset(&finding, 0x5A, sizeof finding);
    service.structSize = sizeof service;
    finding.structSize = sizeof finding;
    const KestrelService serviceBefore = service;
    const KestrelFinding findingBefore = finding;
    char text[300] = "text";
    std::size_t needed = 77;
    EXPECT_EQ(kestrelGetService(analysis.get(), index, &service), KESTREL_BAD_INDEX) << index;
    EXPECT_EQ(kestrelGetFinding(analysis.get(), index, &finding), KESTREL_BAD_INDEX) << index;
    EXPECT_EQ(kestrelFindingText(analysis.get(), index, text, 300, &needed), KESTREL_BAD_INDEX);
    EXPECT_EQ(std::memcmp(&service, &serviceBefore, sizeof service), 0);
    EXPECT_EQ(std::memcmp(&finding, &findingBefore, sizeof finding), 0);
    EXPECT_STREQ(text, "text");
    EXPECT_EQ(needed, 77U);
  }
}

// --- Records of other releases

// A record of a later release: fields follow that this library does not know.
template <class Record>
struct Larger {
  Record known;
  std::array<unsigned char, 16> unknown;
};

template <class Record>
Larger<Record> larger(const Record& record) {
  Larger<Record> made{record, {}};
  made.unknown.fill(0xA5);
  made.known.structSize = sizeof made;
  return made;
}

TEST(CRecords, ASmallerRequestOrStreamIsRefused) {
  const std::vector<KestrelStream> streams(2, stream("1", 1));
  const KestrelRequest good = request("T2=Stereo", streams);
  for (const std::uint32_t size : {0U, 1U, 4U, 32U, 39U}) {
    KestrelRequest bad = good;
    bad.structSize = size;
    EXPECT_EQ(refusalOf(&bad), refusal(KESTREL_BAD_RECORD_SIZE)) << size;
  }
  for (const std::uint32_t size : {0U, 1U, 4U, 40U, 47U}) {
    std::vector<KestrelStream> badStreams = streams;
    badStreams[1].structSize = size;
    const KestrelRequest bad = request("T2=Stereo", badStreams);
    EXPECT_EQ(refusalOf(&bad), refusal(KESTREL_BAD_RECORD_SIZE)) << size;
  }
}

TEST(CRecords, UnknownFieldsOfALargerRequestAreIgnored) {
  const std::vector<KestrelStream> streams = {stream("1", 2)};
  const Larger<KestrelRequest> asked = larger(request("T2=Stereo", streams));
  EXPECT_EQ(outcomeOf(analysed(asked.known)), KESTREL_FILLED);
}

TEST(CRecords, TheStrideLeadsFromOneStreamToTheNext) {
  std::vector<Larger<KestrelStream>> streams(3, larger(stream("1", 2)));
  streams[1].known.streamId = "5";
  streams[2].known.streamId = "9";
  // A record that is smaller than the stride is padded, not refused.
  streams[2].known.structSize = sizeof(KestrelStream);
  KestrelRequest asked = request("T6=Stereo,Stereo,Stereo", {});
  asked.streams = &streams[0].known;
  asked.streamCount = 3;
  asked.streamStride = sizeof streams[0];
  const Analysis analysis = analysed(asked);
  ASSERT_EQ(serviceCount(analysis), 3);
  EXPECT_EQ(serviceAt(analysis, 1).slots[0].trackNumber, 5);
  EXPECT_EQ(serviceAt(analysis, 2).slots[1].trackNumber, 9);
}

TEST(CRecords, AStrideThatCannotHoldAStreamOrMisplacesTheNextIsRefused) {
  const std::vector<KestrelStream> streams(4, stream("1", 1));
  for (const std::uint32_t stride : {0U, 1U, 8U, 40U, 47U, 49U, 50U, 52U, 60U, 0xFFFFFFFFU}) {
    KestrelRequest bad = request("T1=Mono", streams);
    bad.streamCount = 1;
    bad.streamStride = stride;
    EXPECT_EQ(refusalOf(&bad), refusal(KESTREL_BAD_RECORD_SIZE)) << stride;
  }
}

// Has records of every size filled. One that is too small must not change, and of a larger one only
// the known fields may.
template <class Record, class Get>
void expectFillsKnownFields(const Get& get) {
  for (const std::uint32_t size : {0U, 1U, 4U, static_cast<std::uint32_t>(sizeof(Record) - 1)}) {
    Larger<Record> record = larger(Record{});
    record.known.structSize = size;
    const Larger<Record> before = record;
    EXPECT_EQ(get(&record.known), KESTREL_BAD_RECORD_SIZE) << size;
    EXPECT_EQ(std::memcmp(&record, &before, sizeof record), 0) << size;
  }
  Record exact{};
  exact.structSize = sizeof exact;
  EXPECT_EQ(get(&exact), KESTREL_OK);
  Larger<Record> record = larger(Record{});
  const Larger<Record> before = record;
  EXPECT_EQ(get(&record.known), KESTREL_OK);
  EXPECT_EQ(record.known.structSize, sizeof record);
  EXPECT_EQ(record.unknown, before.unknown);
  record.known.structSize = exact.structSize;
  EXPECT_EQ(std::memcmp(&record.known, &exact, sizeof exact), 0);
}

TEST(CRecords, OfAFilledRecordOnlyKnownFieldsAreWritten) {
  const std::vector<KestrelStream> streams = {stream("1", 3)};
  const Analysis analysis = analysed(request("T3=Stereo", streams));
  expectFillsKnownFields<KestrelService>(
      [&](KestrelService* service) { return kestrelGetService(analysis.get(), 0, service); });
  expectFillsKnownFields<KestrelFinding>(
      [&](KestrelFinding* finding) { return kestrelGetFinding(analysis.get(), 0, finding); });
}

// --- Texts

// Puts a text into each of the four places of a request in turn, and calls `use` with the request
// and the index that stands for the place.
template <class Use>
void forEachPlaceOf(const std::string& text, const Use& use) {
  std::vector<KestrelStream> streams(3, stream("1", 2));
  KestrelRequest asked = request("T6=Stereo", streams);
  asked.layoutDescription = text.c_str();
  use(asked, -1);
  asked = request("T6=Stereo", streams);
  asked.surroundChannelOrder = text.c_str();
  use(asked, -1);
  for (const auto place : {&KestrelStream::streamId, &KestrelStream::trackLabels}) {
    streams.assign(3, stream("1", 2));
    streams[1].*place = text.c_str();
    use(request("T6=Stereo", streams), 1);
  }
}

TEST(CTexts, ATextThatIsNotUtf8IsRefusedWithThePlaceOfItsFirstBadByte) {
  const char* const badSequences[] = {
      "\x80",
      "\xBF",
      "\xFF",
      "\xFE",  // no sequence begins so
      "\xC0\x80",
      "\xC1\xBF",
      "\xE0\x80\x80",  // overlong
      "\xE0\x9F\xBF",
      "\xF0\x80\x80\x80",  //
      "\xF0\x8F\xBF\xBF",  //
      "\xED\xA0\x80",
      "\xED\xAF\xBF",  // surrogates
      "\xED\xB0\x80",
      "\xED\xBF\xBF",              //
      "\xED\xA0\xBD\xED\xB8\x80",  //
      "\xF4\x90\x80\x80",
      "\xF5\x80\x80\x80",  // behind U+10FFFF
      "\xF8\x88\x80\x80\x80",
      "\xF7\xBF\xBF\xBF",  //
      "\xC3",
      "\xE2\x82",
      "\xE2",
      "\xF0\x9F\x8E",  // cut short
      "\xC3(",
      "\xE2\x82(",
      "\xE2(\xA1",  //
      "\xF0\x9F\x8E(",
      "\xC3\xC3\xA9",
  };
  for (const std::string bad : badSequences) {
    for (const std::string before : {"", "1", "T6=Stereo ", "\xC3\xA9\xF0\x9F\x8E\xA7"}) {
      for (const std::string after : {"", "x", "\xC3\xA9 \xFF"}) {
        forEachPlaceOf(before + bad + after, [&](const KestrelRequest& asked, std::int32_t index) {
          EXPECT_EQ(refusalOf(&asked), (Refusal{KESTREL_BAD_TEXT, before.size(), index}))
              << testing::PrintToString(before + bad + after);
        });
      }
    }
  }
}

const char* const kStrangeTexts[] = {
    "\x7F\xC2\x80\xDF\xBF",              // U+007F U+0080 U+07FF
    "\xE0\xA0\x80\xED\x9F\xBF",          // U+0800 U+D7FF
    "\xEE\x80\x80\xEF\xBF\xBF",          // U+E000 U+FFFF
    "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF",  // U+10000 U+10FFFF
    "\xEF\xBB\xBF first",                // a byte order mark
    "L R C LFE \xF0\x9F\x8E\xA7 R\xC3\xA9\x01\t\n",
};

TEST(CTexts, EveryOtherTextIsAccepted) {
  for (const std::string text : kStrangeTexts) {
    forEachPlaceOf(text, [](const KestrelRequest& asked, std::int32_t) {
      EXPECT_NE(outcomeOf(analysed(asked)), -1);
    });
  }
}

TEST(CTexts, AnOrderComesBackAsALabelByteForByte) {
  const std::vector<KestrelStream> streams = {stream("1", 6, "\xF0\x9F\x8E\xA7")};
  for (const char* const order : kStrangeTexts) {
    KestrelRequest asked = request("T6=5.1 Mix", streams);
    asked.surroundChannelOrder = order;
    EXPECT_STREQ(serviceAt(analysed(asked), 0).label, order);
  }
}

// --- Sizes

TEST(CSizes, LongTextsNeedLittleStack) {
  for (const std::string filler : {",", "T2=Stereo;", "-", "1", " ", "L ", "\xF0\x9F\x8E\xA7"}) {
    std::string text;
    while (text.size() < kMegabyte) text += filler;
    for (const std::string& whole : {text, "T6=Stereo,x" + text, "1" + text}) {
      runOnSmallStack([&] {
        forEachPlaceOf(whole, [](const KestrelRequest& asked, std::int32_t) {
          const Analysis analysis = analysed(asked);
          if (findingCount(analysis) == 0) return;
          EXPECT_NE(sentenceAt(analysis, findingCount(analysis) - 1), "");
        });
      });
    }
  }
}

TEST(CSizes, AHundredThousandStreamsOfOnePair) {
  std::vector<KestrelStream> streams;
  for (std::int32_t i = 0; i < 100'000; ++i) streams.push_back(sharedPair("7", 1, i));
  const Analysis analysis = analysed(request("T2=EMCA", streams));
  EXPECT_EQ(outcomeOf(analysis), KESTREL_FILLED);
  ASSERT_EQ(serviceCount(analysis), 100'000);
  std::int64_t sum = 0;
  for (std::int32_t i = 0; i < 100'000; ++i) sum += serviceAt(analysis, i).slots[0].sourceGroup;
  EXPECT_EQ(sum, std::int64_t{100'000} * 99'999 / 2);
}

TEST(CSizes, AHundredThousandStreamsWithoutTracks) {
  std::vector<KestrelStream> streams(100'000, stream("1", 0));
  streams.push_back(stream("2", 2));
  const Analysis analysis = analysed(request("T2=Stereo", streams));
  EXPECT_EQ(outcomeOf(analysis), KESTREL_FILLED);
  EXPECT_EQ(serviceAt(analysis, 0).slots[0].trackNumber, 2);
}

TEST(CSizes, TracksThatNobodyAsksForTakeNoRoom) {
  // The total of these is 2 in 32 bits.
  const std::vector<KestrelStream> streams = {stream("1", INT_MAX), stream("2", INT_MAX),
                                              stream("3", 4)};
  const Analysis analysis = analysed(request("T2=Stereo", streams));
  EXPECT_EQ(outcomeOf(analysis), KESTREL_FILLED);
  ASSERT_EQ(findingCount(analysis), 1);
  EXPECT_EQ(findingAt(analysis, 0).code, KESTREL_TRACKS_LEFT_OVER);
  EXPECT_EQ(findingAt(analysis, 0).second, 2 * std::int64_t{INT_MAX} + 4);
}

TEST(CSizes, ARunOfTwoThousandMillionTracksIsOneRecord) {
  const std::vector<KestrelStream> streams = {sharedPair("1", INT_MAX, 1)};
  const Analysis analysis = analysed(request("T2=EMCA", streams));
  ASSERT_EQ(serviceCount(analysis), 1);
  EXPECT_EQ(serviceAt(analysis, 0).trackCount, KESTREL_SLOTS);
  EXPECT_EQ(findingAt(analysis, 0).code, KESTREL_RUN_TOO_LONG);
  EXPECT_EQ(findingAt(analysis, 0).second, INT_MAX);
}

// --- Threads

// All that an analysis tells, as one text.
std::string told(const Analysis& analysis) {
  std::string text;
  for (std::int32_t i = 0; i < serviceCount(analysis); ++i) {
    const KestrelService service = serviceAt(analysis, i);
    text += std::to_string(service.slots[0].trackNumber) + service.label + "\n";
  }
  for (std::int32_t i = 0; i < findingCount(analysis); ++i) {
    text += std::to_string(findingAt(analysis, i).code) + sentenceAt(analysis, i) + "\n";
  }
  std::int32_t total = -1;
  std::size_t needed = 0;
  EXPECT_EQ(kestrelDescribedTotals(analysis.get(), &total, 1, &needed), KESTREL_OK);
  return text + std::to_string(total);
}

TEST(CThreads, OneAnalysisMayBeReadByAll) {
  const std::vector<KestrelStream> streams = {stream("1", 6, "L L C LFE Ls"), stream("2", 8)};
  const Analysis analysis = analysed(request("T14=5.1 Mix,Stereo,Mono,Other", streams));
  const std::string expected = told(analysis);
  std::atomic<int> differences = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 200; ++i) differences += told(analysis) == expected ? 0 : 1;
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(differences, 0);
}

TEST(CThreads, AnalysesMayBeMadeByAll) {
  const std::vector<KestrelStream> streams = {stream("1", 6, kSixLabels), stream("2", 2)};
  const KestrelRequest asked = request("T8=5.1 Mix,Stereo,Other", streams);
  const std::string expected = told(analysed(asked));
  std::atomic<int> differences = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 200; ++i) differences += told(analysed(asked)) == expected ? 0 : 1;
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(differences, 0);
}

}  // namespace
}  // namespace kestrel::test
