#include "host/reading/media_reader.h"

namespace kestrel::host {

std::shared_ptr<const MediaReader> platformReader(const ReadingLimits& /*limits*/) {
  return nullptr;
}

std::vector<std::string> missingReaderWalls() { return {}; }

}  // namespace kestrel::host
