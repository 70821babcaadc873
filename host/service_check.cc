#include "host/service_check.h"

#include "api/service_map.h"

namespace kestrel::host {
namespace {

// The library leaves the vector alone when detection fails and empties it when formats differ, so
// one record put in beforehand tells the two apart.
Conformance failureOf(const std::vector<ServiceMapResult>& results) {
  return results.empty() ? Conformance::kUnequalFormats : Conformance::kOtherServices;
}

}  // namespace

ServiceCheck checkServices(const std::vector<AudioStreamInfo>& streams,
                           const ServiceRequest& request) {
  std::vector<ServiceMapResult> results(1);
  const std::int32_t conforms =
      getServiceMap(request.layoutDescription.c_str(), request.surroundChannelOrder.c_str(), 0,
                    streams.data(), static_cast<std::int32_t>(streams.size()), &results,
                    request.reportAll ? 1 : 0, request.checkLabels ? 1 : 0);
  if (conforms == 0) {
    return {failureOf(results), {}};
  }
  return {Conformance::kConforms, std::move(results)};
}

const char* serviceName(const ServiceMapResult& service) {
  if (service.isEmca != 0) {
    return "EMCA";
  }
  switch (service.trackCount) {
    case 1:
      return "Mono";
    case 2:
      return "Stereo";
    case 6:
      return "5.1 Mix";
    case 8:
      return "7.1 Mix";
    default:
      return "unknown";
  }
}

}  // namespace kestrel::host
