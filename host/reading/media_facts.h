// What leaves this room: what a reader library says about a media file, field by field and as it
// stands, or why a file cannot be examined. An empty text is a field that the reader does not give.
// All texts are UTF-8.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
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

struct ReadMedia {
  RawMedia raw;
  std::string reader;       ///< "libmediainfo", "libmediainfo-quick" or "mediainfo-json"
  std::string quickReason;  ///< why only a quick look was possible, a sentence; empty: it was not
};

/// The one way in which an examination ends early. The text is a single clause that says what was
/// wrong with the file, without the file's name.
class NotExamined : public std::runtime_error {
 public:
  /// @param id  stable: the text may change, the id does not; docs/host.md lists them
  NotExamined(std::string_view id, const std::string& sentence)
      : std::runtime_error(sentence), id_(id) {}

  const std::string& id() const { return id_; }

 private:
  std::string id_;
};

}  // namespace kestrel::host
