// What a reader library says about a media file, field by field and as it stands. An empty text is
// a field that the reader does not give. All texts are UTF-8.
#pragma once

#include <string>
#include <vector>

namespace kestrel::host {

struct RawAudioStream {
  std::string id;
  std::string format;
  std::string muxingMode;
  std::string channels;
  std::string channelLayout;
  std::string channelLayoutId;
  std::string samplingRate;
  std::string bitDepth;
};

struct RawMedia {
  std::string container;       ///< empty: not a media file
  std::string isTruncated;     ///< "Yes" when the end of the file is missing
  std::string declaredLayout;  ///< the audio track layout of AS-11 metadata: "EBU R 123: 8b"
  std::vector<RawAudioStream> audioStreams;
};

}  // namespace kestrel::host
