// The five tables of the catalogue, each with what kCatalogue says under the id that it is asked
// by. Everything here is a compile-time constant; what must hold for the tables stands below them.
// None points into kCatalogue, which therefore is no part of the library's image: each pointer in a
// table is a place that the loader must write to.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <span>
#include <string_view>

#include "catalogue/catalogue_table.h"
#include "catalogue/id_table.h"

namespace kestrel {

namespace derive {

inline constexpr std::size_t kStreamTypeCount = kCatalogue.streamTypes.size();
inline constexpr std::size_t kItemCount = kCatalogue.layouts.size();

inline constexpr auto kItemIds = [] {
  std::array<ServiceMapItem, kItemCount> ids{};
  std::iota(ids.begin(), ids.end(), 0);
  return ids;
}();

// One past the last item of the row that begins at item `first`.
consteval std::size_t rowEnd(std::size_t first) {
  std::size_t end = first;
  while (end < kItemCount && kCatalogue.layouts[end].tracks == kCatalogue.layouts[first].tracks)
    ++end;
  return end;
}

consteval std::size_t countRows() {
  std::size_t rows = 0;
  for (std::size_t first = 0; first < kItemCount; first = rowEnd(first)) ++rows;
  return rows;
}

inline constexpr std::size_t kRowCount = countRows();

consteval auto rows() {
  std::array<std::span<const ServiceMapItem>, kRowCount> lists{};
  std::size_t first = 0;
  for (auto& list : lists) {
    list = std::span(kItemIds).subspan(first, rowEnd(first) - first);
    first = rowEnd(first);
  }
  return lists;
}

consteval auto rowTrackCounts() {
  std::array<std::int32_t, kRowCount> counts{};
  const auto lists = rows();
  for (std::size_t row = 0; row < kRowCount; ++row)
    counts[row] = kCatalogue.layouts[static_cast<std::size_t>(lists[row].front())].tracks;
  return counts;
}

consteval auto streamTypeNames() {
  std::array<std::string_view, kStreamTypeCount> names{};
  for (std::size_t i = 0; i < names.size(); ++i) names[i] = kCatalogue.streamTypes[i].name;
  return names;
}

consteval auto streamTypeWidths() {
  std::array<std::int32_t, kStreamTypeCount> widths{};
  for (std::size_t i = 0; i < widths.size(); ++i) widths[i] = kCatalogue.streamTypes[i].width;
  return widths;
}

consteval auto itemNames() {
  std::array<std::string_view, kItemCount> names{};
  for (std::size_t i = 0; i < names.size(); ++i) names[i] = kCatalogue.layouts[i].name;
  return names;
}

consteval auto itemStreamTypes() {
  std::array<StreamTypeList, kItemCount> lists{};
  for (std::size_t i = 0; i < lists.size(); ++i) lists[i] = kCatalogue.layouts[i].streamTypes;
  return lists;
}

}  // namespace derive

/// Stream type -> display name.
inline constexpr auto StreamTypeNames = IdTable{derive::streamTypeNames()};
/// Item -> display name.
inline constexpr auto ServiceMapItemNames = IdTable{derive::itemNames()};
/// Row -> its items in list order, the default first.
inline constexpr auto ServiceMapRows = IdTable{derive::rows()};
/// Item -> its stream types, first tracks first.
inline constexpr auto ServiceMapItemStreamTypes = IdTable{derive::itemStreamTypes()};
/// Row -> number of tracks of each of its items.
inline constexpr auto ServiceMapRowTrackCounts = IdTable{derive::rowTrackCounts()};

/// Stream type -> tracks that one stream of it occupies.
inline constexpr auto StreamTypeWidths = IdTable{derive::streamTypeWidths()};

/// The row that holds an item; 0, like the items of row 0, for an unknown one.
constexpr std::int32_t rowOf(ServiceMapItem item) {
  for (std::int32_t row = 0; row < ServiceMapRows.size(); ++row)
    if (item >= ServiceMapRows.at(row).front() && item <= ServiceMapRows.at(row).back()) return row;
  return 0;
}

namespace derive {

consteval bool everyItemFillsItsTracks() {
  return std::ranges::all_of(kCatalogue.layouts, [](const LayoutRow& layout) {
    std::int32_t tracks = 0;
    for (const StreamType type : layout.streamTypes.view()) tracks += StreamTypeWidths.at(type);
    return tracks == layout.tracks;
  });
}

consteval bool everyStreamTypeIsCatalogued() {
  return std::ranges::all_of(kCatalogue.layouts, [](const LayoutRow& layout) {
    return std::ranges::all_of(layout.streamTypes.view(),
                               [](StreamType type) { return StreamTypeNames.contains(type); });
  });
}

consteval bool namesAreUniqueAscii() {
  for (std::size_t i = 0; i < kItemCount; ++i) {
    const std::string_view name = kCatalogue.layouts[i].name;
    if (!std::ranges::all_of(name, [](char c) { return c >= ' ' && c <= '~'; })) return false;
    for (std::size_t j = 0; j < i; ++j)
      if (kCatalogue.layouts[j].name == name) return false;
  }
  return true;
}

consteval bool rowsEnumerateTheItems() {
  ServiceMapItem next = 0;
  for (const auto& items : ServiceMapRows)
    for (const ServiceMapItem item : items)
      if (item != next++) return false;
  return next == ServiceMapItemNames.size();
}

consteval bool rowsGrowAndOfferAChoice() {
  for (std::int32_t row = 0; row < ServiceMapRows.size(); ++row) {
    if (ServiceMapRows.at(row).size() < 2) return false;
    if (row > 0 && ServiceMapRowTrackCounts.at(row) <= ServiceMapRowTrackCounts.at(row - 1))
      return false;
  }
  return true;
}

static_assert(StreamTypeNames.size() == 5 && ServiceMapItemNames.size() == 41);
static_assert(ServiceMapRows.size() == 7 && ServiceMapRowTrackCounts.size() == 7);
static_assert(ServiceMapItemStreamTypes.size() == ServiceMapItemNames.size());
static_assert(NO_SERVICE_MAP_ITEM == ServiceMapItemNames.size());
static_assert(kMono == 0 && kDolbyE == StreamTypeNames.size() - 1);
static_assert(everyItemFillsItsTracks() && everyStreamTypeIsCatalogued());
static_assert(namesAreUniqueAscii());
static_assert(rowsEnumerateTheItems() && rowsGrowAndOfferAChoice());
// There is deliberately no row of 14 tracks.
static_assert(rowTrackCounts() == std::array<std::int32_t, 7>{2, 4, 6, 8, 10, 12, 16});

}  // namespace derive

}  // namespace kestrel
