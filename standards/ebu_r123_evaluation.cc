// The groups of the configuration are matched in order. The stream at the current position names,
// as its group number, the index of the group's first track. Here each stream counts as one track.
#include "standards/ebu_r123_evaluation.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

#include "analyser/file_streams.h"
#include "analyser/leading_number.h"
#include "api/catalogue_ids.h"
#include "catalogue/catalogue_tables.h"

namespace kestrel {

namespace {

constexpr std::int32_t kNotAnalysable = -1;

// Matches the groups of one configuration and collects their records.
class GroupMatcher {
 public:
  explicit GroupMatcher(std::span<const AudioStreamInfo> streams) : streams_(streams) {}

  bool matchAll(std::span<const R123GroupRequirement> groups);
  std::vector<ServiceMapResult> takeRecords() { return std::move(records_); }

 private:
  // Both return the number of tracks consumed, or nothing if the group does not match.
  std::optional<std::int64_t> matchChannels(const R123GroupRequirement& group, std::int64_t first);
  std::optional<std::int64_t> matchDolbyE(const R123GroupRequirement& group, std::int64_t first);

  bool exists(std::int64_t track) const {
    return track >= 0 && track < static_cast<std::int64_t>(streams_.size());
  }
  const AudioStreamInfo& at(std::int64_t track) const {
    return streams_[static_cast<std::size_t>(track)];
  }

  std::span<const AudioStreamInfo> streams_;
  std::vector<ServiceMapResult> records_;
  std::int64_t offset_ = 0;  // into the current track, if an earlier group ended inside it
};

bool GroupMatcher::matchAll(std::span<const R123GroupRequirement> groups) {
  std::int64_t position = 0;
  for (const R123GroupRequirement& group : groups) {
    if (!exists(position)) return false;
    const AudioStreamInfo& track = at(position);
    const auto consumed = track.isPairCoded != 0 ? matchDolbyE(group, track.group)
                                                 : matchChannels(group, track.group);
    if (!consumed) return false;
    position += *consumed;
  }
  return std::ranges::any_of(groups, [](const auto& group) { return group.report != 0; });
}

// How many channels a group takes from a track. If more channels are free than the group lacks, it
// takes as many as would be left over, repeatedly, until it has enough. All these steps are of
// equal size, so it takes what it lacks, rounded up to a multiple of the step; it never takes the
// whole track. Negative widths can make a group lack two thousand million channels, so the result
// is computed without a loop.
std::int64_t channelsToTake(std::int64_t free, std::int64_t lacking) {
  if (free <= lacking) return free;
  const std::int64_t leftOver = free - lacking;
  return (lacking + leftOver - 1) / leftOver * leftOver;
}

// Fills the slots after the first `used` ones and returns how many are then used. Channels beyond
// the last slot are dropped.
std::size_t addSlots(ServiceMapResult& record, std::size_t used, const AudioStreamInfo& track,
                     std::int64_t firstChannel, std::int64_t count) {
  const std::int64_t number = leadingNumber(track.streamId);
  for (std::int64_t i = 0; i < count && used < record.slots.size(); ++i)
    record.slots[used++] = {number, track.group, -1, static_cast<std::int32_t>(firstChannel + i)};
  return used;
}

std::optional<std::int64_t> GroupMatcher::matchChannels(const R123GroupRequirement& group,
                                                        std::int64_t first) {
  if (group.streamType > static_cast<std::uint32_t>(k71Mix) || !exists(first)) return std::nullopt;
  std::int64_t lacking = StreamTypeWidths.at(static_cast<StreamType>(group.streamType));
  ServiceMapResult record;
  record.trackCount = static_cast<std::int32_t>(lacking);
  record.reported = 1;  // a group that is not to be reported leaves no record
  std::size_t slotsUsed = 0;
  std::int64_t consumed = 0;
  while (lacking > 0) {
    if (!exists(first + consumed)) return std::nullopt;
    const AudioStreamInfo& track = at(first + consumed);
    if (formatKeysOf(at(first)) != formatKeysOf(track)) return std::nullopt;
    const std::int64_t count = channelsToTake(track.channelCount - offset_, lacking);
    slotsUsed = addSlots(record, slotsUsed, track, offset_, count);
    lacking -= count;
    offset_ += count;
    if (offset_ == track.channelCount) {
      offset_ = 0;
      ++consumed;
    }
  }
  if (group.report != 0) records_.push_back(std::move(record));
  return consumed;
}

std::optional<std::int64_t> GroupMatcher::matchDolbyE(const R123GroupRequirement& group,
                                                      std::int64_t first) {
  if (group.streamType != static_cast<std::uint32_t>(kDolbyE) || !exists(first))
    return std::nullopt;
  const std::int64_t number = leadingNumber(at(first).streamId);
  std::int64_t track = first;
  do {
    ServiceMapResult& record = records_.emplace_back();
    record.slots[0] = {number, at(track).group, -1, -1};
    record.trackCount = at(track).channelCount;
    record.reported = group.report != 0 ? 1 : 0;
    record.isEmca = 1;
    ++track;
  } while (exists(track) && at(track).isPairCoded != 0 &&
           leadingNumber(at(track).streamId) == number);
  return track - first;
}

}  // namespace

std::int32_t countR123Channels(std::span<const AudioStreamInfo> streams,
                               bool allowTwoTrackStreams) noexcept {
  const std::int32_t permittedWidth = allowTwoTrackStreams ? 2 : 1;
  std::uint32_t total = 0;
  std::int64_t lastPair = -1;
  for (const AudioStreamInfo& stream : streams) {
    if (stream.isPairCoded != 0) {
      const std::int64_t number = leadingNumber(stream.streamId);
      if (number != lastPair) total += 2;
      lastPair = number;
    } else {
      if (stream.channelCount > permittedWidth) return kNotAnalysable;
      total += static_cast<std::uint32_t>(stream.channelCount);
      lastPair = -1;
    }
  }
  return static_cast<std::int32_t>(total);
}

std::vector<ServiceMapResult> evaluateEbuR123(std::span<const AudioStreamInfo> streams,
                                              bool allowTwoTrackStreams,
                                              const R123Configurations& configurations,
                                              std::int32_t& item) {
  const std::int32_t channels = countR123Channels(streams, allowTwoTrackStreams);
  if (channels == kNotAnalysable) return {};
  const auto configuration = configurations.find(channels);
  if (configuration == configurations.end()) return {};
  GroupMatcher matcher(streams);
  if (!matcher.matchAll(configuration->second.groups)) {
    item = NO_SERVICE_MAP_ITEM;
    return {};
  }
  if (item == NO_SERVICE_MAP_ITEM) item = configuration->second.item;
  return matcher.takeRecords();
}

}  // namespace kestrel
