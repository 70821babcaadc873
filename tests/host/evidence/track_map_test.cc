#include "host/evidence/track_map.h"

#include <gtest/gtest.h>

#include "host/evidence/stream_mapping.h"
#include "tests/host/support/synthetic_media.h"

namespace kestrel::host {
namespace {

std::vector<std::string> names(const TrackMap& map) {
  std::vector<std::string> result;
  for (const AudioTrack& track : map.tracks) {
    result.push_back(track.name);
  }
  return result;
}

using Texts = std::vector<std::string>;

RawAudioStream coded(const std::string& id, int channels, const std::string& muxing = "") {
  RawAudioStream raw = plainStream(id, channels);
  raw.muxingMode = muxing + "SMPTE ST 337";
  return raw;
}

TEST(TrackMapTest, eachChannelOfAPlainStreamIsATrack) {
  const TrackMap map = trackMapOf(mediaOf({plainStream("1", 2, "L R"), plainStream("7", 1)}));
  EXPECT_EQ(names(map), (Texts{"1 channel 1", "1 channel 2", "7"}));
  EXPECT_EQ(map.tracks[1].label, "R");
  EXPECT_EQ(map.streams[0].tracks, (TrackNumbers{1, 2}));
}

TEST(TrackMapTest, whatIsNotKnownOfAFormatIsNone) {
  for (const char* text : {"", "x", "-1"}) {
    RawAudioStream raw = plainStream("1", 1);
    raw.samplingRate = raw.bitDepth = text;
    const AudioStream stream = trackMapOf(mediaOf({raw})).streams.front();
    EXPECT_EQ(stream.sampleRate, 0) << text;
    EXPECT_EQ(stream.bitDepth, 0) << text;
  }
  const AudioStream known = trackMapOf(mediaOf({plainStream("1", 1)})).streams.front();
  EXPECT_EQ(known.sampleRate, 48000);
  EXPECT_EQ(known.bitDepth, 24);
}

TEST(TrackMapTest, programmesShareTheirPair) {
  const TrackMap map = trackMapOf(monoTracks("- E -"));
  EXPECT_EQ(names(map), (Texts{"1", "2 / 3", "2 / 3", "4"}));
  EXPECT_EQ(map.tracks[1].streams, (std::vector<std::size_t>{1, 2}));
  EXPECT_EQ(map.streams[1].programme, 1);
  EXPECT_EQ(map.streams[2].programme, 2);
  EXPECT_EQ(map.streams[2].tracks, (TrackNumbers{2, 3}));
  EXPECT_EQ(map.streams[0].programme, std::nullopt);
}

TEST(TrackMapTest, pairsOfDifferentNumbersAreTwo) {
  EXPECT_EQ(names(trackMapOf(mediaOf({coded("2-1", 6), coded("2-2", 2), coded("3", 6)}))),
            (Texts{"2", "2", "3", "3"}));
}

TEST(TrackMapTest, theProgrammesOfAWaveFileShareOnePair) {
  RawMedia media = mediaOf({coded("1", 6), coded("2", 2)});
  media.container = "Wave";
  EXPECT_EQ(trackMapOf(media).tracks.size(), 2u);
  EXPECT_EQ(trackMapOf(media).streams[1].programme, 2);
}

TEST(TrackMapTest, aSharedPairIsTheLastNumberToo) {
  const auto wave = [](std::vector<RawAudioStream> streams) {
    RawMedia media = mediaOf(std::move(streams));
    media.container = "Wave";
    return media;
  };
  const struct {
    RawMedia media;
    Texts names;
  } rows[] = {
      {wave({coded("3-1", 2), coded("2", 2), coded("3-2", 2)}), {"3", "3", "2", "2", "3", "3"}},
      {wave({coded("3-1", 2), coded("3", 2), coded("3-2", 2)}), {"3", "3", "3", "3"}},
      {wave({coded("2", 2), coded("3-1", 2), coded("3-2", 2)}), {"2", "2", "3", "3"}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(names(trackMapOf(row.media)), row.names);
    const LibraryStreams streams(mapMedia(row.media).streams);
    EXPECT_EQ(LibraryAnalysis(streams, "", {}).trackTotal(), std::ssize(row.names));
  }
}

TEST(TrackMapTest, aStreamWithAHyphenSharesNoPair) {
  MappedMedia media = mapMedia(mediaOf({coded("1-1", 2), coded("2-1", 2)}));
  for (AudioStreamInfo& info : media.streams) {
    info.isPairShared = 1;
  }
  EXPECT_EQ(names(trackMap(media)), (Texts{"1", "1", "2", "2"}));
}

TEST(TrackMapTest, partsOfASplitTrackKeepTheReadersIds) {
  RawAudioStream first = plainStream("2001-1", 1);
  RawAudioStream second = plainStream("2001-2", 1);
  first.muxingMode = second.muxingMode = "Multiple";
  const TrackMap map = trackMapOf(mediaOf({first, second, coded("2001-3 / 4", 6, "Multiple / ")}));
  EXPECT_EQ(names(map), (Texts{"2001-1", "2001-2", "2001-3 / 4", "2001-3 / 4"}));
  EXPECT_EQ(map.streams[2].channel, 3);
}

TEST(TrackMapTest, aNumberThatNoChannelHasIsNone) {
  for (const char* id : {"2001-0", "2001-2147483648", "2001-4294967296"}) {
    RawAudioStream part = plainStream(id, 1);
    part.muxingMode = "Multiple";
    EXPECT_EQ(trackMapOf(mediaOf({part})).streams[0].channel, std::nullopt) << id;
  }
}

TEST(TrackMapTest, tracksAreToldInWords) {
  EXPECT_EQ(tracksInWords({}), "no track");
  EXPECT_EQ(tracksInWords({3}), "track 3");
  EXPECT_EQ(tracksInWords({3, 4}), "tracks 3 and 4");
  EXPECT_EQ(tracksInWords({3, 4, 5}), "tracks 3 to 5");
  EXPECT_EQ(tracksInWords({3, 5, 6}), "tracks 3, 5 and 6");
  EXPECT_EQ(tracksInWords({1, 3, 2, 4}), "tracks 1, 3, 2 and 4");
}

}  // namespace
}  // namespace kestrel::host
