#include "host/reading/libmediainfo_fields.h"

#include <MediaInfo/MediaInfo.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/basics/utf8.h"
#include "host/reading/external_data.h"

namespace kestrel::host {
namespace {

using MediaInfoLib::MediaInfo;

// A Wave file of two samples. To read any file makes libmediainfo build its tables.
constexpr std::array<std::uint8_t, 48> kSmallestFile = {
    'R', 'I', 'F', 'F', 40, 0,    0, 0, 'W', 'A', 'V', 'E',  //
    'f', 'm', 't', ' ', 16, 0,    0, 0,                      // how long the format is
    1,   0,   1,   0,                                        // PCM, one channel
    128, 187, 0,   0,   0,  0x77, 1, 0,                      // 48000 Hz, 96000 bytes a second
    2,   0,   16,  0,                                        // bytes and bits of a sample
    'd', 'a', 't', 'a', 4,  0,    0, 0, 0,   0,   0,   0};

// Containers that are lists of other files, by libmediainfo's names. Those that name files beside
// their own sound show by the streams' "Source".
constexpr std::array<std::string_view, 13> kListsOfFiles = {
    "HLS",    "DASH MPD", "ISM",     "HDS F4M", "DCP AM",  "DCP CPL",     "DCP PKL",
    "IMF AM", "IMF CPL",  "IMF PKL", "DXW",     "P2 Clip", "SequenceInfo"};

std::string field(MediaInfo& library, MediaInfoLib::stream_t kind, std::size_t number,
                  const wchar_t* name) {
  return utf8FromWide(library.Get(kind, number, name));
}

RawAudioStream audioStream(MediaInfo& library, std::size_t number) {
  const auto text = [&](const wchar_t* name) {
    return field(library, MediaInfoLib::Stream_Audio, number, name);
  };
  return {
      .id = text(L"ID"),
      .format = text(L"Format"),
      .muxingMode = text(L"MuxingMode"),
      .channels = text(L"Channel(s)"),
      .channelLayout = text(L"ChannelLayout"),
      .channelLayoutId = text(L"ChannelLayoutID"),
      .samplingRate = text(L"SamplingRate"),
      .bitDepth = text(L"BitDepth"),
  };
}

std::string declaredLayout(MediaInfo& library) {
  const std::size_t count = library.Count_Get(MediaInfoLib::Stream_Other);
  for (std::size_t number = 0; number < count; ++number) {
    if (library.Get(MediaInfoLib::Stream_Other, number, L"Format") == L"AS-11 Core") {
      return field(library, MediaInfoLib::Stream_Other, number, L"AudioTrackLayout");
    }
  }
  return {};
}

std::string container(MediaInfo& library) {
  return field(library, MediaInfoLib::Stream_General, 0, L"Format");
}

// The file's bytes as libmediainfo asks for them: how many at a time it says by the hint, where it
// goes on by the place that it names. Until it knows the format it gets little at a time: what it
// has tried all its parsers on, the right one does not look through for coded audio.
void parse(const InputFile& file, MediaInfo& library) {
  constexpr std::size_t kAccepted = 1U << 0;  // of the parser's status bits
  constexpr std::size_t kFinished = 1U << 3;
  constexpr std::size_t kReadForFormat = 4096;
  constexpr std::size_t kLongestRead = 16U << 20;
  constexpr auto kNone = static_cast<std::uint64_t>(-1);
  std::size_t wanted = 64U << 10;
  library.Open_Buffer_Init(file.size(), 0);
  library.Option(L"File_Buffer_Size_Hint_Pointer",
                 std::to_wstring(reinterpret_cast<std::uintptr_t>(&wanted)));
  std::vector<std::uint8_t> buffer;
  std::size_t status = 0;
  for (std::uint64_t at = 0; at < file.size() && (status & kFinished) == 0;) {
    const bool isKnown = (status & kAccepted) != 0;
    buffer.resize(isKnown ? std::clamp(wanted, kReadForFormat, kLongestRead) : kReadForFormat);
    const std::size_t count = file.read(buffer, at);
    at += count;
    status = library.Open_Buffer_Continue(buffer.data(), count);
    const std::uint64_t next = library.Open_Buffer_Continue_GoTo_Get();
    if (next != kNone) {
      at = next;
      library.Open_Buffer_Init(kNone, at);
    }
  }
  library.Open_Buffer_Finalize();
}

bool anySource(MediaInfo& library) {
  for (int kind = 0; kind < MediaInfoLib::Stream_Max; ++kind) {
    const auto stream = static_cast<MediaInfoLib::stream_t>(kind);
    for (std::size_t number = 0; number < library.Count_Get(stream); ++number) {
      if (!library.Get(stream, number, L"Source").empty()) {
        return true;
      }
    }
  }
  return false;
}

// What such a file says about its sound is not what would be heard: the other files decide.
void rejectReferences(const InputFile& file, MediaInfo& library) {
  const std::string name = container(library);
  const bool isList = std::ranges::find(kListsOfFiles, name) != kListsOfFiles.end();
  if (isList || anySource(library) || (name == "MPEG-4" && hasExternalData(file))) {
    throw NotExamined("refers-to-other-files",
                      "refers to other files (" + name + "), which are not looked at");
  }
}

}  // namespace

void prepareLibmediainfo() {
  MediaInfo library;
  library.Open_Buffer_Init(kSmallestFile.size(), 0);
  library.Open_Buffer_Continue(kSmallestFile.data(), kSmallestFile.size());
  library.Open_Buffer_Finalize();
}

RawMedia readFieldsWithLibmediainfo(const InputFile& file, const std::string& parseSpeed) {
  MediaInfo library;
  if (!parseSpeed.empty()) {
    MediaInfo::Option_Static(L"ParseSpeed", std::wstring(parseSpeed.begin(), parseSpeed.end()));
  }
  parse(file, library);
  rejectReferences(file, library);
  RawMedia media{.container = container(library),
                 .isTruncated = field(library, MediaInfoLib::Stream_General, 0, L"IsTruncated"),
                 .declaredLayout = declaredLayout(library),
                 .audioStreams = {}};
  const std::size_t count = library.Count_Get(MediaInfoLib::Stream_Audio);
  for (std::size_t number = 0; number < count; ++number) {
    media.audioStreams.push_back(audioStream(library, number));
  }
  return media;
}

}  // namespace kestrel::host
