#include "host/reading/reader_protocol.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "host/reading/media_facts.h"

namespace kestrel::host {
namespace {

TEST(RawMediaJsonTest, everyFieldComesBack) {
  RawMedia media{"MXF", "Yes", "EBU R 123: 8b", {}};
  media.audioStreams.push_back({"2001", "PCM", "Multiple", "1", "L", "id", "48000", "24"});
  media.audioStreams.push_back({});
  const RawMedia copy = rawMediaFromJson(rawMediaToJson(media));
  EXPECT_EQ(copy.container, "MXF");
  EXPECT_EQ(copy.isTruncated, "Yes");
  EXPECT_EQ(copy.declaredLayout, "EBU R 123: 8b");
  ASSERT_EQ(copy.audioStreams.size(), 2u);
  const RawAudioStream& stream = copy.audioStreams.front();
  EXPECT_EQ(stream.id, "2001");
  EXPECT_EQ(stream.format, "PCM");
  EXPECT_EQ(stream.muxingMode, "Multiple");
  EXPECT_EQ(stream.channels, "1");
  EXPECT_EQ(stream.channelLayout, "L");
  EXPECT_EQ(stream.channelLayoutId, "id");
  EXPECT_EQ(stream.samplingRate, "48000");
  EXPECT_EQ(stream.bitDepth, "24");
}

TEST(RawMediaJsonTest, isOneLineOfAsciiWhateverTheTexts) {
  const std::string json = rawMediaToJson({"a\nb\"\xc3\xa9", "\xff", std::string(1, '\0'), {}});
  EXPECT_TRUE(std::ranges::all_of(json, [](char unit) { return unit >= ' ' && unit <= '~'; }));
  const RawMedia copy = rawMediaFromJson(json);
  EXPECT_EQ(copy.container, "a\nb\"\xc3\xa9");
  EXPECT_EQ(copy.isTruncated, "\xef\xbf\xbd");
  EXPECT_EQ(copy.declaredLayout, std::string(1, '\0'));
}

TEST(RawMediaJsonTest, anythingElseIsRejected) {
  const std::string whole = rawMediaToJson({});
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_THROW(rawMediaFromJson(whole.substr(0, length)), NotExamined) << length;
  }
  for (const char* text : {"null", "[]", "{}", "{\"container\":1}"}) {
    EXPECT_THROW(rawMediaFromJson(text), NotExamined) << text;
  }
}

}  // namespace
}  // namespace kestrel::host
