// The page of one result and of several, as a browser has it.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>

#include "host/reporting/html_page.h"
#include "tests/host/support/html_browser.h"
#include "tests/host/support/html_documents.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

std::string contentOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

struct Question {
  const char* expression;
  nlohmann::json answer;
};

void expectAnswers(const std::string& page, const std::vector<Question>& questions,
                   const BrowserOptions& options = {}) {
  ASSERT_TRUE(hasBrowser()) << "Chromium is not installed";
  std::vector<std::string> expressions;
  for (const Question& question : questions) {
    expressions.emplace_back(question.expression);
  }
  const nlohmann::json answers = askPage(page, expressions, options);
  for (std::size_t index = 0; index < questions.size(); ++index) {
    EXPECT_EQ(answers.at(index), questions[index].answer) << questions[index].expression;
  }
}

std::string one(const Json& document) { return htmlPage(Json::array({document})); }

TEST(HtmlPageTest, thePictureShowsTheExpectedMapAboveTheTracks) {
  expectAnswers(
      one(brokenDocument()),
      {{"document.querySelectorAll('svg.tracks[role=img]').length", 1},
       {"[...document.querySelectorAll('svg .row')].map(row => row.classList[1])",
        {"numbers", "expected", "carried", "labels", "best"}},
       {"[...document.querySelectorAll('svg .expected .box text')].map(text => text.textContent)",
        {"5.1 Mix", "Stereo"}},
       {"[...document.querySelectorAll('svg .carried .box text')].map(text => text.textContent)",
        {"PCM", "PCM", "PCM", "PCM", "PCM", "PCM", "PCM", "PCM"}},
       {"[...document.querySelectorAll('svg .labels .box text')].map(text => text.textContent)",
        {"L", "R", "C", "LFE", "Ls", "Rs", "L", "Lt"}},
       {"[...document.querySelectorAll('svg .best .box text')].map(text => text.textContent)",
        {"5.1 Mix", "Mono", "Mono"}},
       {"document.querySelector('svg .expected').getBoundingClientRect().bottom < "
        "document.querySelector('svg .carried').getBoundingClientRect().top",
        true}});
}

TEST(HtmlPageTest, aServiceSpansItsTracks) {
  expectAnswers(
      one(brokenDocument()),
      {{"(() => { const box = n => document.querySelectorAll('svg .box.number')[n - 1]"
        ".getBoundingClientRect();"
        "const service = document.querySelector('svg .expected .box').getBoundingClientRect();"
        "return service.left <= box(1).left + 3 && service.right >= box(6).right - 3 &&"
        " service.right <= box(7).left + 3; })()",
        true}});
}

TEST(HtmlPageTest, disagreementsAreMarkedBySignsAndInWords) {
  expectAnswers(one(brokenDocument()),
                {{"[...document.querySelectorAll('svg .mark')].map(mark => [mark.dataset.track,"
                  "mark.classList[1], mark.querySelector('.sign').textContent])",
                  {{"2", "warning", "!"}, {"7", "error", "≠"}, {"8", "error", "≠"}}},
                 {"document.querySelectorAll('svg .expected .broken').length", 1},
                 {"document.querySelector('svg .mark.error title').textContent",
                  "Track 7: Tracks 7 and 8 of the stereo differ in bit depth; "
                  "The labels of tracks 7 and 8 are not those of a stereo pair"}});
}

TEST(HtmlPageTest, findingsAndTheCrossCheckAreListed) {
  expectAnswers(
      one(brokenDocument()),
      {{"[...document.querySelectorAll('.findings li')].map(li => [li.className,"
        "li.querySelector('code').textContent])",
        nlohmann::json::array(
            {{"error", "formats-differ"}, {"warning", "label-order"}, {"note", "file-truncated"}})},
       {"[...document.querySelectorAll('h3')].map(h => h.textContent)",
        {"Findings", "Declared code against the evidence"}},
       {"[...document.querySelectorAll('.source')].map(s => s.textContent)",
        {"declared code", "labels"}},
       {"document.querySelector('.candidates strong').textContent", "5.1 Mix, Mono, Mono"}});
}

