// The catalogue through the plain C functions of the library that ships: what each answers, what it
// refuses, and that it says the same as its C++ counterpart. Buffers are tried at every capacity.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "api/catalogue.h"
#include "api/kestrel.h"
#include "api/layout_code.h"
#include "api/stream_naming.h"
#include "tests/c_api/c_filled_buffer.h"
#include "tests/c_api/c_unknown_ids.h"

namespace kestrel::test {
namespace {

constexpr std::int32_t kRows = 7;
constexpr std::int32_t kItems = NO_SERVICE_MAP_ITEM;
constexpr std::int32_t kTypes = 5;

// --- Functions that answer with one number or one constant

using NumberOfId = KestrelStatus (*)(std::int32_t, std::int32_t*);
using ConstantOfId = KestrelStatus (*)(std::int32_t, const char**);
using IdOfText = KestrelStatus (*)(const char*, std::int32_t*);

constexpr IdOfText kNameLookups[] = {kestrelItemFromName, kestrelItemFromText,
                                     kestrelStreamTypeFromName};

template <class Function, class Key>
std::int32_t numberOf(Function function, Key key) {
  std::int32_t number = kAsItWas;
  EXPECT_EQ(function(key, &number), KESTREL_OK) << key;
  return number;
}

std::string constantOf(ConstantOfId function, std::int32_t id) {
  const char* text = nullptr;
  EXPECT_EQ(function(id, &text), KESTREL_OK) << id;
  return text == nullptr ? "no text" : text;
}

template <class Function, class Key>
void expectRefused(KestrelStatus status, Function function, Key key) {
  std::int32_t number = kAsItWas;
  EXPECT_EQ(function(key, &number), status);
  EXPECT_EQ(number, kAsItWas);
}

void expectConstantRefused(KestrelStatus status, ConstantOfId function, std::int32_t id) {
  const char untouched[] = "as it was";
  const char* text = untouched;
  EXPECT_EQ(function(id, &text), status) << id;
  EXPECT_EQ(text, untouched) << id;
}

// --- Functions that fill a buffer

template <class Element>
Fill<Element> fillOf(KestrelStatus (*function)(std::int32_t, Element*, std::size_t, std::size_t*),
                     std::int32_t id) {
  return [=](Element* buffer, std::size_t capacity, std::size_t* needed) {
    return function(id, buffer, capacity, needed);
  };
}

Fill<char> streamNameOf(std::int32_t item, std::int32_t position) {
  return [=](char* name, std::size_t capacity, std::size_t* needed) {
    return kestrelItemStreamName(item, position, name, capacity, needed);
  };
}

// --- The C++ counterparts

std::vector<std::int32_t> cppItems(std::int32_t row) {
  std::vector<std::int32_t> items(static_cast<std::size_t>(getServiceMapItemsCount(row)));
  getServiceMapItems(row, items.data());
  return items;
}

std::vector<std::int32_t> cppTypes(std::int32_t item) {
  std::vector<std::int32_t> types(static_cast<std::size_t>(getStreamTypesCount(item)));
  getStreamTypes(item, types.data());
  return types;
}

std::string cppName(std::int32_t item) {
  std::string name(static_cast<std::size_t>(getServiceMapItemNameLength(item)), '?');
  getServiceMapItemName(item, name.data());
  return name;
}

std::string cppStreamName(std::int32_t item, std::int32_t position) {
  std::string name(static_cast<std::size_t>(getStreamTypeNameLength(item, position)), '?');
  getStreamTypeName(item, position, name.data());
  return name;
}

// --- Rows

TEST(CCatalogue, HasSevenRowsFortyOneItemsAndFiveStreamTypes) {
  std::int32_t sizes[] = {kAsItWas, kAsItWas, kAsItWas};
  EXPECT_EQ(kestrelCatalogueSize(&sizes[0], &sizes[1], &sizes[2]), KESTREL_OK);
  EXPECT_EQ(sizes[0], kRows);
  EXPECT_EQ(sizes[1], kItems);
  EXPECT_EQ(sizes[2], kTypes);
  EXPECT_EQ(sizes[0], getRowCount());
}

TEST(CCatalogue, TheSizesAreWrittenTogetherOrNotAtAll) {
  std::int32_t a = kAsItWas;
  std::int32_t b = kAsItWas;
  EXPECT_EQ(kestrelCatalogueSize(nullptr, &a, &b), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelCatalogueSize(&a, nullptr, &b), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelCatalogueSize(&a, &b, nullptr), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(a, kAsItWas);
  EXPECT_EQ(b, kAsItWas);
}

TEST(CCatalogue, EveryRowSaysWhatItsCppFunctionsSay) {
  for (std::int32_t row = 0; row < kRows; ++row) {
    SCOPED_TRACE(row);
    EXPECT_EQ(numberOf(kestrelRowTracks, row), getTracksCount(row));
    EXPECT_EQ(numberOf(kestrelRowDefaultItem, row), getDefaultServiceMapItem(row));
    EXPECT_EQ(filled(fillOf(kestrelRowItems, row)), cppItems(row));
  }
}

TEST(CCatalogue, AnUnknownRowIsRefused) {
  for (const std::int32_t row : unknownIds(kRows)) {
    SCOPED_TRACE(row);
    expectRefused(KESTREL_UNKNOWN_ID, kestrelRowTracks, row);
    expectRefused(KESTREL_UNKNOWN_ID, kestrelRowDefaultItem, row);
    expectFillRefused(KESTREL_UNKNOWN_ID, fillOf(kestrelRowItems, row));
  }
}

TEST(CCatalogue, NumberFunctionsRefuseNull) {
  for (const NumberOfId function :
       {kestrelRowTracks, kestrelRowDefaultItem, kestrelItemRow, kestrelStreamTypeTracks}) {
    EXPECT_EQ(function(0, nullptr), KESTREL_NULL_ARGUMENT);
  }
  EXPECT_EQ(kestrelItemName(0, nullptr), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelStreamTypeName(0, nullptr), KESTREL_NULL_ARGUMENT);
}

TEST(CCatalogue, FillingFunctionsRefuseNull) {
  expectFillRefusesNull(fillOf(kestrelRowItems, 5));
  expectFillRefusesNull(fillOf(kestrelItemStreamTypes, 40));
  expectFillRefusesNull(fillOf(kestrelItemText, 40));
  expectFillRefusesNull(streamNameOf(40, 9));
}

// --- Items

TEST(CCatalogue, EveryItemSaysWhatItsCppFunctionsSay) {
  for (std::int32_t item = 0; item < kItems; ++item) {
    SCOPED_TRACE(item);
    EXPECT_EQ(numberOf(kestrelItemRow, item), getServiceMapItemRow(item));
    EXPECT_EQ(constantOf(kestrelItemName, item), cppName(item));
    EXPECT_EQ(filled(fillOf(kestrelItemStreamTypes, item)), cppTypes(item));
    EXPECT_EQ(numberOf(kestrelItemFromName, cppName(item).c_str()), item);
  }
}

TEST(CCatalogue, EveryItemTextJoinsItsStreamTypesAndLeadsToTheFirstItemWithIt) {
  for (std::int32_t item = 0; item < kItems; ++item) {
    std::string joined;
    for (const std::int32_t type : cppTypes(item)) {
      joined += (joined.empty() ? "" : ",") + std::string(getStreamTypeSymbol(type));
    }
    EXPECT_EQ(filledText(fillOf(kestrelItemText, item)), joined) << item;
    const std::int32_t first = numberOf(kestrelItemFromText, joined.c_str());
    EXPECT_EQ(first, serviceMapItemFromStr(joined.c_str())) << item;
    EXPECT_LE(first, item);
  }
}

TEST(CCatalogue, EveryStreamOfAnItemIsNamedAsInCpp) {
  int positions = 0;
  for (std::int32_t item = 0; item < kItems; ++item) {
    const auto count = static_cast<std::int32_t>(getStreamTypesCount(item));
    for (std::int32_t position = 0; position < count; ++position, ++positions) {
      EXPECT_EQ(filledText(streamNameOf(item, position)), cppStreamName(item, position))
          << item << " position " << position;
    }
    for (const std::int32_t position : unknownIds(count)) {
      SCOPED_TRACE(position);
      expectFillRefused(KESTREL_UNKNOWN_ID, streamNameOf(item, position));
    }
  }
  EXPECT_EQ(positions, 224);
}

TEST(CCatalogue, AnUnknownItemIsRefused) {
  for (const std::int32_t item : unknownIds(kItems)) {
    SCOPED_TRACE(item);
    expectRefused(KESTREL_UNKNOWN_ID, kestrelItemRow, item);
    expectConstantRefused(KESTREL_UNKNOWN_ID, kestrelItemName, item);
    expectFillRefused(KESTREL_UNKNOWN_ID, fillOf(kestrelItemStreamTypes, item));
    expectFillRefused(KESTREL_UNKNOWN_ID, fillOf(kestrelItemText, item));
    expectFillRefused(KESTREL_UNKNOWN_ID, streamNameOf(item, 0));
  }
}

// --- Stream types

TEST(CCatalogue, EveryStreamTypeHasItsNameAndItsWidth) {
  constexpr std::int32_t kWidths[] = {1, 2, 6, 8, 2};
  for (std::int32_t type = 0; type < kTypes; ++type) {
    const std::string name = constantOf(kestrelStreamTypeName, type);
    EXPECT_EQ(name, getStreamTypeSymbol(type));
    EXPECT_EQ(numberOf(kestrelStreamTypeTracks, type), kWidths[type]);
    EXPECT_EQ(numberOf(kestrelStreamTypeFromName, name.c_str()), type);
  }
}

TEST(CCatalogue, OnlyCataloguedStreamTypesHaveNamesAndWidths) {
  for (const std::int32_t type : unknownIds(kTypes)) {
    SCOPED_TRACE(type);
    expectConstantRefused(KESTREL_UNKNOWN_ID, kestrelStreamTypeName, type);
    expectRefused(KESTREL_UNKNOWN_ID, kestrelStreamTypeTracks, type);
  }
}

// --- Texts that name nothing

TEST(CCatalogue, ATextThatNearlyNamesSomethingNamesNothing) {
  for (const char* text :
       {"", " ", "stereo", " Stereo", "Stereo ", "Stereo,", ",Stereo", "Stere", "EMCA", "5.1  Mix",
        "Stereo, Stereo", "16 mono", "Dolby", "Mono\n", "5.1 Mix,Stereo ", "Unknown",
        "St\xC3\xA9"
        "r\xC3\xA9o"}) {
    SCOPED_TRACE(text);
    for (const IdOfText lookup : kNameLookups) expectRefused(KESTREL_UNKNOWN_NAME, lookup, text);
  }
}

TEST(CCatalogue, BytesThatAreNotUtf8NameNothing) {
  for (const char* text : {"\xFF", "Stereo\xFF", "\xC0\x80", "Stereo\xE2\x82"}) {
    SCOPED_TRACE(testing::PrintToString(std::string(text)));
    for (const IdOfText lookup : kNameLookups) expectRefused(KESTREL_UNKNOWN_NAME, lookup, text);
  }
}

TEST(CCatalogue, LookupsRefuseNull) {
  const char* const noText = nullptr;
  for (const IdOfText lookup : {kestrelItemFromName, kestrelItemFromText, kestrelStreamTypeFromName,
                                kestrelItemFromLayoutCode}) {
    expectRefused(KESTREL_NULL_ARGUMENT, lookup, noText);
    EXPECT_EQ(lookup("Stereo", nullptr), KESTREL_NULL_ARGUMENT);
  }
}

}  // namespace
}  // namespace kestrel::test
