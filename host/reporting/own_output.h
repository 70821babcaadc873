// By what the program knows again the files that it wrote, so that it replaces no others.
#pragma once

#include <cstddef>
#include <string_view>

namespace kestrel::host {

/// As much as isOwnOutput() looks at.
inline constexpr std::size_t kOwnOutputBegin = 1U << 16;

/// Whether a file that begins so is a result or a report, in any of their forms.
bool isOwnOutput(std::string_view begin);

}  // namespace kestrel::host
