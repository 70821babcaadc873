// How a harness fails: it prints both sides and aborts, which every fuzzer takes for a crash and
// which ctest takes for a failure.
#pragma once

#include <cstdlib>
#include <iostream>

namespace kestrel::fuzz {

/// Ends the process. `sides` are printed one behind the other; each knows how to print itself.
template <class... Sides>
[[noreturn]] void disagree(const char* what, const Sides&... sides) {
  std::cerr << "\n== disagreement: " << what << "\n";
  ((std::cerr << sides), ...);
  std::cerr << std::endl;
  std::abort();
}

/// Ends the process unless both sides are equal.
template <class Left, class Right>
void requireEqual(const char* what, const Left& actual, const Right& expected) {
  if (!(actual == expected)) disagree(what, "actual:   ", actual, "\nexpected: ", expected);
}

}  // namespace kestrel::fuzz
