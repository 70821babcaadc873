#include "host/judging/layout_description.h"

#include <gtest/gtest.h>

#include <random>

#include "host/evidence/stream_mapping.h"
#include "host/judging/library_analysis.h"
#include "tests/host/support/synthetic_media.h"

namespace kestrel::host {
namespace {

// "T8: 5.1 Mix, -Stereo", an unknown name in brackets.
std::string asText(const LayoutEntry& entry) {
  std::string text = "T" + std::to_string(entry.total) + ":";
  for (const LayoutElement& element : entry.elements) {
    const std::string name = (element.isHidden ? "-" : "") + element.name;
    text += element.tracks > 0 ? " " + name : " [" + name + "]";
  }
  return text;
}

std::string asText(const std::string& description) {
  std::string text;
  for (const LayoutEntry& entry : layoutEntries(description)) {
    text += (text.empty() ? "" : " | ") + asText(entry);
  }
  return text;
}

TEST(LayoutTextTest, isTakenApartAsTheLibraryDoes) {
  const struct {
    const char* description;
    const char* read;
  } rows[] = {
      {"T8=5.1 Mix,Stereo", "T8: 5.1 Mix Stereo"},
      {"T8=5.1 Mix,-Stereo;T02=Stereo", "T8: 5.1 Mix -Stereo | T2: Stereo"},
      {"T2=Stereo T4=Stereo,Stereo", "T2: [Stereo T]"},
      {"T2=Stereo,", "T2: Stereo"},
      {"T2=Stereo,,Mono", "T2: Stereo [] Mono"},
      {"T2= Stereo", "T2: [ Stereo]"},
      {"T2=--Stereo", "T2: -Stereo"},
      {"T2=--Dolby-E", "T2: [-DolbyE]"},
      {"T123=Mono", ""},
      {"T=Mono", ""},
      {"TT1=Mono", "T1: Mono"},
      {"T1T1=Mono", "T1: Mono"},
      {"t1=Mono", ""},
      {"T1=", ""},
      {"T1=;T1=Mono", "T1: Mono"},
      {"T1=,", "T1: []"},
      {"T2=EMCA,Mono2", "T2: EMCA Mono"},
      {"", ""},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(asText(row.description), row.read) << row.description;
  }
}

TEST(LayoutTextTest, everyPartHasItsPlace) {
  const std::string text = "x T8=5.1 Mix,-Stereo; T2=Mono";
  const std::vector<LayoutEntry> entries = layoutEntries(text);
  ASSERT_EQ(entries.size(), 2u);
  EXPECT_EQ(text.substr(entries[0].offset, entries[0].length), "T8=5.1 Mix,-Stereo");
  EXPECT_EQ(text.substr(entries[1].offset, entries[1].length), "T2=Mono");
  const LayoutElement& hidden = entries[0].elements[1];
  EXPECT_EQ(text.substr(hidden.offset, hidden.length), "-Stereo");
  EXPECT_EQ(tracksOf(entries[0]), 8);
}

TEST(LayoutTextTest, theFirstEntryOfATotalIsTaken) {
  ASSERT_TRUE(layoutEntry("T2=Stereo;T2=Mono,Mono", 2));
  EXPECT_EQ(layoutEntry("T2=Stereo;T2=Mono,Mono", 2)->elements.size(), 1u);
  EXPECT_EQ(layoutEntry("T2=Stereo", 4), std::nullopt);
}

std::string randomDescription(std::mt19937& random) {
  constexpr std::string_view kParts[] = {"T", "1", "2", "4", "=",    ",",      ";",   " ",
                                         "-", "x", ".", "é", "Mono", "Stereo", "EMCA"};
  std::string text;
  const std::size_t count = random() % 14;
  for (std::size_t index = 0; index < count; ++index) {
    text += kParts[random() % std::size(kParts)];
  }
  return text;
}

TEST(LayoutTextTest, theLibraryFindsTheSameEntriesInRandomTexts) {
  std::mt19937 random(123);
  const LibraryStreams streams(std::vector<AudioStreamInfo>{});
  for (int round = 0; round < 20'000; ++round) {
    const std::string text = randomDescription(random);
    std::vector<std::int32_t> totals;
    for (const LayoutEntry& entry : layoutEntries(text)) {
      totals.push_back(entry.total);
    }
    EXPECT_EQ(LibraryAnalysis(streams, text, {}).describedTotals(), totals) << text;
  }
}

TEST(LayoutTextTest, theLibraryFindsTheSameUnknownNamesInRandomTexts) {
  std::mt19937 random(321);
  const std::vector<AudioStreamInfo> mono = mapMedia(monoTracks("-")).streams;
  const LibraryStreams streams(mono);
  for (int round = 0; round < 20'000; ++round) {
    const std::string text = randomDescription(random);
    std::vector<std::size_t> unknown;
    for (const LayoutElement& element : layoutEntry(text, 1).value_or(LayoutEntry{}).elements) {
      if (element.tracks == 0) unknown.push_back(element.offset);
    }
    std::vector<std::size_t> found;
    for (const KestrelFinding& finding : LibraryAnalysis(streams, text, {}).findings()) {
      if (finding.code == KESTREL_UNKNOWN_SERVICE || finding.code == KESTREL_EMPTY_ELEMENT) {
        found.push_back(static_cast<std::size_t>(finding.textOffset));
      }
    }
    EXPECT_EQ(found, unknown) << text;
  }
}

}  // namespace
}  // namespace kestrel::host
