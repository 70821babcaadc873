// Real files, read by the real reader process and mapped. The texts are those of mapping_as_text.h.
#include "host/reading/libmediainfo_reader.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <iterator>
#include <thread>

#include "host/reading/media_facts.h"
#include "host/reading/reader_process.h"
#include "tests/host/support/mapping_as_text.h"
#include "tests/host/support/program_run.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

using Texts = std::vector<std::string>;
using namespace std::chrono_literals;

const std::filesystem::path kMedia = KESTREL_TEST_MEDIA;

ReadMedia readFile(const std::filesystem::path& file) {
  return LibmediainfoReader(KESTREL_PROGRAM, {60s}).read(file);
}

MappedMedia mapped(const std::string& name) { return mapMedia(readFile(kMedia / name).raw); }

Texts repeated(int count, int first, const std::string& rest) {
  Texts texts;
  for (int number = first; number < first + count; ++number) {
    texts.push_back(std::to_string(number) + rest);
  }
  return texts;
}

TEST(LibmediainfoReaderTest, mxfMonoTracksHaveTheirIdsAndLabels) {
  const Texts labelled = {"2001 [L] 1x48000/24",   "2002 [R] 1x48000/24",  "2003 [C] 1x48000/24",
                          "2004 [LFE] 1x48000/24", "2005 [Ls] 1x48000/24", "2006 [Rs] 1x48000/24",
                          "2007 [L] 1x48000/24",   "2008 [R] 1x48000/24"};
  EXPECT_EQ(mappingAsText(mapped("mxf_8mono_mca.mxf")), labelled);
  EXPECT_EQ(mappingAsText(mapped("as11_8b_mca.mxf")), labelled);
  EXPECT_EQ(mappingAsText(mapped("mxf_8mono.mxf")), repeated(8, 3, " [] 1x48000/24"));
  EXPECT_EQ(mappingAsText(mapped("mxf_16mono.mxf")), repeated(16, 3, " [] 1x48000/16"));
}

TEST(LibmediainfoReaderTest, theDeclaredLayoutIsThatOfAs11Metadata) {
  EXPECT_EQ(mapped("as11_8b_mca.mxf").declaredLayout, "EBU R 123: 8b");
  EXPECT_EQ(mapped("as11_12d_dolby_e.mxf").declaredLayout, "EBU R 123: 12d");
  EXPECT_EQ(mapped("mxf_8mono_mca.mxf").declaredLayout, "");
}

TEST(LibmediainfoReaderTest, labelsThatTheReaderInventsFromACodeAreDropped) {
  EXPECT_EQ(mappingAsText(mapped("as11_12d_dolby_e.mxf")),
            (Texts{"2001 [] 1x48000/24", "2002 [] 1x48000/24",
                   "2003 / 2004-1 [L C Ls R LFE Rs] 6x48000/20 pair",
                   "2003 / 2004-2 [L R] 2x48000/20 pair", "2005 [] 1x48000/24",
                   "2006 [] 1x48000/24", "2007 / 2008-1 [L C Ls R LFE Rs] 6x48000/20 pair",
                   "2007 / 2008-2 [L R] 2x48000/20 pair", "2009 [] 1x48000/24",
                   "2010 [] 1x48000/24", "2011 [] 1x48000/24", "2012 [] 1x48000/24"}));
}

TEST(LibmediainfoReaderTest, aSplitTrackCountsByChannels) {
  EXPECT_EQ(
      mappingAsText(mapped("mxf_8ch_dolby_e_split.mxf")),
      (Texts{"1 [] 1x48000/24", "2 [] 1x48000/24", "3 / 4-1 [L C Ls R LFE Rs] 6x48000/20 pair",
             "3 / 4-2 [L R] 2x48000/20 pair", "5 [] 1x48000/24", "6 [] 1x48000/24",
             "7 / 8-1 [L C Ls R LFE Rs] 6x48000/20 pair", "7 / 8-2 [L R] 2x48000/20 pair"}));
  EXPECT_EQ(mapped("mxf_8ch_dolby_e_split.mxf").shown.front().id, "2001-1");
}

