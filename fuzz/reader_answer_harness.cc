// The answer of the reader process, any text: it is the beginning of one, is refused, or its output
// is refused or mapped.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "fuzz/disagreement.h"
#include "fuzz/harness.h"
#include "host/evidence/stream_mapping.h"
#include "host/reading/media_facts.h"
#include "host/reading/reader_protocol.h"

namespace kestrel::fuzz {
namespace {

void checkOutput(const std::string& output) {
  const host::RawMedia media = host::rawMediaFromJson(output);
  const std::string line = host::rawMediaToJson(media);
  if (host::rawMediaToJson(host::rawMediaFromJson(line)) != line) disagree("read again", line);
  const host::MappedMedia mapped = host::mapMedia(media);
  requireEqual("the streams", mapped.streams.size(), media.audioStreams.size());
  requireEqual("the shown streams", mapped.shown.size(), media.audioStreams.size());
}

void check(std::string_view text) {
  try {
    const std::optional<host::ReaderAnswer> answer = host::answerIn(text);
    if (!answer) return;
    const auto again = host::answerIn(host::textOf(*answer));
    if (!again || again->output != answer->output || again->code != answer->code) {
      disagree("an answer, written and read again", text);
    }
    checkOutput(answer->output);
  } catch (const host::NotExamined& reason) {
    requireEqual("why an answer is refused", reason.id(), std::string("reader-failed"));
  }
}

}  // namespace
}  // namespace kestrel::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kestrel::fuzz::check({reinterpret_cast<const char*>(data), size});
  return 0;
}
