// The configuration's groups are matched one after the other, each against the tracks from the one
// that the stream at the current position names as its group's first. Each stream is one track
// here.
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

// Matches the groups of one configuration; its records are those found so far.
class GroupMatcher {
 public:
  explicit GroupMatcher(std::span<const AudioStreamInfo> streams) : streams_(streams) {}

  bool matchAll(std::span<const R123GroupRequirement> groups);
  std::vector<ServiceMapResult> takeRecords() { return std::move(records_); }

 private:
  // Both return the number of tracks consumed, nothing when the group does not match.
  std::optional<std::int64_t> matchChannels(const R123GroupRequirement& group, std::int64_t first);
  std::optional<std::int64_t> matchDolbyE(const R123GroupRequirement& group, std::int64_t first);

  void takeChannels(ServiceMapResult& record, const AudioStreamInfo& track, std::int64_t count);

  bool exists(std::int64_t track) const {
    return track >= 0 && track < static_cast<std::int64_t>(streams_.size());
  }
  const AudioStreamInfo& at(std::int64_t track) const {
    return streams_[static_cast<std::size_t>(track)];
  }

  std::span<const AudioStreamInfo> streams_;
  std::vector<ServiceMapResult> records_;
  std::int64_t offset_ = 0;  // into the current track, where an earlier group ended inside it
  std::size_t slotsUsed_ = 0;
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

// How many channels one step takes from a track with `free` channels when `lacking` are still
// needed. From a track that has more than enough it takes what would be left over: the channels
// that are counted here never allow the two to differ, and the rule is kept as it always was.
std::int64_t channelsToTake(std::int64_t free, std::int64_t lacking) {
  return free <= lacking ? free : free - lacking;
}

std::optional<std::int64_t> GroupMatcher::matchChannels(const R123GroupRequirement& group,
                                                        std::int64_t first) {
  if (group.streamType > static_cast<std::uint32_t>(k71Mix)) return std::nullopt;
  const std::int64_t needed = StreamTypeWidths.at(static_cast<StreamType>(group.streamType));
  ServiceMapResult record;
  record.trackCount = static_cast<std::int32_t>(needed);
  record.reported = group.report != 0 ? 1 : 0;
  slotsUsed_ = 0;
  std::int64_t consumed = 0;
  for (std::int64_t taken = 0; taken < needed;) {
    if (!exists(first) || !exists(first + consumed)) return std::nullopt;
    const AudioStreamInfo& track = at(first + consumed);
    if (formatKeysOf(at(first)) != formatKeysOf(track)) return std::nullopt;
    const std::int64_t free = track.channelCount - offset_;
    const std::int64_t step = channelsToTake(free, needed - taken);
    // A step that leaves channels free leaves as many lacking less as it took, and so is followed
    // by equal steps until nothing is lacking; they are taken together.
    const bool endsTrack = free <= needed - taken;
    const std::int64_t steps = endsTrack ? 1 : (needed - taken + step - 1) / step;
    takeChannels(record, track, step * steps);
    taken += step * steps;
    offset_ = endsTrack ? 0 : offset_ + step * steps;
    if (endsTrack) ++consumed;
  }
  if (group.report != 0) records_.push_back(std::move(record));
  return consumed;
}

// Fills the next free slots; channels past the last slot have none.
void GroupMatcher::takeChannels(ServiceMapResult& record, const AudioStreamInfo& track,
                                std::int64_t count) {
  const std::int64_t number = leadingNumber(track.streamId);
  for (std::int64_t i = 0; i < count && slotsUsed_ < record.slots.size(); ++i)
    record.slots[slotsUsed_++] = {number, track.group, -1, static_cast<std::int32_t>(offset_ + i)};
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
