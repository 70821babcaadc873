#include "host/judging/expectation.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <sstream>

#include "host/basics/file_names.h"
#include "host/basics/nearest_name.h"
#include "host/basics/text_input.h"
#include "host/basics/text_parts.h"
#include "host/basics/usage_error.h"
#include "host/basics/utf8.h"
#include "host/judging/catalogue_items.h"
#include "host/judging/layout_codes.h"
#include "host/judging/layout_description.h"

namespace kestrel::host {
namespace {

constexpr std::size_t kLongestFile = 1U << 20;

void requireKnown(const LayoutEntry& entry, const LayoutElement& element) {
  if (element.tracks > 0) {
    return;
  }
  throw UsageError(
      fmt::format("the entry T{} has the service \"{}\", which is not known; the nearest is "
                  "\"{}\"",
                  entry.total, printable(element.name), nearestService(element.name)));
}

void requireLayout(const std::string& text) {
  const std::vector<LayoutEntry> entries = layoutEntries(text);
  if (entries.empty()) {
    throw UsageError("there is no entry such as \"T8=5.1 Mix,Stereo\" in the layout");
  }
  for (const LayoutEntry& entry : entries) {
    for (const LayoutElement& element : entry.elements) {
      requireKnown(entry, element);
    }
  }
}

bool equalsInAnyCase(std::string_view left, std::string_view right) {
  return std::ranges::equal(left, right, {}, lowerCase, lowerCase);
}

// "Stereo, EMCA" as the catalogue writes it: without blanks after commas, and "Dolby E".
std::string asServices(const std::string& text) {
  std::string services;
  std::size_t at = 0;
  while (at <= text.size()) {
    const std::size_t end = std::min(text.find(',', at), text.size());
    const std::size_t begin = std::min(text.find_first_not_of(' ', at), end);
    const std::string name = text.substr(begin, end - begin);
    services += (at == 0 ? "" : ",") + (equalsInAnyCase(name, "EMCA") ? "Dolby E" : name);
    at = end + 1;
  }
  return services;
}

const CatalogueItem* itemById(const std::string& text) {
  std::string_view rest = text;
  const auto id = takeNumber<std::size_t>(rest);
  const bool isId = id && rest.empty() && *id < catalogueItems().size();
  return isId ? &catalogueItems()[*id] : nullptr;
}

// Names come before services: "Stereo" is both, for the same item.
const CatalogueItem* itemByText(const std::string& text) {
  const std::vector<CatalogueItem>& items = catalogueItems();
  const std::string services = asServices(text);
  auto found = std::ranges::find_if(
      items, [&](const CatalogueItem& item) { return equalsInAnyCase(item.item.name, text); });
  if (found == items.end()) {
    found = std::ranges::find_if(
        items, [&](const CatalogueItem& item) { return equalsInAnyCase(item.services, services); });
  }
  return found == items.end() ? nullptr : &*found;
}

[[noreturn]] void rejectItem(const std::string& text) {
  std::vector<std::string> names;
  for (const CatalogueItem& item : catalogueItems()) {
    names.push_back(item.item.name);
    names.push_back(item.services);
  }
  const bool isNumber = !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
  throw UsageError(
      isNumber ? fmt::format("there is no item {}; the items are 0 to {}", printable(text),
                             catalogueItems().size() - 1)
               : fmt::format(
                     R"(there is no item "{}"; the nearest is "{}" (kestrel catalogue lists all))",
                     printable(text), nearestName(text, names)));
}

[[noreturn]] void rejectCode(const std::string& text, const SpelledCode& spelled) {
  if (spelled.vocabulary == CodeVocabulary::kR48) {
    throw UsageError(
        fmt::format("\"{}\" is a code of EBU R 48, which is another vocabulary than that of "
                    "EBU R 123 and is not looked up",
                    printable(text)));
  }
  std::vector<std::string> codes;
  for (const LayoutCode& code : layoutCodes()) {
    codes.push_back(code.code);
  }
  const std::string& wanted = spelled.code.empty() ? text : spelled.code;
  throw UsageError(
      fmt::format("no layout is known for the code \"{}\"; the nearest is \"{}\" (kestrel "
                  "codes lists all)",
                  printable(text), nearestName(wanted, codes)));
}

Expectation expectationOf(ExpectationKind kind, const std::string& text, const CatalogueItem& item,
                          const std::string& code) {
  return {kind, text, item.item, code, item.description};
}

const CatalogueItem& itemOf(std::int32_t id) {
  return catalogueItems().at(static_cast<std::size_t>(id));
}

// The readable lines of a layout file, joined by ";".
std::string layoutOfLines(const std::string& text) {
  std::istringstream lines(text);
  std::string layout;
  for (std::string line; std::getline(lines, line);) {
    line.erase(line.find_last_not_of(" \r") + 1);
    if (!line.empty() && line.front() != '#') {
      layout += (layout.empty() ? "" : ";") + line;
    }
  }
  return layout;
}

// For the library a text ends at its first NUL, which a file can hold.
void requireText(const std::string& text) {
  if (!wideFromUtf8(text)) {
    throw UsageError("the text is not UTF-8");
  }
  if (text.find('\0') != std::string::npos) {
    throw UsageError("the text holds a NUL");
  }
}

}  // namespace

Expectation expectedLayout(const std::string& text) {
  requireText(text);
  requireLayout(text);
  return {ExpectationKind::kLayout, text, std::nullopt, "", text};
}

Expectation expectedLayoutFile(const std::filesystem::path& file) {
  const std::string text = TextInput(file).takeRest(kLongestFile + 1);
  if (text.size() > kLongestFile) {
    throw UsageError("the file is longer than 1 MiB");
  }
  const std::string layout = layoutOfLines(text);
  requireText(layout);
  requireLayout(layout);
  return {ExpectationKind::kLayoutFile, utf8FromPath(file), std::nullopt, "", layout};
}

Expectation expectedItem(const std::string& text) {
  requireText(text);
  const CatalogueItem* item = itemById(text);
  if (item == nullptr) {
    item = itemByText(text);
  }
  if (item == nullptr) {
    rejectItem(text);
  }
  return expectationOf(ExpectationKind::kItem, text, *item, "");
}

Expectation expectedCode(const std::string& text) {
  requireText(text);
  const SpelledCode spelled = spelledCode(text);
  const auto row = layoutCode(spelled.code);
  if (spelled.vocabulary != CodeVocabulary::kR123 || !row) {
    rejectCode(text, spelled);
  }
  return expectationOf(ExpectationKind::kCode, text, itemOf(row->found), spelled.code);
}

DeclaredLayout declaredLayout(const std::string& text) {
  constexpr std::array<std::string_view, 2> kVocabularies = {"EBU R 123", "EBU R 48"};
  DeclaredLayout declared{text, "unknown", "", std::nullopt};
  for (const std::string_view vocabulary : kVocabularies) {
    std::string_view rest = text;
    if (takeText(rest, vocabulary) && takeText(rest, ": ")) {
      declared.vocabulary = vocabulary;
      declared.code = rest;
    }
  }
  const auto row = layoutCode(declared.code);
  if (declared.vocabulary == kVocabularies.front() && row) {
    declared.item = itemOf(row->found).item;
  }
  return declared;
}

std::optional<Expectation> expectedDeclared(const DeclaredLayout& declared) {
  if (!declared.item) {
    return std::nullopt;
  }
  return expectationOf(ExpectationKind::kDeclared, declared.text, itemOf(declared.item->id),
                       declared.code);
}

std::optional<Finding> settleAmbiguousCode(Expectation& expectation, std::int32_t trackTotal) {
  const auto row = layoutCode(expectation.code);
  if (!row || row->item == row->found) {
    return std::nullopt;
  }
  const CatalogueItem& own = itemOf(row->item);
  const CatalogueItem& found = itemOf(row->found);
  const bool isOwn = own.tracks == trackTotal && found.tracks != trackTotal;
  if (isOwn) {
    expectation.item = own.item;
    expectation.description = own.description;
  }
  return Finding{
      "code-ambiguous",
      Severity::kWarning,
      fmt::format("The code {} has two readings: \"{}\" ({} tracks) and, by the shorter code "
                  "inside it, \"{}\" ({} tracks). The {} is taken.",
                  expectation.code, own.item.name, own.tracks, found.item.name, found.tracks,
                  isOwn ? "first" : "second"),
      std::nullopt,
      {}};
}

}  // namespace kestrel::host
