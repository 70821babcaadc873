#include "host/evidence/track_labels.h"

#include <gtest/gtest.h>

#include "host/basics/text_parts.h"

namespace kestrel::host {
namespace {

std::vector<std::string> labels(const char* text) {
  std::vector<std::string> result;
  for (const std::string_view label : splitAtBlanks(text)) {
    result.emplace_back(label == "-" ? "" : label);
  }
  return result;
}

TEST(LabelSetsTest, aSetIsTheRightLabelsOnceEach) {
  const struct {
    const char* text;
    LabelSet set;
  } rows[] = {{"L R C LFE Ls Rs", LabelSet::k51},
              {"C LFE Ls Rs L R", LabelSet::k51},
              {"L R C LFE Ls Ls", LabelSet::kOther},
              {"L R C LFE Ls -", LabelSet::kOther},
              {"L R C LFE Lb Rb", LabelSet::kOther},
              {"L R C LFE Ls Rs Lb Rb", LabelSet::k71},
              {"L R C LFE Lss Rss Lrs Rrs", LabelSet::k71},
              {"L R C LFE Ls Rs Lt Rt", LabelSet::kOther},
              {"L R C LFE Ls Rs L R", LabelSet::kOther},
              {"L R C LFE Ls Rs X -", LabelSet::kOther},
              {"L R", LabelSet::kStereo},
              {"Lt Rt", LabelSet::kStereo},
              {"R L", LabelSet::kOther},
              {"L Rt", LabelSet::kOther},
              {"l r", LabelSet::kOther},
              {"C", LabelSet::kMono},
              {"-", LabelSet::kNone},
              {"- - -", LabelSet::kNone},
              {"", LabelSet::kNone}};
  for (const auto& row : rows) {
    EXPECT_EQ(labelSet(labels(row.text)), row.set) << row.text;
  }
}

TEST(LabelSetsTest, ordersInUseAreKnown) {
  EXPECT_TRUE(isUsualOrder(labels("L R C LFE Ls Rs")));
  EXPECT_TRUE(isUsualOrder(labels("C L R Ls Rs LFE")));
  EXPECT_FALSE(isUsualOrder(labels("C LFE Ls Rs L R")));
}

}  // namespace
}  // namespace kestrel::host
