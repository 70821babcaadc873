#include "host/reading/media_reader.h"

namespace kestrel::host {

std::shared_ptr<const MediaReader> platformReader(std::chrono::milliseconds /*timeLimit*/) {
  return nullptr;
}

}  // namespace kestrel::host
