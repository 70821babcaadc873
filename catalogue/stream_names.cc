// All names and texts are worked out by the compiler: naming is one copy, and a text is compared
// with the few constants of its length.
#include "catalogue/stream_names.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "catalogue/packed_name.h"

namespace kestrel {

namespace {

constexpr std::size_t kNoOrdinal = 0;

// The name of a stream: that of its type, with its ordinal among those of its type behind it.
struct NameText {
  std::array<char, kLongestStreamName + 1> characters{};
  std::uint8_t length = 0;

  consteval void append(char c) { characters[length++] = c; }
};

consteval NameText nameOf(StreamType type, std::size_t ordinal) {
  NameText name;
  for (const char c : StreamTypeNames.at(type)) name.append(c);
  if (ordinal == kNoOrdinal) return name;
  name.append(' ');
  if (ordinal >= 10) name.append(static_cast<char>('0' + ordinal / 10));
  name.append(static_cast<char>('0' + ordinal % 10));
  return name;
}

using NamesOfType = std::array<NameText, kMostStreams + 1>;  // by ordinal

consteval auto namesOfAllTypes() {
  std::array<NamesOfType, derive::kStreamTypeCount> names{};
  for (std::size_t type = 0; type < names.size(); ++type)
    for (std::size_t ordinal = 0; ordinal < names[type].size(); ++ordinal)
      names[type][ordinal] = nameOf(static_cast<StreamType>(type), ordinal);
  return names;
}

constexpr auto kNames = namesOfAllTypes();

using Ordinals = std::array<std::uint8_t, kMostStreams>;

// By position; kNoOrdinal for a type that the layout holds once.
consteval Ordinals ordinalsOf(std::span<const StreamType> types) {
  Ordinals ordinals{};
  for (std::size_t i = 0; i < types.size(); ++i)
    if (std::ranges::count(types, types[i]) > 1)
      ordinals[i] = static_cast<std::uint8_t>(std::ranges::count(types.first(i + 1), types[i]));
  return ordinals;
}

consteval auto ordinalsOfAllItems() {
  std::array<Ordinals, derive::kItemCount> all{};
  for (std::size_t i = 0; i < all.size(); ++i)
    all[i] = ordinalsOf(kCatalogue.layouts[i].streamTypes.view());
  return all;
}

constexpr auto kOrdinals = ordinalsOfAllItems();

// An item's text is the names of its stream types joined by commas.
consteval std::size_t textLengthOf(std::span<const StreamType> types) {
  std::size_t length = types.size() - 1;  // commas
  for (const StreamType type : types) length += StreamTypeNames.at(type).size();
  return length;
}

consteval std::size_t longestItemText() {
  std::size_t longest = 0;
  for (const auto& layout : kCatalogue.layouts)
    longest = std::max(longest, textLengthOf(layout.streamTypes.view()));
  return longest;
}

constexpr std::size_t kLongestItemText = longestItemText();

struct ItemText {
  std::array<char, kLongestItemText> characters{};
  std::uint8_t length = 0;

  consteval void append(std::string_view part) {
    for (const char c : part) characters[length++] = c;
  }
  constexpr std::string_view view() const { return {characters.data(), length}; }
};

consteval ItemText textOf(std::span<const StreamType> types) {
  ItemText text;
  for (const StreamType type : types) {
    if (text.length > 0) text.append(",");
    text.append(StreamTypeNames.at(type));
  }
  return text;
}

consteval auto textsOfAllItems() {
  std::array<ItemText, derive::kItemCount> texts{};
  for (std::size_t i = 0; i < texts.size(); ++i)
    texts[i] = textOf(kCatalogue.layouts[i].streamTypes.view());
  return texts;
}

constexpr auto kItemTexts = IdTable{textsOfAllItems()};

// For each length the first item with a text of that length, and for each item the next one: few
// texts are looked at, and most of those differ from one another in their first bytes.
constexpr std::uint8_t kNoItem = NO_SERVICE_MAP_ITEM;
struct ItemsByLength {
  std::array<std::uint8_t, kLongestItemText + 1> first{};
  std::array<std::uint8_t, derive::kItemCount> next{};
};
constexpr ItemsByLength kItemsByLength = [] {
  ItemsByLength items;
  items.first.fill(kNoItem);
  for (std::uint8_t item = kNoItem; item-- > 0;) {
    std::uint8_t& first = items.first[kItemTexts.at(item).length];
    items.next[item] = first;
    first = item;
  }
  return items;
}();

// Compares kStep bytes at once, the last ones together with some before them; the compiler makes
// two instructions of each memcmp().
template <std::size_t kStep>
bool equalBySteps(const char* a, const char* b, std::size_t length) {
  for (std::size_t at = 0; at + kStep < length; at += kStep)
    if (std::memcmp(a + at, b + at, kStep) != 0) return false;
  return std::memcmp(a + length - kStep, b + length - kStep, kStep) == 0;
}

// Ends sooner than a call of the C library would.
bool equal(const char* a, const char* b, std::size_t length) {
  if (length >= 16) return equalBySteps<16>(a, b, length);
  return length >= 8 ? equalBySteps<8>(a, b, length) : std::equal(a, a + length, b);
}

consteval auto packedTypeNames() {
  std::array<PackedName, derive::kStreamTypeCount> names;
  for (std::size_t i = 0; i < names.size(); ++i) names[i] = pack(kCatalogue.streamTypes[i].name);
  return names;
}

constexpr auto kPackedTypeNames = packedTypeNames();
static_assert(std::ranges::all_of(StreamTypeNames, [](std::string_view name) {
  return name.size() <= PackedName::kLongest;
}));

static_assert(kMostStreams <= 99, "an ordinal has at most two digits");
static_assert(std::ranges::all_of(StreamTypeNames, [](std::string_view name) {
  return name.size() + 3 <= kLongestStreamName;
}));

}  // namespace

std::string_view streamName(ServiceMapItem item, std::int32_t position) {
  const StreamTypeList& types = ServiceMapItemStreamTypes.at(item);
  const auto index = static_cast<std::size_t>(position);
  if (position < 0 || index >= types.count) raiseUnknownId();
  const auto ordinal = kOrdinals[static_cast<std::size_t>(item)][index];
  const NameText& name = kNames[static_cast<std::size_t>(types.types[index])][ordinal];
  return {name.characters.data(), name.length};
}

StreamType streamTypeNamed(const char* name) noexcept {
  PackedName packed;
  for (std::size_t length = 0; name[length] != '\0'; ++length) {
    if (length == PackedName::kLongest) return kUnknown;
    packed.append(name[length]);
  }
  const auto found = std::ranges::find(kPackedTypeNames, packed);
  return found == kPackedTypeNames.end()
             ? kUnknown
             : static_cast<StreamType>(found - kPackedTypeNames.begin());
}

std::string_view streamTypesText(ServiceMapItem item) { return kItemTexts.at(item).view(); }

ServiceMapItem itemOfStreamTypes(std::string_view text) noexcept {
  if (text.size() > kLongestItemText) return NO_SERVICE_MAP_ITEM;
  ServiceMapItem item = kItemsByLength.first[text.size()];
  while (item != NO_SERVICE_MAP_ITEM &&
         !equal(kItemTexts.at(item).characters.data(), text.data(), text.size()))
    item = kItemsByLength.next[static_cast<std::size_t>(item)];
  return item;
}

}  // namespace kestrel
