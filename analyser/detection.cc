#include "analyser/detection.h"

#include <algorithm>

namespace kestrel {

namespace {

// Passes one run of pair-coded tracks of one group, of whatever length. A stream whose flag is on
// but not 1 meets a pair-coded service, yet starts no run: one track of it is passed.
bool passPairCoded(const FileTracks& tracks, TrackCursor& at) {
  if (tracks.atEnd(at) || tracks.stream(at).isPairCoded == 0) return false;
  if (tracks.stream(at).isPairCoded != 1) {
    tracks.pass(at, 1);
    return true;
  }
  const std::int32_t group = tracks.stream(at).group;
  do {
    at = FileTracks::nextStream(at);
  } while (!tracks.atEnd(at) && tracks.stream(at).isPairCoded == 1 &&
           tracks.stream(at).group == group);
  return true;
}

// Passes `count` ordinary tracks, or as many as there are, and returns how many.
std::int32_t passOrdinary(const FileTracks& tracks, TrackCursor& at, std::int32_t count) {
  std::int32_t passed = 0;
  while (passed < count && !tracks.atEnd(at) && tracks.stream(at).isPairCoded == 0)
    passed += tracks.passInStream(at, count - passed);
  return passed;
}

std::optional<SurroundOrder> readLabels(const FileTracks& tracks, TrackCursor at) {
  SurroundOrder labels{};
  for (SurroundLabel& label : labels) {
    if (tracks.atEnd(at)) return std::nullopt;
    label = tracks.label(at);
    tracks.pass(at, 1);
  }
  return checkSurroundLabels(labels);
}

PlacedService placeOrdinary(const ExpectedService& service, const FileTracks& tracks,
                            bool surroundCheck, TrackCursor& at) {
  PlacedService placed;
  placed.first = at;
  if (service.streamType == k51Mix) {
    if (surroundCheck) placed.labels = readLabels(tracks, at);
    placed.takesHostsOrder = !placed.labels;
  }
  placed.trackCount = service.trackCount;
  placed.found = tracks.pass(at, service.trackCount);
  placed.given = placed.found;
  return placed;
}

// One programme of a pair: the tracks of the group whose streams have the same own group.
PlacedService placeProgramme(const FileTracks& tracks, std::int32_t group, TrackCursor& at) {
  PlacedService placed;
  placed.first = at;
  placed.isEmca = true;
  const std::int32_t ownGroup = tracks.stream(at).sourceGroup;
  while (!tracks.atEnd(at) && tracks.stream(at).group == group &&
         tracks.stream(at).sourceGroup == ownGroup) {
    placed.given += tracks.restOfStream(at);
    at = FileTracks::nextStream(at);
  }
  placed.found = static_cast<std::int32_t>(std::min<std::int64_t>(placed.given, kSlotCount));
  placed.trackCount = placed.found;
  return placed;
}

}  // namespace

std::optional<Misalignment> findMisalignment(std::span<const ExpectedService> services,
                                             const FileTracks& tracks) noexcept {
  TrackCursor at;
  std::int32_t index = 0;
  for (const ExpectedService& service : services) {
    if (service.isEmca) {
      if (!passPairCoded(tracks, at)) return Misalignment{index, 0, at};
    } else {
      const std::int32_t passed = passOrdinary(tracks, at, service.trackCount);
      if (passed < service.trackCount) return Misalignment{index, passed, at};
    }
    ++index;
  }
  return std::nullopt;
}

// An ordinary service takes the next trackCount tracks. A pair-coded one takes all tracks of the
// group that it meets, as one placed service for each programme of the pair. It looks at groups
// alone, so an ordinary track of that group is taken too.
Placement placeServices(std::span<const ExpectedService> services, const FileTracks& tracks,
                        bool surroundCheck, std::pmr::memory_resource* memory) {
  Placement placement{PlacedServices(memory), {}};
  placement.services.reserve(services.size());
  TrackCursor& at = placement.end;
  std::int32_t index = 0;
  for (const ExpectedService& service : services) {
    const auto keep = [&](PlacedService placed) {
      placed.service = index;
      if (service.reported) placement.services.push_back(placed);
    };
    if (!service.isEmca) {
      keep(placeOrdinary(service, tracks, surroundCheck, at));
    } else if (!tracks.atEnd(at) && tracks.stream(at).isPairCoded == 1) {
      const std::int32_t group = tracks.stream(at).group;
      while (!tracks.atEnd(at) && tracks.stream(at).group == group)
        keep(placeProgramme(tracks, group, at));
    }
    ++index;
  }
  return placement;
}

// Tracks of one stream always agree. A missing track agrees with nothing, but a service of one
// track has no neighbours.
Disagreements findDisagreements(std::span<const PlacedService> placed, const FileTracks& tracks,
                                std::pmr::memory_resource* memory) {
  Disagreements found(memory);
  for (const PlacedService& service : placed) {
    if (service.isEmca || service.trackCount < 2) continue;
    TrackCursor right = service.first;
    for (std::int32_t slot = 0; slot < service.found;) {
      const TrackCursor left = right;
      slot += tracks.passInStream(right, service.found - slot);
      if (slot < service.found && tracks.stream(left).formatKeys != tracks.stream(right).formatKeys)
        found.push_back({service.service, slot, left, right});
    }
    if (service.found < service.trackCount)
      found.push_back({service.service, service.found, right, right});
  }
  return found;
}

void fillSlots(const PlacedService& placed, const FileTracks& tracks,
               std::span<TrackSlot, kSlotCount> slots) {
  TrackCursor at = placed.first;
  for (std::int32_t slot = 0; slot < placed.found; ++slot) {
    slots[static_cast<std::size_t>(slot)] = tracks.slot(at);
    tracks.pass(at, 1);
  }
}

}  // namespace kestrel
