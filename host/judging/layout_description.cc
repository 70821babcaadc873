// description  any text with entries in it
// entry        "T" digit [digit] "=" list
// list         the longest run, not empty, of letters, "1", "5", "7", ",", "-", "." and blanks
// element      what stands between commas of the list; nothing after a last comma
#include "host/judging/layout_description.h"

#include <algorithm>
#include <array>
#include <numeric>

#include "host/basics/nearest_name.h"
#include "host/basics/text_parts.h"

namespace kestrel::host {
namespace {

struct ServiceName {
  const char* name;
  std::int32_t tracks;
};

constexpr std::array<ServiceName, 5> kServices = {
    {{"Mono", 1}, {"Stereo", 2}, {"5.1 Mix", 6}, {"7.1 Mix", 8}, {"EMCA", 2}}};

constexpr std::string_view kListCharacters =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ157,-. ";

std::int32_t tracksOfName(const std::string& name) {
  const auto* const found = std::ranges::find(kServices, name, &ServiceName::name);
  return found == kServices.end() ? 0 : found->tracks;
}

LayoutElement elementOf(std::string_view written, std::size_t offset) {
  LayoutElement element{std::string(written), offset, written.size(), written.starts_with('-'), 0};
  if (element.isHidden) {
    std::erase(element.name, '-');
  }
  element.tracks = tracksOfName(element.name);
  return element;
}

std::vector<LayoutElement> elementsOf(std::string_view list, std::size_t offset) {
  std::vector<LayoutElement> elements;
  while (!list.empty()) {
    const std::size_t comma = list.find(',');
    const std::string_view written = list.substr(0, comma);
    elements.push_back(elementOf(written, offset));
    const std::size_t taken = std::min(list.size(), written.size() + 1);
    list.remove_prefix(taken);
    offset += taken;
  }
  return elements;
}

// The entry that begins at the "T" at an offset.
std::optional<LayoutEntry> entryAt(std::string_view text, std::size_t offset) {
  std::string_view rest = text.substr(offset + 1);
  const std::size_t digits = std::min(rest.find_first_not_of("0123456789"), rest.size());
  const auto total = takeNumber<std::int32_t>(rest);
  if (digits < 1 || digits > 2 || !takeText(rest, "=")) {
    return std::nullopt;
  }
  const std::string_view list = rest.substr(0, rest.find_first_not_of(kListCharacters));
  if (list.empty()) {
    return std::nullopt;
  }
  const auto listOffset = static_cast<std::size_t>(list.data() - text.data());
  return LayoutEntry{*total, offset, listOffset + list.size() - offset,
                     elementsOf(list, listOffset)};
}

}  // namespace

std::vector<LayoutEntry> layoutEntries(std::string_view text) {
  std::vector<LayoutEntry> entries;
  for (std::size_t at = text.find('T'); at != std::string_view::npos; at = text.find('T', at)) {
    if (const auto entry = entryAt(text, at)) {
      entries.push_back(*entry);
      at += entry->length;
    } else {
      ++at;
    }
  }
  return entries;
}

std::optional<LayoutEntry> layoutEntry(std::string_view text, std::int32_t total) {
  std::vector<LayoutEntry> entries = layoutEntries(text);
  const auto found = std::ranges::find(entries, total, &LayoutEntry::total);
  return found == entries.end() ? std::nullopt : std::optional(*found);
}

std::int32_t tracksOf(const LayoutEntry& entry) {
  return std::accumulate(
      entry.elements.begin(), entry.elements.end(), 0,
      [](std::int32_t sum, const LayoutElement& element) { return sum + element.tracks; });
}

std::string nearestService(const std::string& name) {
  std::vector<std::string> names = {"Dolby E"};
  for (const ServiceName& service : kServices) {
    names.emplace_back(service.name);
  }
  const std::string nearest = nearestName(name, names);
  return nearest == names.front() ? "EMCA" : nearest;
}

}  // namespace kestrel::host
