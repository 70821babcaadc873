#include "plain_c/diagnosis.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

#include "analyser/surround_labels.h"
#include "api/service_map_result.h"

namespace kestrel {

namespace {

static_assert(KESTREL_KEY2_DIFFERS == KESTREL_KEY1_DIFFERS + 1);
static_assert(KESTREL_KEY3_DIFFERS == KESTREL_KEY1_DIFFERS + 2);

constexpr std::int32_t kNone = -1;

class Diagnosis {
 public:
  Diagnosis(const AudioServiceMapManager& analyser, const CheckedRequest& request,
            std::pmr::memory_resource* memory)
      : analyser_(analyser), tracks_(analyser.fileTracks()), request_(request) {
    SurroundLabels labels(memory);
    appendLabels(request.surroundChannelOrder, labels);
    hostsOrder_ = checkSurroundLabels(labels);
  }

  void explainUntouched();
  void explainDisagreements();
  void explainServices(Outcome outcome);
  void explainRest();

  std::vector<KestrelFinding> takeFindings() { return std::move(findings_); }

 private:
  KestrelFinding& add(std::int32_t code, const ExpectedService* service);
  KestrelFinding& addAt(std::int32_t code, const ExpectedService* service, std::int32_t slot,
                        TrackCursor at);
  void addTooFewTracks(const ExpectedService& service, std::int32_t found);
  void addWithoutTrack(const ExpectedService& service);
  void explainElement(const ExpectedService& service);
  void explainPlaced(const PlacedService& placed);
  void explainOrder(const PlacedService& placed);
  void explainLabels(const PlacedService& placed);

