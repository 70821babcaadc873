#include "tests/c_api/c_answer.h"

#include <cstddef>
#include <memory>
#include <stdexcept>

#include "tests/plain/plain_utf8.h"

namespace kestrel::test {
namespace {

using plain::ServiceMapInput;
using plain::toUtf8;

void require(KestrelStatus status) {
  if (status != KESTREL_OK) throw std::runtime_error(kestrelStatusText(status));
}

// The same input as a request, with its texts.
class Request {
 public:
  explicit Request(const ServiceMapInput& input) : order_(toUtf8(input.order)) {
    texts_.reserve(2 * input.streams.size());
    for (const AudioStreamInfo& info : input.streams) addStream(info);
    record_.structSize = sizeof record_;
    record_.streamCount = static_cast<std::int32_t>(streams_.size());
    record_.layoutDescription = input.description.c_str();
    record_.surroundChannelOrder = order_.c_str();
    record_.streams = streams_.data();
    record_.streamStride = sizeof(KestrelStream);
    record_.reportAll = input.reportAll ? 1 : 0;
    record_.surroundCheck = input.surroundCheck ? 1 : 0;
  }

  const KestrelRequest* record() const { return &record_; }

 private:
  void addStream(const AudioStreamInfo& info) {
    KestrelStream stream{};
    stream.structSize = sizeof stream;
    stream.group = info.group;
    stream.streamId = texts_.emplace_back(toUtf8(info.streamId)).c_str();
    stream.trackLabels = texts_.emplace_back(toUtf8(info.trackLabels)).c_str();
    stream.channelCount = info.channelCount;
    stream.formatKey1 = info.formatKey1;
    stream.formatKey2 = info.formatKey2;
    stream.formatKey3 = info.formatKey3;
    stream.isPairCoded = info.isPairCoded;
    stream.isPairShared = info.isPairShared;
    streams_.push_back(stream);
  }

  std::string order_;
  std::vector<std::string> texts_;
  std::vector<KestrelStream> streams_;
  KestrelRequest record_{};
};
template <class Record>
std::vector<Record> readAll(const KestrelAnalysis* analysis,
                            KestrelStatus (*count)(const KestrelAnalysis*, std::int32_t*),
                            KestrelStatus (*get)(const KestrelAnalysis*, std::int32_t, Record*)) {
  std::int32_t number = 0;
  require(count(analysis, &number));
  std::vector<Record> records(static_cast<std::size_t>(number));
  for (std::int32_t i = 0; i < number; ++i) {
    Record& record = records[static_cast<std::size_t>(i)];
    record.structSize = sizeof record;
    require(get(analysis, i, &record));
  }
  return records;
}

std::string sentenceOf(const KestrelAnalysis* analysis, std::int32_t index) {
  std::size_t needed = 0;
  std::vector<char> text(16);
  if (kestrelFindingText(analysis, index, text.data(), 16, &needed) != KESTREL_OK) {
    text.resize(needed);
    require(kestrelFindingText(analysis, index, text.data(), needed, &needed));
  }
  return text.data();
}

}  // namespace

Answer answerOf(const KestrelAnalysis* analysis) {
  Answer answer;
  std::int32_t outcome = -1;
  require(kestrelOutcome(analysis, &outcome, &answer.trackTotal));
  answer.result.outcome = static_cast<plain::Outcome>(outcome);
  answer.services = readAll<KestrelService>(analysis, kestrelServiceCount, kestrelGetService);
  answer.findings = readAll<KestrelFinding>(analysis, kestrelFindingCount, kestrelGetFinding);
  for (const KestrelService& service : answer.services) answer.labels.push_back(service.label);
  for (std::size_t i = 0; i < answer.findings.size(); ++i) {
    answer.sentences.push_back(sentenceOf(analysis, static_cast<std::int32_t>(i)));
  }
  return answer;
}

Answer answerTo(const ServiceMapInput& input) {
  const Request request(input);
  KestrelAnalysis* made = nullptr;
  require(kestrelAnalyse(request.record(), &made, nullptr, nullptr));
  const std::unique_ptr<KestrelAnalysis, decltype(&kestrelFreeAnalysis)> analysis(
      made, &kestrelFreeAnalysis);
  return answerOf(made);
}

}  // namespace kestrel::test
