// The catalogue through the plain C functions of the library that ships: what each answers, what it
// refuses, and that it says the same as its C++ counterpart. Buffers are tried at every capacity.
#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "api/catalogue.h"
#include "api/kestrel.h"
#include "api/layout_code.h"
#include "api/stream_naming.h"

namespace kestrel::test {
namespace {

constexpr std::int32_t kRows = 7;
constexpr std::int32_t kItems = NO_SERVICE_MAP_ITEM;
constexpr std::int32_t kTypes = 5;
constexpr std::int32_t kAsItWas = -77;
constexpr std::size_t kNeededAsItWas = 7777;

// --- Functions that answer with one number or one constant

using NumberOfId = KestrelStatus (*)(std::int32_t, std::int32_t*);
using ConstantOfId = KestrelStatus (*)(std::int32_t, const char**);
using IdOfText = KestrelStatus (*)(const char*, std::int32_t*);

constexpr IdOfText kNameLookups[] = {kestrelItemFromName, kestrelItemFromText,
                                     kestrelStreamTypeFromName};

// The ids that a list of `count` does not hold.
std::vector<std::int32_t> unknownIds(std::int32_t count) {
  return {INT_MIN, INT_MIN + 1, -2, -1, count, count + 1, 1000, 1 << 16, INT_MAX - 1, INT_MAX};
}

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
using Fill = std::function<KestrelStatus(Element*, std::size_t, std::size_t*)>;

// A buffer between two margins, all of one value that no answer holds.
template <class Element>
class Guarded {
 public:
  explicit Guarded(std::size_t capacity) : elements_(capacity + 2 * kMargin, kCanary) {}

  Element* data() { return elements_.data() + kMargin; }

  // True when only the first `count` elements of the buffer may have been written.
  bool holdsAtMost(std::size_t count) const {
    for (std::size_t i = 0; i < elements_.size(); ++i) {
      const bool written = i >= kMargin && i < kMargin + count;
      if (!written && elements_[i] != kCanary) return false;
    }
    return true;
  }

