// The audio streams of a file in one neutral form. Each interface fills it from its own records.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory_resource>
#include <span>
#include <vector>

#include "analyser/surround_labels.h"
#include "api/audio_stream_info.h"

namespace kestrel {

/// The three properties that neighbouring tracks of one service must share.
using FormatKeys = std::array<std::int32_t, 3>;

/// The place of a stream's labels in FileStreams::labels.
struct LabelRange {
  std::size_t begin = 0;
  std::int32_t count = 0;  // not more than an index in a group can reach
};

struct FileStream {
  std::int64_t trackNumber = 0;        // leading number of the stream's id
  std::int32_t index = 0;              // among the streams of the call
  std::int32_t channelCount = 0;       // 0 or less: no tracks
  std::int32_t sourceGroup = 0;        // the stream's own group
  std::int32_t group = 0;              // the same, or the one that its tracks joined
  std::int32_t firstIndexInGroup = 0;  // of its first track; the others follow, wrapping
  FormatKeys formatKeys{};
  LabelRange labels;
  std::uint8_t isPairCoded = 0;
  bool sharesPair = false;  // if pair-coded: shares one pair with all such streams
};

struct FileStreams {
  explicit FileStreams(std::pmr::memory_resource* memory) : list(memory), labels(memory) {
    labels.reserve(16);  // as many as most files have
  }

  /// Appends a stream with these labels, narrow or wide; the caller fills the rest. Raises
  /// std::bad_alloc.
  template <class Text>
  FileStream& add(Text labelText) {
    FileStream& stream = list.emplace_back();
    stream.index = static_cast<std::int32_t>(list.size() - 1);
    stream.labels.begin = labels.size();
    appendLabels(labelText, labels);
    constexpr std::size_t kMost = std::numeric_limits<std::int32_t>::max();
    stream.labels.count =
        static_cast<std::int32_t>(std::min(labels.size() - stream.labels.begin, kMost));
    return stream;
  }

  std::pmr::vector<FileStream> list;
  SurroundLabels labels;  // of all streams; empty unless they are asked for
};

/// The streams of the C++ interface. Raises std::bad_alloc.
FileStreams readStreams(std::span<const AudioStreamInfo> streams, bool withLabels,
                        std::pmr::memory_resource* memory);

/// The file's track total: the channels of ordinary streams, and two for each pair of pair-coded
/// ones. The sum wraps in 32 bits.
std::uint32_t countFileTracks(std::span<const FileStream> streams) noexcept;

/// The records of the C++ interface as a host passes them; NULL or a count below 1 means none.
inline std::span<const AudioStreamInfo> streamSpan(const AudioStreamInfo* streams,
                                                   std::int32_t count) {
  if (streams == nullptr || count < 1) return {};
  return {streams, static_cast<std::size_t>(count)};
}

inline FormatKeys formatKeysOf(const AudioStreamInfo& stream) {
  return {stream.formatKey1, stream.formatKey2, stream.formatKey3};
}

}  // namespace kestrel
