// Rows for the functions of the plain C interface that read an analysis. The one at hand has
// one service, "Stereo", and one finding: a track that is left over.
#include <array>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "tests/c_api/c_request.h"
#include "tests/robustness/c_buffer_rows.h"
#include "tests/robustness/hostile_values.h"

namespace kestrel::test {
namespace {

const Answer kNullRefused{returned(KESTREL_NULL_ARGUMENT), ""};

constexpr std::size_t kRoom = 1024;

// An analysis, made before the call, beside the out-values. A record to be filled has bytes of one
// value and more room than it needs.
struct ReadingOuts : OutValues {
  ReadingOuts() {
    const std::vector<KestrelStream> streams = {stream("1", 3)};
    const KestrelRequest asked = request("T3=Stereo;T4=x", streams);
    kestrelAnalyse(&asked, &analysis, nullptr, nullptr);
    std::memset(record, kByte, kRoom);
  }
  ~ReadingOuts() { kestrelFreeAnalysis(analysis); }
  ReadingOuts(const ReadingOuts&) = delete;
  ReadingOuts& operator=(const ReadingOuts&) = delete;

  KestrelAnalysis* analysis = nullptr;
  alignas(8) unsigned char record[kRoom];

  template <class Record>
  Record* recordOf(std::uint32_t structSize) {
    std::memcpy(record, &structSize, sizeof structSize);
    return reinterpret_cast<Record*>(record);
  }

