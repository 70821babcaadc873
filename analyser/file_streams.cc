#include "analyser/file_streams.h"

#include <optional>
#include <string>

#include "analyser/leading_number.h"

namespace kestrel {

FileStreams readStreams(std::span<const AudioStreamInfo> streams, bool withLabels,
                        std::pmr::memory_resource* memory) {
  FileStreams read(memory);
  read.list.reserve(streams.size());
  for (const AudioStreamInfo& info : streams) {
    const std::wstring_view labels = info.trackLabels;
    FileStream& stream = read.add(withLabels ? labels : std::wstring_view());
    stream.trackNumber = leadingNumber(info.streamId);
    stream.channelCount = info.channelCount;
    stream.sourceGroup = stream.group = info.group;
    stream.formatKeys = formatKeysOf(info);
    stream.isPairCoded = info.isPairCoded;
    stream.sharesPair = info.isPairShared != 0 && info.streamId.find(L'-') == std::wstring::npos;
  }
  return read;
}

// A pair-coded stream is not counted if it has the number of the previous pair-coded stream or
// shares a pair that is already counted.
std::uint32_t countFileTracks(std::span<const FileStream> streams) noexcept {
  std::uint32_t sum = 0;
  std::optional<std::int32_t> lastPair;
  bool sharedPairCounted = false;
  for (const FileStream& stream : streams) {
    if (stream.isPairCoded == 0) {
      sum += static_cast<std::uint32_t>(stream.channelCount);
      continue;
    }
    const auto number = static_cast<std::int32_t>(stream.trackNumber);
    const bool counted = stream.sharesPair ? sharedPairCounted : number == lastPair;
    if (!counted) sum += 2;
    if (stream.sharesPair) sharedPairCounted = true;
    lastPair = number;
  }
  return sum;
}

}  // namespace kestrel
