// A constant table keyed by the ids 0, 1, 2, ... without gaps. A lookup of an id that the table
// does not hold raises the error that every function of the interface promises for an unknown id.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <stdexcept>

namespace kestrel {

[[noreturn]] inline void raiseUnknownId() { throw std::out_of_range("invalid map<K, T> key"); }

template <class Value, std::size_t N>
class IdTable {
 public:
  constexpr explicit IdTable(const std::array<Value, N>& values) : values_(values) {}

  constexpr std::int32_t size() const { return static_cast<std::int32_t>(N); }
  constexpr bool contains(std::int32_t id) const { return id >= 0 && id < size(); }

  /// The value of an id; raises std::out_of_range for an id outside the table.
  constexpr const Value& at(std::int32_t id) const {
    if (!contains(id)) raiseUnknownId();
    return values_[static_cast<std::size_t>(id)];
  }

  constexpr auto begin() const { return values_.begin(); }
  constexpr auto end() const { return values_.end(); }

 private:
  std::array<Value, N> values_;
};

}  // namespace kestrel
