// The test that neighbouring tracks of one service must pass.
#pragma once

#include "api/audio_stream_info.h"

namespace kestrel {

/// Whether two streams agree in all three format keys.
inline bool tracksCompatible(const AudioStreamInfo& a, const AudioStreamInfo& b) noexcept {
  return a.formatKey1 == b.formatKey1 && a.formatKey2 == b.formatKey2 &&
         a.formatKey3 == b.formatKey3;
}

}  // namespace kestrel
