// The library that ships, loaded and unloaded as a host with plug-ins would, and what the process
// then holds.
#pragma once

#include <bit>
#include <cstdint>

namespace kestrel::test {

/// Loads the library when it is made, and gives it back by unload().
class LoadedLibrary {
 public:
  LoadedLibrary();
  void unload();

  /// An exported function; nullptr when loading failed or the library lacks it.
  template <class Function>
  Function* find(const char* name) const {
    return std::bit_cast<Function*>(address(name));
  }

 private:
  using Address = void (*)();
  Address address(const char* name) const;

  void* handle_;
};

/// Whether the process still knows the library.
bool isLoaded();

/// Whether a part of the library's file is still mapped into the process. Slow; where the platform
/// does not tell, the same as isLoaded().
bool isMapped();

/// What the process holds at present, in bytes.
struct Memory {
  std::int64_t heap;   ///< blocks that were allocated and not freed; 0 where that is not told
  std::int64_t pages;  ///< pages that are no one else's
};

Memory memoryInUse();

}  // namespace kestrel::test
