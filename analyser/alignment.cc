// One cursor goes over the tracks while the services are walked in order.
#include "analyser/alignment.h"

#include <algorithm>

namespace kestrel {

namespace {

// Passes one run of pair-coded tracks of one group, of whatever length. A stream whose flag is on
// but not 1 meets a pair-coded service, yet starts no run: one track of it is passed.
bool passPairCoded(const FileTracks& tracks, TrackCursor& at) {
  if (tracks.atEnd(at) || tracks.info(at).isPairCoded == 0) return false;
  if (tracks.info(at).isPairCoded != 1) {
    at = tracks.advance(at, 1);
    return true;
  }
  const std::int32_t group = tracks.tracks(at).group;
  do {
    at = tracks.nextStream(at);
  } while (!tracks.atEnd(at) && tracks.info(at).isPairCoded == 1 &&
           tracks.tracks(at).group == group);
  return true;
}

bool passOrdinary(const FileTracks& tracks, TrackCursor& at, std::int32_t count) {
  while (count > 0) {
    if (tracks.atEnd(at) || tracks.info(at).isPairCoded != 0) return false;
    const std::int32_t step = std::min(count, tracks.restOfStream(at));
    at = tracks.advance(at, step);
    count -= step;
  }
  return true;
}

}  // namespace

bool servicesAlign(std::span<const ExpectedService> services, const FileTracks& tracks) noexcept {
  TrackCursor at = tracks.begin();
  return std::ranges::all_of(services, [&](const ExpectedService& service) {
    return service.isEmca ? passPairCoded(tracks, at)
                          : passOrdinary(tracks, at, service.trackCount);
  });
}

}  // namespace kestrel