TEST(HtmlPageTest, programmesStandBelowTheirPair) {
  expectAnswers(
      one(codedDocument()),
      {{"[...document.querySelectorAll('svg .carried .box text')].map(text => text.textContent)",
        {"PCM", "PCM", "Dolby E"}},
       {"[...document.querySelectorAll('svg .programmes .box text')].map(t => t.textContent)",
        {"1: L R C LFE Ls Rs", "2: L R"}},
       {"(() => { const box = n => document.querySelectorAll('svg .programmes .box rect')[n]"
        ".getBoundingClientRect(); return box(0).bottom <= box(1).top &&"
        " box(0).left === box(1).left; })()",
        true},
       {"document.querySelectorAll('svg .expected').length", 0},
       {"document.querySelectorAll('svg .mark').length", 0}});
}

TEST(HtmlPageTest, tracksPastTheEndOfTheFileAreDrawn) {
  Json document = conformingDocument();
  document["services"][0]["tracks"] = {1, 2, 3, 4};
  expectAnswers(
      one(document),
      {{"[...document.querySelectorAll('svg .carried .box text')].map(text => text.textContent)",
        {"PCM", "PCM", "no track", "no track"}}});
}

TEST(HtmlPageTest, anExpectationWithoutServicesForTheTotalIsSaid) {
  Json document = conformingDocument();
  document["services"] = Json::array();
  expectAnswers(one(document),
                {{"document.querySelector('svg .expected .box text').textContent", "nothing"}});
}

TEST(HtmlPageTest, aFileOfVeryManyTracksIsCut) {
  Json document = conformingDocument();
  document["trackTotal"] = 5000;
  expectAnswers(one(document),
                {{"document.querySelectorAll('svg .box.number').length", 128},
                 {"document.querySelector('figcaption').textContent.includes('first 128')", true}});
}

TEST(HtmlPageTest, aScreenReaderGetsNamesAndATable) {
  expectAnswers(
      one(brokenDocument()),
      {{"document.documentElement.lang", "en"},
       {"document.querySelectorAll('main, header, h1').length", 3},
       {"document.querySelector('svg').getAttribute('aria-labelledby').split(' ')"
        ".every(id => document.getElementById(id).textContent.length > 10)",
        true},
       {"document.querySelector('svg desc').textContent.includes("
        "'Expected: 5.1 Mix on 1–6, Stereo on 7–8.')",
        true},
       {"document.querySelectorAll('.tracktable tbody tr').length", 8},
       {"[...document.querySelectorAll('.tracktable tbody tr:last-child > *')].map(cell =>"
        " cell.textContent).slice(0, 6)",
        {"8", "2008", "Stream 2008: PCM, 1 channel, 48000 Hz, 16 bits, Lt", "Lt", "Stereo",
         "Mono"}},
       {"[...document.querySelectorAll('table')].every(table => table.caption.textContent &&"
        " table.querySelector('th[scope=col]'))",
        true},
       {"[...document.querySelectorAll('[id]')].length === "
        "new Set([...document.querySelectorAll('[id]')].map(e => e.id)).size",
        true},
       {"[...document.querySelectorAll('.scroll')].every(region => region.tabIndex === 0 &&"
        " region.getAttribute('role') === 'region' && region.ariaLabel.length > 0)",
        true}});
}

TEST(HtmlPageTest, namesAreShownAndDoNothing) {
  expectAnswers(
      htmlPage(allDocuments()),
      {{"typeof window.attacked", "undefined"},
       {"document.querySelectorAll('script').length", 2},  // its own and the questions
       {"document.querySelector('#name-1').textContent",
        "deliveries/broken <b>&amp;\"quoted\"'.mxf"},
       {"document.querySelector('#name-4').textContent",
        "</title><script>window.attacked = 1</script>[U+000A][U+0001][U+007F][U+202E]gpj.mxf �"},
       {"document.querySelectorAll('h2 b').length", 0}});
  expectAnswers(one(unexaminedDocument()),
                {{"typeof window.attacked", "undefined"},
                 {"document.title.startsWith('The audio of </title><script>')", true},
                 {"document.querySelector('.badge').textContent", "not examined"},
                 {"document.querySelectorAll('svg').length", 0}});
}

