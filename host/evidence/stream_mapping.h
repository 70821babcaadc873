// From what a reader says about a file to the records that the library takes. Pure: no file, no
// reader library, nothing remembered.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "api/audio_stream_info.h"
#include "host/reading/raw_media.h"

namespace kestrel::host {

/// How a stream is shown to people, who know it by what other programs say.
struct ShownStream {
  std::string id;  ///< the reader's id, before any renumbering
  std::string format;
  std::optional<std::int64_t> splitChannel;  ///< as in IdentifiedStream
};

/// What is odd about the file as a whole or about one stream.
struct MappingWarning {
  std::string id;  ///< as Finding has it
  std::string sentence;
};

struct MappedMedia {
  std::string container;
  std::string declaredLayout;            ///< as RawMedia has it
  std::vector<AudioStreamInfo> streams;  ///< for the library; the group of each is its index
  std::vector<ShownStream> shown;        ///< one for each of the streams
  std::vector<MappingWarning> warnings;
};

MappedMedia mapMedia(const RawMedia& media);

}  // namespace kestrel::host
