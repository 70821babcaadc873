#include "host/evidence/stream_ids.h"

#include <gtest/gtest.h>

namespace kestrel::host {
namespace {

struct Row {
  const char* id;
  const char* alone;  // nullptr: not the id of a part
  const char* besideOthers;
};

TEST(SplitIdTest, channelsTakeThePlaceOfTheTrack) {
  const Row rows[] = {
      {"2001-1", "1", "200101"},
      {"1-16", "16", "116"},
      {"2001-3 / 4-1", "3 / 4-1", "200103 / 200104-1"},
      {"3-3 / 4", "3 / 4", "303 / 304"},
      {"1-(3 / 4)-2", "3 / 4-2", "103 / 104-2"},
      {"1-(7 / 8)", "7 / 8", "107 / 108"},
      {"3 / 4-1", nullptr, nullptr},
      {"1", nullptr, nullptr},
      {"", nullptr, nullptr},
      {"-1", nullptr, nullptr},
      {"1-", nullptr, nullptr},
      {"1--2", nullptr, nullptr},
      {"1-2-3", nullptr, nullptr},
      {"1-2x", nullptr, nullptr},
      {"1-(2)", nullptr, nullptr},
      {"1-(3 / 4", nullptr, nullptr},
      {"1-3 / 4)", nullptr, nullptr},
      {"1-3 / ", nullptr, nullptr},
      {"1-3/4-1", nullptr, nullptr},
      {"1-(3 / 4)-", nullptr, nullptr},
      {"1-(7 / 8)-2-1", nullptr, nullptr},
      {" 1-2", nullptr, nullptr},
      {"901-Material", nullptr, nullptr},
      {"99999999999999999999-1", nullptr, nullptr},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.id);
    const auto id = parseSplitId(row.id);
    ASSERT_EQ(id.has_value(), row.alone != nullptr);
    if (id) {
      EXPECT_EQ(channelId(*id, false), row.alone);
      EXPECT_EQ(channelId(*id, true), row.besideOthers);
    }
  }
}

}  // namespace
}  // namespace kestrel::host
