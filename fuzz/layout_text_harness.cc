// What a user may type: any text as a layout (--layout, explain), an item (--item), a layout code
// (--code) and a file's declaration. Layouts are read as the plain form reads them; each answer is
// an expectation that fits or a usage error, and readable.
#include <algorithm>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "api/kestrel.h"
#include "fuzz/call_text.h"
#include "fuzz/disagreement.h"
#include "fuzz/harness.h"
#include "fuzz/host_text.h"
#include "host/basics/text_columns.h"
#include "host/basics/usage_error.h"
#include "host/basics/utf8.h"
#include "host/judging/catalogue_items.h"
#include "host/judging/expectation.h"
#include "host/judging/layout_description.h"
#include "host/reporting/layout_explanation.h"
#include "tests/plain/plain_layout_description.h"

namespace kestrel::fuzz {
namespace {

using host::Expectation;
using host::LayoutElement;
using host::LayoutEntry;
using plain::PlainExpectedService;

// A longer text is not looked up as a name: each known name would be compared with it.
constexpr std::size_t kLongestName = 120;

// --- The parts of a layout

bool agree(const LayoutElement& element, const PlainExpectedService& plain) {
  return element.tracks == std::max(plain.trackCount, 0) && element.isHidden != plain.reported &&
         (element.name == "EMCA") == plain.isEmca;
}

void checkEntry(const std::string& text, const LayoutEntry& entry) {
  if (entry.offset + entry.length > text.size() || text[entry.offset] != 'T') {
    disagree("the place of an entry", text);
  }
  for (const LayoutElement& element : entry.elements) {
    std::string name = text.substr(element.offset, element.length);
    if (element.isHidden) std::erase(name, '-');
    requireEqual("the place of an element", name, element.name);
  }
}

void checkServices(const std::string& text, std::int32_t total) {
  std::int32_t counter = -1;
  const auto expected = plain::parse(text, static_cast<std::uint32_t>(total), false, counter);
  const auto entry = host::layoutEntry(text, total).value_or(LayoutEntry{});
  if (!std::ranges::equal(entry.elements, expected, agree)) {
    disagree("the elements of an entry", "total ", total, " of ", text);
  }
}

void checkParts(const std::string& text, const std::vector<LayoutEntry>& entries) {
  std::set<std::int32_t> totals;
  for (const LayoutEntry& entry : entries) {
    checkEntry(text, entry);
    totals.insert(entry.total);
  }
  if (text.size() > kLongestPlainDescription) return;
  for (const std::int32_t total : totals) checkServices(text, total);
  std::int32_t absent = 0;
  while (totals.contains(absent)) ++absent;
  checkServices(text, absent);
}

// --- The explanation

bool everyNameIsKnown(const std::vector<LayoutEntry>& entries) {
  return std::ranges::all_of(entries, [](const LayoutEntry& entry) {
    return std::ranges::all_of(entry.elements,
                               [](const LayoutElement& element) { return element.tracks > 0; });
  });
}

// The text without its entries.
std::string between(const std::string& text, const std::vector<LayoutEntry>& entries) {
  std::string rest = text;
  for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
    rest.erase(entry->offset, entry->length);
  }
  return rest;
}

bool isSound(const std::string& text, const std::vector<LayoutEntry>& entries) {
  std::set<std::int32_t> totals;
  for (const LayoutEntry& entry : entries) {
    std::int32_t sum = 0;
    for (const LayoutElement& element : entry.elements) sum += element.tracks;
    if (sum != entry.total || !totals.insert(entry.total).second) return false;
  }
  return !entries.empty() && everyNameIsKnown(entries) &&
         between(text, entries).find_first_not_of("; \t\r\n") == std::string::npos;
}

// Carets stand under the text of the line above them.
void checkCarets(const std::string& text, const std::string& explanation) {
  const std::size_t widest = 4 + std::max<std::size_t>(host::columnsOf(host::visible(text)), 1);
  std::string_view rest = explanation;
  while (!rest.empty()) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(rest.size(), line.size() + 1));
    const bool isCarets = line.ends_with('^') && line.find_first_not_of(" ^") == line.npos;
    if (isCarets && line.size() > widest && text.find('^') == text.npos) {
      disagree("carets under the text", explanation);
    }
  }
}

void checkExplanation(const std::string& text, const std::vector<LayoutEntry>& entries) {
  const host::LayoutExplanation told = host::explainLayout(text);
  requireEqual("the soundness of a layout", told.isSound, isSound(text, entries));
  requireReadable("the explanation", told.text);
  if (!told.text.ends_with('\n')) disagree("the end of an explanation", told.text);
  checkCarets(text, told.text);
}

// --- Expectations

// What is expected; nothing for a usage error.
template <class Read>
std::optional<Expectation> expectedOrNone(const Read& read, const std::string& text) {
  try {
    return read(text);
  } catch (const host::UsageError& error) {
    requireReadable("a usage error", error.what());
    return std::nullopt;
  }
}

void requireOfCatalogue(const Expectation& expectation) {
  const auto& items = host::catalogueItems();
  const auto id = static_cast<std::size_t>(expectation.item ? expectation.item->id : -1);
  if (id >= items.size() || items[id].description != expectation.description) {
    disagree("an item of the catalogue", expectation.text);
  }
}

void checkItem(const std::string& text) {
  const auto expectation = expectedOrNone(host::expectedItem, text);
  if (expectation) requireOfCatalogue(*expectation);
  std::int32_t item = 0;
  const bool isNamed = kestrelItemFromName(text.c_str(), &item) == KESTREL_OK ||
                       kestrelItemFromText(text.c_str(), &item) == KESTREL_OK;
  if (isNamed && (!expectation || expectation->item->id != item)) disagree("an item", text);
}

void requireItemOfCode(const std::string& code, std::int32_t item) {
  std::int32_t found = -1;
  requireEqual("the status of a code", kestrelItemFromLayoutCode(code.c_str(), &found), KESTREL_OK);
  requireEqual("the item of a code", item, found);
}

void checkCode(const std::string& text) {
  if (const auto expectation = expectedOrNone(host::expectedCode, text)) {
    requireOfCatalogue(*expectation);
    requireItemOfCode(expectation->code, expectation->item->id);
  }
  const host::DeclaredLayout declared = host::declaredLayout(text);
  requireEqual("the text of a declaration", declared.text, text);
  if (declared.item) requireItemOfCode(declared.code, declared.item->id);
}

void check(const std::string& text) {
  const std::vector<LayoutEntry> entries = host::layoutEntries(text);
  const bool isUtf8 = !plain::firstBadByte(text);
  const bool hasNul = text.find('\0') != text.npos;
  checkParts(text, entries);
  requireEqual("a layout is taken", expectedOrNone(host::expectedLayout, text).has_value(),
               isUtf8 && !hasNul && !entries.empty() && everyNameIsKnown(entries));
  if (isUtf8) checkExplanation(text, entries);
  if (hasNul || text.size() > kLongestName) return;  // only layouts are in files, or that long
  checkItem(text);
  checkCode(text);
}

}  // namespace
}  // namespace kestrel::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kestrel::fuzz::check(std::string(reinterpret_cast<const char*>(data), size));
  return 0;
}
