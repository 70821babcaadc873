#include "host/scanning/scan_identity.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <chrono>
#include <nlohmann/json.hpp>
#include <string>
#include <system_error>

namespace kestrel::host {
namespace {

namespace fs = std::filesystem;

// In nanoseconds, which is more than a JSON number can hold in every reader: so a text.
std::string timeText(fs::file_time_type time) {
  const auto sinceEpoch = fs::file_time_type::clock::to_sys(time).time_since_epoch();
  const auto seconds = std::chrono::floor<std::chrono::seconds>(sinceEpoch);
  const auto rest = std::chrono::nanoseconds(sinceEpoch - seconds);
  return fmt::format("{:%Y-%m-%dT%H:%M:%S}.{:09}Z", fmt::gmtime(seconds.count()), rest.count());
}

}  // namespace

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
