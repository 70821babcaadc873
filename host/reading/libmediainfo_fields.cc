#include "host/reading/libmediainfo_fields.h"

#include <MediaInfo/MediaInfo.h>
#include <fcntl.h>

#include <array>
#include <clocale>
#include <cstdint>

#include "host/basics/utf8.h"

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

// Absolute and without doubled slashes: libmediainfo takes a name with "://" in it for an address.
std::filesystem::path plainPath(const std::filesystem::path& file) {
  std::filesystem::path plain;
  for (const std::filesystem::path& part : std::filesystem::absolute(file)) {
    plain /= part;
  }
  return plain;
}

// libmediainfo turns wide names into bytes by the locale, hence a UTF-8 locale. A name that is not
// UTF-8 goes through a descriptor, which stays open as long as the process.
std::wstring nameForLibrary(const std::filesystem::path& file) {
  // NOLINTNEXTLINE(concurrency-mt-unsafe): the reader process has one thread.
  std::setlocale(LC_CTYPE, "C.UTF-8");
  if (const auto wide = wideFromUtf8(plainPath(file).string())) {
    return *wide;
  }
  const int descriptor = ::open(file.c_str(), O_RDONLY);
  return L"/proc/self/fd/" + std::to_wstring(descriptor);
}

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

}  // namespace

void prepareLibmediainfo() {
  MediaInfo library;
  library.Open_Buffer_Init(kSmallestFile.size(), 0);
  library.Open_Buffer_Continue(kSmallestFile.data(), kSmallestFile.size());
  library.Open_Buffer_Finalize();
}

std::optional<RawMedia> readFieldsWithLibmediainfo(const std::filesystem::path& file,
                                                   const std::string& parseSpeed) {
  MediaInfo library;
  if (!parseSpeed.empty()) {
    MediaInfo::Option_Static(L"ParseSpeed", std::wstring(parseSpeed.begin(), parseSpeed.end()));
  }
  if (library.Open(nameForLibrary(file)) == 0) {
    return std::nullopt;
  }
  RawMedia media{.container = field(library, MediaInfoLib::Stream_General, 0, L"Format"),
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
