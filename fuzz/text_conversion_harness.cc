// Names of streams and the way back from texts to ids, by both interfaces, against the plain form
// over the catalogue as the library hands it out.
//
//   input = item "|" position "\n" text
//
// The text is looked up as a stream type, as a list of stream types and as an item's name; item and
// position, whatever they are, are asked for names.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "api/catalogue.h"
#include "api/kestrel.h"
#include "api/stream_naming.h"
#include "fuzz/disagreement.h"
#include "fuzz/harness.h"
#include "fuzz/text_fields.h"
#include "tests/c_api/c_guarded_buffer.h"
#include "tests/plain/plain_naming.h"

namespace kestrel::fuzz {
namespace {

using plain::PlainCatalogue;
using test::Guarded;

std::string itemName(ServiceMapItem item) {
  std::string name(static_cast<std::size_t>(getServiceMapItemNameLength(item)), '\0');
  getServiceMapItemName(item, name.data());
  return name;
}

const PlainCatalogue& catalogue() {
  static const PlainCatalogue made = [] {
    PlainCatalogue filled;
    for (StreamType type = kMono; type <= kDolbyE; ++type) {
      filled.streamTypeNames[type] = getStreamTypeSymbol(type);
    }
    for (ServiceMapItem item = 0; item < NO_SERVICE_MAP_ITEM; ++item) {
      std::vector<StreamType>& types = filled.streamTypesOfItem[item];
      types.resize(static_cast<std::size_t>(getStreamTypesCount(item)));
      getStreamTypes(item, types.data());
    }
    return filled;
  }();
  return made;
}

// What a function returns; nothing when it raises the error of an unknown id.
template <class Function>
auto answerOrNone(const Function& function) -> std::optional<decltype(function())> {
  try {
    return function();
  } catch (const std::out_of_range& error) {
    requireEqual("the text of the error", std::string(error.what()),
                 std::string("invalid map<K, T> key"));
    return std::nullopt;
  }
}

// The same of a plain form, whose errors have other texts.
template <class Function>
auto plainAnswerOrNone(const Function& function) -> std::optional<decltype(function())> {
  try {
    return function();
  } catch (const std::out_of_range&) {
    return std::nullopt;
  }
}

template <class Value>
void requireSame(const char* what, const std::optional<Value>& actual,
                 const std::optional<Value>& expected) {
  if (actual == expected) return;
  const auto shown = [](const auto& value) { return value ? *value : Value{}; };
  disagree(what, "actual: ", actual.has_value(), " ", shown(actual),
           "\nexpected: ", expected.has_value(), " ", shown(expected));
}

// A text that a function writes into a buffer of exactly its size.
template <class Write>
std::string written(std::size_t size, const Write& write) {
  Guarded<char> buffer(size);
  write(buffer.data());
  if (!buffer.holdsAtMost(size)) disagree("written beside a buffer of ", size);
  if (std::strlen(buffer.data()) + 1 != size) disagree("the length of ", buffer.data());
  return buffer.data();
}

std::string streamNameByExport(ServiceMapItem item, std::int32_t position) {
  const auto length = static_cast<std::size_t>(getStreamTypeNameLength(item, position));
  return written(length + 1, [&](char* name) { getStreamTypeName(item, position, name); });
}

std::string symbolByExport(StreamType type) {
  const auto size = static_cast<std::size_t>(getStreamTypeSymbolicLength(type));
  return written(size, [&](char* name) {
    requireEqual("the length of a symbol", getStreamTypeSymbolic(type, name) + 1,
                 static_cast<std::int32_t>(size));
  });
}

// The same by the plain C interface.
std::optional<std::string> streamNameByPlainC(ServiceMapItem item, std::int32_t position) {
  std::size_t needed = 0;
  const KestrelStatus status = kestrelItemStreamName(item, position, nullptr, 0, &needed);
  if (status == KESTREL_UNKNOWN_ID) return std::nullopt;
  requireEqual("the status of a size", status, KESTREL_BUFFER_TOO_SMALL);
  return written(needed, [&](char* name) {
    requireEqual("the status of a name",
                 kestrelItemStreamName(item, position, name, needed, &needed), KESTREL_OK);
  });
}

void checkNames(ServiceMapItem item, std::int32_t position) {
  const auto expected =
      plainAnswerOrNone([&] { return plain::streamPositionName(catalogue(), item, position); });
  requireSame("a stream's name", answerOrNone([&] { return streamNameByExport(item, position); }),
              expected);
  requireSame("a stream's name in plain C", streamNameByPlainC(item, position), expected);
  const auto symbol = plainAnswerOrNone([&] { return catalogue().streamTypeNames.at(item); });
  requireSame("a symbol", answerOrNone([&] { return symbolByExport(item); }), symbol);
  requireSame("the static symbol",
              answerOrNone([&] { return std::string(getStreamTypeSymbol(item)); }), symbol);
}

// A look-up of the plain C interface: the id, or what stands for none.
template <class LookUp>
std::int32_t lookedUp(LookUp lookUp, const std::string& text, std::int32_t none) {
  std::int32_t id = none;
  const KestrelStatus status = lookUp(text.c_str(), &id);
  if ((status == KESTREL_OK) == (id == none)) disagree("status and id", status, " ", id);
  if (status != KESTREL_OK) requireEqual("the status of a look-up", status, KESTREL_UNKNOWN_NAME);
  return id;
}

ServiceMapItem itemNamed(const std::string& text) {
  for (ServiceMapItem item = 0; item < NO_SERVICE_MAP_ITEM; ++item) {
    if (itemName(item) == text) return item;
  }
  return NO_SERVICE_MAP_ITEM;
}

void checkTexts(const std::string& text) {
  const StreamType type = plain::streamTypeFromStr(catalogue(), text.c_str());
  requireEqual("streamTypeFromStr", streamTypeFromStr(text.c_str()), type);
  requireEqual("kestrelStreamTypeFromName", lookedUp(kestrelStreamTypeFromName, text, kUnknown),
               type);
  const ServiceMapItem item = plain::serviceMapItemFromStr(catalogue(), text.c_str());
  requireEqual("serviceMapItemFromStr", serviceMapItemFromStr(text.c_str()), item);
  requireEqual("kestrelItemFromText", lookedUp(kestrelItemFromText, text, NO_SERVICE_MAP_ITEM),
               item);
  requireEqual("kestrelItemFromName", lookedUp(kestrelItemFromName, text, NO_SERVICE_MAP_ITEM),
               itemNamed(text));
}

}  // namespace
}  // namespace kestrel::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kestrel::fuzz;
  std::string_view text(reinterpret_cast<const char*>(data), size);
  std::string_view line = takeLine(text);
  const std::int32_t item = numberOf32(takeField(line));
  checkNames(item, numberOf32(takeField(line)));
  checkTexts(std::string(text.substr(0, text.find('\0'))));
  return 0;
}
