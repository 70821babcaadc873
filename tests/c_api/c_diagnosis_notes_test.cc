// What may stand beside any outcome: for every code of a finding that is no error what raises it,
// which fields it uses, the outcome beside it and its sentence.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "api/kestrel.h"
#include "tests/c_api/c_diagnosis_support.h"
#include "tests/c_api/c_request.h"

namespace kestrel::test {
namespace {

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

TEST(Labels, OutOfOrderAreToldOnTheFirstTrackThatDiffers) {
  Streams streams;
  const char* const labels[] = {"L", "R", "C", "Rs", "Ls", "LFE"};
  for (const char* const id : {"11", "12", "13", "14", "15", "16"})
    streams.push_back(stream(id, 1, labels[streams.size()]));
  expectDiagnosis(
      {"T6=5.1 Mix", streams}, KESTREL_FILLED,
      {{{.code = KESTREL_LABELS_REORDERED, .service = 0, .slot = 3, .stream = 3, .track = 14},
        {"track 14"}}});
}

TEST(Labels, AreReadOffTheFirstStreamWithTheTrackNumber) {
  expectDiagnosis({"T6=5.1 Mix", {stream("7", 0, kSixLabels), stream("7", 6)}}, KESTREL_FILLED, {});
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

TEST(Labels, OutOfOrderAreToldOnlyWhereTheRequestHasAnOrder) {
  const Streams streams = {stream("7", 6, "R L C LFE Ls R")};
  const std::vector<Expected> doubled = {label(KESTREL_LABEL_DOUBLED, 5, 0)};
  for (const char* const order : {"", "L R C", kSixLabels})
    expectDiagnosis(Diagnosis::withOrder(order, "T6=5.1 Mix", streams), KESTREL_FILLED, doubled);
}

TEST(Labels, OfEachMixAreComparedWithTheOrder) {
  const Streams streams = {stream("7", 6, "R L C LFE Ls Rs"), stream("8", 6, kSixLabels),
                           stream("9", 6, "L R C LFE Rs Ls")};
  const auto reordered = [](std::int32_t service, std::int32_t slot, std::int64_t track) {
    return Expected{{.code = KESTREL_LABELS_REORDERED,
                     .service = service,
                     .slot = slot,
                     .stream = service,
                     .track = track},
                    {"5.1 Mix"}};
  };
  expectDiagnosis({"T18=5.1 Mix,5.1 Mix,5.1 Mix", streams}, KESTREL_FILLED,
                  {reordered(0, 0, 7), reordered(2, 4, 9)});
}

TEST(Labels, HaveNoOrderToBeInWhereThatOfTheRequestIsNoFullSet) {
  for (const char* order : {"", "L R C LFE Ls", "R L C LFE Ls Wide"}) {
    SCOPED_TRACE(order);
    expectDiagnosis(Diagnosis::withOrder(order, "T6=5.1 Mix", {stream("7", 6, kSixLabels)}),
                    KESTREL_FILLED, {});
  }
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

}  // namespace
}  // namespace kestrel::test
