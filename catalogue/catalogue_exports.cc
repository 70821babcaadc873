// The exported queries of the catalogue. Each reads one table. The check for a NULL buffer comes
// before the look-up of the id, so that a call with a NULL buffer never raises.
#include <algorithm>
#include <cstdint>
#include <span>

#include "api/catalogue.h"
#include "catalogue/catalogue_tables.h"

namespace kestrel {

namespace {

std::int64_t length(const auto& list) { return static_cast<std::int64_t>(list.size()); }

std::int64_t copyOut(std::span<const std::int32_t> list, std::int32_t* out) {
  std::ranges::copy(list, out);
  return length(list);
}

}  // namespace

std::int64_t getRowCount() { return ServiceMapRows.size(); }

std::int64_t getTracksCount(std::int32_t row) { return ServiceMapRowTrackCounts.at(row); }

std::int64_t getServiceMapItemsCount(std::int32_t row) { return length(ServiceMapRows.at(row)); }

std::int64_t getServiceMapItems(std::int32_t row, std::int32_t* items) {
  return items == nullptr ? 0 : copyOut(ServiceMapRows.at(row), items);
}

std::int32_t getDefaultServiceMapItem(std::int32_t row) { return ServiceMapRows.at(row).front(); }

std::int32_t getServiceMapItemRow(std::int32_t item) { return rowOf(item); }

std::int64_t getServiceMapItemNameLength(std::int32_t item) {
  return length(ServiceMapItemNames.at(item));
}

void getServiceMapItemName(std::int32_t item, char* name) {
  if (name == nullptr) return;
  *std::ranges::copy(ServiceMapItemNames.at(item), name).out = '\0';
}

std::int64_t getStreamTypesCount(std::int32_t item) {
  return length(ServiceMapItemStreamTypes.at(item).view());
}

std::int64_t getStreamTypes(std::int32_t item, std::int32_t* types) {
  return types == nullptr ? 0 : copyOut(ServiceMapItemStreamTypes.at(item).view(), types);
}

}  // namespace kestrel
