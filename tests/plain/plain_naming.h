// The names of streams and the way back from texts to ids in their plain, slow form, for tests to
// compare the library with: each text is built anew with a string stream, over maps that the test
// has filled.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "api/catalogue_ids.h"

namespace kestrel::plain {

/// What the names are made of.
struct PlainCatalogue {
  std::map<StreamType, std::string> streamTypeNames;
  std::map<ServiceMapItem, std::vector<StreamType>> streamTypesOfItem;
};

/// The name of the stream at a position of an item. An item or a position that the catalogue does
/// not hold raises std::out_of_range.
std::string streamPositionName(const PlainCatalogue& catalogue, ServiceMapItem item,
                               std::int32_t position);

/// The item's stream types by their names, joined by ",".
std::string spelledOut(const PlainCatalogue& catalogue, ServiceMapItem item);

/// The stream type of this name; kUnknown when there is none, and for NULL.
StreamType streamTypeFromStr(const PlainCatalogue& catalogue, const char* name);

/// The first item that is spelled out like this; NO_SERVICE_MAP_ITEM when there is none, and for
/// NULL.
ServiceMapItem serviceMapItemFromStr(const PlainCatalogue& catalogue, const char* streamTypes);

}  // namespace kestrel::plain
