// The analyser's members: what construction computes, how streams become tracks, what is found.
#include "analyser/audio_service_map_manager.h"

#include <gtest/gtest.h>
#include "analyser/tracks_compatible.h"

#include <climits>
#include <cstdint>
#include <string>
#include <vector>

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
  return countFileTracks(streams);
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

struct Fixture {
  std::vector<AudioStreamInfo> streams;
  std::string description;
  std::wstring order = L"order";
  bool reportAll = false;

  AudioServiceMapManager make() const {
    return {description, order, false, streams.data(), static_cast<std::int32_t>(streams.size()),
            reportAll,   false};
  }
};

TEST(Construction, StampsTheSurroundOrderOntoFiveOneMixes) {
  const Fixture fixture{{plainStream(L"1", 16)}, "T16=5.1 Mix,Stereo,-5.1 Mix,EMCA"};
  const auto manager = fixture.make();
  const auto services = manager.expectedServices();
  ASSERT_EQ(services.size(), 4u);
  EXPECT_EQ(services[0].label, L"order");
  EXPECT_EQ(services[1].label, L"");
  EXPECT_EQ(services[2].label, L"order");
  EXPECT_EQ(services[3].label, L"");
}

TEST(Construction, AnEmptyOrderIsStampedLikeAnyOther) {
  Fixture fixture{{plainStream(L"1", 6)}, "T6=5.1 Mix"};
  fixture.order = L"";
  EXPECT_EQ(fixture.make().expectedServices()[0].label, L"");
  fixture.order = L" ";
  EXPECT_EQ(fixture.make().expectedServices()[0].label, L" ");
}

TEST(Construction, WithoutStreamsOnlyTheEntryForZeroIsTaken) {
  const AudioStreamInfo stream = plainStream(L"1", 2);
  for (const std::int32_t streamCount : {0, -1, INT_MIN}) {
    const AudioServiceMapManager manager("T2=Stereo;T00=Mono", L"", false, &stream, streamCount,
                                         false, false);
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
    Fixture fixture{{plainStream(L"1", 1)}, "T1=" + row.element};
    fixture.reportAll = row.reportAll;
    const auto manager = fixture.make();
    ASSERT_EQ(manager.expectedServices().size(), 1u) << row.element;
    const ExpectedService& service = manager.expectedServices()[0];
    EXPECT_EQ(service.reported, row.reported) << row.element;
    EXPECT_EQ(service.requested, row.requested) << row.element;
    EXPECT_EQ(service.isEmca, row.element.ends_with("EMCA")) << row.element;
  }
}

TEST(Construction, UnusedTracksOfAServiceAreMinusOne) {
  const Fixture fixture{{plainStream(L"1", 2)}, "T2=Stereo,Wide"};
  const auto manager = fixture.make();
  const ExpectedService& stereo = manager.expectedServices()[0];
  const ExpectedService& unknown = manager.expectedServices()[1];
  EXPECT_EQ(stereo.track(1), trackNumberAfter(stereo.track(0), 1));
  EXPECT_EQ(stereo.track(2), -1);
  EXPECT_EQ(stereo.track(-1), -1);
  EXPECT_EQ(unknown.track(0), -1);
  EXPECT_EQ(unknown.trackCount, -1);
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
  FileTracks tracks(streams);
  tracks.expand();
  std::vector<Track> list;
  for (TrackCursor at; !tracks.atEnd(at); at = tracks.advance(at, 1))
    list.push_back({tracks.tracks(at).trackNumber, tracks.tracks(at).group,
                    tracks.tracks(at).sourceGroup, tracks.indexInGroup(at)});
  return list;
}

TEST(ExpandTracks, AStreamWithoutChannelsHasNoTracks) {
  EXPECT_EQ(expand({plainStream(L"1", 0), plainStream(L"2", 1, 5), plainStream(L"3", -4)}),
            (std::vector<Track>{{2, 5, 5, 0}}));
  EXPECT_EQ(expand({plainStream(L"1", 0)}), std::vector<Track>{});
}

