// Texts of a file that would steer a terminal or turn the direction of a page: wherever they stand,
// nothing of them comes out as it is.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "host/basics/utf8.h"
#include "host/reporting/html_page.h"
#include "host/reporting/layout_explanation.h"
#include "host/reporting/report.h"
#include "host/reporting/result_form.h"
#include "host/reporting/scan_summary.h"
#include "host/reporting/text_report.h"
#include "tests/host/support/html_documents.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

// ESC, CSI as one C1 control, RIGHT-TO-LEFT OVERRIDE, ARABIC LETTER MARK, DEL, a line separator.
constexpr char kEvil[] = "\x1b[2J\xc2\x9b\xe2\x80\xae\xd8\x9c\x7f\xe2\x80\xa8";

void expectNoneOfIt(const std::string& text) {
  const auto wide = wideFromUtf8(text);
  ASSERT_TRUE(wide);
  for (const wchar_t unit : *wide) {
    ASSERT_FALSE(unit != L'\n' && isUnseen(static_cast<char32_t>(unit)))
        << static_cast<int>(unit) << " in " << text.substr(0, 4000);
  }
}

// Each text gets it, also where the form wants a word or an id.
Json poisoned(Json document) {
  Json places = document.flatten();
  for (auto& [place, value] : places.items()) {
    if (value.is_string() && place != "/schema") {
      value = value.get<std::string>() + kEvil;
    }
  }
  return places.unflatten();
}

TEST(UnseenTextsTest, noneReachesAPage) {
  for (const Json& document : {brokenDocument(), unexaminedDocument()}) {
    expectNoneOfIt(htmlPage(Json::array({poisoned(document)})));
    expectNoneOfIt(htmlPage(Json::array({poisoned(document), document})));
  }
}

TEST(UnseenTextsTest, noneReachesTheTotals) {
  ScanSummary summary;
  summary.add(factsOf(poisoned(brokenDocument())));
  summary.add(factsOf(poisoned(unexaminedDocument())));
  expectNoneOfIt(summaryText(summary));
}

// As a file of results may have it: words and ids are those of the form.
TEST(UnseenTextsTest, noneReachesAReport) {
  Json document = poisoned(brokenDocument());
  for (const char* place : {"/verdict/result", "/findings/0/id", "/findings/1/id", "/findings/2/id",
                            "/findings/0/severity", "/findings/1/severity", "/findings/2/severity",
                            "/identification/0/reasons/0/id", "/crossCheck/disagreements/0/id"}) {
    document[Json::json_pointer(place)] = brokenDocument()[Json::json_pointer(place)];
  }
  for (const char* place : {"/crossCheck/majority/sources", "/streams/0/tracks"}) {
    document[Json::json_pointer(place)] = brokenDocument()[Json::json_pointer(place)];
  }
  for (Json& service : document["services"]) {
    service["labels"] = service["programmes"] = Json::array();
  }
  document["findings"][2]["tracks"] = Json::array();
  ASSERT_EQ(formErrorIn(document), "");
  const TemporaryDirectory directory;
  const auto results = directory.write("r.jsonl", line(document));
  for (const auto make : {reportPage, reportTotals, reportLines}) {
    expectNoneOfIt(make({results}, std::nullopt).text);
  }
  const Json again = Json::parse(reportLines({results}).text);
  EXPECT_EQ(again, document);
}

FileResult evilResult() {
  const std::string evil = kEvil;
  const NamedItem item{7, "item" + evil};
  FileResult result;
  result.facts = {"file" + evil, "reader" + evil, "container" + evil, {}};
  result.facts.map.streams = {
      {"id" + evil, 1, "format" + evil, 2, 48000, 24, {"L" + evil}, true, 1, {1, 2}}};
  result.facts.map.tracks = {{1, "name" + evil, {0}, 1, "label" + evil, true},
                             {2, "name" + evil, {0}, 2, evil, true}};
  Judgement& judgement = result.judgement;
  judgement.declared = DeclaredLayout{"text" + evil, "vocabulary" + evil, "code" + evil, item};
  judgement.expectation =
      Expectation{ExpectationKind::kLayout, "text" + evil, item, "code" + evil, "T2" + evil};
  judgement.services = {{"name" + evil, {1, 2}, false, true, {"L" + evil}, {{0, 2, {evil}}}}};
  const Candidate candidate{item,
                            3,
                            {"code" + evil},
                            {{"placed" + evil, {1, 2}}},
                            {{"id" + evil, 3, "reason" + evil, {1}}}};
  judgement.identification = {candidate, candidate, candidate, candidate};
  judgement.crossCheck =
      CrossCheck{{{"id" + evil, "disagreement" + evil, {1}, {{"source" + evil, "value" + evil}}}},
                 {item, {"source" + evil}, 1, "majority" + evil}};
  judgement.findings = {{"id" + evil, Severity::kError, "finding" + evil, 0, {1}}};
  result.verdict = {VerdictResult::kDoesNotConform, ExitCode::kNotExamined, "verdict" + evil};
  return result;
}

TEST(UnseenTextsTest, noneReachesATextReport) {
  TextStyle narrow;
  narrow.columns = 30;
  FileResult result = evilResult();
  expectNoneOfIt(textReport(result, {}));
  expectNoneOfIt(textReport(result, narrow));
  result.error = ExaminationError{std::string("id") + kEvil, std::string("error") + kEvil};
  expectNoneOfIt(textReport(result, {}));
}

TEST(UnseenTextsTest, noneReachesAnExplanation) {
  for (const char* part : {"T2=", "T4=Stereo,Sterio", "T2=Stereo;", ""}) {
    expectNoneOfIt(explainLayout(std::string(part) + kEvil).text);
    expectNoneOfIt(explainLayout(kEvil + std::string(part)).text);
    expectNoneOfIt(explainLayout(std::string(part) + kEvil + ";T1=Mono," + kEvil).text);
  }
}

}  // namespace
}  // namespace kestrel::host
