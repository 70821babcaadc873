#include "host/reporting/html_stream_text.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

namespace kestrel::host {
namespace {

std::string channelsText(const Json& stream) {
  const int channels = stream.at("channels").get<int>();
  return fmt::format("{} channel{}", channels, channels == 1 ? "" : "s");
}

// ", 48000 Hz"; nothing for 0, which is "not known".
std::string amountText(const Json& amount, const char* unit) {
  const auto value = amount.get<std::int64_t>();
  return value == 0 ? "" : fmt::format(", {} {}", value, unit);
}

}  // namespace

std::string labelsText(const Json& labels) {
  std::string text;
  for (const Json& label : labels) {
    text += (text.empty() ? "" : " ") + label.get<std::string>();
  }
  return text;
}

std::string streamText(const Json& stream) {
  const Json& programme = stream.at("programme");
  const std::string labels = labelsText(stream.at("labels"));
  return fmt::format("Stream {}: {}{}, {}{}{}{}", stream.at("id").get<std::string>(),
                     stream.at("format").get<std::string>(),
                     programme.is_null() ? "" : fmt::format(", programme {}", programme.get<int>()),
                     channelsText(stream), amountText(stream.at("sampleRate"), "Hz"),
                     amountText(stream.at("bitDepth"), "bits"),
                     labels.empty() ? "" : ", " + labels);
}

std::string programmeText(const Json& stream) {
  const Json& programme = stream.at("programme");
  const std::string labels = labelsText(stream.at("labels"));
  return fmt::format("{}: {}", programme.is_null() ? 1 : programme.get<int>(),
                     labels.empty() ? channelsText(stream) : labels);
}

}  // namespace kestrel::host
