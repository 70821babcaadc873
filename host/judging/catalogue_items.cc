#include "host/judging/catalogue_items.h"

#include <fmt/format.h>

#include "api/kestrel.h"
#include "host/evidence/track_map.h"
#include "host/judging/layout_codes.h"

namespace kestrel::host {
namespace {

std::vector<std::int32_t> streamTypes(std::int32_t item) {
  std::size_t count = 0;
  kestrelItemStreamTypes(item, nullptr, 0, &count);
  std::vector<std::int32_t> types(count);
  kestrelItemStreamTypes(item, types.data(), count, &count);
  return types;
}

void addService(CatalogueItem& item, std::int32_t type) {
  const char* name = "";
  std::int32_t width = 0;
  kestrelStreamTypeName(type, &name);
  kestrelStreamTypeTracks(type, &width);
  const char* comma = item.services.empty() ? "" : ",";
  item.services += comma + std::string(name);
  item.description += comma + std::string(type == KESTREL_DOLBY_E ? "EMCA" : name);
  item.placed.push_back({type, {name, trackRange(item.tracks + 1, width)}});
  item.tracks += width;
}

CatalogueItem catalogueItem(std::int32_t id) {
  const char* name = "";
  kestrelItemName(id, &name);
  CatalogueItem item;
  item.item = {id, name};
  for (const std::int32_t type : streamTypes(id)) {
    addService(item, type);
  }
  item.description = fmt::format("T{}={}", item.tracks, item.description);
  for (const LayoutCode& code : layoutCodes()) {
    if (code.item == id) {
      item.codes.push_back(code.code);
    }
  }
  return item;
}

}  // namespace

const std::vector<CatalogueItem>& catalogueItems() {
  static const std::vector<CatalogueItem> items = [] {
    std::int32_t rows = 0;
    std::int32_t count = 0;
    std::int32_t types = 0;
    kestrelCatalogueSize(&rows, &count, &types);
    std::vector<CatalogueItem> all;
    all.reserve(static_cast<std::size_t>(count));
    for (std::int32_t id = 0; id < count; ++id) {
      all.push_back(catalogueItem(id));
    }
    return all;
  }();
  return items;
}

std::vector<const CatalogueItem*> itemsOfTotal(std::int32_t tracks) {
  std::vector<const CatalogueItem*> items;
  for (const CatalogueItem& item : catalogueItems()) {
    if (item.tracks == tracks) {
      items.push_back(&item);
    }
  }
  return items;
}

std::vector<PlacedService> placedServices(const std::vector<ResultService>& services) {
  std::vector<PlacedService> placed;
  placed.reserve(services.size());
  for (const ResultService& service : services) {
    placed.push_back({service.name == "EMCA" ? "Dolby E" : service.name, service.tracks});
  }
  return placed;
}

std::vector<PlacedService> placedServices(const CatalogueItem& item) {
  std::vector<PlacedService> placed;
  placed.reserve(item.placed.size());
  for (const ItemService& service : item.placed) {
    placed.push_back(service.placed);
  }
  return placed;
}

bool areEqual(const PlacedService& left, const PlacedService& right) {
  return left.name == right.name && left.tracks == right.tracks;
}

}  // namespace kestrel::host
