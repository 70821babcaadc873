// The streams that carry an item's tracks under one cut. Each track has the label that its place in
// its service calls for; a stream's number is its first track's (from 1), its group differs from
// every number, and all format keys agree.
//
// A stream holds plain tracks, tracks of pair-coded services, or both. The last kind cannot be
// right whichever way it is marked, so both ways are made.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tests/exhaustive/catalogue_items.h"
#include "tests/plain/plain_service_map.h"

namespace kestrel::test {

/// The arguments of a call, with the item's own description.
using Carrier = plain::ServiceMapInput;

/// How the streams of one coded pair say that they belong together.
enum class Pairing {
  kByGroup,   ///< one number and one group: "3-3", "3-4"
  kByNumber,  ///< one number, a group for each stream
  kShared,    ///< the flag isPairShared, a number and a group for each stream
};

/// What a stream of plain and coded tracks is marked as.
enum class MixedStreams { kPlain, kCoded };

/// The surround channel order of every call; no file of these tests has its labels in this order.
inline constexpr wchar_t kOrderOfCall[] = L"Rs Ls LFE C R L";

/// One way to carry an item, right or not.
struct Way {
  Cut cut;
  Pairing pairing = Pairing::kByGroup;
  MixedStreams mixed = MixedStreams::kPlain;
};

Carrier carrierOf(const Item& item, const Way& way);

/// True when some stream holds both plain and coded tracks.
bool hasMixedStream(const Item& item, const Cut& cut);

/// Every way for an item: all cuts, and where the item has coded services, all pairings and, for
/// cuts with a mixed stream, both markings.
std::vector<Way> waysToCarry(const Item& item);

// --- Labels

std::vector<std::wstring> labelsOf(const AudioStreamInfo& stream);
void setLabels(AudioStreamInfo& stream, const std::vector<std::wstring>& labels);

/// The stream that holds a track, and the track's place in it.
struct Place {
  std::size_t stream = 0;
  std::size_t channel = 0;
};
Place placeOf(const Carrier& carrier, std::size_t track);

}  // namespace kestrel::test
