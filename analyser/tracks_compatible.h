// The test that neighbouring tracks of one service must pass.
#pragma once

namespace kestrel {

/// Whether two streams agree in all three format keys.
template <class Stream>
bool tracksCompatible(const Stream& a, const Stream& b) noexcept {
  return a.formatKey1 == b.formatKey1 && a.formatKey2 == b.formatKey2 &&
         a.formatKey3 == b.formatKey3;
}

}  // namespace kestrel
