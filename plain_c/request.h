// Reads a request of the plain C interface and refuses what is not as the interface says.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "analyser/stream_list.h"
#include "api/kestrel.h"

namespace kestrel {

/// What a text that is not UTF-8 makes of a call.
struct BadText {
  std::size_t byte;
  std::int32_t stream;  // -1: a text of the request
};

/// Raised between the reading of a request and the barrier.
struct RefusedRequest {
  KestrelStatus status;
  BadText badText{0, -1};
};

/// A request whose texts are all there and UTF-8, and whose records have sizes that are known.
struct CheckedRequest {
  /// Raises RefusedRequest.
  explicit CheckedRequest(const KestrelRequest& request);

  std::string_view layoutDescription;
  std::string_view surroundChannelOrder;
  PlainCStreams streams;
  bool reportAll;
  bool surroundCheck;
};

}  // namespace kestrel
