// The look-up of layout codes on any text, by both interfaces, against the plain form.
#include <cstdint>
#include <string>

#include "api/kestrel.h"
#include "api/layout_code.h"
#include "fuzz/disagreement.h"
#include "fuzz/harness.h"
#include "tests/plain/plain_layout_code.h"

namespace kestrel::fuzz {
namespace {

// The answer of the plain C interface, as an item.
ServiceMapItem itemByPlainC(const std::string& code) {
  constexpr std::int32_t kAsItWas = -7;
  std::int32_t item = kAsItWas;
  const KestrelStatus status = kestrelItemFromLayoutCode(code.c_str(), &item);
  if (status == KESTREL_OK && item != NO_SERVICE_MAP_ITEM) return item;
  if (status == KESTREL_UNKNOWN_NAME && item == kAsItWas) return NO_SERVICE_MAP_ITEM;
  disagree("status and item", status, " with ", item, " for ", code);
}

void check(const std::string& code) {
  const ServiceMapItem expected = plain::itemOfLayoutCode(code.c_str());
  requireEqual("GetServiceMapItemByAS11R123", GetServiceMapItemByAS11R123(code.c_str()), expected);
  requireEqual("kestrelItemFromLayoutCode", itemByPlainC(code), expected);
}

}  // namespace
}  // namespace kestrel::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kestrel::fuzz::check(std::string(reinterpret_cast<const char*>(data), size));
  return 0;
}
