#include "host/evidence/track_labels.h"

#include <gtest/gtest.h>

namespace kestrel::host {
namespace {

RawAudioStream withLayout(const std::string& layout, const std::string& layoutId = "") {
  RawAudioStream raw;
  raw.channelLayout = layout;
  raw.channelLayoutId = layoutId;
  return raw;
}

struct LabelRow {
  const char* layout;
  const char* layoutId;
  bool isPairCoded;
  std::int64_t splitChannel;  // 0: not a part
  std::int32_t channelCount;
  TrackLabels expected;
};

TEST(TrackLabelsTest, areTheFilesOwn) {
  const LabelRow rows[] = {
      {"L R", "", false, 0, 2, {"L", "R"}},
      {"", "", false, 0, 2, {}},
      // "own / derived": the first part is the file's.
      {"L / EBU R 123: 8b", "0D01 / EBU R 123: 8b", false, 0, 1, {"L"}},
      {"R", "0D01 / EBU R 123: 8b", false, 0, 1, {"R"}},
      // Invented by the reader.
      {"EBU R 123: 12d", "EBU R 123: 12d", false, 0, 1, {}},
      {"EBU R 123: 12d / L", "", false, 0, 1, {}},
      {"EBU R 48: 2a", "", true, 0, 1, {}},
      {"L", "EBU R 123: 4b", false, 0, 1, {}},
      {"L / R", "EBU R 123: 4b", false, 0, 1, {"L"}},
      {"L R", "EBU R 123: 4b", true, 0, 2, {"L", "R"}},
      {"L", "EBU S 123", false, 0, 1, {"L"}},
      // Pair-coded: "X" stands for channels of other programmes.
      {"L C Ls X R LFE Rs X", "", true, 0, 6, {"L", "C", "Ls", "R", "LFE", "Rs"}},
      {"X X X L X X X R", "", true, 3, 2, {"L", "R"}},
      {"X L", "", false, 0, 2, {"X", "L"}},
      // Parts of a split track.
      {"L R C LFE Lb Rb", "", false, 5, 1, {"Lb"}},
      {"L R C LFE Lb Rb", "", false, 6, 1, {"Rb"}},
      {"L R C LFE Lb Rb", "", false, 7, 1, {}},
      {"L R C LFE Lb Rb", "", false, -1, 1, {}},
      {"C", "", false, 5, 1, {"C"}},
      {"L R C LFE Ls Rs", "", false, 0, 1, {}},  // no part
      // A part of more channels than one has a label for each, or none.
      {"L R", "", false, 1, 2, {"L", "R"}},
      {"L R C LFE Ls Rs", "", false, 1, 2, {}},
      {"L R C LFE Ls Rs", "", false, 0, 6, {"L", "R", "C", "LFE", "Ls", "Rs"}},
      // Not one label for each channel.
      {"L R", "", false, 0, 6, {}},
      {"L R C", "", true, 0, 2, {}},
      {"L", "", false, 0, 0, {}},
  };
  for (const LabelRow& row : rows) {
    SCOPED_TRACE(std::string(row.layout) + " of " + std::to_string(row.channelCount));
    const RawAudioStream raw = withLayout(row.layout, row.layoutId);
    const auto part = row.splitChannel == 0 ? std::nullopt : std::optional(row.splitChannel);
    EXPECT_EQ(labelsInFile({raw, row.isPairCoded, part, row.channelCount}), row.expected);
  }
}

std::vector<TrackLabels> readBack(std::vector<TrackLabels> streams) {
  readBackAsSurround(streams, std::vector<bool>(streams.size(), false));
  return streams;
}

TEST(TrackLabelsTest, backIsSurroundWithoutSurroundBesideIt) {
  using Streams = std::vector<TrackLabels>;
  EXPECT_EQ(readBack({{"L", "Lb", "Rb"}}), (Streams{{"L", "Ls", "Rs"}}));
  EXPECT_EQ(readBack({{"Lb", "Cb"}}), (Streams{{"Ls", "Cb"}}));
  for (const char* beside : {"Ls", "Rs", "Lss", "Rss"}) {
    EXPECT_EQ(readBack({{"Lb", "Rb", beside}}), (Streams{{"Lb", "Rb", beside}}));
  }
  EXPECT_EQ(readBack({{"Lb", "Rb", "LS"}}), (Streams{{"Ls", "Rs", "LS"}}));
}

TEST(TrackLabelsTest, eachStreamIsLookedAtForItself) {
  EXPECT_EQ(readBack({{"Lb", "Rb"}, {"Ls", "Rs"}}),
            (std::vector<TrackLabels>{{"Ls", "Rs"}, {"Ls", "Rs"}}));
}

TEST(TrackLabelsTest, monoStreamsAreLookedAtTogether) {
  EXPECT_EQ(readBack({{"Lb"}, {"Rb"}, {"L", "Ls"}}),
            (std::vector<TrackLabels>{{"Ls"}, {"Rs"}, {"L", "Ls"}}));
  EXPECT_EQ(readBack({{"Lb"}, {"Rb"}, {"Rss"}}),
            (std::vector<TrackLabels>{{"Lb"}, {"Rb"}, {"Rss"}}));
}

TEST(TrackLabelsTest, pairCodedStreamsAreNoMonoStreams) {
  std::vector<TrackLabels> streams = {{"Lb"}, {"Ls"}};
  readBackAsSurround(streams, {false, true});
  EXPECT_EQ(streams, (std::vector<TrackLabels>{{"Ls"}, {"Ls"}}));
}

}  // namespace
}  // namespace kestrel::host
