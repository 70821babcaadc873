// Construction of the analyser and the decision whether the expected services line up.
#include "analyser/audio_service_map_manager.h"

#include <cstddef>

#include "analyser/layout_description.h"

namespace kestrel {

namespace {

std::span<const AudioStreamInfo> streamSpan(const AudioStreamInfo* streams, std::int32_t count) {
  if (streams == nullptr || count < 1) return {};
  return {streams, static_cast<std::size_t>(count)};
}

}  // namespace

AudioServiceMapManager::AudioServiceMapManager(std::string_view layoutDescription,
                                               std::wstring_view surroundChannelOrder,
                                               bool allowTwoTrackStreams,
                                               const AudioStreamInfo* streams,
                                               std::int32_t streamCount, bool reportAll,
                                               bool surroundCheck)
    : streams_(streamSpan(streams, streamCount)),
      fileTrackCount_(countFileTracks(streams_)),
      allowTwoTrackStreams_(allowTwoTrackStreams),
      surroundCheck_(surroundCheck),
      fileTracks_(streams_) {
  const auto entry = findEntry(layoutDescription, fileTrackCount_);
  if (!entry) return;
  serviceList_ = entry->serviceList;
  readExpectedServices(serviceList_, reportAll, expectedServices_);
  for (ExpectedService& service : expectedServices_.records())
    if (service.streamType == k51Mix) service.label = surroundChannelOrder;
}

AudioServiceMapManager::~AudioServiceMapManager() = default;

std::int32_t AudioServiceMapManager::detectServices() {
  if (streams_.empty() || expectedServices().empty()) return 0;
  fileTracks_.expand();
  misalignment_ = findMisalignment(expectedServices(), fileTracks_);
  return misalignment_ ? 0 : 1;
}

}  // namespace kestrel
