// "Did you mean ...": the name nearest to a mistyped one.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kestrel::host {

/// The shortest name that begins with the text; else the name that takes the fewest single-letter
/// changes, the first of several; letters of another case count half. Empty when there are no
/// names.
std::string nearestName(std::string_view text, const std::vector<std::string>& names);

}  // namespace kestrel::host
