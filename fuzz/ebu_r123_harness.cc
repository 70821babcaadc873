// The EBU R 123 analysis (fuzz/r123_text.h): the evaluation with configurations of the input ends
// as the plain form says, and the exported function, which knows none, leaves the item alone.
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "api/ebu_r123.h"
#include "fuzz/disagreement.h"
#include "fuzz/harness.h"
#include "fuzz/r123_text.h"
#include "standards/ebu_r123_evaluation.h"
#include "tests/plain/plain_ebu_r123.h"

namespace kestrel::fuzz {
namespace {

using plain::R123Input;
using plain::R123Result;

// What holds without asking the plain form.
void checkRecords(const R123Input& input, const R123Result& actual) {
  if (actual.item == NO_SERVICE_MAP_ITEM && !actual.records.empty() &&
      input.item == NO_SERVICE_MAP_ITEM) {
    // A configuration may itself stand for no item.
    const auto found =
        input.configurations.find(countR123Channels(input.streams, input.allowTwoTrackStreams));
    if (found->second.item != NO_SERVICE_MAP_ITEM) disagree("records of a failure", input, actual);
  }
  for (const ServiceMapResult& record : actual.records) {
    if (!record.label.empty() || record.requested != 0) disagree("a record", input, actual);
  }
}

void checkEvaluation(const R123Input& input) {
  R123Result actual{input.item, {}};
  actual.records =
      evaluateEbuR123(input.streams, input.allowTwoTrackStreams, input.configurations, actual.item);
  checkRecords(input, actual);
  requireEqual("the number of channels",
               countR123Channels(input.streams, input.allowTwoTrackStreams),
               plain::countR123Channels(input.streams, input.allowTwoTrackStreams));
  if (!suitsPlainForm(input)) return;
  const R123Result expected = plain::evaluateEbuR123(input);
  if (plain::sameResults(actual, expected)) return;
  disagree("the evaluation and the plain form", input, "actual: ", actual,
           "expected: ", expected.end, ", ", expected);
}

void checkExport(const R123Text& evaluation) {
  constexpr std::int32_t kAsItWas = -7;
  const R123Input& input = evaluation.input;
  ServiceMapResult* block = nullptr;
  std::int32_t count = kAsItWas;
  std::int32_t item = input.item;
  getServiceMapEbuR123(evaluation.description.c_str(), input.allowTwoTrackStreams ? 1 : 0,
                       input.streams.data(), static_cast<std::int32_t>(input.streams.size()),
                       &block, &count, &item);
  const std::unique_ptr<ServiceMapResult, decltype(&std::free)> freed(block, &std::free);
  requireEqual("the item without configurations", item, input.item);
  const bool isWritten = input.item != NO_SERVICE_MAP_ITEM;
  requireEqual("the count without configurations", count, isWritten ? 0 : kAsItWas);
  requireEqual("a block without configurations", block != nullptr, isWritten);
}

}  // namespace
}  // namespace kestrel::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  using namespace kestrel::fuzz;
  const R123Text evaluation = readR123(text);
  const std::string written = writeR123(evaluation);
  requireEqual("an evaluation, written and read again", writeR123(readR123(written)), written);
  checkEvaluation(evaluation.input);
  checkExport(evaluation);
  return 0;
}
