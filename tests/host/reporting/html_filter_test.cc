// The filters of a page of many results.
#include <gtest/gtest.h>

#include "host/reporting/html_page.h"
#include "tests/host/support/html_browser.h"
#include "tests/host/support/html_documents.h"

namespace kestrel::host {
namespace {

// Sets a control as a user does; gives the numbers of the sections that are shown then.
std::string shownAfter(const std::string& control, const std::string& value) {
  return "(() => { const control = document.querySelector('" + control + "'); control.value = '" +
         value +
         "'; control.dispatchEvent(new Event('input', {bubbles: true}));"
         "const shown = [...document.querySelectorAll('section.file')]"
         ".filter(file => file.getBoundingClientRect().height > 0).map(file => file.id.slice(5));"
         "control.value = ''; return shown; })()";
}

TEST(HtmlFilterTest, sectionsAreFiltered) {
  ASSERT_TRUE(hasBrowser()) << "Chromium is not installed";
  const struct {
    const char* control;
    const char* value;
    nlohmann::json shown;
  } rows[] = {{"#filter-verdict", "", {"1", "2", "3", "4"}},
              {"#filter-verdict", "does-not-conform", {"1"}},
              {"#filter-verdict", "identified", {"2"}},
              {"#filter-layout", "none", {"4"}},
              {"#filter-layout", "Stereo, Dolby E", {"2"}},
              {"#filter-layout", "Stereo", {"3"}},
              {"#filter-findings", "label-order", {"1"}},
              {"#filter-findings", "no-media", {"4"}},
              {"#filter-name", "GOOD", {"3"}},
              {"#filter-name", "no such", nlohmann::json::array()}};
  std::vector<std::string> expressions;
  for (const auto& row : rows) {
    expressions.push_back(shownAfter(row.control, row.value));
  }
  expressions.emplace_back("document.querySelector('#shown').textContent");
  const nlohmann::json answers = askPage(htmlPage(allDocuments()), expressions);
  for (std::size_t index = 0; index < std::size(rows); ++index) {
    EXPECT_EQ(answers.at(index), rows[index].shown) << rows[index].control << rows[index].value;
  }
  EXPECT_EQ(answers.back(), "0 of 4 files shown");
}

TEST(HtmlFilterTest, allSectionsOpenAndCloseByOneButton) {
  ASSERT_TRUE(hasBrowser()) << "Chromium is not installed";
  const char* const kOpen = "document.querySelectorAll('section.file > details[open]').length";
  const char* const kPress = "document.querySelector('#open-all').click()";
  const nlohmann::json answers =
      askPage(htmlPage(allDocuments()), {kOpen, kPress, kOpen, kPress, kOpen});
  EXPECT_EQ(answers, (nlohmann::json{0, nullptr, 4, nullptr, 0}));
}

TEST(HtmlFilterTest, controlsHaveLabels) {
  ASSERT_TRUE(hasBrowser()) << "Chromium is not installed";
  const nlohmann::json answers =
      askPage(htmlPage(allDocuments()), {"[...document.querySelectorAll('select, input')].map(e => "
                                         "e.labels[0].firstChild.textContent.trim())",
                                         "document.querySelector('#filters').hidden"});
  EXPECT_EQ(answers.at(0), (nlohmann::json{"Verdict", "Layout", "Finding", "File name"}));
  EXPECT_EQ(answers.at(1), false);
}

TEST(HtmlFilterTest, withoutScriptEverythingIsShownAndTheFiltersAreNot) {
  ASSERT_TRUE(hasBrowser()) << "Chromium is not installed";
  std::string page = htmlPage(allDocuments());
  const std::size_t script = page.find("<script>");
  page.erase(script, page.find("</script>") + 9 - script);
  const nlohmann::json answers =
      askPage(page, {"[...document.querySelectorAll('section.file')]"
                     ".filter(file => file.getBoundingClientRect().height > 0).length",
                     "document.querySelector('#filters').getBoundingClientRect().height",
                     "document.querySelectorAll('.counts').length"});
  EXPECT_EQ(answers, (nlohmann::json{4, 0, 3}));
}

}  // namespace
}  // namespace kestrel::host
