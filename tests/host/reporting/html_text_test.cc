#include "host/reporting/html_template.h"

#include <gtest/gtest.h>

#include "host/reporting/html_tracks.h"
#include "tests/host/support/html_documents.h"

namespace kestrel::host {
namespace {

TEST(HtmlTextTest, nothingInATextIsMarkup) {
  const struct {
    std::string text;
    const char* html;
  } rows[] = {{"", ""},
              {"plain.mxf", "plain.mxf"},
              {"<b>&'\"", "&lt;b&gt;&amp;&#39;&quot;"},
              {"&amp;", "&amp;amp;"},
              {"\xc3\xa9\xe2\x82\xac\xf0\x9f\x8e\xb5", "\xc3\xa9\xe2\x82\xac\xf0\x9f\x8e\xb5"},
              {"a\nb\tc", "a[U+000A]b[U+0009]c"},
              {std::string("\0", 1), "[U+0000]"},
              {"\x1b[31m", "[U+001B][31m"},
              {"\x7f", "[U+007F]"},
              {"\xc2\x85", "[U+0085]"},
              {"\xe2\x80\xae"
               "fdp",
               "[U+202E]fdp"},
              {"\xe2\x81\xa6", "[U+2066]"},
              {"\xef\xbb\xbf", "[U+FEFF]"},
              {"\xef\xbf\xbd", "\xef\xbf\xbd"},
              {"\xe9<", "\\xe9&lt;"},
              {"{{x}}", "{{x}}"}};
  for (const auto& row : rows) {
    EXPECT_EQ(htmlText(row.text), row.html) << row.text;
  }
}

TEST(HtmlTemplateTest, onlyThreeBracesLeaveATextAsItIs) {
  const HtmlTemplate text("{{a}} {{{a}}}{{#b}}!{{/b}}{{#none}}?{{/none}}{{#list}}{{x}};{{/list}}");
  EXPECT_EQ(
      text.render(
          {{"a", "<{{b}}>"}, {"b", true}, {"none", ""}, {"list", {{{"x", 1}}, {{"x", "\"2\""}}}}}),
      "&lt;{{b}}&gt; <{{b}}>!1;&quot;2&quot;;");
}

TEST(HtmlTracksTest, neighboursAreOneRun) {
  const struct {
    Json tracks;
    const char* text;
  } rows[] = {{Json::array(), ""},
              {Json::array({3}), "3"},
              {{1, 2}, "1–2"},
              {{1, 2, 3, 5, 7, 8}, "1–3, 5, 7–8"},
              {{2, 1}, "2, 1"}};
  for (const auto& row : rows) {
    EXPECT_EQ(tracksText(row.tracks), row.text);
  }
}

TEST(HtmlTracksTest, aCellDoesNotGrowWithoutEnd) {
  std::string cell;
  addToCell(cell, "; ", "one");
  addToCell(cell, "; ", "two");
  EXPECT_EQ(cell, "one; two");
  addToCell(cell, "; ", std::string(kLongestCell, 'x'));
  addToCell(cell, "; ", "four");
  EXPECT_EQ(cell, "one; two; …");
}

}  // namespace
}  // namespace kestrel::host
