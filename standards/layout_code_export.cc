// The exported look-up of a layout code.
#include "api/layout_code.h"
#include "catalogue/host_text.h"
#include "standards/layout_code.h"

namespace kestrel {

ServiceMapItem GetServiceMapItemByAS11R123(const char* code) {
  return itemOfLayoutCode(viewOf(code));
}

}  // namespace kestrel
