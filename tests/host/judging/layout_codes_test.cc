#include "host/judging/layout_codes.h"

#include <gtest/gtest.h>

namespace kestrel::host {
namespace {

TEST(LayoutCodesTest, everyCommonSpellingIsRead) {
  for (const char* text :
       {"8b", "8B", "R123:8b", "R123 8b", "r123_8B", "R 123: 8b", "EBU R 123: 8b", "EBU R123: 8b",
        "EBU_R_123_8b", "ebu_r_123_8B", "Layout_EBU_R_123_8b", "LAYOUT_EBU_R_123_8B", "layout 8b",
        "EBU R 123 - 8b", "EBU-R-123-8b", " 8b ", "EBUR123:8b", "R123/8b", "EBU R 123: 8b."}) {
    const SpelledCode spelled = spelledCode(text);
    EXPECT_EQ(spelled.code, "8b") << text;
    EXPECT_EQ(spelled.vocabulary, CodeVocabulary::kR123) << text;
  }
  EXPECT_EQ(spelledCode("R123:12d").code, "12d");
  EXPECT_EQ(spelledCode("EBU_R_123_16F").code, "16f");
}

TEST(LayoutCodesTest, codesOfTheOtherVocabularyAreNamedAsSuch) {
  for (const char* text : {"EBU R 48: 2a", "R48:2a", "EBU_R_48_2A", "Layout_EBU_R_48_2a"}) {
    EXPECT_EQ(spelledCode(text).vocabulary, CodeVocabulary::kR48) << text;
  }
}

TEST(LayoutCodesTest, otherTextsAreNoCodes) {
  for (const char* text :
       {"",           " ",      "b",         "8",      "8bb",           "b8",      "123b",
        "8b8",        "8 b",    "8b 12d",    "EBU 8b", "EBU R 124: 8b", "R 8b",    "EBU R 123",
        "EBU R 123:", "Stereo", "8\xc3\xa9", "\xff",   "-8b-x",         "xR123:8b"}) {
    EXPECT_EQ(spelledCode(text).code, "") << text;
  }
}

TEST(LayoutCodesTest, theListIsTheLibrarys) {
  EXPECT_EQ(layoutCodes().size(), 22u);
  ASSERT_TRUE(layoutCode("8b"));
  EXPECT_EQ(layoutCode("8b")->item, 7);
  EXPECT_EQ(layoutCode("8b")->found, 7);
  EXPECT_EQ(layoutCode("8c"), std::nullopt);
  EXPECT_EQ(layoutCode("8B"), std::nullopt);
}

TEST(LayoutCodesTest, onlyOneCodeHasTwoReadings) {
  std::string ambiguous;
  for (const LayoutCode& code : layoutCodes()) {
    ambiguous += code.item == code.found ? "" : code.code;
  }
  EXPECT_EQ(ambiguous, "12a");
}

}  // namespace
}  // namespace kestrel::host
