#include "tests/plain/plain_naming.h"

#include <algorithm>
#include <cstddef>
#include <sstream>

namespace kestrel::plain {

std::string streamPositionName(const PlainCatalogue& catalogue, ServiceMapItem item,
                               std::int32_t position) {
  const std::vector<StreamType>& types = catalogue.streamTypesOfItem.at(item);
  // A position below 0 becomes one that no list reaches.
  const StreamType type = types.at(static_cast<std::size_t>(position));
  std::ostringstream text;
  text << catalogue.streamTypeNames.at(type);
  if (std::count(types.begin(), types.end(), type) != 1) {
    text << " " << std::count(types.begin(), types.begin() + position + 1, type);
  }
  return text.str();
}

std::string spelledOut(const PlainCatalogue& catalogue, ServiceMapItem item) {
  std::ostringstream text;
  const char* separator = "";
  for (const StreamType type : catalogue.streamTypesOfItem.at(item)) {
    text << separator << catalogue.streamTypeNames.at(type);
    separator = ",";
  }
  return text.str();
}

StreamType streamTypeFromStr(const PlainCatalogue& catalogue, const char* name) {
  if (name == nullptr) return kUnknown;
  for (const auto& [type, typeName] : catalogue.streamTypeNames) {
    if (typeName == name) return type;
  }
  return kUnknown;
}

ServiceMapItem serviceMapItemFromStr(const PlainCatalogue& catalogue, const char* streamTypes) {
  if (streamTypes == nullptr) return NO_SERVICE_MAP_ITEM;
  for (const auto& [item, types] : catalogue.streamTypesOfItem) {
    if (spelledOut(catalogue, item) == streamTypes) return item;
  }
  return NO_SERVICE_MAP_ITEM;
}

}  // namespace kestrel::plain
