// The library that ships, for tests: loaded at run time and reached by its exported names alone.
// Its path is the compile definition KESTREL_LIBRARY_PATH; an environment variable of that name
// goes before it.
#pragma once

#include <string>

#include "api/catalogue.h"
#include "api/ebu_r123.h"
#include "api/layout_code.h"
#include "api/service_map.h"
#include "api/stream_naming.h"
#include "tests/plain/plain_service_map.h"

namespace kestrel::test {

/// One member per exported function, of the same name.
struct Library {
  decltype(&kestrel::getRowCount) getRowCount;
  decltype(&kestrel::getTracksCount) getTracksCount;
  decltype(&kestrel::getServiceMapItemsCount) getServiceMapItemsCount;
  decltype(&kestrel::getServiceMapItems) getServiceMapItems;
  decltype(&kestrel::getDefaultServiceMapItem) getDefaultServiceMapItem;
  decltype(&kestrel::getServiceMapItemRow) getServiceMapItemRow;
  decltype(&kestrel::getServiceMapItemNameLength) getServiceMapItemNameLength;
  decltype(&kestrel::getServiceMapItemName) getServiceMapItemName;
  decltype(&kestrel::getStreamTypesCount) getStreamTypesCount;
  decltype(&kestrel::getStreamTypes) getStreamTypes;
  decltype(&kestrel::getStreamTypeNameLength) getStreamTypeNameLength;
  decltype(&kestrel::getStreamTypeName) getStreamTypeName;
  decltype(&kestrel::getStreamTypeSymbol) getStreamTypeSymbol;
  decltype(&kestrel::getStreamTypeSymbolicLength) getStreamTypeSymbolicLength;
  decltype(&kestrel::getStreamTypeSymbolic) getStreamTypeSymbolic;
  decltype(&kestrel::streamTypeFromStr) streamTypeFromStr;
  decltype(&kestrel::serviceMapItemFromStr) serviceMapItemFromStr;
  decltype(&kestrel::getServiceMap) getServiceMap;
  decltype(&kestrel::getServiceMapEbuR123) getServiceMapEbuR123;
  decltype(&kestrel::GetServiceMapItemByAS11R123) GetServiceMapItemByAS11R123;
};

/// The loaded library; loaded by the first call, never unloaded. Throws std::runtime_error, naming
/// the file or the exported name, when either is missing.
const Library& library();

/// Calls getServiceMap with a vector that holds one record, and says what became of the vector.
/// Throws std::runtime_error when return value and vector contradict each other.
plain::PlainResult callServiceMap(const plain::ServiceMapInput& input);

}  // namespace kestrel::test
