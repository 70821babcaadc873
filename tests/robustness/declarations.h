// The exported functions and their parameters, as the public headers declare them.
#pragma once

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace kestrel::test {

struct Declaration {
  std::string function;
  std::vector<std::string> parameters;  // their names
};

/// The declarations of all headers in `directory`. Throws std::runtime_error when a file cannot be
/// read.
std::vector<Declaration> declarations(const std::string& directory);

/// The names in a list of one name per line.
std::set<std::string> namesIn(const std::string& file);

}  // namespace kestrel::test
