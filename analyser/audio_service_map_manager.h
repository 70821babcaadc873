// The analyser: one object per analysing call, built on the caller's stack from the caller's
// inputs.
//
// Construction counts the file's tracks and reads the layout description into expected services.
// detectServices() then decides whether the services line up with the tracks, and buildResults()
// turns them into records. Nothing of an object outlives the call but the track numbers that it
// took from the process-wide counter.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "analyser/alignment.h"
#include "analyser/assignment.h"
#include "analyser/ebu_r123_configurations.h"
#include "analyser/expected_services.h"
#include "analyser/file_tracks.h"
#include "analyser/stream_list.h"
#include "api/audio_stream_info.h"
#include "api/catalogue_ids.h"
#include "api/service_map_result.h"

namespace kestrel {

class AudioServiceMapManager {
 public:
  /// The texts and the streams are not copied: they must outlive the object. NULL streams, and a
  /// count below 1, are no streams. Raises std::bad_alloc.
  AudioServiceMapManager(std::string_view layoutDescription, std::wstring_view surroundChannelOrder,
                         bool allowTwoTrackStreams, const AudioStreamInfo* streams,
                         std::int32_t streamCount, bool reportAll, bool surroundCheck)
      : AudioServiceMapManager(layoutDescription, surroundChannelOrder, allowTwoTrackStreams,
                               streamSpan(streams, streamCount), reportAll, surroundCheck) {}
  AudioServiceMapManager(std::string_view layoutDescription, std::wstring_view surroundChannelOrder,
                         bool allowTwoTrackStreams, StreamList streams, bool reportAll,
                         bool surroundCheck);
  virtual ~AudioServiceMapManager();
  AudioServiceMapManager(const AudioServiceMapManager&) = delete;
  AudioServiceMapManager& operator=(const AudioServiceMapManager&) = delete;

  /// 1 when the expected services line up with the file's tracks; 0 when they do not, or when there
  /// are no streams or no expected services. Called once, before buildResults().
  std::int32_t detectServices();

  /// Fills `results` with one record per reported service. Where neighbouring tracks of a service
  /// disagree it empties `results` and sets `status` to NO_SERVICE_MAP_ITEM instead; else `status`
  /// stays as it is. Raises std::bad_alloc or std::length_error.
  void buildResults(std::vector<ServiceMapResult>& results, std::int32_t& status);

  /// The table of the EBU R 123 analysis. No operation of the library adds to it.
  R123Configurations EbuR123Configurations;

  std::uint32_t fileTrackCount() const noexcept { return fileTrackCount_; }
  StreamList streams() const noexcept { return fileTracks_.streams(); }
  bool allowTwoTrackStreams() const noexcept { return allowTwoTrackStreams_; }
  /// The service list of the description's entry that was chosen; empty when none was.
  std::string_view serviceList() const noexcept { return serviceList_; }
  std::span<const ExpectedService> expectedServices() const noexcept {
    return expectedServices_.records();
  }
  /// The file's tracks; after detectServices() returned 1 or misalignment() is set.
  const FileTracks& fileTracks() const noexcept { return fileTracks_; }
  /// Why the services do not line up, where it is for their tracks that detectServices() returned
  /// 0.
  const std::optional<Misalignment>& misalignment() const noexcept { return misalignment_; }

  /// The walk over what the tracks hold; after detectServices().
  Assignment assignment() const noexcept {
    return {expectedServices_.records(), fileTracks_, surroundCheck_};
  }

 private:
  void appendRecord(std::vector<ServiceMapResult>& results, const ServiceFinding& finding) const;

  std::uint32_t fileTrackCount_;
  bool allowTwoTrackStreams_;
  bool surroundCheck_;
  std::string_view serviceList_;
  ExpectedServices expectedServices_;
  FileTracks fileTracks_;
  std::optional<Misalignment> misalignment_;
};

}  // namespace kestrel
