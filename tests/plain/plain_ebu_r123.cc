// The evaluation runs in the order of its functions: count the channels, find the configuration,
// and match its groups one after the other, each with the procedure that the track at the position
// asks for. Channels are counted in 64 bits throughout.
#include "tests/plain/plain_ebu_r123.h"

#include <charconv>
#include <cstddef>
#include <limits>
#include <ostream>
#include <string>
#include <string_view>
#include <system_error>

#include "api/catalogue_ids.h"
#include "tests/plain/plain_service_map.h"

namespace kestrel::plain {
namespace {

// The leading number as text that std::from_chars reads, "0" when there is none.
std::string leadingNumberText(const std::wstring& text) {
  std::size_t i = 0;
  while (i < text.size() && std::wstring_view(L" \t\n\v\f\r").find(text[i]) != text.npos) ++i;
  std::string number;
  if (i < text.size() && (text[i] == L'-' || text[i] == L'+')) {
    if (text[i] == L'-') number = "-";
    ++i;
  }
  number += "0";
  for (; i < text.size() && text[i] >= L'0' && text[i] <= L'9'; ++i) {
    number += static_cast<char>('0' + (text[i] - L'0'));
  }
  return number;
}

std::int64_t trackNumberOf(const AudioStreamInfo& stream) {
  const std::string text = leadingNumberText(stream.streamId);
  std::int64_t number = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
  if (read.ec != std::errc::result_out_of_range) return number;
  using Limits = std::numeric_limits<std::int64_t>;
  return text[0] == '-' ? Limits::min() : Limits::max();
}

std::int64_t channelsNeeded(std::uint32_t streamType) {
  if (streamType == kMono) return 1;
  if (streamType == kStereo) return 2;
  if (streamType == k51Mix) return 6;
  if (streamType == k71Mix) return 8;
  return -1;
}

bool tracksCompatible(const AudioStreamInfo& a, const AudioStreamInfo& b) {
  return a.formatKey1 == b.formatKey1 && a.formatKey2 == b.formatKey2 &&
         a.formatKey3 == b.formatKey3;
}

std::uint8_t flagOf(const R123GroupRequirement& group) { return group.report != 0 ? 1 : 0; }

// Thrown where a group cannot be matched.
struct Failure {
  R123End end;
};

class Evaluation {
 public:
  explicit Evaluation(const std::vector<AudioStreamInfo>& streams)
      : streams_(streams), trackCount_(static_cast<std::int64_t>(streams.size())) {}

  void match(const R123Configuration& configuration) {
    bool anyToReport = false;
    std::int64_t position = 0;
    for (const R123GroupRequirement& group : configuration.groups) {
      if (position >= trackCount_) throw Failure{R123End::kNoTrackLeft};
      const AudioStreamInfo track = at(position);
      const std::int64_t first = track.group;
      if (first < 0 || first >= trackCount_) throw Failure{R123End::kGroupOutside};
      position += track.isPairCoded != 0 ? matchDolbyE(group, first) : matchChannels(group, first);
      anyToReport = anyToReport || group.report != 0;
    }
    if (!anyToReport) throw Failure{R123End::kNothingToReport};
  }

  const std::vector<ServiceMapResult>& records() const { return records_; }
  bool groupBeganInsideTrack() const { return groupBeganInsideTrack_; }

 private:
  const AudioStreamInfo& at(std::int64_t index) const {
    return streams_[static_cast<std::size_t>(index)];
  }

  // Returns how many tracks the group consumed.
  std::int64_t matchChannels(const R123GroupRequirement& group, std::int64_t first) {
    const std::int64_t needed = channelsNeeded(group.streamType);
    if (needed < 0) throw Failure{R123End::kWrongStreamType};
    if (offset_ != 0) groupBeganInsideTrack_ = true;
    ServiceMapResult record;
    record.trackCount = static_cast<std::int32_t>(needed);
    record.reported = flagOf(group);
    std::size_t slotsUsed = 0;
    std::int64_t taken = 0;
    std::int64_t consumed = 0;
    while (taken < needed) {
      const std::int64_t index = first + consumed;
      if (index >= trackCount_) throw Failure{R123End::kRanPastTheEnd};
      const AudioStreamInfo& track = at(index);
      if (!tracksCompatible(at(first), track)) throw Failure{R123End::kIncompatible};
      const std::int64_t free = track.channelCount - offset_;
      const std::int64_t taking = taken + free <= needed ? free : free - (needed - taken);
      for (std::int64_t channel = offset_; channel < offset_ + taking; ++channel) {
        if (slotsUsed >= record.slots.size()) break;
        record.slots[slotsUsed++] = {trackNumberOf(track), track.group, -1,
                                     static_cast<std::int32_t>(channel)};
      }
      if (offset_ + taking == track.channelCount) {
        ++consumed;
        offset_ = 0;
      } else {
        offset_ += taking;
      }
      taken += taking;
    }
    if (group.report != 0) records_.push_back(record);
    return consumed;
  }

