// The layouts of the catalogue as the exported queries tell them, each with its services, the
// description that asks for it, and the ways to cut its tracks into streams.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "api/catalogue_ids.h"

namespace kestrel::test {

struct ItemService {
  StreamType type = kMono;
  std::size_t firstTrack = 0;  ///< from 0
  std::size_t trackCount = 0;
  bool isCoded = false;  ///< a Dolby E pair, which a description calls EMCA
};

struct Item {
  ServiceMapItem id = 0;
  std::size_t trackCount = 0;
  std::vector<ItemService> services;
  std::string description;  ///< "T8=5.1 Mix,Stereo"

  const ItemService& serviceOf(std::size_t track) const;
  std::size_t codedServices() const;
};

/// Every item with a number of tracks from `fewest` to `most`.
std::vector<Item> catalogueItems(std::size_t fewest, std::size_t most);

/// The channel counts of the streams, first stream first.
using Cut = std::vector<std::size_t>;

/// Every way to cut so many tracks into streams of 1, 2, 6 and 8 channels.
std::vector<Cut> cutsOf(std::size_t trackCount);

}  // namespace kestrel::test
