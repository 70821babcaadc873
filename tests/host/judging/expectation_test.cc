#include "host/judging/expectation.h"

#include <gtest/gtest.h>

#include "host/basics/text_input.h"
#include "host/basics/usage_error.h"
#include "host/judging/catalogue_items.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

std::string refusal(Expectation (*read)(const std::string&), const std::string& text) {
  try {
    return "accepted as " + read(text).description;
  } catch (const UsageError& error) {
    return error.what();
  }
}

TEST(ExpectationTest, anItemIsNamedInManyWays) {
  const struct {
    const char* text;
    std::int32_t id;
  } rows[] = {{"7", 7},
              {"0", 0},
              {"40", 40},
              {"Stereo", 0},
              {"stereo", 0},
              {"5.1 Mix", 4},
              {"Stereo + 5.1 Mix", 8},
              {"STEREO + 5.1 mix", 8},
              {"Stereo,5.1 Mix", 8},
              {"stereo, 5.1 mix", 8},
              {"Mono,Mono", 1},
              {"Stereo,Dolby E,Stereo,5.1 Mix", 25},
              {"Stereo,EMCA,Stereo,5.1 Mix", 25}};
  for (const auto& row : rows) {
    EXPECT_EQ(expectedItem(row.text).item->id, row.id) << row.text;
  }
}

TEST(ExpectationTest, anUnknownItemNamesTheNearest) {
  EXPECT_EQ(refusal(expectedItem, "41"), "there is no item 41; the items are 0 to 40");
  EXPECT_EQ(refusal(expectedItem, "99999999999999999999"),
            "there is no item 99999999999999999999; the items are 0 to 40");
  EXPECT_EQ(refusal(expectedItem, "2 Sterio"),
            "there is no item \"2 Sterio\"; the nearest is \"2 Stereo\" (kestrel catalogue lists "
            "all)");
  EXPECT_EQ(refusal(expectedItem, "Stereo,5.1"),
            "there is no item \"Stereo,5.1\"; the nearest is \"Stereo,5.1 Mix\" (kestrel catalogue "
            "lists all)");
  for (const char* text : {"", " ", ",", "-1", "7 ", "\n", "+"}) {
    EXPECT_TRUE(refusal(expectedItem, text).starts_with("there is no item")) << text;
  }
}

TEST(ExpectationTest, everyItemIsFoundByItsIdNameAndServices) {
  for (const CatalogueItem& item : catalogueItems()) {
    EXPECT_EQ(expectedItem(std::to_string(item.item.id)).item->id, item.item.id);
    EXPECT_EQ(expectedItem(item.item.name).item->id, item.item.id);
    EXPECT_EQ(expectedItem(item.services).item->id, item.item.id);
  }
}

TEST(ExpectationTest, dolbyEInAnItemIsEmcaInTheDescription) {
  EXPECT_EQ(expectedItem("23").description, "T12=Stereo,EMCA,Stereo,EMCA,Stereo,Stereo");
  EXPECT_EQ(expectedItem("40").description,
            "T16=5.1 Mix,Mono,Mono,Stereo,Mono,Mono,Mono,Mono,Mono,Mono");
}

TEST(ExpectationTest, aCodeStandsForItsItem) {
  const Expectation expectation = expectedCode("EBU R 123: 8B");
  EXPECT_EQ(expectation.kind, ExpectationKind::kCode);
  EXPECT_EQ(expectation.text, "EBU R 123: 8B");
  EXPECT_EQ(expectation.code, "8b");
  EXPECT_EQ(expectation.item->id, 7);
  EXPECT_EQ(expectedCode("8H").item->id, 11);
  EXPECT_EQ(expectedCode("12d").item->id, 23);
}

TEST(ExpectationTest, anUnknownCodeNamesTheNearest) {
  EXPECT_EQ(refusal(expectedCode, "8e"),
            "no layout is known for the code \"8e\"; the nearest is \"8a\" (kestrel codes lists "
            "all)");
  EXPECT_EQ(refusal(expectedCode, "R123:12i"),
            "no layout is known for the code \"R123:12i\"; the nearest is \"12a\" (kestrel codes "
            "lists all)");
  EXPECT_EQ(
      refusal(expectedCode, "no code"),
      "no layout is known for the code \"no code\"; the nearest is \"4c\" (kestrel codes lists "
      "all)");
  EXPECT_EQ(refusal(expectedCode, "EBU R 48: 2a"),
            "\"EBU R 48: 2a\" is a code of EBU R 48, which is another vocabulary than that of EBU "
            "R 123 and is not looked up");
}

