#include "programme.h"

#include <sstream>
#include <stdexcept>
#include <string>

namespace {

// Ids and labels are ASCII here; a host with other labels widens them as its media library says.
std::wstring widened(const std::string& text) { return {text.begin(), text.end()}; }

kestrel::AudioStreamInfo streamOf(const std::string& line) {
  std::istringstream words(line);
  std::string id;
  std::string coding;
  kestrel::AudioStreamInfo stream;
  words >> id >> stream.channelCount >> stream.formatKey1 >> stream.formatKey2 >> coding;
  if (!words || (coding != "pcm" && coding != "dolby-e")) {
    throw std::runtime_error("this line describes no stream: " + line);
  }
  std::string labels;
  std::getline(words >> std::ws, labels);
  stream.streamId = widened(id);
  stream.trackLabels = widened(labels);
  stream.isPairCoded = coding == "dolby-e" ? 1 : 0;
  stream.formatKey3 = stream.isPairCoded;
  return stream;
}

}  // namespace

std::vector<kestrel::AudioStreamInfo> readProgramme(std::istream& text) {
  std::vector<kestrel::AudioStreamInfo> streams;
  for (std::string line; std::getline(text, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() || line.front() == '#') continue;
    streams.push_back(streamOf(line));
    streams.back().group = static_cast<std::int32_t>(streams.size());  // each is one of its own
  }
  return streams;
}
