#include "host/reading/mediainfo_json.h"

#include <gtest/gtest.h>

#include "host/basics/text_input.h"
#include "host/reading/media_facts.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

constexpr char kOneFile[] = R"({"creatingLibrary": {}, "media": {"@ref": "a/b.mxf", "track": [
  {"@type": "General", "Format": "MXF", "extra": {"IsTruncated": "Yes"}},
  {"@type": "Audio", "ID": "2001", "Format": "PCM", "Channels": "1", "ChannelLayout": "L",
   "ChannelLayoutID": "x", "SamplingRate": "48000", "BitDepth": "24", "MuxingMode": "y"},
  {"@type": "Other", "Format": "MXF TC", "extra": {"AudioTrackLayout": "no"}},
  {"@type": "Other", "Format": "AS-11 Core", "extra": {"AudioTrackLayout": "EBU R 123: 8b"}}]}})";

TEST(MediainfoJsonTest, everyFieldArrives) {
  const std::vector<NamedMedia> files = mediaFromMediainfoJson(kOneFile);
  ASSERT_EQ(files.size(), 1u);
  EXPECT_EQ(files[0].file, "a/b.mxf");
  EXPECT_EQ(files[0].media.container, "MXF");
  EXPECT_EQ(files[0].media.isTruncated, "Yes");
  EXPECT_EQ(files[0].media.declaredLayout, "EBU R 123: 8b");
  ASSERT_EQ(files[0].media.audioStreams.size(), 1u);
  const RawAudioStream& stream = files[0].media.audioStreams[0];
  EXPECT_EQ(stream.id + stream.format + stream.channels + stream.channelLayout +
                stream.channelLayoutId + stream.samplingRate + stream.bitDepth + stream.muxingMode,
            "2001PCM1Lx4800024y");
}

TEST(MediainfoJsonTest, theFirstDeclarationCounts) {
  const auto record = [](const std::string& layout) {
    return R"(, {"@type": "Other", "Format": "AS-11 Core", "extra": {"AudioTrackLayout": ")" +
           layout + "\"}}";
  };
  const auto declared = [](const std::string& records) {
    return mediaFromMediainfoJson(R"({"media": {"track": [{"@type": "General"})" + records + "]}}")
        .at(0)
        .media.declaredLayout;
  };
  EXPECT_EQ(declared(record("EBU R 123: 8b") + record("EBU R 123: 8a")), "EBU R 123: 8b");
  EXPECT_EQ(declared(record("EBU R 123: 8a") + record("EBU R 123: 8b")), "EBU R 123: 8a");
  EXPECT_EQ(declared(record("") + record("EBU R 123: 8b")), "EBU R 123: 8b");
  EXPECT_EQ(declared(""), "");
}

TEST(MediainfoJsonTest, severalFilesAreAnArray) {
  const std::string text = "[" + std::string(kOneFile) + ", {\"media\": null}]";
  const std::vector<NamedMedia> files = mediaFromMediainfoJson(text);
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ(files[1].media.container, "");
}

std::string refusal(const std::string& text) {
  try {
    mediaFromMediainfoJson(text);
    return "accepted";
  } catch (const NotExamined& reason) {
    return reason.id();
  }
}

TEST(MediainfoJsonTest, jsonOfSomethingElseIsRefused) {
  for (const char* text :
       {"", " ", "{", "null", "7", "\"media\"", "{}", "[7]", "[[]]", "{\"media\": 7}",
        "{\"media\": {}}", "{\"media\": {\"track\": {}}}", "{\"streams\": []}", "[null]",
        "{\"media\": {\"@ref\": \"\xff\", \"track\": []}}", "<MediaInfo/>"}) {
    EXPECT_EQ(refusal(text), "bad-json") << text;
  }
}

TEST(MediainfoJsonTest, fieldsOfAnotherTypeAreAbsent) {
  const auto files = mediaFromMediainfoJson(
      R"({"media": {"@ref": 1, "track": [7, {"@type": "General", "Format": {}},
          {"@type": "Audio", "Channels": 2, "ID": null},
          {"@type": "Other", "Format": "AS-11 Core", "extra": 7}]}})");
  EXPECT_EQ(files[0].media.container, "");
  EXPECT_EQ(files[0].media.audioStreams.size(), 1u);
  EXPECT_EQ(files[0].media.audioStreams[0].channels, "");
}

