// The catalogue: the stream types and the layouts ("service map items") that the library knows.
//
// kStreamTypes and kLayouts are the only place where it is stated. A layout's id is its position in
// the table. Neighbouring layouts that fill the same number of tracks form a row, and the first of
// them is the row's default, so the order of the lines is part of the interface. The tables that
// the rest of the library reads are columns of these two, made by the compiler: nothing is built
// when the library is loaded, nothing is allocated, and a look-up is one comparison and one read.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <numeric>
#include <span>
#include <stdexcept>
#include <string_view>

#include "api/catalogue_ids.h"

namespace kestrel {

// --- What the catalogue says

struct StreamTypeRow {
  std::string_view name;
  std::int32_t width;  // tracks that one stream of this type occupies
};

// The stream types of a layout in the order in which they occupy the tracks. They are stored in
// place: the loader would have to relocate a pointer to a list stored elsewhere.
class StreamTypeList {
 public:
  consteval StreamTypeList(std::initializer_list<StreamType> types) {
    for (const StreamType type : types) types_[count_++] = type;
  }

  // The list followed by `times` more streams of one type.
  consteval StreamTypeList then(std::size_t times, StreamType type) const {
    StreamTypeList longer = *this;
    for (std::size_t i = 0; i < times; ++i) longer.types_[longer.count_++] = type;
    return longer;
  }

  constexpr std::span<const StreamType> view() const { return {types_.data(), count_}; }

