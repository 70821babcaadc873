// The exported entry point of the analyser.
#include <cstdint>
#include <vector>

#include "analyser/audio_service_map_manager.h"
#include "analyser/call_memory.h"
#include "api/service_map.h"
#include "catalogue/host_text.h"

namespace kestrel {

std::int32_t getServiceMap(const char* layoutDescription, const wchar_t* surroundChannelOrder,
                           std::int32_t /*allowTwoTrackStreams*/, const AudioStreamInfo* streams,
                           std::int32_t streamCount, std::vector<ServiceMapResult>* results,
                           std::uint8_t reportAll, std::uint8_t surroundCheck) {
  if (results == nullptr) return 0;
  CallMemory memory;
  AudioServiceMapManager manager(
      viewOf(layoutDescription),
      readStreams(streamSpan(streams, streamCount), surroundCheck != 0, memory.resource()),
      reportAll != 0);
  const Outcome outcome = manager.detectServices();
  if (outcome == Outcome::kUntouched) return 0;
  const bool filled = outcome == Outcome::kFilled;
  // This also releases the storage of the host's vector.
  *results =
      filled ? manager.buildResults(viewOf(surroundChannelOrder)) : std::vector<ServiceMapResult>();
  return filled ? 1 : 0;
}

}  // namespace kestrel
