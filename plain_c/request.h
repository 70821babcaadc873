// Reads a request of the plain C interface and refuses one that breaks the rules of the interface.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <string_view>

#include "analyser/file_streams.h"
#include "api/kestrel.h"

namespace kestrel {

/// Raised when a request is refused.
struct RefusedRequest {
  KestrelStatus status;
  std::size_t badByte = 0;      // with KESTREL_BAD_TEXT, see kestrelAnalyse()
  std::int32_t badStream = -1;  // the same
};

/// A request whose texts are present and valid UTF-8, and whose records have known sizes.
struct CheckedRequest {
  /// Raises RefusedRequest or std::bad_alloc.
  CheckedRequest(const KestrelRequest& request, std::pmr::memory_resource* memory);

  std::string_view layoutDescription;
  std::string_view surroundChannelOrder;
  bool reportAll;
  bool surroundCheck;
  FileStreams streams;
};

}  // namespace kestrel
