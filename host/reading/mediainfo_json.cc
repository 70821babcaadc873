// text    file | "[" file, file, ... "]"
// file    {"media": {"@ref": name, "track": [stream, ...]}}, or "media": null for a missing file
// stream  {"@type": "General" | "Audio" | "Other" | ..., field: text, ..., "extra": {field: text}}
#include "host/reading/mediainfo_json.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "host/basics/file_names.h"
#include "host/basics/json.h"
#include "host/basics/text_input.h"
#include "host/reading/media_facts.h"

namespace kestrel::host {
namespace {

[[noreturn]] void reject(const std::string& why) {
  throw NotExamined("bad-json", "the JSON is not that of mediainfo: " + why);
}

std::string textIn(const ForeignJson& object, const char* name) {
  const auto found = object.find(name);
  return found != object.end() && found->is_string() ? found->get<std::string>() : "";
}

// Some fields stand among the extra ones. Empty where there is none, or something else than a text.
std::string field(const ForeignJson& stream, const char* name) {
  const std::string text = textIn(stream, name);
  const auto extra = stream.find("extra");
  return text.empty() && extra != stream.end() ? textIn(*extra, name) : text;
}

RawAudioStream audioStream(const ForeignJson& stream) {
  return {
      .id = field(stream, "ID"),
      .format = field(stream, "Format"),
      .muxingMode = field(stream, "MuxingMode"),
      .channels = field(stream, "Channels"),
      .channelLayout = field(stream, "ChannelLayout"),
      .channelLayoutId = field(stream, "ChannelLayoutID"),
      .samplingRate = field(stream, "SamplingRate"),
      .bitDepth = field(stream, "BitDepth"),
  };
}

void addStream(const ForeignJson& stream, RawMedia& media) {
  const std::string type = field(stream, "@type");
  if (type == "General") {
    media.container = field(stream, "Format");
    media.isTruncated = field(stream, "IsTruncated");
  } else if (type == "Audio") {
    media.audioStreams.push_back(audioStream(stream));
  } else if (type == "Other" && field(stream, "Format") == "AS-11 Core" &&
             media.declaredLayout.empty()) {
    media.declaredLayout = field(stream, "AudioTrackLayout");
  }
}

NamedMedia namedMedia(const ForeignJson& file) {
  const auto media = file.is_object() ? file.find("media") : file.end();
  if (!file.is_object() || media == file.end()) {
    reject("a file has no \"media\"");
  }
  if (media->is_null()) {
    return {};
  }
  const auto tracks = media->is_object() ? media->find("track") : media->end();
  if (!media->is_object() || tracks == media->end() || !tracks->is_array()) {
    reject(R"(there is no list "track" in "media")");
  }
  NamedMedia named{field(*media, "@ref"), {}};
  for (const ForeignJson& stream : *tracks) {
    if (stream.is_object()) {
      addStream(stream, named.media);
    }
  }
  return named;
}

ForeignJson parsed(std::string_view text) {
  if (text.size() > kLongestMediainfoJson) {
    throw NotExamined("json-too-long", "the JSON is longer than 64 MiB");
  }
  ForeignJson json = parsedJson<ForeignJson>(text);
  if (json.is_discarded()) {
    reject("it is no JSON at all");
  }
  return json;
}

// The name without directories, of either kind of separator: the output may come from elsewhere.
std::string_view lastPart(std::string_view name) {
  return name.substr(name.find_last_of("/\\") + 1);
}

}  // namespace

// What a file was made of is dropped at once, so that both are never held in full.
std::vector<NamedMedia> mediaFromMediainfoJson(std::string_view text) {
  ForeignJson json = parsed(text);
  std::vector<NamedMedia> files;
  if (!json.is_array()) {
    files.push_back(namedMedia(json));
    return files;
  }
  files.reserve(json.size());
  for (ForeignJson& file : json) {
    files.push_back(namedMedia(std::exchange(file, nullptr)));
  }
  return files;
}

// One byte more than is taken, so that a text that is too long is told from one that just fits.
JsonReader::JsonReader(const std::string& source)
    : media_(mediaFromMediainfoJson(
          TextInput(pathFromUtf8(source)).takeRest(kLongestMediainfoJson + 1))) {
  for (std::size_t index = 0; index < media_.size(); ++index) {
    byName_.emplace(media_[index].file, index);
    byLastPart_.emplace(lastPart(media_[index].file), index);
  }
}

const NamedMedia* JsonReader::found(const std::string& name) const {
  if (const auto place = byName_.find(name); place != byName_.end()) {
    return &media_[place->second];
  }
  if (media_.size() == 1) {
    return &media_.front();
  }
  const auto place = byLastPart_.find(std::string(lastPart(name)));
  return place == byLastPart_.end() ? nullptr : &media_[place->second];
}

ReadMedia JsonReader::read(const std::filesystem::path& file) const {
  const NamedMedia* media = found(utf8FromPath(file));
  if (media == nullptr) {
    throw NotExamined("not-in-json", "the JSON has nothing about it");
  }
  if (media->media.container.empty()) {
    throw NotExamined("not-media", "not a media file that mediainfo knows");
  }
  return {media->media, "mediainfo-json", ""};
}

std::vector<std::string> JsonReader::files() const {
  std::vector<std::string> names;
  names.reserve(media_.size());
  for (const NamedMedia& media : media_) {
    names.push_back(media.file);
  }
  return names;
}

}  // namespace kestrel::host
