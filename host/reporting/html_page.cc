#include "host/reporting/html_page.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "api/kestrel.h"
#include "host/reporting/html_sources.h"
#include "host/reporting/html_template.h"

namespace kestrel::host {
namespace {

enum class Words { kAsTheyAre, kVerdicts };

Json rowsOf(const Counts& counts, Words words) {
  Json rows = Json::array();
  for (const auto& [name, count] : byCount(counts)) {
    const bool isVerdict = words == Words::kVerdicts;
    rows.push_back({{"value", name},
                    {"text", isVerdict ? verdictText(name) : name},
                    {"verdict", isVerdict ? name : ""},
                    {"count", count}});
  }
  return rows;
}

struct Aspect {
  const char* caption;
  const char* column;  ///< also the label of its filter
  const char* name;    ///< of the filter, and of the attribute that it looks at
  Json rows;
};

void addSummary(Json& view, const ScanSummary& summary) {
  const std::vector<Aspect> aspects = {
      {"By verdict", "Verdict", "verdict", rowsOf(summary.verdicts, Words::kVerdicts)},
      {"By layout", "Layout", "layout", rowsOf(summary.layouts, Words::kAsTheyAre)},
      {"By finding", "Finding", "findings", rowsOf(summary.findings, Words::kAsTheyAre)}};
  for (const Aspect& aspect : aspects) {
    if (!aspect.rows.empty()) {
      view["tables"].push_back(
          {{"caption", aspect.caption}, {"column", aspect.column}, {"rows", aspect.rows}});
      view["filters"].push_back(
          {{"label", aspect.column}, {"name", aspect.name}, {"options", aspect.rows}});
    }
  }
}

// The sections are most of a large page, so they do not go through the template, which would hold
// them several times over.
std::string render(Json view, const std::vector<HtmlSection>& sections) {
  constexpr std::string_view kSections = "{{{sections}}}";
  const std::string_view source = kPageSource;
  const std::size_t place = source.find(kSections);
  view["version"] = KESTREL_VERSION;
  view["style"] = kStyleSource;
  view["script"] = kScriptSource;
  std::string page = HtmlTemplate(source.substr(0, place)).render(view);
  const std::string rest = HtmlTemplate(source.substr(place + kSections.size())).render(view);
  std::size_t size = page.size() + rest.size();
  for (const HtmlSection& section : sections) {
    size += section.html.size();
  }
  page.reserve(size);
  for (const HtmlSection& section : sections) {
    page += section.html;
  }
  page += rest;
  return page;
}

}  // namespace

std::string htmlPage(const Json& documents) {
  std::vector<HtmlSection> sections;
  for (const Json& document : documents) {
    sections.push_back(htmlSection(document, sections.size() + 1, documents.size() == 1));
  }
  if (sections.size() != 1) {
    return htmlReport(sections);
  }
  const auto file = documents.at(0).at("file").get<std::string>();
  return render({{"title", "The audio of " + file}, {"report", false}}, sections);
}

std::string htmlReport(const std::vector<HtmlSection>& sections) {
  ScanSummary summary;
  for (const HtmlSection& section : sections) {
    summary.add(section.facts);
  }
  Json view = {{"title", fmt::format("The audio of {} file{}", sections.size(),
                                     sections.size() == 1 ? "" : "s")},
               {"report", true}};
  addSummary(view, summary);
  return render(std::move(view), sections);
}

}  // namespace kestrel::host
