// The layout codes of EBU R 123, as AS-11 delivery metadata declares them.
#pragma once

#include "catalogue_ids.h"
#include "export.h"
#include "host_runtime.h"

namespace kestrel {
extern "C" {

/// The item that an EBU R 123 layout code stands for; NO_SERVICE_MAP_ITEM (41) if there is none.
///
/// Most codes are found anywhere in the text and in either case ("EBU R 123: 8B" is 7). The codes
/// 4a, 4b, 4c, 8h and 8i must be the whole text, in lower case. The rules are tried in a fixed
/// order and the first match decides: "12a" contains "2a" and is therefore 0.
///
/// @param code  NUL-terminated bytes in any encoding; only ASCII letters have a case. NULL counts
///              as empty
///
/// Reads only its argument, allocates nothing and never raises. Any number of threads may call it
/// at once.
KESTREL_EXPORT ServiceMapItem GetServiceMapItemByAS11R123(const char* code);

}  // extern "C"
}  // namespace kestrel
