// What an analysis of the plain C interface keeps: all that a host may ask for, in one block of
// memory of just that size. The analyser itself ends with the call that made it.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "analyser/file_tracks.h"
#include "analyser/surround_labels.h"
#include "api/catalogue_ids.h"
#include "api/kestrel.h"
#include "plain_c/request.h"

namespace kestrel {

/// A service that was found.
struct KeptService {
  TrackCursor first;
  std::int32_t found = 0;       // tracks that fill slots
  std::int32_t trackCount = 0;  // as reported
  std::int32_t index = 0;       // element of the description's entry
  StreamType streamType = kUnknown;
  bool isEmca = false;
  bool requested = false;
  // Ends with a NUL; empty where the request's surround channel order holds.
  std::array<char, kSurroundTextLength + 1> derivedLabel{};
};

}  // namespace kestrel

/// Everything in it points into the block that it begins.
struct KestrelAnalysis {
  std::string_view layoutDescription;  // with a NUL behind it, as the order
  std::string_view surroundChannelOrder;
  std::span<const kestrel::KeptService> services;
  kestrel::TrackList tracks;  // of the services
  std::span<const KestrelFinding> findings;
  std::uint32_t trackTotal = 0;
  std::int32_t outcome = KESTREL_UNTOUCHED;
};

namespace kestrel {

/// Analyses a request. The result is to be freed by freeAnalysis(). Raises std::bad_alloc.
KestrelAnalysis* makeAnalysis(const CheckedRequest& request);

/// NULL is allowed.
void freeAnalysis(KestrelAnalysis* analysis) noexcept;

}  // namespace kestrel
