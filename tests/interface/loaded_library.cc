// The two platforms side by side: each has its loader, its list of what is loaded, and its account
// of memory.
#include "tests/interface/loaded_library.h"

#if defined(_WIN32)
#include <windows.h>
// After windows.h, whose types it needs.
#include <psapi.h>
#else
#include <dlfcn.h>
#include <malloc.h>
#include <unistd.h>

#include <fstream>
#include <string>
#endif

namespace kestrel::test {

#if defined(_WIN32)

LoadedLibrary::LoadedLibrary() : handle_(LoadLibraryA(KESTREL_LIBRARY_PATH)) {}

void LoadedLibrary::unload() { FreeLibrary(static_cast<HMODULE>(handle_)); }

LoadedLibrary::Address LoadedLibrary::address(const char* name) const {
  return std::bit_cast<Address>(GetProcAddress(static_cast<HMODULE>(handle_), name));
}

bool isLoaded() { return GetModuleHandleA("libkestrel-dll64.dll") != nullptr; }

bool isMapped() { return isLoaded(); }

Memory memoryInUse() {
  PROCESS_MEMORY_COUNTERS counters{};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
  return {.heap = 0, .pages = static_cast<std::int64_t>(counters.PagefileUsage)};
}

#else

LoadedLibrary::LoadedLibrary() : handle_(dlopen(KESTREL_LIBRARY_PATH, RTLD_NOW | RTLD_LOCAL)) {}

void LoadedLibrary::unload() { dlclose(handle_); }

LoadedLibrary::Address LoadedLibrary::address(const char* name) const {
  return std::bit_cast<Address>(dlsym(handle_, name));
}

bool isLoaded() {
  void* const handle = dlopen(KESTREL_LIBRARY_PATH, RTLD_NOW | RTLD_NOLOAD);
  if (handle != nullptr) dlclose(handle);
  return handle != nullptr;
}

bool isMapped() {
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);)
    if (line.find("libkestrel-dll64") != std::string::npos) return true;
  return false;
}

Memory memoryInUse() {
  const struct mallinfo2 heap = mallinfo2();
  std::int64_t size = 0, resident = 0, shared = 0;
  std::ifstream("/proc/self/statm") >> size >> resident >> shared;
  return {.heap = static_cast<std::int64_t>(heap.uordblks + heap.hblkhd),
          .pages = (resident - shared) * sysconf(_SC_PAGESIZE)};
}

#endif

}  // namespace kestrel::test
