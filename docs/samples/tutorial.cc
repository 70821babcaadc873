// Asks whether a file of eight tracks carries a 5.1 mix and a stereo pair, through the records.
#include <cstdio>
#include <vector>

#include "api/service_map.h"

int main() {
  std::vector<kestrel::AudioStreamInfo> streams(2);
  streams[0].streamId = L"1";
  streams[0].trackLabels = L"L R C LFE Ls Rs";
  streams[0].channelCount = 6;
  streams[1].streamId = L"2";
  streams[1].channelCount = 2;

  std::vector<kestrel::ServiceMapResult> services;
  const auto carried = kestrel::getServiceMap("T8=5.1 Mix,Stereo", L"L R C LFE Ls Rs", 0,
                                              streams.data(), 2, &services, 0, 1);
  std::printf("carried: %d\n", static_cast<int>(carried));
  for (const kestrel::ServiceMapResult& service : services) {
    std::printf("%d tracks:", static_cast<int>(service.trackCount));
    for (const kestrel::TrackSlot& slot : service.slots) {
      if (slot.trackNumber < 0) break;
      std::printf(" stream %lld track %d,", static_cast<long long>(slot.trackNumber),
                  static_cast<int>(slot.indexInGroup));
    }
    std::printf(" labels \"%ls\"\n", service.label.c_str());
  }
}
