#include "analyser/surround_labels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel {
namespace {

// The number of a label among the six.
SurroundLabel numberOf(std::string_view label) {
  return static_cast<SurroundLabel>(std::ranges::find(kSurroundLabels, label) -
                                    kSurroundLabels.begin());
}

TEST(LabelAt, TakesTheTokenWithTheIndex) {
  const SurroundLabel left = numberOf("L");
  const SurroundLabel right = numberOf("R");
  const struct {
    std::wstring text;
    std::int32_t index;
    SurroundLabel label;
  } rows[] = {
      {L"L R C", 0, left},
      {L"L R C", 2, numberOf("C")},
      {L"L R C", 3, kNoLabel},
      {L"", 0, kNoLabel},
      {L"   ", 0, kNoLabel},
      {L"   ", 1, kNoLabel},
      {L"  L   R  ", 0, left},
      {L"  L   R  ", 1, right},
      {L"  L   R  ", 2, kNoLabel},
      {L"L\tR C", 0, kOtherLabel},
      {L"L", INT_MAX, kNoLabel},
      {L"L R", -1, kNoLabel},
      {L"L R", INT_MIN, kNoLabel},
      {L"LFE", 0, numberOf("LFE")},
      {L"LFEL L", 0, kOtherLabel},
      {L"LFEL L", 1, left},
      {std::wstring(10000, L'x') + L" R", 1, right},
      {L"l", 0, kOtherLabel},
      {L"\x014C", 0, kOtherLabel},
      {L"\u4C73", 0, kOtherLabel},  // the bytes of "Ls"
      {std::wstring(L"\0L", 2), 0, kOtherLabel},
      {std::wstring(L"L\0", 2), 0, kOtherLabel},
  };
  for (const auto& row : rows)
    EXPECT_EQ(labelAt(std::wstring_view(row.text), row.index), row.label)
        << ::testing::PrintToString(row.text) << " at " << row.index;
}

TEST(LabelAt, ReadsBothWidthsAlike) {
  EXPECT_EQ(labelAt(std::string_view(" Rs LFE"), 1), numberOf("LFE"));
  EXPECT_EQ(labelAt(std::string_view("\xC5\x8C"), 0), kOtherLabel);
  EXPECT_EQ(labelAt(std::string_view("L"), 1), kNoLabel);
}

std::wstring textOrNothing(const std::optional<SurroundOrder>& order) {
  if (!order) return L"";
  const auto text = textOf<wchar_t>(*order);
  return {text.begin(), text.end()};
}

TEST(SurroundOrderOf, WantsEachOfTheSixLabelsOnce) {
  const struct {
    std::wstring text;
    std::wstring labels;
  } rows[] = {
      {L"L R C LFE Ls Rs", L"L R C LFE Ls Rs"},
      {L"L R Ls Rs C LFE", L"L R Ls Rs C LFE"},
      {L"  Rs  Ls LFE C R L  ", L"Rs Ls LFE C R L"},
      {L"", L""},
      {L" ", L""},
      {L"L R C LFE Ls", L""},
      {L"L L C LFE Ls Rs", L""},
      {L"L R C LFE Ls Rs L", L""},
      {L"L R C LFE Ls Rs X", L""},
      {L"l R C LFE Ls Rs", L""},
      {L"L R C Lfe Ls Rs", L""},
      {L"L R C LFE LS RS", L""},
      {L"L\tR C LFE Ls Rs", L""},
      {L"LRCLFELsRs", L""},
  };
  for (const auto& row : rows)
    EXPECT_EQ(textOrNothing(surroundOrderOf(std::wstring_view(row.text))), row.labels)
        << ::testing::PrintToString(row.text);
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
    return textOrNothing(reader.read(tracks.advance({}, firstTrack)));
  }

  std::vector<AudioStreamInfo> streams_;
};

TEST_F(SurroundLabelReading, CountsOnInsideALongStream) {
  add(L"1", L"M1 M2 L R C LFE Ls Rs Rs Ls LFE C R L", 14);
  FileTracks tracks(streams_);
  tracks.expand();
  SurroundLabelReader reader(tracks);
  const auto readAt = [&](std::int32_t track) {
    return textOrNothing(reader.read(tracks.advance({}, track)));
  };
  EXPECT_EQ(readAt(2), L"L R C LFE Ls Rs");
  EXPECT_EQ(readAt(8), L"Rs Ls LFE C R L");
  EXPECT_EQ(readAt(2), L"L R C LFE Ls Rs") << "an earlier track after a later one";
}

TEST_F(SurroundLabelReading, TakesTheLabelsOfTheFirstStreamWithTheNumber) {
  add(L"1", L"L R C LFE Ls Rs", 1);
  add(L"1", L"x x x x x x", 6);
  EXPECT_EQ(read(1), L"L R C LFE Ls Rs");
}

TEST_F(SurroundLabelReading, FindsNoLabelBehindAnIndexThatHasWrapped) {
  add(L"1", L"L", INT_MAX);
  add(L"1", L"L", 2);
  for (std::size_t i = 0; i < streams_.size(); ++i) {
    streams_[i].isPairCoded = 1;
    streams_[i].group = static_cast<std::int32_t>(i);
  }
  FileTracks tracks(streams_);
  tracks.expand();
  SurroundLabelReader reader(tracks);
  const TrackCursor last = tracks.advance({}, INT_MAX);
  EXPECT_EQ(tracks.indexInGroup(last), INT_MAX);
  EXPECT_EQ(reader.labelOf(last), kNoLabel);
  const TrackCursor wrapped = tracks.advance(last, 1);
  EXPECT_EQ(tracks.indexInGroup(wrapped), INT_MIN);
  EXPECT_EQ(reader.labelOf(wrapped), kNoLabel);
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
