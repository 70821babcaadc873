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
              {"L R L LFE Ls Rs", LabelSet::kOther},  // a double that stands apart
              {"Ls L R C LFE Rs Lb Ls", LabelSet::kOther},
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
  for (const char* order : {"L R C LFE Ls Rs",     // delivery
                            "L C R Ls Rs LFE",     // film
                            "L R Ls Rs C LFE",     // DTS
                            "C L R Ls Rs LFE",     // AAC
                            "L C Ls R LFE Rs"}) {  // Dolby E
    EXPECT_TRUE(isUsualOrder(labels(order))) << order;
  }
  for (const char* order : {"C LFE Ls Rs L R", "L R C LFE Rs Ls", "L R C LFE Ls", "L R", ""}) {
    EXPECT_FALSE(isUsualOrder(labels(order))) << order;
  }
}

}  // namespace
}  // namespace kestrel::host
