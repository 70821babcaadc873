// The analyser: one object for each analysing call, whichever interface it comes through.
//
// Construction counts the file's tracks and reads the layout description into expected services.
// detectServices() lays these over the tracks. Nothing of an object outlives the call but the track
// numbers that it took from the process-wide counter.
#pragma once

#include <cstdint>
#include <memory_resource>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "analyser/detection.h"
#include "analyser/expected_services.h"
#include "analyser/file_streams.h"
#include "analyser/file_tracks.h"
#include "api/service_map_result.h"

namespace kestrel {

/// What a call does to the records of its host.
enum class Outcome {
  kUntouched,  // the services do not line up with the tracks: none
  kEmptied,    // neighbouring tracks of a service disagree: the records are dropped
  kFilled,     // the tracks carry the services: one record for each placed service
};

class AudioServiceMapManager {
 public:
  /// The description is not copied: it must outlive the object, as must the memory that the streams
  /// are in, which the object uses too. Raises std::bad_alloc.
  AudioServiceMapManager(std::string_view layoutDescription, FileStreams streams, bool reportAll,
                         bool surroundCheck);

  /// Called once. Raises std::bad_alloc.
  Outcome detectServices();

  /// One record for each placed service; after detectServices() returned kFilled. Raises
  /// std::bad_alloc or std::length_error.
  std::vector<ServiceMapResult> buildResults(std::wstring_view surroundChannelOrder) const;

  bool hasStreams() const { return hasStreams_; }
  std::uint32_t fileTrackCount() const { return fileTrackCount_; }
  std::span<const ExpectedService> expectedServices() const { return expectedServices_; }
  const FileTracks& fileTracks() const { return fileTracks_; }

  // What detectServices() found; the last two only if nothing is misaligned.
  const std::optional<Misalignment>& misalignment() const { return misalignment_; }
  const Placement& placement() const { return placement_; }
  const Disagreements& disagreements() const { return disagreements_; }

 private:
  std::pmr::memory_resource* memory_;
  bool hasStreams_;
  bool surroundCheck_;
  std::uint32_t fileTrackCount_;
  ExpectedServices expectedServices_;
  FileTracks fileTracks_;
  std::optional<Misalignment> misalignment_;
  Placement placement_;
  Disagreements disagreements_;
};

}  // namespace kestrel
