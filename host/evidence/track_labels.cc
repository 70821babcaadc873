#include "host/evidence/track_labels.h"

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

}  // namespace kestrel::host
