// Rows for the functions of api/catalogue.h.
#include <cstdint>
#include <string>

#include "api/catalogue.h"
#include "tests/robustness/asking.h"
#include "tests/robustness/hostile_values.h"

namespace kestrel::test {
namespace {

struct Ids {
  const char* parameter;
  std::int32_t count;
  std::string unknown = kOutOfRange;  // how a call with an unknown one ends
};

const Ids kRows{"row", 7};
const Ids kItems{"item", 41};

// A function of one id that returns a number.
template <class Number>
void addNumberOf(CallRows& rows, const char* function, const Ids& ids, Number (*call)(std::int32_t),
                 Number ofFirst, Number ofLast) {
  const auto add = [&](std::int32_t id, const std::string& end) {
    rows.push_back(row(function, ids.parameter, std::to_string(id), {end, ""},
                       [=](OutValues&) { return call(id); }));
  };
  for (const std::int32_t id : unknownIds(ids.count)) add(id, ids.unknown);
  add(0, returned(ofFirst));
  add(ids.count - 1, returned(ofLast));
}

// A function that fills a buffer for one id: with NULL it looks no id up. fill(id, outs) and
// fillNull(id) make the call.
template <class Fill, class FillNull>
void addBufferOf(CallRows& rows, const char* function, const Ids& ids, const char* buffer,
                 const std::string& nullEnd, const Fill& fill, const FillNull& fillNull,
                 const Answer& ofFirst, const Answer& ofLast) {
  const auto add = [&](std::int32_t id, const Answer& expected) {
    rows.push_back(row(function, ids.parameter, std::to_string(id), expected,
                       [=](OutValues& outs) { return fill(id, outs); }));
    rows.push_back(row(function, buffer, "NULL with " + std::to_string(id), {nullEnd, ""},
                       [=](OutValues&) { return fillNull(id); }));
  };
  for (const std::int32_t id : unknownIds(ids.count)) add(id, {kOutOfRange, ""});
  add(0, ofFirst);
  add(ids.count - 1, ofLast);
}

template <class Fill>
void addListOf(CallRows& rows, const char* function, const Ids& ids, const char* buffer, Fill* call,
               const Answer& ofFirst, const Answer& ofLast) {
  addBufferOf(
      rows, function, ids, buffer, returned(0),
      [=](std::int32_t id, OutValues& outs) { return call(id, outs.list.data()); },
      [=](std::int32_t id) { return call(id, nullptr); }, ofFirst, ofLast);
}

}  // namespace

void addCatalogueRows(CallRows& rows) {
  rows.push_back(
      row("getRowCount", "", "", {returned(7), ""}, [](OutValues&) { return getRowCount(); }));
  addNumberOf<std::int64_t>(rows, "getTracksCount", kRows, getTracksCount, 2, 16);
  addNumberOf<std::int64_t>(rows, "getServiceMapItemsCount", kRows, getServiceMapItemsCount, 2, 8);
  addListOf(rows, "getServiceMapItems", kRows, "items", getServiceMapItems,
            {returned(2), "list 0 1"}, {returned(8), "list 33 34 35 36 37 38 39 40"});
  addNumberOf(rows, "getDefaultServiceMapItem", kRows, getDefaultServiceMapItem, 0, 33);
  addNumberOf(rows, "getServiceMapItemRow", {"item", 41, returned(0)}, getServiceMapItemRow, 0, 6);
  addNumberOf<std::int64_t>(rows, "getServiceMapItemNameLength", kItems,
                            getServiceMapItemNameLength, 6, 36);
  addBufferOf(
      rows, "getServiceMapItemName", kItems, "name", kReturned,
      [](std::int32_t id, OutValues& outs) { getServiceMapItemName(id, outs.text.data()); },
      [](std::int32_t id) { getServiceMapItemName(id, nullptr); }, {kReturned, "text Stereo|"},
      {kReturned, "text 5.1 Mix + 2x Mono + Stereo + 6x Mono|"});
  addNumberOf<std::int64_t>(rows, "getStreamTypesCount", kItems, getStreamTypesCount, 1, 10);
  addListOf(rows, "getStreamTypes", kItems, "types", getStreamTypes, {returned(1), "list 1"},
            {returned(10), "list 2 0 0 1 0 0 0 0 0 0"});
}

}  // namespace kestrel::test
