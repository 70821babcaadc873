#include "tests/interface/first_calls.h"

#include <cstdint>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "api/catalogue.h"
#include "api/kestrel.h"
#include "api/service_map.h"
#include "tests/c_api/c_request.h"

namespace kestrel::test {
namespace {

bool raises(const LoadedLibrary& library) {
  try {
    library.find<decltype(getTracksCount)>("getTracksCount")(7);
  } catch (const std::out_of_range& error) {
    return std::string_view(error.what()) == "invalid map<K, T> key";
  }
  return false;
}

bool findsServices(const LoadedLibrary& library) {
  AudioStreamInfo stream;
  stream.streamId = L"1";
  stream.trackLabels = L"C L R LFE Ls Rs";
  stream.channelCount = 6;
  std::vector<ServiceMapResult> results;
  const std::int32_t carried = library.find<decltype(getServiceMap)>("getServiceMap")(
      "T6=5.1 Mix", L"L R C LFE Ls Rs", 0, &stream, 1, &results, 0, 1);
  return carried == 1 && results.size() == 1 && results[0].label == stream.trackLabels;
}

// The unknown row is an error that is raised and caught inside the library.
bool answersInC(const LoadedLibrary& library) {
  std::int32_t tracks = -1;
  const auto rowTracks = library.find<decltype(kestrelRowTracks)>("kestrelRowTracks");
  return rowTracks(7, &tracks) == KESTREL_UNKNOWN_ID && rowTracks(6, &tracks) == KESTREL_OK &&
         tracks == 16;
}

bool analysesInC(const LoadedLibrary& library) {
  const std::vector<KestrelStream> streams = {stream("1", 8)};
  const KestrelRequest asked = request("T8=Stereo,Other", streams);  // unknown, and left over
  KestrelAnalysis* analysis = nullptr;
  std::int32_t findings = 0;
  library.find<decltype(kestrelAnalyse)>("kestrelAnalyse")(&asked, &analysis, nullptr, nullptr);
  library.find<decltype(kestrelFindingCount)>("kestrelFindingCount")(analysis, &findings);
  library.find<decltype(kestrelFreeAnalysis)>("kestrelFreeAnalysis")(analysis);
  return findings == 2;
}

}  // namespace

std::string wrongCalls(const LoadedLibrary& library) {
  std::string names;
  if (!raises(library)) names += "getTracksCount ";
  if (!findsServices(library)) names += "getServiceMap ";
  if (!answersInC(library)) names += "kestrelRowTracks ";
  if (!analysesInC(library)) names += "kestrelAnalyse ";
  return names;
}

}  // namespace kestrel::test
