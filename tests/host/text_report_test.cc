#include "host/text_report.h"

#include <gtest/gtest.h>

namespace kestrel::host {
namespace {

Inspection monoFile() {
  Inspection inspection;
  inspection.file = "a\nb.mxf";
  inspection.request.layoutDescription = "T1=Mono";
  inspection.check.conformance = Conformance::kConforms;
  inspection.media.container = "MXF";
  AudioStreamInfo stream;
  stream.channelCount = 1;
  stream.trackLabels = L"L";
  stream.formatKey1 = 48000;
  stream.formatKey2 = 24;
  inspection.media.streams.push_back(stream);
  inspection.media.shown.push_back({"2001", "PCM"});
  ServiceMapResult service;
  service.trackCount = 1;
  service.slots[0] = {1, 0, 0, 0};
  inspection.check.services.push_back(service);
  return inspection;
}

TEST(TextReportTest, aConformingFileShowsItsServices) {
  EXPECT_EQ(textReport(monoFile()),
            "File      a\\nb.mxf (MXF)\n"
            "Audio     1 stream\n"
            "Expected  T1=Mono\n"
            "Result    the file carries these services\n"
            "\n"
            "Service  Tracks  Labels\n"
            "Mono     2001\n");
}

TEST(TextReportTest, anotherFileShowsItsStreams) {
  Inspection inspection = monoFile();
  inspection.check = {Conformance::kOtherServices, {}};
  EXPECT_EQ(textReport(inspection),
            "File      a\\nb.mxf (MXF)\n"
            "Audio     1 stream\n"
            "Expected  T1=Mono\n"
            "Result    the file does not carry these services\n"
            "\n"
            "Stream  Channels  Format  Hz     Bits  Labels\n"
            "2001    1         PCM     48000  24    L\n");
}

TEST(TextReportTest, unequalFormatsAreNamed) {
  Inspection inspection = monoFile();
  inspection.check = {Conformance::kUnequalFormats, {}};
  EXPECT_NE(textReport(inspection)
                .find("does not carry these services: neighbouring tracks of "
                      "one service differ in format\n"),
            std::string::npos);
}

TEST(TextReportTest, declarationAndWarningsAreShown) {
  Inspection inspection = monoFile();
  inspection.media.declaredLayout = "EBU R 123: 8b";
  inspection.media.warnings = {"first", "second"};
  const std::string report = textReport(inspection);
  EXPECT_NE(report.find("\nDeclared  EBU R 123: 8b\nExpected"), std::string::npos);
  EXPECT_NE(report.find("\nWarning   first\nWarning   second\n"), std::string::npos);
}

TEST(TextReportTest, servicesThatWereNotRequestedAreMarked) {
  Inspection inspection = monoFile();
  EXPECT_EQ(textReport(inspection).find("not requested"), std::string::npos);
  inspection.request.reportAll = true;
  EXPECT_NE(textReport(inspection).find("\nMono (not requested)  2001\n"), std::string::npos);
  inspection.check.services[0].requested = 1;
  EXPECT_EQ(textReport(inspection).find("not requested"), std::string::npos);
}

}  // namespace
}  // namespace kestrel::host
