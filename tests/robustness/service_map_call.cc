// The host's vector holds two records before each call, one with a label that takes storage. It is
// as it was when it has the same elements, in every field, at the same address.
#include "tests/robustness/service_map_call.h"

#include <cstddef>
#include <sstream>

#include "api/service_map.h"
#include "tests/plain/plain_service_map.h"
#include "tests/robustness/asking.h"

namespace kestrel::test {
namespace {

std::vector<ServiceMapResult> hostRecords() {
  std::vector<ServiceMapResult> records(2);
  records[1].trackCount = -77;
  records[1].slots[31].trackNumber = 77;
  records[1].label = L"a label of the host that takes storage of its own";
  return records;
}

struct HostVector {
  std::vector<ServiceMapResult> records = hostRecords();
  const ServiceMapResult* storage = records.data();

  std::string inWords() const {
    const bool same = records.data() == storage && plain::sameResults(records, hostRecords());
    return same ? "" : test::inWords(records);
  }
};

bool isUsed(const TrackSlot& slot) {
  return slot.trackNumber != -1 || slot.group != -1 || slot.sourceGroup != -1 ||
         slot.indexInGroup != -1;
}

void tellSlots(std::ostream& out, const ServiceMapResult& record) {
  std::size_t used = record.slots.size();
  while (used > 0 && !isUsed(record.slots[used - 1])) --used;
  for (std::size_t i = 0; i < used; ++i) {
    const TrackSlot& slot = record.slots[i];
    out << ' ' << slot.trackNumber << '/' << slot.group << '/' << slot.sourceGroup << '/'
        << slot.indexInGroup;
  }
}

}  // namespace

AudioStreamInfo streamOf(const std::wstring& id, std::int32_t channelCount,
                         const std::wstring& labels) {
  AudioStreamInfo info;
  info.streamId = id;
  info.trackLabels = labels;
  info.channelCount = channelCount;
  return info;
}

std::int32_t ServiceMapArguments::count() const {
  return streamCount.value_or(static_cast<std::int32_t>(streams.size()));
}

std::string labelInWords(const std::wstring& label) {
  if (label.size() > 1000) {
    const bool same = label.find_first_not_of(label[0]) == std::wstring::npos;
    return "'" + std::to_string(label.size()) + (same ? " times " : " from ") +
           std::to_string(static_cast<std::uint32_t>(label[0])) + "'";
  }
  std::ostringstream out;
  for (const wchar_t c : label) {
    if (c >= L' ' && c <= L'~') {
      out << static_cast<char>(c);
    } else {
      out << '<' << static_cast<std::uint32_t>(c) << '>';
    }
  }
  return "'" + out.str() + "'";
}

std::string inWords(const ServiceMapResult& record) {
  std::ostringstream out;
  const auto flag = [](std::uint8_t value, char letter) {
    return value == 1 ? letter : value == 0 ? '-' : '?';
  };
  out << '[' << record.trackCount << ' ' << flag(record.reported, 'r') << flag(record.isEmca, 'e')
      << flag(record.requested, 'q') << ' ' << labelInWords(record.label);
  tellSlots(out, record);
  out << ']';
  return out.str();
}

std::string inWords(const std::vector<ServiceMapResult>& records) {
  if (records.empty()) return "no records";
  std::string words;
  for (const ServiceMapResult& record : records) words += inWords(record);
  return words;
}

Answer plainAnswer(const ServiceMapArguments& arguments) {
  const plain::PlainResult result = plain::serviceMap(
      arguments.description.value_or(""), arguments.order.value_or(L""), arguments.streams.data(),
      arguments.count(), arguments.reportAll != 0, arguments.surroundCheck != 0);
  if (result.outcome == plain::Outcome::kUntouched) return kUntouched;
  if (result.outcome == plain::Outcome::kEmptied) return kEmptied;
  return {"returned 1", inWords(result.results)};
}

CallRow serviceMapRow(const std::string& parameter, const std::string& value,
                      const Answer& expected, const ServiceMapArguments& arguments) {
  const auto call = [arguments](HostVector& host) {
    return getServiceMap(
        arguments.description ? arguments.description->c_str() : nullptr,
        arguments.order ? arguments.order->c_str() : nullptr, arguments.allowTwoTrackStreams,
        arguments.withStreams ? arguments.streams.data() : nullptr, arguments.count(),
        &host.records, arguments.reportAll, arguments.surroundCheck);
  };
  return {"getServiceMap", parameter, value, asking<HostVector>(call), expected};
}

}  // namespace kestrel::test
