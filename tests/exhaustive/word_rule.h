// The outcome of a call, predicted without walking slots and tracks side by side.
//
// A file reads as a word: "p" for each plain track, "E" for each run of coded tracks that belong
// together. So does an item: "p" for each track of a plain service, "E" for each coded service. The
// file carries the item when its counted tracks are the item's, when the item's word is the
// beginning of the file's, and when within each plain service all streams have the same format
// keys. Letter by letter the services then take their tracks.
//
// For carriers and their changes: plain streams have numbers of their own, and no layout begins
// with a coded service.
#pragma once

#include "tests/exhaustive/carrier.h"
#include "tests/exhaustive/catalogue_items.h"
#include "tests/plain/plain_service_map.h"

namespace kestrel::test {

plain::PlainResult predict(const Item& item, const Carrier& carrier);

}  // namespace kestrel::test
