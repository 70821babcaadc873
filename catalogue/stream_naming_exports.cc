// The exported functions that name streams and stream types.
#include <algorithm>
#include <cstdint>
#include <string_view>

#include "api/stream_naming.h"
#include "catalogue/catalogue_tables.h"
#include "catalogue/host_text.h"
#include "catalogue/stream_names.h"

namespace kestrel {

namespace {

// The one text that getStreamTypeSymbol() returns. The longest names have 7 characters.
constinit char streamTypeSymbol[8] = "";

static_assert(std::ranges::all_of(StreamTypeNames, [](std::string_view name) {
  return name.size() < sizeof streamTypeSymbol;
}));

void copyWithNul(std::string_view name, char* out) { *std::ranges::copy(name, out).out = '\0'; }

std::int32_t copyName(StreamType type, char* out) {
  const std::string_view name = StreamTypeNames.at(type);
  copyWithNul(name, out);
  return static_cast<std::int32_t>(name.size());
}

}  // namespace

std::int64_t getStreamTypeNameLength(std::int32_t item, std::int32_t position) {
  return static_cast<std::int64_t>(streamName(item, position).size());
}

void getStreamTypeName(std::int32_t item, std::int32_t position, char* name) {
  if (name != nullptr) copyWithNul(streamName(item, position), name);
}

const char* getStreamTypeSymbol(StreamType type) {
  copyName(type, streamTypeSymbol);
  return streamTypeSymbol;
}

std::int32_t getStreamTypeSymbolicLength(StreamType type) {
  return static_cast<std::int32_t>(StreamTypeNames.at(type).size()) + 1;
}

std::int32_t getStreamTypeSymbolic(StreamType type, char* name) { return copyName(type, name); }

StreamType streamTypeFromStr(const char* name) { return streamTypeNamed(viewOf(name)); }

ServiceMapItem serviceMapItemFromStr(const char* streamTypes) {
  return itemOfStreamTypes(viewOf(streamTypes));
}

}  // namespace kestrel
