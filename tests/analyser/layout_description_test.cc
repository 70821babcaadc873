#include "analyser/layout_description.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace kestrel {
namespace {

struct Entry {
  std::uint32_t total;
  std::string list;
  bool operator==(const Entry&) const = default;
};

void PrintTo(const Entry& entry, std::ostream* out) { *out << entry.total << ":" << entry.list; }

std::vector<Entry> entriesOf(std::string_view text) {
  std::vector<Entry> entries;
  while (const auto entry = takeEntry(text))
    entries.push_back({entry->trackTotal, std::string(entry->serviceList)});
  EXPECT_TRUE(text.empty());
  return entries;
}

TEST(TakeEntry, FindsTheEntriesOfADescription) {
  const struct {
    std::string text;
    std::vector<Entry> entries;
  } rows[] = {
      {"", {}},
      {"T", {}},
      {"T2", {}},
      {"T2=", {}},
      {"T=Stereo", {}},
      {"T2=Stereo", {{2, "Stereo"}}},
      {"T02=Stereo", {{2, "Stereo"}}},
      {"T2=Stereo;T4=Stereo,Stereo", {{2, "Stereo"}, {4, "Stereo,Stereo"}}},
      {"T2=Stereo T4=Stereo,Stereo", {{2, "Stereo T"}}},
      {"T2=StereoT4=Mono", {{2, "StereoT"}}},
      {"T123=Stereo", {}},
      {"t2=Stereo", {}},
      {"T 2=Stereo", {}},
      {"T2 =Stereo", {}},
      {"T2=\tStereo", {}},
      {"TT2=Stereo", {{2, "Stereo"}}},
      {"T2T4=Mono", {{4, "Mono"}}},
      {"T12T4=Mono", {{4, "Mono"}}},
      {"T2=;T4=Mono", {{4, "Mono"}}},
      {"xxT4=MonoxT", {{4, "MonoxT"}}},
      {"T8=5.1 Mix,-Stereo", {{8, "5.1 Mix,-Stereo"}}},
      {"T8=157,-. ", {{8, "157,-. "}}},
      {"T8=2 Mono", {}},
      {"T8=5.2 Mix", {{8, "5."}}},
      {"T8=Mono/Mono", {{8, "Mono"}}},
      {"T8=Mono+T4=Mono", {{8, "Mono"}, {4, "Mono"}}},
      {"T8=\x80Mono", {}},
      {"T8=Mo\xC3\xA9no", {{8, "Mo"}}},
      {std::string("T8=Mono\0T4=Mono", 15), {{8, "Mono"}, {4, "Mono"}}},
      {"T99=Mono;T00=Mono;T0=Mono", {{99, "Mono"}, {0, "Mono"}, {0, "Mono"}}},
  };
  for (const auto& row : rows) EXPECT_EQ(entriesOf(row.text), row.entries) << row.text;
}

TEST(FindServiceList, TakesTheFirstEntryOfTheTotal) {
  const std::string text = "T4=Mono;T2=Stereo;T2=Mono,Mono";
  EXPECT_EQ(findServiceList(text, 2), "Stereo");
  EXPECT_EQ(findServiceList(text, 6), "");
  EXPECT_EQ(findServiceList(text, 100), "");
  EXPECT_EQ(findServiceList(text, 0xFFFFFFFF), "");
}

std::vector<std::string> elementsOf(std::string_view list) {
  std::vector<std::string> elements;
  while (!list.empty()) elements.emplace_back(takeElement(list));
  return elements;
}

TEST(TakeElement, SplitsAtCommasWithoutTrimming) {
  const struct {
    std::string list;
    std::vector<std::string> elements;
  } rows[] = {
      {"Stereo", {"Stereo"}},
      {"Stereo,Mono", {"Stereo", "Mono"}},
      {"Stereo,", {"Stereo"}},
      {"Stereo,,Mono", {"Stereo", "", "Mono"}},
      {",Stereo", {"", "Stereo"}},
      {",", {""}},
      {",,", {"", ""}},
      {"Stereo, Mono", {"Stereo", " Mono"}},
  };
  for (const auto& row : rows) EXPECT_EQ(elementsOf(row.list), row.elements) << row.list;
}

TEST(TakeElement, KnowsFiveNames) {
  const struct {
    std::string element;
    StreamType type;
    std::int32_t tracks;
    bool silent;
  } rows[] = {
      {"Mono", kMono, 1, false},
      {"Stereo", kStereo, 2, false},
      {"5.1 Mix", k51Mix, 6, false},
      {"7.1 Mix", k71Mix, 8, false},
      {"EMCA", kEmca, 2, false},
      {"-Mono", kMono, 1, true},
      {"-7.1 Mix", k71Mix, 8, true},
      {"--EMCA", kEmca, 2, true},
      {"-5-.-1- -M-i-x-", k51Mix, 6, true},
      {"5.1-Mix", kUnknown, -1, false},
      {"Mono-", kUnknown, -1, false},
      {"-", kUnknown, -1, true},
      {"", kUnknown, -1, false},
      {"Dolby E", kUnknown, -1, false},
      {"stereo", kUnknown, -1, false},
      {" Mono", kUnknown, -1, false},
      {"Mono ", kUnknown, -1, false},
      {"- Mono", kUnknown, -1, true},
      {"-MonoMono", kUnknown, -1, true},
      {"MonoMono", kUnknown, -1, false},
      {"xxxxxxxxxxStereo", kUnknown, -1, false},
      {"-Mon", kUnknown, -1, true},
      {"emca", kUnknown, -1, false},
      {"Stereo T", kUnknown, -1, false},
  };
  for (const auto& row : rows) {
    const StreamType service = serviceNamed(row.element);
    EXPECT_EQ(service, row.type) << row.element;
    EXPECT_EQ(tracksOf(service), row.tracks) << row.element;
    EXPECT_EQ(isSilent(row.element), row.silent) << row.element;
  }
}

}  // namespace
}  // namespace kestrel
