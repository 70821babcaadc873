// Makes the single changes of carriers and compares each outcome with the rule of one line and, in
// every field, with the words of file and item.
#pragma once

#include <gtest/gtest.h>

#include "tests/exhaustive/carrier.h"
#include "tests/exhaustive/catalogue_items.h"
#include "tests/exhaustive/single_change.h"
#include "tests/exhaustive/tally.h"
#include "tests/plain/plain_service_map.h"

namespace kestrel::test {

class SingleChanges : public testing::Test {
 protected:
  /// Makes every change, and compares with the plain form too when told so. Does nothing more once
  /// one comparison failed.
  void changeEveryTrack(const Item& item, const Carrier& carrier, bool comparePlainForm);

  const Tally& effects() const { return effects_; }

 private:
  void expectEffect(const Item& item, const Carrier& carrier, const plain::PlainResult& before,
                    const Change& change);

  Tally effects_;
};

}  // namespace kestrel::test
