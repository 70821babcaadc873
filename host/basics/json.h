// The JSON that the host writes: its fields stay in the order in which they were set.
#pragma once

#include <nlohmann/json_fwd.hpp>

namespace kestrel::host {

using Json = nlohmann::ordered_json;

}  // namespace kestrel::host
