#include "host/reporting/text_report.h"

#include <gtest/gtest.h>

#include <sstream>

#include "host/basics/text_columns.h"
#include "host/judging/expectation.h"
#include "tests/host/support/synthetic_media.h"

namespace kestrel::host {
namespace {

InspectOptions expecting(const std::string& layout) {
  InspectOptions options;
  options.expectation = expectedLayout(layout);
  return options;
}

TEST(TextReportTest, aConformingFileShowsItsServicesBesideItsTracks) {
  EXPECT_EQ(textReport(inspectMedia(monoTracks("L R -"), expecting("T3=Stereo,Mono")), {}),
            "File      made-up.mxf (MXF, 3 tracks)\n"
            "Expected  T3=Stereo,Mono\n"
            "Verdict   The file carries the expected services.\n"
            "\n"
            "Track  Stream  Label  Format                Expected\n"
            "    1  1       L      PCM 48000 Hz 24 bits  ┌ Stereo\n"
            "    2  2       R      PCM 48000 Hz 24 bits  └\n"
            "    3  3              PCM 48000 Hz 24 bits  ─ Mono\n"
            "\n"
            "note      No layout of the catalogue fits 3 tracks like these.\n");
}

TEST(TextReportTest, aWrongDeliveryShowsWhatItIsBesideWhatWasExpected) {
  const std::string report = textReport(inspectMedia(monoTracks("L R"), expecting("T2=EMCA")), {});
  EXPECT_NE(report.find("    1  1       L      PCM 48000 Hz 24 bits  ┌ EMCA ✗  ┌ Stereo\n"
                        "    2  2       R      PCM 48000 Hz 24 bits  └         └\n"),
            std::string::npos)
      << report;
  EXPECT_NE(report.find("error     A coded pair (EMCA) is expected on tracks 1 and 2, but plain "
                        "audio is on tracks 1 and 2.\n"
                        "note      The file looks like \"Stereo\".\n"),
            std::string::npos)
      << report;
  EXPECT_NE(report.find("\nFits      \"Stereo\", EBU R 123 2a, 3 points\n"
                        "          +2 The Stereo on tracks 1 and 2 has the labels of a pair: L R.\n"
                        "          +1 The tracks of each service agree in format.\n"),
            std::string::npos)
      << report;
}

TEST(TextReportTest, theDeclarationAndTheEvidenceAreShown) {
  RawMedia media = monoTracks("L R");
  media.declaredLayout = "EBU R 123: 2a";
  const std::string report = textReport(inspectMedia(media), {});
  EXPECT_NE(report.find("\nDeclared  EBU R 123: 2a (\"Stereo\")\n"
                        "Expected  \"Stereo\" (T2=Stereo)\n"),
            std::string::npos)
      << report;
  EXPECT_NE(report.find("\nEvidence  Nothing contradicts the declared code. 3 of 3 sources "),
            std::string::npos)
      << report;
}

TEST(TextReportTest, noLineIsWiderThanTheTerminal) {
  RawMedia media = monoTracks("L R C LFE Ls Rs L R");
  media.declaredLayout = "EBU R 123: 8a";
  const FileResult result = inspectMedia(media);
  for (const std::size_t columns : {20U, 40U, 80U, 132U}) {
    std::istringstream lines(textReport(result, {false, columns}));
    for (std::string line; std::getline(lines, line);) {
      EXPECT_LE(columnsOf(line), columns) << line;
    }
  }
}

TEST(TextReportTest, coloursAreThereOnlyWhereTheyAreWanted) {
  const FileResult result = inspectMedia(monoTracks("L R"), expecting("T2=Stereo"));
  EXPECT_EQ(textReport(result, {}).find('\x1b'), std::string::npos);
  EXPECT_NE(textReport(result, {true, 0}).find("\x1b[36m┌ Stereo"), std::string::npos);
}

TEST(TextReportTest, textsOfAFileCannotDisturbTheTerminal) {
  RawMedia media = monoTracks("L R");
  media.container = "M\x1b[31mXF";
  media.declaredLayout = "\nEBU\x07";
  media.audioStreams[0].format = "P\rCM";
  media.audioStreams[1].channelLayout = "\x1b]";
  media.audioStreams[1].id = "2\n";
  std::string report = textReport(inspectMedia(media), {});
  EXPECT_EQ(report.find_first_of("\x1b\x07\r"), std::string::npos) << report;
}

}  // namespace
}  // namespace kestrel::host
