// What the naming tests share: the names of the stream types, the plain form's catalogue, and how a
// call that writes or raises is watched.
#pragma once

#include <array>
#include <climits>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "api/catalogue_ids.h"
#include "tests/plain/plain_naming.h"

namespace kestrel::test {

inline constexpr StreamType kUnknownTypes[] = {5, 6, -1, 7, INT_MAX, INT_MIN};

inline constexpr std::array<std::string_view, 5> kTypeNames = {"Mono", "Stereo", "5.1 Mix",
                                                               "7.1 Mix", "Dolby E"};

/// The catalogue as the exported queries tell it.
const plain::PlainCatalogue& plainCatalogue();

/// What a call writes into a buffer of exactly `size` characters.
std::string written(std::size_t size, const std::function<void(char*)>& write);

/// Expects the error of an id that the catalogue does not hold.
void expectUnknownId(const std::function<void()>& call);

}  // namespace kestrel::test