  // Returns how many tracks the group consumed.
  std::int64_t matchDolbyE(const R123GroupRequirement& group, std::int64_t first) {
    if (group.streamType != kDolbyE) throw Failure{R123End::kWrongStreamType};
    const std::int64_t number = trackNumberOf(at(first));
    std::int64_t consumed = 0;
    do {
      const AudioStreamInfo& track = at(first + consumed);
      ServiceMapResult record;
      record.slots[0] = {number, track.group, -1, -1};
      record.trackCount = track.channelCount;
      record.reported = flagOf(group);
      record.isEmca = 1;
      records_.push_back(record);
      ++consumed;
    } while (first + consumed < trackCount_ && at(first + consumed).isPairCoded != 0 &&
             trackNumberOf(at(first + consumed)) == number);
    return consumed;
  }

  const std::vector<AudioStreamInfo>& streams_;
  std::int64_t trackCount_;
  std::int64_t offset_ = 0;
  std::vector<ServiceMapResult> records_;
  bool groupBeganInsideTrack_ = false;
};

}  // namespace

std::int32_t countR123Channels(const std::vector<AudioStreamInfo>& streams,
                               bool allowTwoTrackStreams) {
  const std::int32_t permitted = allowTwoTrackStreams ? 2 : 1;
  std::uint32_t total = 0;
  std::int64_t remembered = -1;
  for (const AudioStreamInfo& stream : streams) {
    if (stream.isPairCoded != 0) {
      const std::int64_t number = trackNumberOf(stream);
      if (number == remembered) continue;
      remembered = number;
      total += 2;
    } else {
      if (stream.channelCount > permitted) return -1;
      total += static_cast<std::uint32_t>(stream.channelCount);
      remembered = -1;
    }
  }
  return static_cast<std::int32_t>(total);
}

R123Result evaluateEbuR123(const R123Input& input) {
  R123Result result{input.item, {}, R123End::kNotAnalysable, false};
  const std::int32_t count = countR123Channels(input.streams, input.allowTwoTrackStreams);
  if (count == -1) return result;
  const auto found = input.configurations.find(count);
  result.end = R123End::kNoConfiguration;
  if (found == input.configurations.end()) return result;
  if (result.item == NO_SERVICE_MAP_ITEM) result.item = found->second.item;
  Evaluation evaluation(input.streams);
  try {
    evaluation.match(found->second);
    result.records = evaluation.records();
    result.end = R123End::kConforms;
  } catch (const Failure& failure) {
    result.item = NO_SERVICE_MAP_ITEM;
    result.end = failure.end;
  }
  result.groupBeganInsideTrack = evaluation.groupBeganInsideTrack();
  return result;
}

bool sameResults(const R123Result& left, const R123Result& right) {
  return left.item == right.item && sameResults(left.records, right.records);
}

std::ostream& operator<<(std::ostream& out, R123End end) {
  constexpr std::string_view kNames[] = {
      "not analysable",      "no configuration",  "no track left",
      "wrong stream type",   "group outside",     "ran past the end",
      "incompatible tracks", "nothing to report", "conforms",
  };
  return out << kNames[static_cast<std::size_t>(end)];
}

std::ostream& operator<<(std::ostream& out, const R123Input& input) {
  out << "item " << input.item << " allowTwoTrackStreams " << input.allowTwoTrackStreams << "\n";
  for (const auto& [count, configuration] : input.configurations) {
    out << "  " << count << " channels: item " << configuration.item << ", groups";
    for (const R123GroupRequirement& group : configuration.groups) {
      out << " " << group.streamType << "/" << int{group.report} << "/" << group.extra;
    }
    out << "\n";
  }
  return out << ServiceMapInput{{}, {}, input.streams, false, false};
}

std::ostream& operator<<(std::ostream& out, const R123Result& result) {
  return out << "item " << result.item << ", " << PlainResult{Outcome::kFilled, result.records};
}

}  // namespace kestrel::plain
