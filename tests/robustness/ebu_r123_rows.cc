// Rows for getServiceMapEbuR123(). Its table of configurations is empty: a call with the item 41
// writes nothing, one with any other item a block of no records and their count.
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "api/ebu_r123.h"
#include "tests/robustness/asking.h"
#include "tests/robustness/hostile_values.h"
#include "tests/robustness/service_map_call.h"

namespace kestrel::test {
namespace {

struct Arguments {
  std::optional<std::string> description = "T2=Stereo";
  std::uint32_t allowTwoTrackStreams = 0;
  std::vector<AudioStreamInfo> streams = {streamOf(L"1", 2)};
  bool withStreams = true;
  std::int32_t streamCount = 1;
  std::int32_t item = 5;
  bool withBlock = true, withCount = true, withItem = true;
};

// The addresses and numbers that a call receives; item is told as the change of what was passed.
struct Outs {
  Outs() = default;
  Outs(const Outs&) = delete;
  Outs& operator=(const Outs&) = delete;
  ~Outs() {
    if (block != &unwritten) std::free(block);
  }

  ServiceMapResult unwritten;
  ServiceMapResult* block = &unwritten;
  std::int32_t count = OutValues::kNumber;
  std::int32_t item = 0;
  std::int32_t passed = 0;

  std::string inWords() const {
    std::string words;
    if (block != &unwritten) words = block == nullptr ? "no block" : "a block";
    if (count != OutValues::kNumber) words += " of " + std::to_string(count);
    if (item != passed) words += " for " + std::to_string(item);
    return words;
  }
};

const Answer kNothing{kReturned, ""};
const Answer kNoRecords{kReturned, "a block of 0"};

void add(CallRows& rows, const std::string& parameter, const std::string& value,
         const Arguments& arguments, const Answer& expected = kNoRecords) {
  const auto call = [arguments](Outs& outs) {
    outs.item = outs.passed = arguments.item;
    getServiceMapEbuR123(
        arguments.description ? arguments.description->c_str() : nullptr,
        arguments.allowTwoTrackStreams, arguments.withStreams ? arguments.streams.data() : nullptr,
        arguments.streamCount, arguments.withBlock ? &outs.block : nullptr,
        arguments.withCount ? &outs.count : nullptr, arguments.withItem ? &outs.item : nullptr);
  };
  rows.push_back({"getServiceMapEbuR123", parameter, value, asking<Outs>(call), expected});
}

void addDescriptions(CallRows& rows) {
  Arguments arguments;
  arguments.description = std::nullopt;
  add(rows, "layoutDescription", "NULL", arguments);
  for (const auto& [name, text] : hostileTexts()) {
    arguments.description = text;
    add(rows, "layoutDescription", name, arguments);
  }
  arguments.description = "T2=" + megabyteOf<char>("Mono,");
  add(rows, "layoutDescription", "1 MB of services", arguments);
}

void addStreams(CallRows& rows) {
  for (const std::int32_t count : {INT_MIN, -1, 0, 1, INT_MAX}) {
    Arguments arguments;
    arguments.withStreams = false;
    arguments.streamCount = count;
    add(rows, "streams", "NULL and " + std::to_string(count), arguments);
    arguments.withStreams = true;
    if (count < 2) add(rows, "streamCount", std::to_string(count), arguments);
  }
  for (const std::int32_t value : {INT_MIN, -1, 0, 1, 2, 33, INT_MAX}) {
    AudioStreamInfo stream = streamOf(megabyteOf<wchar_t>(L"-"), value);
    stream.group = stream.formatKey1 = stream.formatKey2 = stream.formatKey3 = value;
    stream.isPairCoded = stream.isPairShared = 255;
    Arguments arguments;
    arguments.streams.assign(1, stream);
    add(rows, "streams", "every integer = " + std::to_string(value), arguments);
    arguments.streams.assign(40, streamOf(L"1", value));
    arguments.streamCount = 40;
    add(rows, "streams", "40 with channelCount = " + std::to_string(value), arguments);
  }
}

void addPointers(CallRows& rows) {
  Arguments arguments;
  arguments.withBlock = false;
  add(rows, "block", "NULL", arguments, kNothing);
  arguments = Arguments();
  arguments.withCount = false;
  add(rows, "resultCount", "NULL", arguments, kNothing);
  arguments = Arguments();
  arguments.withItem = false;
  add(rows, "item", "NULL", arguments, kNothing);
}

}  // namespace

void addEbuR123Rows(CallRows& rows) {
  addDescriptions(rows);
  addStreams(rows);
  addPointers(rows);
  for (const std::uint32_t flag : {0U, 1U, 255U, 256U, UINT_MAX}) {
    Arguments arguments;
    arguments.allowTwoTrackStreams = flag;
    add(rows, "allowTwoTrackStreams", std::to_string(flag), arguments);
  }
  for (const std::int32_t item : {INT_MIN, -1, 0, 40, 41, 42, INT_MAX}) {
    Arguments arguments;
    arguments.item = item;
    add(rows, "item", std::to_string(item), arguments,
        item == NO_SERVICE_MAP_ITEM ? kNothing : kNoRecords);
  }
}

}  // namespace kestrel::test
