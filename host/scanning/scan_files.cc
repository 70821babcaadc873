// Directories wait on a stack of their own, so that a deep tree costs no recursion. The entries of
// one directory are sorted by the bytes of their names: two scans of one tree take the same order.
#include "host/scanning/scan_files.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>
#include <system_error>
#include <unordered_set>
#include <utility>

#include "host/basics/file_names.h"
#include "host/basics/text_input.h"
#include "host/basics/text_parts.h"
#include "host/basics/utf8.h"

namespace kestrel::host {
namespace {

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 37> kMediaExtensions = {
    ".mxf", ".mov",  ".mp4",  ".m4v", ".m4a",  ".qt",   ".3gp", ".mkv",  ".mka",  ".webm",
    ".avi", ".wav",  ".wave", ".bwf", ".w64",  ".rf64", ".aif", ".aiff", ".aifc", ".caf",
    ".ts",  ".m2ts", ".mts",  ".trp", ".mpg",  ".mpeg", ".vob", ".gxf",  ".lxf",  ".ac3",
    ".ec3", ".eac3", ".dde",  ".aac", ".flac", ".mp3",  ".asf"};

class Collector {
 public:
  void take(const fs::path& path) {
    std::error_code ignored;
    if (!fs::is_directory(path, ignored)) {
      return add(path);
    }
    waiting_.push_back(path);
    while (!waiting_.empty()) {
      const fs::path directory = std::move(waiting_.back());
      waiting_.pop_back();
      takeDirectory(directory);
    }
  }

  ScanFiles result() && { return std::move(result_); }

 private:
  void add(const fs::path& file) {
    if (seen_.insert(placeOf(file)).second) {
      result_.files.push_back(file.string());
    }
  }

  void takeDirectory(const fs::path& directory) {
    std::error_code error;
    std::vector<fs::directory_entry> entries;
    for (fs::directory_iterator at(directory, error); !error && at != fs::directory_iterator();
         at.increment(error)) {
      entries.push_back(*at);
    }
    if (error) {
      complain(directory, "the directory cannot be read", error);
    }
    std::ranges::sort(entries);
    takeEntries(entries);
  }

  // The last directory goes on the stack first, so that the first is the next one.
  void takeEntries(const std::vector<fs::directory_entry>& entries) {
    const auto before = static_cast<std::ptrdiff_t>(waiting_.size());
    for (const fs::directory_entry& entry : entries) {
      std::error_code error;
      const fs::file_type type = entry.symlink_status(error).type();
      if (error) {
        complain(entry.path(), "cannot be reached", error);
      } else if (type == fs::file_type::directory) {
        waiting_.push_back(entry.path());
      } else if (hasMediaExtension(entry.path()) && !entry.is_directory(error)) {
        add(entry.path());
      }
    }
    std::reverse(waiting_.begin() + before, waiting_.end());
  }

  void complain(const fs::path& path, const char* what, const std::error_code& error) {
    result_.problems.push_back(
        fmt::format("\"{}\": {}: {}", printable(utf8FromPath(path)), what, error.message()));
  }

  ScanFiles result_;
  std::vector<fs::path> waiting_;
  std::unordered_set<std::string> seen_;
};

}  // namespace

ScanFiles filesOfScan(const std::vector<fs::path>& paths) {
  Collector collector;
  for (const fs::path& path : paths) {
    collector.take(path);
  }
  return std::move(collector).result();
}

bool hasMediaExtension(const fs::path& file) {
  std::string extension = file.extension().string();
  std::ranges::transform(extension, extension.begin(), lowerCase);
  return std::ranges::find(kMediaExtensions, extension) != kMediaExtensions.end();
}

std::string mediaExtensions() { return fmt::format("{}", fmt::join(kMediaExtensions, " ")); }

std::vector<fs::path> namesFrom(const fs::path& list, NameEnd end) {
  TextInput input(list);
  std::vector<fs::path> names;
  for (std::string name; input.takeLine(name, static_cast<char>(end));) {
    if (!name.empty()) {
      names.push_back(pathFromUtf8(name));
    }
  }
  return names;
}

}  // namespace kestrel::host
