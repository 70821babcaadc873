// The host's description of one audio stream of a media file. The host passes a contiguous array of
// these records. The library only reads them and keeps no pointer into them after the call.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "host_runtime.h"

namespace kestrel {

struct AudioStreamInfo {
  /// Begins with the stream's track number in decimal. May contain "-", as in "3-4".
  std::wstring streamId;
  /// The labels of the stream's tracks in track order, separated by blanks: "L R C LFE Ls Rs".
  std::wstring trackLabels;
  /// The group number of the stream. The library only copies and compares it.
  std::int32_t group = 0;
  /// Number of tracks (channels) that the stream occupies; 0 or less means none. A negative number
  /// still counts towards the file's track total, which wraps in 32 bits.
  std::int32_t channelCount = 0;
  /// Three properties that neighbouring tracks of one service must share, for example sampling
  /// rate, bit depth and format. The library only tests them for equality.
  std::int32_t formatKey1 = 0;
  std::int32_t formatKey2 = 0;
  std::int32_t formatKey3 = 0;
  /// Non-zero: the stream counts as one pair of tracks, whatever its channelCount. Use only 0 and
  /// 1: a stream with another value counts as a pair but cannot carry an EMCA service.
  std::uint8_t isPairCoded = 0;
  /// Non-zero: if the stream is pair-coded and its streamId contains no "-", it shares one single
  /// pair with every other such stream.
  std::uint8_t isPairShared = 0;
};

static_assert(sizeof(AudioStreamInfo) == 88);
static_assert(offsetof(AudioStreamInfo, streamId) == 0);
static_assert(offsetof(AudioStreamInfo, trackLabels) == 32);
static_assert(offsetof(AudioStreamInfo, group) == 64);
static_assert(offsetof(AudioStreamInfo, channelCount) == 68);
static_assert(offsetof(AudioStreamInfo, formatKey1) == 72);
static_assert(offsetof(AudioStreamInfo, formatKey2) == 76);
static_assert(offsetof(AudioStreamInfo, formatKey3) == 80);
static_assert(offsetof(AudioStreamInfo, isPairCoded) == 84);
static_assert(offsetof(AudioStreamInfo, isPairShared) == 85);

}  // namespace kestrel
