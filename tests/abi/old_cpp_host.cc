// A host of the vector interface as it was built against the baseline headers. It prints what it is
// told; the output is compared with that of the day when it was built first.
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include "api/catalogue.h"
#include "api/ebu_r123.h"
#include "api/layout_code.h"
#include "api/service_map.h"
#include "api/stream_naming.h"

namespace {

void printItem(std::int32_t item) {
  std::string name(static_cast<std::size_t>(kestrel::getServiceMapItemNameLength(item)), '\0');
  kestrel::getServiceMapItemName(item, name.data());
  std::vector<std::int32_t> types(static_cast<std::size_t>(kestrel::getStreamTypesCount(item)));
  kestrel::getStreamTypes(item, types.data());
  std::printf("item %d, row %d: %s:", item, kestrel::getServiceMapItemRow(item), name.c_str());
  for (const std::int32_t type : types)
    std::printf(" [%s]", kestrel::getStreamTypeSymbol(static_cast<kestrel::StreamType>(type)));
  std::string first(static_cast<std::size_t>(kestrel::getStreamTypeNameLength(item, 0)), '\0');
  kestrel::getStreamTypeName(item, 0, first.data());
  std::printf(" first \"%s\"\n", first.c_str());
}

void printRows() {
  for (std::int32_t row = 0; row < kestrel::getRowCount(); ++row) {
    std::vector<std::int32_t> items(
        static_cast<std::size_t>(kestrel::getServiceMapItemsCount(row)));
    kestrel::getServiceMapItems(row, items.data());
    std::printf("row %d: %d tracks, default %d\n", row,
                static_cast<int>(kestrel::getTracksCount(row)),
                kestrel::getDefaultServiceMapItem(row));
    for (const std::int32_t item : items) printItem(item);
  }
}

std::vector<kestrel::AudioStreamInfo> streams() {
  std::vector<kestrel::AudioStreamInfo> all(3);
  all[0].streamId = L"1";
  all[0].trackLabels = L"L R C LFE Ls Rs";
  all[0].channelCount = 6;
  all[1].streamId = L"2";
  all[1].channelCount = 2;
  all[2].streamId = L"3-4";
  all[2].group = 7;
  all[2].channelCount = 2;
  all[2].isPairCoded = 1;
  for (auto& stream : all) stream.formatKey1 = 48000;
  return all;
}

void printServices() {
  const auto all = streams();
  std::vector<kestrel::ServiceMapResult> results;
  const int found =
      kestrel::getServiceMap("T10=5.1 Mix,Stereo,EMCA", L"L C R Ls Rs LFE", 0, all.data(),
                             static_cast<int>(all.size()), &results, 1, 1);
  std::printf("getServiceMap: %d, %zu records\n", found, results.size());
  for (const auto& result : results) {
    std::printf("tracks %d, reported %d, emca %d, requested %d, label \"%ls\":", result.trackCount,
                result.reported, result.isEmca, result.requested, result.label.c_str());
    for (int i = 0; i < result.trackCount; ++i) {
      const auto& slot = result.slots.at(static_cast<std::size_t>(i));
      std::printf(" %lld/%d/%d/%d", static_cast<long long>(slot.trackNumber), slot.group,
                  slot.sourceGroup, slot.indexInGroup);
    }
    std::printf("\n");
  }
}

void printTexts() {
  std::printf("codes: 8b %d, 16f %d, none %d\n", kestrel::GetServiceMapItemByAS11R123("8b"),
              kestrel::GetServiceMapItemByAS11R123("EBU R 123: 16f"),
              kestrel::GetServiceMapItemByAS11R123("99z"));
  std::printf("texts: %d %d\n", kestrel::streamTypeFromStr("stereo"),
              kestrel::serviceMapItemFromStr("Stereo,5.1 Mix"));
  const auto type = kestrel::streamTypeFromStr("Stereo");
  std::string symbolic(static_cast<std::size_t>(kestrel::getStreamTypeSymbolicLength(type)), '\0');
  const int written = kestrel::getStreamTypeSymbolic(type, symbolic.data());
  std::printf("symbolic: %d \"%s\"\n", written, symbolic.c_str());
}

void printR123() {
  const auto all = streams();
  kestrel::ServiceMapResult* block = nullptr;
  std::int32_t count = -7;
  std::int32_t item = 5;
  kestrel::getServiceMapEbuR123("T10=Mono", 0, all.data(), static_cast<int>(all.size()), &block,
                                &count, &item);
  std::printf("R 123: %d records, item %d\n", count, item);
  std::free(block);
  try {
    kestrel::getTracksCount(1000);
  } catch (const std::out_of_range&) {
    std::printf("row 1000: out of range\n");
  }
}

}  // namespace

int main() {
  printRows();
  printServices();
  printTexts();
  printR123();
}
