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
#include "catalogue/packed_name.h"

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

// The service names of a description. "EMCA" stands for a pair that carries Dolby E or its like.
struct ServiceName {
  PackedName name;
  StreamType service;
};

consteval ServiceName named(StreamType type) { return {pack(StreamTypeNames.at(type)), type}; }

constexpr std::array<ServiceName, 5> kServiceNames = {
    named(kMono), named(kStereo), named(k51Mix), named(k71Mix), ServiceName{pack("EMCA"), kEmca}};

static_assert(std::ranges::all_of(StreamTypeNames, [](std::string_view name) {
  return name.size() <= PackedName::kLongest;
}));

constexpr auto kTracks = [] {
  std::array<std::int32_t, kUnknown + 1> tracks{};
  std::ranges::copy(StreamTypeWidths, tracks.begin());
  tracks[kEmca] = StreamTypeWidths.at(kDolbyE);
  tracks[kUnknown] = -1;
  return tracks;
}();

StreamType serviceCalled(PackedName name, std::size_t length) {
  if (length > PackedName::kLongest) return kUnknown;
  for (const ServiceName& known : kServiceNames)
    if (known.name == name) return known.service;
  return kUnknown;
}

// The service that an element names whose every "-" is passed over.
StreamType serviceWithoutHyphens(std::string_view element) {
  PackedName name;
  std::size_t length = 0;
  for (const char c : element) {
    if (c == '-') continue;
    name.append(c);
    ++length;
  }
  return serviceCalled(name, length);
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

std::optional<LayoutElement> takeElement(std::string_view& serviceList) noexcept {
  if (serviceList.empty()) return std::nullopt;
  PackedName name;
  std::size_t length = 0;
  for (; length < serviceList.size() && serviceList[length] != ','; ++length)
    name.append(serviceList[length]);
  const std::string_view text = serviceList.substr(0, length);
  serviceList.remove_prefix(std::min(length + 1, serviceList.size()));
  return LayoutElement{text,
                       isSilent(text) ? serviceWithoutHyphens(text) : serviceCalled(name, length)};
}

std::int32_t tracksOf(StreamType service) noexcept {
  return kTracks[static_cast<std::size_t>(service)];
}

}  // namespace kestrel
