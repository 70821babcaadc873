// The one way in which an examination ends early: an exception whose text is a single clause that
// says what was wrong with the file, without the file's name.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace kestrel::host {

class NotExamined : public std::runtime_error {
 public:
  /// @param id  stable: the text may change, the id does not; docs/host.md lists them
  NotExamined(std::string_view id, const std::string& sentence)
      : std::runtime_error(sentence), id_(id) {}

  const std::string& id() const { return id_; }

 private:
  std::string id_;
};

}  // namespace kestrel::host
