// How expected services meet the tracks of a file, in three steps: the services must line up with
// the tracks, each then receives its tracks, and neighbouring tracks of one service must agree.
#pragma once

#include <cstdint>
#include <memory_resource>
#include <optional>
#include <span>
#include <vector>

#include "analyser/expected_services.h"
#include "analyser/file_tracks.h"
#include "analyser/surround_labels.h"
#include "api/service_map_result.h"

namespace kestrel {

/// Where services and tracks stop lining up.
struct Misalignment {
  const ExpectedService* service = nullptr;  // which does not meet what it should
  std::int32_t slot = 0;                     // and which of its tracks
  TrackCursor at;  // what it meets instead; the end of the tracks if the file lacks one
};

/// A service to be reported and the consecutive tracks that it was given.
struct PlacedService {
  const ExpectedService* service = nullptr;
  std::int32_t trackCount = 0;  // as reported: at most 32; -1 for a service of unknown name
  std::int32_t found = 0;       // tracks that fill slots, at most trackCount
  std::int64_t given = 0;       // tracks really given: a long pair-coded run has more than slots
  TrackCursor first;            // the first of them
  // A 5.1 Mix is labelled by its tracks if these have a full set, else by the host's order.
  std::optional<SurroundOrder> labels;
  bool takesHostsOrder = false;
};

using PlacedServices = std::pmr::vector<PlacedService>;

/// Two neighbouring tracks of one placed service that do not go together.
struct Disagreement {
  const ExpectedService* service = nullptr;
  std::int32_t slot = 0;  // of the right-hand track
  TrackCursor left;
  TrackCursor right;  // the end of the tracks if the file lacks one
};

using Disagreements = std::pmr::vector<Disagreement>;

/// The first place where the services do not line up with the tracks. Each pair-coded service must
/// meet a run of pair-coded tracks of one group, each other service as many ordinary tracks as it
/// occupies. Tracks left over do no harm, and a service of unknown name takes no track.
std::optional<Misalignment> findMisalignment(std::span<const ExpectedService> services,
                                             const FileTracks& tracks) noexcept;

struct Placement {
  PlacedServices services;  // those to be reported, in order
  TrackCursor end;          // the first track that no service was given
};

/// Gives the services their tracks, in order. A service that finds too few keeps its trackCount.
/// With surroundCheck the labels of 5.1 mixes are read off the tracks. Raises std::bad_alloc.
Placement placeServices(std::span<const ExpectedService> services, const FileTracks& tracks,
                        bool surroundCheck, std::pmr::memory_resource* memory);

/// All disagreements, in the order of the services and their tracks. Pair-coded services have none.
/// Raises std::bad_alloc.
Disagreements findDisagreements(std::span<const PlacedService> placed, const FileTracks& tracks,
                                std::pmr::memory_resource* memory);

/// Writes one slot for each track that a service was given.
void fillSlots(const PlacedService& placed, const FileTracks& tracks,
               std::span<TrackSlot, kSlotCount> slots);

}  // namespace kestrel
