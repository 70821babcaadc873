#include "host/evidence/label_sets.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace kestrel::host {
namespace {

constexpr std::array<std::string_view, 6> kSurroundSet = {"L", "R", "C", "LFE", "Ls", "Rs"};

constexpr std::array<std::string_view, 4> kFront = {"L", "R", "C", "LFE"};
constexpr std::array<std::string_view, 8> kSurrounds = {"Ls",  "Rs",  "Lss", "Rss",
                                                        "Lrs", "Rrs", "Lb",  "Rb"};

// Of delivery (SMPTE), film, DTS, AAC and Dolby E.
constexpr std::array<std::string_view, 5> kUsualOrders = {
    "L R C LFE Ls Rs", "L C R Ls Rs LFE", "L R Ls Rs C LFE", "C L R Ls Rs LFE", "L C Ls R LFE Rs"};

using Labels = std::vector<std::string>;

bool holdsSurroundSet(const Labels& labels) {
  return std::ranges::all_of(
      kSurroundSet, [&](std::string_view label) { return std::ranges::count(labels, label) == 1; });
}

bool isStereo(const Labels& labels) {
  return labels == Labels{"L", "R"} || labels == Labels{"Lt", "Rt"};
}

// L R C LFE and four surround channels, all different.
bool holds71Set(Labels labels) {
  std::ranges::sort(labels);
  const bool haveFront = std::ranges::all_of(
      kFront, [&](std::string_view label) { return std::ranges::binary_search(labels, label); });
  const auto surrounds = std::ranges::count_if(labels, [](const std::string& label) {
    return std::ranges::find(kSurrounds, label) != kSurrounds.end();
  });
  return haveFront && surrounds == 4 && std::ranges::adjacent_find(labels) == labels.end();
}

}  // namespace

bool isSurroundSetLabel(std::string_view label) {
  return std::ranges::find(kSurroundSet, label) != kSurroundSet.end();
}

LabelSet labelSet(const std::vector<std::string>& labels) {
  if (std::ranges::all_of(labels, &std::string::empty)) {
    return LabelSet::kNone;
  }
  if (labels.size() == 6 && holdsSurroundSet(labels)) {
    return LabelSet::k51;
  }
  if (labels.size() == 8 && holds71Set(labels)) {
    return LabelSet::k71;
  }
  if (isStereo(labels)) {
    return LabelSet::kStereo;
  }
  return labels.size() == 1 ? LabelSet::kMono : LabelSet::kOther;
}

bool isUsualOrder(const std::vector<std::string>& labels) {
  const std::string joined = fmt::format("{}", fmt::join(labels, " "));
  return std::ranges::find(kUsualOrders, joined) != kUsualOrders.end();
}

std::vector<std::string> labelsOn(const TrackMap& map, const TrackNumbers& tracks) {
  std::vector<std::string> labels;
  for (const std::int32_t number : tracks) {
    labels.push_back(map.tracks.at(static_cast<std::size_t>(number - 1)).label);
  }
  return labels;
}

}  // namespace kestrel::host
