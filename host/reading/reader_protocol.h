// What goes through the two pipes of a reader process, and the form of its output.
//
// request   parse-speed NUL file NUL
// answer    ( "exited" | "signalled" ) SP number SP size NL output
//
// The number is the exit code or the signal that ended the reading of the file, the size that of
// the output in bytes.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "host/reading/media_facts.h"

namespace kestrel::host {

/// In bytes; some 40 000 audio streams. Who writes more is ended.
inline constexpr std::size_t kLongestAnswer = 16U << 20;

struct ReaderRequest {
  std::string parseSpeed;
  std::string file;
};

struct ReaderAnswer {
  bool isSignalled = false;
  int code = 0;
  std::string output;
};

/// What stands after a null byte in one of the texts is left out: no file name holds one.
std::string textOf(const ReaderRequest& request);

/// Takes the first request away from the text; nothing when it is not whole yet.
std::optional<ReaderRequest> takeRequest(std::string& text);

std::string textOf(const ReaderAnswer& answer);

/// Nothing when the text is the beginning of an answer. Raises NotExamined when it is none.
std::optional<ReaderAnswer> answerIn(std::string_view text);

/// One line of ASCII, so that no text of a file can disturb the pipe.
std::string rawMediaToJson(const RawMedia& media);

/// The same for the reason why there is nothing else to say.
std::string reasonToJson(const NotExamined& reason);

/// Raises the NotExamined that the text holds, and one of its own when neither of the two functions
/// above has written it.
RawMedia rawMediaFromJson(std::string_view json);

}  // namespace kestrel::host
