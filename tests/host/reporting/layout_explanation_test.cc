#include "host/reporting/layout_explanation.h"

#include <gtest/gtest.h>

namespace kestrel::host {
namespace {

TEST(LayoutExplanationTest, eachEntryIsToldByItsTracks) {
  const LayoutExplanation told = explainLayout("T8=5.1 Mix,-Stereo;T3=Mono,EMCA");
  EXPECT_TRUE(told.isSound);
  EXPECT_EQ(told.text,
            "For 8 tracks:\n"
            "  tracks 1 to 6     5.1 Mix\n"
            "  tracks 7 and 8    Stereo, not reported\n"
            "  This is item 7 of the catalogue, \"5.1 Mix + Stereo Downmix\".\n"
            "For 3 tracks:\n"
            "  track 1           Mono\n"
            "  tracks 2 and 3    EMCA\n");
}

TEST(LayoutExplanationTest, aCaretStandsUnderWhatIsUnknown) {
  const LayoutExplanation told = explainLayout("T4=Stereo,Sterio");
  EXPECT_FALSE(told.isSound);
  EXPECT_EQ(told.text,
            "For 4 tracks:\n"
            "  tracks 1 and 2    Stereo\n"
            "  \"Sterio\" is no service and takes no tracks; the nearest is \"Stereo\".\n"
            "    T4=Stereo,Sterio\n"
            "              ^^^^^^\n"
            "  Its services take 2 of 4 tracks.\n"
            "    T4=Stereo,Sterio\n"
            "    ^^^^^^^^^^^^^^^^\n");
}

TEST(LayoutExplanationTest, whatIsNotUsedIsSaid) {
  const struct {
    const char* description;
    const char* sentence;
    const char* carets;
  } rows[] = {
      {"T2=Stereo;T2=Mono,Mono", "It is never used: an earlier entry is for as many tracks.",
       "              ^^^^^^^^^^^^"},
      {"T2=Stereo;t4=Mono", "This belongs to no entry and is passed over.",
       "             ^^^^^^^^"},
      {"T2=Mono,,Mono", "There is nothing between two commas.", "            ^"},
      {"T2=Dolby E", "\"Dolby E\" is no service and takes no tracks; the nearest is \"EMCA\".",
       "       ^^^^^^^"},
      {"nothing", "There is no entry such as \"T8=5.1 Mix,Stereo\".", "    ^^^^^^^"},
      {"", "There is no entry such as \"T8=5.1 Mix,Stereo\".", "    ^"},
      {"\xc3\xa9;T1=Mno", "\"Mno\" is no service and takes no tracks; the nearest is \"Mono\".",
       "         ^^^"},
      {"T1=Mono\n;x", "This belongs to no entry and is passed over.", "           ^^^^"},
  };
  for (const auto& row : rows) {
    const LayoutExplanation told = explainLayout(row.description);
    EXPECT_FALSE(told.isSound) << row.description;
    const std::size_t at = told.text.find(std::string("  ") + row.sentence + "\n");
    ASSERT_NE(at, std::string::npos) << told.text;
    EXPECT_NE(told.text.find(std::string("\n") + row.carets + "\n", at), std::string::npos)
        << told.text;
  }
}

}  // namespace
}  // namespace kestrel::host
