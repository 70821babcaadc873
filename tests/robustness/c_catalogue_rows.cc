// Rows for the functions of the plain C interface that look something up in the catalogue.
#include <climits>
#include <cstdint>
#include <cstring>
#include <string>

#include "api/kestrel.h"
#include "tests/robustness/asking.h"
#include "tests/robustness/hostile_values.h"

namespace kestrel::test {
namespace {

const Answer kNullRefused{returned(KESTREL_NULL_ARGUMENT), ""};

struct Id {
  std::int32_t id;
  std::string written;
};

// A function of one id with one out-value. call(id, outs) passes that value, callNull(id) NULL.
template <class Call, class CallNull>
void addIds(CallRows& rows, const char* function, const char* id, std::int32_t count,
            const char* out, const Id& first, const Id& last, const Call& call,
            const CallNull& callNull, KestrelStatus unknown = KESTREL_UNKNOWN_ID) {
  const auto add = [&](std::int32_t value, const Answer& expected) {
    rows.push_back(row(function, id, std::to_string(value), expected,
                       [=](OutValues& outs) { return call(value, outs); }));
  };
  for (const std::int32_t value : unknownIds(count)) add(value, {returned(unknown), ""});
  for (const Id& known : {first, last}) add(known.id, {returned(KESTREL_OK), known.written});
  rows.push_back(
      row(function, out, "NULL", kNullRefused, [=](OutValues&) { return callNull(first.id); }));
}

using NumberOf = KestrelStatus(std::int32_t, std::int32_t*);
using NameOf = KestrelStatus(std::int32_t, const char**);

void addNumber(CallRows& rows, const char* function, const char* id, std::int32_t count,
               const char* out, NumberOf* call, std::int32_t first, std::int32_t last) {
  addIds(
      rows, function, id, count, out, {0, "numbers " + std::to_string(first)},
      {count - 1, "numbers " + std::to_string(last)},
      [=](std::int32_t value, OutValues& outs) { return call(value, outs.numbers.data()); },
      [=](std::int32_t value) { return call(value, nullptr); });
}

void addConstant(CallRows& rows, const char* function, const char* id, std::int32_t count,
                 NameOf* call, const std::string& first, const std::string& last) {
  addIds(
      rows, function, id, count, "name", {0, "constant " + first}, {count - 1, "constant " + last},
      [=](std::int32_t value, OutValues& outs) { return call(value, &outs.constant); },
      [=](std::int32_t value) { return call(value, nullptr); });
}

using LookUp = KestrelStatus(const char*, std::int32_t*);

void addLookUp(CallRows& rows, const char* function, const char* parameter, const char* out,
               LookUp* call, const std::string& known, std::int32_t id) {
  const Answer found{returned(KESTREL_OK), "numbers " + std::to_string(id)};
  const auto add = [&](const std::string& value, const std::string& text, const Answer& expected) {
    rows.push_back(row(function, parameter, value, expected,
                       [=](OutValues& outs) { return call(text.c_str(), outs.numbers.data()); }));
  };
  for (const auto& [name, text] : hostileTexts())
    add(name, text, {returned(KESTREL_UNKNOWN_NAME), ""});
  add("a known text", known, found);
  rows.push_back(row(function, parameter, "NULL", kNullRefused,
                     [=](OutValues& outs) { return call(nullptr, outs.numbers.data()); }));
  rows.push_back(row(function, out, "NULL", kNullRefused,
                     [=](OutValues&) { return call(known.c_str(), nullptr); }));
  rows.push_back(row(function, out, "the storage of the text", found, [=](OutValues& outs) {
    std::int32_t storage[8] = {};
    std::memcpy(storage, known.c_str(), known.size() + 1);
    const KestrelStatus status = call(reinterpret_cast<const char*>(storage), storage);
    outs.numbers[0] = storage[0];
    return status;
  }));
}

void addStatusTexts(CallRows& rows) {
  const auto add = [&](KestrelStatus status, const char* text) {
    rows.push_back(row("kestrelStatusText", "status", std::to_string(status), {returned(text), ""},
                       [=](OutValues&) { return kestrelStatusText(status); }));
  };
  for (const std::int32_t status : unknownIds(KESTREL_OUT_OF_MEMORY + 1))
    add(status, "unknown status");
  add(KESTREL_OK, "ok");
  add(KESTREL_OUT_OF_MEMORY, "out of memory");
  rows.push_back(row("kestrelVersion", "", "", {returned(KESTREL_VERSION), ""},
                     [](OutValues&) { return kestrelVersion(); }));
  rows.push_back(row("kestrelAbiVersion", "", "", {returned(KESTREL_ABI), ""},
                     [](OutValues&) { return kestrelAbiVersion(); }));
}

void addSizes(CallRows& rows) {
  const char* const parameters[] = {"rows", "items", "streamTypes"};
  for (std::size_t spoiled = 0; spoiled < 4; ++spoiled) {
    const auto call = [=](OutValues& outs) {
      const auto out = [&](std::size_t i) { return i == spoiled ? nullptr : &outs.numbers[i]; };
      return kestrelCatalogueSize(out(0), out(1), out(2));
    };
    if (spoiled < 3) {
      rows.push_back(row("kestrelCatalogueSize", parameters[spoiled], "NULL", kNullRefused, call));
    } else {
      rows.push_back(row("kestrelCatalogueSize", "rows", "in order",
                         {returned(KESTREL_OK), "numbers 7 41 5"}, call));
    }
  }
}

void addLayoutCodes(CallRows& rows) {
  addIds(
      rows, "kestrelLayoutCode", "index", 22, "code", {0, "constant 2a; numbers 0"},
      {21, "constant 16f; numbers 36"},
      [](std::int32_t index, OutValues& outs) {
        return kestrelLayoutCode(index, &outs.constant, outs.numbers.data());
      },
      [](std::int32_t index) {
        std::int32_t item = 0;
        return kestrelLayoutCode(index, nullptr, &item);
      },
      KESTREL_BAD_INDEX);
  rows.push_back(row("kestrelLayoutCode", "item", "NULL", kNullRefused, [](OutValues& outs) {
    return kestrelLayoutCode(0, &outs.constant, nullptr);
  }));
}

}  // namespace

void addCCatalogueRows(CallRows& rows) {
  addStatusTexts(rows);
  addSizes(rows);
  addNumber(rows, "kestrelRowTracks", "row", 7, "tracks", kestrelRowTracks, 2, 16);
  addNumber(rows, "kestrelRowDefaultItem", "row", 7, "item", kestrelRowDefaultItem, 0, 33);
  addNumber(rows, "kestrelItemRow", "item", 41, "row", kestrelItemRow, 0, 6);
  addNumber(rows, "kestrelStreamTypeTracks", "type", 5, "tracks", kestrelStreamTypeTracks, 1, 2);
  addConstant(rows, "kestrelItemName", "item", 41, kestrelItemName, "Stereo",
              "5.1 Mix + 2x Mono + Stereo + 6x Mono");
  addConstant(rows, "kestrelStreamTypeName", "type", 5, kestrelStreamTypeName, "Mono", "Dolby E");
  addLookUp(rows, "kestrelItemFromName", "name", "item", kestrelItemFromName, "2 Mono", 1);
  addLookUp(rows, "kestrelItemFromText", "text", "item", kestrelItemFromText, "5.1 Mix,Stereo", 7);
  addLookUp(rows, "kestrelStreamTypeFromName", "name", "type", kestrelStreamTypeFromName, "7.1 Mix",
            3);
  addLookUp(rows, "kestrelItemFromLayoutCode", "code", "item", kestrelItemFromLayoutCode,
            "EBU R 123: 8B", 7);
  addLayoutCodes(rows);
}

}  // namespace kestrel::test
