#include "plain_c/diagnosis.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

#include "analyser/layout_description.h"
#include "analyser/neighbours.h"
#include "analyser/surround_labels.h"
#include "api/service_map_result.h"

namespace kestrel {

namespace {

constexpr std::int32_t kFirstRemark = 100;

// Tracks from the cursor to the end of the file.
std::int64_t tracksFrom(const FileTracks& tracks, TrackCursor at) {
  std::int64_t count = 0;
  for (; !tracks.atEnd(at); at = at.nextStream()) count += tracks.restOfStream(at);
  return count;
}

}  // namespace

Diagnosis::Findings& Diagnosis::listOf(std::int32_t code) {
  if (code < kFirstRemark) return errors_;
  if (code == KESTREL_UNKNOWN_SERVICE || code == KESTREL_EMPTY_ELEMENT) return elements_;
  return remarks_;
}

KestrelFinding& Diagnosis::add(std::int32_t code) {
  KestrelFinding& finding = listOf(code).append();
  finding = {};
  finding.code = code;
  finding.service = finding.slot = finding.stream = -1;
  finding.track = finding.textOffset = finding.textLength = -1;
  return finding;
}

KestrelFinding& Diagnosis::addAt(std::int32_t code, std::int32_t service, std::int64_t slot,
                                 TrackCursor track) {
  KestrelFinding& finding = add(code);
  finding.service = service;
  finding.slot = static_cast<std::int32_t>(slot);
  const StreamTracks& tracks = analyser_.fileTracks().tracks(track);
  finding.stream = tracks.stream;
  finding.track = tracks.trackNumber;
  return finding;
}

std::int32_t Diagnosis::indexOf(const ExpectedService& service) const {
  return static_cast<std::int32_t>(&service - analyser_.expectedServices().data());
}

void Diagnosis::explainDetection() {
  if (analyser_.streams().empty()) {
    add(KESTREL_NO_STREAMS);
  } else if (analyser_.expectedServices().empty()) {
    add(KESTREL_NO_ENTRY).first = analyser_.fileTrackCount();
  } else {
    explainMisalignment(*analyser_.misalignment());
  }
}

void Diagnosis::explainMisalignment(const Misalignment& misalignment) {
  const FileTracks& tracks = analyser_.fileTracks();
  const auto service = static_cast<std::int32_t>(misalignment.service);
  if (!tracks.atEnd(misalignment.at)) {
    const bool pairCoded = tracks.tracks(misalignment.at).isPairCoded != 0;
    addAt(pairCoded ? KESTREL_PAIR_CODED_TRACK : KESTREL_PLAIN_TRACK, service, misalignment.slot,
          misalignment.at);
    return;
  }
  KestrelFinding& finding = add(KESTREL_TOO_FEW_TRACKS);
  finding.service = service;
  finding.slot = misalignment.slot;
  finding.first = analyser_.expectedServices()[misalignment.service].trackCount;
  finding.second = misalignment.slot;
}

bool Diagnosis::explainFinding(const ServiceFinding& finding) {
  const std::int32_t service = indexOf(*finding.service);
  const std::size_t errorsBefore = errors_.records().size();
  explainSkipped(service);
  if (finding.trackCount == 1 && finding.found == 0) addWithoutTrack(service);
  explainNeighbours(finding, service);
  if (finding.given > finding.found) {
    KestrelFinding& run = addAt(KESTREL_RUN_TOO_LONG, service, -1, finding.first);
    run.first = kSlotCount;
    run.second = finding.given;
  }
  if (surroundCheck_ && finding.service->streamType == k51Mix) explainLabels(finding, service);
  return errors_.records().size() == errorsBefore;
}

void Diagnosis::explainNeighbours(const ServiceFinding& finding, std::int32_t service) {
  const FileTracks& tracks = analyser_.fileTracks();
  for (DisagreementWalk walk(finding, tracks); walk.next();) {
    const StreamTracks& left = tracks.tracks(walk.left());
    const StreamTracks& right = tracks.tracks(walk.right());
    const auto compare = [&](std::int32_t code, std::int32_t first, std::int32_t second) {
      if (first == second) return;
      KestrelFinding& difference = addAt(code, service, walk.slot(), walk.right());
      difference.first = first;
      difference.second = second;
    };
    compare(KESTREL_KEY1_DIFFERS, left.formatKey1, right.formatKey1);
    compare(KESTREL_KEY2_DIFFERS, left.formatKey2, right.formatKey2);
    compare(KESTREL_KEY3_DIFFERS, left.formatKey3, right.formatKey3);
  }
  if (!lacksNeighbours(finding)) return;
  KestrelFinding& missing = add(KESTREL_TOO_FEW_TRACKS);
  missing.service = service;
  missing.slot = finding.found;
  missing.first = finding.trackCount;
  missing.second = finding.found;
}

const std::optional<SurroundOrder>& Diagnosis::channelOrder() {
  if (!std::exchange(channelOrderIsRead_, true))
    channelOrder_ = surroundOrderOf(surroundChannelOrder_);
  return channelOrder_;
}

// Labels are looked at one by one; their order only when they make a full set.
void Diagnosis::explainLabels(const ServiceFinding& finding, std::int32_t service) {
  const std::optional<SurroundOrder>& order = channelOrder();
  if (finding.labels && (!order || order == finding.labels)) return;
  const FileTracks& tracks = analyser_.fileTracks();
  std::array<std::int32_t, kSurroundLabelCount> firstSlot{};
  firstSlot.fill(-1);
  std::optional<std::pair<std::int32_t, TrackCursor>> reordered;
  SurroundLabelReader reader(tracks);
  TrackCursor at = finding.first;
  for (std::int32_t slot = 0; slot < finding.found; ++slot, at = tracks.advance(at, 1)) {
    const SurroundLabel label = reader.labelOf(at);
    if (label == kNoLabel) {
      addAt(KESTREL_LABEL_MISSING, service, slot, at);
    } else if (label == kOtherLabel) {
      addAt(KESTREL_LABEL_UNKNOWN, service, slot, at);
    } else if (std::int32_t& first = firstSlot[static_cast<std::size_t>(label)]; first >= 0) {
      addAt(KESTREL_LABEL_DOUBLED, service, slot, at).first = first;
    } else {
      first = slot;
      if (!reordered && order && label != (*order)[static_cast<std::size_t>(slot)])
        reordered.emplace(slot, at);
    }
  }
  if (finding.labels) addAt(KESTREL_LABELS_REORDERED, service, reordered->first, reordered->second);
}

// An EMCA service that meets no pair-coded track where the walk has come to yields no finding.
void Diagnosis::explainSkipped(std::int32_t end) {
  for (; nextService_ < end; ++nextService_) {
    const ExpectedService& service =
        analyser_.expectedServices()[static_cast<std::size_t>(nextService_)];
    if (service.isEmca && service.reported) addWithoutTrack(nextService_);
  }
  nextService_ = std::max(nextService_, end + 1);
}

void Diagnosis::addWithoutTrack(std::int32_t service) {
  KestrelFinding& finding = add(KESTREL_SERVICE_WITHOUT_TRACK);
  finding.service = service;
  finding.first = analyser_.expectedServices()[static_cast<std::size_t>(service)].trackCount;
}

void Diagnosis::explainRest(TrackCursor firstLeftOver) {
  explainSkipped(static_cast<std::int32_t>(analyser_.expectedServices().size()));
  const FileTracks& tracks = analyser_.fileTracks();
  if (tracks.atEnd(firstLeftOver)) return;
  const std::int64_t all = tracksFrom(tracks, {});
  KestrelFinding& rest = addAt(KESTREL_TRACKS_LEFT_OVER, -1, -1, firstLeftOver);
  rest.first = all - tracksFrom(tracks, firstLeftOver);
  rest.second = all;
}

void Diagnosis::explainElements() {
  const auto services = analyser_.expectedServices();
  // Read again only if there is something to say.
  if (std::ranges::find(services, kUnknown, &ExpectedService::streamType) == services.end()) return;
  std::string_view list = analyser_.serviceList();
  for (std::int32_t service = 0; const auto element = takeElement(list); ++service) {
    if (element->service != kUnknown) continue;
    KestrelFinding& finding =
        add(element->text.empty() ? KESTREL_EMPTY_ELEMENT : KESTREL_UNKNOWN_SERVICE);
    finding.service = service;
    finding.textOffset = element->text.data() - layoutDescription_.data();
    finding.textLength = std::ssize(element->text);
  }
}

std::size_t Diagnosis::findingCount() const {
  return errors_.records().size() + elements_.records().size() + remarks_.records().size();
}

void Diagnosis::writeFindings(KestrelFinding* out) const {
  const auto errors = errors_.records();
  out = std::copy(errors.begin(), errors.end(), out);
  // No service, -1, is the largest of these numbers.
  const auto service = [](const KestrelFinding& finding) {
    return static_cast<std::uint32_t>(finding.service);
  };
  std::ranges::merge(elements_.records(), remarks_.records(), out, {}, service, service);
}

}  // namespace kestrel
