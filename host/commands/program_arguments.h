// The arguments of the program in UTF-8, or as the bytes that they are where names are bytes.
#pragma once

#include <string>
#include <vector>

namespace kestrel::host {

/// @return without the program's name
std::vector<std::string> programArguments(int argc, char** argv);

}  // namespace kestrel::host
