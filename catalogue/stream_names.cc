// The compiler makes the texts of all items and rejects one that does not fit. The name of a stream
// is composed when it is asked for.
#include "catalogue/stream_names.h"

#include <charconv>
#include <span>

#include "catalogue/catalogue_tables.h"

namespace kestrel {

namespace {

consteval auto itemTexts() {
  std::array<InlineText, kLayouts.size()> texts;
  for (std::size_t item = 0; item < texts.size(); ++item)
    for (const StreamType type : kLayouts[item].streamTypes.view()) {
      if (texts[item].size() != 0) texts[item].append(",");
      texts[item].append(StreamTypeNames.at(type));
    }
  return IdTable{texts};
}

constexpr auto kItemTexts = itemTexts();

void appendOrdinal(InlineText& name, std::ptrdiff_t ordinal) {
  std::array<char, 3> text = {' '};
  const char* const end = std::to_chars(text.begin() + 1, text.end(), ordinal).ptr;
  name.append({text.begin(), end});
}

}  // namespace

InlineText streamName(ServiceMapItem item, std::int32_t position) {
  const auto types = ServiceMapItemStreamTypes.at(item).view();
  const auto index = static_cast<std::size_t>(position);
  if (position < 0 || index >= types.size()) raiseUnknownId();
  InlineText name;
  name.append(StreamTypeNames.at(types[index]));
  if (std::ranges::count(types, types[index]) > 1)
    appendOrdinal(name, std::ranges::count(types.first(index + 1), types[index]));
  return name;
}

StreamType streamTypeNamed(std::string_view name) noexcept {
  const auto found = std::ranges::find(StreamTypeNames, name);
  return found == StreamTypeNames.end() ? kUnknown
                                        : static_cast<StreamType>(found - StreamTypeNames.begin());
}

std::string_view streamTypesText(ServiceMapItem item) { return kItemTexts.at(item); }

ServiceMapItem itemOfStreamTypes(std::string_view text) noexcept {
  for (ServiceMapItem item = 0; item < kItemTexts.size(); ++item)
    if (text == kItemTexts.at(item)) return item;
  return NO_SERVICE_MAP_ITEM;
}

}  // namespace kestrel
