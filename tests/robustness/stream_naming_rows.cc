// Rows for the functions of api/stream_naming.h and api/layout_code.h.
#include <cstdint>
#include <string>

#include "api/layout_code.h"
#include "api/stream_naming.h"
#include "tests/robustness/asking.h"
#include "tests/robustness/hostile_values.h"

namespace kestrel::test {
namespace {

constexpr std::int32_t kItemCount = 41;
constexpr std::int32_t kTypeCount = 5;

void addNameLength(CallRows& rows, const char* parameter, std::int32_t item, std::int32_t position,
                   const std::string& end) {
  rows.push_back(row("getStreamTypeNameLength", parameter,
                     std::to_string(item) + ", " + std::to_string(position), {end, ""},
                     [=](OutValues&) { return getStreamTypeNameLength(item, position); }));
}

void addName(CallRows& rows, const char* parameter, std::int32_t item, std::int32_t position,
             const Answer& expected) {
  const std::string value = std::to_string(item) + ", " + std::to_string(position);
  rows.push_back(row("getStreamTypeName", parameter, value, expected, [=](OutValues& outs) {
    getStreamTypeName(item, position, outs.text.data());
  }));
  rows.push_back(row("getStreamTypeName", "name", "NULL with " + value, {kReturned, ""},
                     [=](OutValues&) { getStreamTypeName(item, position, nullptr); }));
}

void addStreamNames(CallRows& rows) {
  for (const std::int32_t item : unknownIds(kItemCount)) {
    addNameLength(rows, "item", item, 0, kOutOfRange);
    addName(rows, "item", item, 0, {kOutOfRange, ""});
  }
  for (const std::int32_t position : unknownIds(10)) {
    addNameLength(rows, "position", 40, position, kOutOfRange);
    addName(rows, "position", 40, position, {kOutOfRange, ""});
  }
  addNameLength(rows, "position", 0, 1, kOutOfRange);
  addNameLength(rows, "position", 0, 0, returned(6));
  addNameLength(rows, "position", 40, 9, returned(6));
  addName(rows, "position", 0, 0, {kReturned, "text Stereo|"});
  addName(rows, "position", 40, 9, {kReturned, "text Mono 8|"});
}

void addType(CallRows& rows, std::int32_t type, const std::string& name) {
  const bool known = !name.empty();
  const auto length = static_cast<std::int64_t>(name.size());
  const std::string value = std::to_string(type);
  const Answer unknown{kOutOfRange, ""};
  rows.push_back(row("getStreamTypeSymbol", "type", value,
                     known ? Answer{returned(name.c_str()), ""} : unknown,
                     [=](OutValues&) { return getStreamTypeSymbol(type); }));
  rows.push_back(row("getStreamTypeSymbolicLength", "type", value,
                     known ? Answer{returned(length + 1), ""} : unknown,
                     [=](OutValues&) { return getStreamTypeSymbolicLength(type); }));
  rows.push_back(row("getStreamTypeSymbolic", "type", value,
                     known ? Answer{returned(length), "text " + name + "|"} : unknown,
                     [=](OutValues& o) { return getStreamTypeSymbolic(type, o.text.data()); }));
}

void addExactRoom(CallRows& rows) {
  const auto atTheEnd = [](OutValues& outs) {
    return getStreamTypeSymbolic(k51Mix, outs.text.data() + outs.text.size() - 8);
  };
  const std::string before(OutValues().text.size() - 8, OutValues::kByte);
  rows.push_back(row("getStreamTypeSymbolic", "name", "room for the name and its NUL alone",
                     {returned(7), "text " + before + "5.1 Mix|"}, atTheEnd));
}

// The text keeps the name before.
void addSymbolAfterAnother(CallRows& rows) {
  rows.push_back(row("getStreamTypeSymbol", "type", "unknown after a known one",
                     {kOutOfRange, "constant 5.1 Mix"}, [](OutValues& outs) {
                       outs.constant = getStreamTypeSymbol(k51Mix);
                       return getStreamTypeSymbol(5);
                     }));
}

// A function that looks a text up.
struct LookUp {
  const char* function;
  const char* parameter;
  std::int32_t (*call)(const char*);
  std::int32_t none;
  std::string known;
  std::int32_t knownId;
};

void addLookUp(CallRows& rows, const LookUp& lookUp) {
  const auto add = [&](const std::string& value, const std::string& text, std::int32_t id) {
    rows.push_back(row(lookUp.function, lookUp.parameter, value, {returned(id), ""},
                       [=](OutValues&) { return lookUp.call(text.c_str()); }));
  };
  rows.push_back(row(lookUp.function, lookUp.parameter, "NULL", {returned(lookUp.none), ""},
                     [=](OutValues&) { return lookUp.call(nullptr); }));
  for (const auto& [name, text] : hostileTexts()) add(name, text, lookUp.none);
  add("a known text", lookUp.known, lookUp.knownId);
}

}  // namespace

void addStreamNamingRows(CallRows& rows) {
  addStreamNames(rows);
  for (const std::int32_t type : unknownIds(kTypeCount)) addType(rows, type, "");
  addType(rows, kMono, "Mono");
  addType(rows, kDolbyE, "Dolby E");
  addExactRoom(rows);
  addSymbolAfterAnother(rows);
}

void addLookUpRows(CallRows& rows) {
  addLookUp(rows, {"streamTypeFromStr", "name", streamTypeFromStr, kUnknown, "Dolby E", kDolbyE});
  addLookUp(rows, {"serviceMapItemFromStr", "streamTypes", serviceMapItemFromStr,
                   NO_SERVICE_MAP_ITEM, "5.1 Mix,Stereo", 7});
  addLookUp(rows, {"GetServiceMapItemByAS11R123", "code", GetServiceMapItemByAS11R123,
                   NO_SERVICE_MAP_ITEM, "EBU R 123: 8B", 7});
  rows.push_back(row("streamTypeFromStr", "name", "the text of getStreamTypeSymbol()",
                     {returned(kStereo), ""},
                     [](OutValues&) { return streamTypeFromStr(getStreamTypeSymbol(kStereo)); }));
  const std::string behind = megabyteOf<char>("9") + "16f";
  rows.push_back(row("GetServiceMapItemByAS11R123", "code", "a code behind 1 MB of digits",
                     {returned(36), ""},
                     [=](OutValues&) { return GetServiceMapItemByAS11R123(behind.c_str()); }));
}

}  // namespace kestrel::test