 private:
  std::array<StreamType, 16> types_{};
  std::size_t count_ = 0;
};

consteval StreamTypeList times(std::size_t count, StreamType type) {
  return StreamTypeList{}.then(count, type);
}

struct LayoutRow {
  std::int32_t tracks;
  std::string_view name;
  StreamTypeList streamTypes;
};

// Three layouts have the name of the one stream that they contain.
inline constexpr std::string_view kStereoName = "Stereo";
inline constexpr std::string_view k51MixName = "5.1 Mix";
inline constexpr std::string_view k71MixName = "7.1 Mix";

// clang-format off
inline constexpr std::array<StreamTypeRow, 5> kStreamTypes = {{
    {"Mono", 1},
    {kStereoName, 2},
    {k51MixName, 6},
    {k71MixName, 8},
    {"Dolby E", 2},
}};

inline constexpr std::array<LayoutRow, 41> kLayouts = {{
    { 2, kStereoName,                                      {kStereo}},
    { 2, "2 Mono",                                         times(2, kMono)},

    { 4, "2 Stereo",                                       times(2, kStereo)},
    { 4, "4 Mono",                                         times(4, kMono)},

    { 6, k51MixName,                                       {k51Mix}},
    { 6, "3 Stereo",                                       times(3, kStereo)},
    { 6, "6 Mono",                                         times(6, kMono)},

    { 8, "5.1 Mix + Stereo Downmix",                       {k51Mix, kStereo}},
    { 8, "Stereo + 5.1 Mix",                               {kStereo, k51Mix}},
    { 8, k71MixName,                                       {k71Mix}},
    { 8, "4 Stereo",                                       times(4, kStereo)},
    { 8, "Stereo + 6 Mono",                                times(1, kStereo).then(6, kMono)},
    { 8, "8 Mono",                                         times(8, kMono)},

    {10, "5.1 Mix + 2 Stereo",                             {k51Mix, kStereo, kStereo}},
    {10, "2 Stereo + 5.1 Mix",                             {kStereo, kStereo, k51Mix}},
    {10, "Stereo + 5.1 Mix + Stereo",                      {kStereo, k51Mix, kStereo}},
    {10, "5 Stereo",                                       times(5, kStereo)},
    {10, "Stereo + 8 Mono",                                times(1, kStereo).then(8, kMono)},
    {10, "10 Mono",                                        times(10, kMono)},

    {12, "5.1 Mix + 3 Stereo",                             {k51Mix, kStereo, kStereo, kStereo}},
    {12, "Stereo + 5.1 Mix + Dolby E + Stereo",            {kStereo, k51Mix, kDolbyE, kStereo}},
    {12, "5.1 Mix + Stereo + Dolby E + Stereo",            {k51Mix, kStereo, kDolbyE, kStereo}},
    {12, "2x Stereo + 2x Dolby E + 2x Stereo (R123 12c)",
         {kStereo, kStereo, kDolbyE, kDolbyE, kStereo, kStereo}},
    {12, "2x Stereo/Dolby E Pairs + 2 Stereo (R123 12d)",
         {kStereo, kDolbyE, kStereo, kDolbyE, kStereo, kStereo}},
    {12, "5.1 Mix + Stereo + 2x Dolby E (R123 12e)",       {k51Mix, kStereo, kDolbyE, kDolbyE}},
    {12, "Stereo + Dolby E + Stereo + 5.1 Mix (R123 12f)", {kStereo, kDolbyE, kStereo, k51Mix}},
    {12, "2x Stereo + 5.1 Mix + Dolby E (R123 12g)",       {kStereo, kStereo, k51Mix, kDolbyE}},
    {12, "3x Stereo/Dolby E Pairs (R123 12h)",
         {kStereo, kDolbyE, kStereo, kDolbyE, kStereo, kDolbyE}},
    {12, "6 Stereo",                                       times(6, kStereo)},
    {12, "Stereo + 10 Mono",                               times(1, kStereo).then(10, kMono)},
    {12, "12 Mono",                                        times(12, kMono)},
    {12, "2x Stereo + 5.1 Mix + Stereo",                   {kStereo, kStereo, k51Mix, kStereo}},
    {12, "Stereo + 5.1 Mix + 2x Stereo",                   {kStereo, k51Mix, kStereo, kStereo}},

    {16, "2x Stereo/5.1 Mix Pairs",                        {kStereo, k51Mix, kStereo, k51Mix}},
    {16, "2x 5.1 Mix/Stereo Pairs",                        {k51Mix, kStereo, k51Mix, kStereo}},
    {16, "2x Stereo + 2x 5.1 Mix",                         {kStereo, kStereo, k51Mix, k51Mix}},
    {16, "4x Stereo/Dolby E Pairs",
         {kStereo, kDolbyE, kStereo, kDolbyE, kStereo, kDolbyE, kStereo, kDolbyE}},
    {16, "8 Stereo",                                       times(8, kStereo)},
    {16, "Stereo + 14 Mono",                               times(1, kStereo).then(14, kMono)},
    {16, "16 Mono",                                        times(16, kMono)},
    {16, "5.1 Mix + 2x Mono + Stereo + 6x Mono",
         StreamTypeList{k51Mix, kMono, kMono, kStereo}.then(6, kMono)},
}};
// clang-format on

// --- The tables that are derived from it

[[noreturn]] inline void raiseUnknownId() { throw std::out_of_range("invalid map<K, T> key"); }

/// A constant table with the ids 0, 1, 2, ... as its keys.
template <class Value, std::size_t N>
class IdTable {
 public:
  constexpr explicit IdTable(const std::array<Value, N>& values) : values_(values) {}

  constexpr std::int32_t size() const { return static_cast<std::int32_t>(N); }
  constexpr bool contains(std::int32_t id) const { return id >= 0 && id < size(); }

  /// The value of an id. Raises the error that the interface promises for an unknown id.
  constexpr const Value& at(std::int32_t id) const {
    if (!contains(id)) raiseUnknownId();
    return values_[static_cast<std::size_t>(id)];
  }

  constexpr auto begin() const { return values_.begin(); }
  constexpr auto end() const { return values_.end(); }