  const AudioServiceMapManager& analyser_;
  const FileTracks& tracks_;
  const CheckedRequest& request_;
  std::optional<SurroundOrder> hostsOrder_;  // if it has all six labels
  std::vector<KestrelFinding> findings_;
};

// The finding is on no service if that is nullptr.
KestrelFinding& Diagnosis::add(std::int32_t code, const ExpectedService* service) {
  KestrelFinding& finding = findings_.emplace_back();
  finding.code = code;
  finding.service = service == nullptr ? kNone : service->index;
  finding.slot = finding.stream = kNone;
  finding.track = finding.textOffset = finding.textLength = kNone;
  return finding;
}

KestrelFinding& Diagnosis::addAt(std::int32_t code, const ExpectedService* service,
                                 std::int32_t slot, TrackCursor at) {
  KestrelFinding& finding = add(code, service);
  finding.slot = slot;
  finding.stream = tracks_.stream(at).index;
  finding.track = tracks_.stream(at).trackNumber;
  return finding;
}

void Diagnosis::addTooFewTracks(const ExpectedService& service, std::int32_t found) {
  KestrelFinding& finding = add(KESTREL_TOO_FEW_TRACKS, &service);
  finding.slot = found;
  finding.first = service.trackCount;
  finding.second = found;
}

void Diagnosis::addWithoutTrack(const ExpectedService& service) {
  add(KESTREL_SERVICE_WITHOUT_TRACK, &service).first = service.trackCount;
}

void Diagnosis::explainUntouched() {
  if (!analyser_.hasStreams()) {
    add(KESTREL_NO_STREAMS, nullptr);
  } else if (analyser_.expectedServices().empty()) {
    add(KESTREL_NO_ENTRY, nullptr).first = analyser_.fileTrackCount();
  } else {
    const Misalignment& misalignment = *analyser_.misalignment();
    if (tracks_.atEnd(misalignment.at)) {
      addTooFewTracks(*misalignment.service, misalignment.slot);
    } else {
      const bool pairCoded = tracks_.stream(misalignment.at).isPairCoded != 0;
      addAt(pairCoded ? KESTREL_PAIR_CODED_TRACK : KESTREL_PLAIN_TRACK, misalignment.service,
            misalignment.slot, misalignment.at);
    }
  }
}

void Diagnosis::explainDisagreements() {
  for (const Disagreement& disagreement : analyser_.disagreements()) {
    if (tracks_.atEnd(disagreement.right)) {
      addTooFewTracks(*disagreement.service, disagreement.slot);
      continue;
    }
    const FormatKeys& left = tracks_.stream(disagreement.left).formatKeys;
    const FormatKeys& right = tracks_.stream(disagreement.right).formatKeys;
    for (std::size_t key = 0; key < left.size(); ++key) {
      if (left[key] == right[key]) continue;
      KestrelFinding& finding = addAt(KESTREL_KEY1_DIFFERS + static_cast<std::int32_t>(key),
                                      disagreement.service, disagreement.slot, disagreement.right);
      finding.first = left[key];
      finding.second = right[key];
    }
  }
}

// Every reported service is placed, except a pair-coded one that meets no pair-coded track.
void Diagnosis::explainServices(Outcome outcome) {
  const PlacedServices& placed = analyser_.placement().services;
  auto next = placed.begin();
  for (const ExpectedService& service : analyser_.expectedServices()) {
    if (service.streamType == kUnknown) explainElement(service);
    if (outcome == Outcome::kUntouched || !service.reported) continue;
    const auto first = next;
    for (; next != placed.end() && next->service == &service; ++next) explainPlaced(*next);
    if (next == first) addWithoutTrack(service);
  }
}

void Diagnosis::explainElement(const ExpectedService& service) {
  const std::string_view element = service.element;
  KestrelFinding& finding =
      add(element.empty() ? KESTREL_EMPTY_ELEMENT : KESTREL_UNKNOWN_SERVICE, &service);
  finding.textOffset = element.data() - request_.layoutDescription.data();
  finding.textLength = std::ssize(element);
}

void Diagnosis::explainPlaced(const PlacedService& placed) {
  if (placed.trackCount == 1 && placed.found == 0) addWithoutTrack(*placed.service);
  if (placed.given > placed.found) {
    KestrelFinding& run = addAt(KESTREL_RUN_TOO_LONG, placed.service, kNone, placed.first);
    run.first = kSlotCount;
    run.second = placed.given;
  }
  if (!request_.surroundCheck || placed.service->streamType != k51Mix) return;
  placed.labels ? explainOrder(placed) : explainLabels(placed);
}

void Diagnosis::explainOrder(const PlacedService& placed) {
  if (!hostsOrder_ || hostsOrder_ == placed.labels) return;
  TrackCursor at = placed.first;
  std::int32_t slot = 0;
  for (; (*placed.labels)[static_cast<std::size_t>(slot)] ==
         (*hostsOrder_)[static_cast<std::size_t>(slot)];
       ++slot)
    tracks_.pass(at, 1);
  addAt(KESTREL_LABELS_REORDERED, placed.service, slot, at);
}

void Diagnosis::explainLabels(const PlacedService& placed) {
  std::array<std::int32_t, kSurroundLabels.size()> firstSlot{};
  firstSlot.fill(kNone);
  TrackCursor at = placed.first;
  for (std::int32_t slot = 0; slot < placed.found; ++slot, tracks_.pass(at, 1)) {
    const SurroundLabel label = tracks_.label(at);
    if (label == kNoLabel) {
      addAt(KESTREL_LABEL_MISSING, placed.service, slot, at);
    } else if (label == kOtherLabel) {
      addAt(KESTREL_LABEL_UNKNOWN, placed.service, slot, at);
    } else if (std::int32_t& first = firstSlot[static_cast<std::size_t>(label)]; first == kNone) {
      first = slot;
    } else {
      addAt(KESTREL_LABEL_DOUBLED, placed.service, slot, at).first = first;
    }
  }
}

void Diagnosis::explainRest() {
  const TrackCursor end = analyser_.placement().end;
  if (tracks_.atEnd(end)) return;
  const std::int64_t all = tracks_.countFrom({});
  KestrelFinding& rest = addAt(KESTREL_TRACKS_LEFT_OVER, nullptr, kNone, end);
  rest.first = all - tracks_.countFrom(end);
  rest.second = all;
}

}  // namespace

std::vector<KestrelFinding> diagnose(const AudioServiceMapManager& analyser, Outcome outcome,
                                     const CheckedRequest& request,
                                     std::pmr::memory_resource* memory) {
  Diagnosis diagnosis(analyser, request, memory);
  // Errors first, each part in the order of the services.
  if (outcome == Outcome::kUntouched) diagnosis.explainUntouched();
  diagnosis.explainDisagreements();
  diagnosis.explainServices(outcome);
  if (outcome != Outcome::kUntouched) diagnosis.explainRest();
  return diagnosis.takeFindings();
}

}  // namespace kestrel
