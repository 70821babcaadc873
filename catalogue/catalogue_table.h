// The catalogue: the stream types and the layouts ("service map items") that the library knows.
//
// kCatalogue is the one statement of it. A layout's id is its place in the table; its row is the
// run of neighbouring layouts that fill the same number of tracks, and the first of a run is the
// row's default, so the order of the lines is part of the interface. A flat array with ids as
// indices was chosen because it is a constant of the program's image: nothing is built when the
// library is loaded, nothing is allocated, and a lookup is one comparison and one read.
// catalogue_tables.h derives from it the five tables that the rest of the library reads.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>

#include "api/catalogue_ids.h"

namespace kestrel {

struct StreamTypeRow {
  std::string_view name;
  std::int32_t width;  // tracks that one stream of this type occupies
};

inline constexpr std::size_t kMostStreams = 16;

// The stream types of a layout in the order in which they occupy the tracks.
struct StreamTypeList {
  std::array<StreamType, kMostStreams> types{};
  std::size_t count = 0;

  consteval StreamTypeList(std::initializer_list<StreamType> head) { append(head); }

  // The list followed by `times` more streams of one type.
  consteval StreamTypeList then(std::size_t times, StreamType type) const {
    StreamTypeList longer = *this;
    for (std::size_t i = 0; i < times; ++i) longer.append({type});
    return longer;
  }

  constexpr std::span<const StreamType> view() const { return {types.data(), count}; }

 private:
  consteval void append(std::initializer_list<StreamType> more) {
    for (const StreamType type : more) types[count++] = type;
  }
};

consteval StreamTypeList times(std::size_t count, StreamType type) {
  return StreamTypeList{}.then(count, type);
}

struct LayoutRow {
  std::int32_t tracks;
  std::string_view name;
  StreamTypeList streamTypes;
};

struct Catalogue {
  std::array<StreamTypeRow, 5> streamTypes;
  std::array<LayoutRow, 41> layouts;
};

// Three layouts are called like the one stream that they hold.
inline constexpr std::string_view kStereoName = "Stereo";
inline constexpr std::string_view k51MixName = "5.1 Mix";
inline constexpr std::string_view k71MixName = "7.1 Mix";

// clang-format off
inline constexpr Catalogue kCatalogue = {
    {{
        {"Mono", 1},
        {kStereoName, 2},
        {k51MixName, 6},
        {k71MixName, 8},
        {"Dolby E", 2},
    }},
    {{
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
    }},
};
// clang-format on

}  // namespace kestrel
