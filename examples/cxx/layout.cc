#include "layout.h"

#include <kestrel/catalogue.h>
#include <kestrel/layout_code.h>
#include <kestrel/stream_naming.h>

#include <vector>

namespace {

std::string nameOf(kestrel::ServiceMapItem item) {
  const auto length = static_cast<std::size_t>(kestrel::getServiceMapItemNameLength(item));
  std::string name(length + 1, '\0');  // with the NUL that the library writes
  kestrel::getServiceMapItemName(item, name.data());
  name.pop_back();
  return name;
}

// A description calls every pair-coded service EMCA.
std::string serviceName(kestrel::StreamType type) {
  if (type == kestrel::kDolbyE) return "EMCA";
  const auto length = kestrel::getStreamTypeSymbolicLength(type);
  std::string name(static_cast<std::size_t>(length), '\0');  // here the NUL is part of the length
  kestrel::getStreamTypeSymbolic(type, name.data());
  name.pop_back();
  return name;
}

std::string descriptionOf(kestrel::ServiceMapItem item) {
  std::vector<std::int32_t> types(static_cast<std::size_t>(kestrel::getStreamTypesCount(item)));
  kestrel::getStreamTypes(item, types.data());
  const auto tracks = kestrel::getTracksCount(kestrel::getServiceMapItemRow(item));
  std::string text = "T" + std::to_string(tracks);
  char separator = '=';
  for (const std::int32_t type : types) {
    text += separator + serviceName(type);
    separator = ',';
  }
  return text;
}

}  // namespace

std::optional<Layout> layoutOfCode(const std::string& code) {
  const kestrel::ServiceMapItem item = kestrel::GetServiceMapItemByAS11R123(code.c_str());
  if (item == kestrel::NO_SERVICE_MAP_ITEM) return std::nullopt;
  return Layout{nameOf(item), descriptionOf(item)};
}
