#include "tests/host/support/mapping_as_text.h"

#include "host/basics/utf8.h"

namespace kestrel::host {

std::vector<std::string> mappingAsText(const MappedMedia& media) {
  std::vector<std::string> texts;
  for (const AudioStreamInfo& stream : media.streams) {
    const char* pair = stream.isPairCoded == 0    ? ""
                       : stream.isPairShared == 0 ? " pair"
                                                  : " shared pair";
    texts.push_back(utf8FromWide(stream.streamId) + " [" + utf8FromWide(stream.trackLabels) + "] " +
                    std::to_string(stream.channelCount) + "x" + std::to_string(stream.formatKey1) +
                    "/" + std::to_string(stream.formatKey2) + pair);
  }
  return texts;
}

}  // namespace kestrel::host