TEST(LibmediainfoReaderTest, partsOfALabelledTrackTakeTheirOwnLabel) {
  EXPECT_EQ(
      mappingAsText(mapped("mov_6ch_dolby_e.mov")),
      (Texts{"1 [L] 1x48000/24", "2 [R] 1x48000/24", "3 / 4-1 [L C Ls R LFE Rs] 6x48000/20 pair",
             "3 / 4-2 [L R] 2x48000/20 pair", "5 [Ls] 1x48000/24", "6 [Rs] 1x48000/24"}));
}

TEST(LibmediainfoReaderTest, aSplitTrackBesideOthersIsBroughtTogetherAndRenumbered) {
  EXPECT_EQ(
      mappingAsText(mapped("mov_6ch_dolby_e_stereo.mov")),
      (Texts{"101 [L] 1x48000/24", "102 [R] 1x48000/24",
             "103 / 104-1 [L C Ls R LFE Rs] 6x48000/20 pair", "103 / 104-2 [L R] 2x48000/20 pair",
             "105 [Ls] 1x48000/24", "106 [Rs] 1x48000/24", "2 [L R] 2x48000/24"}));
}

TEST(LibmediainfoReaderTest, multichannelWaveFilesAreSplitWithoutATrackNumber) {
  EXPECT_EQ(
      mappingAsText(mapped("wav_6ch_dolby_e.wav")),
      (Texts{"1 [] 1x48000/24", "2 [] 1x48000/24", "3 / 4-1 [L C Ls R LFE Rs] 6x48000/20 pair",
             "3 / 4-2 [L R] 2x48000/20 pair", "5 [] 1x48000/24", "6 [] 1x48000/24"}));
  EXPECT_EQ(mappingAsText(mapped("wav_6ch_dolby_e_mask.wav")).front(), "1 [L] 1x48000/24");
}

TEST(LibmediainfoReaderTest, theProgrammesOfTwoChannelWaveFilesShareOnePair) {
  EXPECT_EQ(
      mappingAsText(mapped("wav_dolby_e.wav")),
      (Texts{"1 [L C Ls R LFE Rs] 6x48000/20 shared pair", "2 [L R] 2x48000/20 shared pair"}));
  EXPECT_EQ(mappingAsText(mapped("wav_dolby_e_one_programme.wav")),
            Texts{"1 [L C Ls R LFE Rs] 6x48000/20 shared pair"});
  EXPECT_EQ(mappingAsText(mapped("wav_ac3_iec61937.wav")),
            Texts{"1 [L R C LFE Ls Rs] 6x48000/16 shared pair"});
}

TEST(LibmediainfoReaderTest, programmesThatStandApartAreBroughtTogetherWhateverTheirFormat) {
  EXPECT_EQ(
      mappingAsText(mapped("mov_dolby_e_2_and_4.mov")),
      (Texts{"1 [L R] 2x48000/24", "2-1 [L C Ls R LFE Rs] 6x48000/20 pair",
             "2-2 [L R] 2x48000/20 pair", "3-1 [L R] 2x48000/20 pair", "3-2 [L R] 2x48000/20 pair",
             "3-3 [L R] 2x48000/20 pair", "3-4 [L R] 2x48000/24 pair", "4 [L R] 2x48000/24"}));
}

TEST(LibmediainfoReaderTest, backChannelsAreReadAsSurround) {
  const Texts surround = {"1 [L R C LFE Ls Rs] 6x48000/16", "2 [L R] 2x48000/16"};
  EXPECT_EQ(mappingAsText(mapped("mov_51back_stereo.mov")), surround);
  EXPECT_EQ(mappingAsText(mapped("mov_51side_stereo.mov")), surround);
  EXPECT_EQ(mappingAsText(mapped("wav_51back.wav")), Texts{"1 [L R C LFE Ls Rs] 6x48000/16"});
  EXPECT_EQ(mappingAsText(mapped("mov_6mono_back.mov")),
            (Texts{"1 [L] 1x48000/16", "2 [R] 1x48000/16", "3 [C] 1x48000/16", "4 [LFE] 1x48000/16",
                   "5 [Ls] 1x48000/16", "6 [Rs] 1x48000/16"}));
}

