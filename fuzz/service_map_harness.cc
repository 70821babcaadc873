// getServiceMap() on a whole call (fuzz/call_text.h): it ends as the plain form says, whatever
// stands in the arguments that do not matter, and again in the same way.
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "api/service_map.h"
#include "fuzz/call_text.h"
#include "fuzz/disagreement.h"
#include "fuzz/harness.h"
#include "tests/plain/plain_service_map.h"

namespace kestrel::fuzz {
namespace {

using plain::Outcome;
using plain::PlainResult;
using plain::ServiceMapInput;

// No call makes a record with this track count.
constexpr std::int32_t kSentinel = -77;

// The arguments that do not matter, and how true is written.
struct Manner {
  std::int32_t allowTwoTrackStreams;
  std::uint8_t isTrue;
};

PlainResult outcomeOf(std::int32_t returned, std::vector<ServiceMapResult> results) {
  const bool isUntouched = results.size() == 1 && results[0].trackCount == kSentinel;
  if (returned == 1 && !isUntouched) return {Outcome::kFilled, std::move(results)};
  if (returned == 0 && isUntouched) return {Outcome::kUntouched, {}};
  if (returned == 0 && results.empty()) return {Outcome::kEmptied, {}};
  disagree("return value and vector", returned, " with ", results.size(), " records\n");
}

PlainResult called(const ServiceMapInput& input, const Manner& manner) {
  std::vector<ServiceMapResult> results(1);
  results[0].trackCount = kSentinel;
  const auto flag = [&](bool isSet) { return isSet ? manner.isTrue : std::uint8_t{0}; };
  const auto count = static_cast<std::int32_t>(input.streams.size());
  const std::int32_t returned =
      getServiceMap(input.description.c_str(), input.order.c_str(), manner.allowTwoTrackStreams,
                    count == 0 ? nullptr : input.streams.data(), count, &results,
                    flag(input.reportAll), flag(input.surroundCheck));
  return outcomeOf(returned, std::move(results));
}

void requireSame(const char* what, const ServiceMapInput& input, const PlainResult& actual,
                 const PlainResult& expected) {
  if (plain::sameResults(actual, expected)) return;
  disagree(what, input, "actual: ", actual, "expected: ", expected);
}

void check(const ServiceMapInput& input) {
  const PlainResult result = called(input, {0, 1});
  requireSame("a call and the same again", input, called(input, {-1, 255}), result);
  if (suitsPlainForm(input)) {
    requireSame("getServiceMap and the plain form", input, result, plain::serviceMap(input));
  }
}

}  // namespace
}  // namespace kestrel::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kestrel::fuzz;
  const CallText call = readCall({reinterpret_cast<const char*>(data), size});
  const std::string written = writeCall(call);
  requireEqual("a call, written and read again", writeCall(readCall(written)), written);
  check(wideCall(call));
  return 0;
}
