// spelling    [ "Layout" ] [ [ "EBU" ] "R" number ] code
// number      "123" or "48"
// code        digits letter
//
// Between the parts may stand any number of blanks, "_", ":", "-", "." and "/", or nothing.
#include "host/judging/layout_codes.h"

#include <algorithm>

#include "api/kestrel.h"
#include "host/basics/text_parts.h"

namespace kestrel::host {
namespace {

std::string inLowerCase(std::string_view text) {
  std::string lower(text);
  std::ranges::transform(lower, lower.begin(), lowerCase);
  return lower;
}

bool isSeparator(char letter) {
  return std::string_view(" _:-./").find(letter) != std::string_view::npos;
}

void skipSeparators(std::string_view& text) {
  while (!text.empty() && isSeparator(text.front())) {
    text.remove_prefix(1);
  }
}

// The recommendation's number, with a separator or a second number after it: "r123" of "r123:8b".
std::optional<CodeVocabulary> takeRecommendation(std::string_view& text) {
  if (!takeText(text, "r")) {
    return std::nullopt;
  }
  skipSeparators(text);
  const CodeVocabulary vocabulary = takeText(text, "123")  ? CodeVocabulary::kR123
                                    : takeText(text, "48") ? CodeVocabulary::kR48
                                                           : CodeVocabulary::kUnknown;
  skipSeparators(text);
  return vocabulary;
}

// One or two digits and a letter.
bool isBareCode(std::string_view text) {
  const std::string_view whole = text;
  const auto number = takeNumber<std::int32_t>(text);
  const bool isLetter = text.size() == 1 && text.front() >= 'a' && text.front() <= 'z';
  return number && isLetter && whole.size() <= 3;
}

std::int32_t lookUp(const char* code) {
  std::int32_t item = -1;
  kestrelItemFromLayoutCode(code, &item);
  return item;
}

}  // namespace

const std::vector<LayoutCode>& layoutCodes() {
  static const std::vector<LayoutCode> codes = [] {
    std::vector<LayoutCode> all;
    const char* code = "";
    std::int32_t item = 0;
    for (std::int32_t index = 0; kestrelLayoutCode(index, &code, &item) == KESTREL_OK; ++index) {
      all.push_back({code, item, lookUp(code)});
    }
    return all;
  }();
  return codes;
}

std::optional<LayoutCode> layoutCode(std::string_view code) {
  const auto& codes = layoutCodes();
  const auto found = std::ranges::find(codes, code, &LayoutCode::code);
  return found == codes.end() ? std::nullopt : std::optional(*found);
}

SpelledCode spelledCode(std::string_view text) {
  const std::string lower = inLowerCase(text);
  std::string_view rest = lower;
  skipSeparators(rest);
  if (takeText(rest, "layout")) {
    skipSeparators(rest);
  }
  const bool isEbu = takeText(rest, "ebu");
  skipSeparators(rest);
  const auto named = takeRecommendation(rest);
  const CodeVocabulary vocabulary =
      named.value_or(isEbu ? CodeVocabulary::kUnknown : CodeVocabulary::kR123);
  while (!rest.empty() && isSeparator(rest.back())) {
    rest.remove_suffix(1);
  }
  if (vocabulary == CodeVocabulary::kUnknown || !isBareCode(rest)) {
    return {vocabulary == CodeVocabulary::kR48 ? vocabulary : CodeVocabulary::kUnknown, ""};
  }
  return {vocabulary, std::string(rest)};
}

}  // namespace kestrel::host
