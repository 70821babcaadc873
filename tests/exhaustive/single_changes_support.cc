#include "tests/exhaustive/single_changes_support.h"

#include <string>

#include "tests/exhaustive/word_rule.h"
#include "tests/library_under_test.h"

namespace kestrel::test {

using plain::Outcome;
using plain::PlainResult;

void SingleChanges::changeEveryTrack(const Item& item, const Carrier& carrier,
                                     bool comparePlainForm) {
  const PlainResult before = predict(item, carrier);
  for (const Change& change : changesOf(item, carrier)) {
    if (HasFailure()) return;
    expectEffect(item, carrier, before, change);
    if (!comparePlainForm) continue;
    const Carrier file = changed(item, carrier, change);
    EXPECT_TRUE(plain::sameResults(plain::serviceMap(file), predict(item, file))) << file;
  }
}

void SingleChanges::expectEffect(const Item& item, const Carrier& carrier,
                                 const PlainResult& before, const Change& change) {
  const Carrier file = changed(item, carrier, change);
  const PlainResult expected = predict(item, file);
  const PlainResult actual = callServiceMap(file);
  const std::string name = nameOf(change.kind);
  ASSERT_TRUE(plain::sameResults(expected, actual))
      << name << " at " << change.at << "\n"
      << file << "expected: " << expected << "actual: " << actual;
  const Effect effect = effectOf(before, actual);
  const bool carries = before.outcome == Outcome::kFilled;
  ASSERT_EQ(ruleFor(item, carrier, carries, change).value_or(effect), effect)
      << name << " at " << change.at << "\n"
      << file;
  effects_.count(name + ": " + nameOf(effect));
}

}  // namespace kestrel::test
