// Real files through both ways of reading, and what they are identified as.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "host/evidence/stream_mapping.h"
#include "host/evidence/track_map.h"
#include "host/judging/identification.h"
#include "host/judging/inspect_file.h"
#include "host/reading/child_process.h"
#include "host/reading/libmediainfo_reader.h"
#include "host/reading/mediainfo_json.h"
#include "host/reading/reader_protocol.h"
#include "tests/host/support/mapping_as_text.h"

namespace kestrel::host {
namespace {

using namespace std::chrono_literals;

const std::filesystem::path kMedia = KESTREL_TEST_MEDIA;
constexpr char kHanging[] = "mxf_reader_never_returns.mxf";

std::vector<std::filesystem::path> mediaFiles() {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(kMedia)) {
    const std::string extension = entry.path().extension();
    if (extension != ".md" && extension != ".py" && entry.path().filename() != kHanging) {
      files.push_back(entry.path());
    }
  }
  std::ranges::sort(files);
  return files;
}

RawMedia mediaByJson(const std::filesystem::path& file) {
  const auto untilItsEnd = [](std::string_view /*text*/) { return false; };
  const ChildOutcome outcome = ChildProcess({"mediainfo", "--Output=JSON", "-f", file.string()})
                                   .ask({"", 60s, 16U << 20, untilItsEnd});
  return mediaFromMediainfoJson(outcome.output).at(0).media;
}

RawMedia mediaByLibrary(const std::filesystem::path& file) {
  return LibmediainfoReader(KESTREL_PROGRAM, {60s}).read(file).raw;
}

// Read by a reader process that has read all files before it, and by one of its own.
TEST(BackEndsTest, noFileChangesTheReadingOfAnother) {
  const LibmediainfoReader shared(KESTREL_PROGRAM, {60s});
  for (const auto& file : mediaFiles()) {
    EXPECT_EQ(rawMediaToJson(shared.read(file).raw), rawMediaToJson(mediaByLibrary(file))) << file;
  }
}

TEST(BackEndsTest, bothGiveTheSameRecordsForEveryFile) {
  EXPECT_GE(mediaFiles().size(), 30u);
  for (const auto& file : mediaFiles()) {
    SCOPED_TRACE(file);
    const MappedMedia byLibrary = mapMedia(mediaByLibrary(file));
    const MappedMedia byJson = mapMedia(mediaByJson(file));
    EXPECT_EQ(mappingAsText(byJson), mappingAsText(byLibrary));
    EXPECT_EQ(byJson.container, byLibrary.container);
    EXPECT_EQ(byJson.declaredLayout, byLibrary.declaredLayout);
    EXPECT_EQ(byJson.warnings.size(), byLibrary.warnings.size());
    ASSERT_EQ(byJson.streams.size(), byLibrary.streams.size());
    for (std::size_t index = 0; index < byJson.streams.size(); ++index) {
      EXPECT_EQ(byJson.streams[index].group, byLibrary.streams[index].group);
      EXPECT_EQ(byJson.streams[index].formatKey3, byLibrary.streams[index].formatKey3);
      EXPECT_EQ(byJson.shown[index].id, byLibrary.shown[index].id);
    }
  }
}

FileResult inspected(const std::string& name) {
  InspectOptions options;
  options.reader = std::make_shared<LibmediainfoReader>(KESTREL_PROGRAM, ReadingLimits{60s});
  return inspectFile(kMedia / name, options);
}

TEST(RealFilesTest, areIdentified) {
  const struct {
    const char* name;
    const char* best;
  } rows[] = {
      {"as11_8b_mca.mxf", "\"5.1 Mix + Stereo Downmix\""},
      {"mxf_8mono_mca.mxf", "\"5.1 Mix + Stereo Downmix\""},
      {"as11_12d_dolby_e.mxf", "\"2x Stereo/Dolby E Pairs + 2 Stereo (R123 12d)\""},
      {"mov_51side_stereo.mov", "\"5.1 Mix + Stereo Downmix\""},
      {"mov_51back_stereo.mov", "\"5.1 Mix + Stereo Downmix\""},
      {"mov_6mono_back.mov", "\"5.1 Mix\""},
      {"mxf_51_stereo.mxf", "\"5.1 Mix + Stereo Downmix\""},
      {"ts_ac3_51_mp2.ts", "\"5.1 Mix + Stereo Downmix\""},
      {"mp4_aac_51.mp4", "\"5.1 Mix\""},
      {"wav_51back.wav", "\"5.1 Mix\""},
      {"wav_8ch_no_mask.wav", "\"7.1 Mix\""},
      {"mov_mixed_rates.mov", "\"2 Mono\""},
      {"rf64_stereo.wav", "\"Stereo\""},
      {"mkv_2mono.mkv", "\"Stereo\""},
  };
  for (const auto& row : rows) {
    const FileResult result = inspected(row.name);
    ASSERT_FALSE(result.judgement.identification.empty()) << row.name;
    EXPECT_EQ(bestInWords(result.judgement.identification), row.best) << row.name;
  }
}

TEST(RealFilesTest, whatNoLayoutFitsIsNotIdentified) {
  for (const char* name : {"wav_mono.wav", "wav_dolby_e.wav", "mov_6ch_dolby_e.mov",
                           "mxf_8ch_dolby_e_split.mxf", "mov_dolby_e_2_and_4.mov"}) {
    const FileResult result = inspected(name);
    EXPECT_TRUE(result.judgement.identification.empty()) << name;
    EXPECT_EQ(result.verdict.result, VerdictResult::kDoesNotConform) << name;
  }
}

TEST(RealFilesTest, theTracksAreAsManyAsTheLibraryCounts) {
  for (const auto& file : mediaFiles()) {
    const MappedMedia media = mapMedia(mediaByLibrary(file));
    EXPECT_EQ(LibraryAnalysis(LibraryStreams(media.streams), "", {}).trackTotal(),
              static_cast<std::int32_t>(trackMap(media).tracks.size()))
        << file;
  }
}

}  // namespace
}  // namespace kestrel::host
