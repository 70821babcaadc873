// Templates of the page. Each stands as a file of its own in host/reporting/html and is built into
// the program.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "host/basics/json.h"

namespace kestrel::host {

/// A Mustache template. {{name}} is escaped by htmlText(), {{{name}}} stands as it is.
class HtmlTemplate {
 public:
  explicit HtmlTemplate(std::string_view text);
  HtmlTemplate(const HtmlTemplate&) = delete;
  HtmlTemplate& operator=(const HtmlTemplate&) = delete;
  ~HtmlTemplate();

  /// One thread at a time.
  std::string render(const Json& view) const;

 private:
  struct Parsed;
  std::unique_ptr<Parsed> parsed_;
};

/// Safe in elements and in quoted attributes. What cannot be seen, control characters and those
/// that have no width or turn the direction of writing, is shown by its number: "[U+000A]". Text
/// that is not UTF-8 is shown as printable() has it.
std::string htmlText(std::string_view text);

}  // namespace kestrel::host
