#include "tests/test_rounds.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace kestrel::test {
namespace {

constexpr int kAll = 100;

int percentage() {
  const char* const text = std::getenv("KESTREL_TEST_ROUNDS");
  if (text == nullptr) return kAll;
  const int percent = std::stoi(text);
  if (percent < 1 || percent > kAll) throw std::invalid_argument(text);
  return percent;
}

}  // namespace

int rounds(int full) {
  return std::max(1, static_cast<int>(std::int64_t{full} * percentage() / kAll));
}

bool allRounds() { return percentage() == kAll; }

}  // namespace kestrel::test