TEST(HtmlPageTest, thePageNeedsNothingElse) {
  expectAnswers(
      htmlPage(allDocuments()),
      {{"document.querySelectorAll('link, img, iframe, object, embed, [src], style[src]').length",
        0},
       {"performance.getEntriesByType('resource').length", 0},
       {"[...document.querySelectorAll('[href]')].every(e =>"
        " e.getAttribute('href').startsWith('#'))",
        true},
       {"document.querySelector('meta[http-equiv]').content.startsWith(\"default-src 'none'\")",
        true}});
}

TEST(HtmlPageTest, lightAndDarkHaveContrast) {
  const char* const kContrast =
      "(() => { const light = c => { const v = c.match(/[\\d.]+/g).slice(0, 3).map(x => x / 255)"
      ".map(x => x <= .04045 ? x / 12.92 : ((x + .055) / 1.055) ** 2.4);"
      " return .2126 * v[0] + .7152 * v[1] + .0722 * v[2]; };"
      "const ratio = (a, b) => { const [x, y] = [light(a), light(b)].sort((p, q) => q - p);"
      " return (x + .05) / (y + .05); };"
      "const fill = s => getComputedStyle(document.querySelector(s)).fill;"
      "const ink = fill('svg .expected .box text');"
      "const page = getComputedStyle(document.body);"
      "return [ratio(page.color, page.backgroundColor),"
      " ...[...document.querySelectorAll('svg .box:not(.number):not(.label) rect')].map(rect =>"
      " getComputedStyle(rect).fill).filter(f => f !== 'none').map(f => ratio(ink, f)),"
      " ...[...document.querySelectorAll('.badge')].map(b => ratio(getComputedStyle(b).color,"
      " getComputedStyle(b).backgroundColor))].every(r => r >= 4.5); })()";
  BrowserOptions dark;
  dark.isDark = true;
  const std::string page = htmlPage(allDocuments());
  expectAnswers(page, {{"matchMedia('(prefers-color-scheme: dark)').matches", false},
                       {"getComputedStyle(document.body).backgroundColor", "rgb(255, 255, 255)"},
                       {kContrast, true}});
  expectAnswers(page,
                {{"matchMedia('(prefers-color-scheme: dark)').matches", true},
                 {"getComputedStyle(document.body).backgroundColor", "rgb(20, 23, 28)"},
                 {kContrast, true}},
                dark);
}

TEST(HtmlPageTest, oneResultIsOpenAndHasNoFilters) {
  expectAnswers(one(conformingDocument()),
                {{"document.querySelector('section.file > details').open", true},
                 {"document.querySelectorAll('form, #summary, script').length", 1}});
}

// With KESTREL_KEEP_PICTURES the pictures stay there to be looked at.
TEST(HtmlPageTest, lightAndDarkPagesHavePicturesOfTheirOwn) {
  ASSERT_TRUE(hasBrowser()) << "Chromium is not installed";
  const TemporaryDirectory temporary;
  const char* kept = std::getenv("KESTREL_KEEP_PICTURES");
  const std::filesystem::path pictures =
      kept == nullptr ? temporary / "pictures" : std::filesystem::path(kept);
  std::filesystem::create_directories(pictures);
  const std::pair<std::string, std::string> pages[] = {{"broken", one(brokenDocument())},
                                                       {"coded", one(codedDocument())},
                                                       {"report", htmlPage(allDocuments())}};
  for (const auto& [name, page] : pages) {
    BrowserOptions dark;
    dark.isDark = true;
    takePicture(page, pictures / (name + "-light.png"), {});
    takePicture(page, pictures / (name + "-dark.png"), dark);
    const std::string light = contentOf(pictures / (name + "-light.png"));
    EXPECT_TRUE(light.starts_with("\x89PNG")) << name;
    EXPECT_NE(light, contentOf(pictures / (name + "-dark.png"))) << name;
  }
}

}  // namespace
}  // namespace kestrel::host
