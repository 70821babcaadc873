// How text for people is to look on the standard output.
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

}  // namespace kestrel::host
