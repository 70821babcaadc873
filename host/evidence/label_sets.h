// Labels that belong together.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/evidence/tracks.h"

namespace kestrel::host {

/// One of L R C LFE Ls Rs.
bool isSurroundSetLabel(std::string_view label);

/// What the labels of some tracks make together.
enum class LabelSet {
  kNone,    ///< no track has a label
  k51,      ///< L R C LFE Ls Rs, each once
  k71,      ///< L R C LFE and four surround channels, all different
  kStereo,  ///< L R, or Lt Rt
  kMono,    ///< one label
  kOther,   ///< labels that make no set
};

LabelSet labelSet(const std::vector<std::string>& labels);

/// Whether the labels of a full 5.1 set stand in one of the orders that are in use.
bool isUsualOrder(const std::vector<std::string>& labels);

/// The labels of some tracks, in track order; an empty text for a track that has none.
std::vector<std::string> labelsOn(const TrackMap& map, const TrackNumbers& tracks);

}  // namespace kestrel::host
