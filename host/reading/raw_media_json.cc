#include "host/reading/raw_media_json.h"

#include <nlohmann/json.hpp>

#include "host/reading/not_examined.h"

namespace kestrel::host {

NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(RawAudioStream, id, format, muxingMode, channels, channelLayout,
                                   channelLayoutId, samplingRate, bitDepth)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(RawMedia, container, isTruncated, declaredLayout, audioStreams)

std::string rawMediaToJson(const RawMedia& media) {
  constexpr int kOneLine = -1;
  constexpr bool kAsciiOnly = true;
  return nlohmann::json(media).dump(kOneLine, ' ', kAsciiOnly,
                                    nlohmann::json::error_handler_t::replace);
}

RawMedia rawMediaFromJson(std::string_view json) {
  try {
    return nlohmann::json::parse(json).get<RawMedia>();
  } catch (const nlohmann::json::exception&) {
    throw NotExamined("reader-failed", "the reader's answer cannot be understood");
  }
}

}  // namespace kestrel::host
