#include "host/scanning/scan_line.h"

#include <fmt/chrono.h>
#include <fmt/format.h>
#include <sys/stat.h>

#include <array>
#include <ctime>
#include <nlohmann/json.hpp>
#include <string>

#include "host/reporting/result_json.h"

namespace kestrel::host {
namespace {

struct Option {
  const char* member;
  const char* name;
};

constexpr std::array<Option, 5> kOptions = {{{"expectation", "the expectation"},
                                             {"order", "--order"},
                                             {"labelCheck", "--no-label-check"},
                                             {"reportAll", "--report-all"},
                                             {"strict", "--strict"}}};

Json meaningOf(const Json& options, const char* member) {
  const auto found = options.find(member);
  Json meaning = found == options.end() ? Json() : *found;
  if (meaning.is_object()) {
    meaning.erase("text");
  }
  return meaning;
}

// In nanoseconds, which is more than a JSON number can hold in every reader: so a text.
std::string timeText(const timespec& time) {
  return fmt::format("{:%Y-%m-%dT%H:%M:%S}.{:09}Z", fmt::gmtime(time.tv_sec), time.tv_nsec);
}

}  // namespace

Json optionsOf(const InspectOptions& options) {
  return {{"expectation", options.expectation ? toJson(*options.expectation) : Json(nullptr)},
          {"order", options.surroundChannelOrder},
          {"labelCheck", options.checkLabels},
          {"reportAll", options.reportAll},
          {"strict", options.isStrict},
          {"timeout", options.timeLimit.count()}};
}

std::vector<std::string> differingOptions(const Json& before, const Json& now) {
  std::vector<std::string> names;
  for (const Option& option : kOptions) {
    if (meaningOf(before, option.member) != meaningOf(now, option.member)) {
      names.emplace_back(option.name);
    }
  }
  return names;
}

bool isLasting(const Json& document, const Json& now) {
  const auto options = document.find(kOptionsMember);
  if (options == document.end() || document.at("verdict").at("result") == "not-examined") {
    return false;
  }
  return document.at("reader") != "libmediainfo-quick" ||
         options->at("timeout") >= now.at("timeout");
}

Json identityOf(const std::filesystem::path& file) {
  struct stat status {};
  if (::stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return nullptr;
  }
  return {{"size", status.st_size},
          {"modified", timeText(status.st_mtim)},
          {"changed", timeText(status.st_ctim)},
          {"device", status.st_dev},
          {"inode", status.st_ino}};
}

}  // namespace kestrel::host
