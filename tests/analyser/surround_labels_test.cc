#include "analyser/surround_labels.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

namespace kestrel {
namespace {

TEST(LabelAt, TakesTheTokenWithTheIndex) {
  const struct {
    std::wstring text;
    std::int32_t index;
    std::wstring label;
  } rows[] = {
      {L"L R C", 0, L"L"},     {L"L R C", 2, L"C"},     {L"L R C", 3, L""},
      {L"", 0, L""},           {L"   ", 0, L""},        {L"   ", 1, L""},
      {L"  L   R  ", 0, L"L"}, {L"  L   R  ", 1, L"R"}, {L"  L   R  ", 2, L""},
      {L"L\tR C", 0, L"L\tR"}, {L"L", INT_MAX, L""},    {L"L R", -1, L""},
      {L"L R", INT_MIN, L""},
  };
  for (const auto& row : rows)
    EXPECT_EQ(labelAt(row.text, row.index), row.label)
        << ::testing::PrintToString(row.text) << " at " << row.index;
}

TEST(CheckSurroundLabels, WantsEachOfTheSixLabelsOnce) {
  const struct {
    std::wstring text;
    bool passes;
  } rows[] = {
      {L"L R C LFE Ls Rs", true},
      {L"L R Ls Rs C LFE", true},
      {L"  Rs  Ls LFE C R L  ", true},
      {L"", false},
      {L" ", false},
      {L"L R C LFE Ls", false},
      {L"L L C LFE Ls Rs", false},
      {L"L R C LFE Ls Rs L", false},
      {L"L R C LFE Ls Rs X", false},
      {L"l R C LFE Ls Rs", false},
      {L"L R C Lfe Ls Rs", false},
      {L"L R C LFE LS RS", false},
      {L"L\tR C LFE Ls Rs", false},
      {L"LRCLFELsRs", false},
  };
  for (const auto& row : rows)
    EXPECT_EQ(checkSurroundLabels(row.text), row.passes) << ::testing::PrintToString(row.text);
}

class SurroundLabelReading : public ::testing::Test {
 protected:
  void add(const wchar_t* id, const wchar_t* labels, std::int32_t channels) {
    AudioStreamInfo stream;
    stream.streamId = id;
    stream.trackLabels = labels;
    stream.channelCount = channels;
    streams_.push_back(stream);
  }

  std::wstring read(std::int32_t firstTrack) {
    FileTracks tracks(streams_);
    tracks.expand();
    SurroundLabelReader reader(tracks);
    return std::wstring(reader.read(tracks.advance(tracks.begin(), firstTrack)));
  }

  std::vector<AudioStreamInfo> streams_;
};

TEST_F(SurroundLabelReading, CountsOnInsideALongStream) {
  add(L"1", L"M1 M2 L R C LFE Ls Rs Rs Ls LFE C R L", 14);
  FileTracks tracks(streams_);
  tracks.expand();
  SurroundLabelReader reader(tracks);
  const auto at = [&](std::int32_t track) { return tracks.advance(tracks.begin(), track); };
  EXPECT_EQ(reader.read(at(2)), L"L R C LFE Ls Rs");
  EXPECT_EQ(reader.read(at(8)), L"Rs Ls LFE C R L");
  EXPECT_EQ(reader.read(at(2)), L"L R C LFE Ls Rs") << "an earlier track after a later one";
}

TEST_F(SurroundLabelReading, TakesTheLabelsOfTheFirstStreamWithTheNumber) {
  add(L"1", L"L R C LFE Ls Rs", 1);
  add(L"1", L"x x x x x x", 6);
  EXPECT_EQ(read(1), L"L R C LFE Ls Rs");
}

TEST_F(SurroundLabelReading, GivesNothingForLabelsThatDoNotPass) {
  add(L"1", L"L R C LFE Ls", 6);
  add(L"2", L"L R C LFE Ls Wide", 6);
  add(L"3", L"L R C LFE Ls Ls", 6);
  add(L"4", L"L R C", 3);
  EXPECT_EQ(read(0), L"");
  EXPECT_EQ(read(6), L"");
  EXPECT_EQ(read(12), L"");
  EXPECT_EQ(read(18), L"") << "the file's tracks end";
}

}  // namespace
}  // namespace kestrel
