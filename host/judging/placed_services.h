// Services with the tracks that they take, as layouts of the catalogue and expected maps have them.
#pragma once

#include <vector>

#include "host/judging/catalogue_items.h"
#include "host/judging/result.h"

namespace kestrel::host {

/// A pair-coded service is named as the catalogue does, "Dolby E".
std::vector<PlacedService> placedServices(const std::vector<ResultService>& services);
std::vector<PlacedService> placedServices(const CatalogueItem& item);

bool areEqual(const PlacedService& left, const PlacedService& right);

}  // namespace kestrel::host
