// Rows for kestrelAnalyse(): its pointers, and the texts of a request and of its streams.
#include <cstddef>
#include <cstdint>
#include <string>

#include "tests/c_api/c_request.h"
#include "tests/robustness/asking.h"
#include "tests/robustness/c_request_call.h"
#include "tests/robustness/hostile_values.h"

namespace kestrel::test {
namespace {

// Which of the four pointers of a call are NULL.
struct Pointers {
  bool request = true, analysis = true, badByte = true, badStream = true;
};

void addPointers(CallRows& rows, const char* parameter, const Pointers& given,
                 const char* description, const Answer& expected) {
  const std::vector<KestrelStream> streams = {stream("1", 2)};
  const auto call = [=](AnalyseOuts& outs) {
    const KestrelRequest asked = request(description, streams);
    return kestrelAnalyse(
        given.request ? &asked : nullptr, given.analysis ? &outs.analysis : nullptr,
        given.badByte ? &outs.badByte : nullptr, given.badStream ? &outs.badStream : nullptr);
  };
  rows.push_back({"kestrelAnalyse", parameter, std::string("NULL with ") + description,
                  asking<AnalyseOuts>(call), expected});
}

void addNulls(CallRows& rows) {
  const Answer found = analysed(KESTREL_FILLED, 1);
  const char* const good = "T2=Stereo";
  const char* const bad = "T2=\xFF";
  addPointers(rows, "request", {.request = false}, good, refused(KESTREL_NULL_ARGUMENT));
  addPointers(rows, "analysis", {.analysis = false}, good, {returned(KESTREL_NULL_ARGUMENT), ""});
  addPointers(rows, "badByte", {.badByte = false}, good, found);
  addPointers(rows, "badStream", {.badStream = false}, good, found);
  addPointers(rows, "badByte", {.badByte = false}, bad,
              {returned(KESTREL_BAD_TEXT), "no analysis of -1"});
  addPointers(rows, "badStream", {.badStream = false}, bad,
              {returned(KESTREL_BAD_TEXT), "no analysis, byte 3"});
  addPointers(rows, "badStream", {.badByte = false, .badStream = false}, bad,
              refused(KESTREL_BAD_TEXT));
}

void addNullTexts(CallRows& rows) {
  const RequestParts parts;
  const Answer expected = refused(KESTREL_NULL_ARGUMENT);
  const auto add = [&](const char* value, const Spoil& spoil) {
    rows.push_back(requestRow(value, expected, parts, spoil));
  };
  add("layoutDescription = NULL", [](auto& asked, auto&) { asked.layoutDescription = nullptr; });
  add("surroundChannelOrder = NULL",
      [](auto& asked, auto&) { asked.surroundChannelOrder = nullptr; });
  add("streams = NULL", [](auto& asked, auto&) { asked.streams = nullptr; });
  add("streamId = NULL", [](auto&, auto& streams) { streams[0].streamId = nullptr; });
  add("trackLabels = NULL", [](auto&, auto& streams) { streams[0].trackLabels = nullptr; });
}

// The first byte of a text that is not UTF-8, by hand.
struct BadByte {
  const char* text;
  std::size_t at;
};

const BadByte kBadTexts[] = {
    {"\xFF", 0},
    {"1\x80", 1},
    {"1\xC0\x80", 1},
    {"1 \xED\xA0\x80", 2},
    {"1\xE2\x82", 1},
    {"1\xF4\x90\x80\x80", 1},
    {"1\xF0\x9F\x98\x80\xFE", 5},
};

void addBadTexts(CallRows& rows) {
  for (const auto& [text, at] : kBadTexts) {
    const std::string position = " with a bad byte at " + std::to_string(at);
    RequestParts parts;
    parts.description = text;
    rows.push_back(requestRow("layoutDescription" + position, badText(at, -1), parts));
    parts = {.order = text};
    rows.push_back(requestRow("surroundChannelOrder" + position, badText(at, -1), parts));
    for (const std::size_t spoiled : {0U, 1U, 39U}) {
      parts = {.description = "T80=x", .streams = 40};
      rows.push_back(requestRow("streamId" + position,
                                badText(at, static_cast<std::int32_t>(spoiled)), parts,
                                [=](auto&, auto& streams) { streams[spoiled].streamId = text; }));
      rows.push_back(
          requestRow("trackLabels" + position, badText(at, static_cast<std::int32_t>(spoiled)),
                     parts, [=](auto&, auto& streams) { streams[spoiled].trackLabels = text; }));
    }
  }
  const RequestParts late{.description = megabyteOf<char>("T2=Stereo;") + "\xFF"};
  rows.push_back(requestRow("layoutDescription with a bad byte behind 1 MB",
                            badText(late.description.size() - 1, -1), late));
}

void addLongTexts(CallRows& rows) {
  const Answer found = analysed(KESTREL_FILLED, 1);
  const Answer none = analysed(KESTREL_UNTOUCHED, 0);
  const auto add = [&](const std::string& value, RequestParts parts, const Answer& expected) {
    parts.everything = true;
    rows.push_back(requestRow(value, expected, parts));
  };
  add("1 MB of entries", {.description = megabyteOf<char>("T2=Stereo;")}, found);
  add("2,000 services", {.description = "T2=" + longText<char>("Mono,", 10'000)}, none);
  add("1,000 unknown names", {.description = "T2=" + longText<char>("x,", 2000)},
      analysed(KESTREL_FILLED, 1000));
  add("1,000 commas", {.description = "T2=x" + longText<char>(",", 1000)},
      analysed(KESTREL_FILLED, 1000));
  add("a name of 1 MB", {.description = "T2=" + megabyteOf<char>("x")},
      analysed(KESTREL_FILLED, 1));
  add("an order of 1 MB", {.order = megabyteOf<char>("\xC3\xA9 ")}, found);
  add("a streamId of 1 MB", {.streamId = megabyteOf<char>("1")}, found);
  add("trackLabels of 1 MB",
      {.description = "T6=5.1 Mix", .trackLabels = megabyteOf<char>("Rs L "), .channelCount = 6},
      found);
  add("trackLabels without a blank",
      {.description = "T6=5.1 Mix", .trackLabels = megabyteOf<char>("L"), .channelCount = 6},
      found);
}

}  // namespace

void addCRequestRows(CallRows& rows) {
  addNulls(rows);
  addNullTexts(rows);
  addBadTexts(rows);
  addLongTexts(rows);
}

}  // namespace kestrel::test
