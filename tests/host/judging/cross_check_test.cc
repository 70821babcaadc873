#include "host/judging/cross_check.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "host/judging/expectation.h"
#include "tests/host/support/synthetic_media.h"

namespace kestrel::host {
namespace {

FileResult declared(const std::string& code, const std::string& labels,
                    const InspectOptions& options = {}) {
  RawMedia media = monoTracks(labels);
  media.declaredLayout = "EBU R 123: " + code;
  return inspectMedia(media, options);
}

// "id tracks: value / value" for each disagreement.
std::vector<std::string> disagreements(const FileResult& result) {
  std::vector<std::string> texts;
  for (const Disagreement& one : result.judgement.crossCheck->disagreements) {
    texts.push_back(fmt::format("{} {}: {} / {}", one.id, fmt::join(one.tracks, " "),
                                one.values[0].value, one.values[1].value));
  }
  return texts;
}

std::string majority(const FileResult& result) {
  return result.judgement.crossCheck->majority.sentence;
}

using Texts = std::vector<std::string>;

TEST(CrossCheckTest, aRightCodeIsNotContradicted) {
  const FileResult result = declared("8b", "L R C LFE Ls Rs L R");
  EXPECT_EQ(disagreements(result), Texts{});
  EXPECT_EQ(majority(result),
            "3 of 3 sources (declared code, tracks, labels) speak for \"5.1 Mix + Stereo "
            "Downmix\".");
}

TEST(CrossCheckTest, labelsContradictTheCode) {
  const FileResult result = declared("8a", "L R C LFE Ls Rs Lt Rt");
  EXPECT_EQ(disagreements(result),
            Texts{"labels-differ 3 4 5 6 7 8: 5.1 Mix on tracks 3 to 8 / C LFE Ls Rs Lt Rt"});
  EXPECT_EQ(
      majority(result),
      "The evidence for \"5.1 Mix + Stereo Downmix\" (tracks, labels) and \"Stereo + 5.1 Mix\" "
      "(declared code, tracks) weighs the same.");
  EXPECT_EQ(tracksOfFinding(result, "declaration-contradicted"),
            "declaration-contradicted 3 4 5 6 7 8");
}

TEST(CrossCheckTest, codedAndPlainTracksContradictTheCode) {
  const FileResult result = declared("12c", "- - E - - E - - - -");
  EXPECT_EQ(disagreements(result),
            (Texts{"coded-pair-unexpected 3 4: Stereo on tracks 3 and 4 / coded audio",
                   "coded-pair-missing 5 6: Dolby E on tracks 5 and 6 / plain audio"}));
}

TEST(CrossCheckTest, theTotalOfTracksContradictsTheCode) {
  const FileResult result = declared("12d", "L R");
  EXPECT_EQ(disagreements(result), Texts{"total-differs : 12 tracks / 2"});
  EXPECT_EQ(result.judgement.crossCheck->disagreements.front().sentence,
            "The declared code 12d says 12 tracks, the tracks say 2.");
}

TEST(CrossCheckTest, theExpectedMapIsComparedWithTheCode) {
  InspectOptions options;
  options.expectation = expectedCode("8b");
  const FileResult result = declared("8a", "L R C LFE Ls Rs Lt Rt", options);
  EXPECT_EQ(disagreements(result).front(),
            "expected-map-differs 1 2 3 4 5 6 7 8: Stereo, 5.1 Mix on tracks 1 to 8 / 5.1 Mix, "
            "Stereo");
  EXPECT_EQ(majority(result),
            "3 of 4 sources (expected map, tracks, labels) speak for \"5.1 Mix + Stereo "
            "Downmix\".");
}

TEST(CrossCheckTest, onlyTheTracksThatDifferAreNamed) {
  InspectOptions options;
  options.expectation = expectedLayout("T12=Stereo,EMCA,Stereo,EMCA,Stereo,Mono,Mono");
  const FileResult result = declared("12d", "- - E - - E - - - -", options);
  EXPECT_EQ(disagreements(result),
            Texts{"expected-map-differs 11 12: Stereo on tracks 11 and 12 / Mono, Mono"});
}

TEST(CrossCheckTest, eachStretchThatDiffersIsNamedForItself) {
  InspectOptions options;
  options.expectation = expectedLayout("T12=Mono,Mono,EMCA,Stereo,EMCA,Stereo,Mono,Mono");
  EXPECT_EQ(disagreements(declared("12d", "- - E - - E - - - -", options)),
            (Texts{"expected-map-differs 1 2: Stereo on tracks 1 and 2 / Mono, Mono",
                   "expected-map-differs 11 12: Stereo on tracks 11 and 12 / Mono, Mono"}));
}

// The library alone knows why such a file does not carry the code's services: nothing is said about
// one of them.
TEST(CrossCheckTest, anErrorOfNoServiceContradictsNothing) {
  RawMedia media = monoTracks("- - E - - E - - - -");
  media.declaredLayout = "EBU R 123: 12d";
  for (RawAudioStream& stream : media.audioStreams) {
    stream.channels = stream.format == "Dolby E" ? "0" : stream.channels;
  }
  const FileResult result = inspectMedia(media);
  EXPECT_EQ(findingIds(result, Severity::kError), "services-not-carried");
  EXPECT_EQ(disagreements(result), Texts{});
}

TEST(CrossCheckTest, tracksThatOneOfTheMapsLeavesOverDiffer) {
  InspectOptions options;
  options.expectation = expectedLayout("T12=Stereo,EMCA,Stereo,EMCA,Stereo");
  EXPECT_EQ(disagreements(declared("12d", "- - E - - E - - - -", options)),
            Texts{"expected-map-differs 11 12: Stereo on tracks 11 and 12 / nothing"});
  options.expectation = expectedLayout("T2=Stereo,Mono");
  EXPECT_EQ(disagreements(declared("2a", "L R", options)),
            Texts{"expected-map-differs 3: nothing on track 3 / Mono"});
}

TEST(CrossCheckTest, servicesBehindADashAreCompared) {
  InspectOptions options;
  options.expectation = expectedLayout("T8=5.1 Mix,-Stereo");
  EXPECT_EQ(disagreements(declared("8b", "L R C LFE Ls Rs L R", options)), Texts{});
}

TEST(CrossCheckTest, aTieIsSaid) {
  InspectOptions options;
  options.expectation = expectedCode("8b");
  EXPECT_EQ(
      majority(declared("8a", "- - - - - - - -", options)),
      "The evidence for \"5.1 Mix + Stereo Downmix\" (expected map, tracks) and \"Stereo + 5.1 "
      "Mix\" (declared code, tracks) weighs the same.");
}

TEST(CrossCheckTest, unequalFormatsContradictTheCode) {
  RawMedia media = monoTracks("- -");
  media.declaredLayout = "EBU R 123: 2a";
  media.audioStreams[1].bitDepth = "16";
  EXPECT_EQ(disagreements(inspectMedia(media)),
            Texts{"bit-depths-differ 1 2: Stereo on tracks 1 and 2 / they differ in format"});
}

TEST(CrossCheckTest, labelsThatSayNothingAreNoSource) {
  const std::string pairs = "2x Stereo/Dolby E Pairs + 2 Stereo (R123 12d)";
  EXPECT_EQ(majority(declared("12d", "- - E - - E - - - -")),
            "2 of 2 sources (declared code, tracks) speak for \"" + pairs + "\".");
  EXPECT_EQ(majority(declared("12d", "L R E L R E L R L R")),
            "3 of 3 sources (declared code, tracks, labels) speak for \"" + pairs + "\".");
}

TEST(CrossCheckTest, theEvidenceMayFitNoLayout) {
  EXPECT_EQ(majority(declared("8a", "- - -")), "No layout of the catalogue fits the evidence.");
}

TEST(CrossCheckTest, withoutACodeThereIsNone) {
  EXPECT_FALSE(inspectMedia(monoTracks("L R")).judgement.crossCheck);
  EXPECT_FALSE(declared("8c", "L R").judgement.crossCheck);
  RawMedia media = monoTracks("L R");
  media.declaredLayout = "EBU R 48: 2a";
  EXPECT_FALSE(inspectMedia(media).judgement.crossCheck);
}

}  // namespace
}  // namespace kestrel::host
