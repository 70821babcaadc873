// The library's analysis of a file's streams, through its plain C interface, which also says why.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "api/audio_stream_info.h"
#include "api/kestrel.h"

namespace kestrel::host {

/// The streams of one file in the form of the plain C interface, made once for many analyses.
class LibraryStreams {
 public:
  explicit LibraryStreams(const std::vector<AudioStreamInfo>& streams);
  LibraryStreams(const LibraryStreams&) = delete;
  LibraryStreams& operator=(const LibraryStreams&) = delete;

  const std::vector<KestrelStream>& records() const { return records_; }

 private:
  std::vector<std::string> texts_;  // that the records point to
  std::vector<KestrelStream> records_;
};

/// How the streams are looked at, apart from what is expected.
struct LabelOptions {
  std::string surroundChannelOrder;
  bool checkLabels = true;
};

class LibraryAnalysis {
 public:
  /// @param description  the layout description, in UTF-8, as is the order
  /// Services after "-" are always reported; the description tells them apart.
  LibraryAnalysis(const LibraryStreams& streams, const std::string& description,
                  const LabelOptions& options);

  bool isCarried() const { return outcome_ == KESTREL_FILLED; }
  std::int32_t outcome() const { return outcome_; }
  std::int32_t trackTotal() const { return static_cast<std::int32_t>(trackTotal_); }

  std::vector<KestrelService> services() const;
  std::vector<KestrelFinding> findings() const;
  std::string findingText(std::size_t index) const;
  std::vector<std::int32_t> describedTotals() const;

 private:
  struct Free {
    void operator()(KestrelAnalysis* analysis) const { kestrelFreeAnalysis(analysis); }
  };

  std::unique_ptr<KestrelAnalysis, Free> analysis_;
  std::int32_t outcome_ = KESTREL_UNTOUCHED;
  std::uint32_t trackTotal_ = 0;
};

}  // namespace kestrel::host
