// Asks the library whether a file's streams carry the services of a layout description.
#pragma once

#include <string>
#include <vector>

#include "api/audio_stream_info.h"
#include "api/service_map_result.h"

namespace kestrel::host {

struct ServiceRequest {
  std::string layoutDescription;
  std::wstring surroundChannelOrder;
  bool checkLabels = true;
  bool reportAll = false;
};

enum class Conformance {
  kConforms,
  kOtherServices,   ///< the expected services cannot be laid over the tracks
  kUnequalFormats,  ///< they can, but neighbouring tracks of one service differ in format
};

struct ServiceCheck {
  Conformance conformance;
  std::vector<ServiceMapResult> services;  ///< empty unless the file conforms
};

ServiceCheck checkServices(const std::vector<AudioStreamInfo>& streams,
                           const ServiceRequest& request);

/// "Stereo", "5.1 Mix", ...; the library's record tells a service by its size and coding only.
const char* serviceName(const ServiceMapResult& service);

}  // namespace kestrel::host
