// Compares results of the plain service map, and prints them and the input that led to them.
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>

#include "tests/plain/plain_service_map.h"

namespace kestrel::plain {
namespace {

bool sameSlot(const TrackSlot& left, const TrackSlot& right) {
  return left.trackNumber == right.trackNumber && left.group == right.group &&
         left.sourceGroup == right.sourceGroup && left.indexInGroup == right.indexInGroup;
}

bool sameRecord(const ServiceMapResult& left, const ServiceMapResult& right) {
  for (std::size_t j = 0; j < left.slots.size(); ++j) {
    if (!sameSlot(left.slots[j], right.slots[j])) return false;
  }
  return left.trackCount == right.trackCount && left.reported == right.reported &&
         left.isEmca == right.isEmca && left.requested == right.requested &&
         left.label == right.label;
}

// Shows every character that is not printable ASCII by its number, so that a failure can be typed
// in again.
template <class Text>
std::string quoted(const Text& text) {
  std::string out = "\"";
  for (const auto c : text) {
    const auto code = static_cast<std::make_unsigned_t<std::remove_const_t<decltype(c)>>>(c);
    const bool printable = code >= 0x20 && code < 0x7F;
    out += printable ? std::string(1, static_cast<char>(code)) : "<" + std::to_string(code) + ">";
  }
  return out + "\"";
}

void printRecord(std::ostream& out, const ServiceMapResult& record) {
  out << "  trackCount " << record.trackCount << " reported " << int{record.reported} << " isEmca "
      << int{record.isEmca} << " requested " << int{record.requested} << " label "
      << quoted(record.label) << "\n   ";
  for (const TrackSlot& slot : record.slots) {
    if (sameSlot(slot, TrackSlot{})) continue;
    out << " [" << &slot - record.slots.data() << "] " << slot.trackNumber << "/" << slot.group
        << "/" << slot.sourceGroup << "/" << slot.indexInGroup;
  }
  out << "\n";
}

void printStream(std::ostream& out, const AudioStreamInfo& stream) {
  out << "  id " << quoted(stream.streamId) << " labels " << quoted(stream.trackLabels) << " group "
      << stream.group << " channels " << stream.channelCount << " format " << stream.formatKey1
      << "," << stream.formatKey2 << "," << stream.formatKey3 << " pairCoded "
      << int{stream.isPairCoded} << " pairShared " << int{stream.isPairShared} << "\n";
}

}  // namespace

bool sameResults(const std::vector<ServiceMapResult>& left,
                 const std::vector<ServiceMapResult>& right) {
  if (left.size() != right.size()) return false;
  for (std::size_t i = 0; i < left.size(); ++i) {
    if (!sameRecord(left[i], right[i])) return false;
  }
  return true;
}

bool sameResults(const PlainResult& left, const PlainResult& right) {
  return left.outcome == right.outcome && sameResults(left.results, right.results);
}

std::ostream& operator<<(std::ostream& out, Outcome outcome) {
  constexpr std::string_view kNames[] = {"untouched", "emptied", "filled"};
  return out << kNames[static_cast<std::size_t>(outcome)];
}

std::ostream& operator<<(std::ostream& out, const PlainResult& result) {
  out << result.outcome << ", " << result.results.size() << " records\n";
  for (const ServiceMapResult& record : result.results) printRecord(out, record);
  return out;
}

std::ostream& operator<<(std::ostream& out, const ServiceMapInput& input) {
  out << "description " << quoted(input.description) << "\norder " << quoted(input.order)
      << " reportAll " << input.reportAll << " surroundCheck " << input.surroundCheck << "\n";
  for (const AudioStreamInfo& stream : input.streams) printStream(out, stream);
  return out;
}

}  // namespace kestrel::plain
