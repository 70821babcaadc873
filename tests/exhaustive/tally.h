// Counts by name, and the table of them that a test prints and compares, so that nothing is left
// out unseen.
#pragma once

#include <cstddef>
#include <map>
#include <string>

namespace kestrel::test {

class Tally {
 public:
  void count(const std::string& name) { ++counts_[name]; }

  /// A line "NAME: COUNT" for each name, in the order of the names.
  std::string text() const {
    std::string text;
    for (const auto& [name, count] : counts_) text += name + ": " + std::to_string(count) + "\n";
    return text;
  }

 private:
  std::map<std::string, std::size_t> counts_;
};

}  // namespace kestrel::test
