// The catalogue part of the plain C interface, including the layout codes.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "api/kestrel.h"
#include "catalogue/catalogue_tables.h"
#include "catalogue/stream_names.h"
#include "plain_c/barrier.h"
#include "standards/layout_code.h"

// The functions of the interface are global; what they use is in the namespace.
using namespace kestrel;

namespace {

constexpr std::array<const char*, 10> kStatusTexts = {
    "ok",
    "unknown id",
    "unknown name",
    "buffer too small",
    "NULL argument",
    "text is not UTF-8",
    "bad count",
    "bad record size",
    "index out of range",
    "out of memory",
};
static_assert(KESTREL_OUT_OF_MEMORY == kStatusTexts.size() - 1);

static_assert(KESTREL_MONO == kMono && KESTREL_STEREO == kStereo && KESTREL_51_MIX == k51Mix);
static_assert(KESTREL_71_MIX == k71Mix && KESTREL_DOLBY_E == kDolbyE);
static_assert(KESTREL_EMCA == kEmca && KESTREL_UNKNOWN == kUnknown);

// Stores the value that a look-up returns; the look-up may raise the error for an unknown id.
template <class T, class LookUp>
KestrelStatus answer(T* out, const LookUp& lookUp) noexcept {
  return guarded([&] {
    if (out == nullptr) return KESTREL_NULL_ARGUMENT;
    *out = lookUp();
    return KESTREL_OK;
  });
}

// Stores an id that a text names.
template <class LookUp>
KestrelStatus answerName(const char* name, std::int32_t* id, std::int32_t none,
                         const LookUp& lookUp) noexcept {
  if (anyNull(name, id)) return KESTREL_NULL_ARGUMENT;
  const std::int32_t found = lookUp(name);
  if (found == none) return KESTREL_UNKNOWN_NAME;
  *id = found;
  return KESTREL_OK;
}

ServiceMapItem itemNamed(std::string_view name) {
  const auto found = std::ranges::find(ServiceMapItemNames, name);
  return static_cast<ServiceMapItem>(found - ServiceMapItemNames.begin());
}

}  // namespace

const char* kestrelStatusText(KestrelStatus status) {
  const bool known = status >= 0 && static_cast<std::size_t>(status) < kStatusTexts.size();
  return known ? kStatusTexts[static_cast<std::size_t>(status)] : "unknown status";
}

const char* kestrelVersion() { return KESTREL_VERSION; }

int32_t kestrelAbiVersion() { return KESTREL_ABI; }

KestrelStatus kestrelCatalogueSize(int32_t* rows, int32_t* items, int32_t* streamTypes) {
  if (anyNull(rows, items, streamTypes)) return KESTREL_NULL_ARGUMENT;
  *rows = ServiceMapRows.size();
  *items = ServiceMapItemNames.size();
  *streamTypes = StreamTypeNames.size();
  return KESTREL_OK;
}

KestrelStatus kestrelRowTracks(int32_t row, int32_t* tracks) {
  return answer(tracks, [=] { return ServiceMapRowTrackCounts.at(row); });
}

KestrelStatus kestrelRowItems(int32_t row, int32_t* items, size_t capacity, size_t* needed) {
  return guarded([=] { return copyOut(ServiceMapRows.at(row), items, capacity, needed); });
}

KestrelStatus kestrelRowDefaultItem(int32_t row, int32_t* item) {
  return answer(item, [=] { return ServiceMapRows.at(row).front(); });
}

KestrelStatus kestrelItemRow(int32_t item, int32_t* row) {
  return answer(row, [=] {
    if (!ServiceMapItemNames.contains(item)) raiseUnknownId();
    return rowOf(item);
  });
}

KestrelStatus kestrelItemName(int32_t item, const char** name) {
  return answer(name, [=] { return ServiceMapItemNames.at(item).data(); });
}

KestrelStatus kestrelItemFromName(const char* name, int32_t* item) {
  return answerName(name, item, NO_SERVICE_MAP_ITEM, itemNamed);
}

KestrelStatus kestrelItemStreamTypes(int32_t item, int32_t* types, size_t capacity,
                                     size_t* needed) {
  return guarded(
      [=] { return copyOut(ServiceMapItemStreamTypes.at(item).view(), types, capacity, needed); });
}

KestrelStatus kestrelItemText(int32_t item, char* text, size_t capacity, size_t* needed) {
  return guarded([=] { return copyOut(streamTypesText(item), text, capacity, needed); });
}

KestrelStatus kestrelItemFromText(const char* text, int32_t* item) {
  return answerName(text, item, NO_SERVICE_MAP_ITEM, itemOfStreamTypes);
}

KestrelStatus kestrelItemStreamName(int32_t item, int32_t position, char* name, size_t capacity,
                                    size_t* needed) {
  return guarded([=] { return copyOut(streamName(item, position), name, capacity, needed); });
}

KestrelStatus kestrelStreamTypeName(int32_t type, const char** name) {
  return answer(name, [=] { return StreamTypeNames.at(type).data(); });
}

KestrelStatus kestrelStreamTypeTracks(int32_t type, int32_t* tracks) {
  return answer(tracks, [=] { return StreamTypeWidths.at(type); });
}

KestrelStatus kestrelStreamTypeFromName(const char* name, int32_t* type) {
  return answerName(name, type, KESTREL_UNKNOWN, streamTypeNamed);
}

KestrelStatus kestrelItemFromLayoutCode(const char* code, int32_t* item) {
  return answerName(code, item, NO_SERVICE_MAP_ITEM, itemOfLayoutCode);
}

KestrelStatus kestrelLayoutCode(int32_t index, const char** code, int32_t* item) {
  if (anyNull(code, item)) return KESTREL_NULL_ARGUMENT;
  const auto rules = layoutCodeRules();
  if (index < 0 || static_cast<std::size_t>(index) >= rules.size()) return KESTREL_BAD_INDEX;
  const LayoutCodeRule& rule = rules[static_cast<std::size_t>(index)];
  *code = rule.code.data();
  *item = rule.item;
  return KESTREL_OK;
}
