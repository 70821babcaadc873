// Why a file does not carry its services, told by the plain C interface: for every code of a
// finding what raises it, which fields it uses, the outcome beside it and its sentence.
#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "api/kestrel.h"

namespace kestrel::test {
namespace {

using Streams = std::vector<KestrelStream>;

constexpr char kOrder[] = "L R C LFE Ls Rs";

KestrelStream stream(const char* id, std::int32_t channelCount, const char* labels = "") {
  KestrelStream made{};
  made.structSize = sizeof made;
  made.streamId = id;
  made.trackLabels = labels;
  made.channelCount = channelCount;
  return made;
}

KestrelStream pairCoded(const char* id, std::int32_t channelCount, std::int32_t group = 5) {
  KestrelStream made = stream(id, channelCount);
  made.group = group;
  made.isPairCoded = 1;
  return made;
}

KestrelStream withKeys(KestrelStream made, std::int32_t key1, std::int32_t key2,
                       std::int32_t key3) {
  made.formatKey1 = key1;
  made.formatKey2 = key2;
  made.formatKey3 = key3;
  return made;
}

// The fields of a finding; those that a code does not use are as they are here.
struct Found {
  std::int32_t code = 0;
  std::int32_t service = -1;
  std::int32_t slot = -1;
  std::int32_t stream = -1;
  std::int64_t track = -1;
  std::int64_t first = 0;
  std::int64_t second = 0;
  std::int64_t textOffset = -1;
  std::int64_t textLength = -1;
  bool operator==(const Found&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Found& found) {
  return out << "code " << found.code << " service " << found.service << " slot " << found.slot
             << " stream " << found.stream << " track " << found.track << " first " << found.first
             << " second " << found.second << " text " << found.textOffset << "+"
             << found.textLength;
}

// One analysis, with surroundCheck set.
class Diagnosis {
 public:
  Diagnosis(const char* description, const Streams& streams)
      : Diagnosis({}, description, streams) {}

  static Diagnosis withoutSurroundCheck(const char* description, const Streams& streams) {
    return {{.surroundCheck = false}, description, streams};
  }
  static Diagnosis reportingAll(const char* description, const Streams& streams) {
    return {{.reportAll = true}, description, streams};
  }
  static Diagnosis withOrder(const char* order, const char* description, const Streams& streams) {
    return {{.order = order}, description, streams};
  }

  std::int32_t outcome() const {
    std::int32_t outcome = -1;
    EXPECT_EQ(kestrelOutcome(analysis_.get(), &outcome, nullptr), KESTREL_OK);
    return outcome;
  }

  std::vector<Found> findings() const {
    std::int32_t count = -1;
    EXPECT_EQ(kestrelFindingCount(analysis_.get(), &count), KESTREL_OK);
    std::vector<Found> all;
    for (std::int32_t i = 0; i < count; ++i) all.push_back(findingAt(i));
    return all;
  }

  std::string sentence(std::int32_t index) const {
    char text[1000] = "";
    std::size_t needed = 0;
    EXPECT_EQ(kestrelFindingText(analysis_.get(), index, text, sizeof text, &needed), KESTREL_OK);
    EXPECT_EQ(std::string(text).size() + 1, needed);
    return text;
  }

  std::vector<std::int32_t> describedTotals() const {
    std::vector<std::int32_t> totals(200, -1);
    std::size_t needed = 0;
    EXPECT_EQ(kestrelDescribedTotals(analysis_.get(), totals.data(), totals.size(), &needed),
              KESTREL_OK);
    totals.resize(needed);
    return totals;
  }

  const KestrelAnalysis* analysis() const { return analysis_.get(); }

 private:
  struct Options {
    bool reportAll = false;
    bool surroundCheck = true;
    const char* order = kOrder;
  };

  struct Freer {
    void operator()(KestrelAnalysis* analysis) const { kestrelFreeAnalysis(analysis); }
  };

