// How a layout description is read, in words.
#pragma once

#include <string>

namespace kestrel::host {

struct LayoutExplanation {
  std::string text;
  bool isSound = false;  ///< every entry can be used and takes exactly its tracks
};

/// @param description  in UTF-8
LayoutExplanation explainLayout(const std::string& description);

}  // namespace kestrel::host
