#include "host/judging/placed_services.h"

namespace kestrel::host {

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
