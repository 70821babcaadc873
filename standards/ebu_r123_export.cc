// The exported entry point of the EBU R 123 analysis.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <utility>
#include <vector>

#include "analyser/audio_service_map_manager.h"
#include "analyser/stream_list.h"
#include "api/ebu_r123.h"
#include "catalogue/host_text.h"
#include "standards/ebu_r123_evaluation.h"

namespace kestrel {

namespace {

// A block from malloc() with the records, a real one for no records too; NULL when there is no
// memory. The labels are empty, so that freeing the block leaves nothing behind.
ServiceMapResult* toBlock(std::vector<ServiceMapResult> records) {
  const std::size_t bytes = std::max<std::size_t>(records.size() * sizeof(ServiceMapResult), 1);
  auto* const block = static_cast<ServiceMapResult*>(std::malloc(bytes));
  if (block != nullptr) std::uninitialized_move(records.begin(), records.end(), block);
  return block;
}

}  // namespace

void getServiceMapEbuR123(const char* layoutDescription, std::uint32_t allowTwoTrackStreams,
                          const AudioStreamInfo* streams, std::int32_t streamCount,
                          ServiceMapResult** block, std::int32_t* resultCount, std::int32_t* item) {
  if (block == nullptr || resultCount == nullptr || item == nullptr) return;
  const AudioServiceMapManager manager(viewOf(layoutDescription), L" ",
                                       (allowTwoTrackStreams & 0xFF) != 0, streams, streamCount,
                                       false, false);
  std::int32_t decided = *item;
  std::vector<ServiceMapResult> records =
      evaluateEbuR123(streamSpan(streams, streamCount), manager.allowTwoTrackStreams(),
                      manager.EbuR123Configurations, decided);
  *item = decided;
  if (decided == NO_SERVICE_MAP_ITEM) return;
  *resultCount = static_cast<std::int32_t>(records.size());
  *block = toBlock(std::move(records));
}

}  // namespace kestrel
