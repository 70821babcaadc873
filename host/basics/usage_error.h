// What the user asks for makes no sense; the text says why, on one line.
#pragma once

#include <stdexcept>

namespace kestrel::host {

class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace kestrel::host
