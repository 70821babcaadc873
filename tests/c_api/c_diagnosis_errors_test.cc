// Why a file does not carry its services: for every code of an error what raises it, which fields
// it uses, the outcome beside it and its sentence. So too the note that a service goes without a
// track.
#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "api/kestrel.h"
#include "tests/c_api/c_diagnosis_support.h"
#include "tests/c_api/c_request.h"

namespace kestrel::test {
namespace {

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

TEST(TooFewTracks, TellsHowManyTracksTheServiceGetsWhenTheyAreHandedOut) {
  Streams streams = withOrdinaryTracksOfTheGroup(1);
  streams.push_back(stream("4", 1));
  expectDiagnosis(
      {"T4=EMCA,Stereo", streams}, KESTREL_EMPTIED,
      {{{.code = KESTREL_TOO_FEW_TRACKS, .service = 1, .slot = 1, .first = 2, .second = 1},
        {"Stereo", "2", "1"}}});
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

TEST(ServiceWithoutTrack, IsNoNoteOnAnEmcaThatIsNotReported) {
  KestrelStream odd = stream("1", 2);
  odd.isPairCoded = 2;
  expectDiagnosis(
      {"T2=-EMCA", {odd}}, KESTREL_FILLED,
      {{{.code = KESTREL_TRACKS_LEFT_OVER, .stream = 0, .track = 1, .second = 2}, {"2"}}});
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

}  // namespace
}  // namespace kestrel::test
