// The exported look-up of a layout code.
#include "api/layout_code.h"
#include "standards/layout_code.h"

namespace kestrel {

ServiceMapItem GetServiceMapItemByAS11R123(const char* code) {
  return code == nullptr ? NO_SERVICE_MAP_ITEM : itemOfLayoutCode(code);
}

}  // namespace kestrel
