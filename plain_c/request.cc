// Each text is looked at once. Those of streams are a few characters of ASCII as a rule: then they
// are through before the length of a text could be asked for.
#include "plain_c/request.h"

#include "plain_c/utf8.h"

namespace kestrel {

namespace {

std::string_view checkedText(const char* text, std::int32_t stream) {
  if (text == nullptr) throw RefusedRequest{KESTREL_NULL_ARGUMENT};
  const std::string_view view(text);
  if (const auto bad = firstBadByte(view)) throw RefusedRequest{KESTREL_BAD_TEXT, {*bad, stream}};
  return view;
}

// Whether a text ends within a few characters and all of them are ASCII.
bool isShortAscii(const char* text) {
  constexpr int kShort = 16;
  for (int i = 0; i < kShort; ++i) {
    if (text[i] == '\0') return true;
    if (static_cast<unsigned char>(text[i]) > 0x7F) return false;
  }
  return false;
}

void check(const char* text, std::int32_t stream) {
  if (text == nullptr || !isShortAscii(text)) checkedText(text, stream);
}

const KestrelRequest& checkedRecord(const KestrelRequest& request) {
  if (request.structSize < sizeof(KestrelRequest)) throw RefusedRequest{KESTREL_BAD_RECORD_SIZE};
  if (request.streamCount < 0) throw RefusedRequest{KESTREL_BAD_COUNT};
  if (request.streamCount == 0) return request;
  if (request.streams == nullptr) throw RefusedRequest{KESTREL_NULL_ARGUMENT};
  if (request.streamStride < sizeof(KestrelStream) ||
      request.streamStride % alignof(KestrelStream) != 0)
    throw RefusedRequest{KESTREL_BAD_RECORD_SIZE};
  return request;
}

PlainCStreams checkedStreams(const KestrelRequest& request) {
  const PlainCStreams streams(request.streams, request.streamStride,
                              static_cast<std::size_t>(request.streamCount));
  for (std::int32_t i = 0; i < request.streamCount; ++i) {
    const KestrelStream& stream = streams[static_cast<std::size_t>(i)];
    if (stream.structSize < sizeof(KestrelStream) || stream.structSize > request.streamStride)
      throw RefusedRequest{KESTREL_BAD_RECORD_SIZE};
    check(stream.streamId, i);
    check(stream.trackLabels, i);
  }
  return streams;
}

}  // namespace

CheckedRequest::CheckedRequest(const KestrelRequest& request)
    : layoutDescription(checkedText(checkedRecord(request).layoutDescription, -1)),
      surroundChannelOrder(checkedText(request.surroundChannelOrder, -1)),
      streams(checkedStreams(request)),
      reportAll(request.reportAll != 0),
      surroundCheck(request.surroundCheck != 0) {}

}  // namespace kestrel
