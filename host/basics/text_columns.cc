#include "host/basics/text_columns.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <utility>

#include "host/basics/console.h"
#include "host/basics/text_parts.h"
#include "host/basics/utf8.h"

namespace kestrel::host {
namespace {

constexpr std::size_t kNarrowest = 20;

// By Colour; the services' colours follow from kFirstService on.
constexpr std::array<std::string_view, 5 + kServiceColours> kStyleCodes = {
    "", "1;32", "1;31", "1;33", "2", "36", "35", "34", "33", "32"};

std::string environment(const char* name) {
  // NOLINTNEXTLINE(concurrency-mt-unsafe): nothing sets the environment.
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

// The front of a text that takes at most so many columns; a character is never cut.
std::string cutToColumns(std::string_view text, std::size_t columns) {
  std::size_t length = 0;
  std::size_t taken = 0;
  while (length < text.size()) {
    const bool beginsCharacter = (static_cast<unsigned char>(text[length]) & 0xC0U) != 0x80U;
    if (beginsCharacter && taken++ == columns) {
      break;
    }
    ++length;
  }
  return std::string(text.substr(0, length));
}

std::string coloured(const std::string& text, Colour colour, const TextStyle& style) {
  if (!style.isColoured || colour == Colour::kPlain || text.empty()) {
    return text;
  }
  return "\x1b[" + std::string(kStyleCodes.at(static_cast<std::size_t>(colour))) + "m" + text +
         "\x1b[0m";
}

std::size_t columnWidth(const std::vector<TableRow>& rows, std::size_t column) {
  std::size_t width = 0;
  for (const TableRow& row : rows) {
    width = std::max(width, columnsOf(row.at(column)));
  }
  return width;
}

}  // namespace

TextStyle standardOutputStyle() {
  TextStyle style;
  if (!isTerminal(StandardStream::kOutput)) {
    return style;
  }
  style.isColoured = environment("NO_COLOR").empty() && environment("TERM") != "dumb";
  style.columns = terminalColumns(StandardStream::kOutput);
  if (style.columns == 0) {
    style.columns = leadingNumber<std::size_t>(environment("COLUMNS")).value_or(80);
  }
  style.columns = std::max(style.columns, kNarrowest);
  return style;
}

Colour serviceColour(std::size_t index) {
  return static_cast<Colour>(static_cast<std::size_t>(Colour::kFirstService) +
                             index % kServiceColours);
}

StyledLine& StyledLine::add(std::string_view text, Colour colour) {
  parts_.push_back({visible(text), colour});
  return *this;
}

std::string StyledLine::text(const TextStyle& style) const {
  std::vector<Part> parts = parts_;
  while (!parts.empty() && parts.back().text.find_last_not_of(' ') == std::string::npos) {
    parts.pop_back();
  }
  if (!parts.empty()) {
    parts.back().text.erase(parts.back().text.find_last_not_of(' ') + 1);
  }
  std::string line;
  std::size_t left = style.columns == 0 ? std::string::npos : style.columns;
  for (const Part& part : parts) {
    const std::string shown = cutToColumns(part.text, left);
    left -= std::min(left, columnsOf(shown));
    line += coloured(shown, part.colour, style);
  }
  return line + "\n";
}

std::string wrapped(std::string_view raw, const TextStyle& style) {
  const std::string text = visible(raw);
  if (style.columns == 0) {
    return text + "\n";
  }
  std::string result;
  std::string line;
  for (const std::string_view word : splitAtBlanks(text)) {
    std::string rest(word);
    if (!line.empty() && columnsOf(line) + 1 + columnsOf(rest) > style.columns) {
      result += std::exchange(line, "") + "\n";
    }
    while (columnsOf(rest) > style.columns) {
      const std::string front = cutToColumns(rest, style.columns);
      result += front + "\n";
      rest.erase(0, front.size());
    }
    line += (line.empty() ? "" : " ") + rest;
  }
  return result + line + "\n";
}

std::size_t columnsOf(const std::string& text) {
  return static_cast<std::size_t>(std::ranges::count_if(
      text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
}

std::vector<std::string> textTableLines(std::vector<TableRow> rows) {
  for (TableRow& row : rows) {
    std::ranges::transform(row, row.begin(), visible);
  }
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
