// Text for people, in the columns of a terminal: tables, lines in colours, paragraphs broken at
// blanks.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::host {

struct TextStyle {
  bool isColoured = false;
  std::size_t columns = 0;  ///< of the terminal; 0: lines may have any length
};

/// Coloured and as wide as the terminal on one; plain and without a limit elsewhere. NO_COLOR, set
/// to anything, keeps colours out; COLUMNS gives the width where the terminal does not.
TextStyle standardOutputStyle();

enum class Colour { kPlain, kGood, kBad, kWarning, kFaint, kFirstService };

inline constexpr std::size_t kServiceColours = 5;

/// The colour of the index-th service; neighbours differ.
Colour serviceColour(std::size_t index);

/// What the lines, tables and wrapped texts below are made of becomes visible() (utf8.h).

/// A line in parts of one colour each, cut to the width of the terminal.
class StyledLine {
 public:
  StyledLine& add(std::string_view text, Colour colour = Colour::kPlain);

  /// Without blanks at its end, with a newline.
  std::string text(const TextStyle& style) const;

 private:
  struct Part {
    std::string text;
    Colour colour;
  };
  std::vector<Part> parts_;
};

/// A text broken at blanks to the width of the terminal; words that are wider are broken too. Ends
/// in a newline.
std::string wrapped(std::string_view text, const TextStyle& style);

/// Columns that a text takes: a letter takes one, however many bytes it has in UTF-8.
std::size_t columnsOf(const std::string& text);

using TableRow = std::vector<std::string>;

/// Each row on a line of its own, two blanks between columns, no blanks at the ends of lines. All
/// rows have as many cells as the first.
std::string textTable(const std::vector<TableRow>& rows);

/// The same line by line, all of one width, with two blanks at least at the end of each.
std::vector<std::string> textTableLines(std::vector<TableRow> rows);

}  // namespace kestrel::host
