#include "tests/exhaustive/catalogue_items.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "tests/library_under_test.h"

namespace kestrel::test {
namespace {

constexpr std::array<std::size_t, 5> kTracksOfType = {1, 2, 6, 8, 2};
constexpr std::array<std::size_t, 4> kStreamWidths = {1, 2, 6, 8};

std::vector<StreamType> streamTypesOf(ServiceMapItem item) {
  std::vector<StreamType> types(static_cast<std::size_t>(library().getStreamTypesCount(item)));
  library().getStreamTypes(item, types.data());
  return types;
}

std::string nameOf(StreamType type) {
  if (type == kDolbyE) return "EMCA";
  std::string name(static_cast<std::size_t>(library().getStreamTypeSymbolicLength(type)), ' ');
  name.resize(static_cast<std::size_t>(library().getStreamTypeSymbolic(type, name.data())));
  return name;
}

Item itemOf(ServiceMapItem id) {
  Item item{id, 0, {}, ""};
  std::string names;
  for (const StreamType type : streamTypesOf(id)) {
    const std::size_t tracks = kTracksOfType.at(static_cast<std::size_t>(type));
    item.services.push_back({type, item.trackCount, tracks, type == kDolbyE});
    item.trackCount += tracks;
    names += (names.empty() ? "" : ",") + nameOf(type);
  }
  item.description = "T" + std::to_string(item.trackCount) + "=" + names;
  return item;
}

void appendCuts(Cut& begun, std::size_t left, std::vector<Cut>& cuts) {
  if (left == 0) cuts.push_back(begun);
  for (const std::size_t width : kStreamWidths) {
    if (width > left) break;
    begun.push_back(width);
    appendCuts(begun, left - width, cuts);
    begun.pop_back();
  }
}

}  // namespace

const ItemService& Item::serviceOf(std::size_t track) const {
  const auto endsBehind = [track](const ItemService& service) {
    return track < service.firstTrack + service.trackCount;
  };
  return *std::find_if(services.begin(), services.end(), endsBehind);
}

std::size_t Item::codedServices() const {
  const auto isCoded = [](const ItemService& service) { return service.isCoded; };
  return static_cast<std::size_t>(std::count_if(services.begin(), services.end(), isCoded));
}

std::vector<Item> catalogueItems(std::size_t fewest, std::size_t most) {
  std::vector<Item> items;
  for (ServiceMapItem id = 0; id < NO_SERVICE_MAP_ITEM; ++id) {
    const Item item = itemOf(id);
    if (item.trackCount >= fewest && item.trackCount <= most) items.push_back(item);
  }
  return items;
}

std::vector<Cut> cutsOf(std::size_t trackCount) {
  std::vector<Cut> cuts;
  Cut begun;
  appendCuts(begun, trackCount, cuts);
  return cuts;
}

}  // namespace kestrel::test
