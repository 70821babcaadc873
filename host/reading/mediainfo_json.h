// The JSON that `mediainfo --Output=JSON -f FILE...` prints, as raw media.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/reading/raw_media.h"

namespace kestrel::host {

/// A longer text is not taken: some thousand files with all their fields.
inline constexpr std::size_t kLongestMediainfoJson = 64U << 20;

struct NamedMedia {
  std::string file;  ///< as it was given to mediainfo
  RawMedia media;
};

/// One element for each file of the text. Raises NotExamined when the text is something else.
std::vector<NamedMedia> mediaFromMediainfoJson(std::string_view text);

}  // namespace kestrel::host
