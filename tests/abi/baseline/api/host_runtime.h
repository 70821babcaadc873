// The records of this interface hold wide strings of the host's standard library in place, and a
// vector of the host is filled by the library. Both sides must therefore be built against one
// standard library. The checks here turn a mismatch that can be seen at compile time into an error.
#pragma once

#include <string>

static_assert(sizeof(void*) == 8, "kestrel: 64-bit platforms only");
static_assert(sizeof(std::wstring) == 32,
              "kestrel: this standard library's wide string does not take 32 bytes, so the records "
              "AudioStreamInfo and ServiceMapResult cannot have their fixed layout. Build with "
              "libstdc++, or with the release (not debug) run-time library of MSVC.");
