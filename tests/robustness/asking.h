// Makes the one call of a row and puts into words what came of it. Between the two, nothing but the
// call itself runs, so that an allocation that is made to fail is one of the library's.
#pragma once

#include <concepts>
#include <exception>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "tests/robustness/call_row.h"
#include "tests/robustness/out_values.h"

namespace kestrel::test {

inline constexpr char kOutOfRange[] = "std::out_of_range: invalid map<K, T> key";
inline constexpr char kBadAlloc[] = "std::bad_alloc";
inline constexpr char kReturned[] = "returned";

inline std::string returned(const char* text) {
  return text == nullptr ? "returned NULL" : "returned \"" + std::string(text) + "\"";
}
std::string returned(std::integral auto number) { return "returned " + std::to_string(number); }

/// What a call raised, NULL for nothing. Allocates nothing of its own.
template <class Call>
const char* errorOf(const Call& call) {
  try {
    call();
    return nullptr;
  } catch (const std::bad_alloc&) {
    return kBadAlloc;
  } catch (const std::out_of_range& error) {
    const bool stated = std::string_view(error.what()) == "invalid map<K, T> key";
    return stated ? kOutOfRange : "std::out_of_range with another text";
  } catch (const std::exception&) {
    return "another error of the standard library";
  } catch (...) {
    return "an error of an unknown type";
  }
}

/// How a call ended: the error that it raised, else what it returned.
template <class Call>
std::string endOf(const Around& around, const Call& call) {
  using Result = decltype(call());
  const char* error = nullptr;
  if constexpr (std::is_void_v<Result>) {
    around([&] { error = errorOf(call); });
    return error != nullptr ? error : kReturned;
  } else {
    Result result{};
    around([&] { error = errorOf([&] { result = call(); }); });
    return error != nullptr ? error : returned(result);
  }
}

/// The way to ask a call that works on `Outs`: call(outs), where outs.inWords() tells what it
/// wrote.
template <class Outs, class Call>
std::function<Answer(const Around&)> asking(const Call& call) {
  return [call](const Around& around) {
    Outs outs;
    std::string end = endOf(around, [&] { return call(outs); });
    return Answer{std::move(end), outs.inWords()};
  };
}

/// A row whose call works on OutValues.
template <class Call>
CallRow row(const std::string& function, const std::string& parameter, const std::string& value,
            const Answer& expected, const Call& call) {
  return {function, parameter, value, asking<OutValues>(call), expected};
}

}  // namespace kestrel::test
