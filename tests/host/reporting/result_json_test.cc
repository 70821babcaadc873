#include "host/reporting/result_json.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/host/support/synthetic_media.h"

namespace kestrel::host {
namespace {

TEST(ResultJsonTest, theNamesAreThoseOfTheSchema) {
  RawMedia media = monoTracks("L R - - E");
  media.declaredLayout = "EBU R 123: 12h";
  const auto json = toJson(inspectMedia(media));
  EXPECT_EQ(json["schema"], "kestrel-result-1");
  EXPECT_EQ(json["file"], "made-up.mxf");
  EXPECT_FALSE(json.contains("fileBytes"));
  EXPECT_EQ(json["verdict"]["result"], "does-not-conform");
  EXPECT_EQ(json["verdict"]["exitCode"], 1);
  EXPECT_EQ(json["error"], nullptr);
  EXPECT_EQ(json["trackTotal"], 6);
  EXPECT_EQ(json["streams"][4]["programme"], 1);
  EXPECT_EQ(json["streams"][0]["programme"], nullptr);
  EXPECT_EQ(json["tracks"][4]["streams"], nlohmann::json({4, 5}));
  EXPECT_EQ(json["declared"]["item"]["id"], 27);
  EXPECT_EQ(json["expectation"]["kind"], "declared");
  EXPECT_EQ(json["crossCheck"]["agrees"], false);
  EXPECT_EQ(json["findings"][0]["severity"], "error");
  EXPECT_EQ(json["findings"][0]["service"], nullptr);
}

TEST(ResultJsonTest, anEmptyListIsAList) {
  const auto json = toJson(FileResult{});
  for (const char* name : {"streams", "tracks", "services", "identification", "findings"}) {
    EXPECT_TRUE(json[name].is_array()) << name;
  }
}

TEST(ResultJsonTest, anyNameComesBackExactly) {
  for (const std::string name : {"film.mxf", "t\xc3\xa9l\xc3\xa9.mxf", "\xe9t\xe9.mxf", "a\nb\"c",
                                 "\xff", "\xed\xa0\x80", "\xef\xbf\xbd", ""}) {
    FileResult result;
    result.facts.file = name;
    const std::string line = toJson(result).dump();
    EXPECT_EQ(line.find('\n'), std::string::npos);
    EXPECT_EQ(fileNameIn(nlohmann::ordered_json::parse(line)), name);
  }
}

TEST(ResultJsonTest, theNameOfALayoutFileMayBeAnything) {
  FileResult result;
  result.judgement.expectation =
      Expectation{ExpectationKind::kLayoutFile, "caf\xe9.txt", {}, "", "T2=Stereo"};
  EXPECT_EQ(toJson(result)["expectation"]["text"], "caf\xef\xbf\xbd.txt");
  EXPECT_NO_THROW(toJson(result).dump());
}

TEST(ResultJsonTest, bytesThatAreNotUtf8StandBeside) {
  FileResult result;
  result.facts.file = "\xe9.mxf";
  EXPECT_EQ(toJson(result)["file"], "\xef\xbf\xbd.mxf");
  EXPECT_EQ(toJson(result)["fileBytes"], "e92e6d7866");
}

}  // namespace
}  // namespace kestrel::host
