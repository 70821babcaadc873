// The facts of a file as they leave this room: its streams, laid out as tracks, and what is odd
// about them. Plain data without an opinion; the names are those of
// docs/schema/kestrel-result-1.json.
//
// Tracks are numbered from 1 in the order of the file, as the layouts count them: each channel of a
// plain stream is one track, each pair that carries coded programmes is two.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "api/audio_stream_info.h"

namespace kestrel::host {

/// How a stream is shown to people, who know it by what other programs say.
struct ShownStream {
  std::string id;  ///< the reader's id, before any renumbering
  std::string format;
  std::optional<std::int64_t> splitChannel;  ///< as in IdentifiedStream
};

/// What is odd about the file as a whole or about one stream.
struct MappingWarning {
  std::string id;  ///< stable; see docs/host.md
  std::string sentence;
};

/// The streams as the library takes them.
struct MappedMedia {
  std::string container;
  std::string declaredLayout;            ///< as RawMedia has it
  std::vector<AudioStreamInfo> streams;  ///< for the library; the group of each is its index
  std::vector<ShownStream> shown;        ///< one for each of the streams
  std::vector<MappingWarning> warnings;
};

using TrackNumbers = std::vector<std::int32_t>;

/// One audio stream as the reader reports it.
struct AudioStream {
  std::string id;                       ///< the reader's own id, before any renumbering
  std::optional<std::int32_t> channel;  ///< its channel, from 1, in a track that was split
  std::string format;
  std::int32_t channels = 0;
  std::int32_t sampleRate = 0;  ///< Hz; 0: not known
  std::int32_t bitDepth = 0;    ///< 0: not known
  std::vector<std::string> labels;
  bool isPairCoded = false;
  std::optional<std::int32_t> programme;  ///< from 1, on its pair
  TrackNumbers tracks;
};

/// One track: a channel of a plain stream, or one half of a pair.
struct AudioTrack {
  std::int32_t number = 0;
  std::string name;                  ///< in the reader's terms: "2001", "2 channel 3"
  std::vector<std::size_t> streams;  ///< indices; several where programmes share a pair
  std::int32_t channel = 0;          ///< from 1, in its stream; of the pair when pair-coded
  std::string label;                 ///< empty: none
  bool isPairCoded = false;
};

struct TrackMap {
  std::vector<AudioStream> streams;
  std::vector<AudioTrack> tracks;
};

/// All that a result says of a file before anybody judges it.
struct FileFacts {
  std::string file;    ///< the bytes of the name, whatever their encoding
  std::string reader;  ///< as ReadMedia has it
  std::string container;
  TrackMap map;
};

}  // namespace kestrel::host