  Diagnosis(const Options& options, const char* description, const Streams& streams) {
    KestrelRequest request{};
    request.structSize = sizeof request;
    request.streamCount = static_cast<std::int32_t>(streams.size());
    request.layoutDescription = description;
    request.surroundChannelOrder = options.order;
    request.streams = streams.data();
    request.streamStride = sizeof(KestrelStream);
    request.reportAll = options.reportAll ? 1 : 0;
    request.surroundCheck = options.surroundCheck ? 1 : 0;
    KestrelAnalysis* analysis = nullptr;
    EXPECT_EQ(kestrelAnalyse(&request, &analysis, nullptr, nullptr), KESTREL_OK);
    analysis_.reset(analysis);
  }

  Found findingAt(std::int32_t index) const {
    KestrelFinding f{};
    f.structSize = sizeof f;
    EXPECT_EQ(kestrelGetFinding(analysis_.get(), index, &f), KESTREL_OK);
    EXPECT_EQ(f.reserved, 0);
    return {f.code,  f.service, f.slot,       f.stream,    f.track,
            f.first, f.second,  f.textOffset, f.textLength};
  }

  std::unique_ptr<KestrelAnalysis, Freer> analysis_;
};

// A finding, and what its sentence must name.
struct Expected {
  Found found;
  std::vector<std::string> words;
};

void expectOneSentenceNaming(const std::string& sentence, const std::vector<std::string>& words) {
  SCOPED_TRACE(sentence);
  ASSERT_FALSE(sentence.empty());
  EXPECT_TRUE(sentence.front() >= 'A' && sentence.front() <= 'Z');
  EXPECT_EQ(sentence.back(), '.');
  EXPECT_EQ(sentence.find(". "), std::string::npos) << "a second sentence";
  EXPECT_EQ(sentence.find('\n'), std::string::npos);
  for (const std::string& word : words) EXPECT_NE(sentence.find(word), std::string::npos) << word;
}

// Compares the outcome and all findings, and reads their sentences.
void expectDiagnosis(const Diagnosis& diagnosis, std::int32_t outcome,
                     const std::vector<Expected>& expected) {
  EXPECT_EQ(diagnosis.outcome(), outcome);
  std::vector<Found> found;
  for (const Expected& one : expected) found.push_back(one.found);
  ASSERT_EQ(diagnosis.findings(), found);
  for (std::size_t i = 0; i < expected.size(); ++i) {
    expectOneSentenceNaming(diagnosis.sentence(static_cast<std::int32_t>(i)), expected[i].words);
  }
}

// --- No findings

TEST(CleanFile, HasNoFindings) {
  const Streams back = {stream("1", 6, "C L R Ls Rs LFE"), stream("2", 2, "L L")};
  for (const Diagnosis& diagnosis :
       {Diagnosis("T8=5.1 Mix,Stereo", {stream("1", 6, kOrder), stream("2", 2, "L L")}),
        Diagnosis::withOrder("C L R Ls Rs LFE", "T8=5.1 Mix,Stereo;T2=Other", back),
        Diagnosis::withoutSurroundCheck("T8=5.1 Mix,Stereo", back),
        Diagnosis("T4=EMCA,-Stereo,", {pairCoded("1", 32), stream("2", 2)}),
        Diagnosis("T8=7.1 Mix", {stream("1", 8)}), Diagnosis("T1=Mono", {stream("1", 1)})}) {
    expectDiagnosis(diagnosis, KESTREL_FILLED, {});
  }
}

TEST(CleanFile, MayDifferInFormatKeysBetweenServicesAndWithinEmca) {
  const Streams streams = {withKeys(pairCoded("1", 1), 1, 1, 1),
                           withKeys(pairCoded("1", 1), 2, 2, 2), withKeys(stream("2", 2), 3, 3, 3),
                           withKeys(stream("3", 1), 4, 4, 4)};
  expectDiagnosis({"T5=EMCA,Stereo,Mono", streams}, KESTREL_FILLED, {});
}

TEST(CleanFile, HasNoSentences) {
  const Diagnosis diagnosis("T2=Stereo", {stream("1", 2)});
  char text[8] = "text";
  std::size_t needed = 77;
  EXPECT_EQ(kestrelFindingText(diagnosis.analysis(), 0, text, 8, &needed), KESTREL_BAD_INDEX);
  EXPECT_STREQ(text, "text");
  EXPECT_EQ(needed, 77U);
}

// --- Errors

TEST(NoStreams, AreTheOnlyErrorOfARequestWithoutAny) {
  for (const char* description : {"", "T2=Stereo", "T0=Stereo"}) {
    expectDiagnosis({description, {}}, KESTREL_UNTOUCHED, {{{.code = KESTREL_NO_STREAMS}, {}}});
  }
  EXPECT_EQ(Diagnosis("", {}).sentence(0), "The file has no audio streams.");
}

TEST(NoEntry, TellsTheTotalOfTheFile) {
  expectDiagnosis({"T2=Stereo;T8=5.1 Mix,Stereo", {stream("1", 7)}}, KESTREL_UNTOUCHED,
                  {{{.code = KESTREL_NO_ENTRY, .first = 7}, {"7"}}});
  expectDiagnosis({"", {stream("1", 0)}}, KESTREL_UNTOUCHED,
                  {{{.code = KESTREL_NO_ENTRY, .first = 0}, {"0"}}});
}

TEST(NoEntry, TheTotalIsUnsigned) {
  expectDiagnosis({"T2=Stereo", {stream("1", -1)}}, KESTREL_UNTOUCHED,
                  {{{.code = KESTREL_NO_ENTRY, .first = 4294967295}, {"4294967295"}}});
}

TEST(NoEntry, TheDescribedTotalsStandInTheOrderOfTheText) {
  const Streams streams = {stream("1", 7)};
  using Totals = std::vector<std::int32_t>;
  EXPECT_EQ(Diagnosis("T8=5.1 Mix,Stereo;T02=Stereo;T99=x;T0=Mono", streams).describedTotals(),
            (Totals{8, 2, 99, 0}));
  EXPECT_EQ(Diagnosis("T2=Stereo T4=Stereo;T123=Mono;t6=Mono;T5=;T7", streams).describedTotals(),
            Totals{2});
  EXPECT_EQ(Diagnosis("Stereo", streams).describedTotals(), Totals{});
  EXPECT_EQ(Diagnosis("T7=7.1 Mix;T8=Mono", streams).describedTotals(), (Totals{7, 8}));
}

TEST(NoEntry, TheDescribedTotalsNeedRoomForAll) {
  const Diagnosis diagnosis("T8=5.1 Mix,Stereo;T2=Stereo;T4=x", {stream("1", 7)});
  for (std::size_t capacity = 0; capacity < 3; ++capacity) {
    std::int32_t totals[3] = {-7, -7, -7};
    std::size_t needed = 77;
    EXPECT_EQ(kestrelDescribedTotals(diagnosis.analysis(), totals, capacity, &needed),
              KESTREL_BUFFER_TOO_SMALL);
    EXPECT_EQ(needed, 3U);
    for (const std::int32_t total : totals) EXPECT_EQ(total, -7);
  }
  std::size_t needed = 77;
  EXPECT_EQ(kestrelDescribedTotals(diagnosis.analysis(), nullptr, 0, &needed),
            KESTREL_BUFFER_TOO_SMALL);
  EXPECT_EQ(needed, 3U);
}

TEST(PairCodedTrack, StandsWhereAnOrdinaryServiceIsExpected) {
  expectDiagnosis(
      {"T4=Stereo,Stereo", {stream("1", 2), pairCoded("7", 2)}}, KESTREL_UNTOUCHED,
      {{{.code = KESTREL_PAIR_CODED_TRACK, .service = 1, .slot = 0, .stream = 1, .track = 7},
        {"Stereo", "track 7", "pair-coded"}}});
}

TEST(PairCodedTrack, MayStandInTheMiddleOfAService) {
  expectDiagnosis(
      {"T6=5.1 Mix", {stream("1", 4), pairCoded("-3-1", 2)}}, KESTREL_UNTOUCHED,
      {{{.code = KESTREL_PAIR_CODED_TRACK, .service = 0, .slot = 4, .stream = 1, .track = -3},
        {"5.1 Mix", "track -3"}}});
}

TEST(PlainTrack, StandsWhereEmcaIsExpected) {
  expectDiagnosis({"T6=Stereo,EMCA,Stereo", {stream("4", 3), stream("9", 3)}}, KESTREL_UNTOUCHED,
                  {{{.code = KESTREL_PLAIN_TRACK, .service = 1, .slot = 0, .stream = 0, .track = 4},
                    {"EMCA", "track 4"}}});
}

TEST(TooFewTracks, TellsTheFirstSlotWithoutATrack) {
  expectDiagnosis(
      {"T6=Stereo,5.1 Mix", {stream("9", 6)}}, KESTREL_UNTOUCHED,
      {{{.code = KESTREL_TOO_FEW_TRACKS, .service = 1, .slot = 4, .first = 6, .second = 4},
        {"5.1 Mix", "6", "4"}}});
}

TEST(TooFewTracks, AServiceMayGetNone) {
  const Expected none = {
      {.code = KESTREL_TOO_FEW_TRACKS, .service = 1, .slot = 0, .first = 2, .second = 0},
      {"EMCA", "2", "0"}};
  expectDiagnosis({"T2=Stereo,EMCA", {stream("1", 2)}}, KESTREL_UNTOUCHED, {none});
  // Both pairs are of one group, so the first service takes them.
  expectDiagnosis({"T4=EMCA,EMCA", {pairCoded("1", 2), pairCoded("2", 2)}}, KESTREL_UNTOUCHED,
                  {none});
}

// A pair-coded service takes the ordinary tracks of its group that follow it.
Streams withOrdinaryTracksOfTheGroup(std::int32_t count) {
  KestrelStream ordinary = stream("3", count);
  ordinary.group = 5;
  return {pairCoded("1", 2), ordinary};
}

TEST(TooFewTracks, MayBeFoundWhenTheTracksAreHandedOut) {
  expectDiagnosis(
      {"T4=EMCA,Stereo", withOrdinaryTracksOfTheGroup(2)}, KESTREL_EMPTIED,
      {{{.code = KESTREL_TOO_FEW_TRACKS, .service = 1, .slot = 0, .first = 2, .second = 0},
        {"Stereo", "2", "0"}}});
}

TEST(ServiceWithoutTrack, IsANoteOnAMono) {
  expectDiagnosis(
      {"T3=EMCA,Mono", withOrdinaryTracksOfTheGroup(1)}, KESTREL_FILLED,
      {{{.code = KESTREL_SERVICE_WITHOUT_TRACK, .service = 1, .first = 1}, {"Mono", "service 2"}}});
}

TEST(ServiceWithoutTrack, IsANoteOnAnEmcaThatTheWalkPassesBy) {
  // The flag is on, so the service lines up with the stream, but it is not 1, so it takes nothing.
  KestrelStream odd = stream("1", 2);
  odd.isPairCoded = 2;
  const Found place = {.code = KESTREL_SERVICE_WITHOUT_TRACK, .service = 0, .first = 2};
  expectDiagnosis(
      {"T2=EMCA,Stereo", {odd}}, KESTREL_UNTOUCHED,
      {{{.code = KESTREL_PAIR_CODED_TRACK, .service = 1, .slot = 0, .stream = 0, .track = 1},
        {"Stereo"}}});
  expectDiagnosis(
      {"T2=EMCA", {odd}}, KESTREL_FILLED,
      {{place, {"EMCA", "service 1"}},
       {{.code = KESTREL_TRACKS_LEFT_OVER, .stream = 0, .track = 1, .second = 2}, {"2"}}});
}

Expected keyDiffers(Found place, std::int32_t code, std::int32_t first, std::int32_t second) {
  place.code = code;
  place.first = first;
  place.second = second;
  return {place,
          {"Stereo", "track " + std::to_string(place.track), std::to_string(first),
           std::to_string(second)}};
}

TEST(KeyDiffers, IsTheSecondNeighboursError) {
  const KestrelStream first = withKeys(stream("4", 1), 48000, 24, 1);
  const Found place = {.service = 0, .slot = 1, .stream = 1, .track = 7};
  expectDiagnosis({"T2=Stereo", {first, withKeys(stream("7", 1), 44100, 24, 1)}}, KESTREL_EMPTIED,
                  {keyDiffers(place, KESTREL_KEY1_DIFFERS, 48000, 44100)});
  expectDiagnosis({"T2=Stereo", {first, withKeys(stream("7", 1), 48000, -16, 1)}}, KESTREL_EMPTIED,
                  {keyDiffers(place, KESTREL_KEY2_DIFFERS, 24, -16)});
  expectDiagnosis({"T2=Stereo", {first, withKeys(stream("7", 1), 48000, 24, INT_MIN)}},
                  KESTREL_EMPTIED, {keyDiffers(place, KESTREL_KEY3_DIFFERS, 1, INT_MIN)});
}

TEST(KeyDiffers, IsFoundOncePerKey) {
  const Streams streams = {stream("1", 1), withKeys(stream("2", 1), 48000, 24, 1),
                           withKeys(stream("3", 1), 44100, 16, 2)};
  const Found place = {.service = 1, .slot = 1, .stream = 2, .track = 3};
  expectDiagnosis({"T3=Mono,Stereo", streams}, KESTREL_EMPTIED,
                  {keyDiffers(place, KESTREL_KEY1_DIFFERS, 48000, 44100),
                   keyDiffers(place, KESTREL_KEY2_DIFFERS, 24, 16),
                   keyDiffers(place, KESTREL_KEY3_DIFFERS, 1, 2)});
}

TEST(KeyDiffers, ATrackStandsForTheLastStreamWithItsNumber) {
  const Streams streams = {stream("4", 1), stream("7", 1), withKeys(stream("4", 0), 9, 0, 0)};
  expectDiagnosis(
      {"T2=Stereo", streams}, KESTREL_EMPTIED,
      {keyDiffers({.service = 0, .slot = 1, .stream = 1, .track = 7}, KESTREL_KEY1_DIFFERS, 9, 0)});
}

TEST(KeyDiffers, AServiceThatIsNotReportedIsNotChecked) {
  const Streams streams = {stream("4", 1), withKeys(stream("7", 1), 9, 0, 0)};
  expectDiagnosis({"T2=-Stereo", streams}, KESTREL_FILLED, {});
  const Diagnosis reported = Diagnosis::reportingAll("T2=-Stereo", streams);
  EXPECT_EQ(reported.outcome(), KESTREL_EMPTIED);
  ASSERT_EQ(reported.findings().size(), 1U);
  EXPECT_EQ(reported.findings()[0].code, KESTREL_KEY1_DIFFERS);
}

// --- Elements of the description

Expected unknownService(std::int32_t service, std::int64_t offset, const std::string& text) {
  const auto length = static_cast<std::int64_t>(text.size());
  return {{.code = KESTREL_UNKNOWN_SERVICE,
           .service = service,
           .textOffset = offset,
           .textLength = length},
          {text}};
}

Expected emptyElement(std::int32_t service, std::int64_t offset) {
  return {
      {.code = KESTREL_EMPTY_ELEMENT, .service = service, .textOffset = offset, .textLength = 0},
      {}};
}

TEST(UnknownService, IsShownWhereItStandsInTheDescription) {
  const Streams streams = {stream("1", 2)};
  expectDiagnosis({"T2=Stereo,Dolby E", streams}, KESTREL_FILLED,
                  {unknownService(1, 10, "Dolby E")});
  expectDiagnosis({"T4=Other;T2= Stereo,Stereo;T2=x", streams}, KESTREL_FILLED,
                  {unknownService(0, 12, " Stereo")});
  expectDiagnosis({"\xC3\xA9 T2=Stereo,mono", streams}, KESTREL_FILLED,
                  {unknownService(1, 13, "mono")});
}

TEST(UnknownService, IsShownWithItsHyphens) {
  expectDiagnosis(
      {"T2=-Foo,Stereo,--x,-", {stream("1", 2)}}, KESTREL_FILLED,
      {unknownService(0, 3, "-Foo"), unknownService(2, 15, "--x"), unknownService(3, 19, "-")});
}

TEST(EmptyElement, HasAPlaceAndNoLength) {
  expectDiagnosis({"T2=,Stereo,,", {stream("1", 2)}}, KESTREL_FILLED,
                  {emptyElement(0, 3), emptyElement(2, 11)});
}

TEST(UnknownService, MayStandBesideAnError) {
  expectDiagnosis(
      {"T4=Foo,Stereo,EMCA", {stream("1", 4)}}, KESTREL_UNTOUCHED,
      {{{.code = KESTREL_PLAIN_TRACK, .service = 2, .slot = 0, .stream = 0, .track = 1}, {"EMCA"}},
       unknownService(0, 3, "Foo")});
}

// --- Tracks left over

TEST(TracksLeftOver, AreToldFromTheFirstOn) {
  expectDiagnosis(
      {"T8=Stereo", {stream("1", 2), stream("5", 6)}}, KESTREL_FILLED,
      {{{.code = KESTREL_TRACKS_LEFT_OVER, .stream = 1, .track = 5, .first = 2, .second = 8},
        {"track 5", "2", "8"}}});
}

TEST(TracksLeftOver, MayStandBesideDifferingKeys) {
  const Streams streams = {stream("1", 1), withKeys(stream("2", 2), 9, 0, 0)};
  const Diagnosis diagnosis("T3=Stereo", streams);
  EXPECT_EQ(diagnosis.outcome(), KESTREL_EMPTIED);
  ASSERT_EQ(diagnosis.findings().size(), 2U);
  EXPECT_EQ(diagnosis.findings()[0].code, KESTREL_KEY1_DIFFERS);
  EXPECT_EQ(
      diagnosis.findings()[1],
      (Found{.code = KESTREL_TRACKS_LEFT_OVER, .stream = 1, .track = 2, .first = 2, .second = 3}));
}

TEST(TracksLeftOver, AreNotToldOfAFileThatWasNotUnderstood) {
  const Diagnosis diagnosis("T8=EMCA", {stream("1", 8)});
  ASSERT_EQ(diagnosis.findings().size(), 1U);
  EXPECT_EQ(diagnosis.findings()[0].code, KESTREL_PLAIN_TRACK);
}

// --- Labels

Expected label(std::int32_t code, std::int32_t slot, std::int64_t first = 0) {
  return {{.code = code, .service = 0, .slot = slot, .stream = 0, .track = 7, .first = first},
          {"5.1 Mix", "track 7"}};
}

TEST(Labels, EverySlotThatSpoilsTheSetHasAFinding) {
  const struct {
    const char* labels;
    std::vector<Expected> findings;
  } rows[] = {
      {"L R C LFE Ls", {label(KESTREL_LABEL_MISSING, 5)}},
      {"L R C lfe Ls Rs", {label(KESTREL_LABEL_UNKNOWN, 3)}},
      {"L R C LFE Ls R\xC3\xA9", {label(KESTREL_LABEL_UNKNOWN, 5)}},
      {"L R L LFE Ls Rs", {label(KESTREL_LABEL_DOUBLED, 2, 0)}},
      {"L R C R Ls R", {label(KESTREL_LABEL_DOUBLED, 3, 1), label(KESTREL_LABEL_DOUBLED, 5, 1)}},
      {"L R Ls Rs C LFE", {label(KESTREL_LABELS_REORDERED, 2)}},
      {"R L C LFE Ls Rs", {label(KESTREL_LABELS_REORDERED, 0)}},
      {"X  L L  C",
       {label(KESTREL_LABEL_UNKNOWN, 0), label(KESTREL_LABEL_DOUBLED, 2, 1),
        label(KESTREL_LABEL_MISSING, 4), label(KESTREL_LABEL_MISSING, 5)}},
      {"L R C LFE Ls Rs X", {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.labels);
    expectDiagnosis({"T6=5.1 Mix", {stream("7", 6, row.labels)}}, KESTREL_FILLED, row.findings);
  }
}

TEST(Labels, EveryTrackHasTheNumberAndTheIndexOfItsStream) {
  Streams streams = {stream("11", 1, "L"), stream("12", 1), stream("13", 1, "C")};
  streams.insert(streams.end(),
                 {stream("14", 1, "LFE"), stream("15", 1, "L"), stream("16", 1, "Rs")});
  expectDiagnosis(
      {"T6=5.1 Mix", streams}, KESTREL_FILLED,
      {{{.code = KESTREL_LABEL_MISSING, .service = 0, .slot = 1, .stream = 1, .track = 12},
        {"track 12"}},
       {{.code = KESTREL_LABEL_DOUBLED,
         .service = 0,
         .slot = 4,
         .stream = 4,
         .track = 15,
         .first = 0},
        {"track 15"}}});
}

TEST(Labels, AreReadOffTheFirstStreamWithTheTrackNumber) {
  expectDiagnosis({"T6=5.1 Mix", {stream("7", 0, kOrder), stream("7", 6)}}, KESTREL_FILLED, {});
}

TEST(Labels, AreLookedAtOnlyWhereSurroundCheckAsksForThem) {
  const Streams streams = {stream("7", 6, "X X R L")};
  expectDiagnosis(Diagnosis::withoutSurroundCheck("T6=5.1 Mix", streams), KESTREL_FILLED, {});
  expectDiagnosis({"T6=Stereo,Stereo,Stereo", streams}, KESTREL_FILLED, {});
}

TEST(Labels, AreInOrderWhenTheyAreInTheOrderOfTheRequest) {
  const char order[] = "Rs Ls LFE C R L";
  expectDiagnosis(Diagnosis::withOrder(order, "T6=5.1 Mix", {stream("7", 6, order)}),
                  KESTREL_FILLED, {});
  expectDiagnosis(Diagnosis::withOrder(order, "T6=5.1 Mix", {stream("7", 6, "Rs Ls LFE C L R")}),
                  KESTREL_FILLED, {label(KESTREL_LABELS_REORDERED, 4)});
}

// --- Runs

TEST(RunTooLong, TellsHowManyTracksTheRunHas) {
  const Streams streams = {pairCoded("3", 40, 1), pairCoded("4-1", 32, 2), pairCoded("4-2", 33, 3)};
  expectDiagnosis({"T4=EMCA,EMCA", streams}, KESTREL_FILLED,
                  {{{.code = KESTREL_RUN_TOO_LONG,
                     .service = 0,
                     .stream = 0,
                     .track = 3,
                     .first = KESTREL_SLOTS,
                     .second = 40},
                    {"EMCA", "track 3", "32", "40"}},
                   {{.code = KESTREL_RUN_TOO_LONG,
                     .service = 1,
                     .stream = 2,
                     .track = 4,
                     .first = KESTREL_SLOTS,
                     .second = 33},
                    {"EMCA", "track 4", "32", "33"}}});
}

// --- Order

TEST(Findings, AreErrorsFirstAndThenTheOthersEachInTheOrderOfTheServices) {
  const Streams streams = {stream("1", 6, "L R C LFE Ls"), stream("2", 1),
                           withKeys(stream("3", 1), 9, 0, 0), pairCoded("4", 33)};
  const Diagnosis diagnosis("T10=x,5.1 Mix,y,Stereo,EMCA,z", streams);
  std::vector<std::pair<std::int32_t, std::int32_t>> order;
  for (const Found& found : diagnosis.findings()) order.emplace_back(found.code, found.service);
  const std::vector<std::pair<std::int32_t, std::int32_t>> expected = {
      {KESTREL_KEY1_DIFFERS, 3},    {KESTREL_UNKNOWN_SERVICE, 0}, {KESTREL_LABEL_MISSING, 1},
      {KESTREL_UNKNOWN_SERVICE, 2}, {KESTREL_RUN_TOO_LONG, 4},    {KESTREL_UNKNOWN_SERVICE, 5}};
  EXPECT_EQ(order, expected);
}

}  // namespace
}  // namespace kestrel::test
