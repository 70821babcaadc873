// The streams of a call, as the host passes them by either interface. The records of both have the
// same numbers under the same names; what differs is the width of their texts, which only the
// functions here know.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

#include "api/audio_stream_info.h"
#include "api/kestrel.h"

namespace kestrel {

/// The id of a stream up to its first NUL.
inline const wchar_t* idOf(const AudioStreamInfo& stream) { return stream.streamId.c_str(); }
inline const char* idOf(const KestrelStream& stream) { return stream.streamId; }

inline bool hasHyphen(const AudioStreamInfo& stream) {
  return std::ranges::any_of(stream.streamId, [](wchar_t c) { return c == L'-'; });
}
inline bool hasHyphen(const KestrelStream& stream) {
  for (const char* c = stream.streamId; *c != '\0'; ++c)
    if (*c == '-') return true;
  return false;
}

inline std::wstring_view labelsOf(const AudioStreamInfo& stream) { return stream.trackLabels; }
inline std::string_view labelsOf(const KestrelStream& stream) { return stream.trackLabels; }

/// A text of labels in either width.
using LabelText = std::variant<std::wstring_view, std::string_view>;

/// Streams of the plain C interface: records that may be larger than those known here.
class PlainCStreams {
 public:
  PlainCStreams(const KestrelStream* first, std::uint32_t stride, std::size_t count)
      : first_(first), stride_(stride), count_(count) {}

  const KestrelStream* data() const { return first_; }
  std::uint32_t stride() const { return stride_; }
  std::size_t size() const { return count_; }
  const KestrelStream& operator[](std::size_t i) const {
    return *reinterpret_cast<const KestrelStream*>(reinterpret_cast<const std::byte*>(first_) +
                                                   i * stride_);
  }

 private:
  const KestrelStream* first_;
  std::uint32_t stride_;
  std::size_t count_;
};

/// A view of the streams; they and their texts are not copied. It fits into two registers, so that
/// it is handed on without a detour through memory.
class StreamList {
 public:
  template <class List>
  requires std::is_convertible_v<const List&, std::span<const AudioStreamInfo>> StreamList(
      const List& streams)
      : StreamList(std::span<const AudioStreamInfo>(streams)) {}
  StreamList(std::span<const AudioStreamInfo> streams)
      : first_(streams.data()), count_(static_cast<std::uint32_t>(streams.size())) {}
  StreamList(const PlainCStreams& streams)
      : first_(streams.data()),
        count_(static_cast<std::uint32_t>(streams.size())),
        plainCStride_(streams.stride()) {}

  bool empty() const { return count_ == 0; }
  std::size_t size() const { return count_; }

  /// Calls `visitor` with the records as the host passed them.
  template <class Visitor>
  decltype(auto) visit(const Visitor& visitor) const {
    if (plainCStride_ == 0)
      return visitor(std::span(static_cast<const AudioStreamInfo*>(first_), count_));
    return visitor(PlainCStreams(static_cast<const KestrelStream*>(first_), plainCStride_, count_));
  }

  LabelText labels(std::size_t i) const {
    return visit([=](const auto& streams) { return LabelText(labelsOf(streams[i])); });
  }

 private:
  const void* first_;
  std::uint32_t count_;             // both interfaces count in 31 bits
  std::uint32_t plainCStride_ = 0;  // 0: records of the C++ interface
};
static_assert(sizeof(StreamList) == 16);

/// The streams of the C++ interface: NULL, and a count below 1, are no streams.
inline std::span<const AudioStreamInfo> streamSpan(const AudioStreamInfo* streams,
                                                   std::int32_t count) {
  if (streams == nullptr || count < 1) return {};
  return {streams, static_cast<std::size_t>(count)};
}

}  // namespace kestrel
