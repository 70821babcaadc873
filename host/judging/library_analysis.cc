#include "host/judging/library_analysis.h"

#include <stdexcept>

#include "host/basics/utf8.h"

namespace kestrel::host {
namespace {

// The texts of a file are UTF-8 and its counts are small, so a failure is one of this program.
void require(KestrelStatus status) {
  if (status != KESTREL_OK) {
    throw std::runtime_error(std::string("the library's answer: ") + kestrelStatusText(status));
  }
}

}  // namespace

LibraryStreams::LibraryStreams(const std::vector<AudioStreamInfo>& streams) {
  texts_.reserve(2 * streams.size());  // the records point into it
  for (const AudioStreamInfo& stream : streams) {
    KestrelStream record{};
    record.structSize = sizeof record;
    record.group = stream.group;
    record.streamId = texts_.emplace_back(utf8FromWide(stream.streamId)).c_str();
    record.trackLabels = texts_.emplace_back(utf8FromWide(stream.trackLabels)).c_str();
    record.channelCount = stream.channelCount;
    record.formatKey1 = stream.formatKey1;
    record.formatKey2 = stream.formatKey2;
    record.formatKey3 = stream.formatKey3;
    record.isPairCoded = stream.isPairCoded;
    record.isPairShared = stream.isPairShared;
    records_.push_back(record);
  }
}

LibraryAnalysis::LibraryAnalysis(const LibraryStreams& streams, const std::string& description,
                                 const LabelOptions& options) {
  KestrelRequest request{};
  request.structSize = sizeof request;
  request.streamCount = static_cast<std::int32_t>(streams.records().size());
  request.layoutDescription = description.c_str();
  request.surroundChannelOrder = options.surroundChannelOrder.c_str();
  request.streams = streams.records().data();
  request.streamStride = sizeof(KestrelStream);
  request.reportAll = 1;
  request.surroundCheck = options.checkLabels ? 1 : 0;
  KestrelAnalysis* analysis = nullptr;
  require(kestrelAnalyse(&request, &analysis, nullptr, nullptr));
  analysis_.reset(analysis);
  require(kestrelOutcome(analysis, &outcome_, &trackTotal_));
}

std::vector<KestrelService> LibraryAnalysis::services() const {
  std::int32_t count = 0;
  require(kestrelServiceCount(analysis_.get(), &count));
  std::vector<KestrelService> services(static_cast<std::size_t>(count));
  for (std::int32_t index = 0; index < count; ++index) {
    KestrelService& service = services[static_cast<std::size_t>(index)];
    service.structSize = sizeof service;
    require(kestrelGetService(analysis_.get(), index, &service));
  }
  return services;
}

std::vector<KestrelFinding> LibraryAnalysis::findings() const {
  std::int32_t count = 0;
  require(kestrelFindingCount(analysis_.get(), &count));
  std::vector<KestrelFinding> findings(static_cast<std::size_t>(count));
  for (std::int32_t index = 0; index < count; ++index) {
    KestrelFinding& finding = findings[static_cast<std::size_t>(index)];
    finding.structSize = sizeof finding;
    require(kestrelGetFinding(analysis_.get(), index, &finding));
  }
  return findings;
}

std::string LibraryAnalysis::findingText(std::size_t index) const {
  const auto number = static_cast<std::int32_t>(index);
  std::size_t needed = 0;
  kestrelFindingText(analysis_.get(), number, nullptr, 0, &needed);
  std::string text(needed, '\0');
  require(kestrelFindingText(analysis_.get(), number, text.data(), text.size(), &needed));
  text.pop_back();  // the NUL
  return text;
}

std::vector<std::int32_t> LibraryAnalysis::describedTotals() const {
  std::size_t needed = 0;
  kestrelDescribedTotals(analysis_.get(), nullptr, 0, &needed);
  std::vector<std::int32_t> totals(needed);
  if (needed > 0) {
    require(kestrelDescribedTotals(analysis_.get(), totals.data(), totals.size(), &needed));
  }
  return totals;
}

}  // namespace kestrel::host
