// One service that was found on a file's tracks, as the library returns it to the host.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "host_runtime.h"

namespace kestrel {

/// One track of a service. An unused slot holds -1 in every field.
struct TrackSlot {
  std::int64_t trackNumber = -1;   ///< track number of the stream that carries the track
  std::int32_t group = -1;         ///< the track's group, once pair-coded streams are joined
  std::int32_t sourceGroup = -1;   ///< the stream's own group
  std::int32_t indexInGroup = -1;  ///< the track's 0-based index within its group
};

/// Number of slots in a ServiceMapResult.
inline constexpr std::int32_t kSlotCount = 32;

struct ServiceMapResult {
  /// One slot per track of the service, in order; the rest are unused.
  std::array<TrackSlot, kSlotCount> slots{};
  /// Number of tracks of the service, at most 32; -1 for a service of unknown name.
  std::int32_t trackCount = 0;
  std::uint8_t reported = 0;   ///< 1: the service is to be reported
  std::uint8_t isEmca = 0;     ///< 1: the service is pair-coded ("EMCA")
  std::uint8_t requested = 0;  ///< with reportAll: 1 if the element has no leading "-"
  /// For a 5.1 Mix: the labels found on the tracks, else the surround channel order of the call.
  std::wstring label;
};

static_assert(sizeof(TrackSlot) == 24);
static_assert(offsetof(TrackSlot, trackNumber) == 0);
static_assert(offsetof(TrackSlot, group) == 8);
static_assert(offsetof(TrackSlot, sourceGroup) == 12);
static_assert(offsetof(TrackSlot, indexInGroup) == 16);

static_assert(sizeof(ServiceMapResult) == 808);
static_assert(offsetof(ServiceMapResult, slots) == 0);
static_assert(offsetof(ServiceMapResult, trackCount) == 768);
static_assert(offsetof(ServiceMapResult, reported) == 772);
static_assert(offsetof(ServiceMapResult, isEmca) == 773);
static_assert(offsetof(ServiceMapResult, requested) == 774);
static_assert(offsetof(ServiceMapResult, label) == 776);

}  // namespace kestrel
