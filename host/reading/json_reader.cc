#include "host/reading/json_reader.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iostream>

#include "host/basics/file_names.h"
#include "host/reading/input_file.h"
#include "host/reading/not_examined.h"

namespace kestrel::host {
namespace {

// One byte more than is taken, so that a text that is too long is told from one that just fits.
std::string contentOf(std::istream& stream) {
  std::string content;
  std::array<char, 65536> block{};
  while (content.size() <= kLongestMediainfoJson && stream) {
    stream.read(block.data(), static_cast<std::streamsize>(block.size()));
    content.append(block.data(), static_cast<std::size_t>(stream.gcount()));
  }
  return content;
}

std::string contentOf(const std::string& source) {
  if (source == "-") {
    return contentOf(std::cin);
  }
  const std::filesystem::path file = pathFromUtf8(source);
  std::ifstream stream(file, std::ios::binary);
  if (!stream || std::filesystem::is_directory(file)) {
    throw NotExamined("json-unreadable", "the JSON file cannot be read");
  }
  return contentOf(stream);
}

// The name without directories, of either kind of separator: the output may come from elsewhere.
std::string_view lastPart(std::string_view name) {
  return name.substr(name.find_last_of("/\\") + 1);
}

}  // namespace

JsonReader::JsonReader(const std::string& source)
    : media_(mediaFromMediainfoJson(contentOf(source))) {}

ReadMedia JsonReader::read(const std::filesystem::path& file) const {
  const std::string name = utf8FromPath(file);
  auto found = std::ranges::find(media_, name, &NamedMedia::file);
  if (found == media_.end()) {
    found = std::ranges::find_if(media_, [&](const NamedMedia& media) {
      return media_.size() == 1 || lastPart(media.file) == lastPart(name);
    });
  }
  if (found == media_.end()) {
    throw NotExamined("not-in-json", "the JSON has nothing about it");
  }
  if (found->media.container.empty()) {
    throw NotExamined("not-media", "not a media file that mediainfo knows");
  }
  return {found->media, "mediainfo-json", ""};
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
