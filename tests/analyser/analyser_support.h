// An analyser with what must outlive it.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "analyser/audio_service_map_manager.h"
#include "analyser/call_memory.h"
#include "api/audio_stream_info.h"

namespace kestrel {

struct Analyser {
  explicit Analyser(const std::vector<AudioStreamInfo>& streams, std::string text = "",
                    bool reportAll = false, bool surroundCheck = false)
      : description(std::move(text)),
        manager(description, readStreams(streams, surroundCheck, memory.resource()), reportAll) {}

  const FileTracks& tracks() const { return manager.fileTracks(); }

  std::string description;
  CallMemory memory;
  AudioServiceMapManager manager;
};

}  // namespace kestrel
