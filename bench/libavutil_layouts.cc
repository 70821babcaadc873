#include "bench/libavutil_layouts.h"

#include <array>

extern "C" {
#include <libavutil/channel_layout.h>
}

namespace kestrel::bench {

int readCompareAndDescribeLayouts() {
  std::array<AVChannelLayout, 2> layouts{};
  av_channel_layout_from_string(&layouts[0], "5.1");
  av_channel_layout_from_string(&layouts[1], "stereo");
  int equal = 0;
  for (std::size_t pair = 0; pair < 8; ++pair)
    if (av_channel_layout_compare(&layouts[pair % 2], &layouts[pair / 4]) == 0) ++equal;
  std::array<char, 64> name{};
  for (AVChannelLayout& layout : layouts) {
    av_channel_layout_describe(&layout, name.data(), name.size());
    av_channel_layout_uninit(&layout);
  }
  return equal;
}

}  // namespace kestrel::bench
