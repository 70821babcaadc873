// What the functions of the plain C interface share: the barrier that turns exceptions into
// statuses, and the rules for buffers.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string_view>

#include "api/kestrel.h"

namespace kestrel {

/// Runs the body of a function that may raise. The library raises std::out_of_range for an unknown
/// id; anything else that the standard library raises means that there is not enough memory.
template <class Body>
KestrelStatus guarded(const Body& body) noexcept {
  try {
    return body();
  } catch (const std::out_of_range&) {
    return KESTREL_UNKNOWN_ID;
  } catch (...) {
    return KESTREL_OUT_OF_MEMORY;
  }
}

/// Whether any of the pointers is NULL.
template <class... Pointers>
constexpr bool anyNull(const Pointers*... pointers) {
  return ((pointers == nullptr) || ...);
}

/// Copies a list into the host's buffer.
inline KestrelStatus copyOut(std::span<const std::int32_t> list, std::int32_t* buffer,
                             std::size_t capacity, std::size_t* needed) {
  if (needed == nullptr || (buffer == nullptr && capacity > 0)) return KESTREL_NULL_ARGUMENT;
  *needed = list.size();
  if (capacity < list.size()) return KESTREL_BUFFER_TOO_SMALL;
  std::ranges::copy(list, buffer);
  return KESTREL_OK;
}

/// Copies a text and its NUL into the host's buffer.
inline KestrelStatus copyOut(std::string_view text, char* buffer, std::size_t capacity,
                             std::size_t* needed) {
  if (needed == nullptr || (buffer == nullptr && capacity > 0)) return KESTREL_NULL_ARGUMENT;
  *needed = text.size() + 1;
  if (capacity <= text.size()) return KESTREL_BUFFER_TOO_SMALL;
  std::ranges::copy(text, buffer);
  buffer[text.size()] = '\0';
  return KESTREL_OK;
}

/// Fills a record of the host. It may be larger than ours, but not smaller.
template <class Record>
KestrelStatus copyOut(Record record, Record& out) {
  if (out.structSize < sizeof(Record)) return KESTREL_BAD_RECORD_SIZE;
  record.structSize = out.structSize;
  out = record;
  return KESTREL_OK;
}

}  // namespace kestrel
