// A call of each exported function whose answer can be compared: what the function returns, writes
// or raises, as one text. Each call has arguments of its own for each number that it is given, some
// of which the function refuses.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace kestrel::test {

struct ExportedCall {
  std::string_view name;
  std::string (*answer)(std::int32_t number);
};

/// How many different arguments the calls know: numbers are 0 to kNumbers - 1.
inline constexpr std::int32_t kNumbers = 46;

/// The functions with C++ types, without getStreamTypeSymbol.
std::span<const ExportedCall> cxxCalls();

/// The functions of kestrel.h.
std::span<const ExportedCall> plainCCalls();

/// The one function whose text threads must not use at once.
ExportedCall symbolCall();

}  // namespace kestrel::test
