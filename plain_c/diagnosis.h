// Says why a file does not carry its services, and what is odd about those that it carries. It
// reads what the detection left behind and repeats none of it; only labels are looked at anew, one
// by one, where the detection merely asked whether they make a set.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "analyser/assignment.h"
#include "analyser/audio_service_map_manager.h"
#include "analyser/scratch_list.h"
#include "analyser/surround_labels.h"
#include "api/kestrel.h"

namespace kestrel {

/// Gathers the findings of one analysis. Functions that gather raise std::bad_alloc.
class Diagnosis {
 public:
  /// @param layoutDescription     the text that the analyser's service list is a part of
  /// @param surroundChannelOrder  in UTF-8
  Diagnosis(const AudioServiceMapManager& analyser, std::string_view layoutDescription,
            std::string_view surroundChannelOrder, bool surroundCheck)
      : analyser_(analyser),
        layoutDescription_(layoutDescription),
        surroundChannelOrder_(surroundChannelOrder),
        surroundCheck_(surroundCheck) {}

  /// Why detectServices() returned 0.
  void explainDetection();

  /// What one service of the walk shows. Returns whether its neighbouring tracks agree.
  bool explainFinding(const ServiceFinding& finding);

  /// What is left when the walk has ended: pair-coded services that took nothing, and the tracks
  /// behind the last service.
  void explainRest(TrackCursor firstLeftOver);

  /// Elements of the description that name nothing.
  void explainElements();

  std::size_t findingCount() const;

  /// Writes all findings: errors first, then the others, those on no service last.
  void writeFindings(KestrelFinding* out) const;

 private:
  using Findings = ScratchList<KestrelFinding, 4>;

  Findings& listOf(std::int32_t code);
  KestrelFinding& add(std::int32_t code);
  KestrelFinding& addAt(std::int32_t code, std::int32_t service, std::int64_t slot,
                        TrackCursor track);
  std::int32_t indexOf(const ExpectedService& service) const;
  const std::optional<SurroundOrder>& channelOrder();
  void explainMisalignment(const Misalignment& misalignment);
  void explainNeighbours(const ServiceFinding& finding, std::int32_t service);
  void explainLabels(const ServiceFinding& finding, std::int32_t service);
  void explainSkipped(std::int32_t end);
  void addWithoutTrack(std::int32_t service);

  const AudioServiceMapManager& analyser_;
  std::string_view layoutDescription_;
  std::string_view surroundChannelOrder_;
  bool surroundCheck_;
  std::int32_t nextService_ = 0;  // of the walk
  // The labels of the surround channel order, where it has all; read when a mix wants them.
  bool channelOrderIsRead_ = false;
  std::optional<SurroundOrder> channelOrder_;
  // Each in the order of the services.
  Findings errors_;
  Findings elements_;
  Findings remarks_;  // the one on no service last
};

}  // namespace kestrel