TEST(LibmediainfoReaderTest, otherContainersGiveWhatTheyHave) {
  const struct {
    const char* name;
    Texts expected;
  } rows[] = {
      {"mxf_51_stereo.mxf", {"3 [] 6x48000/16", "4 [] 2x48000/16"}},
      {"mov_mixed_rates.mov", {"1 [] 1x48000/16", "2 [] 1x44100/16"}},
      {"mov_mixed_depths.mov", {"1 [C] 1x48000/16", "2 [C] 1x48000/24"}},
      {"wav_8ch_no_mask.wav", {"1 [] 8x48000/16"}},
      {"wav_mono.wav", {"1 [C] 1x48000/24"}},
      {"rf64_stereo.wav", {"1 [] 2x48000/16"}},
      {"aiff_stereo.aiff", {"1 [] 2x48000/16"}},
      {"caf_stereo.caf", {"1 [] 2x48000/16"}},
      {"mkv_2mono.mkv", {"1 [] 1x48000/16", "2 [] 1x48000/16"}},
      {"mp4_aac_51.mp4", {"1 [C L R Ls Rs LFE] 6x48000/0"}},
      {"ts_ac3_51_mp2.ts", {"257 [L R C LFE Ls Rs] 6x48000/0", "258 [] 2x48000/0"}},
      {"mxf_no_audio.mxf", {}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(mappingAsText(mapped(row.name)), row.expected) << row.name;
  }
}

TEST(LibmediainfoReaderTest, aTruncatedFileIsReadWithAWarning) {
  const MappedMedia media = mapped("mxf_truncated.mxf");
  EXPECT_EQ(media.streams.size(), 8u);
  ASSERT_EQ(media.warnings.size(), 1u);
  EXPECT_EQ(media.warnings.front().id, "truncated");
}

TEST(LibmediainfoReaderTest, aFileOnWhichTheReaderHangsIsReadAgainInAQuickWay) {
  const ReadMedia read =
      LibmediainfoReader(KESTREL_PROGRAM, {1s}).read(kMedia / "mxf_reader_never_returns.mxf");
  EXPECT_EQ(read.reader, "libmediainfo-quick");
  EXPECT_EQ(read.quickReason,
            "libmediainfo did not return within 1s; the file was read in its quick mode, which may "
            "miss Dolby E and other pair-coded audio");
  EXPECT_EQ(mappingAsText(mapMedia(read.raw)), repeated(4, 2001, " [] 1x48000/24"));
}

TEST(LibmediainfoReaderTest, aFileThatIsOverTheTimeLimitDoesNotTouchTheNext) {
  const LibmediainfoReader reader(KESTREL_PROGRAM, {1s});
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(reader.read(kMedia / "mxf_reader_never_returns.mxf").reader, "libmediainfo-quick");
    const ReadMedia next = reader.read(kMedia / "mxf_8ch_dolby_e_split.mxf");
    EXPECT_EQ(next.reader, "libmediainfo");
    EXPECT_EQ(mapMedia(next.raw).streams.size(), 8u);
  }
}

TEST(LibmediainfoReaderTest, aReaderThatWasEndedWhileIdleIsReplaced) {
  const LibmediainfoReader reader(KESTREL_PROGRAM, {60s});
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(reader.read(kMedia / "wav_mono.wav").raw.container, "Wave");
    const std::vector<pid_t> children = childrenOf(::getpid());
    ASSERT_EQ(children.size(), 1u);
    ::kill(children.front(), SIGKILL);
  }
}

TEST(LibmediainfoReaderTest, threadsShareIt) {
  const LibmediainfoReader reader(KESTREL_PROGRAM, {60s});
  std::vector<std::string> containers(8);
  {
    std::vector<std::jthread> threads;
    for (std::string& container : containers) {
      threads.emplace_back([&] { container = reader.read(kMedia / "wav_mono.wav").raw.container; });
    }
  }
  EXPECT_EQ(containers, Texts(8, "Wave"));
  EXPECT_EQ(reader.read(kMedia / "mxf_8mono.mxf").raw.container, "MXF");
}

