// From what a reader says about a file to the records that the library takes. Pure: no file, no
// reader library, nothing remembered.
#pragma once

#include "host/evidence/tracks.h"
#include "host/reading/media_facts.h"

namespace kestrel::host {

MappedMedia mapMedia(const RawMedia& media);

}  // namespace kestrel::host
