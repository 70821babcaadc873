// A description is searched, not matched: anything may stand before, between and after entries.
//
//   entry    = "T" digit [digit] "=" list        the list as long as possible
//   list     = list-char {list-char}
//   list-char = letter | "1" | "5" | "7" | "," | "-" | "." | " "      letters of ASCII
//   element  = the characters of a list between commas
//   service  = "Mono" | "Stereo" | "5.1 Mix" | "7.1 Mix" | "EMCA"     anything else is unknown
//
// The search goes on behind the list of an entry, so a list that runs on into the "T" of what looks
// like the next entry swallows it. Each character is looked at a bounded number of times, in a
// constant amount of stack, because descriptions come from hosts and may be of any length.
#include "analyser/layout_description.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "catalogue/catalogue_tables.h"

namespace kestrel {

namespace {

constexpr auto kListCharacters = [] {
  std::array<bool, 256> allowed{};
  for (std::size_t c = 'a'; c <= 'z'; ++c) allowed[c] = true;
  for (std::size_t c = 'A'; c <= 'Z'; ++c) allowed[c] = true;
  for (const char c : {'5', '1', '7', ',', '-', '.', ' '})
    allowed[static_cast<unsigned char>(c)] = true;
  return allowed;
}();

bool isListCharacter(char c) { return kListCharacters[static_cast<unsigned char>(c)]; }

bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::size_t listLength(std::string_view text) {
  std::size_t length = 0;
  while (length < text.size() && isListCharacter(text[length])) ++length;
  return length;
}

// Reads digit [digit] "=" off the front of the text.
std::optional<std::uint32_t> takeTotal(std::string_view& text) {
  std::uint32_t total = 0;
  std::size_t digits = 0;
  for (; digits < 2 && digits < text.size() && isDigit(text[digits]); ++digits)
    total = total * 10 + static_cast<std::uint32_t>(text[digits] - '0');
  if (digits == 0 || digits == text.size() || text[digits] != '=') return std::nullopt;
  text.remove_prefix(digits + 1);
  return total;
}

// A name of up to seven bytes as a number, so that an element is compared with all names at once
// when it has been read. Longer ones, which name nothing, become kLongName.
class PackedName {
 public:
  constexpr void append(char c) {
    bytes_ = bytes_ >= kFull ? kLongName : (bytes_ << 8U | static_cast<unsigned char>(c));
  }
  constexpr bool isLong() const { return bytes_ == kLongName; }
  constexpr bool operator==(const PackedName&) const = default;

 private:
  static constexpr std::uint64_t kFull = std::uint64_t{1} << 48U;  // a seventh byte goes on top
  static constexpr std::uint64_t kLongName = ~std::uint64_t{0};
  std::uint64_t bytes_ = 0;
};

constexpr PackedName pack(std::string_view text) {
  PackedName name;
  for (const char c : text) name.append(c);
  return name;
}

// The service names of a description. "EMCA" stands for a pair that carries Dolby E or its like.
struct ServiceName {
  PackedName name;
  StreamType service;
};

constexpr ServiceName named(StreamType type) { return {pack(StreamTypeNames.at(type)), type}; }

constexpr std::array<ServiceName, 5> kServiceNames = {
    named(kMono), named(kStereo), named(k51Mix), named(k71Mix), ServiceName{pack("EMCA"), kEmca}};

static_assert(std::ranges::none_of(kServiceNames,
                                   [](const ServiceName& known) { return known.name.isLong(); }));

}  // namespace

std::optional<LayoutEntry> takeEntry(std::string_view& text) noexcept {
  for (std::size_t t = text.find('T'); t != std::string_view::npos; t = text.find('T')) {
    text.remove_prefix(t + 1);
    std::string_view rest = text;
    const auto total = takeTotal(rest);
    if (!total) continue;
    const std::size_t length = listLength(rest);
    if (length == 0) continue;
    text = rest.substr(length);
    return LayoutEntry{*total, rest.substr(0, length)};
  }
  text = {};
  return std::nullopt;
}

std::optional<LayoutEntry> findEntry(std::string_view description,
                                     std::uint32_t trackTotal) noexcept {
  while (const auto entry = takeEntry(description))
    if (entry->trackTotal == trackTotal) return entry;
  return std::nullopt;
}

std::optional<std::string_view> takeElement(std::string_view& serviceList) noexcept {
  if (serviceList.empty()) return std::nullopt;
  // Elements are short: a loop is quicker than a call of the C library's search.
  std::size_t length = 0;
  while (length < serviceList.size() && serviceList[length] != ',') ++length;
  const std::string_view element = serviceList.substr(0, length);
  serviceList.remove_prefix(element.size());
  if (!serviceList.empty()) serviceList.remove_prefix(1);
  return element;
}

StreamType serviceNamed(std::string_view element) noexcept {
  const bool silent = isSilent(element);
  PackedName name;
  for (const char c : element) {
    if (silent && c == '-') continue;
    name.append(c);
    if (name.isLong()) return kUnknown;
  }
  for (const ServiceName& known : kServiceNames)
    if (known.name == name) return known.service;
  return kUnknown;
}

std::int32_t tracksOf(StreamType service) noexcept {
  if (service == kUnknown) return -1;
  return StreamTypeWidths.at(service == kEmca ? kDolbyE : service);
}

}  // namespace kestrel