 private:
  static constexpr std::size_t kMargin = 2;
  static constexpr auto kCanary = static_cast<Element>(0x7E);
  std::vector<Element> elements_;
};

// Fills buffers of every capacity up to one more than needed, and returns what the last one holds.
template <class Element>
std::vector<Element> filled(const Fill<Element>& fill) {
  std::size_t needed = kNeededAsItWas;
  EXPECT_EQ(fill(nullptr, 0, &needed), KESTREL_BUFFER_TOO_SMALL);
  EXPECT_LT(needed, kNeededAsItWas);
  std::vector<Element> answer;
  for (std::size_t capacity = 0; capacity <= needed + 1; ++capacity) {
    Guarded<Element> buffer(capacity);
    std::size_t told = kNeededAsItWas;
    const bool fits = capacity >= needed;
    EXPECT_EQ(fill(buffer.data(), capacity, &told), fits ? KESTREL_OK : KESTREL_BUFFER_TOO_SMALL);
    EXPECT_EQ(told, needed) << "capacity " << capacity;
    EXPECT_TRUE(buffer.holdsAtMost(fits ? needed : 0)) << "capacity " << capacity;
    if (fits) answer.assign(buffer.data(), buffer.data() + needed);
  }
  return answer;
}

std::string filledText(const Fill<char>& fill) {
  const std::vector<char> answer = filled(fill);
  const std::string text(answer.begin(), answer.end());
  EXPECT_EQ(text.find('\0') + 1, text.size()) << "the NUL is counted, and stands at the end alone";
  return text.substr(0, text.find('\0'));
}

template <class Element>
void expectFillRefused(KestrelStatus status, const Fill<Element>& fill) {
  for (const std::size_t capacity : {0U, 1U, 64U}) {
    Guarded<Element> buffer(64);
    std::size_t needed = kNeededAsItWas;
    EXPECT_EQ(fill(buffer.data(), capacity, &needed), status);
    EXPECT_EQ(needed, kNeededAsItWas);
    EXPECT_TRUE(buffer.holdsAtMost(0));
  }
}

template <class Element>
void expectFillRefusesNull(const Fill<Element>& fill) {
  Guarded<Element> buffer(64);
  EXPECT_EQ(fill(buffer.data(), 64, nullptr), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(fill(buffer.data(), 0, nullptr), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(fill(nullptr, 0, nullptr), KESTREL_NULL_ARGUMENT);
  EXPECT_TRUE(buffer.holdsAtMost(0));
  for (const std::size_t capacity : {std::size_t{1}, std::size_t{64}, SIZE_MAX}) {
    std::size_t needed = kNeededAsItWas;
    EXPECT_EQ(fill(nullptr, capacity, &needed), KESTREL_NULL_ARGUMENT) << capacity;
    EXPECT_EQ(needed, kNeededAsItWas);
  }
}

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

// --- Layout codes

struct LayoutCode {
  std::string code;
  std::int32_t item;
};

std::vector<LayoutCode> layoutCodes() {
  std::vector<LayoutCode> codes;
  const char* code = nullptr;
  std::int32_t item = kAsItWas;
  while (kestrelLayoutCode(static_cast<std::int32_t>(codes.size()), &code, &item) == KESTREL_OK) {
    codes.push_back({code, item});
  }
  return codes;
}

std::int32_t itemOfCode(const std::string& code) {
  std::int32_t item = NO_SERVICE_MAP_ITEM;
  const KestrelStatus status = kestrelItemFromLayoutCode(code.c_str(), &item);
  EXPECT_EQ(status, item == NO_SERVICE_MAP_ITEM ? KESTREL_UNKNOWN_NAME : KESTREL_OK) << code;
  return item;
}

TEST(CLayoutCodes, AreTwentyTwoAndEndWithABadIndex) {
  EXPECT_EQ(layoutCodes().size(), 22U);
  for (const std::int32_t index : unknownIds(22)) {
    const char* code = nullptr;
    std::int32_t item = kAsItWas;
    EXPECT_EQ(kestrelLayoutCode(index, &code, &item), KESTREL_BAD_INDEX) << index;
    EXPECT_EQ(code, nullptr);
    EXPECT_EQ(item, kAsItWas);
  }
}

TEST(CLayoutCodes, TheListRefusesNull) {
  const char* code = nullptr;
  std::int32_t item = kAsItWas;
  EXPECT_EQ(kestrelLayoutCode(0, nullptr, &item), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelLayoutCode(0, &code, nullptr), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(code, nullptr);
  EXPECT_EQ(item, kAsItWas);
}

TEST(CLayoutCodes, EachMeansItsItemUnlessAnEarlierOneTakesIt) {
  for (const LayoutCode& row : layoutCodes()) {
    const std::int32_t item = itemOfCode(row.code);
    EXPECT_EQ(item, GetServiceMapItemByAS11R123(row.code.c_str())) << row.code;
    EXPECT_EQ(row.item, row.code == "12a" ? 20 : item) << row.code;
  }
}

TEST(CLayoutCodes, AreListedInTheOrderInWhichTheyAreTried) {
  const std::vector<LayoutCode> codes = layoutCodes();
  int pairs = 0;
  for (std::size_t later = 0; later < codes.size(); ++later) {
    for (std::size_t earlier = 0; earlier < later; ++earlier) {
      // A code that must be the whole text is not found in a longer one.
      const bool areFound = itemOfCode(" " + codes[earlier].code) == codes[earlier].item &&
                            itemOfCode(" " + codes[later].code) == codes[later].item;
      if (!areFound) continue;
      EXPECT_EQ(itemOfCode(codes[later].code + " " + codes[earlier].code), codes[earlier].item);
      ++pairs;
    }
  }
  EXPECT_EQ(pairs, 16 * 15 / 2);
}

TEST(CLayoutCodes, AnyTextMeansWhatItMeansInCpp) {
  for (const char* text : {"", "EBU R 123: 8B", "4a", "4A", " 4a", "8h", "8H", "16F 12h", "Stereo",
                           "2", "12", "\xFF\x80 8b", "\xC3\xA9 16a", "\xB2 a", "12a"}) {
    EXPECT_EQ(itemOfCode(text), GetServiceMapItemByAS11R123(text))
        << testing::PrintToString(std::string(text));
  }
}

}  // namespace
}  // namespace kestrel::test
