// The exported entry point of the analyser.
#include <cstdint>
#include <utility>
#include <vector>

#include "analyser/audio_service_map_manager.h"
#include "api/service_map.h"
#include "catalogue/host_text.h"

namespace kestrel {

std::int32_t getServiceMap(const char* layoutDescription, const wchar_t* surroundChannelOrder,
                           std::int32_t allowTwoTrackStreams, const AudioStreamInfo* streams,
                           std::int32_t streamCount, std::vector<ServiceMapResult>* results,
                           std::uint8_t reportAll, std::uint8_t surroundCheck) {
  if (results == nullptr) return 0;
  AudioServiceMapManager manager(viewOf(layoutDescription), viewOf(surroundChannelOrder),
                                 (allowTwoTrackStreams & 0xFF) != 0, streams, streamCount,
                                 reportAll != 0, surroundCheck != 0);
  if (manager.detectServices() == 0) return 0;
  std::vector<ServiceMapResult> found;
  std::int32_t status = 0;  // no failure
  manager.buildResults(found, status);
  *results = std::move(found);  // releases what the host's vector held
  return status == NO_SERVICE_MAP_ITEM ? 0 : 1;
}

}  // namespace kestrel
