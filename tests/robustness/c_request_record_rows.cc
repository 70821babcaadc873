// Rows for kestrelAnalyse(): sizes, counts, strides and numbers of a request and of its streams.
#include <climits>
#include <cstddef>
#include <cstdint>
#include <string>

#include "tests/robustness/asking.h"
#include "tests/robustness/c_request_call.h"

namespace kestrel::test {
namespace {

constexpr std::int32_t kExtremes[] = {INT_MIN, INT_MIN + 1, -1, 0, 1, INT_MAX};

const Answer kFound = analysed(KESTREL_FILLED, 1);
const Answer kNotFound = analysed(KESTREL_UNTOUCHED, 0);
const Answer kBadSize = refused(KESTREL_BAD_RECORD_SIZE);

void add(CallRows& rows, const std::string& value, const Answer& expected, const Spoil& spoil) {
  rows.push_back(requestRow(value, expected, {}, spoil));
}

std::string equals(const char* field, std::int64_t value) {
  return std::string(field) + " = " + std::to_string(value);
}

void addSizes(CallRows& rows) {
  for (const std::uint32_t size : {0U, 1U, 8U, 39U, 40U, 41U, 4096U, UINT_MAX})
    add(rows, equals("structSize", size), size < 40 ? kBadSize : kFound,
        [=](auto& asked, auto&) { asked.structSize = size; });
  // A stream may be larger than the library knows it, but not larger than the stride.
  for (const std::uint32_t size : {0U, 1U, 8U, 47U, 48U, 49U, 56U, UINT_MAX})
    add(rows, equals("structSize of a stream", size), size == 48 ? kFound : kBadSize,
        [=](auto&, auto& streams) { streams[0].structSize = size; });
  for (const std::uint32_t stride : {0U, 1U, 8U, 47U, 48U, 49U, 52U, 56U, UINT_MAX})
    add(rows, equals("streamStride", stride), stride == 48 || stride == 56 ? kFound : kBadSize,
        [=](auto& asked, auto&) { asked.streamStride = stride; });
  for (const std::uint32_t stride : {0U, 1U, 49U, UINT_MAX})
    add(rows, equals("streamStride without streams", stride), kNotFound, [=](auto& asked, auto&) {
      asked.streamStride = stride;
      asked.streamCount = 0;
    });
}

void addCounts(CallRows& rows) {
  for (const std::int32_t count : {INT_MIN, INT_MIN + 1, -1}) {
    add(rows, equals("streamCount", count), refused(KESTREL_BAD_COUNT),
        [=](auto& asked, auto&) { asked.streamCount = count; });
    add(rows, equals("streams = NULL, streamCount", count), refused(KESTREL_BAD_COUNT),
        [=](auto& asked, auto&) {
          asked.streamCount = count;
          asked.streams = nullptr;
        });
  }
  for (const std::int32_t count : {1, INT_MAX})
    add(rows, equals("streams = NULL, streamCount", count), refused(KESTREL_NULL_ARGUMENT),
        [=](auto& asked, auto&) {
          asked.streamCount = count;
          asked.streams = nullptr;
        });
  for (const bool withStreams : {false, true})
    add(rows, equals("streamCount = 0, streams", withStreams), kNotFound, [=](auto& asked, auto&) {
      asked.streamCount = 0;
      if (!withStreams) asked.streams = nullptr;
    });
}

void addNumbers(CallRows& rows) {
  for (const std::int32_t value : kExtremes) {
    for (const auto field : {&KestrelStream::group, &KestrelStream::formatKey1,
                             &KestrelStream::formatKey2, &KestrelStream::formatKey3})
      add(rows, equals("a number of a stream", value), kFound,
          [=](auto&, auto& streams) { streams[0].*field = value; });
    add(rows, equals("channelCount", value), kNotFound,
        [=](auto&, auto& streams) { streams[0].channelCount = value; });
    rows.push_back(requestRow(equals("every number of 40 streams", value), kNotFound,
                              {.streams = 40}, [=](auto&, auto& streams) {
                                for (KestrelStream& each : streams)
                                  each.group = each.channelCount = each.formatKey1 =
                                      each.formatKey2 = each.formatKey3 = value;
                              }));
    rows.push_back(requestRow(equals("a key of the second track", value),
                              value == 0 ? kFound : analysed(KESTREL_EMPTIED, 0),
                              {.channelCount = 1, .streams = 2}, [=](auto&, auto& streams) {
                                streams[0].streamId = "2";
                                streams[1].formatKey2 = value;
                              }));
  }
}

void addBytes(CallRows& rows) {
  for (const int byte : {0, 1, 2, 128, 255}) {
    const auto flag = static_cast<std::uint8_t>(byte);
    add(rows, equals("flags of the request", byte), kFound, [=](auto& asked, auto&) {
      asked.reportAll = asked.surroundCheck = flag;
      for (std::uint8_t& unused : asked.reserved) unused = flag;
    });
    add(rows, equals("reserved bytes of a stream", byte), kFound, [=](auto&, auto& streams) {
      for (std::uint8_t& unused : streams[0].reserved) unused = flag;
    });
    add(rows, equals("isPairShared of a plain stream", byte), kFound,
        [=](auto&, auto& streams) { streams[0].isPairShared = flag; });
    add(rows, equals("isPairCoded", byte), byte == 0 ? kFound : kNotFound,
        [=](auto&, auto& streams) { streams[0].isPairCoded = flag; });
  }
}

void addMany(CallRows& rows) {
  for (const std::size_t count : {31U, 32U, 33U, 99U}) {
    std::string description = "T" + std::to_string(count) + "=Mono";
    for (std::size_t i = 1; i < count; ++i) description += ",-Mono";
    for (const bool everything : {false, true}) {
      const Answer expected = analysed(KESTREL_FILLED, everything ? static_cast<int>(count) : 1);
      rows.push_back(requestRow(equals("as many streams and services", std::int64_t(count)),
                                expected,
                                {.description = description,
                                 .streamId = "1 and an id that takes storage of its own",
                                 .channelCount = 1,
                                 .streams = count,
                                 .everything = everything}));
    }
  }
  rows.push_back(requestRow("100,000 streams", kNotFound, {.channelCount = 1, .streams = 100'000}));
}

}  // namespace

void addCRequestRecordRows(CallRows& rows) {
  addSizes(rows);
  addCounts(rows);
  addNumbers(rows);
  addBytes(rows);
  addMany(rows);
}

}  // namespace kestrel::test
