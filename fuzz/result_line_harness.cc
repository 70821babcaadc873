// A line of results, any text: it is refused, or a page, totals and a line are made of it, in which
// nothing can steer a terminal.
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "fuzz/disagreement.h"
#include "fuzz/harness.h"
#include "fuzz/host_text.h"
#include "host/basics/json.h"
#include "host/reporting/html_page.h"
#include "host/reporting/result_form.h"
#include "host/reporting/result_json.h"
#include "host/reporting/scan_summary.h"

namespace kestrel::fuzz {
namespace {

// The page, without its style and script, is bounded by the result: it says some texts a few times.
constexpr std::size_t kPageOfNothing = 100'000;
constexpr std::size_t kMostTimes = 2'000;

void checkPage(const std::string& page, std::size_t size) {
  requireVisible("the page", page);
  if (!page.ends_with("</html>\n")) disagree("the end of a page", page);
  if (page.size() > kPageOfNothing + kMostTimes * size) disagree("the size of a page", page.size());
}

void checkDocument(const host::Json& document, std::size_t size) {
  host::fileNameIn(document);
  host::ScanSummary summary;
  summary.add(host::factsOf(document));
  requireVisible("the totals", host::summaryText(summary));
  const std::string line = host::jsonText(document);
  requireVisible("the line", line);
  if (host::parsedJson<host::Json>(line) != document) disagree("a line, read again", line);
  checkPage(host::htmlPage(host::Json::array({document})), size);
  checkPage(host::htmlPage(host::Json::array({document, document})), 2 * size);
}

void check(std::string_view text) {
  const auto document = host::parsedJson<host::Json>(text);
  if (document.is_discarded()) return;
  const std::string error = host::formErrorIn(document);
  if (error.empty()) {
    checkDocument(document, text.size());
  } else {
    requireVisible("why a result is refused", error);
  }
}

}  // namespace
}  // namespace kestrel::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kestrel::fuzz::check({reinterpret_cast<const char*>(data), size});
  return 0;
}