TEST(MediainfoJsonTest, aDeepNestingIsNoDanger) {
  EXPECT_EQ(refusal(std::string(1'000'000, '[')), "bad-json");
}

TEST(MediainfoJsonTest, aVeryLongJsonIsRefused) {
  EXPECT_EQ(refusal(std::string(100'000'000, ' ')), "json-too-long");
}

std::string answer(const JsonReader& reader, const std::filesystem::path& file) {
  try {
    return reader.read(file).raw.container;
  } catch (const NotExamined& reason) {
    return reason.id();
  }
}

TEST(JsonReaderTest, aFileIsFoundByItsName) {
  const TemporaryDirectory directory;
  const auto source =
      directory.write("two.json", R"([{"media": {"@ref": "in/a.wav", "track": [{"@type": "General",
      "Format": "Wave"}]}}, {"media": {"@ref": "C:\\in\\b.mxf", "track": [{"@type": "General",
      "Format": "MXF"}]}}, {"media": {"@ref": "c", "track": []}}])");
  const JsonReader reader(source.string());
  EXPECT_EQ(reader.files(), (std::vector<std::string>{"in/a.wav", "C:\\in\\b.mxf", "c"}));
  EXPECT_EQ(answer(reader, "in/a.wav"), "Wave");
  EXPECT_EQ(answer(reader, "other/a.wav"), "Wave");
  EXPECT_EQ(answer(reader, "b.mxf"), "MXF");
  EXPECT_EQ(answer(reader, "d"), "not-in-json");
  EXPECT_EQ(answer(reader, "c"), "not-media");
}

TEST(JsonReaderTest, theFirstOfTwoFilesOfOneNameIsTaken) {
  const TemporaryDirectory directory;
  const auto file = [](const std::string& name, const std::string& format) {
    return R"({"media": {"@ref": ")" + name + R"(", "track": [{"@type": "General", "Format": ")" +
           format + R"("}]}})";
  };
  const auto source =
      directory.write("three.json", "[" + file("a/x.wav", "1") + "," + file("b/x.wav", "2") + "," +
                                        file("b/x.wav", "3") + "]");
  const JsonReader reader(source.string());
  EXPECT_EQ(answer(reader, "a/x.wav"), "1");
  EXPECT_EQ(answer(reader, "b/x.wav"), "2");
  EXPECT_EQ(answer(reader, "c/x.wav"), "1");
}

// A walk along all files for each of them would take minutes.
TEST(JsonReaderTest, manyFilesAreEachFoundAtOnce) {
  constexpr std::size_t kFiles = 80'000;
  const TemporaryDirectory directory;
  std::string json;
  for (std::size_t index = 0; index < kFiles; ++index) {
    json += (json.empty() ? "[" : ",") + std::string(R"({"media": {"@ref": "in/)") +
            std::to_string(index) + R"(.wav", "track": [{"@type": "General", "Format": ")" +
            std::to_string(index) + R"("}]}})";
  }
  const JsonReader reader(directory.write("many.json", json + "]").string());
  const std::vector<std::string> names = reader.files();
  ASSERT_EQ(names.size(), kFiles);
  for (std::size_t index = 0; index < kFiles; ++index) {
    ASSERT_EQ(answer(reader, names[index]), std::to_string(index));
    ASSERT_EQ(answer(reader, "out/" + std::to_string(index) + ".wav"), std::to_string(index));
  }
  EXPECT_EQ(answer(reader, "in/none.wav"), "not-in-json");
}

TEST(JsonReaderTest, theOnlyFileHasAnyName) {
  const TemporaryDirectory directory;
  EXPECT_EQ(answer(JsonReader(directory.write("one.json", kOneFile).string()), "x"), "MXF");
}

TEST(JsonReaderTest, aSourceThatCannotBeReadIsSaid) {
  const TemporaryDirectory directory;
  for (const std::string name : {"none", "."}) {
    EXPECT_THROW(JsonReader((directory / name).string()), InputError);
  }
}

TEST(JsonReaderTest, aFileOf100MegabytesIsNotTakenIn) {
  const TemporaryDirectory directory;
  const auto file = directory.write("long.json", "[");
  std::filesystem::resize_file(file, 100'000'000);
  try {
    const JsonReader reader(file.string());
    ADD_FAILURE() << "accepted";
  } catch (const NotExamined& reason) {
    EXPECT_EQ(reason.id(), "json-too-long");
  }
}

}  // namespace
}  // namespace kestrel::host
