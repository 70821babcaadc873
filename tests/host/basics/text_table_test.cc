#include "host/basics/text_columns.h"

#include <gtest/gtest.h>

namespace kestrel::host {
namespace {

TEST(TextTableTest, columnsLineUpAndLinesEndWithoutBlanks) {
  EXPECT_EQ(textTable({{"Service", "Tracks", "Labels"}, {"Mono", "1", ""}, {"", "2", "L R"}}),
            "Service  Tracks  Labels\n"
            "Mono     1\n"
            "         2       L R\n");
}

TEST(TextTableTest, lettersOfSeveralBytesTakeOneColumn) {
  EXPECT_EQ(textTable({{"\xc3\xa9", "x"}, {"ab", "x"}}), "\xc3\xa9   x\nab  x\n");
}

TEST(TextTableTest, noRowsAreNoText) { EXPECT_EQ(textTable({}), ""); }

}  // namespace
}  // namespace kestrel::host
