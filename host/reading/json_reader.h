// The reader that takes the streams from the output of mediainfo, so that no media file is touched.
#pragma once

#include <string>
#include <vector>

#include "host/reading/media_reader.h"
#include "host/reading/mediainfo_json.h"

namespace kestrel::host {

class JsonReader : public MediaReader {
 public:
  /// @param source  a file with the output of `mediainfo --Output=JSON -f`, or "-" for the standard
  ///                input. Raises NotExamined when it cannot be read or is something else
  explicit JsonReader(const std::string& source);

  /// The file of that name, or else of that name without directories. Where the output is about one
  /// file only, any name will do.
  ReadMedia read(const std::filesystem::path& file) const override;

  /// The names of the files that the output is about.
  std::vector<std::string> files() const;

 private:
  std::vector<NamedMedia> media_;
};

}  // namespace kestrel::host
