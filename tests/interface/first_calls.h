// Calls that a host makes of a library that it has just loaded; between them they allocate, raise,
// and go through both interfaces.
#pragma once

#include <string>

#include "tests/interface/loaded_library.h"

namespace kestrel::test {

/// Makes them and names those that did not do what they should; "" when all did. Any thread may
/// call it.
std::string wrongCalls(const LoadedLibrary& library);

}  // namespace kestrel::test
