// The layout-description parser in its plain, slow form, for tests to compare the library with. It
// leans on the standard library's regular expressions and text streams for every step, so that it
// shares no code and no idea with the parser under test. Meant for texts of some hundred
// characters: the regular expressions recurse once per character.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "api/catalogue_ids.h"

namespace kestrel::plain {

/// Number of track entries in an expected service.
inline constexpr std::size_t kExpectedTrackCount = 32;

/// One service that a layout description lists.
struct PlainExpectedService {
  PlainExpectedService() { tracks.fill(-1); }

  std::wstring label;
  std::int32_t trackCount = -1;
  std::array<std::int32_t, kExpectedTrackCount> tracks;
  bool reported = false;
  bool requested = false;
  bool isEmca = false;
  StreamType streamType = kUnknown;
};

/// The services of the first entry of `description` whose total is `fileTrackCount`.
/// @param counter  the last track number handed out; moved by the tracks of every known service
std::vector<PlainExpectedService> parse(const std::string& description,
                                        std::uint32_t fileTrackCount, bool reportAll,
                                        std::int32_t& counter);

}  // namespace kestrel::plain
