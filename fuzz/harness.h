// What a harness is to its driver, be it libFuzzer or the replay: one function that is given an
// input and returns, or aborts because a property does not hold. -1 means that the input is not
// worth keeping.
#pragma once

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
