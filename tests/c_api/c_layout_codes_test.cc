// The layout codes through the plain C functions of the library that ships, beside their C++
// counterpart.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "api/catalogue.h"
#include "api/kestrel.h"
#include "api/layout_code.h"
#include "tests/c_api/c_unknown_ids.h"

namespace kestrel::test {
namespace {

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