TEST(ExpandTracks, NoTrackFollowsTheLast) {
  const std::vector<AudioStreamInfo> streams = {plainStream(L"1", 2), plainStream(L"2", 3)};
  FileTracks tracks(streams);
  tracks.expand();
  EXPECT_FALSE(tracks.atEnd(tracks.advance({}, 4)));
  for (const std::int32_t count : {5, 6, INT_MAX})
    EXPECT_TRUE(tracks.atEnd(tracks.advance({}, count))) << count;
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

// Which stream's labels and which stream's format keys the tracks of each record have.
std::vector<std::pair<std::int32_t, std::int32_t>> links(std::vector<AudioStreamInfo> streams) {
  for (std::size_t i = 0; i < streams.size(); ++i) {
    streams[i].formatKey1 = static_cast<std::int32_t>(i);
    streams[i].formatKey2 = -streams[i].formatKey1;
    streams[i].formatKey3 = streams[i].formatKey1 * 3;
  }
  FileTracks tracks(streams);
  tracks.expand();
  std::vector<std::pair<std::int32_t, std::int32_t>> list;
  for (const StreamTracks& own : tracks.records()) {
    EXPECT_EQ(own.formatKey2, -own.formatKey1);
    EXPECT_EQ(own.formatKey3, own.formatKey1 * 3);
    list.emplace_back(own.labelStream, own.formatKey1);
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

TEST(TracksCompatible, WantsAllThreeKeysEqual) {
  std::vector<AudioStreamInfo> streams(5, plainStream(L"1", 1));
  streams[1].formatKey1 = 1;
  streams[2].formatKey2 = 1;
  streams[3].formatKey3 = 1;
  EXPECT_TRUE(tracksCompatible(streams[0], streams[4]));
  EXPECT_TRUE(tracksCompatible(streams[2], streams[2]));
  for (const std::size_t other : {1u, 2u, 3u})
    EXPECT_FALSE(tracksCompatible(streams[0], streams[other])) << other;
}

TEST(DetectServices, WantsStreamsAndServices) {
  Fixture fixture{{plainStream(L"1", 2)}, "T2=Stereo"};
  EXPECT_EQ(fixture.make().detectServices(), 1);
  fixture.description = "T4=Stereo,Stereo";
  EXPECT_EQ(fixture.make().detectServices(), 0);
  fixture = {{}, "T0=Mono"};
  EXPECT_EQ(fixture.make().detectServices(), 0);
}

TEST(Assignment, AnEmcaServiceYieldsOneFindingPerProgramme) {
  const Fixture fixture{
      {pairStream(L"5-1", 6, 1), pairStream(L"5-2", 2, 2), plainStream(L"7", 2, 3)},
      "T4=EMCA,Stereo"};
  auto manager = fixture.make();
  ASSERT_EQ(manager.detectServices(), 1);
  Assignment walk = manager.assignment();
  std::vector<std::int32_t> counts;
  while (walk.next()) counts.push_back(walk.finding().trackCount);
  EXPECT_EQ(counts, (std::vector<std::int32_t>{6, 2, 2}));
  EXPECT_FALSE(walk.next()) << "the end stays the end";
}

TEST(Assignment, AServiceThatRunsOutKeepsItsTrackCount) {
  // The EMCA service takes the ordinary track of its group too, and leaves nothing to the Mono.
  const Fixture fixture{{pairStream(L"5-1", 2, 1), plainStream(L"6", 1, 1)}, "T3=EMCA,Mono"};
  auto manager = fixture.make();
  ASSERT_EQ(manager.detectServices(), 1);
  Assignment walk = manager.assignment();
  ASSERT_TRUE(walk.next());
  EXPECT_EQ(walk.finding().found, 3);
  ASSERT_TRUE(walk.next());
  EXPECT_EQ(walk.finding().trackCount, 1);
  EXPECT_EQ(walk.finding().found, 0);
}

TEST(AudioServiceMapManager, KeepsWhetherStreamsOfTwoTracksAreAllowed) {
  for (const bool allowed : {false, true}) {
    const AudioServiceMapManager manager("T2=Stereo", L"", allowed, nullptr, 0, false, false);
    EXPECT_EQ(manager.allowTwoTrackStreams(), allowed);
  }
}

TEST(BuildResults, SetsTheStatusOnADisagreement) {
  Fixture fixture{{plainStream(L"1", 1), plainStream(L"2", 1)}, "T2=Stereo"};
  fixture.streams[1].formatKey3 = 1;
  auto manager = fixture.make();
  ASSERT_EQ(manager.detectServices(), 1);
  std::vector<ServiceMapResult> results(3);
  std::int32_t status = 7;
  manager.buildResults(results, status);
  EXPECT_EQ(status, NO_SERVICE_MAP_ITEM);
  EXPECT_TRUE(results.empty());

  fixture.streams[1].formatKey3 = 0;
  auto agreeing = fixture.make();
  ASSERT_EQ(agreeing.detectServices(), 1);
  results.resize(3);
  status = 7;
  agreeing.buildResults(results, status);
  EXPECT_EQ(status, 7) << "no failure leaves it alone";
  EXPECT_EQ(results.size(), 1u);
}

}  // namespace
}  // namespace kestrel