TEST(LibmediainfoReaderTest, aFileThatReadsWellHasNoWarning) {
  const ReadMedia read = readFile(kMedia / "mxf_8mono.mxf");
  EXPECT_EQ(read.reader, "libmediainfo");
  EXPECT_EQ(read.quickReason, "");
}

std::string failureOf(const std::string& program, std::chrono::milliseconds timeLimit,
                      const std::filesystem::path& file = kMedia / "wav_mono.wav") {
  try {
    LibmediainfoReader(program, {timeLimit}).read(file);
    return "none";
  } catch (const NotExamined& reason) {
    return reason.what();
  }
}

TEST(LibmediainfoReaderTest, whatIsNoMediaIsSaid) {
  const TemporaryDirectory directory;
  const std::string unknown = "not a media file that libmediainfo knows";
  EXPECT_EQ(failureOf(KESTREL_PROGRAM, 60s, directory.write("text.mxf", "plain text\n")), unknown);
  EXPECT_EQ(failureOf(KESTREL_PROGRAM, 60s, directory / "nothing"), "no such file");
}

// The id of the reason why the program does not examine a file.
std::string reasonFor(const std::filesystem::path& file, const ReadingLimits& limits = {}) {
  try {
    return "read: " + LibmediainfoReader(KESTREL_PROGRAM, limits).read(file).raw.container;
  } catch (const NotExamined& reason) {
    return reason.id();
  }
}

// Each of these had the sound of the good file beside it before.
TEST(LibmediainfoReaderTest, aFileThatRefersToOthersIsRefused) {
  const TemporaryDirectory directory;
  const std::string good = (directory / "good.mxf").string();
  std::filesystem::copy_file(kMedia / "mxf_8mono.mxf", good);
  const std::string xml = "<?xml version=\"1.0\"?>";
  for (const std::string& name : Texts{"good.mxf", "./good.mxf", "x/../good.mxf", good}) {
    const struct {
      const char* name;
      std::string content;
    } lists[] = {
        {"HLS", "#EXTM3U\n#EXT-X-TARGETDURATION:10\n#EXTINF:10,\n" + name + "\n#EXT-X-ENDLIST\n"},
        {"DASH", xml +
                     "<MPD xmlns=\"urn:mpeg:dash:schema:mpd:2011\"><Period><AdaptationSet>"
                     "<Representation id=\"1\"><BaseURL>" +
                     name + "</BaseURL></Representation></AdaptationSet></Period></MPD>"},
        {"ISM", xml +
                    "<smil xmlns=\"http://www.w3.org/2001/SMIL20/Language\"><head></head><body>"
                    "<switch><audio src=\"" +
                    name +
                    "\" systemBitrate=\"1\"><param name=\"trackID\" value=\"2\"/></audio>"
                    "</switch></body></smil>"},
        {"CPL", xml +
                    "<CompositionPlaylist xmlns=\"http://www.smpte-ra.org/schemas/429-7/2006/CPL\">"
                    "<Id>urn:uuid:1</Id><ReelList><Reel><Id>urn:uuid:2</Id><AssetList><MainSound>"
                    "<Id>urn:uuid:3</Id><EditRate>24 1</EditRate></MainSound></AssetList></Reel>"
                    "</ReelList></CompositionPlaylist>"},
        {"AM", xml +
                   "<AssetMap xmlns=\"http://www.smpte-ra.org/schemas/429-9/2007/AM\"><Id>1</Id>"
                   "<AssetList><Asset><Id>urn:uuid:3</Id><ChunkList><Chunk><Path>" +
                   name + "</Path></Chunk></ChunkList></Asset></AssetList></AssetMap>"},
    };
    for (const auto& list : lists) {
      const auto file = directory.write("delivery.mxf", list.content);
      EXPECT_EQ(reasonFor(file), "refers-to-other-files") << list.name << " " << name;
    }
  }
}

