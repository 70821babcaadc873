#include "host/evidence/track_labels.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "host/basics/text_parts.h"

namespace kestrel::host {
namespace {

constexpr std::string_view kInventedPrefix = "EBU R ";

// The reader writes "own / derived" where AS-11 metadata declares a layout. Where the file has no
// labels of its own, the reader fills in its own table of codes, which is wrong for some: for these
// it writes the code first, or shows it in the id of the layout.
std::string_view ownLayout(const RawAudioStream& raw, bool isPairCoded) {
  const std::string_view layout = raw.channelLayout;
  const std::size_t slash = layout.find(" / ");
  const bool isInvented = slash == std::string_view::npos && !isPairCoded &&
                          raw.channelLayoutId.starts_with(kInventedPrefix);
  if (layout.starts_with(kInventedPrefix) || isInvented) {
    return {};
  }
  return layout.substr(0, slash);
}

bool isSurroundLabel(const std::string& label) {
  constexpr std::array<std::string_view, 4> kSurround = {"Ls", "Rs", "Lss", "Rss"};
  return std::ranges::find(kSurround, label) != kSurround.end();
}

bool hasSurroundLabel(const TrackLabels& labels) {
  return std::ranges::any_of(labels, isSurroundLabel);
}

void renameBackLabels(TrackLabels& labels) {
  for (std::string& label : labels) {
    label = label == "Lb" ? "Ls" : label == "Rb" ? "Rs" : label;
  }
}

constexpr std::array<std::string_view, 6> kSurroundSet = {"L", "R", "C", "LFE", "Ls", "Rs"};

constexpr std::array<std::string_view, 4> kFront = {"L", "R", "C", "LFE"};
constexpr std::array<std::string_view, 8> kSurrounds = {"Ls",  "Rs",  "Lss", "Rss",
                                                        "Lrs", "Rrs", "Lb",  "Rb"};

// Of delivery (SMPTE), film, DTS, AAC and Dolby E.
constexpr std::array<std::string_view, 5> kUsualOrders = {
    "L R C LFE Ls Rs", "L C R Ls Rs LFE", "L R Ls Rs C LFE", "C L R Ls Rs LFE", "L C Ls R LFE Rs"};

bool holdsSurroundSet(const TrackLabels& labels) {
  return std::ranges::all_of(
      kSurroundSet, [&](std::string_view label) { return std::ranges::count(labels, label) == 1; });
}

bool isStereo(const TrackLabels& labels) {
  return labels == TrackLabels{"L", "R"} || labels == TrackLabels{"Lt", "Rt"};
}

// L R C LFE and four surround channels, all different.
bool holds71Set(TrackLabels labels) {
  std::ranges::sort(labels);
  const bool haveFront = std::ranges::all_of(
      kFront, [&](std::string_view label) { return std::ranges::binary_search(labels, label); });
  const auto surrounds = std::ranges::count_if(labels, [](const std::string& label) {
    return std::ranges::find(kSurrounds, label) != kSurrounds.end();
  });
  return haveFront && surrounds == 4 && std::ranges::adjacent_find(labels) == labels.end();
}

}  // namespace

TrackLabels labelsInFile(const LabelSource& source) {
  std::vector<std::string_view> tokens = splitAtBlanks(ownLayout(source.raw, source.isPairCoded));
  const auto count = static_cast<std::size_t>(source.channelCount);
  if (source.isPairCoded) {
    std::erase(tokens, "X");  // the places of the pair's other programmes
  } else if (source.splitChannel && count == 1 && tokens.size() > 1) {
    const auto channel = static_cast<std::size_t>(*source.splitChannel);
    const bool isInLayout = channel >= 1 && channel <= tokens.size();
    tokens = isInLayout ? std::vector{tokens[channel - 1]} : std::vector<std::string_view>{};
  }
  if (tokens.size() != count) {
    return {};
  }
  return {tokens.begin(), tokens.end()};
}

void readBackAsSurround(std::vector<TrackLabels>& streams, const std::vector<bool>& isPairCoded) {
  const auto isMono = [&](std::size_t index) {
    return streams[index].size() == 1 && !isPairCoded[index];
  };
  bool monoHasSurround = false;
  for (std::size_t index = 0; index < streams.size(); ++index) {
    monoHasSurround = monoHasSurround || (isMono(index) && hasSurroundLabel(streams[index]));
  }
  for (std::size_t index = 0; index < streams.size(); ++index) {
    if (!(isMono(index) ? monoHasSurround : hasSurroundLabel(streams[index]))) {
      renameBackLabels(streams[index]);
    }
  }
}

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

}  // namespace kestrel::host
