// The layout codes of EBU R 123, as AS-11 metadata declares them, and their items.
#pragma once

#include <span>
#include <string_view>

#include "api/catalogue_ids.h"

namespace kestrel {

/// How a text is tested for a code.
enum class CodeTest {
  kContains,  // anywhere and in either case
  kEquals,    // as the whole text, in lower case
};

struct LayoutCodeRule {
  CodeTest test;
  std::string_view code;  // in lower case, followed by a NUL
  ServiceMapItem item;
};

/// The rules in the order in which they are tried.
std::span<const LayoutCodeRule> layoutCodeRules() noexcept;

/// The item of the first rule that a text meets; NO_SERVICE_MAP_ITEM if it meets none.
ServiceMapItem itemOfLayoutCode(std::string_view text) noexcept;

}  // namespace kestrel
