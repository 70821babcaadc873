// Names of streams and stream types, and the conversion of texts back to ids. The conventions are
// those of catalogue.h. Texts are narrow, NUL-terminated and compared byte by byte. A NULL text
// matches nothing.
#pragma once

#include <cstdint>

#include "catalogue_ids.h"
#include "export.h"
#include "host_runtime.h"

namespace kestrel {
extern "C" {

/// Length of the name of the stream at a position of an item, WITHOUT the terminating NUL. The name
/// is that of the stream type; if the item contains the type more than once, a blank and an ordinal
/// follow: "Stereo", "Mono 3".
/// @param position  0 .. getStreamTypesCount(item) - 1; any other raises std::out_of_range, as an
///                  unknown item does
KESTREL_EXPORT std::int64_t getStreamTypeNameLength(std::int32_t item, std::int32_t position);

/// Writes that name and its NUL.
/// @param name  room for getStreamTypeNameLength(item, position) + 1 characters; if NULL, nothing
///              is done and nothing is raised
KESTREL_EXPORT void getStreamTypeName(std::int32_t item, std::int32_t position, char* name);

/// The name of a stream type, NUL-terminated. The text belongs to the library, and the next call of
/// this function overwrites it, whichever thread makes it. Threads must not call this one function
/// at once. An unknown type raises std::out_of_range and leaves the text unchanged.
KESTREL_EXPORT const char* getStreamTypeSymbol(StreamType type);

/// Length of the name of a stream type, INCLUDING the terminating NUL.
KESTREL_EXPORT std::int32_t getStreamTypeSymbolicLength(StreamType type);

/// Writes the name of a stream type and its NUL, and returns its length without the NUL.
/// @param name  room for getStreamTypeSymbolicLength(type) characters; not NULL
KESTREL_EXPORT std::int32_t getStreamTypeSymbolic(StreamType type, char* name);

/// The stream type with exactly this name; kUnknown (6) if there is none. Never raises.
KESTREL_EXPORT StreamType streamTypeFromStr(const char* name);

/// The first item whose stream types, written as names joined by "," without blanks, are exactly
/// this text: "5.1 Mix,Stereo". NO_SERVICE_MAP_ITEM (41) if there is none. Never raises.
KESTREL_EXPORT ServiceMapItem serviceMapItemFromStr(const char* streamTypes);

}  // extern "C"
}  // namespace kestrel
