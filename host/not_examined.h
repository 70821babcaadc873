// The one way in which an examination ends early: an exception whose text is a single clause that
// says what was wrong with the file, without the file's name.
#pragma once

#include <stdexcept>

namespace kestrel::host {

class NotExamined : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace kestrel::host