TEST(LibmediainfoReaderTest, aMovFileWhoseSoundIsElsewhereIsRefused) {
  const TemporaryDirectory directory;
  const auto file = directory / "film.mov";
  std::filesystem::copy_file(kMedia / "mov_6mono_back.mov", file);
  EXPECT_EQ(reasonFor(file), "read: MPEG-4");
  std::fstream stream(file, std::ios::in | std::ios::out | std::ios::binary);
  std::string content(std::istreambuf_iterator<char>(stream), {});
  const std::string inThisFile("url \0\0\0\1", 8);
  const std::size_t entry = content.rfind(inThisFile);
  ASSERT_NE(entry, std::string::npos);
  stream.clear();
  stream.seekp(static_cast<std::streamoff>(entry + 7)).put('\0');
  stream.close();
  EXPECT_EQ(reasonFor(file), "refers-to-other-files");
}

TEST(LibmediainfoReaderTest, aFileThatTakesMoreMemoryThanTheLimitIsSaid) {
  const TemporaryDirectory directory;
  const auto path = directory.write(
      "reader", fmt::format("#!/bin/sh\necho exited {} 0\ncat >/dev/null\n", kReaderOverMemory));
  std::filesystem::permissions(path, std::filesystem::perms::owner_all);
  try {
    LibmediainfoReader(path.string(), {60s}).read(kMedia / "wav_mono.wav");
    ADD_FAILURE() << "accepted";
  } catch (const NotExamined& reason) {
    EXPECT_EQ(reason.id(), "memory-limit");
    EXPECT_STREQ(reason.what(), "takes more memory than the limit (--memory-limit)");
  }
}

// The read end of a lease: whoever opens the file waits for its holder, 45 s by default.
TEST(LibmediainfoReaderTest, openingIsWithinTheTimeLimit) {
  const TemporaryDirectory directory;
  const auto file = directory.write("leased.wav", "RIFF");
  const int holder = ::open(file.c_str(), O_RDWR);
  struct sigaction ignored {};
  ignored.sa_handler = SIG_IGN;
  ::sigaction(SIGIO, &ignored, nullptr);
  if (::fcntl(holder, F_SETLEASE, F_WRLCK) != 0) {
    ::close(holder);
    GTEST_SKIP() << "this file system has no leases";
  }
  EXPECT_EQ(reasonFor(file, {200ms}), "time-limit");
  ::close(holder);
}

TEST(LibmediainfoReaderTest, aReaderProcessThatGoesWrongIsSaid) {
  const TemporaryDirectory directory;
  const auto script = [&](const std::string& name, const std::string& text) {
    const auto path = directory.write(name, "#!/bin/sh\n" + text + "\n");
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    return path.string();
  };
  EXPECT_EQ(failureOf("/bin/false", 60s), "the reader failed with exit code 1");
  EXPECT_EQ(failureOf("/bin/echo", 60s), "the reader does not answer in its form");
  EXPECT_EQ(failureOf(script("no json", "echo exited 0 3; printf abc; cat >/dev/null"), 60s),
            "the reader's answer cannot be understood");
  EXPECT_EQ(failureOf(script("crash", "echo signalled 11 0; cat >/dev/null"), 60s),
            "the reader was ended by signal 11");
  EXPECT_EQ(failureOf(script("failure", "echo exited 9 0; cat >/dev/null"), 60s),
            "the reader failed with exit code 9");
  EXPECT_EQ(failureOf(script("much", "echo exited 0 99999999; exec yes"), 60s),
            "the reader's answer is too long");
  EXPECT_EQ(failureOf(script("killed", "kill -KILL $$"), 60s), "the reader was ended by signal 9");
  EXPECT_EQ(failureOf(script("endless", "exec tail -f /dev/null"), 50ms),
            "libmediainfo did not return within the time limit of 0.05s, twice");
  EXPECT_EQ(failureOf("/no/such/program", 60s),
            "the reader cannot be started: no such file or directory");
}

}  // namespace
}  // namespace kestrel::host
