#include "host/basics/text_parts.h"

#include <algorithm>

namespace kestrel::host {

std::vector<std::string_view> splitAtBlanks(std::string_view text) {
  std::vector<std::string_view> parts;
  for (std::size_t at = text.find_first_not_of(' '); at != std::string_view::npos;
       at = text.find_first_not_of(' ', at)) {
    const std::size_t end = std::min(text.find(' ', at), text.size());
    parts.push_back(text.substr(at, end - at));
    at = end;
  }
  return parts;
}

std::string onOneLine(std::string text) {
  std::ranges::replace_if(
      text, [](char unit) { return static_cast<unsigned char>(unit) < ' ' || unit == 0x7F; }, ' ');
  return text;
}

}  // namespace kestrel::host
