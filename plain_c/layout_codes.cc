// The layout codes of the plain C interface.
#include <cstddef>
#include <cstdint>

#include "api/kestrel.h"
#include "plain_c/barrier.h"
#include "standards/layout_code.h"

// The functions of the interface are global; what they use is not.
using namespace kestrel;

KestrelStatus kestrelItemFromLayoutCode(const char* code, int32_t* item) {
  if (anyNull(code, item)) return KESTREL_NULL_ARGUMENT;
  const ServiceMapItem found = itemOfLayoutCode(code);
  if (found == NO_SERVICE_MAP_ITEM) return KESTREL_UNKNOWN_NAME;
  *item = found;
  return KESTREL_OK;
}

KestrelStatus kestrelLayoutCode(int32_t index, const char** code, int32_t* item) {
  if (anyNull(code, item)) return KESTREL_NULL_ARGUMENT;
  const auto rules = layoutCodeRules();
  if (index < 0 || static_cast<std::size_t>(index) >= rules.size()) return KESTREL_BAD_INDEX;
  *code = rules[static_cast<std::size_t>(index)].code.data();
  *item = rules[static_cast<std::size_t>(index)].item;
  return KESTREL_OK;
}
