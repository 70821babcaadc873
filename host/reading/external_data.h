// Whether the tracks of a MOV or MP4 file have their sound and pictures in other files, which
// libmediainfo does not always say.
#pragma once

#include "host/reading/input_file.h"

namespace kestrel::host {

/// Looks at the data references of all tracks (ISO/IEC 14496-12, 8.7.2) and for a reference movie
/// of QuickTime. False for files of another kind. Raises NotExamined when the file cannot be read.
bool hasExternalData(const InputFile& file);

}  // namespace kestrel::host
