// The catalogue of layouts: which layouts exist for a number of tracks, and what each contains.
//
// Conventions of these functions:
// 1. Names are undecorated (C linkage). Ids are signed 32-bit integers: a row is 0 to 6, an item
//    (ServiceMapItem) 0 to 40, a stream type (StreamType) 0 to 4.
// 2. An unknown id raises std::out_of_range with the text "invalid map<K, T> key", unless the
//    function says otherwise. If there is no memory for that text, std::bad_alloc is raised
//    instead. Nothing else is raised.
// 3. A result of variable size takes two calls: one returns the size, the other fills the caller's
//    buffer. The buffer's size is neither passed nor checked. The buffer may be NULL: the filling
//    call then does not look the id up, and returns 0 if it returns a value.
// 4. The functions allocate nothing and keep no pointer of the caller. Any number of threads may
//    call them at once.
#pragma once

#include <cstdint>

#include "catalogue_ids.h"
#include "export.h"
#include "host_runtime.h"

namespace kestrel {
extern "C" {

/// Number of rows of the catalogue: 7.
KESTREL_EXPORT std::int64_t getRowCount();

/// Number of tracks that every item of the row fills: 2, 4, 6, 8, 10, 12 or 16.
KESTREL_EXPORT std::int64_t getTracksCount(std::int32_t row);

/// Number of items in the row, which is how many integers getServiceMapItems() writes.
KESTREL_EXPORT std::int64_t getServiceMapItemsCount(std::int32_t row);

/// Writes the row's item ids in list order and returns their number.
/// @param items  room for getServiceMapItemsCount(row) integers, or NULL (returns 0)
KESTREL_EXPORT std::int64_t getServiceMapItems(std::int32_t row, std::int32_t* items);

/// The row's default layout: the first item of its list.
KESTREL_EXPORT std::int32_t getDefaultServiceMapItem(std::int32_t row);

/// The row that contains the item. Returns 0 for an unknown item as well; never raises.
KESTREL_EXPORT std::int32_t getServiceMapItemRow(std::int32_t item);

/// Number of characters of the item's display name, without the terminating NUL.
KESTREL_EXPORT std::int64_t getServiceMapItemNameLength(std::int32_t item);

/// Writes the item's display name (ASCII) and its NUL.
/// @param name  room for getServiceMapItemNameLength(item) + 1 characters, or NULL (nothing is
/// done)
KESTREL_EXPORT void getServiceMapItemName(std::int32_t item, char* name);

/// Number of streams of the item, which is how many integers getStreamTypes() writes.
KESTREL_EXPORT std::int64_t getStreamTypesCount(std::int32_t item);

/// Writes the stream types of the item in track order and returns their number.
/// @param types  room for getStreamTypesCount(item) integers, or NULL (returns 0)
KESTREL_EXPORT std::int64_t getStreamTypes(std::int32_t item, std::int32_t* types);

}  // extern "C"
}  // namespace kestrel
