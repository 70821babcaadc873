// Results as one page that needs nothing else: no network, no other file.
#pragma once

#include <string>
#include <vector>

#include "host/basics/json.h"
#include "host/reporting/html_section.h"

namespace kestrel::host {

/// One result stands alone; several get a summary and filters above them.
/// @param documents  a JSON array of results in the form of docs/schema/kestrel-result-1.json
std::string htmlPage(const Json& documents);

/// A page with a summary and filters, of sections that were made one by one.
std::string htmlReport(const std::vector<HtmlSection>& sections);

}  // namespace kestrel::host
