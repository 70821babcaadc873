// Tracks, groups and records of the EBU R 123 evaluation tests, and how an evaluation ends. A test
// states the whole result: the item and every field of every record. Expectations are written out,
// not computed.
#pragma once

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "api/catalogue_ids.h"
#include "standards/ebu_r123_evaluation.h"
#include "tests/plain/plain_ebu_r123.h"

namespace kestrel::test {

using plain::R123Input;
using plain::R123Result;
using Streams = std::vector<AudioStreamInfo>;
using Records = std::vector<ServiceMapResult>;
using Groups = std::vector<R123GroupRequirement>;
using Slots = std::vector<TrackSlot>;

inline constexpr std::int32_t kMost = INT_MAX;
inline constexpr std::int32_t kLeast = INT_MIN;
inline constexpr std::int32_t kItem = 22;  ///< of every configuration of conforms() and fails()

// --- Tracks and groups

AudioStreamInfo track(const std::wstring& id, std::int32_t channelCount, std::int32_t group);
AudioStreamInfo pairTrack(const std::wstring& id, std::int32_t channelCount, std::int32_t group);

/// Tracks "1", "2" and so on of equal width, each the first of its own group.
Streams tracks(std::size_t count, std::int32_t channelCount);

R123GroupRequirement reported(StreamType type);
R123GroupRequirement unreported(StreamType type);

// --- Slots and records

/// `count` slots of one track, from a channel on.
Slots channels(std::int64_t number, std::int32_t group, std::int32_t first, std::int32_t count);

Slots operator+(Slots left, const Slots& right);

ServiceMapResult record(std::int32_t trackCount, const Slots& slots);
ServiceMapResult dolbyE(std::int64_t number, std::int32_t group, std::int32_t trackCount,
                        std::uint8_t report = 1);

// --- Evaluations and how they end

R123Result evaluate(const R123Input& input);
testing::AssertionResult endsAs(const R123Input& input, const R123Result& expected);

/// An evaluation that finds `groups` under the number of channels that the streams have.
R123Input inputFor(const Streams& streams, const Groups& groups);

testing::AssertionResult conforms(const Streams& streams, const Groups& groups,
                                  const Records& records);
testing::AssertionResult fails(const Streams& streams, const Groups& groups);

}  // namespace kestrel::test
