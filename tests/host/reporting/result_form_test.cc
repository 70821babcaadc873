// Results that come back from a file are held against their form before anything is made of them.
#include "host/reporting/result_form.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "host/reporting/report.h"
#include "host/reporting/results_file.h"
#include "tests/host/support/html_documents.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

Json scanLine() {
  Json document = brokenDocument();
  document["identity"] = {{"size", 12}, {"modified", "2026-01-31T12:00:00.123456789Z"}};
  document["options"] = {{"expectation", document["expectation"]},
                         {"order", "L R C LFE Ls Rs"},
                         {"labelCheck", true},
                         {"reportAll", false},
                         {"strict", false},
                         {"timeout", 30}};
  document["fileBytes"] = "00ff";
  document["services"][0]["programmes"] =
      Json::parse(R"([{"stream":0,"channels":6,"labels":["L"]}])");
  document["error"] = {{"id", "no-audio"}, {"sentence", "x"}};
  return document;
}

using Pointer = Json::json_pointer;

std::string errorAt(const std::string& place, const Json& value) {
  Json document = scanLine();
  document[Pointer(place)] = value;
  return formErrorIn(document);
}

TEST(ResultFormTest, whatTheProgramWritesHasIt) {
  for (const Json& document : allDocuments()) {
    EXPECT_EQ(formErrorIn(document), "");
  }
  EXPECT_EQ(formErrorIn(scanLine()), "");
}

TEST(ResultFormTest, everyValueHasOneTypeOnly) {
  std::size_t tried = 0;
  const Json places = scanLine().flatten();
  for (const auto& [place, value] : places.items()) {
    for (const Json& other : {Json(7.5), Json("\x1b"), Json(true), Json(Json::object()),
                              Json::array({Json::array()}), Json(-1)}) {
      if (other.type() == value.type() || (other.is_number() && value.is_string())) {
        continue;
      }
      ++tried;
      EXPECT_NE(errorAt(place, other), "") << place << " as " << other;
    }
  }
  EXPECT_GT(tried, 500U);
}

TEST(ResultFormTest, whatEveryResultHasMayNotLack) {
  const Json whole = brokenDocument();
  for (const auto& [name, value] : whole.items()) {
    Json document = whole;
    document.erase(name);
    EXPECT_EQ(formErrorIn(document), name + " is not there");
  }
}

TEST(ResultFormTest, numbersHaveTheirRanges) {
  const struct {
    const char* place;
    std::vector<Json> good;
    std::vector<Json> bad;
  } rows[] = {
      {"/trackTotal", {0, 1, 4096}, {-1, 4097, 2147483647, 18446744073709551615U, 1.0}},
      {"/tracks/0/number", {1, 4096}, {0, 4097}},
      {"/tracks/0/channel", {1, 4096}, {0, 4097}},
      {"/tracks/0/streams/0", {0, 7}, {-1, 8, 4294967296}},
      {"/streams/0/channels", {0, 2147483647}, {-1, 2147483648}},
      {"/streams/0/sampleRate", {0, 2147483647}, {-1, 2147483648}},
      {"/streams/0/programme", {nullptr, 1, 4096}, {0, 4097}},
      {"/services/0/tracks/0", {7, 1048576}, {0, -1, 1048577, 2147483648}},
      {"/findings/0/tracks/0", {1, 1048576}, {0, 1048577}},
      {"/findings/0/service", {nullptr, 0}, {-1}},
      {"/identification/0/item/id", {0, 40}, {-1, 41}},
      {"/identification/0/score", {-1048576, 1048576}, {-1048577, 1048577}},
      {"/verdict/exitCode", {0, 1, 2}, {-1, 3}},
      {"/verdict/result", {"conforms", "not-examined"}, {"", "fine", "conforms identified"}},
      {"/findings/0/severity", {"note"}, {"", "errors", "error warning"}},
      {"/findings/0/id", {"a-1"}, {"", "A", "a b"}},
      {"/fileBytes", {"00"}, {"", "0", "zz", "0x", "AA"}},
      {"/options/timeout", {1, 86400}, {0, -1}}};
  for (const auto& row : rows) {
    for (const Json& value : row.good) {
      EXPECT_EQ(errorAt(row.place, value), "") << row.place << " " << value;
    }
    for (const Json& value : row.bad) {
      EXPECT_NE(errorAt(row.place, value), "") << row.place << " " << value;
    }
  }
}

