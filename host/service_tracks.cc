#include "host/service_tracks.h"

#include <fmt/format.h>

#include <algorithm>
#include <span>

#include "host/utf8.h"

namespace kestrel::host {
namespace {

using Slots = std::span<const TrackSlot>;

// The neighbouring slots from the front that one stream carries.
Slots takeStream(Slots& slots) {
  const std::int32_t stream = slots.front().sourceGroup;
  const auto other = std::ranges::find_if(
      slots, [stream](const TrackSlot& slot) { return slot.sourceGroup != stream; });
  const auto count = static_cast<std::size_t>(other - slots.begin());
  const Slots taken = slots.first(count);
  slots = slots.subspan(count);
  return taken;
}

std::string streamPart(Slots part, const MappedMedia& media) {
  const auto index = static_cast<std::size_t>(part.front().sourceGroup);
  const AudioStreamInfo& stream = media.streams.at(index);
  std::string id = printable(media.shown.at(index).id);
  if (stream.isPairCoded != 0) {
    return fmt::format("{} ({} channels)", id, part.size());
  }
  if (stream.channelCount == 1) {
    return id;
  }
  const std::int32_t first = part.front().indexInGroup + 1;
  const std::int32_t last = part.back().indexInGroup + 1;
  return first == last ? fmt::format("{} channel {}", id, first)
                       : fmt::format("{} channels {}-{}", id, first, last);
}

}  // namespace

std::string serviceTracks(const ServiceMapResult& service, const MappedMedia& media) {
  const std::int32_t count = std::clamp(service.trackCount, 0, kSlotCount);
  Slots slots = Slots(service.slots).first(static_cast<std::size_t>(count));
  std::string text;
  while (!slots.empty()) {
    text += text.empty() ? "" : ", ";
    text += streamPart(takeStream(slots), media);
  }
  return text;
}

}  // namespace kestrel::host
