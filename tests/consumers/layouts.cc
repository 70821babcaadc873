// Prints which layout a code stands for, and whether a file of two streams carries its services.
#include <kestrel/catalogue.h>
#include <kestrel/layout_code.h>
#include <kestrel/service_map.h>

#include <iostream>
#include <string>
#include <vector>

namespace {

std::string nameOf(kestrel::ServiceMapItem item) {
  std::string name(static_cast<std::size_t>(kestrel::getServiceMapItemNameLength(item)), '\0');
  kestrel::getServiceMapItemName(item, name.data());
  return name.c_str();
}

std::vector<kestrel::AudioStreamInfo> surroundAndStereo() {
  std::vector<kestrel::AudioStreamInfo> streams(2);
  streams[0].streamId = L"1";
  streams[0].channelCount = 6;
  streams[1].streamId = L"2";
  streams[1].channelCount = 2;
  return streams;
}

}  // namespace

int main() {
  std::cout << "8b is " << nameOf(kestrel::GetServiceMapItemByAS11R123("8b")) << '\n';
  const auto streams = surroundAndStereo();
  std::vector<kestrel::ServiceMapResult> services;
  const auto carried = kestrel::getServiceMap("T8=5.1 Mix,Stereo", L"L R C LFE Ls Rs", 0,
                                              streams.data(), 2, &services, 0, 1);
  std::cout << "carried: " << carried << '\n';
  for (const auto& service : services) {
    std::cout << service.trackCount << " tracks from " << service.slots[0].trackNumber << '\n';
  }
}
