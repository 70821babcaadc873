// The text is searched for entries: anything may stand before, between and after them.
//
//   entry    = "T" digit [digit] "=" list        the list as long as possible
//   list     = list-char {list-char}
//   list-char = letter | "1" | "5" | "7" | "," | "-" | "." | " "      letters of ASCII
//   element  = the characters of a list between commas
//   service  = "Mono" | "Stereo" | "5.1 Mix" | "7.1 Mix" | "EMCA"     anything else is unknown
//
// The search continues after the list of an entry, so a list that runs on into the "T" of what
// looks like the next entry swallows that entry. Hosts may pass descriptions of any length, so each
// character is read a bounded number of times and the scanner uses a constant amount of stack.
#include "analyser/layout_description.h"

#include <array>
#include <cstddef>

#include "catalogue/catalogue_tables.h"

namespace kestrel {

namespace {

bool isListCharacter(char c) {
  const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
  return isLetter || (c >= ',' && c <= '.') || c == ' ' || c == '1' || c == '5' || c == '7';
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::size_t listLength(std::string_view text) {
  std::size_t length = 0;
  while (length < text.size() && isListCharacter(text[length])) ++length;
  return length;
}

// Takes digit [digit] "=" from the start of the text.
std::optional<std::uint32_t> takeTotal(std::string_view& text) {
  std::uint32_t total = 0;
  std::size_t digits = 0;
  for (; digits < 2 && digits < text.size() && isDigit(text[digits]); ++digits)
    total = total * 10 + static_cast<std::uint32_t>(text[digits] - '0');
  if (digits == 0 || digits == text.size() || text[digits] != '=') return std::nullopt;
  text.remove_prefix(digits + 1);
  return total;
}

// The names that a description may use. "EMCA" is a pair that carries Dolby E or similar code.
struct ServiceName {
  std::string_view name;
  StreamType service;
};

consteval ServiceName named(StreamType type) { return {StreamTypeNames.at(type), type}; }

constexpr std::array<ServiceName, 5> kServiceNames = {named(kMono), named(kStereo), named(k51Mix),
                                                      named(k71Mix), ServiceName{"EMCA", kEmca}};

// Whether an element has this name. If it has a leading "-", every "-" in it is skipped.
bool isCalled(std::string_view element, std::string_view name) {
  if (!isSilent(element)) return element == name;
  for (const char c : element) {
    if (c == '-') continue;
    if (!name.starts_with(c)) return false;
    name.remove_prefix(1);
  }
  return name.empty();
}

}  // namespace

std::optional<LayoutEntry> takeEntry(std::string_view& text) noexcept {
  for (std::size_t t = text.find('T'); t != std::string_view::npos; t = text.find('T')) {
    text.remove_prefix(t + 1);
    std::string_view rest = text;
    const auto total = takeTotal(rest);
    if (!total) continue;
    const std::size_t length = listLength(rest);
    if (length == 0) continue;
    text = rest;
    text.remove_prefix(length);
    return LayoutEntry{*total, rest.substr(0, length)};
  }
  text = {};
  return std::nullopt;
}

std::string_view findServiceList(std::string_view description, std::uint32_t trackTotal) noexcept {
  while (const auto entry = takeEntry(description))
    if (entry->trackTotal == trackTotal) return entry->serviceList;
  return {};
}

StreamType serviceNamed(std::string_view element) noexcept {
  for (const ServiceName& known : kServiceNames)
    if (isCalled(element, known.name)) return known.service;
  return kUnknown;
}

std::int32_t tracksOf(StreamType service) noexcept {
  if (service == kUnknown) return -1;
  return StreamTypeWidths.at(service == kEmca ? kDolbyE : service);
}

}  // namespace kestrel
