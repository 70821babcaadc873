#include "plain_c/request.h"

#include "analyser/leading_number.h"
#include "plain_c/utf8.h"

namespace kestrel {

namespace {

std::string_view checkedText(const char* text, std::int32_t stream) {
  if (text == nullptr) throw RefusedRequest{KESTREL_NULL_ARGUMENT};
  const std::string_view view(text);
  if (const auto bad = firstBadByte(view)) throw RefusedRequest{KESTREL_BAD_TEXT, *bad, stream};
  return view;
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

// Records of the host may be larger than ours.
const KestrelStream& checkedStream(const KestrelRequest& request, std::int32_t index) {
  const auto* const bytes = reinterpret_cast<const std::byte*>(request.streams);
  const auto* const record =
      bytes + std::size_t{request.streamStride} * static_cast<std::size_t>(index);
  const auto& stream = *reinterpret_cast<const KestrelStream*>(record);
  if (stream.structSize < sizeof(KestrelStream) || stream.structSize > request.streamStride)
    throw RefusedRequest{KESTREL_BAD_RECORD_SIZE};
  return stream;
}

FileStreams checkedStreams(const KestrelRequest& request, std::pmr::memory_resource* memory) {
  FileStreams streams(memory);
  streams.list.reserve(static_cast<std::size_t>(request.streamCount));
  for (std::int32_t i = 0; i < request.streamCount; ++i) {
    const KestrelStream& record = checkedStream(request, i);
    const std::string_view id = checkedText(record.streamId, i);
    const std::string_view labels = checkedText(record.trackLabels, i);
    FileStream& stream = streams.add(request.surroundCheck != 0 ? labels : std::string_view());
    stream.trackNumber = leadingNumber(record.streamId);
    stream.channelCount = record.channelCount;
    stream.sourceGroup = stream.group = record.group;
    stream.formatKeys = {record.formatKey1, record.formatKey2, record.formatKey3};
    stream.isPairCoded = record.isPairCoded;
    stream.sharesPair = record.isPairShared != 0 && id.find('-') == std::string_view::npos;
  }
  return streams;
}

}  // namespace

CheckedRequest::CheckedRequest(const KestrelRequest& request, std::pmr::memory_resource* memory)
    : layoutDescription(checkedText(checkedRecord(request).layoutDescription, -1)),
      surroundChannelOrder(checkedText(request.surroundChannelOrder, -1)),
      reportAll(request.reportAll != 0),
      surroundCheck(request.surroundCheck != 0),
      streams(checkedStreams(request, memory)) {}

}  // namespace kestrel
