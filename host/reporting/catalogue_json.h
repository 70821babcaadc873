// The catalogue and the layout codes as JSON; docs/host.md describes the members.
#pragma once

#include "host/basics/json.h"

namespace kestrel::host {

/// An array: the items by id.
Json catalogueJson();

/// An array: the codes in the library's order.
Json codesJson();

}  // namespace kestrel::host
