// JSON as the host writes and reads it.
#pragma once

#include <cstddef>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

namespace kestrel::host {

/// The JSON that the host writes by jsonText(): its fields stay in the order in which they were
/// set.
using Json = nlohmann::ordered_json;

/// JSON of others, of which the host looks up fields in objects of any size.
using ForeignJson = nlohmann::json;

/// A text with deeper arrays and objects is refused. Nothing that the host reads has ten levels.
inline constexpr std::size_t kDeepestJson = 64;

/// So many members the objects of a Json may have: it looks for each among all before it.
inline constexpr std::size_t kMostMembers = 256;

/// Every JSON text that the host reads goes through here. What takes time or memory out of
/// proportion to the text is found before anything is built of it. Discarded (`is_discarded()`)
/// when the text is no JSON, is too deep or has an object with too many members.
/// @tparam Value  Json or ForeignJson
template <typename Value>
Value parsedJson(std::string_view text);

extern template Json parsedJson<Json>(std::string_view text);
extern template ForeignJson parsedJson<ForeignJson>(std::string_view text);

/// What isUnseen() stands as an escape, so that the text may go to a terminal. On several lines
/// with an indent of 0 or more. All texts in it must be UTF-8.
std::string jsonText(const Json& json, int indent = -1);

}  // namespace kestrel::host
