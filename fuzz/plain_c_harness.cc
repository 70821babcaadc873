// The plain C interface on a whole request (fuzz/plain_c_request.h): it is refused for what is
// wrong with it, and only then; else the verdict is the plain form's and the findings fit, records
// of any size and buffers of any capacity get what they can take and nothing is written beside
// them.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "api/catalogue.h"
#include "api/kestrel.h"
#include "api/service_map.h"
#include "fuzz/call_text.h"
#include "fuzz/disagreement.h"
#include "fuzz/harness.h"
#include "fuzz/plain_c_request.h"
#include "tests/c_api/c_answer.h"
#include "tests/c_api/c_answer_checks.h"
#include "tests/c_api/c_guarded_buffer.h"
#include "tests/plain/plain_layout_description.h"

namespace kestrel::fuzz {
namespace {

using plain::Outcome;
using plain::PlainResult;
using plain::ServiceMapInput;
using test::Answer;
using test::Guarded;

using Analysis = std::unique_ptr<KestrelAnalysis, decltype(&kestrelFreeAnalysis)>;

constexpr std::size_t kByteAsItWas = 77777;
constexpr std::int32_t kStreamAsItWas = -77777;

// --- The request

bool mayBeRefusedWith(const OddRequest& request, KestrelStatus status) {
  return (status == KESTREL_BAD_RECORD_SIZE && request.hasBadSize()) ||
         (status == KESTREL_NULL_ARGUMENT && request.hasNull()) ||
         (status == KESTREL_BAD_TEXT && request.hasBadText());
}

// Returns no analysis for a request that was refused as it should be.
Analysis analysed(const OddRequest& request) {
  KestrelAnalysis* made = nullptr;
  std::size_t badByte = kByteAsItWas;
  std::int32_t badStream = kStreamAsItWas;
  const KestrelStatus status = kestrelAnalyse(request.record(), &made, &badByte, &badStream);
  const bool isSound = !request.hasBadSize() && !request.hasNull() && !request.hasBadText();
  if (isSound ? status != KESTREL_OK : !mayBeRefusedWith(request, status)) {
    disagree("the status of a request", kestrelStatusText(status), "; bad size ",
             request.hasBadSize(), ", NULL ", request.hasNull(), ", bad text ",
             request.hasBadText());
  }
  requireEqual("an analysis is there", made != nullptr, isSound);
  const bool isBadText = status == KESTREL_BAD_TEXT;
  requireEqual("the bad byte", badByte, isBadText ? request.badByte() : kByteAsItWas);
  requireEqual("its stream", badStream, isBadText ? request.badStream() : kStreamAsItWas);
  return {made, &kestrelFreeAnalysis};
}

// --- The verdict

PlainResult resultOfExport(const ServiceMapInput& input) {
  std::vector<ServiceMapResult> results(1);
  results[0].trackCount = -77;
  const auto count = static_cast<std::int32_t>(input.streams.size());
  const std::int32_t returned =
      getServiceMap(input.description.c_str(), input.order.c_str(), 0, input.streams.data(), count,
                    &results, input.reportAll ? 1 : 0, input.surroundCheck ? 1 : 0);
  if (returned == 1) return {Outcome::kFilled, std::move(results)};
  return {results.empty() ? Outcome::kEmptied : Outcome::kUntouched, {}};
}

void checkVerdict(const Answer& answer, const ServiceMapInput& input) {
  if (!suitsPlainForm(input)) {
    const PlainResult expected = resultOfExport(input);
    if (answer.result.outcome != expected.outcome ||
        answer.services.size() != expected.results.size()) {
      disagree("both interfaces", input, "actual: ", answer.result.outcome,
               "\nexpected: ", expected);
    }
    return;
  }
  const PlainResult expected = plain::serviceMap(input);
  const std::string wrong = test::wrongIn(answer, input, expected);
  if (wrong.empty()) return;
  disagree(wrong.c_str(), input, "actual: ", answer.result.outcome, ", ", answer.services.size(),
           " services, ", answer.findings.size(), " findings\nexpected: ", expected);
}

// --- Records and buffers

// Has a record of odd size filled.
template <class Get>
void checkRecord(const KestrelAnalysis* analysis, std::int32_t index, std::size_t recordSize,
                 const OddSizes& odd, const Get& get) {
  const auto size =
      static_cast<std::uint32_t>(static_cast<std::int32_t>(recordSize) + odd.recordExtra);
  Guarded<std::uint64_t> buffer((size + 7) / 8);
  auto* structSize = reinterpret_cast<std::uint32_t*>(buffer.data());
  *structSize = size;
  const bool isTaken = size >= recordSize;
  requireEqual("the status of a record", get(analysis, index, buffer.data()),
               isTaken ? KESTREL_OK : KESTREL_BAD_RECORD_SIZE);
  requireEqual("the size of a record", *structSize, size);
  if (!buffer.holdsAtMost(isTaken ? recordSize / 8 : 1)) disagree("written behind a record", size);
}

// Fills a buffer of odd capacity, and returns what it then holds; nothing where it is too small.
template <class Element, class Fill>
std::vector<Element> filled(std::size_t capacity, std::size_t size, const Fill& fill) {
  Guarded<Element> buffer(capacity);
  std::size_t needed = kByteAsItWas;
  const KestrelStatus status = fill(capacity == 0 ? nullptr : buffer.data(), capacity, &needed);
  const bool fits = capacity >= size;
  requireEqual("the needed capacity", needed, size);
  requireEqual("the status of a buffer", status, fits ? KESTREL_OK : KESTREL_BUFFER_TOO_SMALL);
  if (!buffer.holdsAtMost(fits ? size : 0)) disagree("written beside a buffer of ", capacity);
  if (!fits) return {};
  return {buffer.data(), buffer.data() + size};
}

void checkSentence(const KestrelAnalysis* analysis, std::int32_t index, const std::string& sentence,
                   std::size_t capacity) {
  const auto text = filled<char>(capacity, sentence.size() + 1, [&](auto... buffer) {
    return kestrelFindingText(analysis, index, buffer...);
  });
  if (!text.empty()) requireEqual("a sentence", std::string(text.data()), sentence);
}

void checkTotals(const KestrelAnalysis* analysis, const CallText& call, std::size_t capacity) {
  std::size_t needed = 0;
  kestrelDescribedTotals(analysis, nullptr, 0, &needed);
  const auto totals = filled<std::int32_t>(capacity, needed, [&](auto... buffer) {
    return kestrelDescribedTotals(analysis, buffer...);
  });
  if (totals.size() != needed || call.description.size() > kLongestPlainDescription) return;
  for (const std::int32_t total : totals) {
    if (std::count(totals.begin(), totals.end(), total) != 1) disagree("doubled total ", total);
  }
  const auto asked = static_cast<std::int32_t>(capacity % 100);
  std::int32_t counter = -1;
  const bool isThere =
      !plain::parse(call.description, static_cast<std::uint32_t>(asked), false, counter).empty();
  requireEqual("a described total", std::count(totals.begin(), totals.end(), asked) == 1, isThere);
}

void checkReading(const KestrelAnalysis* analysis, const Answer& answer, const OddSizes& odd) {
  const auto services = static_cast<std::int32_t>(answer.services.size());
  const auto findings = static_cast<std::int32_t>(answer.findings.size());
  const auto getService = [](const auto* from, std::int32_t index, void* record) {
    return kestrelGetService(from, index, static_cast<KestrelService*>(record));
  };
  const auto getFinding = [](const auto* from, std::int32_t index, void* record) {
    return kestrelGetFinding(from, index, static_cast<KestrelFinding*>(record));
  };
  if (services > 0) checkRecord(analysis, services - 1, sizeof(KestrelService), odd, getService);
  if (findings > 0) checkRecord(analysis, findings - 1, sizeof(KestrelFinding), odd, getFinding);
  KestrelService service{};
  service.structSize = sizeof service;
  requireEqual("past the services", kestrelGetService(analysis, services, &service),
               KESTREL_BAD_INDEX);
  for (std::int32_t i = 0; i < findings; ++i) {
    checkSentence(analysis, i, answer.sentences[static_cast<std::size_t>(i)], odd.capacity);
  }
}

// --- The catalogue

void checkRow(std::int32_t row, std::size_t capacity) {
  std::size_t needed = kByteAsItWas;
  if (row < 0 || row >= getRowCount()) {
    requireEqual("an unknown row", kestrelRowItems(row, nullptr, 0, &needed), KESTREL_UNKNOWN_ID);
    return;
  }
  std::vector<std::int32_t> items(static_cast<std::size_t>(getServiceMapItemsCount(row)));
  getServiceMapItems(row, items.data());
  const auto read = filled<std::int32_t>(
      capacity, items.size(), [&](auto... buffer) { return kestrelRowItems(row, buffer...); });
  if (!read.empty() && read != items) disagree("the items of row ", row);
}

void checkItem(std::int32_t item, std::size_t capacity) {
  std::size_t needed = kByteAsItWas;
  if (item < 0 || item >= NO_SERVICE_MAP_ITEM) {
    requireEqual("an unknown item", kestrelItemStreamTypes(item, nullptr, 0, &needed),
                 KESTREL_UNKNOWN_ID);
    return;
  }
  std::vector<std::int32_t> types(static_cast<std::size_t>(getStreamTypesCount(item)));
  getStreamTypes(item, types.data());
  const auto read = filled<std::int32_t>(capacity, types.size(), [&](auto... buffer) {
    return kestrelItemStreamTypes(item, buffer...);
  });
  if (!read.empty() && read != types) disagree("the stream types of item ", item);
}

void check(const PlainCInput& input) {
  checkRow(input.odd.id, input.odd.capacity);
  checkItem(input.odd.id, input.odd.capacity);
  const OddRequest request(input);
  const Analysis analysis = analysed(request);
  if (!analysis) return;
  const Answer answer = test::answerOf(analysis.get());
  checkVerdict(answer, wideCall(input.call));
  checkReading(analysis.get(), answer, input.odd);
  checkTotals(analysis.get(), input.call, input.odd.capacity);
}

}  // namespace
}  // namespace kestrel::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  try {
    kestrel::fuzz::check(kestrel::fuzz::readPlainC(text));
  } catch (const std::runtime_error& error) {
    kestrel::fuzz::disagree("a call failed that must not", error.what());
  }
  return 0;
}
