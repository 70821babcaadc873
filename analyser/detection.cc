#include "analyser/detection.h"

#include <algorithm>

namespace kestrel {

namespace {

// Passes one run of pair-coded tracks of one group, whatever its length. A stream whose flag is
// neither 0 nor 1 satisfies a pair-coded service but starts no run: one of its tracks is passed.
bool passPairCoded(const FileTracks& tracks, TrackCursor& at) {
  if (tracks.atEnd(at) || tracks.stream(at).isPairCoded == 0) return false;
  if (tracks.stream(at).isPairCoded != 1) {
    tracks.passInStream(at, 1);
    return true;
  }
  const std::int32_t group = tracks.stream(at).group;
  do {
    at = FileTracks::nextStream(at);
  } while (!tracks.atEnd(at) && tracks.stream(at).isPairCoded == 1 &&
           tracks.stream(at).group == group);
  return true;
}

// Passes the ordinary tracks that come next, at most `count`, and returns how many.
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
    tracks.passInStream(at, 1);
  }
  return checkSurroundLabels(labels);
}

// Appends a service whose tracks begin at the end of those given so far.
PlacedService& begin(const ExpectedService& service, Placement& placement) {
  PlacedService& placed = placement.services.emplace_back();
  placed.service = &service;
  placed.first = placement.end;
  return placed;
}

// A service that is not to be reported keeps the tracks that it was given, but no place in the
// list.
void dropUnreported(Placement& placement) {
  if (!placement.services.back().service->reported) placement.services.pop_back();
}

void placeOrdinary(const ExpectedService& service, const FileTracks& tracks, Placement& placement) {
  PlacedService& placed = begin(service, placement);
  if (service.streamType == k51Mix) {
    placed.labels = readLabels(tracks, placed.first);
    placed.takesHostsOrder = !placed.labels;
  }
  placed.trackCount = service.trackCount;
  placed.found = tracks.pass(placement.end, service.trackCount);
  dropUnreported(placement);
}

// One programme of a pair: the tracks of the group whose streams share their own group number.
void placeProgramme(const ExpectedService& service, const FileTracks& tracks, std::int32_t group,
                    Placement& placement) {
  PlacedService& placed = begin(service, placement);
  TrackCursor& at = placement.end;
  const std::int32_t ownGroup = tracks.stream(at).sourceGroup;
  while (!tracks.atEnd(at) && tracks.stream(at).group == group &&
         tracks.stream(at).sourceGroup == ownGroup) {
    placed.given += tracks.restOfStream(at);
    at = FileTracks::nextStream(at);
  }
  placed.found = static_cast<std::int32_t>(std::min<std::int64_t>(placed.given, kSlotCount));
  placed.trackCount = placed.found;
  dropUnreported(placement);
}

// A pair-coded service takes all tracks of the group that it meets. It looks only at groups, so it
// takes ordinary tracks of that group as well.
void placePair(const ExpectedService& service, const FileTracks& tracks, Placement& placement) {
  const TrackCursor& at = placement.end;
  if (tracks.atEnd(at) || tracks.stream(at).isPairCoded != 1) return;
  const std::int32_t group = tracks.stream(at).group;
  while (!tracks.atEnd(at) && tracks.stream(at).group == group)
    placeProgramme(service, tracks, group, placement);
}

}  // namespace

std::optional<Misalignment> findMisalignment(std::span<const ExpectedService> services,
                                             const FileTracks& tracks) noexcept {
  TrackCursor at;
  for (const ExpectedService& service : services) {
    if (service.isEmca) {
      if (!passPairCoded(tracks, at)) return Misalignment{&service, 0, at};
    } else {
      const std::int32_t passed = passOrdinary(tracks, at, service.trackCount);
      if (passed < service.trackCount) return Misalignment{&service, passed, at};
    }
  }
  return std::nullopt;
}

Placement placeServices(std::span<const ExpectedService> services, const FileTracks& tracks,
                        std::pmr::memory_resource* memory) {
  Placement placement{PlacedServices(memory), {}};
  placement.services.reserve(services.size());
  for (const ExpectedService& service : services) {
    if (service.isEmca) {
      placePair(service, tracks, placement);
    } else {
      placeOrdinary(service, tracks, placement);
    }
  }
  return placement;
}

// Tracks of one stream always agree. A missing track agrees with none, but a service of one track
// has no neighbours.
Disagreements findDisagreements(std::span<const PlacedService> placed, const FileTracks& tracks,
                                std::pmr::memory_resource* memory) {
  Disagreements found(memory);
  for (const PlacedService& service : placed) {
    if (service.service->isEmca || service.trackCount < 2) continue;
    TrackCursor right = service.first;
    for (std::int32_t slot = 0; slot < service.found;) {
      const TrackCursor left = right;
      slot += tracks.restOfStream(right);
      right = FileTracks::nextStream(right);
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
  for (TrackSlot& slot : slots.first(static_cast<std::size_t>(placed.found))) {
    slot = tracks.slot(at);
    tracks.passInStream(at, 1);
  }
}

}  // namespace kestrel
