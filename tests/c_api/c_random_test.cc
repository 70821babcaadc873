// Compares the plain C interface with the plain form on random inputs, and checks that its findings
// fit the input and the outcome, whatever they are. The inputs of a seed are always the same, so a
// failure comes back on every run; it prints the whole input.
#include <gtest/gtest.h>

#include <cstdint>
#include <iostream>
#include <map>
#include <string>

#include "api/kestrel.h"
#include "tests/c_api/c_answer.h"
#include "tests/c_api/c_answer_checks.h"
#include "tests/plain/plain_service_map.h"
#include "tests/plain/plain_utf8.h"
#include "tests/random_inputs.h"
#include "tests/test_rounds.h"

namespace kestrel::test {
namespace {

constexpr int kInputs = 120'000;
constexpr int kMismatchesShown = 3;

// Random descriptions hold any bytes; here each becomes the character of its number.
std::string bytesToUtf8(const std::string& bytes) {
  std::string text;
  for (const char byte : bytes) plain::appendUtf8(text, static_cast<unsigned char>(byte));
  return text;
}

TEST(CRandom, EveryAnalysisEndsAsThePlainFormSaysAndItsFindingsFit) {
  Random random(20'260'504);
  std::map<std::int32_t, int> spread;
  int filled = 0;
  int mismatches = 0;
  const int inputs = rounds(kInputs);
  for (int i = 0; i < inputs && mismatches < kMismatchesShown; ++i) {
    plain::ServiceMapInput input = randomServiceMapInput(random);
    input.description = bytesToUtf8(input.description);
    const Answer answer = answerTo(input);
    for (const KestrelFinding& finding : answer.findings) ++spread[finding.code];
    if (answer.result.outcome == plain::Outcome::kFilled) ++filled;
    const plain::PlainResult expected = plain::serviceMap(input);
    const std::string wrong = wrongIn(answer, input, expected);
    EXPECT_EQ(wrong, "") << input << "expected: " << expected;
    if (!wrong.empty()) ++mismatches;
  }
  ASSERT_EQ(mismatches, 0);
  for (const auto& [code, number] : spread) std::cout << "code " << code << ": " << number << "\n";
  EXPECT_GE(filled * 3, inputs);
  if (!allRounds()) return;
  for (const auto& [code, fields] : usedFields()) EXPECT_GT(spread[code], 0) << "code " << code;
}

}  // namespace
}  // namespace kestrel::test
