#include "host/reading/external_data.h"

#include <gtest/gtest.h>

#include <string>

#include "host/reading/media_facts.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

std::string bigEndian(std::uint64_t number, int bytes) {
  std::string text;
  for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8) {
    text.push_back(static_cast<char>(number >> shift & 0xFF));
  }
  return text;
}

std::string box(const std::string& type, const std::string& content) {
  return bigEndian(8 + content.size(), 4) + type + content;
}

std::string entry(unsigned flags, const std::string& type = "url ") {
  return box(type, bigEndian(flags, 4));
}

std::string track(const std::string& entries) {
  const std::string references = box("dref", bigEndian(0, 8) + entries);
  return box("trak", box("tkhd", "x") +
                         box("mdia", box("minf", box("smhd", "") + box("dinf", references))));
}

bool isExternal(const std::string& content) {
  const TemporaryDirectory directory;
  return hasExternalData(InputFile(directory.write("film.mov", content)));
}

TEST(ExternalDataTest, aFileThatHoldsItsTracksHasNone) {
  EXPECT_FALSE(
      isExternal(box("ftyp", "qt  ") + box("mdat", "sound") + box("moov", track(entry(1)))));
  EXPECT_FALSE(isExternal(box("moov", track(entry(1)) + track(entry(1) + entry(0x101)))));
  EXPECT_FALSE(isExternal(box("moov", track(""))));
}

TEST(ExternalDataTest, oneEntryOfOneTrackIsEnough) {
  EXPECT_TRUE(isExternal(box("moov", track(entry(0)))));
  EXPECT_TRUE(isExternal(box("moov", track(entry(0, "alis")))));
  EXPECT_TRUE(isExternal(box("moov", track(entry(2, "urn ")))));
  EXPECT_TRUE(
      isExternal(box("mdat", "") + box("moov", track(entry(1)) + track(entry(1) + entry(0)))));
}

TEST(ExternalDataTest, aReferenceMovieIsOne) {
  EXPECT_TRUE(isExternal(box("moov", box("rmra", box("rmda", "")))));
  EXPECT_FALSE(isExternal(box("rmra", "")));
  EXPECT_FALSE(isExternal(box("moov", box("trak", box("rmra", "")))));
}

TEST(ExternalDataTest, lengthsMayBeLongOrOpen) {
  const std::string moov = box("moov", track(entry(0)));
  EXPECT_TRUE(isExternal(bigEndian(1, 4) + "mdat" + bigEndian(17, 8) + "x" + moov));
  EXPECT_TRUE(isExternal(bigEndian(0, 4) + moov.substr(4)));
  EXPECT_FALSE(isExternal(bigEndian(0, 4) + "mdat" + moov));
}

TEST(ExternalDataTest, whatMakesNoSenseEndsTheSearch) {
  const std::string moov = box("moov", track(entry(0)));
  EXPECT_FALSE(isExternal(bigEndian(7, 4) + "mdat" + moov));
  EXPECT_FALSE(isExternal(bigEndian(1, 4) + "mdat" + bigEndian(15, 8) + moov));
  EXPECT_FALSE(isExternal(bigEndian(1, 4) + "mdat" + bigEndian(~std::uint64_t{0}, 8) + moov));
  EXPECT_FALSE(isExternal(bigEndian(1, 4) + "mdat" + "1234"));
  EXPECT_FALSE(isExternal(bigEndian(500, 4) + "mdat" + moov));
  EXPECT_FALSE(isExternal("mdat"));
  for (std::size_t length = 1; length < moov.size(); ++length) {
    isExternal(moov.substr(0, length));  // ends, whatever it says
  }
}

}  // namespace
}  // namespace kestrel::host
