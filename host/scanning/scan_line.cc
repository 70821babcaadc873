#include "host/scanning/scan_line.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <array>
#include <chrono>
#include <nlohmann/json.hpp>
#include <string>
#include <system_error>

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

namespace fs = std::filesystem;

// In nanoseconds, which is more than a JSON number can hold in every reader: so a text.
std::string timeText(fs::file_time_type time) {
  const auto sinceEpoch = fs::file_time_type::clock::to_sys(time).time_since_epoch();
  const auto seconds = std::chrono::floor<std::chrono::seconds>(sinceEpoch);
  const auto rest = std::chrono::nanoseconds(sinceEpoch - seconds);
  return fmt::format("{:%Y-%m-%dT%H:%M:%S}.{:09}Z", fmt::gmtime(seconds.count()), rest.count());
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

Json identityOf(const fs::path& file) {
  std::error_code error;
  if (!fs::is_regular_file(file, error)) {
    return nullptr;
  }
  const auto size = fs::file_size(file, error);
  const auto time = fs::last_write_time(file, error);
  if (error) {
    return nullptr;
  }
  return {{"size", size}, {"modified", timeText(time)}};
}

}  // namespace kestrel::host
