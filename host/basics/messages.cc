#include "host/basics/messages.h"

#include <fmt/format.h>

#include <cstdio>

#include "host/basics/utf8.h"

namespace kestrel::host {

void printMessage(const std::string& text) { fmt::print(stderr, "kestrel: {}\n", text); }

void printFileMessage(const std::string& name, const std::string& why) {
  printMessage(fmt::format("\"{}\": {}", printable(name), why));
}

}  // namespace kestrel::host
