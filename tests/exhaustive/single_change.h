// Every change of one track of a carrier, and what each must do to the result, as rules in one line
// each. A format key, the pair coding and the place in the order belong to the stream that holds
// the track, so those changes are made once for each stream.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "tests/exhaustive/carrier.h"
#include "tests/exhaustive/catalogue_items.h"
#include "tests/plain/plain_service_map.h"

namespace kestrel::test {

enum class ChangeKind {
  kLabelUnknown,   ///< the track's label is one that no service has
  kLabelRepeated,  ///< it is that of the neighbour
  kLabelMissing,   ///< it is gone, and those behind it in the stream move up
  kLabelsSwapped,  ///< the track and the next have each other's
  kFormatKey1,
  kFormatKey2,
  kFormatKey3,
  kPairCoding,      ///< on becomes off, off becomes on
  kStreamsSwapped,  ///< the stream and the next stand in each other's place
};

const char* nameOf(ChangeKind kind);

inline bool isOfLabels(ChangeKind kind) { return kind <= ChangeKind::kLabelsSwapped; }

struct Change {
  ChangeKind kind = ChangeKind::kLabelUnknown;
  std::size_t at = 0;  ///< the track for a change of labels, else the stream
};

std::vector<Change> changesOf(const Item& item, const Carrier& carrier);

Carrier changed(const Item& item, const Carrier& carrier, const Change& change);

/// How a result differs from that of the unchanged carrier.
enum class Effect { kUntouched, kEmptied, kSameRecords, kOtherLabels, kOtherTracks };

const char* nameOf(Effect effect);

Effect effectOf(const plain::PlainResult& before, const plain::PlainResult& after);

/// The effect that a change must have; nothing where it depends on more than one line can say.
std::optional<Effect> ruleFor(const Item& item, const Carrier& carrier, bool carries,
                              const Change& change);

}  // namespace kestrel::test
