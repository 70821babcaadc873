// The C++ headers are for hosts that use the C++ standard library that Kestrel was built with: the
// records contain wide strings, the library fills a vector of the host, and exceptions pass from
// the library to the host. The checks here turn a mismatch that is visible at compile time into an
// error. All other hosts use the plain C interface, kestrel.h.
#pragma once

#include <string>
#include <vector>

#include "kestrel_version.h"

// Strings and vectors of two standard libraries may have equal sizes but different members.
#if (defined(KESTREL_STANDARD_LIBRARY_LIBSTDCXX) && !defined(__GLIBCXX__)) || \
    (defined(KESTREL_STANDARD_LIBRARY_MSVC) && !defined(_MSVC_STL_VERSION))
#error "kestrel: the library was built with another C++ standard library; include kestrel.h instead"
#endif

static_assert(sizeof(void*) == 8, "kestrel: 64-bit platforms only");
static_assert(
    sizeof(std::wstring) == 32 && sizeof(std::vector<int>) == 24,
    "kestrel: the library cannot share strings and vectors with a host that is built with "
    "-D_GLIBCXX_DEBUG, with -D_GLIBCXX_USE_CXX11_ABI=0 or with the debug run-time library "
    "of MSVC; build without it, or include kestrel.h instead");
