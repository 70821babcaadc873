// Names of streams and stream types, and the way back from texts to ids. The conventions are those
// of catalogue.h; texts are narrow, NUL-terminated and compared byte for byte. A NULL text matches
// nothing.
#pragma once

#include <cstdint>

#include "catalogue_ids.h"
#include "export.h"
#include "host_runtime.h"

namespace kestrel {
extern "C" {

/// Length of the name of the stream at a position of an item, WITHOUT the terminating NUL. The name
/// is that of its stream type, with a blank and an ordinal behind it where the item holds that type
/// more than once: "Stereo", "Mono 3".
/// @param position  0 .. getStreamTypesCount(item) - 1; another one raises std::out_of_range like
///                  an unknown item
KESTREL_EXPORT std::int64_t getStreamTypeNameLength(std::int32_t item, std::int32_t position);

/// Writes that name and its NUL.
/// @param name  room for getStreamTypeNameLength(item, position) + 1 characters; NULL: nothing is
///              done, and nothing is raised
KESTREL_EXPORT void getStreamTypeName(std::int32_t item, std::int32_t position, char* name);

/// The name of a stream type, NUL-terminated, in one text of the library that the next call of this
/// function overwrites, from whatever thread: the one function that threads must not call at once.
/// Raises std::out_of_range for an unknown type, and leaves the text as it was.
KESTREL_EXPORT const char* getStreamTypeSymbol(StreamType type);

/// Length of the name of a stream type, the terminating NUL COUNTED.
KESTREL_EXPORT std::int32_t getStreamTypeSymbolicLength(StreamType type);

/// Writes the name of a stream type and its NUL, and returns its length without the NUL.
/// @param name  room for getStreamTypeSymbolicLength(type) characters; not NULL
KESTREL_EXPORT std::int32_t getStreamTypeSymbolic(StreamType type, char* name);

/// The stream type with exactly this name; kUnknown (6) when there is none. Never raises.
KESTREL_EXPORT StreamType streamTypeFromStr(const char* name);

/// The first item whose stream types, as names joined by "," without blanks, are exactly this text:
/// "5.1 Mix,Stereo". NO_SERVICE_MAP_ITEM (41) when there is none. Never raises.
KESTREL_EXPORT ServiceMapItem serviceMapItemFromStr(const char* streamTypes);

}  // extern "C"
}  // namespace kestrel
