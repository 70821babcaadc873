// The library leaves the process when it is closed, also after calls that raised and that
// allocated.
#include <gtest/gtest.h>

#include <bit>
#include <stdexcept>
#include <vector>

#include "api/catalogue.h"
#include "api/service_map.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace kestrel {
namespace {

#if defined(_WIN32)
using Handle = HMODULE;
Handle load() { return LoadLibraryA(KESTREL_LIBRARY_PATH); }
void unload(Handle handle) { FreeLibrary(handle); }
bool isLoaded() { return GetModuleHandleA("libkestrel-dll64.dll") != nullptr; }
auto find(Handle handle, const char* name) { return GetProcAddress(handle, name); }
#else
using Handle = void*;
Handle load() { return dlopen(KESTREL_LIBRARY_PATH, RTLD_NOW | RTLD_LOCAL); }
void unload(Handle handle) { dlclose(handle); }
bool isLoaded() {
  void* const handle = dlopen(KESTREL_LIBRARY_PATH, RTLD_NOW | RTLD_NOLOAD);
  if (handle != nullptr) dlclose(handle);
  return handle != nullptr;
}
auto find(Handle handle, const char* name) { return dlsym(handle, name); }
#endif

TEST(Unloading, TheLibraryLeavesTheProcess) {
  for (int round = 0; round < 50; ++round) {
    ASSERT_FALSE(isLoaded()) << "round " << round;
    const Handle handle = load();
    ASSERT_NE(handle, nullptr);
    EXPECT_TRUE(isLoaded());
    const auto serviceMap = std::bit_cast<decltype(&getServiceMap)>(find(handle, "getServiceMap"));
    const auto tracksCount =
        std::bit_cast<decltype(&getTracksCount)>(find(handle, "getTracksCount"));
    EXPECT_THROW(tracksCount(7), std::out_of_range);
    AudioStreamInfo stream;
    stream.streamId = L"1";
    stream.channelCount = 6;
    std::vector<ServiceMapResult> results;
    EXPECT_EQ(serviceMap("T6=5.1 Mix", L"L R C LFE Ls Rs", 0, &stream, 1, &results, 0, 0), 1);
    unload(handle);
    EXPECT_EQ(results.at(0).label, L"L R C LFE Ls Rs") << "results outlive the library";
  }
  EXPECT_FALSE(isLoaded());
}

}  // namespace
}  // namespace kestrel
