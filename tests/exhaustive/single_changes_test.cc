// Every change of one track in every carrier of the items of 2 to 12 tracks, with the label check
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

constexpr char kEffectsOf12Tracks[] = R"(
format key 1: emptied: 51442
format key 1: same records: 30486
format key 1: untouched: 131672
format key 2: emptied: 51442
format key 2: same records: 30486
format key 2: untouched: 131672
format key 3: emptied: 51442
format key 3: same records: 30486
format key 3: untouched: 131672
label missing: other labels: 22162
label missing: same records: 98126
label missing: untouched: 216168
label repeated: other labels: 20994
label repeated: same records: 99294
label repeated: untouched: 216168
label unknown: other labels: 20994
label unknown: same records: 99294
label unknown: untouched: 216168
labels swapped: other labels: 22808
labels swapped: same records: 87456
labels swapped: untouched: 198154
pair coding: other tracks: 300
pair coding: untouched: 213300
streams swapped: other tracks: 58396
streams swapped: same records: 1580
streams swapped: untouched: 125586
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

TEST_F(SingleChanges, HaveTheirStatedEffectInItemsOf12Tracks) {
  for (const Item& item : catalogueItems(12, 12)) {
    for (const Way& way : waysToCarry(item)) {
      Carrier carrier = carrierOf(item, way);
      changeEveryTrack(item, carrier, false);
      carrier.surroundCheck = true;
      changeEveryTrack(item, carrier, false);
    }
  }
  std::cout << effects().text();
  EXPECT_EQ("\n" + effects().text(), kEffectsOf12Tracks);
}

}  // namespace
}  // namespace kestrel::test
