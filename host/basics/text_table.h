// Lines up columns of text for people.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace kestrel::host {

/// Columns that a text takes: a letter takes one, however many bytes it has in UTF-8.
std::size_t columnsOf(const std::string& text);

using TableRow = std::vector<std::string>;

/// Each row on a line of its own, two blanks between columns, no blanks at the ends of lines. All
/// rows have as many cells as the first.
std::string textTable(const std::vector<TableRow>& rows);

/// The same line by line, all of one width, with two blanks at least at the end of each.
std::vector<std::string> textTableLines(const std::vector<TableRow>& rows);

}  // namespace kestrel::host
