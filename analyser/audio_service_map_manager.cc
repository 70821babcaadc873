// Construction of the analyser and the decision whether the expected services line up.
#include "analyser/audio_service_map_manager.h"

#include "analyser/layout_description.h"

namespace kestrel {

AudioServiceMapManager::AudioServiceMapManager(std::string_view layoutDescription,
                                               std::wstring_view surroundChannelOrder,
                                               bool allowTwoTrackStreams, StreamList streams,
                                               bool reportAll, bool surroundCheck)
    : fileTrackCount_(countFileTracks(streams)),
      allowTwoTrackStreams_(allowTwoTrackStreams),
      surroundCheck_(surroundCheck),
      fileTracks_(streams) {
  serviceList_ = findServiceList(layoutDescription, fileTrackCount_);
  if (serviceList_.empty()) return;
  readExpectedServices(serviceList_, reportAll, expectedServices_);
  for (ExpectedService& service : expectedServices_.records())
    if (service.streamType == k51Mix) service.label = surroundChannelOrder;
}

AudioServiceMapManager::~AudioServiceMapManager() = default;

std::int32_t AudioServiceMapManager::detectServices() {
  if (streams().empty() || expectedServices().empty()) return 0;
  fileTracks_.expand();
  misalignment_ = findMisalignment(expectedServices(), fileTracks_);
  return misalignment_ ? 0 : 1;
}

}  // namespace kestrel
