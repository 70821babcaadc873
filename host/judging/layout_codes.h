// The layout codes of EBU R 123 in all their spellings.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::host {

struct LayoutCode {
  std::string code;        ///< "12a"
  std::int32_t item = 0;   ///< of the library's table
  std::int32_t found = 0;  ///< what the library's look-up gives for the code
};

/// The codes that the library knows, in its order. Made at the first call.
const std::vector<LayoutCode>& layoutCodes();

/// The row of a bare code: "8b".
std::optional<LayoutCode> layoutCode(std::string_view code);

enum class CodeVocabulary { kR123, kR48, kUnknown };

struct SpelledCode {
  CodeVocabulary vocabulary = CodeVocabulary::kUnknown;
  std::string code;  ///< bare and in lower case; empty when the text is no code
};

/// Takes a code in any common spelling: "8b", "R123:8b", "EBU R 123: 8b", "EBU_R_123_8b",
/// "Layout_EBU_R_123_8b", in any case. A bare code is one of EBU R 123.
SpelledCode spelledCode(std::string_view text);

}  // namespace kestrel::host
