// The analyser's members: what construction computes, how streams become tracks, what is found.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "analyser/track_number_counter.h"
#include "tests/analyser/analyser_support.h"

namespace kestrel {
namespace {

AudioStreamInfo plainStream(std::wstring id, std::int32_t channels, std::int32_t group = 0) {
  AudioStreamInfo stream;
  stream.streamId = std::move(id);
  stream.channelCount = channels;
  stream.group = group;
  return stream;
}

AudioStreamInfo pairStream(std::wstring id, std::int32_t channels, std::int32_t group = 0,
                           bool shared = false) {
  AudioStreamInfo stream = plainStream(std::move(id), channels, group);
  stream.isPairCoded = 1;
  stream.isPairShared = shared ? 1 : 0;
  return stream;
}

std::uint32_t count(const std::vector<AudioStreamInfo>& streams) {
  CallMemory memory;
  return countFileTracks(readStreams(streams, false, memory.resource()).list);
}

TEST(FileTrackCount, AddsChannelsAndPairs) {
  EXPECT_EQ(count({}), 0u);
  EXPECT_EQ(count({plainStream(L"1", 2), pairStream(L"2-1", 6), pairStream(L"2-2", 2)}), 4u);
}

TEST(FileTrackCount, CountsARepeatedPairNumberOnce) {
  EXPECT_EQ(count({pairStream(L"5-1", 6), pairStream(L"5-2", 2)}), 2u);
  EXPECT_EQ(count({pairStream(L"5-1", 6), plainStream(L"9", 1), pairStream(L"5-2", 2)}), 3u)
      << "an ordinary stream between does not matter";
  EXPECT_EQ(count({pairStream(L"5-1", 6), pairStream(L"6-1", 6), pairStream(L"5-2", 2)}), 6u)
      << "another pair between does";
  EXPECT_EQ(count({pairStream(L"7", 2), pairStream(L"7", 2)}), 2u) << "also without a hyphen";
}

TEST(FileTrackCount, TheFirstPairAlwaysCounts) {
  EXPECT_EQ(count({pairStream(L"-1", 2)}), 2u);
  EXPECT_EQ(count({pairStream(L"", 2)}), 2u);
  EXPECT_EQ(count({pairStream(L"4294967295-1", 2)}), 2u);
}

TEST(FileTrackCount, ComparesPairNumbersInThirtyTwoBits) {
  EXPECT_EQ(count({pairStream(L"1-1", 2), pairStream(L"4294967297-2", 2)}), 2u);
}

TEST(FileTrackCount, CountsAllSharedPairsAsOne) {
  EXPECT_EQ(count({pairStream(L"7", 2, 0, true), pairStream(L"8", 2, 0, true)}), 2u);
  EXPECT_EQ(count({pairStream(L"7", 2, 0, true), plainStream(L"1", 1), pairStream(L"8", 2, 0, true),
                   pairStream(L"9-1", 2, 0, true)}),
            5u)
      << "a hyphen makes it a pair of its own";
}

TEST(FileTrackCount, ASharedPairIsRememberedToo) {
  EXPECT_EQ(count({pairStream(L"7", 2, 0, true), pairStream(L"7-1", 2)}), 2u);
}

TEST(FileTrackCount, AnyFlagButZeroIsOn) {
  auto stream = plainStream(L"1", 6);
  stream.isPairCoded = 2;
  EXPECT_EQ(count({stream}), 2u);
}

TEST(FileTrackCount, WrapsAsUnsigned) {
  EXPECT_EQ(count({plainStream(L"1", -3)}), 0xFFFFFFFDu);
  EXPECT_EQ(count({plainStream(L"1", 2000000000), plainStream(L"2", -1999999992)}), 8u);
  EXPECT_EQ(count({plainStream(L"1", INT_MIN), plainStream(L"2", INT_MIN)}), 0u);
}

TEST(Construction, WithoutStreamsOnlyTheEntryForZeroIsTaken) {
  const AudioStreamInfo stream = plainStream(L"1", 2);
  for (const std::int32_t streamCount : {0, -1, INT_MIN}) {
    CallMemory memory;
    const AudioServiceMapManager manager(
        "T2=Stereo;T00=Mono",
        readStreams(streamSpan(&stream, streamCount), false, memory.resource()), false);
    EXPECT_FALSE(manager.hasStreams());
    EXPECT_EQ(manager.fileTrackCount(), 0u);
    ASSERT_EQ(manager.expectedServices().size(), 1u);
    EXPECT_EQ(manager.expectedServices()[0].streamType, kMono);
  }
}

TEST(Construction, ReadsElementsIntoServices) {
  const struct {
    bool reportAll;
    std::string element;
    bool reported, requested;
  } rows[] = {
      {false, "Mono", true, false},    {false, "-Mono", false, false},
      {false, "EMCA", true, false},    {false, "-EMCA", false, false},
      {false, "unknown", true, false}, {false, "-unknown", false, false},
      {true, "Mono", true, true},      {true, "-Mono", true, false},
      {true, "EMCA", true, true},      {true, "-EMCA", true, false},
      {true, "unknown", true, true},   {true, "-unknown", true, false},
  };
  for (const auto& row : rows) {
    const Analyser analyser({plainStream(L"1", 1)}, "T1=" + row.element, row.reportAll);
    const AudioServiceMapManager& manager = analyser.manager;
    ASSERT_EQ(manager.expectedServices().size(), 1u) << row.element;
    const ExpectedService& service = manager.expectedServices()[0];
    EXPECT_EQ(service.reported, row.reported) << row.element;
    EXPECT_EQ(service.requested, row.requested) << row.element;
    EXPECT_EQ(service.isEmca, row.element.ends_with("EMCA")) << row.element;
  }
}

TEST(Construction, OnlyServicesOfKnownNamesTakeTrackNumbers) {
  const Analyser analyser({plainStream(L"1", 3)}, "T3=Stereo,Wide,Mono");
  const auto services = analyser.manager.expectedServices();
  EXPECT_EQ(services[1].trackCount, -1);
  EXPECT_EQ(services[2].firstTrack, trackNumberAfter(services[0].firstTrack, 2));
}

// One expanded track, as the records tell it.
struct Track {
  std::int64_t number;
  std::int32_t group, sourceGroup, indexInGroup;
  bool operator==(const Track&) const = default;
};

void PrintTo(const Track& track, std::ostream* out) {
  *out << track.number << "/" << track.group << "/" << track.sourceGroup << "/"
       << track.indexInGroup;
}

std::vector<Track> expand(const std::vector<AudioStreamInfo>& streams) {
  const Analyser analyser(streams);
  const FileTracks& tracks = analyser.tracks();
  std::vector<Track> list;
  for (TrackCursor at; !tracks.atEnd(at); tracks.pass(at, 1)) {
    const TrackSlot slot = tracks.slot(at);
    list.push_back({slot.trackNumber, slot.group, slot.sourceGroup, slot.indexInGroup});
  }
  return list;
}

TEST(ExpandTracks, AStreamWithoutChannelsHasNoTracks) {
  EXPECT_EQ(expand({plainStream(L"1", 0), plainStream(L"2", 1, 5), plainStream(L"3", -4)}),
            (std::vector<Track>{{2, 5, 5, 0}}));
  EXPECT_EQ(expand({plainStream(L"1", 0)}), std::vector<Track>{});
}

TEST(ExpandTracks, NoTrackFollowsTheLast) {
  const Analyser analyser({plainStream(L"1", 2), plainStream(L"2", 3)});
  const FileTracks& tracks = analyser.tracks();
  for (const std::int32_t count : {0, 1, 2, 3, 4, 5, 6, INT_MAX}) {
    TrackCursor at;
    EXPECT_EQ(tracks.pass(at, count), std::min(count, 5)) << count;
    EXPECT_EQ(tracks.atEnd(at), count >= 5) << count;
    EXPECT_EQ(tracks.countFrom(at), 5 - std::min(count, 5)) << count;
  }
}

TEST(ExpandTracks, PairStreamsOfOneNumberJoinTheFirstGroup) {
  EXPECT_EQ(
      expand({pairStream(L"5-1", 2, 1), pairStream(L"5-2", 2, 2), pairStream(L"5-3", 1, 3)}),
      (std::vector<Track>{{5, 1, 1, 0}, {5, 1, 1, 1}, {5, 1, 2, 2}, {5, 1, 2, 3}, {5, 1, 3, 4}}));
}

TEST(ExpandTracks, PairStreamsOfEqualGroupsAreLeftAlone) {
  EXPECT_EQ(expand({pairStream(L"5-1", 2, 1), pairStream(L"5-2", 2, 1)}),
            (std::vector<Track>{{5, 1, 1, 0}, {5, 1, 1, 1}, {5, 1, 1, 0}, {5, 1, 1, 1}}));
}

TEST(ExpandTracks, PairStreamsJoinAnOrdinaryTrackOfTheirNumber) {
  EXPECT_EQ(expand({plainStream(L"5", 1, 9), pairStream(L"5-1", 1, 1)}),
            (std::vector<Track>{{5, 9, 9, 0}, {5, 9, 1, 1}}));
}

TEST(ExpandTracks, SharersJoinWhateverPrecedesThem) {
  EXPECT_EQ(
      expand({pairStream(L"1", 2, 1, true), plainStream(L"9", 2, 7), pairStream(L"2", 2, 2, true)}),
      (std::vector<Track>{
          {1, 1, 1, 0}, {1, 1, 1, 1}, {9, 7, 7, 0}, {9, 7, 7, 1}, {2, 7, 2, 2}, {2, 7, 2, 3}}));
}

TEST(ExpandTracks, TheFirstSharerBehindAnOrdinaryTrackStartsThePair) {
  EXPECT_EQ(
      expand({plainStream(L"9", 1, 7), pairStream(L"1", 2, 1, true), pairStream(L"2", 1, 2, true)}),
      (std::vector<Track>{{9, 7, 7, 0}, {1, 1, 1, 0}, {1, 1, 1, 1}, {2, 1, 2, 2}}));
}

TEST(ExpandTracks, APairCodedFirstTrackStartsTheSharedPair) {
  EXPECT_EQ(expand({pairStream(L"3-1", 1, 4), pairStream(L"1", 1, 1, true)}),
            (std::vector<Track>{{3, 4, 4, 0}, {1, 4, 1, 1}}));
}

TEST(ExpandTracks, AFlagOtherThanOneIsNotPairCoded) {
  auto odd = pairStream(L"5-2", 1, 2);
  odd.isPairCoded = 2;
  EXPECT_EQ(expand({pairStream(L"5-1", 1, 1), odd}),
            (std::vector<Track>{{5, 1, 1, 0}, {5, 2, 2, 0}}));
}

// Which stream's labels and which stream's format keys the tracks of each stream have.
std::vector<std::pair<std::int32_t, std::int32_t>> links(std::vector<AudioStreamInfo> streams) {
  for (std::size_t i = 0; i < streams.size(); ++i) {
    streams[i].formatKey1 = static_cast<std::int32_t>(i);
    streams[i].formatKey2 = -streams[i].formatKey1;
    streams[i].formatKey3 = streams[i].formatKey1 * 3;
    streams[i].trackLabels = L"L R";
    for (std::size_t more = 0; more < i; ++more) streams[i].trackLabels += L" C";
  }
  const Analyser analyser(streams, "T0=Mono", false, true);
  const FileTracks& tracks = analyser.tracks();
  std::vector<std::pair<std::int32_t, std::int32_t>> list;
  for (TrackCursor at; !tracks.atEnd(at); at = FileTracks::nextStream(at)) {
    const FileStream& own = tracks.stream(at);
    EXPECT_EQ(own.formatKeys[1], -own.formatKeys[0]);
    EXPECT_EQ(own.formatKeys[2], own.formatKeys[0] * 3);
    // A stream's own labels are as many as its index and two.
    list.emplace_back(own.labels.count - 2, own.formatKeys[0]);
  }
  return list;
}

using Links = std::vector<std::pair<std::int32_t, std::int32_t>>;

TEST(ExpandTracks, LinksStreamsOfOneNumberInAnyOrder) {
  EXPECT_EQ(links({plainStream(L"3", 1), plainStream(L"1", 1), plainStream(L"3", 1),
                   plainStream(L"2", 1), plainStream(L"1", 1), plainStream(L"3", 1)}),
            (Links{{0, 5}, {1, 4}, {0, 5}, {3, 3}, {1, 4}, {0, 5}}));
}

TEST(ExpandTracks, LinksStreamsOfOneNumberBehindOneAnother) {
  EXPECT_EQ(links({plainStream(L"1", 1), plainStream(L"2", 1), plainStream(L"2", 1)}),
            (Links{{0, 0}, {1, 2}, {1, 2}}));
}

TEST(ExpandTracks, LinksStreamsWithoutTracksToo) {
  EXPECT_EQ(links({plainStream(L"2", 0), plainStream(L"1", 0), plainStream(L"2", 1),
                   plainStream(L"1", 1), plainStream(L"2", -1)}),
            (Links{{0, 4}, {1, 3}}));
}

// The disagreements of a Stereo on two streams whose format keys differ in one place.
TEST(Disagreements, AreOfAnyFormatKey) {
  for (std::size_t key = 0; key <= 3; ++key) {
    std::vector<AudioStreamInfo> streams = {plainStream(L"1", 1), plainStream(L"2", 1)};
    std::int32_t* const keys[] = {&streams[1].formatKey1, &streams[1].formatKey2,
                                  &streams[1].formatKey3};
    if (key < 3) *keys[key] = 1;
    Analyser analyser(streams, "T2=Stereo");
    EXPECT_EQ(analyser.manager.detectServices(), key < 3 ? Outcome::kEmptied : Outcome::kFilled);
    EXPECT_EQ(analyser.manager.disagreements().size(), key < 3 ? 1U : 0U) << key;
  }
}

TEST(DetectServices, WantsStreamsAndServices) {
  const auto outcomeOf = [](const std::vector<AudioStreamInfo>& streams, const char* description) {
    return Analyser(streams, description).manager.detectServices();
  };
  EXPECT_EQ(outcomeOf({plainStream(L"1", 2)}, "T2=Stereo"), Outcome::kFilled);
  EXPECT_EQ(outcomeOf({plainStream(L"1", 2)}, "T4=Stereo,Stereo"), Outcome::kUntouched);
  EXPECT_EQ(outcomeOf({}, "T0=Mono"), Outcome::kUntouched);
}

TEST(Placement, AnEmcaServiceYieldsOnePlacedServiceForEachProgramme) {
  Analyser analyser({pairStream(L"5-1", 6, 1), pairStream(L"5-2", 2, 2), plainStream(L"7", 2, 3)},
                    "T4=EMCA,Stereo");
  ASSERT_EQ(analyser.manager.detectServices(), Outcome::kFilled);
  std::vector<std::int32_t> counts;
  for (const PlacedService& placed : analyser.manager.placement().services)
    counts.push_back(placed.trackCount);
  EXPECT_EQ(counts, (std::vector<std::int32_t>{6, 2, 2}));
  EXPECT_TRUE(analyser.tracks().atEnd(analyser.manager.placement().end));
}

TEST(Placement, AServiceThatRunsOutKeepsItsTrackCount) {
  // The EMCA service takes the ordinary track of its group too, and leaves nothing to the Mono.
  Analyser analyser({pairStream(L"5-1", 2, 1), plainStream(L"6", 1, 1)}, "T3=EMCA,Mono");
  ASSERT_EQ(analyser.manager.detectServices(), Outcome::kFilled);
  const PlacedServices& placed = analyser.manager.placement().services;
  ASSERT_EQ(placed.size(), 2U);
  EXPECT_EQ(placed[0].found, 3);
  EXPECT_EQ(placed[1].trackCount, 1);
  EXPECT_EQ(placed[1].found, 0);
}

TEST(Placement, AFiveOneMixTakesTheHostsOrderUnlessItsTracksHaveAFullSet) {
  AudioStreamInfo labelled = plainStream(L"1", 6);
  labelled.trackLabels = L"L R C LFE Ls Rs";
  const std::vector<AudioStreamInfo> streams = {labelled, plainStream(L"2", 2)};
  for (const bool surroundCheck : {false, true}) {
    Analyser analyser(streams, "T8=5.1 Mix,Stereo", false, surroundCheck);
    ASSERT_EQ(analyser.manager.detectServices(), Outcome::kFilled);
    const PlacedServices& placed = analyser.manager.placement().services;
    EXPECT_EQ(placed[0].labels.has_value(), surroundCheck);
    EXPECT_EQ(placed[0].takesHostsOrder, !surroundCheck);
    EXPECT_FALSE(placed[1].takesHostsOrder);
  }
}

}  // namespace
}  // namespace kestrel
