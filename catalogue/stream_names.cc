// Nothing here builds a text to compare or to measure: an item's list of names is matched against
// the text in place, and an ordinal has at most two digits.
#include "catalogue/stream_names.h"

#include <algorithm>
#include <cstring>

namespace kestrel {

namespace {

// The stream type at the position, or the error of an unknown id.
StreamType typeAt(std::span<const StreamType> types, std::int32_t position) {
  if (position < 0 || static_cast<std::size_t>(position) >= types.size()) raiseUnknownId();
  return types[static_cast<std::size_t>(position)];
}

std::size_t countOf(StreamType type, std::span<const StreamType> types) {
  return static_cast<std::size_t>(std::ranges::count(types, type));
}

bool takeFront(std::string_view& text, std::string_view front) {
  if (!text.starts_with(front)) return false;
  text.remove_prefix(front.size());
  return true;
}

bool spells(std::string_view text, std::span<const StreamType> types) {
  for (std::size_t i = 0; i < types.size(); ++i) {
    if (i > 0 && !takeFront(text, ",")) return false;
    if (!takeFront(text, StreamTypeNames.at(types[i]))) return false;
  }
  return text.empty();
}

static_assert(kMostStreams <= 99, "an ordinal has at most two digits");
static_assert(std::ranges::all_of(StreamTypeNames, [](std::string_view name) {
  return name.size() + 3 <= kLongestStreamName;
}));

}  // namespace

StreamName::StreamName(ServiceMapItem item, std::int32_t position) {
  const std::span<const StreamType> types = ServiceMapItemStreamTypes.at(item);
  const StreamType type = typeAt(types, position);
  typeName_ = StreamTypeNames.at(type);
  if (countOf(type, types) > 1)
    ordinal_ = countOf(type, types.first(static_cast<std::size_t>(position) + 1));
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

ServiceMapItem itemOfStreamTypes(std::string_view text) noexcept {
  const auto found =
      std::ranges::find_if(ServiceMapItemStreamTypes,
                           [&](std::span<const StreamType> types) { return spells(text, types); });
  return static_cast<ServiceMapItem>(found - ServiceMapItemStreamTypes.begin());
}

}  // namespace kestrel
