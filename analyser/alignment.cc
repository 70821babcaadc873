// One cursor goes over the tracks while the services are walked in order.
#include "analyser/alignment.h"

#include <algorithm>

namespace kestrel {

namespace {

// Passes one run of pair-coded tracks of one group, of whatever length. A stream whose flag is on
// but not 1 meets a pair-coded service, yet starts no run: one track of it is passed.
bool passPairCoded(const FileTracks& tracks, TrackCursor& at) {
  if (tracks.atEnd(at) || tracks.tracks(at).isPairCoded == 0) return false;
  if (tracks.tracks(at).isPairCoded != 1) {
    at = tracks.advance(at, 1);
    return true;
  }
  const std::int32_t group = tracks.tracks(at).group;
  do {
    at = at.nextStream();
  } while (!tracks.atEnd(at) && tracks.tracks(at).isPairCoded == 1 &&
           tracks.tracks(at).group == group);
  return true;
}

// Passes `count` ordinary tracks, or as many as there are, and returns how many.
std::int32_t passOrdinary(const FileTracks& tracks, TrackCursor& at, std::int32_t count) {
  std::int32_t passed = 0;
  while (passed < count && !tracks.atEnd(at) && tracks.tracks(at).isPairCoded == 0) {
    const std::int32_t step = std::min(count - passed, tracks.restOfStream(at));
    passed += step;
    at = tracks.behind(at, step);
  }
  return passed;
}

}  // namespace

std::optional<Misalignment> findMisalignment(std::span<const ExpectedService> services,
                                             const FileTracks& tracks) noexcept {
  TrackCursor at;
  for (std::size_t i = 0; i < services.size(); ++i) {
    const ExpectedService& service = services[i];
    if (service.isEmca) {
      if (!passPairCoded(tracks, at)) return Misalignment{i, 0, at};
    } else {
      const std::int32_t passed = passOrdinary(tracks, at, service.trackCount);
      if (passed < service.trackCount) return Misalignment{i, passed, at};
    }
  }
  return std::nullopt;
}

}  // namespace kestrel
