#include "host/service_tracks.h"

#include <gtest/gtest.h>

namespace kestrel::host {
namespace {

void addStream(MappedMedia& media, const std::string& id, std::int32_t channels,
               bool isPairCoded = false) {
  AudioStreamInfo stream;
  stream.channelCount = channels;
  stream.isPairCoded = isPairCoded ? 1 : 0;
  media.streams.push_back(stream);
  media.shown.push_back({id, "PCM"});
}

struct Place {
  std::int32_t stream;
  std::int32_t index;
};

ServiceMapResult service(const std::vector<Place>& places) {
  ServiceMapResult result;
  for (const Place& place : places) {
    TrackSlot& slot = result.slots.at(static_cast<std::size_t>(result.trackCount++));
    slot = {.trackNumber = 1, .group = 0, .sourceGroup = place.stream, .indexInGroup = place.index};
  }
  return result;
}

TEST(ServiceTracksTest, monoStreamsAreListed) {
  MappedMedia media;
  addStream(media, "2001", 1);
  addStream(media, "2002", 1);
  EXPECT_EQ(serviceTracks(service({{0, 0}, {1, 0}}), media), "2001, 2002");
}

TEST(ServiceTracksTest, channelsOfAStreamAreNumberedFromOne) {
  MappedMedia media;
  addStream(media, "1", 4);
  addStream(media, "2", 2);
  EXPECT_EQ(serviceTracks(service({{0, 2}, {0, 3}}), media), "1 channels 3-4");
  EXPECT_EQ(serviceTracks(service({{0, 3}}), media), "1 channel 4");
  EXPECT_EQ(serviceTracks(service({{0, 3}, {1, 0}}), media), "1 channel 4, 2 channel 1");
}

TEST(ServiceTracksTest, pairCodedStreamsTellTheirChannels) {
  MappedMedia media;
  addStream(media, "2003 / 2004-1", 6, true);
  addStream(media, "2003 / 2004-2", 2, true);
  EXPECT_EQ(serviceTracks(service({{1, 6}, {1, 7}}), media), "2003 / 2004-2 (2 channels)");
}

TEST(ServiceTracksTest, aServiceOfUnknownSizeHasNone) {
  ServiceMapResult unknown;
  unknown.trackCount = -1;
  EXPECT_EQ(serviceTracks(unknown, {}), "");
}

TEST(ServiceTracksTest, idsStayOnOneLine) {
  MappedMedia media;
  addStream(media, "1\n", 1);
  EXPECT_EQ(serviceTracks(service({{0, 0}}), media), "1\\n");
}

}  // namespace
}  // namespace kestrel::host
