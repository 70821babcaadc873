// The exported entry point of the EBU R 123 analysis.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <utility>
#include <vector>

#include "analyser/audio_service_map_manager.h"
#include "analyser/call_memory.h"
#include "api/ebu_r123.h"
#include "catalogue/host_text.h"
#include "standards/ebu_r123_evaluation.h"

namespace kestrel {

namespace {

// A block from malloc() with the records; not NULL even for no records, but NULL if there is no
// memory. The labels are empty, so the host frees everything when it frees the block.
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
  // The services are not used, but they take their track numbers from the process-wide counter.
  CallMemory memory;
  const auto records = streamSpan(streams, streamCount);
  const AudioServiceMapManager manager(viewOf(layoutDescription),
                                       readStreams(records, false, memory.resource()), false);
  const R123Configurations configurations;  // always empty: no function adds to it
  std::int32_t decided = *item;
  std::vector<ServiceMapResult> found =
      evaluateEbuR123(records, (allowTwoTrackStreams & 0xFF) != 0, configurations, decided);
  *item = decided;
  if (decided == NO_SERVICE_MAP_ITEM) return;
  *resultCount = static_cast<std::int32_t>(found.size());
  *block = toBlock(std::move(found));
}

}  // namespace kestrel
