#include <gtest/gtest.h>

#include "host/scanning/progress_bar.h"

namespace kestrel::host {
namespace {

TEST(ProgressLineTest, theLineFitsTheTerminal) {
  const struct {
    Progress progress;
    std::size_t columns;
    const char* line;
  } rows[] = {
      {{0, 4, {}}, 79, "[                                        ]  0 of 4"},
      {{1, 4, std::chrono::seconds(2)},
       79,
       "[##########                              ]  1 of 4   0.5 files/s   0:06 left"},
      {{4, 4, std::chrono::seconds(2)},
       60,
       "[########################]  4 of 4   2.0 files/s   0:00 left"},
      {{1, 4, std::chrono::seconds(2)}, 46, "[##        ]  1 of 4   0.5 files/s   0:06 left"},
      {{1, 4, std::chrono::seconds(2)}, 45, "1 of 4   0.5 files/s   0:06 left"},
      {{1, 4, std::chrono::seconds(2)}, 30, "1 of 4   0.5 files/s"},
      {{1, 4, std::chrono::seconds(2)}, 19, "1 of 4"},
      {{1, 4, std::chrono::seconds(2)}, 3, "1 o"},
      {{1, 4, {}},
       79,
       "[##########                              ]  1 of 4   0.0 files/s   0:00 left"},
      {{1, 1000, std::chrono::seconds(10)}, 46, "1 of 1000   0.1 files/s   2:46:30 left"},
      {{0, 0, {}}, 79, "[                                        ]  0 of 0"}};
  for (const auto& row : rows) {
    const std::string line = progressLine(row.progress, row.columns);
    EXPECT_EQ(line, row.line) << row.columns;
    EXPECT_LE(line.size(), row.columns);
  }
}

}  // namespace
}  // namespace kestrel::host
