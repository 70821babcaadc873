// The scanner of layout descriptions on any text: entries and elements are stretches of it, and the
// services of every total are those of the plain form, which uses regular expressions.
//
//   input = "r" for reportAll or any other byte, then the description
#include <algorithm>
#include <cstdint>
#include <memory_resource>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "analyser/expected_services.h"
#include "analyser/layout_description.h"
#include "analyser/track_number_counter.h"
#include "fuzz/call_text.h"
#include "fuzz/disagreement.h"
#include "fuzz/harness.h"
#include "tests/plain/plain_layout_description.h"

namespace kestrel::fuzz {
namespace {

using plain::PlainExpectedService;

// True when the part lies in the text at or behind `from`, which is moved behind the part.
bool liesIn(std::string_view text, std::string_view part, std::size_t& from) {
  const auto offset = static_cast<std::size_t>(part.data() - text.data());
  const bool lies = offset >= from && offset + part.size() <= text.size();
  from = offset + part.size();
  return lies;
}

// The elements, joined again, are the list but for a comma at its end.
void checkElements(std::string_view list) {
  std::string joined;
  for (std::string_view rest = list; !rest.empty();) {
    joined += takeElement(rest);
    if (joined.size() < list.size()) joined += ",";
  }
  requireEqual("a list and its elements", joined, list);
}

// Returns the totals that have entries.
std::set<std::uint32_t> checkEntries(std::string_view text) {
  std::set<std::uint32_t> totals;
  std::size_t from = 0;
  std::string_view rest = text;
  while (const auto entry = takeEntry(rest)) {
    if (entry->trackTotal > 99 || entry->serviceList.empty()) disagree("an entry", text);
    if (!liesIn(text, entry->serviceList, from)) disagree("the place of an entry", text);
    checkElements(entry->serviceList);
    if (!totals.insert(entry->trackTotal).second) continue;
    if (findServiceList(text, entry->trackTotal).data() != entry->serviceList.data()) {
      disagree("the first entry of a total", text);
    }
  }
  return totals;
}

bool agree(const ExpectedService& service, const PlainExpectedService& plain,
           std::uint32_t counterShift) {
  if (plain.trackCount > 0 && service.firstTrack != trackNumberAfter(plain.tracks[0], counterShift))
    return false;
  return service.trackCount == plain.trackCount && service.streamType == plain.streamType &&
         service.isEmca == plain.isEmca && service.reported == plain.reported &&
         service.requested == plain.requested;
}

void checkTotal(const std::string& text, std::uint32_t total, bool reportAll) {
  // The process has parsed before; the plain form counts from its own beginning.
  const auto counterShift = static_cast<std::uint32_t>(takeTrackNumbers(0));
  std::int32_t counter = -1;
  const auto expected = plain::parse(text, total, reportAll, counter);
  const ExpectedServices services = readExpectedServices(findServiceList(text, total), reportAll,
                                                         std::pmr::get_default_resource());
  if (!std::equal(services.begin(), services.end(), expected.begin(), expected.end(),
                  [&](const auto& a, const auto& b) { return agree(a, b, counterShift); })) {
    disagree("the services of an entry", "total ", total, " reportAll ", reportAll, " of ", text,
             "\nactual: ", services.size(), " services, expected: ", expected.size());
  }
  const auto taken = static_cast<std::uint32_t>(takeTrackNumbers(0)) - counterShift;
  requireEqual("the track numbers taken", taken, static_cast<std::uint32_t>(counter) + 1);
}

void check(bool reportAll, const std::string& text) {
  const std::set<std::uint32_t> totals = checkEntries(text);
  if (text.size() > kLongestPlainDescription) return;
  for (const std::uint32_t total : totals) checkTotal(text, total, reportAll);
  std::uint32_t absent = 0;
  while (totals.contains(absent)) ++absent;
  checkTotal(text, absent, reportAll);
}

}  // namespace
}  // namespace kestrel::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  if (text.empty()) return -1;
  kestrel::fuzz::check(text[0] == 'r', text.substr(1));
  return 0;
}
