// Rows for getServiceMap(), but for the fields of its streams.
#include <climits>
#include <cstdint>
#include <string>

#include "api/service_map.h"
#include "tests/robustness/asking.h"
#include "tests/robustness/hostile_values.h"
#include "tests/robustness/service_map_call.h"

namespace kestrel::test {
namespace {

std::string repeated(const std::string& text, int times) {
  std::string result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

void addDescription(CallRows& rows, const std::string& value,
                    const std::optional<std::string>& text, const Answer& expected) {
  ServiceMapArguments arguments;
  arguments.description = text;
  rows.push_back(serviceMapRow("layoutDescription", value, expected, arguments));
}

void addDescriptions(CallRows& rows) {
  addDescription(rows, "NULL", std::nullopt, kUntouched);
  for (const auto& [name, text] : hostileTexts()) {
    addDescription(rows, name, text, kUntouched);
    addDescription(rows, "an entry behind " + name, text + "T2=Stereo",
                   text.find('\0') == std::string::npos ? kStereoFound : kUntouched);
  }
  addDescription(rows, "1 MB of entries", megabyteOf<char>("T2=Stereo;"), kStereoFound);
  addDescription(rows, "1 MB of other entries", megabyteOf<char>("T4=Stereo;"), kUntouched);
  addDescription(rows, "1 MB of T", megabyteOf<char>("T"), kUntouched);
  // A list ends at a digit: the first entry holds a service called "T".
  addDescription(rows, "1 MB of T2=", megabyteOf<char>("T2="), {"returned 1", "[-1 r-- '']"});
  addDescription(rows, "1 MB of services", "T2=" + megabyteOf<char>("Mono,"), kUntouched);
  addDescription(rows, "more services than stand on the stack",
                 "T2=Stereo" + repeated(",an unknown name", 40),
                 {kStereoFound.end, kStereoFound.written + repeated("[-1 r-- '']", 40)});
  addDescription(rows, "a total past all integers", "T99999999999999999999=Stereo", kUntouched);
  addDescription(rows, "a negative total", "T-2=Stereo", kUntouched);
  addDescription(rows, "a bad byte behind the list", "T2=Stereo\xFF", kStereoFound);
}

void addOrders(CallRows& rows) {
  ServiceMapArguments arguments;
  arguments.description = "T6=5.1 Mix";
  arguments.streams = {streamOf(L"1", 6)};
  const auto add = [&](const std::string& value, const std::optional<std::wstring>& order) {
    arguments.order = order;
    const std::wstring label = order ? order->c_str() : L"";
    const std::string words =
        "[6 r-- " + labelInWords(label) + " 1/0/0/0 1/0/0/1 1/0/0/2 1/0/0/3 1/0/0/4 1/0/0/5]";
    rows.push_back(serviceMapRow("surroundChannelOrder", value, {"returned 1", words}, arguments));
  };
  add("NULL", std::nullopt);
  for (const auto& [name, text] : hostileWideTexts()) add(name, text);
}

void addFlags(CallRows& rows) {
  for (const std::int32_t flag : {INT_MIN, -1, 0, 1, 255, 256, INT_MAX}) {
    ServiceMapArguments arguments;
    arguments.allowTwoTrackStreams = flag;
    rows.push_back(
        serviceMapRow("allowTwoTrackStreams", std::to_string(flag), kStereoFound, arguments));
  }
  for (const int flag : {0, 1, 2, 128, 255}) {
    ServiceMapArguments arguments;
    arguments.description = "T6=-5.1 Mix,x";
    arguments.streams = {streamOf(L"1", 6, L"Rs Ls LFE C R L")};
    arguments.reportAll = static_cast<std::uint8_t>(flag);
    rows.push_back(serviceMapRow("reportAll", std::to_string(flag),
                                 {"returned 1", flag == 0 ? "[-1 r-- '']"
                                                          : "[6 r-- 'L R C LFE Ls Rs' 1/0/0/0 "
                                                            "1/0/0/1 1/0/0/2 1/0/0/3 1/0/0/4 "
                                                            "1/0/0/5][-1 r-q '']"},
                                 arguments));
    arguments.reportAll = 0;
    arguments.description = "T6=5.1 Mix";
    arguments.surroundCheck = static_cast<std::uint8_t>(flag);
    rows.push_back(
        serviceMapRow("surroundCheck", std::to_string(flag), plainAnswer(arguments), arguments));
  }
}

void addCounts(CallRows& rows) {
  for (const std::int32_t count : {INT_MIN, -1, 0, 1, INT_MAX}) {
    ServiceMapArguments arguments;
    arguments.withStreams = false;
    arguments.streamCount = count;
    rows.push_back(
        serviceMapRow("streams", "NULL and " + std::to_string(count), kUntouched, arguments));
    if (count > 1) continue;
    arguments.withStreams = true;
    rows.push_back(serviceMapRow("streamCount", std::to_string(count),
                                 count == 1 ? kStereoFound : kUntouched, arguments));
    arguments.description = "T0=x";
    if (count < 1)
      rows.push_back(serviceMapRow("streamCount", std::to_string(count) + " and an entry for 0",
                                   kUntouched, arguments));
  }
}

}  // namespace

void addServiceMapRows(CallRows& rows) {
  addDescriptions(rows);
  addOrders(rows);
  addFlags(rows);
  addCounts(rows);
  const AudioStreamInfo stream = streamOf(L"1", 2);
  rows.push_back(row("getServiceMap", "results", "NULL", {"returned 0", ""}, [=](OutValues&) {
    return getServiceMap("T2=Stereo", L"", 0, &stream, 1, nullptr, 0, 0);
  }));
}

}  // namespace kestrel::test
