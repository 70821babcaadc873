#include "host/basics/text_table.h"

#include <algorithm>

namespace kestrel::host {
namespace {

std::size_t columnWidth(const std::vector<TableRow>& rows, std::size_t column) {
  std::size_t width = 0;
  for (const TableRow& row : rows) {
    width = std::max(width, columnsOf(row.at(column)));
  }
  return width;
}

}  // namespace

std::size_t columnsOf(const std::string& text) {
  return static_cast<std::size_t>(std::ranges::count_if(
      text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
}

std::vector<std::string> textTableLines(const std::vector<TableRow>& rows) {
  std::vector<std::string> lines(rows.size());
  const std::size_t columns = rows.empty() ? 0 : rows.front().size();
  for (std::size_t column = 0; column < columns; ++column) {
    const std::size_t width = columnWidth(rows, column) + 2;
    for (std::size_t index = 0; index < rows.size(); ++index) {
      const std::string& cell = rows[index].at(column);
      lines[index] += cell + std::string(width - columnsOf(cell), ' ');
    }
  }
  return lines;
}

std::string textTable(const std::vector<TableRow>& rows) {
  std::string text;
  for (const std::string& line : textTableLines(rows)) {
    text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
  }
  return text;
}

}  // namespace kestrel::host
