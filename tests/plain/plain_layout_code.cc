// One line per rule, in the order in which the rules are tried; the first that holds decides.
#include "tests/plain/plain_layout_code.h"

#include <cstring>
#include <string>

namespace kestrel::plain {
namespace {

// What a program in the "C" locale makes of a byte.
char upperCased(char c) {
  const char lower[] = "abcdefghijklmnopqrstuvwxyz";
  const char upper[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  for (int i = 0; i < 26; ++i) {
    if (c == lower[i]) return upper[i];
  }
  return c;
}

std::string upperCased(const std::string& text) {
  std::string copy = text;
  for (char& c : copy) c = upperCased(c);
  return copy;
}

bool containsNoCase(const char* text, const char* code) {
  return upperCased(std::string(text)).find(upperCased(std::string(code))) != std::string::npos;
}

bool equals(const char* text, const char* code) { return std::strcmp(text, code) == 0; }

}  // namespace

ServiceMapItem itemOfLayoutCode(const char* code) {
  const char* text = code == nullptr ? "" : code;
  if (containsNoCase(text, "2a")) return 0;
  if (equals(text, "4a") || equals(text, "4b") || equals(text, "4c")) return 2;
  if (containsNoCase(text, "8a")) return 8;
  if (containsNoCase(text, "8b")) return 7;
  if (containsNoCase(text, "8d")) return 10;
  if (containsNoCase(text, "8g") || equals(text, "8i") || equals(text, "8h")) return 11;
  if (containsNoCase(text, "12a")) return 20;
  if (containsNoCase(text, "12b")) return 21;
  if (containsNoCase(text, "12c")) return 22;
  if (containsNoCase(text, "12d")) return 23;
  if (containsNoCase(text, "12e")) return 24;
  if (containsNoCase(text, "12f")) return 25;
  if (containsNoCase(text, "12g")) return 26;
  if (containsNoCase(text, "12h")) return 27;
  if (containsNoCase(text, "16a")) return 33;
  if (containsNoCase(text, "16b")) return 34;
  if (containsNoCase(text, "16c")) return 35;
  if (containsNoCase(text, "16f")) return 36;
  return NO_SERVICE_MAP_ITEM;
}

}  // namespace kestrel::plain
