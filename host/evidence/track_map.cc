#include "host/evidence/track_map.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <numeric>

#include "host/basics/text_parts.h"
#include "host/basics/utf8.h"

namespace kestrel::host {
namespace {

std::vector<std::string> labelsOf(const AudioStreamInfo& info) {
  const std::string text = utf8FromWide(info.trackLabels);
  const std::vector<std::string_view> labels = splitAtBlanks(text);
  return {labels.begin(), labels.end()};
}

// An id may hold any number; one that no channel can have is none.
std::optional<std::int32_t> channelNumber(std::optional<std::int64_t> number) {
  const bool isChannel =
      number && *number >= 1 && *number <= std::numeric_limits<std::int32_t>::max();
  return isChannel ? std::optional(static_cast<std::int32_t>(*number)) : std::nullopt;
}

// Lays stream after stream. A pair is joined by the streams that stand on it too.
class Layer {
 public:
  explicit Layer(const MappedMedia& media) : media_(media) {}

  TrackMap run() {
    for (std::size_t index = 0; index < media_.streams.size(); ++index) {
      addStream(index);
    }
    return std::move(map_);
  }

 private:
  void addStream(std::size_t index) {
    const AudioStreamInfo& info = media_.streams[index];
    const ShownStream& shown = media_.shown[index];
    AudioStream stream;
    stream.id = shown.id;
    stream.channel = channelNumber(shown.splitChannel);
    stream.format = shown.format;
    stream.channels = info.channelCount;
    stream.sampleRate = std::max(info.formatKey1, 0);
    stream.bitDepth = std::max(info.formatKey2, 0);
    stream.labels = labelsOf(info);
    stream.isPairCoded = info.isPairCoded != 0;
    if (stream.isPairCoded) {
      addToPair(index, stream);
    } else {
      addChannels(index, stream);
    }
    map_.streams.push_back(std::move(stream));
  }

  void addChannels(std::size_t index, AudioStream& stream) {
    for (std::int32_t channel = 1; channel <= stream.channels; ++channel) {
      const auto at = static_cast<std::size_t>(channel - 1);
      const bool isOne = stream.channels == 1;
      addTrack({0,
                isOne ? stream.id : fmt::format("{} channel {}", stream.id, channel),
                {index},
                channel,
                at < stream.labels.size() ? stream.labels[at] : "",
                false},
               stream);
    }
  }

  void addToPair(std::size_t index, AudioStream& stream) {
    const AudioStreamInfo& info = media_.streams[index];
    const bool isShared = info.isPairShared != 0 && info.streamId.find(L'-') == std::wstring::npos;
    const std::int64_t number =
        leadingNumber<std::int64_t>(utf8FromWide(info.streamId)).value_or(0);
    TrackNumbers& pair = isShared ? sharedPair_ : lastPair_;
    const bool isJoined = isShared ? !pair.empty() : lastNumber_ == number;
    lastNumber_ = number;
    if (isJoined && !pair.empty()) {
      joinPair(index, pair, stream);
      return;
    }
    for (std::int32_t channel = 1; channel <= 2; ++channel) {
      addTrack({0, pairName(stream.id), {index}, channel, "", true}, stream);
    }
    stream.programme = 1;
    pair = stream.tracks;
  }

  void joinPair(std::size_t index, const TrackNumbers& pair, AudioStream& stream) {
    for (const std::int32_t number : pair) {
      map_.tracks[static_cast<std::size_t>(number - 1)].streams.push_back(index);
    }
    const AudioTrack& first = map_.tracks[static_cast<std::size_t>(pair.front() - 1)];
    stream.programme = static_cast<std::int32_t>(first.streams.size());
    stream.tracks = pair;
  }

  // The id without the programme's number: "2003 / 2004" of "2003 / 2004-1".
  static std::string pairName(const std::string& id) {
    const std::size_t dash = id.rfind('-');
    const bool endsInProgramme = dash != std::string::npos &&
                                 id.find_first_not_of("0123456789", dash + 1) == std::string::npos;
    return endsInProgramme ? id.substr(0, dash) : id;
  }

  void addTrack(AudioTrack track, AudioStream& stream) {
    track.number = static_cast<std::int32_t>(map_.tracks.size()) + 1;
    stream.tracks.push_back(track.number);
    map_.tracks.push_back(std::move(track));
  }

  const MappedMedia& media_;
  TrackMap map_;
  TrackNumbers lastPair_;
  TrackNumbers sharedPair_;
  std::optional<std::int64_t> lastNumber_;
};

bool isRun(const TrackNumbers& tracks) {
  return tracks.size() > 2 && tracks.back() - tracks.front() + 1 == std::ssize(tracks) &&
         std::ranges::is_sorted(tracks);
}

}  // namespace

TrackMap trackMap(const MappedMedia& media) { return Layer(media).run(); }

// Pairs are few tracks each, so they are laid out; the channels of plain streams are only added up.
std::int64_t claimedTracks(const MappedMedia& media) {
  MappedMedia pairs = media;
  std::int64_t channels = 0;
  for (AudioStreamInfo& stream : pairs.streams) {
    if (stream.isPairCoded == 0) {
      channels += std::max(stream.channelCount, 0);
      stream.channelCount = 0;
    }
  }
  return channels + trackTotal(trackMap(pairs));
}

std::int32_t trackTotal(const TrackMap& map) {
  return static_cast<std::int32_t>(map.tracks.size());
}

std::vector<std::string> labelsOn(const TrackMap& map, const TrackNumbers& tracks) {
  std::vector<std::string> labels;
  for (const std::int32_t number : tracks) {
    labels.push_back(map.tracks.at(static_cast<std::size_t>(number - 1)).label);
  }
  return labels;
}

std::string tracksInWords(const TrackNumbers& tracks) {
  if (tracks.size() < 2) {
    return tracks.empty() ? "no track" : fmt::format("track {}", tracks.front());
  }
  if (isRun(tracks)) {
    return fmt::format("tracks {} to {}", tracks.front(), tracks.back());
  }
  const TrackNumbers front(tracks.begin(), tracks.end() - 1);
  return fmt::format("tracks {} and {}", fmt::join(front, ", "), tracks.back());
}

TrackNumbers trackRange(std::int32_t first, std::int32_t count) {
  TrackNumbers tracks(static_cast<std::size_t>(std::max(count, 0)));
  std::iota(tracks.begin(), tracks.end(), first);
  return tracks;
}

}  // namespace kestrel::host
