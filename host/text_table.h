// Lines up columns of text for people.
#pragma once

#include <string>
#include <vector>

namespace kestrel::host {

using TableRow = std::vector<std::string>;

/// Each row on a line of its own, two blanks between columns, no blanks at the ends of lines. All
/// rows have as many cells as the first.
std::string textTable(const std::vector<TableRow>& rows);

}  // namespace kestrel::host
