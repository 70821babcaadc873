// An analysis is told by its outcome and the number of its services. All of it is read on the way,
// and a record or a sentence that cannot be had is told instead.
#include "tests/robustness/c_request_call.h"

#include "tests/c_api/c_request.h"
#include "tests/robustness/asking.h"

namespace kestrel::test {
namespace {

bool servicesCanBeRead(const KestrelAnalysis* analysis, std::int32_t count) {
  KestrelService service{};
  service.structSize = sizeof service;
  for (std::int32_t i = 0; i < count; ++i) {
    if (kestrelGetService(analysis, i, &service) != KESTREL_OK) return false;
    if (service.trackCount > KESTREL_SLOTS || service.label == nullptr) return false;
  }
  return true;
}

bool sentencesCanBeRead(const KestrelAnalysis* analysis, std::int32_t count) {
  std::vector<char> text(300);
  for (std::int32_t i = 0; i < count; ++i) {
    std::size_t needed = 0;
    KestrelStatus status = kestrelFindingText(analysis, i, text.data(), text.size(), &needed);
    if (status == KESTREL_BUFFER_TOO_SMALL) {
      text.resize(needed);
      status = kestrelFindingText(analysis, i, text.data(), text.size(), &needed);
    }
    if (status != KESTREL_OK || needed < 2 || text[needed - 2] != '.') return false;
  }
  return true;
}

std::string inWords(const KestrelAnalysis* analysis) {
  std::int32_t outcome = -1;
  std::int32_t services = -1;
  std::int32_t findings = -1;
  kestrelOutcome(analysis, &outcome, nullptr);
  kestrelServiceCount(analysis, &services);
  kestrelFindingCount(analysis, &findings);
  if (!servicesCanBeRead(analysis, services)) return "a service that cannot be read";
  if (!sentencesCanBeRead(analysis, findings)) return "a sentence that cannot be read";
  return "outcome " + std::to_string(outcome) + " with " + std::to_string(services);
}

std::vector<KestrelStream> streamsOf(const RequestParts& parts) {
  return std::vector<KestrelStream>(
      parts.streams, stream(parts.streamId.c_str(), parts.channelCount, parts.trackLabels.c_str()));
}

KestrelRequest requestOf(const RequestParts& parts, const std::vector<KestrelStream>& streams) {
  KestrelRequest made = request(parts.description.c_str(), streams);
  made.surroundChannelOrder = parts.order.c_str();
  made.reportAll = made.surroundCheck = parts.everything ? 1 : 0;
  return made;
}

}  // namespace

AnalyseOuts::AnalyseOuts()
    : analysis(reinterpret_cast<KestrelAnalysis*>(&elsewhere)),
      badByte(OutValues::kNeeded),
      badStream(OutValues::kNumber) {}

AnalyseOuts::~AnalyseOuts() {
  if (analysis != reinterpret_cast<KestrelAnalysis*>(&elsewhere)) kestrelFreeAnalysis(analysis);
}

std::string AnalyseOuts::inWords() const {
  std::string words;
  if (analysis == nullptr) {
    words = "no analysis";
  } else if (analysis != reinterpret_cast<const KestrelAnalysis*>(&elsewhere)) {
    words = test::inWords(analysis);
  }
  if (badByte != OutValues::kNeeded) words += ", byte " + std::to_string(badByte);
  if (badStream != OutValues::kNumber) words += " of " + std::to_string(badStream);
  return words;
}

Answer analysed(std::int32_t outcome, int services) {
  return {returned(KESTREL_OK),
          "outcome " + std::to_string(outcome) + " with " + std::to_string(services)};
}

Answer refused(KestrelStatus status) { return {returned(status), "no analysis"}; }

Answer badText(std::size_t byte, std::int32_t stream) {
  return {returned(KESTREL_BAD_TEXT),
          "no analysis, byte " + std::to_string(byte) + " of " + std::to_string(stream)};
}

CallRow requestRow(const std::string& value, const Answer& expected, const RequestParts& parts,
                   const Spoil& spoil) {
  const auto ask = [=](const Around& around) {
    std::vector<KestrelStream> streams = streamsOf(parts);
    KestrelRequest asked = requestOf(parts, streams);
    spoil(asked, streams);
    AnalyseOuts outs;
    std::string end = endOf(around, [&] {
      return kestrelAnalyse(&asked, &outs.analysis, &outs.badByte, &outs.badStream);
    });
    return Answer{std::move(end), outs.inWords()};
  };
  return {"kestrelAnalyse", "request", value, ask, expected};
}

}  // namespace kestrel::test
