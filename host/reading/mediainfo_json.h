// The JSON that `mediainfo --Output=JSON -f FILE...` prints, and the reader that takes the streams
// from it, so that no media file is touched.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/reading/media_facts.h"
#include "host/reading/media_reader.h"

namespace kestrel::host {

/// A longer text is not taken: some thousand files with all their fields.
inline constexpr std::size_t kLongestMediainfoJson = 64U << 20;

struct NamedMedia {
  std::string file;  ///< as it was given to mediainfo
  RawMedia media;
};

/// One element for each file of the text. Raises NotExamined when the text is something else.
std::vector<NamedMedia> mediaFromMediainfoJson(std::string_view text);

class JsonReader : public MediaReader {
 public:
  /// @param source  a file with the output of `mediainfo --Output=JSON -f`, or "-" for the standard
  ///                input. Raises InputError when it cannot be read, NotExamined when it is
  ///                something else
  explicit JsonReader(const std::string& source);

  /// The file of that name, or else of that name without directories. Where the output is about one
  /// file only, any name will do.
  ReadMedia read(const std::filesystem::path& file) const override;

  /// The names of the files that the output is about.
  std::vector<std::string> files() const;

 private:
  const NamedMedia* found(const std::string& name) const;

  using Places = std::unordered_map<std::string, std::size_t>;

  std::vector<NamedMedia> media_;
  Places byName_;      ///< the first of each name
  Places byLastPart_;  ///< the first of each name without directories
};

}  // namespace kestrel::host
