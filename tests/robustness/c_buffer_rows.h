// Rows for a function of the plain C interface that fills a buffer: every kind of capacity, and
// NULL in each place.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>

#include "api/kestrel.h"
#include "tests/robustness/asking.h"

namespace kestrel::test {

template <class Element>
Element* bufferOf(OutValues& outs) {
  if constexpr (std::is_same_v<Element, char>) {
    return outs.text.data();
  } else {
    return outs.list.data();
  }
}

/// @param full  what a call with room enough writes into the buffer
/// @param fill  fill(outs, buffer, capacity, neededPointer) makes the call
template <class Element, class Outs, class Fill>
void addCapacities(CallRows& rows, const char* function, const char* buffer, std::size_t needed,
                   const std::string& full, const Fill& fill) {
  const Answer done{returned(KESTREL_OK), wrote(needed, full)};
  const Answer tooSmall{returned(KESTREL_BUFFER_TOO_SMALL), wrote(needed)};
  const Answer refused{returned(KESTREL_NULL_ARGUMENT), ""};
  const auto add = [&](const char* parameter, const std::string& value, const Answer& expected,
                       const auto& call) {
    rows.push_back({function, parameter, value, asking<Outs>(call), expected});
  };
  for (const std::size_t capacity :
       {std::size_t{0}, std::size_t{1}, needed - 1, needed, needed + 1, SIZE_MAX / 2, SIZE_MAX}) {
    add("capacity", std::to_string(capacity), capacity < needed ? tooSmall : done,
        [=](Outs& outs) { return fill(outs, bufferOf<Element>(outs), capacity, &outs.needed); });
    add(buffer, "NULL with room for " + std::to_string(capacity),
        capacity == 0 ? tooSmall : refused,
        [=](Outs& outs) { return fill(outs, nullptr, capacity, &outs.needed); });
    add("needed", "NULL with room for " + std::to_string(capacity), refused,
        [=](Outs& outs) { return fill(outs, bufferOf<Element>(outs), capacity, nullptr); });
  }
}

}  // namespace kestrel::test
