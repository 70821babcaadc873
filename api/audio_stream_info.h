// The host's description of one audio stream of a media file. The host passes a contiguous array of
// these records; the library only reads it and keeps no pointer into it after the call.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "host_runtime.h"

namespace kestrel {

struct AudioStreamInfo {
  /// Its leading decimal number is the stream's track number; it may hold "-", as in "3-4".
  std::wstring streamId;
  /// The labels of the stream's tracks in track order, separated by blanks: "L R C LFE Ls Rs".
  std::wstring trackLabels;
  /// Group number of the stream; the library copies and compares it.
  std::int32_t group = 0;
  /// Number of tracks (channels) that the stream occupies; 0 or less: none. A negative number is
  /// part of the file's track total all the same, which wraps in 32 bits.
  std::int32_t channelCount = 0;
  /// Three properties that neighbouring tracks of one service must share (for example sampling
  /// rate, bit depth, format); compared for equality only.
  std::int32_t formatKey1 = 0;
  std::int32_t formatKey2 = 0;
  std::int32_t formatKey3 = 0;
  /// Non-zero: the stream counts as one pair of tracks whatever its channelCount. Use 0 or 1: the
  /// track expansion treats 1 alone as pair-coded.
  std::uint8_t isPairCoded = 0;
  /// Non-zero: a pair-coded stream without "-" in its streamId shares one single pair with every
  /// other such stream.
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
