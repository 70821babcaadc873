// The library's catalogue as the host needs it: items with their services and the texts for them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/judging/result.h"

namespace kestrel::host {

/// One service of an item, on its tracks from 1 on.
struct ItemService {
  std::int32_t type = 0;  ///< a stream type of the library
  PlacedService placed;
};

struct CatalogueItem {
  NamedItem item;
  std::int32_t tracks = 0;
  std::string services;     ///< "5.1 Mix,Stereo"
  std::string description;  ///< "T8=5.1 Mix,Stereo"; Dolby E is "EMCA" in it
  std::vector<ItemService> placed;
  std::vector<std::string> codes;  ///< the EBU R 123 codes that stand for it
};

/// All items, by id. Made at the first call.
const std::vector<CatalogueItem>& catalogueItems();

/// The items of a track total, in the catalogue's order.
std::vector<const CatalogueItem*> itemsOfTotal(std::int32_t tracks);

/// A pair-coded service is named as the catalogue does, "Dolby E".
std::vector<PlacedService> placedServices(const std::vector<ResultService>& services);
std::vector<PlacedService> placedServices(const CatalogueItem& item);

bool areEqual(const PlacedService& left, const PlacedService& right);

}  // namespace kestrel::host
