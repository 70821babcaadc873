// Short names for the calls and the records of the service map tests. A test names a call and
// states everything that the call leaves behind: the outcome and every field of every record.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "api/audio_stream_info.h"
#include "api/service_map_result.h"
#include "tests/plain/plain_service_map.h"

namespace kestrel::test {

using Streams = std::vector<AudioStreamInfo>;
using Records = std::vector<ServiceMapResult>;
using Slots = std::vector<TrackSlot>;

inline constexpr std::int64_t kLargestNumber = std::numeric_limits<std::int64_t>::max();
inline constexpr wchar_t kSixLabels[] = L"L R C LFE Ls Rs";

/// The surround channel order of every call below.
inline constexpr wchar_t kOrder[] = L"Rs Ls LFE C R L";

// --- Streams

AudioStreamInfo stream(const std::wstring& id, std::int32_t channelCount, std::int32_t group = 1,
                       const std::wstring& labels = L"");
AudioStreamInfo pairCoded(const std::wstring& id, std::int32_t channelCount,
                          std::int32_t group = 1);
AudioStreamInfo sharedPair(const std::wstring& id, std::int32_t channelCount,
                           std::int32_t group = 1);

AudioStreamInfo withFormat(AudioStreamInfo info, std::int32_t key1, std::int32_t key2,
                           std::int32_t key3);
AudioStreamInfo withFlag(AudioStreamInfo info, std::uint8_t isPairCoded);

/// Streams "1", "2" and so on, one track each, with one of the labels each.
Streams monoStreams(const std::vector<std::wstring>& labels);
Streams monoStreams(std::size_t count);

// --- Slots and records

/// The slots of `count` neighbouring tracks of one stream.
Slots tracks(std::int64_t number, std::int32_t count, std::int32_t first = 0,
             std::int32_t group = 1);

/// The slots of neighbouring streams of monoStreams().
Slots monoTracks(std::int64_t firstNumber, std::int32_t count);

Slots operator+(Slots left, const Slots& right);

ServiceMapResult record(std::int32_t trackCount, const Slots& slots,
                        const std::wstring& label = L"");
ServiceMapResult service(const Slots& slots, const std::wstring& label = L"");
ServiceMapResult emca(const Slots& slots);
ServiceMapResult requested(ServiceMapResult result);
ServiceMapResult unknownService();

// --- Calls and how they end

plain::ServiceMapInput call(std::string description, Streams streams);
plain::ServiceMapInput callReportingAll(std::string description, Streams streams);
plain::ServiceMapInput callChecking(std::string description, Streams streams);

testing::AssertionResult fills(const plain::ServiceMapInput& input, Records records);
testing::AssertionResult empties(const plain::ServiceMapInput& input);
testing::AssertionResult leavesUntouched(const plain::ServiceMapInput& input);

}  // namespace kestrel::test
