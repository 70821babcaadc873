#include "analyser/surround_labels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/analyser/analyser_support.h"

namespace kestrel {
namespace {

// Labels as numbers of kSurroundLabels; -2 is another label.
template <class Text>
std::vector<int> labelsIn(const Text& text) {
  SurroundLabels labels;
  appendLabels(text, labels);
  return {labels.begin(), labels.end()};
}

constexpr int kLeft = 0, kRight = 1, kCentre = 2, kLfe = 3, kLs = 4, kRs = 5, kOther = kOtherLabel;

TEST(AppendLabels, TakesTheTokensBetweenBlanks) {
  const struct {
    std::wstring text;
    std::vector<int> labels;
  } rows[] = {
      {L"L R C", {kLeft, kRight, kCentre}},
      {L"LFE Ls Rs", {kLfe, kLs, kRs}},
      {L"", {}},
      {L"   ", {}},
      {L"  L   R  ", {kLeft, kRight}},
      {L"L\tR C", {kOther, kCentre}},
      {L"LFEL L", {kOther, kLeft}},
      {L"LF LFE", {kOther, kLfe}},
      {std::wstring(10000, L'x') + L" R", {kOther, kRight}},
      {L"l", {kOther}},
      {L"\x014C", {kOther}},
      {L"\u4C73", {kOther}},  // the bytes of "Ls"
      {L"L\u00A0R", {kOther}},
      {std::wstring(L"\0L", 2), {kOther}},
      {std::wstring(L"L\0", 2), {kOther}},
  };
  for (const auto& row : rows)
    EXPECT_EQ(labelsIn(std::wstring_view(row.text)), row.labels)
        << ::testing::PrintToString(row.text);
}

TEST(AppendLabels, ReadsBothWidthsAlike) {
  EXPECT_EQ(labelsIn(std::string_view(" Rs LFE")), (std::vector<int>{kRs, kLfe}));
  EXPECT_EQ(labelsIn(std::string_view("\xC5\x8C")), std::vector<int>{kOther});
  EXPECT_EQ(labelsIn(std::string_view("\xCC")), std::vector<int>{kOther}) << "the low bits of L";
}

TEST(AppendLabels, AppendsToWhatIsThere) {
  SurroundLabels labels;
  appendLabels(std::string_view("L"), labels);
  appendLabels(std::wstring_view(L"R"), labels);
  EXPECT_EQ((std::vector<int>{labels.begin(), labels.end()}), (std::vector<int>{kLeft, kRight}));
}

std::string textOrNothing(const std::optional<SurroundOrder>& order) {
  if (!order) return "";
  const auto text = textOf(*order);
  return {text.begin(), text.end()};
}

TEST(CheckSurroundLabels, WantsEachOfTheSixLabelsOnce) {
  const struct {
    std::string text;
    std::string labels;
  } rows[] = {
      {"L R C LFE Ls Rs", "L R C LFE Ls Rs"},
      {"L R Ls Rs C LFE", "L R Ls Rs C LFE"},
      {"  Rs  Ls LFE C R L  ", "Rs Ls LFE C R L"},
      {"", ""},
      {" ", ""},
      {"L R C LFE Ls", ""},
      {"L L C LFE Ls Rs", ""},
      {"L R C LFE Rs Rs", ""},
      {"L R C LFE Ls Rs L", ""},
      {"L R C LFE Ls Rs X", ""},
      {"l R C LFE Ls Rs", ""},
      {"L R C Lfe Ls Rs", ""},
      {"L R C LFE LS RS", ""},
      {"L\tR C LFE Ls Rs", ""},
      {"LRCLFELsRs", ""},
  };
  for (const auto& row : rows) {
    SurroundLabels labels;
    appendLabels(std::string_view(row.text), labels);
    EXPECT_EQ(textOrNothing(checkSurroundLabels(labels)), row.labels) << row.text;
  }
}

class LabelsOfTracks : public ::testing::Test {
 protected:
  void add(const wchar_t* id, const wchar_t* labels, std::int32_t channels) {
    AudioStreamInfo stream;
    stream.streamId = id;
    stream.trackLabels = labels;
    stream.channelCount = channels;
    streams_.push_back(stream);
  }

  // The labels of six tracks.
  std::vector<int> read(std::int32_t firstTrack) {
    const Analyser analyser(streams_, "", false, true);
    TrackCursor at;
    analyser.tracks().pass(at, firstTrack);
    std::vector<int> labels;
    for (int i = 0; i < 6 && !analyser.tracks().atEnd(at); ++i, analyser.tracks().pass(at, 1))
      labels.push_back(analyser.tracks().label(at));
    return labels;
  }

  std::vector<AudioStreamInfo> streams_;
};

constexpr int kNone = kNoLabel;

TEST_F(LabelsOfTracks, CountOnInsideALongStream) {
  add(L"1", L"M1 M2 L R C LFE Ls Rs Rs Ls LFE C R L", 14);
  EXPECT_EQ(read(1), (std::vector<int>{kOther, kLeft, kRight, kCentre, kLfe, kLs}));
  EXPECT_EQ(read(8), (std::vector<int>{kRs, kLs, kLfe, kCentre, kRight, kLeft}));
}

TEST_F(LabelsOfTracks, AreThoseOfTheFirstStreamWithTheNumber) {
  add(L"1", L"L R C LFE Ls Rs", 1);
  add(L"2", L"C C C C C C", 1);
  add(L"1", L"x x x x x x", 6);
  EXPECT_EQ(read(2), (std::vector<int>{kLeft, kRight, kCentre, kLfe, kLs, kRs}));
  EXPECT_EQ(read(1), (std::vector<int>{kCentre, kLeft, kRight, kCentre, kLfe, kLs}));
}

TEST_F(LabelsOfTracks, AreMissingWhereAStreamHasTooFew) {
  add(L"1", L"L R", 4);
  add(L"2", L"", 2);
  EXPECT_EQ(read(0), (std::vector<int>{kLeft, kRight, kNone, kNone, kNone, kNone}));
}

TEST_F(LabelsOfTracks, AreMissingAfterAnIndexThatHasWrapped) {
  add(L"1", L"L", INT_MAX);
  add(L"1", L"L", 2);
  for (std::size_t i = 0; i < streams_.size(); ++i) {
    streams_[i].isPairCoded = 1;
    streams_[i].group = static_cast<std::int32_t>(i);
  }
  const Analyser analyser(streams_, "", false, true);
  TrackCursor at;
  analyser.tracks().pass(at, INT_MAX);
  EXPECT_EQ(analyser.tracks().slot(at).indexInGroup, INT_MAX);
  EXPECT_EQ(analyser.tracks().label(at), kNoLabel);
  analyser.tracks().pass(at, 1);
  EXPECT_EQ(analyser.tracks().slot(at).indexInGroup, INT_MIN);
  EXPECT_EQ(analyser.tracks().label(at), kNoLabel);
}

TEST_F(LabelsOfTracks, AreMissingUnlessAskedFor) {
  add(L"1", L"L R", 2);
  const Analyser analyser(streams_, "", false, false);
  EXPECT_EQ(analyser.tracks().label({}), kNoLabel);
}

}  // namespace
}  // namespace kestrel
