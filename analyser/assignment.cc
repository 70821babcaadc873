// An ordinary service takes the next trackCount tracks. An EMCA service takes all tracks of the
// group that it meets, one finding for each run of tracks with the same own group: the programmes
// of a pair. It looks at groups alone, so an ordinary track of that group is taken too.
#include "analyser/assignment.h"

#include <algorithm>

#include "api/service_map_result.h"

namespace kestrel {

bool Assignment::next() noexcept {
  while (nextService_ < services_.size()) {
    const ExpectedService& service = services_[nextService_];
    if (service.isEmca && takeProgramme(service)) {
      if (service.reported) return true;
      continue;
    }
    ++nextService_;
    if (service.isEmca) continue;
    takeTracks(service);
    if (service.reported) return true;
  }
  return false;
}

// Takes one programme of the service's group; false when the service has none (left).
bool Assignment::takeProgramme(const ExpectedService& service) {
  if (!emcaGroup_ && !tracks_.atEnd(at_) && tracks_.tracks(at_).isPairCoded == 1)
    emcaGroup_ = tracks_.tracks(at_).group;
  const auto inGroup = [&] {
    return emcaGroup_ && !tracks_.atEnd(at_) && tracks_.tracks(at_).group == *emcaGroup_;
  };
  if (!inGroup()) {
    emcaGroup_.reset();
    return false;
  }
  const TrackCursor first = at_;
  const std::int32_t ownGroup = tracks_.tracks(at_).sourceGroup;
  std::int64_t count = 0;
  for (; inGroup() && tracks_.tracks(at_).sourceGroup == ownGroup; at_ = at_.nextStream())
    count += tracks_.restOfStream(at_);
  const auto slots = static_cast<std::int32_t>(std::min<std::int64_t>(count, kSlotCount));
  finding_.service = &service;
  finding_.labels.reset();
  finding_.trackCount = finding_.found = slots;
  finding_.given = count;
  finding_.first = first;
  return true;
}

void Assignment::takeTracks(const ExpectedService& service) {
  finding_.service = &service;
  finding_.labels.reset();
  if (surroundCheck_ && service.streamType == k51Mix) finding_.labels = labelReader_.read(at_);
  finding_.trackCount = service.trackCount;
  finding_.first = at_;
  finding_.found = tracks_.pass(at_, service.trackCount);
  finding_.given = finding_.found;
}

}  // namespace kestrel
