// Texts and ordinals are worked out by the compiler: a name is two copies, and a text is compared
// with the few constants of its length.
#include "catalogue/stream_names.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace kestrel {

namespace {

using Ordinals = std::array<std::uint8_t, kMostStreams>;

// For each stream of an item which of its type it is, from 1; 0 where the type stands once.
constexpr Ordinals ordinalsOf(std::span<const StreamType> types) {
  Ordinals ordinals{};
  for (std::size_t i = 0; i < types.size(); ++i)
    if (std::ranges::count(types, types[i]) > 1)
      ordinals[i] = static_cast<std::uint8_t>(std::ranges::count(types.first(i + 1), types[i]));
  return ordinals;
}

constexpr IdTable kOrdinals{[] {
  std::array<Ordinals, derive::kItemCount> all{};
  for (std::size_t i = 0; i < all.size(); ++i)
    all[i] = ordinalsOf(kCatalogue.layouts[i].streamTypes.view());
  return all;
}()};

constexpr std::size_t kLongestItemText = 111;

// The stream types of an item as names joined by commas.
struct ItemText {
  std::array<char, kLongestItemText + 1> characters{};
  std::uint8_t length = 0;

  constexpr void append(std::string_view part) {
    for (const char c : part) characters[length++] = c;
  }
  constexpr std::string_view view() const { return {characters.data(), length}; }
};

constexpr ItemText textOf(std::span<const StreamType> types) {
  ItemText text;
  for (const StreamType type : types) {
    if (text.length > 0) text.append(",");
    text.append(StreamTypeNames.at(type));
  }
  return text;
}

constexpr IdTable kItemTexts{[] {
  std::array<ItemText, derive::kItemCount> texts{};
  for (std::size_t i = 0; i < texts.size(); ++i)
    texts[i] = textOf(kCatalogue.layouts[i].streamTypes.view());
  return texts;
}()};

// The lengths side by side: all of them are looked at, but few texts.
constexpr auto kItemTextLengths = [] {
  std::array<std::uint8_t, derive::kItemCount> lengths{};
  std::ranges::transform(kItemTexts, lengths.begin(), &ItemText::length);
  return lengths;
}();

static_assert(kMostStreams <= 99, "an ordinal has at most two digits");
static_assert(std::ranges::all_of(StreamTypeNames, [](std::string_view name) {
  return name.size() + 3 <= kLongestStreamName;
}));

}  // namespace

StreamName::StreamName(ServiceMapItem item, std::int32_t position) {
  const std::span<const StreamType> types = ServiceMapItemStreamTypes.at(item);
  if (position < 0 || static_cast<std::size_t>(position) >= types.size()) raiseUnknownId();
  typeName_ = StreamTypeNames.at(types[static_cast<std::size_t>(position)]);
  ordinal_ = kOrdinals.at(item)[static_cast<std::size_t>(position)];
}

std::size_t StreamName::length() const {
  if (ordinal_ == 0) return typeName_.size();
  return typeName_.size() + (ordinal_ < 10 ? 2 : 3);
}

void StreamName::write(char* out) const {
  std::memcpy(out, typeName_.data(), typeName_.size());
  out += typeName_.size();
  if (ordinal_ > 0) *out++ = ' ';
  if (ordinal_ >= 10) *out++ = static_cast<char>('0' + ordinal_ / 10);
  if (ordinal_ > 0) *out++ = static_cast<char>('0' + ordinal_ % 10);
  *out = '\0';
}

StreamType streamTypeNamed(std::string_view name) noexcept {
  const auto found = std::ranges::find(StreamTypeNames, name);
  return found == StreamTypeNames.end() ? kUnknown
                                        : static_cast<StreamType>(found - StreamTypeNames.begin());
}

std::string_view streamTypesText(ServiceMapItem item) { return kItemTexts.at(item).view(); }

ServiceMapItem itemOfStreamTypes(std::string_view text) noexcept {
  for (ServiceMapItem item = 0; item < NO_SERVICE_MAP_ITEM; ++item)
    if (kItemTextLengths[static_cast<std::size_t>(item)] == text.size() &&
        kItemTexts.at(item).view() == text)
      return item;
  return NO_SERVICE_MAP_ITEM;
}

}  // namespace kestrel