TEST(ResultFormTest, aTrackStandsOnceInAList) {
  EXPECT_EQ(errorAt("/findings/0/tracks", {8, 7}), "");
  EXPECT_EQ(errorAt("/findings/0/tracks", {7, 8, 7}), "findings[0].tracks has a number twice");
  EXPECT_EQ(errorAt("/services/0/tracks", std::vector<int>(100'000, 1)),
            "services[0].tracks has a number twice");
  EXPECT_EQ(errorAt("/tracks/0/streams", {0, 0}), "tracks[0].streams has a number twice");
}

TEST(ResultFormTest, membersThatComeLaterAreTaken) {
  EXPECT_EQ(errorAt("/more", Json::array({1, nullptr})), "");
  EXPECT_EQ(errorAt("/tracks/0/more", "x"), "");
}

// Each form of a report refuses the second of two lines, by its number.
class RefusedLineTest : public ::testing::Test {
 protected:
  void expectRefusal(const std::string& second, const std::string& why) const {
    const auto file = directory_.write("r.jsonl", line(codedDocument()) + second + "\n");
    for (const auto make : {reportPage, reportTotals, reportLines}) {
      try {
        make({file}, std::nullopt);
        ADD_FAILURE() << "taken: " << second.substr(0, 99);
      } catch (const NoResults& refusal) {
        const std::string text = refusal.what();
        EXPECT_NE(text.find("r.jsonl\""), std::string::npos) << text;
        EXPECT_NE(text.find("line 2 is " + why), std::string::npos) << text;
        EXPECT_EQ(text.find('\n'), std::string::npos) << text;
      }
    }
  }

  TemporaryDirectory directory_;
};

TEST_F(RefusedLineTest, aDeepOne) {
  expectRefusal(std::string(170'000, '['), "no result of kestrel");
  Json deep = codedDocument();
  for (int level = 0; level < 70; ++level) {
    deep["more"] = Json::array({deep["more"]});
  }
  expectRefusal(deep.dump(), "no result of kestrel");
  std::string objects = R"({"schema":"kestrel-result-1","file":"a","more":)";
  for (int level = 0; level < 40'000; ++level) {
    objects += "{\"a\":";
  }
  expectRefusal(objects, "no result of kestrel");
}

TEST_F(RefusedLineTest, oneOfManyMembers) {
  Json wide = codedDocument();
  std::string text = line(wide);
  text.resize(text.size() - 2);
  for (int member = 0; member < 300'000; ++member) {
    text += ",\"" + std::to_string(member) + "\":0";
  }
  expectRefusal(text + "}", "no result of kestrel");
}

TEST_F(RefusedLineTest, aLongOne) {
  Json document = codedDocument();
  document["container"] = "";
  const std::size_t rest = document.dump().size();
  document["container"] = std::string(kLongestLine - rest, 'x');
  const auto file = directory_.write("long.jsonl", line(document) + line(conformingDocument()));
  EXPECT_TRUE(reportTotals({file}).text.starts_with("Verdict     Files\n"));
  document["container"] = std::string(kLongestLine - rest + 1, 'x');
  expectRefusal(document.dump(), "longer than 16 MiB");
  const auto unended = directory_.write("unended.jsonl", std::string(3 * kLongestLine, '\0'));
  EXPECT_THROW(reportTotals({unended}), NoResults);
}

TEST_F(RefusedLineTest, oneWithLargeNumbers) {
  Json document = codedDocument();
  document["trackTotal"] = 2147483647;
  expectRefusal(document.dump(),
                "not a whole result: trackTotal is no whole number from 0 to 4096");
  document = codedDocument();
  document["streams"][0]["tracks"] = std::vector<int>(100'000, 1);
  expectRefusal(document.dump(), "not a whole result: streams[0].tracks has a number twice");
}

}  // namespace
}  // namespace kestrel::host
