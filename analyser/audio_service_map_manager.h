// The analyser: one object per analysing call, for both interfaces.
//
// The constructor counts the file's tracks and reads the expected services from the layout
// description. detectServices() matches them with the tracks. Nothing of the object outlives the
// call except that the process-wide counter of track numbers has moved on.
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
  kUntouched,  // the services do not line up with the tracks: the records stay as they are
  kEmptied,    // neighbouring tracks of a service do not agree: there are no records
  kFilled,     // the tracks carry the services: one record for each placed service
};

class AudioServiceMapManager {
 public:
  /// Does not copy the description, which must outlive the object. So must the memory resource of
  /// the streams, which the object uses as well. Raises std::bad_alloc.
  AudioServiceMapManager(std::string_view layoutDescription, FileStreams streams, bool reportAll);

  /// Called once. Raises std::bad_alloc.
  Outcome detectServices();

  /// One record for each placed service. Call it only if detectServices() returned kFilled. Raises
  /// std::bad_alloc or std::length_error.
  std::vector<ServiceMapResult> buildResults(std::wstring_view surroundChannelOrder) const;

  bool hasStreams() const { return hasStreams_; }
  std::uint32_t fileTrackCount() const { return fileTrackCount_; }
  std::span<const ExpectedService> expectedServices() const { return expectedServices_; }
  const FileTracks& fileTracks() const { return fileTracks_; }

  // What detectServices() found. The last two are empty if the services do not line up.
  const std::optional<Misalignment>& misalignment() const { return misalignment_; }
  const Placement& placement() const { return placement_; }
  const Disagreements& disagreements() const { return disagreements_; }

 private:
  std::pmr::memory_resource* memory_;
  bool hasStreams_;
  std::uint32_t fileTrackCount_;
  ExpectedServices expectedServices_;
  FileTracks fileTracks_;
  std::optional<Misalignment> misalignment_;
  Placement placement_;
  Disagreements disagreements_;
};

}  // namespace kestrel
