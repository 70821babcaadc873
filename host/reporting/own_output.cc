// results  "[" "{" "schema": "kestrel-result-..., with blanks and newlines anywhere, or without
// page     <!DOCTYPE html> ... <meta name="generator" content="kestrel">
// text     File      name ... newline Verdict   ...
// totals   Verdict ... Files newline ... newline Layout
#include "host/reporting/own_output.h"

#include <algorithm>
#include <string>

namespace kestrel::host {
namespace {

bool holds(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

bool isResults(std::string_view begin) {
  constexpr std::size_t kLongest = 100;
  std::string text(begin.substr(0, kLongest));
  std::erase_if(text, [](char unit) { return unit == ' ' || unit == '\n' || unit == '\r'; });
  return text.substr(text.starts_with('[') ? 1 : 0).starts_with(R"({"schema":"kestrel-result-)");
}

bool isPage(std::string_view begin) {
  return begin.starts_with("<!DOCTYPE html>") &&
         holds(begin, R"(<meta name="generator" content="kestrel">)");
}

bool isText(std::string_view begin) {
  return begin.starts_with("File      ") && holds(begin, "\nVerdict   ");
}

bool isTotals(std::string_view begin) {
  return begin.starts_with("Verdict ") && begin.substr(0, begin.find('\n')).ends_with("  Files") &&
         holds(begin, "\nLayout ");
}

}  // namespace

bool isOwnOutput(std::string_view begin) {
  return isResults(begin) || isPage(begin) || isText(begin) || isTotals(begin);
}

}  // namespace kestrel::host
