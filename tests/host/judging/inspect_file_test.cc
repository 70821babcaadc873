#include "host/judging/inspect_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <new>

#include "host/evidence/stream_mapping.h"
#include "host/evidence/track_map.h"
#include "host/judging/expectation.h"
#include "host/judging/library_analysis.h"
#include "tests/host/support/synthetic_media.h"

namespace kestrel::host {
namespace {

InspectOptions expecting(const std::string& layout) {
  InspectOptions options;
  options.expectation = expectedLayout(layout);
  return options;
}

TEST(InspectFileTest, aConformingFileHasItsServices) {
  const FileResult result =
      inspectMedia(monoTracks("L R C LFE Ls Rs L R"), expecting("T8=5.1 Mix,Stereo"));
  EXPECT_EQ(result.verdict.result, VerdictResult::kConforms);
  EXPECT_EQ(result.verdict.exitCode, ExitCode::kConforms);
  EXPECT_EQ(result.verdict.sentence, "The file carries the expected services.");
  ASSERT_EQ(result.judgement.services.size(), 2u);
  EXPECT_EQ(result.judgement.services[0].name, "5.1 Mix");
  EXPECT_EQ(result.judgement.services[0].tracks, trackRange(1, 6));
  EXPECT_EQ(result.judgement.services[0].labels,
            (std::vector<std::string>{"L", "R", "C", "LFE", "Ls", "Rs"}));
  EXPECT_TRUE(result.judgement.services[1].isHeld);
  EXPECT_TRUE(result.judgement.findings.empty());
}

TEST(InspectFileTest, anErrorKeepsTheFileFromConforming) {
  const struct {
    const char* labels;
    const char* layout;
    const char* errors;
    const char* sentence;
  } rows[] = {
      {"- -", "T8=5.1 Mix,Stereo;T4=Stereo,Stereo", "no-entry",
       "The file has 2 tracks; the expected layout is for 8 and 4 tracks."},
      {"- - E - -", "T6=Stereo,Stereo,Stereo", "coded-pair-unexpected",
       "A plain Stereo is expected on tracks 3 and 4, but coded audio (Dolby E) is on tracks 3 and "
       "4."},
      {"- - - -", "T4=Stereo,EMCA", "coded-pair-missing",
       "A coded pair (EMCA) is expected on tracks 3 and 4, but plain audio is on tracks 3 and 4."},
      {"- - - -", "T4=Stereo,Stereo,Stereo", "too-few-tracks",
       "The Stereo needs tracks 5 and 6, but the file ends with track 4."},
      {"- - E - -", "T6=EMCA,Stereo,EMCA",
       "coded-pair-missing coded-pair-unexpected coded-pair-missing",
       "A coded pair (EMCA) is expected on tracks 1 and 2, but plain audio is on tracks 1 and 2."},
  };
  for (const auto& row : rows) {
    const FileResult result = inspectMedia(monoTracks(row.labels), expecting(row.layout));
    EXPECT_EQ(result.verdict.result, VerdictResult::kDoesNotConform) << row.layout;
    EXPECT_EQ(result.verdict.exitCode, ExitCode::kDoesNotConform) << row.layout;
    EXPECT_EQ(findingIds(result, Severity::kError), row.errors);
    EXPECT_EQ(result.judgement.findings.front().sentence, row.sentence);
  }
}

// All coded streams of such a file share one pair, and the library gives that the tracks between
// them too. So it fills services that lie past the end of the file's tracks.
TEST(InspectFileTest, aServicePastTheEndIsAnErrorWhateverTheLibrarySays) {
  RawAudioStream first = plainStream("1", 2);
  first.muxingMode = "SMPTE ST 337";
  RawAudioStream second = first;
  second.id = "3";
  RawMedia media = mediaOf({first, plainStream("2", 2), second});
  media.container = "Wave";
  const FileResult result = inspectMedia(media, expecting("T4=EMCA,Stereo,EMCA"));
  EXPECT_EQ(result.verdict.result, VerdictResult::kDoesNotConform);
  EXPECT_EQ(findingIds(result, Severity::kError), "too-few-tracks");
  EXPECT_EQ(sentenceOf(result, "too-few-tracks"),
            "The EMCA needs tracks 5 and 6, but the file ends with track 4.");

  media = mediaOf({first, plainStream("2", 2), second, plainStream("4", 6)});
  media.container = "Wave";
  const FileResult labelled = inspectMedia(media, expecting("T10=EMCA,Stereo,EMCA,5.1 Mix"));
  EXPECT_EQ(labelled.verdict.result, VerdictResult::kDoesNotConform);
  EXPECT_EQ(sentenceOf(labelled, "too-few-tracks"),
            "The 5.1 Mix needs tracks 7 to 12, but the file ends with track 10.");
}

// The track map gives a coded stream its pair, the library counts the channels that it is said to
// have. Then the library alone knows why.
TEST(InspectFileTest, anErrorIsNeverWithoutAWord) {
  RawAudioStream coded = plainStream("1-1", 0);
  coded.muxingMode = "SMPTE ST 337";
  const FileResult result = inspectMedia(mediaOf({coded}), expecting("T2=EMCA"));
  EXPECT_EQ(findingIds(result, Severity::kError), "services-not-carried");
  EXPECT_EQ(sentenceOf(result, "services-not-carried"),
            "The file runs out of tracks at track 1 of service 1 (EMCA): it needs 2 and gets 0.");
  EXPECT_EQ(tracksOfFinding(result, "services-not-carried"), "services-not-carried ");
  EXPECT_EQ(result.verdict.exitCode, ExitCode::kDoesNotConform);
}

TEST(InspectFileTest, neighboursOfUnequalFormatAreNamedWithTheirValues) {
  RawMedia media = monoTracks("- -");
  media.audioStreams[1].samplingRate = "44100";
  FileResult result = inspectMedia(media, expecting("T2=Stereo"));
  EXPECT_EQ(sentenceOf(result, "sample-rates-differ"),
            "The Stereo on tracks 1 and 2 joins different sampling rates: 48000 Hz on track 1, "
            "44100 Hz on track 2.");
  media.audioStreams[1].bitDepth = "16";
  media.audioStreams[1].format = "AAC";
  result = inspectMedia(media, expecting("T2=Stereo"));
  EXPECT_EQ(findingIds(result, Severity::kError),
            "sample-rates-differ bit-depths-differ formats-differ");
  EXPECT_EQ(result.verdict.exitCode, ExitCode::kDoesNotConform);
  EXPECT_FALSE(result.judgement.services[0].isHeld);
}

TEST(InspectFileTest, aServiceHasOneFindingForEachProperty) {
  const auto withRates = [](RawMedia media) {
    for (std::size_t index = 1; index < media.audioStreams.size(); index += 2) {
      media.audioStreams[index].samplingRate = "44100";
    }
    return media;
  };
  const FileResult one =
      inspectMedia(withRates(monoTracks("- - - - - -")), expecting("T6=5.1 Mix"));
  EXPECT_EQ(findingIds(one, Severity::kError), "sample-rates-differ");
  EXPECT_EQ(sentenceOf(one, "sample-rates-differ"),
            "The 5.1 Mix on tracks 1 to 6 joins different sampling rates: 48000 Hz on tracks 1, 3 "
            "and 5, 44100 Hz on tracks 2, 4 and 6.");
  const FileResult two =
      inspectMedia(withRates(monoTracks("- - - -")), expecting("T4=Stereo,Stereo"));
  EXPECT_EQ(tracksOfFinding(two, "sample-rates-differ"),
            "sample-rates-differ 1 2; sample-rates-differ 3 4");
}

TEST(InspectFileTest, allFormatsOfCodedAudioAreNamed) {
  RawMedia media = monoTracks("E E - -");
  media.audioStreams[2].format = media.audioStreams[3].format = "AC-3";
  EXPECT_EQ(sentenceOf(inspectMedia(media, expecting("T6=5.1 Mix")), "coded-pair-unexpected"),
            "A plain 5.1 Mix is expected on tracks 1 to 6, but coded audio (Dolby E, AC-3) is on "
            "tracks 1 to 4.");
}

TEST(InspectFileTest, withoutAnOrderAnyIsRight) {
  InspectOptions options = expecting("T6=5.1 Mix");
  options.surroundChannelOrder = "";
  EXPECT_EQ(findingIds(inspectMedia(monoTracks("L C R Ls Rs LFE"), options), Severity::kWarning),
            "");
}

TEST(InspectFileTest, whatTheLibraryRefusesIsSaid) {
  InspectOptions options = expecting("T6=5.1 Mix");
  options.surroundChannelOrder = "\xff";
  const FileResult result = inspectMedia(monoTracks("L C R Ls Rs LFE"), options);
  ASSERT_TRUE(result.error);
  EXPECT_EQ(result.error->id, "failed");
  EXPECT_EQ(result.error->sentence, "the library's answer: text is not UTF-8");
}

TEST(InspectFileTest, anEmptyDescriptionHasNoTotals) {
  const LibraryStreams streams(mapMedia(monoTracks("- -")).streams);
  EXPECT_TRUE(LibraryAnalysis(streams, "", {}).describedTotals().empty());
  EXPECT_EQ(LibraryAnalysis(streams, "T8=5.1 Mix,Stereo;T4=Stereo", {}).describedTotals(),
            (std::vector<std::int32_t>{8, 4}));
}

TEST(InspectFileTest, oddLabelsAreWarnings) {
  const struct {
    const char* labels;
    const char* warnings;
    const char* finding;
  } rows[] = {
      {"L R C LFE Ls Rs", "", ""},
      {"L L C LFE Ls Rs", "labels-doubled", "labels-doubled 2"},
      {"L R L LFE Ls Rs", "labels-doubled", "labels-doubled 3"},
      {"L R C LFE Ls L", "labels-doubled", "labels-doubled 6"},
      {"L R C LFE Ls -", "labels-incomplete", "labels-incomplete 6"},
      {"L R C LFE X1 X2", "labels-unknown", "labels-unknown 5 6"},
      {"L C R Ls Rs LFE", "labels-reordered", "labels-reordered 1 2 3 4 5 6"},
      {"- R R X1 Ls Rs", "labels-incomplete labels-unknown labels-doubled", "labels-doubled 3"},
      {"- - - - - -", "", ""},
  };
  for (const auto& row : rows) {
    const FileResult result = inspectMedia(monoTracks(row.labels), expecting("T6=5.1 Mix"));
    EXPECT_EQ(result.verdict.result, VerdictResult::kConforms) << row.labels;
    EXPECT_EQ(findingIds(result, Severity::kWarning), row.warnings) << row.labels;
    const std::string id = std::string(row.finding).substr(0, std::string(row.finding).find(' '));
    EXPECT_EQ(tracksOfFinding(result, id), row.finding);
  }
}

TEST(InspectFileTest, absentLabelsAreANote) {
  const FileResult result = inspectMedia(monoTracks("- - - - - -"), expecting("T6=5.1 Mix"));
  EXPECT_EQ(findingIds(result, Severity::kNote), "labels-absent");
  EXPECT_EQ(result.judgement.services[0].labels.size(), 6u);
}

TEST(InspectFileTest, withoutLabelCheckLabelsAreNotLookedAt) {
  InspectOptions options = expecting("T6=5.1 Mix");
  options.checkLabels = false;
  options.surroundChannelOrder = "C L R Ls Rs LFE";
  const FileResult result = inspectMedia(monoTracks("L L L L L L"), options);
  EXPECT_TRUE(result.judgement.findings.empty());
  EXPECT_EQ(result.judgement.services[0].labels.front(), "C");
}

TEST(InspectFileTest, theOrderIsWhatLabelsAreHeldAgainst) {
  InspectOptions options = expecting("T6=5.1 Mix");
  options.surroundChannelOrder = "L C R Ls Rs LFE";
  EXPECT_TRUE(inspectMedia(monoTracks("L C R Ls Rs LFE"), options).judgement.findings.empty());
  EXPECT_EQ(sentenceOf(inspectMedia(monoTracks("L R C LFE Ls Rs"), options), "labels-reordered"),
            "The 5.1 Mix on tracks 1 to 6 has a full set of labels in the order L R C LFE Ls Rs "
            "instead of L C R Ls Rs LFE.");
}

TEST(InspectFileTest, strictLetsWarningsFail) {
  InspectOptions options = expecting("T6=5.1 Mix");
  const RawMedia media = monoTracks("L C R Ls Rs LFE");
  EXPECT_EQ(inspectMedia(media, options).verdict.sentence,
            "The file carries the expected services, with a warning.");
  EXPECT_EQ(inspectMedia(media, options).verdict.exitCode, ExitCode::kConforms);
  options.isStrict = true;
  EXPECT_EQ(inspectMedia(media, options).verdict.exitCode, ExitCode::kDoesNotConform);
  EXPECT_EQ(inspectMedia(media, options).verdict.sentence,
            "The file carries the expected services, with a warning, which fails because of "
            "--strict.");
}

TEST(InspectFileTest, strictLetsWarningsOfAnIdentifiedFileFail) {
  RawMedia media = monoTracks("L R");
  media.isTruncated = "Yes";
  InspectOptions options;
  EXPECT_EQ(inspectMedia(media, options).verdict.exitCode, ExitCode::kConforms);
  options.isStrict = true;
  EXPECT_EQ(inspectMedia(media, options).verdict.exitCode, ExitCode::kDoesNotConform);
}

TEST(InspectFileTest, notesNeverFail) {
  InspectOptions options = expecting("T6=5.1 Mix");
  options.isStrict = true;
  EXPECT_EQ(inspectMedia(monoTracks("- - - - - -"), options).verdict.exitCode, ExitCode::kConforms);
}

TEST(InspectFileTest, withoutExpectationTheDeclarationCounts) {
  RawMedia media = monoTracks("L R C LFE Ls Rs L R");
  media.declaredLayout = "EBU R 123: 8b";
  const FileResult result = inspectMedia(media);
  EXPECT_EQ(result.judgement.expectation->kind, ExpectationKind::kDeclared);
  EXPECT_EQ(result.verdict.result, VerdictResult::kConforms);
  EXPECT_EQ(result.verdict.sentence, "The file carries \"5.1 Mix + Stereo Downmix\".");
}

TEST(InspectFileTest, withoutExpectationAndDeclarationTheFileIsIdentified) {
  const FileResult result = inspectMedia(monoTracks("L R"));
  EXPECT_FALSE(result.judgement.expectation);
  EXPECT_EQ(result.verdict.result, VerdictResult::kIdentified);
  EXPECT_EQ(result.verdict.exitCode, ExitCode::kConforms);
  EXPECT_EQ(result.verdict.sentence, "Nothing was expected; the file looks like \"Stereo\".");
}

TEST(InspectFileTest, whatNoLayoutFitsDoesNotConform) {
  const FileResult result = inspectMedia(monoTracks("- - - - - - - - - - - - - -"));
  EXPECT_EQ(result.verdict.result, VerdictResult::kDoesNotConform);
  EXPECT_EQ(findingIds(result, Severity::kNote), "not-identified");
  EXPECT_EQ(trackTotal(result.facts.map), 14);
}

TEST(InspectFileTest, fourteenTracksMayBeExpected) {
  const FileResult result = inspectMedia(monoTracks("- - - - - - - - - - - - - -"),
                                         expecting("T14=7.1 Mix,Stereo,Stereo,Stereo"));
  EXPECT_EQ(result.verdict.result, VerdictResult::kConforms);
}

TEST(InspectFileTest, aWrongDeliveryIsToldByWhatItLooksLike) {
  InspectOptions options;
  options.expectation = expectedItem("4 Stereo");
  options.isStrict = true;
  const FileResult result = inspectMedia(monoTracks("E - -"), options);
  EXPECT_EQ(sentenceOf(result, "looks-like"), "none");
  const FileResult stereo = inspectMedia(monoTracks("L R"), options);
  EXPECT_EQ(sentenceOf(stereo, "looks-like"), "The file looks like \"Stereo\".");
}

TEST(InspectFileTest, anUnknownDeclarationIsAWarningAndAnotherVocabularyANote) {
  RawMedia media = monoTracks("L R");
  media.declaredLayout = "EBU R 123: 8c";
  EXPECT_EQ(findingIds(inspectMedia(media), Severity::kWarning), "declared-code-unknown");
  EXPECT_EQ(inspectMedia(media).verdict.result, VerdictResult::kIdentified);
  media.declaredLayout = "EBU R 48: 2a";
  const FileResult result = inspectMedia(media);
  EXPECT_EQ(findingIds(result, Severity::kWarning), "");
  EXPECT_EQ(findingIds(result, Severity::kNote), "declared-code-not-r123");
  EXPECT_EQ(result.verdict.result, VerdictResult::kIdentified);
}

TEST(InspectFileTest, anAmbiguousCodeIsOneWarning) {
  RawMedia media = monoTracks("- -");
  media.declaredLayout = "EBU R 123: 12a";
  EXPECT_EQ(findingIds(inspectMedia(media), Severity::kWarning), "code-ambiguous");
  InspectOptions options;
  options.expectation = expectedCode("12a");
  EXPECT_EQ(findingIds(inspectMedia(media, options), Severity::kWarning), "code-ambiguous");
}

TEST(InspectFileTest, tracksThatAreLeftOverAreAWarning) {
  const FileResult result = inspectMedia(monoTracks("- - - -"), expecting("T4=Stereo"));
  EXPECT_EQ(result.verdict.result, VerdictResult::kConforms);
  EXPECT_EQ(tracksOfFinding(result, "tracks-left-over"), "tracks-left-over 3 4");
}

TEST(InspectFileTest, servicesBehindADashAreListedOnRequest) {
  InspectOptions options = expecting("T6=Stereo,-EMCA,Stereo");
  EXPECT_EQ(inspectMedia(monoTracks("- - E - -"), options).judgement.services.size(), 2u);
  options.reportAll = true;
  const FileResult result = inspectMedia(monoTracks("- - E - -"), options);
  ASSERT_EQ(result.judgement.services.size(), 3u);
  EXPECT_FALSE(result.judgement.services[1].isRequested);
  ASSERT_EQ(result.judgement.services[1].programmes.size(), 2u);
  EXPECT_EQ(result.judgement.services[1].programmes[0].channels, 6);
}

TEST(InspectFileTest, findingsOfServicesBehindADashKeepTheOthersNumbers) {
  const FileResult result =
      inspectMedia(monoTracks("- - - - - -"), expecting("T6=-EMCA,Stereo,EMCA"));
  ASSERT_EQ(findingIds(result, Severity::kError), "coded-pair-missing coded-pair-missing");
  EXPECT_FALSE(result.judgement.findings[0].service);
  EXPECT_EQ(result.judgement.findings[1].service, 1u);
}

class FailingReader : public MediaReader {
 public:
  ReadMedia read(const std::filesystem::path& file) const override {
    if (file == "memory") throw std::bad_alloc();
    throw std::runtime_error("something");
  }
};

class QuickReader : public MediaReader {
 public:
  ReadMedia read(const std::filesystem::path& /*file*/) const override {
    return {monoTracks("L R"), "libmediainfo-quick", "only a quick look was possible"};
  }
};

TEST(InspectFileTest, aQuickLookIsAWarning) {
  InspectOptions options;
  options.reader = std::make_shared<QuickReader>();
  const FileResult result = inspectFile("any", options);
  EXPECT_EQ(findingIds(result, Severity::kWarning), "quick-read");
  EXPECT_EQ(sentenceOf(result, "quick-read"), "only a quick look was possible");
}

TEST(InspectFileTest, nothingIsRaisedForAFile) {
  InspectOptions options;
  options.reader = std::make_shared<FailingReader>();
  EXPECT_EQ(inspectFile("memory", options).error->id, "no-memory");
  const FileResult result = inspectFile("other", options);
  EXPECT_EQ(result.error->id, "failed");
  EXPECT_EQ(result.verdict.result, VerdictResult::kNotExamined);
  EXPECT_EQ(result.verdict.exitCode, ExitCode::kNotExamined);
}

TEST(InspectFileTest, aForgedNumberOfChannelsTakesNoMemory) {
  EXPECT_EQ(inspectMedia(mediaOf({plainStream("1", 2'000'000'000)})).error->id, "too-many-tracks");
  EXPECT_EQ(inspectMedia(mediaOf({})).error->id, "no-audio");
}

std::string claimOf(std::size_t streams, int channels) {
  const auto result =
      inspectMedia(mediaOf(std::vector<RawAudioStream>(streams, plainStream("", channels))));
  return result.error ? result.error->sentence : "";
}

TEST(InspectFileTest, aTrackThatIsClaimedCountsOnce) {
  EXPECT_EQ(claimOf(4095, 1), "");
  EXPECT_EQ(claimOf(4096, 1), "");
  EXPECT_EQ(claimOf(4097, 1), "it claims to have 4097 audio tracks");
  EXPECT_EQ(claimOf(512, 8), "");
  EXPECT_EQ(claimOf(513, 8), "it claims to have 4104 audio tracks");
  EXPECT_EQ(claimOf(2, 2'000'000'000), "it claims to have 4000000000 audio tracks");
  EXPECT_EQ(claimOf(4097, 0), "it claims to have 4097 audio streams on 0 tracks");
}

TEST(InspectFileTest, whatIsClaimedIsWhatIsLaidOut) {
  for (const char* labels : {"-", "- - E - -", "E E", "- E", "L R C"}) {
    const MappedMedia media = mapMedia(monoTracks(labels));
    EXPECT_EQ(claimedTracks(media), std::ssize(trackMap(media).tracks)) << labels;
  }
}

TEST(InspectFileTest, theTracksAreAsManyAsTheLibraryCounts) {
  for (const char* labels : {"-", "- - E - -", "E E", "- E", "L R C"}) {
    const RawMedia media = monoTracks(labels);
    const LibraryStreams streams(mapMedia(media).streams);
    EXPECT_EQ(LibraryAnalysis(streams, "", {}).trackTotal(),
              static_cast<std::int32_t>(trackMapOf(media).tracks.size()))
        << labels;
  }
}

}  // namespace
}  // namespace kestrel::host
