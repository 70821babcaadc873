// Texts of requests of the plain C interface: UTF-8 of every kind, and the place of the first byte
// that is none.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "api/kestrel.h"
#include "tests/c_api/c_analysis_support.h"
#include "tests/c_api/c_request.h"

namespace kestrel::test {
namespace {

TEST(CTexts, ATextThatIsNotUtf8IsRefusedWithThePlaceOfItsFirstBadByte) {
  const char* const badSequences[] = {
      "\x80",
      "\xBF",
      "\xFF",
      "\xFE",  // no sequence begins so
      "\xC0\x80",
      "\xC1\xBF",
      "\xE0\x80\x80",  // overlong
      "\xE0\x9F\xBF",
      "\xF0\x80\x80\x80",  //
      "\xF0\x8F\xBF\xBF",  //
      "\xED\xA0\x80",
      "\xED\xAF\xBF",  // surrogates
      "\xED\xB0\x80",
      "\xED\xBF\xBF",              //
      "\xED\xA0\xBD\xED\xB8\x80",  //
      "\xF4\x90\x80\x80",
      "\xF5\x80\x80\x80",  // behind U+10FFFF
      "\xF8\x88\x80\x80\x80",
      "\xF7\xBF\xBF\xBF",  //
      "\xC3",
      "\xE2\x82",
      "\xE2",
      "\xF0\x9F\x8E",  // cut short
      "\xC3(",
      "\xE2\x82(",
      "\xE2(\xA1",  //
      "\xF0\x9F\x8E(",
      "\xE0\xC0\x80",
      "\xED\x7F\x80",
      "\xF0\xC0\x80\x80",
      "\xF4\x7F\x80\x80",  // a first trail byte beyond the range of its lead
      "\xC3\xC3\xA9",
  };
  for (const std::string bad : badSequences) {
    for (const std::string before : {"", "1", "T6=Stereo ", "fifteen letters", "sixteen letters.",
                                     "and seventeen ones", "\xC3\xA9\xF0\x9F\x8E\xA7"}) {
      for (const std::string after : {"", "x", "\xC3\xA9 \xFF"}) {
        forEachPlaceOf(before + bad + after, [&](const KestrelRequest& asked, std::int32_t index) {
          EXPECT_EQ(refusalOf(&asked), (Refusal{KESTREL_BAD_TEXT, before.size(), index}))
              << testing::PrintToString(before + bad + after);
        });
      }
    }
  }
}

const char* const kStrangeTexts[] = {
    "\x7F\xC2\x80\xDF\xBF",              // U+007F U+0080 U+07FF
    "\xE0\xA0\x80\xED\x9F\xBF",          // U+0800 U+D7FF
    "\xEE\x80\x80\xEF\xBF\xBF",          // U+E000 U+FFFF
    "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF",  // U+10000 U+10FFFF
    "\xEF\xBB\xBF first",                // a byte order mark
    "L R C LFE \xF0\x9F\x8E\xA7 R\xC3\xA9\x01\t\n",
};

TEST(CTexts, EveryOtherTextIsAccepted) {
  for (const std::string text : kStrangeTexts) {
    forEachPlaceOf(text, [](const KestrelRequest& asked, std::int32_t) {
      EXPECT_NE(outcomeOf(analysed(asked)), -1);
    });
  }
}

TEST(CTexts, AnOrderComesBackAsALabelByteForByte) {
  const std::vector<KestrelStream> streams = {stream("1", 6, "\xF0\x9F\x8E\xA7")};
  for (const char* const order : kStrangeTexts) {
    KestrelRequest asked = request("T6=5.1 Mix", streams);
    asked.surroundChannelOrder = order;
    EXPECT_STREQ(serviceAt(analysed(asked), 0).label, order);
  }
}

}  // namespace
}  // namespace kestrel::test
