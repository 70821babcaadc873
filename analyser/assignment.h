// Gives the expected services their tracks, in order, and hands out the services that are to be
// reported, one finding after the other. It assumes nothing of the alignment check: a service that
// finds no tracks left keeps the shape that it was expected in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "analyser/expected_services.h"
#include "analyser/file_tracks.h"
#include "analyser/surround_labels.h"

namespace kestrel {

/// A service and the consecutive file tracks that it was given.
struct ServiceFinding {
  const ExpectedService* service = nullptr;
  std::optional<SurroundOrder> labels;  // derived from the tracks; else that of the service holds
  std::int32_t trackCount = 0;          // as reported: at most 32; -1 for a service of unknown name
  std::int32_t found = 0;               // tracks that fill slots, at most trackCount
  std::int64_t given = 0;  // tracks really given: more than slots in a long pair-coded run
  TrackCursor first;       // the first of them
};

class Assignment {
 public:
  /// @param surroundCheck  derive the labels of 5.1 mixes from the tracks
  Assignment(std::span<const ExpectedService> services, const FileTracks& tracks,
             bool surroundCheck) noexcept
      : services_(services), tracks_(tracks), labelReader_(tracks), surroundCheck_(surroundCheck) {}

  /// Moves to the next reported finding; false when all services are walked.
  bool next() noexcept;

  /// The finding that next() moved to.
  const ServiceFinding& finding() const { return finding_; }

  /// The track behind those that were given away so far.
  TrackCursor at() const { return at_; }

 private:
  bool takeProgramme(const ExpectedService& service);
  void takeTracks(const ExpectedService& service);

  std::span<const ExpectedService> services_;
  const FileTracks& tracks_;
  SurroundLabelReader labelReader_;
  bool surroundCheck_;

  std::size_t nextService_ = 0;
  TrackCursor at_;
  std::optional<std::int32_t> emcaGroup_;  // set while an EMCA service takes its programmes
  ServiceFinding finding_;
};

}  // namespace kestrel
