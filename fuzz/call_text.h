// One call of the analyser as a text, the form in which several harnesses take it:
//
//   call    = flags "|" order "|" description "\n" {stream "\n"}
//   flags   = any of "r" reportAll, "s" surroundCheck, "t" allowTwoTrackStreams
//   stream  = id "|" labels "|" channelCount "|" group "|" formatKey1 "|" formatKey2 "|"
//             formatKey3 "|" isPairCoded "|" isPairShared
//
// For example, a 5.1 mix and a stereo pair:
//
//   s|L R C LFE Ls Rs|T8=5.1 Mix,Stereo
//   1|L R C LFE Ls Rs|6
//   2||2
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "api/audio_stream_info.h"
#include "tests/plain/plain_service_map.h"

namespace kestrel::fuzz {

/// A longer description, or more tracks, are not for the plain forms: their regular expressions
/// recurse once per character (some hundred bytes of stack each, several times that under the
/// sanitizers), and each track is a record of theirs.
inline constexpr std::size_t kLongestPlainDescription = 600;
inline constexpr std::int64_t kMostPlainTracks = 600;

/// What is behind these streams of an input is passed over.
inline constexpr std::size_t kMostStreams = 100;

/// A stream with its texts in bytes, UTF-8 or not.
struct StreamText {
  std::string streamId;
  std::string trackLabels;
  AudioStreamInfo numbers;  ///< its own texts are empty
};

struct CallText {
  std::string description;  ///< without any NUL, as is the order
  std::string order;
  bool reportAll = false;
  bool surroundCheck = false;
  bool allowTwoTrackStreams = false;
  std::vector<StreamText> streams;
};

CallText readCall(std::string_view text);

/// Takes the stream of a line; all that is left of the text is streams.
StreamText readStream(std::string_view line);

/// The text that readCall() reads as this call.
std::string writeCall(const CallText& call);

std::string writeStream(const AudioStreamInfo& stream);

/// With wide texts; a byte that is not UTF-8 becomes the character of its number.
AudioStreamInfo wideStream(const StreamText& stream);
plain::ServiceMapInput wideCall(const CallText& call);

/// The way back; texts become UTF-8, the description stays as it is.
CallText callOf(const plain::ServiceMapInput& input);

/// Whether the plain form may be asked.
bool suitsPlainForm(const plain::ServiceMapInput& input);

}  // namespace kestrel::fuzz
