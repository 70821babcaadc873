// What loading the library, a first call and unloading it cost beside an ordinary empty library of
// C++ with the same dependences: in this process, which has the C++ run-time already, and in a
// fresh process of a host in C, which gets it with the library. Both libraries take turns, and the
// ratios are those of the medians.
#include <dlfcn.h>
#include <stdio.h>  // popen

#include <algorithm>
#include <bit>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "api/service_map.h"

namespace kestrel::bench {
namespace {

using Microseconds = double;

void callNothing(void* library) {
  if (std::bit_cast<int (*)()>(dlsym(library, "answer"))() != 1) throw std::runtime_error("empty");
}

void callServiceMap(void* library) {
  AudioStreamInfo stream;
  stream.streamId = L"1";
  stream.channelCount = 2;
  std::vector<ServiceMapResult> results;
  const auto function = std::bit_cast<decltype(&getServiceMap)>(dlsym(library, "getServiceMap"));
  if (function("T2=Stereo", L"", 0, &stream, 1, &results, 0, 0) != 1)
    throw std::runtime_error("getServiceMap");
}

Microseconds loadHere(const char* path, void (*firstCall)(void*)) {
  const auto start = std::chrono::steady_clock::now();
  void* const library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) throw std::runtime_error(path);
  firstCall(library);
  dlclose(library);
  const auto end = std::chrono::steady_clock::now();
  return std::chrono::duration<Microseconds, std::micro>(end - start).count();
}

Microseconds loadInFreshProcess(const std::string& path, const char* function) {
  const std::string command = KESTREL_LOAD_ONCE " '" + path + "' " + function;
  const std::unique_ptr<FILE, int (*)(FILE*)> output(popen(command.c_str(), "r"), pclose);
  long long nanoseconds = 0;
  if (output == nullptr || fscanf(output.get(), "%lld", &nanoseconds) != 1)
    throw std::runtime_error(command);
  return static_cast<Microseconds>(nanoseconds) / 1000;
}

Microseconds median(std::vector<Microseconds>& times) {
  const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
  std::nth_element(times.begin(), middle, times.end());
  return *middle;
}

template <class Library, class Empty>
void compare(const char* where, int rounds, const Library& library, const Empty& empty) {
  std::vector<Microseconds> libraryTimes, emptyTimes;
  for (int i = 0; i < rounds; ++i) {
    emptyTimes.push_back(empty());
    libraryTimes.push_back(library());
  }
  const Microseconds ours = median(libraryTimes), floor = median(emptyTimes);
  printf("%-34s %9.1f us %9.1f us   %5.2f\n", where, ours, floor, ours / floor);
}

void run() {
  constexpr char kLibrary[] = KESTREL_LIBRARY_PATH, kEmpty[] = KESTREL_EMPTY_LIBRARY_PATH;
  printf("%-34s %12s %12s   %5s\n", "load, first call, unload", "Kestrel", "empty", "ratio");
  compare(
      "getServiceMap, C++ host", 3000, [=] { return loadHere(kLibrary, callServiceMap); },
      [=] { return loadHere(kEmpty, callNothing); });
  compare(
      "kestrelAbiVersion, fresh C host", 300,
      [=] { return loadInFreshProcess(kLibrary, "kestrelAbiVersion"); },
      [=] { return loadInFreshProcess(kEmpty, "answer"); });
}

}  // namespace
}  // namespace kestrel::bench

int main() {
  kestrel::bench::run();
  return 0;
}
