// The scanner of layout descriptions against its plain form, which uses regular expressions.
#include <gtest/gtest.h>

#include <cstdio>
#include <memory_resource>
#include <string>

#include "analyser/expected_services.h"
#include "analyser/layout_description.h"
#include "analyser/track_number_counter.h"
#include "tests/plain/plain_layout_description.h"
#include "tests/random_inputs.h"
#include "tests/test_rounds.h"

namespace kestrel {
namespace {

bool agree(const ExpectedService& service, const plain::PlainExpectedService& plain,
           std::uint32_t counterShift) {
  if (plain.trackCount > 0 && service.firstTrack != trackNumberAfter(plain.tracks[0], counterShift))
    return false;
  return service.trackCount == plain.trackCount && service.streamType == plain.streamType &&
         service.isEmca == plain.isEmca && service.reported == plain.reported &&
         service.requested == plain.requested;
}

TEST(LayoutDescriptions, ReadLikeThePlainFormOnRandomTexts) {
  const int texts = test::rounds(250'000);
  test::Random random(20260101);
  std::int32_t plainCounter = -1;
  // The process may have parsed before; both count on from where they stand.
  const auto shift = static_cast<std::uint32_t>(takeTrackNumbers(0));
  int chosen = 0, services = 0, failures = 0;
  for (int i = 0; i < texts && failures < 5; ++i) {
    const std::string text = test::randomDescription(random);
    const std::uint32_t total = random.oneOf(test::kDescribedTotals);
    const bool reportAll = random.oneIn(2);
    const auto expected = plain::parse(text, total, reportAll, plainCounter);
    const ExpectedServices read = readExpectedServices(findServiceList(text, total), reportAll,
                                                       std::pmr::get_default_resource());
    bool same = read.size() == expected.size();
    for (std::size_t s = 0; same && s < expected.size(); ++s)
      same = agree(read[s], expected[s], shift);
    if (!same) {
      ++failures;
      ADD_FAILURE() << "total " << total << ", description " << ::testing::PrintToString(text);
    }
    if (!expected.empty()) ++chosen;
    services += static_cast<int>(expected.size());
  }
  std::printf("%d texts, an entry chosen in %d, %d services\n", texts, chosen, services);
  EXPECT_GT(chosen, texts / 20);
}

}  // namespace
}  // namespace kestrel
