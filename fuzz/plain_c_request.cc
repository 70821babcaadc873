#include "fuzz/plain_c_request.h"

#include <algorithm>
#include <cstring>

#include "fuzz/text_fields.h"
#include "tests/plain/plain_utf8.h"

namespace kestrel::fuzz {
namespace {

constexpr std::int32_t kFewestExtra = -48;
constexpr std::int32_t kMostExtra = 200;
constexpr std::size_t kLargestCapacity = 400;

// Words that hold so many bytes.
std::size_t wordsFor(std::size_t bytes) { return (bytes + 7) / 8; }

std::uint32_t sizeWith(std::size_t size, std::int32_t extra) {
  return static_cast<std::uint32_t>(static_cast<std::int32_t>(size) + extra);
}

}  // namespace

PlainCInput readPlainC(std::string_view text) {
  PlainCInput input;
  std::string_view line = takeLine(text);
  const auto takeExtra = [&] {
    return std::clamp(numberOf32(takeField(line)), kFewestExtra, kMostExtra);
  };
  input.odd.requestExtra = std::max(takeExtra(), -36);  // at least the size itself
  input.odd.strideExtra = takeExtra();
  input.odd.streamExtra = std::max(takeExtra(), -44);
  input.odd.nulls = takeField(line);
  input.odd.recordExtra = takeExtra();
  input.odd.capacity = static_cast<std::size_t>(numberOf(takeField(line))) % kLargestCapacity;
  input.odd.id = numberOf32(takeField(line));
  input.call = readCall(text);
  for (StreamText& stream : input.call.streams) {
    stream.streamId = upToNul(stream.streamId);
    stream.trackLabels = upToNul(stream.trackLabels);
  }
  return input;
}

std::string writePlainC(const PlainCInput& input) {
  const OddSizes& odd = input.odd;
  return std::to_string(odd.requestExtra) + "|" + std::to_string(odd.strideExtra) + "|" +
         std::to_string(odd.streamExtra) + "|" + odd.nulls + "|" + std::to_string(odd.recordExtra) +
         "|" + std::to_string(odd.capacity) + "|" + std::to_string(odd.id) + "\n" +
         writeCall(input.call);
}

OddRequest::OddRequest(const PlainCInput& input)
    : input_(input), stride_(sizeWith(sizeof(KestrelStream), input.odd.strideExtra)) {
  noteText(unlessNull('d', input.call.description), -1);
  noteText(unlessNull('o', input.call.order), -1);
  if (!input.call.streams.empty()) addStreams();
  addRequest();
}

const char* OddRequest::unlessNull(char letter, const std::string& text) const {
  return input_.odd.nulls.find(letter) == std::string::npos ? text.c_str() : nullptr;
}

void OddRequest::noteText(const char* text, std::int32_t stream) {
  if (text == nullptr) {
    hasNull_ = true;
  } else if (const auto bad = plain::firstBadByte(text); bad && !hasBadText()) {
    badByte_ = *bad;
    badStream_ = stream;
  }
}

void OddRequest::addRequest() {
  const CallText& call = input_.call;
  const bool isNull = input_.odd.nulls.find('s') != std::string::npos || call.streams.empty();
  KestrelRequest record{};
  record.structSize = sizeWith(sizeof record, input_.odd.requestExtra);
  record.streamCount = static_cast<std::int32_t>(call.streams.size());
  record.layoutDescription = unlessNull('d', call.description);
  record.surroundChannelOrder = unlessNull('o', call.order);
  record.streams = isNull ? nullptr : reinterpret_cast<const KestrelStream*>(streams_.data());
  record.streamStride = stride_;
  record.reportAll = call.reportAll ? 1 : 0;
  record.surroundCheck = call.surroundCheck ? 1 : 0;
  hasBadSize_ = hasBadSize_ || record.structSize < sizeof record;
  hasNull_ = hasNull_ || (isNull && !call.streams.empty());
  request_.assign(wordsFor(record.structSize), ~std::uint64_t{0});
  std::memcpy(request_.data(), &record, std::min<std::size_t>(record.structSize, sizeof record));
}

KestrelStream OddRequest::recordOf(const StreamText& stream, bool isLast) const {
  KestrelStream record{};
  record.structSize = sizeWith(sizeof record, isLast ? input_.odd.streamExtra : 0);
  record.group = stream.numbers.group;
  record.streamId = isLast ? unlessNull('i', stream.streamId) : stream.streamId.c_str();
  record.trackLabels = isLast ? unlessNull('l', stream.trackLabels) : stream.trackLabels.c_str();
  record.channelCount = stream.numbers.channelCount;
  record.formatKey1 = stream.numbers.formatKey1;
  record.formatKey2 = stream.numbers.formatKey2;
  record.formatKey3 = stream.numbers.formatKey3;
  record.isPairCoded = stream.numbers.isPairCoded;
  record.isPairShared = stream.numbers.isPairShared;
  return record;
}

void OddRequest::addStreams() {
  const std::vector<StreamText>& streams = input_.call.streams;
  const bool isStride = stride_ >= sizeof(KestrelStream) && stride_ % alignof(KestrelStream) == 0;
  hasBadSize_ = hasBadSize_ || !isStride;
  const std::size_t distance = isStride ? stride_ : sizeof(KestrelStream);
  streams_.assign(wordsFor(distance * streams.size()), ~std::uint64_t{0});
  auto* where = reinterpret_cast<std::byte*>(streams_.data());
  for (std::size_t i = 0; i < streams.size(); ++i, where += distance) {
    const KestrelStream record = recordOf(streams[i], i + 1 == streams.size());
    hasBadSize_ = hasBadSize_ || record.structSize < sizeof record || record.structSize > stride_;
    noteText(record.streamId, static_cast<std::int32_t>(i));
    noteText(record.trackLabels, static_cast<std::int32_t>(i));
    std::memcpy(where, &record, sizeof record);
  }
}

}  // namespace kestrel::fuzz
