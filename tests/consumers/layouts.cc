#include <kestrel/service_map.h>

#include <iostream>
#include <vector>

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
  std::cout << (carried != 0 ? "carried" : "not carried") << '\n';
  for (const kestrel::ServiceMapResult& service : services) {
    std::cout << service.trackCount << " tracks from " << service.slots[0].trackNumber << '\n';
  }
}
