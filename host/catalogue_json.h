// The catalogue and the layout codes as JSON; docs/host.md describes the members.
#pragma once

#include <nlohmann/json_fwd.hpp>

namespace kestrel::host {

/// An array: the items by id.
nlohmann::ordered_json catalogueJson();

/// An array: the codes in the library's order.
nlohmann::ordered_json codesJson();

}  // namespace kestrel::host
