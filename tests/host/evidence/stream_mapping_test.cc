#include "host/evidence/stream_mapping.h"

#include <gtest/gtest.h>

#include "tests/host/support/mapping_as_text.h"

namespace kestrel::host {
namespace {

using Texts = std::vector<std::string>;

RawAudioStream stream(const std::string& id, const std::string& muxingMode = "",
                      const std::string& channels = "1", const std::string& format = "PCM") {
  RawAudioStream raw;
  raw.id = id;
  raw.muxingMode = muxingMode;
  raw.channels = channels;
  raw.format = format;
  raw.samplingRate = "48000";
  raw.bitDepth = "24";
  return raw;
}

RawMedia file(const std::string& container, std::vector<RawAudioStream> streams) {
  return {container, "", "", std::move(streams)};
}

Texts mapped(const RawMedia& media) { return mappingAsText(mapMedia(media)); }

Texts shownIds(const MappedMedia& media) {
  Texts ids;
  for (const ShownStream& shown : media.shown) {
    ids.push_back(shown.id);
  }
  return ids;
}

Texts warningIds(const MappedMedia& media) {
  Texts ids;
  for (const MappingWarning& warning : media.warnings) {
    ids.push_back(warning.id);
  }
  return ids;
}

TEST(StreamMappingTest, noAudioIsAnEmptyArray) {
  const MappedMedia media = mapMedia(file("MXF", {}));
  EXPECT_TRUE(media.streams.empty());
  EXPECT_TRUE(media.warnings.empty());
}

TEST(StreamMappingTest, aTruncatedFileIsAWarning) {
  RawMedia media = file("MXF", {stream("1")});
  EXPECT_TRUE(mapMedia(media).warnings.empty());
  media.isTruncated = "Yes";
  EXPECT_EQ(warningIds(mapMedia(media)), Texts{"truncated"});
}

TEST(StreamMappingTest, theMuxingModeOrTheFormatTellsPairCodedAudio) {
  EXPECT_EQ(
      mapped(file("MPEG-4", {stream("1", "SMPTE ST 337", "2", "PCM"),
                             stream("2", "", "2", "Dolby E"), stream("3", "", "2", "Dolby ED2"),
                             stream("4", "", "2", "AC-3"), stream("5", "SMPTE ST 33", "2", "Dolby"),
                             stream("6", "Multiple / SMPTE ST 337", "2")})),
      (Texts{"1 [] 2x48000/24 pair", "2 [] 2x48000/24 pair", "3 [] 2x48000/24 pair",
             "4 [] 2x48000/24", "5 [] 2x48000/24", "6 [] 2x48000/24 pair"}));
}

TEST(StreamMappingTest, aRecordWithoutIdIsNumberedFromOne) {
  const MappedMedia media = mapMedia(file("Wave", {stream(""), stream("")}));
  EXPECT_EQ(mappingAsText(media), (Texts{"1 [] 1x48000/24", "2 [] 1x48000/24"}));
  EXPECT_EQ(shownIds(media), (Texts{"1", "2"}));
}

TEST(StreamMappingTest, thePartsOfTheOnlyTrackAreNumberedByChannel) {
  const MappedMedia media =
      mapMedia(file("MXF", {stream("2001-1", "Multiple"), stream("2001-2", "Multiple"),
                            stream("2001-3 / 4-1", "Multiple / SMPTE ST 337", "6", "Dolby E"),
                            stream("2001-3 / 4-2", "Multiple / SMPTE ST 337", "2", "Dolby E")}));
  EXPECT_EQ(mappingAsText(media),
            (Texts{"1 [] 1x48000/24", "2 [] 1x48000/24", "3 / 4-1 [] 6x48000/24 pair",
                   "3 / 4-2 [] 2x48000/24 pair"}));
  EXPECT_EQ(shownIds(media), (Texts{"2001-1", "2001-2", "2001-3 / 4-1", "2001-3 / 4-2"}));
}

TEST(StreamMappingTest, besideOtherTracksPartsKeepTheirTracksNumber) {
  EXPECT_EQ(mapped(file("MPEG-4", {stream("1-1", "Multiple"),
                                   stream("1-(2 / 3)-1", "Multiple / SMPTE ST 337", "6"),
                                   stream("2", "", "2")})),
            (Texts{"101 [] 1x48000/24", "102 / 103-1 [] 6x48000/24 pair", "2 [] 2x48000/24"}));
}

TEST(StreamMappingTest, aPartTakesTheLabelOfItsChannel) {
  const auto part = [](const std::string& id) {
    RawAudioStream raw = stream(id, "Multiple");
    raw.channelLayout = "L R C LFE Ls Rs";
    return raw;
  };
  EXPECT_EQ(mapped(file("MPEG-4", {part("1-1"), part("1-6"), part("1-7"), part("1-0")})),
            (Texts{"1 [L] 1x48000/24", "6 [Rs] 1x48000/24", "7 [] 1x48000/24", "0 [] 1x48000/24"}));
  // The parts of a Wave file are numbered without a track.
  EXPECT_EQ(mapped(file("Wave", {part("1"), part("3")})),
            (Texts{"1 [L] 1x48000/24", "3 [C] 1x48000/24"}));
  EXPECT_EQ(mapped(file("MXF", {part("1"), part("3")})),
            (Texts{"1 [] 1x48000/24", "3 [] 1x48000/24"}));
}

TEST(StreamMappingTest, onlySplitTracksAreRenumbered) {
  EXPECT_EQ(mapped(file("MPEG-PS", {stream("189-128"), stream("189-129")})),
            (Texts{"189-128 [] 1x48000/24", "189-129 [] 1x48000/24"}));
  EXPECT_EQ(mapped(file("MPEG-4", {stream("1-x", "Multiple")})), Texts{"1-x [] 1x48000/24"});
}

TEST(StreamMappingTest, theRecordsOfOneTrackStandTogether) {
  const MappedMedia media =
      mapMedia(file("MPEG-4", {stream("3-1"), stream("3-2"), stream("4"), stream("3-3"),
                               stream("1"), stream("3-4"), stream("4")}));
  EXPECT_EQ(shownIds(media), (Texts{"3-1", "3-2", "3-3", "3-4", "4", "4", "1"}));
}

TEST(StreamMappingTest, theRecordsOfOneTrackKeepTheirOrder) {
  std::vector<RawAudioStream> streams;
  Texts expected;
  for (int number = 1; number <= 100; ++number) {
    streams.push_back(stream((number % 2 == 0 ? "8-" : "9-") + std::to_string(number)));
  }
  for (const int first : {1, 2}) {
    for (int number = first; number <= 100; number += 2) {
      expected.push_back((number % 2 == 0 ? "8-" : "9-") + std::to_string(number));
    }
  }
  EXPECT_EQ(shownIds(mapMedia(file("MPEG-4", streams))), expected);
}

TEST(StreamMappingTest, anUnsplitWaveFileKeepsTheReadersOrder) {
  const std::vector<RawAudioStream> streams = {stream("1-1"), stream("2"), stream("1-2")};
  for (const char* container : {"Wave", "Wave64", "AIFF", "CAF"}) {
    EXPECT_EQ(shownIds(mapMedia(file(container, streams))), (Texts{"1-1", "2", "1-2"}));
  }
  EXPECT_EQ(shownIds(mapMedia(file("MXF", streams))), (Texts{"1-1", "1-2", "2"}));
}

TEST(StreamMappingTest, onlyPlainNumbersInWaveFilesShareAPair) {
  const auto one = [](const char* container, const char* id) {
    return mapped(file(container, {stream(id, "SMPTE ST 337", "2")})).front();
  };
  for (const char* container : {"Wave", "Wave64", "AIFF", "CAF"}) {
    EXPECT_EQ(one(container, "2"), "2 [] 2x48000/24 shared pair") << container;
    EXPECT_EQ(one(container, ""), "1 [] 2x48000/24 shared pair") << container;
    EXPECT_EQ(one(container, "3-1"), "3-1 [] 2x48000/24 pair") << container;
    EXPECT_EQ(one(container, "3 / 4"), "3 / 4 [] 2x48000/24 pair") << container;
  }
  EXPECT_EQ(one("MPEG-4", "2"), "2 [] 2x48000/24 pair");
  EXPECT_EQ(one("wave", "2"), "2 [] 2x48000/24 pair");
  EXPECT_EQ(mapped(file("Wave", {stream("2")})).front(), "2 [] 1x48000/24");
}

TEST(StreamMappingTest, theGroupIsTheIndexInTheArray) {
  const MappedMedia media =
      mapMedia(file("MPEG-4", {stream("3-1"), stream("4"), stream("3-2"), stream("5")}));
  for (std::size_t index = 0; index < media.streams.size(); ++index) {
    EXPECT_EQ(media.streams[index].group, static_cast<std::int32_t>(index));
  }
}

TEST(StreamMappingTest, theFirstNumberOfChannelsCounts) {
  EXPECT_EQ(mapped(file("MXF", {stream("1", "", "6 / 2"), stream("2", "SMPTE ST 337", "")})),
            (Texts{"1 [] 6x48000/24", "2 [] 2x48000/24 pair"}));
}

TEST(StreamMappingTest, unknownChannelsAreNoneAndAWarning) {
  for (const char* channels : {"", "x", "99999999999"}) {
    const MappedMedia media = mapMedia(file("MXF", {stream("7\n", "", channels)}));
    EXPECT_EQ(media.streams.front().channelCount, 0);
    EXPECT_EQ(warningIds(media), Texts{"channel-count-unknown"});
    EXPECT_EQ(media.warnings.front().sentence,
              "The number of channels of stream 7\\n is not known; it is taken to have none.");
  }
}

TEST(StreamMappingTest, absentRateAndDepthAreZero) {
  RawAudioStream raw = stream("1");
  raw.samplingRate = raw.bitDepth = "";
  EXPECT_EQ(mapped(file("MXF", {raw})), Texts{"1 [] 1x0/0"});
  raw.samplingRate = "48000.000";
  raw.bitDepth = "24 / 16";
  EXPECT_EQ(mapped(file("MXF", {raw})), Texts{"1 [] 1x48000/24"});
}

TEST(StreamMappingTest, theFormatKeyIsTheSameForTheSameFormat) {
  const MappedMedia media =
      mapMedia(file("MXF", {stream("1", "", "1", "PCM"), stream("2", "", "1", "PCM"),
                            stream("3", "", "1", "AAC")}));
  EXPECT_EQ(media.streams[0].formatKey3, media.streams[1].formatKey3);
  EXPECT_NE(media.streams[0].formatKey3, media.streams[2].formatKey3);
  // FNV-1a of no bytes at all: the key may be kept by others, so it must not change.
  EXPECT_EQ(static_cast<std::uint32_t>(
                mapMedia(file("MXF", {stream("1", "", "1", "")})).streams[0].formatKey3),
            2166136261u);
}

TEST(StreamMappingTest, labelsFollowTheirStreams) {
  std::vector<RawAudioStream> streams = {stream("3", "", "2"), stream("1"), stream("3", "", "2")};
  streams[0].channelLayout = "L R";
  streams[1].channelLayout = "Lb";
  streams[2].channelLayout = "Lt Rt";
  EXPECT_EQ(mapped(file("MXF", streams)),
            (Texts{"3 [L R] 2x48000/24", "3 [Lt Rt] 2x48000/24", "1 [Ls] 1x48000/24"}));
}

}  // namespace
}  // namespace kestrel::host
