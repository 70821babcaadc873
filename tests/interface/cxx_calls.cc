// Ids are a little less or more than the catalogue's, so that in every thread some calls raise.
#include <array>
#include <cstddef>
#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "api/catalogue.h"
#include "api/ebu_r123.h"
#include "api/layout_code.h"
#include "api/service_map.h"
#include "api/stream_naming.h"
#include "tests/interface/exported_calls.h"
#include "tests/library_under_test.h"
#include "tests/random_inputs.h"

namespace kestrel::test {
namespace {

constexpr std::array kTexts = {"Stereo",  "5.1 Mix,Stereo", "Mono,Mono", "Dolby E", "7.1 Mix",
                               "stereo ", "EBU R 123: 8B",  "12a",       "4a",      "16c"};

const char* textOf(std::int32_t number) {
  return kTexts[static_cast<std::size_t>(number) % kTexts.size()];
}

std::string said(std::int64_t value) { return std::to_string(value); }
std::string said(const std::string& text) { return text; }

// What `ask` returns, or the error that it raises.
template <class Ask>
std::string saidOrRaised(const Ask& ask) {
  try {
    return said(ask());
  } catch (const std::out_of_range& error) {
    return std::string("raised ") + error.what();
  }
}

// What the function says of an id: -2, -1, 0, ...
template <auto* kFunction>
std::string ofId(std::int32_t number) {
  return saidOrRaised([=] { return kFunction(number - 2); });
}

template <auto* kFunction>
std::string ofText(std::int32_t number) {
  return said(kFunction(textOf(number)));
}

// The integers that the function writes for an id.
template <auto* kFunction>
std::string listOf(std::int32_t number) {
  std::array<std::int32_t, 20> list{};
  return saidOrRaised([&] {
    std::string text = std::to_string(kFunction(number - 2, list.data())) + ":";
    for (const std::int32_t value : list) text += " " + std::to_string(value);
    return text;
  });
}

// The text that `fill` writes.
template <class Fill>
std::string filled(const Fill& fill) {
  std::array<char, 64> text{};
  return saidOrRaised([&] {
    fill(text.data());
    return std::string(text.data(), text.size());
  });
}

std::string itemName(std::int32_t number) {
  return filled([=](char* text) { getServiceMapItemName(number - 2, text); });
}

std::string streamName(std::int32_t number) {
  return filled([=](char* text) { getStreamTypeName(number - 2, number % 5, text); });
}

std::string streamNameLength(std::int32_t number) {
  return saidOrRaised([=] { return getStreamTypeNameLength(number - 2, number % 5); });
}

std::string symbolic(std::int32_t number) {
  return filled([=](char* text) { getStreamTypeSymbolic(number % 8 - 1, text); });
}

std::string serviceMap(std::int32_t number) {
  Random random(static_cast<std::uint64_t>(number));
  std::ostringstream text;
  text << callServiceMap(randomServiceMapInput(random));
  return text.str();
}

std::string ebuR123(std::int32_t number) {
  const std::vector<AudioStreamInfo> streams(static_cast<std::size_t>(number % 9));
  ServiceMapResult* block = nullptr;
  std::int32_t count = -1, item = number;
  getServiceMapEbuR123(textOf(number), 0, streams.data(), number % 9, &block, &count, &item);
  const bool hasBlock = block != nullptr;
  std::free(block);
  return said(count) + " records for item " + said(item) + (hasBlock ? ", a block" : "");
}

constexpr std::array kCalls = {
    ExportedCall{"getRowCount", [](std::int32_t) { return said(getRowCount()); }},
    ExportedCall{"getTracksCount", ofId<getTracksCount>},
    ExportedCall{"getServiceMapItemsCount", ofId<getServiceMapItemsCount>},
    ExportedCall{"getServiceMapItems", listOf<getServiceMapItems>},
    ExportedCall{"getDefaultServiceMapItem", ofId<getDefaultServiceMapItem>},
    ExportedCall{"getServiceMapItemRow", ofId<getServiceMapItemRow>},
    ExportedCall{"getServiceMapItemNameLength", ofId<getServiceMapItemNameLength>},
    ExportedCall{"getServiceMapItemName", itemName},
    ExportedCall{"getStreamTypesCount", ofId<getStreamTypesCount>},
    ExportedCall{"getStreamTypes", listOf<getStreamTypes>},
    ExportedCall{"getStreamTypeNameLength", streamNameLength},
    ExportedCall{"getStreamTypeName", streamName},
    ExportedCall{"getStreamTypeSymbolicLength", ofId<getStreamTypeSymbolicLength>},
    ExportedCall{"getStreamTypeSymbolic", symbolic},
    ExportedCall{"streamTypeFromStr", ofText<streamTypeFromStr>},
    ExportedCall{"serviceMapItemFromStr", ofText<serviceMapItemFromStr>},
    ExportedCall{"getServiceMap", serviceMap},
    ExportedCall{"getServiceMapEbuR123", ebuR123},
    ExportedCall{"GetServiceMapItemByAS11R123", ofText<GetServiceMapItemByAS11R123>},
};

}  // namespace

std::span<const ExportedCall> cxxCalls() { return kCalls; }

ExportedCall symbolCall() {
  return {"getStreamTypeSymbol", [](std::int32_t number) {
            return saidOrRaised([=] { return std::string(getStreamTypeSymbol(number - 2)); });
          }};
}

}  // namespace kestrel::test
