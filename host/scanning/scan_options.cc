#include "host/scanning/scan_options.h"

#include <array>
#include <nlohmann/json.hpp>

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

}  // namespace kestrel::host