TEST(ExpectationTest, aLayoutMustHaveEntriesOfKnownServices) {
  EXPECT_EQ(expectedLayout("T2=Stereo").description, "T2=Stereo");
  EXPECT_EQ(refusal(expectedLayout, "Stereo"),
            "there is no entry such as \"T8=5.1 Mix,Stereo\" in the layout");
  EXPECT_EQ(refusal(expectedLayout, "T8=5.1 Mx,Stereo"),
            "the entry T8 has the service \"5.1 Mx\", which is not known; the nearest is \"5.1 "
            "Mix\"");
  EXPECT_EQ(refusal(expectedLayout, "T2=Stereo;T4=Stereo,,Mono"),
            "the entry T4 has the service \"\", which is not known; the nearest is \"Mono\"");
  EXPECT_EQ(refusal(expectedLayout, "T1=Mono\xff"), "the text is not UTF-8");
}

TEST(ExpectationTest, aLayoutFileHasCommentsAndLines) {
  const TemporaryDirectory directory;
  const auto file =
      directory.write("layout.txt", "# T2=Mono,Mono\nT2=Stereo\r\n\nT4=Stereo,Stereo \n");
  const Expectation expectation = expectedLayoutFile(file);
  EXPECT_EQ(expectation.kind, ExpectationKind::kLayoutFile);
  EXPECT_EQ(expectation.description, "T2=Stereo;T4=Stereo,Stereo");
  EXPECT_THROW(expectedLayoutFile(directory / "none"), InputError);
  EXPECT_THROW(expectedLayoutFile(directory / "."), InputError);
  EXPECT_THROW(expectedLayoutFile(directory.write("empty", "")), UsageError);
  const std::string entry = "T2=Stereo\n";
  const auto longest =
      directory.write("long", entry + std::string((1U << 20) - entry.size(), '\n'));
  EXPECT_EQ(expectedLayoutFile(longest).description, "T2=Stereo");
  std::filesystem::resize_file(longest, (1U << 20) + 1);
  EXPECT_THROW(expectedLayoutFile(longest), UsageError);
  // The library would read up to the NUL only.
  const std::string withNul("T1=Mono\0T2=Stereo", 18);
  EXPECT_THROW(expectedLayoutFile(directory.write("nul", withNul)), UsageError);
}

TEST(ExpectationTest, onlyR123DeclarationsHaveAnItem) {
  const struct {
    const char* text;
    const char* vocabulary;
    const char* code;
    std::int32_t item;
  } rows[] = {{"EBU R 123: 8b", "EBU R 123", "8b", 7},
              {"EBU R 123: 16f", "EBU R 123", "16f", 36},
              {"EBU R 123: 8c", "EBU R 123", "8c", -1},
              {"EBU R 48: 2a", "EBU R 48", "2a", -1},
              {"8b", "unknown", "", -1},
              {"EBU R 123:8b", "unknown", "", -1},
              {"EBU R 123", "unknown", "", -1},
              {" EBU R 123: 8b", "unknown", "", -1}};
  for (const auto& row : rows) {
    const DeclaredLayout declared = declaredLayout(row.text);
    EXPECT_EQ(declared.vocabulary, row.vocabulary) << row.text;
    EXPECT_EQ(declared.code, row.code) << row.text;
    EXPECT_EQ(declared.item ? declared.item->id : -1, row.item) << row.text;
    EXPECT_EQ(expectedDeclared(declared).has_value(), row.item >= 0) << row.text;
  }
}

TEST(ExpectationTest, anAmbiguousCodeIsSettledByTheTracks) {
  Expectation twelve = expectedCode("12a");
  EXPECT_EQ(twelve.item->id, 0);
  const auto warning = settleAmbiguousCode(twelve, 12);
  ASSERT_TRUE(warning);
  EXPECT_EQ(warning->id, "code-ambiguous");
  EXPECT_EQ(twelve.item->id, 20);
  Expectation two = expectedCode("12a");
  EXPECT_TRUE(settleAmbiguousCode(two, 2));
  EXPECT_EQ(two.item->id, 0);
  Expectation plain = expectedCode("12b");
  EXPECT_FALSE(settleAmbiguousCode(plain, 12));
}

}  // namespace
}  // namespace kestrel::host