  // "record of 800 with 2" where the record was written: how far, and its second integer.
  std::string inWords() const {
    std::size_t written = kRoom;
    while (written > sizeof(std::uint32_t) && record[written - 1] == kByte) --written;
    std::string words = OutValues::inWords();
    if (written <= sizeof(std::uint32_t)) return words;
    std::int32_t second = 0;
    std::memcpy(&second, record + sizeof(std::uint32_t), sizeof second);
    return words + "record of " + std::to_string(written) + " with " + std::to_string(second);
  }
};

template <class Call>
void add(CallRows& rows, const char* function, const char* parameter, const std::string& value,
         const Answer& expected, const Call& call) {
  rows.push_back({function, parameter, value, asking<ReadingOuts>(call), expected});
}

void addOutcome(CallRows& rows) {
  const char* const function = "kestrelOutcome";
  add(rows, function, "analysis", "in order",
      {returned(KESTREL_OK), "total 3; numbers " + std::to_string(KESTREL_FILLED)},
      [](ReadingOuts& o) { return kestrelOutcome(o.analysis, o.numbers.data(), &o.total); });
  add(rows, function, "analysis", "NULL", kNullRefused,
      [](ReadingOuts& o) { return kestrelOutcome(nullptr, o.numbers.data(), &o.total); });
  add(rows, function, "outcome", "NULL", kNullRefused,
      [](ReadingOuts& o) { return kestrelOutcome(o.analysis, nullptr, &o.total); });
  add(rows, function, "trackTotal", "NULL",
      {returned(KESTREL_OK), "numbers " + std::to_string(KESTREL_FILLED)},
      [](ReadingOuts& o) { return kestrelOutcome(o.analysis, o.numbers.data(), nullptr); });
}

void addCount(CallRows& rows, const char* function,
              KestrelStatus (*count)(const KestrelAnalysis*, std::int32_t*),
              std::int32_t expected) {
  add(rows, function, "analysis", "in order",
      {returned(KESTREL_OK), "numbers " + std::to_string(expected)},
      [=](ReadingOuts& outs) { return count(outs.analysis, outs.numbers.data()); });
  add(rows, function, "analysis", "NULL", kNullRefused,
      [=](ReadingOuts& outs) { return count(nullptr, outs.numbers.data()); });
  add(rows, function, "count", "NULL", kNullRefused,
      [=](ReadingOuts& outs) { return count(outs.analysis, nullptr); });
}

// A function that fills a record; `size` is that of its first release.
template <class Record>
void addRecord(CallRows& rows, const char* function, const char* record, std::int32_t count,
               std::int32_t second,
               KestrelStatus (*get)(const KestrelAnalysis*, std::int32_t, Record*)) {
  constexpr std::uint32_t kSize = sizeof(Record);
  const Answer filled{returned(KESTREL_OK),
                      "record of " + std::to_string(kSize) + " with " + std::to_string(second)};
  for (const std::uint32_t size : {0U, 1U, 4U, kSize - 1, kSize, kSize + 1, kSize + 8, UINT_MAX})
    add(rows, function, record, "structSize = " + std::to_string(size),
        size < kSize ? Answer{returned(KESTREL_BAD_RECORD_SIZE), ""} : filled,
        [=](ReadingOuts& o) { return get(o.analysis, 0, o.recordOf<Record>(size)); });
  add(rows, function, record, "NULL", kNullRefused,
      [=](ReadingOuts& o) { return get(o.analysis, 0, nullptr); });
  add(rows, function, "analysis", "NULL", kNullRefused,
      [=](ReadingOuts& o) { return get(nullptr, 0, o.recordOf<Record>(kSize)); });
  for (const std::int32_t index : unknownIds(count))
    add(rows, function, "index", std::to_string(index), {returned(KESTREL_BAD_INDEX), ""},
        [=](ReadingOuts& o) { return get(o.analysis, index, o.recordOf<Record>(kSize)); });
}

void addSentences(CallRows& rows) {
  const char* const function = "kestrelFindingText";
  const std::string sentence =
      "The services take 2 of the file's 3 tracks; track 1 (stream 1) is the first that is left "
      "over.";
  addCapacities<char, ReadingOuts>(
      rows, function, "text", sentence.size() + 1, "text " + sentence + "|",
      [](ReadingOuts& outs, char* text, std::size_t capacity, std::size_t* needed) {
        return kestrelFindingText(outs.analysis, 0, text, capacity, needed);
      });
  for (const std::int32_t index : unknownIds(1))
    add(rows, function, "index", std::to_string(index), {returned(KESTREL_BAD_INDEX), ""},
        [=](ReadingOuts& o) {
          return kestrelFindingText(o.analysis, index, o.text.data(), 200, &o.needed);
        });
  add(rows, function, "analysis", "NULL", kNullRefused,
      [](ReadingOuts& o) { return kestrelFindingText(nullptr, 0, o.text.data(), 200, &o.needed); });
}

void addTotals(CallRows& rows) {
  addCapacities<std::int32_t, ReadingOuts>(
      rows, "kestrelDescribedTotals", "totals", 2, "list 3 4",
      [](ReadingOuts& outs, std::int32_t* totals, std::size_t capacity, std::size_t* needed) {
        return kestrelDescribedTotals(outs.analysis, totals, capacity, needed);
      });
  add(rows, "kestrelDescribedTotals", "analysis", "NULL", kNullRefused,
      [](ReadingOuts& o) { return kestrelDescribedTotals(nullptr, o.list.data(), 20, &o.needed); });
}

void addFreeing(CallRows& rows) {
  add(rows, "kestrelFreeAnalysis", "analysis", "NULL", {kReturned, ""},
      [](ReadingOuts&) { kestrelFreeAnalysis(nullptr); });
  add(rows, "kestrelFreeAnalysis", "analysis", "in order", {kReturned, ""},
      [](ReadingOuts& outs) { kestrelFreeAnalysis(std::exchange(outs.analysis, nullptr)); });
}

}  // namespace

void addCAnalysisRows(CallRows& rows) {
  addOutcome(rows);
  addCount(rows, "kestrelServiceCount", kestrelServiceCount, 1);
  addCount(rows, "kestrelFindingCount", kestrelFindingCount, 1);
  addRecord(rows, "kestrelGetService", "service", 1, 2, kestrelGetService);
  addRecord(rows, "kestrelGetFinding", "finding", 1, KESTREL_TRACKS_LEFT_OVER, kestrelGetFinding);
  addSentences(rows);
  addTotals(rows);
  addFreeing(rows);
}

}  // namespace kestrel::test
