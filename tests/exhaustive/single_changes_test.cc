// Every change of one track in every carrier of the items of 2 to 10 tracks, with the label check
// on and off.
#include <gtest/gtest.h>

#include <cstddef>
#include <iostream>
#include <string>

#include "tests/exhaustive/single_changes_support.h"

namespace kestrel::test {
namespace {

// The plain form is slow, so it is asked for the smaller items alone.
constexpr std::size_t kMostForThePlainForm = 8;

constexpr char kEffectsUpTo10Tracks[] = R"(
format key 1: emptied: 7300
format key 1: same records: 4706
format key 2: emptied: 7300
format key 2: same records: 4706
format key 3: emptied: 7300
format key 3: same records: 4706
label missing: other labels: 2751
label missing: same records: 15369
label repeated: other labels: 2616
label repeated: same records: 15504
label unknown: other labels: 2616
label unknown: same records: 15504
labels swapped: other labels: 2716
labels swapped: same records: 13444
pair coding: untouched: 12006
streams swapped: other tracks: 10046
)";

TEST_F(SingleChanges, HaveTheirStatedEffectInItemsOfUpTo10Tracks) {
  for (const Item& item : catalogueItems(2, 10)) {
    for (const Way& way : waysToCarry(item)) {
      Carrier carrier = carrierOf(item, way);
      changeEveryTrack(item, carrier, item.trackCount <= kMostForThePlainForm);
      carrier.surroundCheck = true;
      changeEveryTrack(item, carrier, item.trackCount <= kMostForThePlainForm);
    }
  }
  std::cout << effects().text();
  EXPECT_EQ("\n" + effects().text(), kEffectsUpTo10Tracks);
}

}  // namespace
}  // namespace kestrel::test