 private:
  std::array<Value, N> values_;
};

/// One field of every line of a table.
template <class Line, std::size_t N, class Field>
consteval auto column(const std::array<Line, N>& lines, Field Line::*field) {
  std::array<Field, N> values{};
  std::ranges::transform(lines, values.begin(), field);
  return IdTable{values};
}

/// Stream type -> display name, followed by a NUL.
inline constexpr auto StreamTypeNames = column(kStreamTypes, &StreamTypeRow::name);
/// Stream type -> tracks that one stream of it occupies.
inline constexpr auto StreamTypeWidths = column(kStreamTypes, &StreamTypeRow::width);
/// Item -> display name, followed by a NUL.
inline constexpr auto ServiceMapItemNames = column(kLayouts, &LayoutRow::name);
/// Item -> its stream types in track order.
inline constexpr auto ServiceMapItemStreamTypes = column(kLayouts, &LayoutRow::streamTypes);
/// Row -> number of tracks of each of its items. The catalogue deliberately has no row of 14
/// tracks.
inline constexpr auto ServiceMapRowTrackCounts =
    IdTable{std::array<std::int32_t, 7>{2, 4, 6, 8, 10, 12, 16}};

inline constexpr auto kItemIds = [] {
  std::array<ServiceMapItem, kLayouts.size()> ids{};
  std::iota(ids.begin(), ids.end(), 0);
  return ids;
}();

consteval auto itemsByRow() {
  std::array<std::span<const ServiceMapItem>, ServiceMapRowTrackCounts.size()> rows;
  std::ranges::transform(ServiceMapRowTrackCounts, rows.begin(), [](std::int32_t tracks) {
    const auto run = std::ranges::equal_range(kLayouts, tracks, {}, &LayoutRow::tracks);
    return std::span(kItemIds.begin() + (run.begin() - kLayouts.begin()), run.size());
  });
  return IdTable{rows};
}

/// Row -> its items in list order, the default first.
inline constexpr auto ServiceMapRows = itemsByRow();

/// The row that contains an item. Returns 0 for an unknown item as well.
constexpr std::int32_t rowOf(ServiceMapItem item) {
  for (std::int32_t row = 0; row < ServiceMapRows.size(); ++row)
    if (item >= ServiceMapRows.at(row).front() && item <= ServiceMapRows.at(row).back()) return row;
  return 0;
}

// --- What must hold for them

consteval bool everyItemFillsItsTracks() {
  return std::ranges::all_of(kLayouts, [](const LayoutRow& layout) {
    std::int32_t tracks = 0;
    for (const StreamType type : layout.streamTypes.view()) tracks += StreamTypeWidths.at(type);
    return tracks == layout.tracks;
  });
}

consteval bool namesAreUniqueAscii() {
  return std::ranges::all_of(kLayouts, [](const LayoutRow& layout) {
    return std::ranges::all_of(layout.name, [](char c) { return c >= ' ' && c <= '~'; }) &&
           std::ranges::count(kLayouts, layout.name, &LayoutRow::name) == 1;
  });
}

static_assert(kMono == 0 && kDolbyE == kStreamTypes.size() - 1);
static_assert(NO_SERVICE_MAP_ITEM == kLayouts.size());
static_assert(everyItemFillsItsTracks() && namesAreUniqueAscii());
// Rows are in ascending order of their tracks, offer a choice, and contain every item.
static_assert(std::ranges::adjacent_find(ServiceMapRowTrackCounts, std::greater_equal()) ==
              ServiceMapRowTrackCounts.end());
static_assert(std::ranges::all_of(ServiceMapRows, [](std::span<const ServiceMapItem> items) {
  return items.size() > 1;
}));
static_assert(std::ranges::is_sorted(kLayouts, {}, &LayoutRow::tracks));
static_assert(std::ranges::all_of(kLayouts, [](const LayoutRow& layout) {
  return std::ranges::find(ServiceMapRowTrackCounts, layout.tracks) !=
         ServiceMapRowTrackCounts.end();
}));

}  // namespace kestrel
