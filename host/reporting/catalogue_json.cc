#include "host/reporting/catalogue_json.h"

#include <nlohmann/json.hpp>

#include "host/judging/catalogue_items.h"
#include "host/judging/layout_codes.h"

namespace kestrel::host {
namespace {

Json servicesOf(const CatalogueItem& item) {
  Json services = Json::array();
  for (const ItemService& service : item.placed) {
    services.push_back({{"name", service.placed.name}, {"tracks", service.placed.tracks}});
  }
  return services;
}

Json namedItem(std::int32_t id) {
  const CatalogueItem& item = catalogueItems().at(static_cast<std::size_t>(id));
  return {{"id", id}, {"name", item.item.name}, {"trackTotal", item.tracks}};
}

}  // namespace

Json catalogueJson() {
  Json items = Json::array();
  for (const CatalogueItem& item : catalogueItems()) {
    items.push_back({{"id", item.item.id},
                     {"name", item.item.name},
                     {"trackTotal", item.tracks},
                     {"services", servicesOf(item)},
                     {"codes", item.codes},
                     {"description", item.description}});
  }
  return items;
}

Json codesJson() {
  Json codes = Json::array();
  for (const LayoutCode& code : layoutCodes()) {
    const bool isAmbiguous = code.item != code.found;
    codes.push_back({{"code", code.code},
                     {"item", namedItem(code.item)},
                     {"otherItem", isAmbiguous ? namedItem(code.found) : Json(nullptr)}});
  }
  return codes;
}

}  // namespace kestrel::host
