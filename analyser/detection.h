// Matches expected services with the tracks of a file in three steps: the services must line up
// with the tracks, each service is then given its tracks, and neighbouring tracks of one service
// must agree.
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

/// The place where services and tracks stop lining up.
struct Misalignment {
  const ExpectedService* service = nullptr;  // the service that does not fit
  std::int32_t slot = 0;                     // its first track that does not fit
  TrackCursor at;  // the track found instead; the end of the tracks if the file has no more
};

/// A service to be reported and the consecutive tracks that it was given.
struct PlacedService {
  const ExpectedService* service = nullptr;
  std::int32_t trackCount = 0;  // as reported: at most 32; -1 for a service of unknown name
  std::int32_t found = 0;       // tracks that fill slots, at most trackCount
  std::int64_t given = 0;       // of a pair-coded service: tracks given, which may be more
  TrackCursor first;            // the first of them
  // A 5.1 Mix takes the labels of its tracks if these are a full set, else the host's order.
  std::optional<SurroundOrder> labels;
  bool takesHostsOrder = false;
};

using PlacedServices = std::pmr::vector<PlacedService>;

/// Two neighbouring tracks of one placed service that do not agree.
struct Disagreement {
  const ExpectedService* service = nullptr;
  std::int32_t slot = 0;  // of the right-hand track
  TrackCursor left;
  TrackCursor right;  // the end of the tracks if the file has no more
};

using Disagreements = std::pmr::vector<Disagreement>;

/// The first place where the services do not line up with the tracks. Each pair-coded service needs
/// a run of pair-coded tracks of one group, each other service as many ordinary tracks as it
/// occupies. Further tracks are allowed, and a service of unknown name takes no track.
std::optional<Misalignment> findMisalignment(std::span<const ExpectedService> services,
                                             const FileTracks& tracks) noexcept;

struct Placement {
  PlacedServices services;  // those to be reported, in order
  TrackCursor end;          // the first track that was given to no service
};

/// Gives the services their tracks, in order. A service that gets too few keeps its trackCount.
/// Reads the labels of 5.1 mixes from the tracks, if the streams have any. Raises std::bad_alloc.
Placement placeServices(std::span<const ExpectedService> services, const FileTracks& tracks,
                        std::pmr::memory_resource* memory);

/// All disagreements, in the order of the services and their tracks. Pair-coded services have none.
/// Raises std::bad_alloc.
Disagreements findDisagreements(std::span<const PlacedService> placed, const FileTracks& tracks,
                                std::pmr::memory_resource* memory);

/// Writes one slot for each track that a service was given.
void fillSlots(const PlacedService& placed, const FileTracks& tracks,
               std::span<TrackSlot, kSlotCount> slots);

}  // namespace kestrel
