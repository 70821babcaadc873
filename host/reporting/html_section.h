// The part of a page that shows one file.
#pragma once

#include <cstddef>
#include <string>

#include "host/basics/json.h"
#include "host/reporting/scan_summary.h"

namespace kestrel::host {

struct HtmlSection {
  std::string html;
  ResultFacts facts;
};

/// @param number  tells the sections of one page apart
/// @param isOpen  whether its details are shown from the start
HtmlSection htmlSection(const Json& document, std::size_t number, bool isOpen);

}  // namespace kestrel::host
