#include "tests/robustness/out_values.h"

namespace kestrel::test {
namespace {

void append(std::string& words, const std::string& name, const std::string& value) {
  if (!words.empty()) words += "; ";
  words += name + " " + value;
}

// An element that was not written is a dot.
template <class List>
void appendList(std::string& words, const std::string& name, const List& list) {
  std::string values;
  std::string unwritten;
  for (const std::int32_t element : list) {
    const bool written = element != OutValues::kNumber;
    unwritten += written ? "" : " .";
    if (!written) continue;
    values += unwritten + " " + std::to_string(element);
    unwritten.clear();
  }
  if (!values.empty()) append(words, name, values.substr(1));
}

// A NUL is a bar.
void appendText(std::string& words, const std::array<char, 200>& text) {
  std::string bytes(text.begin(), text.end());
  bytes.erase(bytes.find_last_not_of(OutValues::kByte) + 1);
  std::ranges::replace(bytes, '\0', '|');
  if (!bytes.empty()) append(words, "text", bytes);
}

}  // namespace

std::string OutValues::inWords() const {
  std::string words;
  if (needed != kNeeded) append(words, "needed", std::to_string(needed));
  if (total != kNeeded) append(words, "total", std::to_string(total));
  if (constant != text.data()) append(words, "constant", constant == nullptr ? "NULL" : constant);
  appendList(words, "numbers", numbers);
  appendList(words, "list", list);
  appendText(words, text);
  return words;
}

std::string wrote(std::size_t needed, const std::string& buffer) {
  return "needed " + std::to_string(needed) + (buffer.empty() ? "" : "; " + buffer);
}

}  // namespace kestrel::test
