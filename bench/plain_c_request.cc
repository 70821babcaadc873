#include "bench/plain_c_request.h"

#include <algorithm>

namespace kestrel::bench {

namespace {

std::string narrow(const std::wstring& text) {
  std::string narrowed(text.size(), ' ');
  std::ranges::transform(text, narrowed.begin(), [](wchar_t c) { return static_cast<char>(c); });
  return narrowed;
}

KestrelStream toStream(const AudioStreamInfo& info, const char* id, const char* labels) {
  KestrelStream stream{};
  stream.structSize = sizeof stream;
  stream.group = info.group;
  stream.streamId = id;
  stream.trackLabels = labels;
  stream.channelCount = info.channelCount;
  stream.formatKey1 = info.formatKey1;
  stream.formatKey2 = info.formatKey2;
  stream.formatKey3 = info.formatKey3;
  stream.isPairCoded = info.isPairCoded;
  stream.isPairShared = info.isPairShared;
  return stream;
}

}  // namespace

PlainCRequest::PlainCRequest(const plain::ServiceMapInput& input)
    : description_(input.description), order_(narrow(input.order)) {
  for (const AudioStreamInfo& info : input.streams) {
    texts_.push_back(narrow(info.streamId));
    texts_.push_back(narrow(info.trackLabels));
  }
  for (std::size_t i = 0; i < input.streams.size(); ++i)
    streams_.push_back(
        toStream(input.streams[i], texts_[2 * i].c_str(), texts_[2 * i + 1].c_str()));
  request_.structSize = sizeof request_;
  request_.streamCount = static_cast<std::int32_t>(streams_.size());
  request_.layoutDescription = description_.c_str();
  request_.surroundChannelOrder = order_.c_str();
  request_.streams = streams_.data();
  request_.streamStride = sizeof(KestrelStream);
  request_.reportAll = input.reportAll ? 1 : 0;
  request_.surroundCheck = input.surroundCheck ? 1 : 0;
}

}  // namespace kestrel::bench
