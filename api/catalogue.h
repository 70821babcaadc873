// The catalogue of layouts: which layouts there are for a number of tracks, and what they hold.
//
// Conventions of these functions:
// 1. Names are undecorated (C linkage). Ids are signed 32-bit integers: a row is 0 to 6, an item
//    (ServiceMapItem) 0 to 40, a stream type (StreamType) 0 to 4.
// 2. An id that the catalogue does not hold raises std::out_of_range with the text
//    "invalid map<K, T> key", unless the function says otherwise. Nothing else is raised, but for
//    std::bad_alloc where there is no memory for that text.
// 3. A result of variable size takes two calls: one that tells the size, one that fills a buffer of
//    the caller. The buffer's size is not passed and not checked. A NULL buffer is allowed: the
//    filling call then returns (0 where it returns a value) without looking the id up.
// 4. Nothing is allocated and no pointer of the caller is kept. Every function may be called from
//    any number of threads at once.
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

/// Number of items in the row: how many integers getServiceMapItems() writes.
KESTREL_EXPORT std::int64_t getServiceMapItemsCount(std::int32_t row);

/// Writes the row's item ids in list order and returns how many were written.
/// @param items  room for getServiceMapItemsCount(row) integers, or NULL (returns 0)
KESTREL_EXPORT std::int64_t getServiceMapItems(std::int32_t row, std::int32_t* items);

/// The row's default layout: the first item of its list.
KESTREL_EXPORT std::int32_t getDefaultServiceMapItem(std::int32_t row);

/// The row that holds the item. Returns 0 for an unknown item too; never raises.
KESTREL_EXPORT std::int32_t getServiceMapItemRow(std::int32_t item);

/// Number of characters of the item's display name, without the terminating NUL.
KESTREL_EXPORT std::int64_t getServiceMapItemNameLength(std::int32_t item);

/// Writes the item's display name (ASCII) and its NUL.
/// @param name  room for getServiceMapItemNameLength(item) + 1 characters, or NULL (nothing is
/// done)
KESTREL_EXPORT void getServiceMapItemName(std::int32_t item, char* name);

/// Number of streams of the item: how many integers getStreamTypes() writes.
KESTREL_EXPORT std::int64_t getStreamTypesCount(std::int32_t item);

/// Writes the stream types of the item, first tracks first, and returns how many were written.
/// @param types  room for getStreamTypesCount(item) integers, or NULL (returns 0)
KESTREL_EXPORT std::int64_t getStreamTypes(std::int32_t item, std::int32_t* types);

}  // extern "C"
}  // namespace kestrel
