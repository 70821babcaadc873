// The analyser, its findings and those of the diagnosis stand on the stack. What is kept of them is
// copied when its size is known, into a block that is as small as can be: the C library allocates
// small blocks much quicker than one with room for everything.
#include "plain_c/kept_analysis.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <new>
#include <type_traits>

#include "analyser/assignment.h"
#include "analyser/audio_service_map_manager.h"
#include "analyser/scratch_list.h"
#include "plain_c/diagnosis.h"

namespace kestrel {

namespace {

static_assert(std::is_trivially_destructible_v<KestrelAnalysis>);

using KeptServices = ScratchList<KeptService, 32>;

// Sets each field in its place, like readStream().
void keepService(const ServiceFinding& finding, std::int32_t index, KeptService& service) {
  service.first = finding.first;
  service.found = finding.found;
  service.trackCount = finding.trackCount;
  service.index = index;
  service.streamType = finding.service->streamType;
  service.isEmca = finding.service->isEmca;
  service.requested = finding.service->requested;
  service.derivedLabel = {};
  if (finding.labels)
    std::ranges::copy(textOf<char>(*finding.labels), service.derivedLabel.begin());
}

// Returns the outcome.
std::int32_t findServices(const AudioServiceMapManager& analyser, Diagnosis& diagnosis,
                          KeptServices& services) {
  const ExpectedService* const expected = analyser.expectedServices().data();
  bool agree = true;
  Assignment walk = analyser.assignment();
  while (walk.next()) {
    const ServiceFinding& finding = walk.finding();
    if (!diagnosis.explainFinding(finding)) agree = false;
    keepService(finding, static_cast<std::int32_t>(finding.service - expected), services.append());
  }
  diagnosis.explainRest(walk.at());
  return agree ? KESTREL_FILLED : KESTREL_EMPTIED;
}

// The room for a list behind what the block holds already.
template <class T>
T* take(std::byte*& end, std::size_t size) {
  T* const room = reinterpret_cast<T*>(end);
  end += size * sizeof(T);
  return room;
}

template <class T>
std::span<const T> copy(std::span<const T> list, std::byte*& end) {
  T* const room = take<T>(end, list.size());
  if (!list.empty()) std::memcpy(room, list.data(), list.size_bytes());
  return {room, list.size()};
}

// Copies a text with the NUL behind it.
std::string_view copy(std::string_view text, std::byte*& end) {
  return {copy(std::span(text.data(), text.size() + 1), end).data(), text.size()};
}

// Lists of larger alignment stand in front, so that there are no gaps.
KestrelAnalysis* inOneBlock(const CheckedRequest& request, const Diagnosis& diagnosis,
                            std::span<const StreamTracks> tracks,
                            std::span<const KeptService> services) {
  static_assert(alignof(KestrelAnalysis) == alignof(KestrelFinding));
  static_assert(alignof(KestrelFinding) >= alignof(StreamTracks));
  static_assert(alignof(StreamTracks) >= alignof(KeptService));
  const std::size_t findings = diagnosis.findingCount();
  const std::size_t size = sizeof(KestrelAnalysis) + findings * sizeof(KestrelFinding) +
                           tracks.size_bytes() + services.size_bytes() +
                           request.layoutDescription.size() + 1 +
                           request.surroundChannelOrder.size() + 1;
  auto* end = static_cast<std::byte*>(::operator new(size));
  auto* const kept = new (take<KestrelAnalysis>(end, 1)) KestrelAnalysis;
  auto* const room = take<KestrelFinding>(end, findings);
  diagnosis.writeFindings(room);
  kept->findings = {room, findings};
  kept->tracks = TrackList(copy(tracks, end));
  kept->services = copy(services, end);
  kept->layoutDescription = copy(request.layoutDescription, end);
  kept->surroundChannelOrder = copy(request.surroundChannelOrder, end);
  return kept;
}

}  // namespace

KestrelAnalysis* makeAnalysis(const CheckedRequest& request) {
  // Its 5.1 mixes carry no label of their own here: the order is kept in UTF-8.
  AudioServiceMapManager analyser(request.layoutDescription, {}, false, request.streams,
                                  request.reportAll, request.surroundCheck);
  Diagnosis diagnosis(analyser, request.layoutDescription, request.surroundChannelOrder,
                      request.surroundCheck);
  KeptServices services;
  std::int32_t outcome = KESTREL_UNTOUCHED;
  if (analyser.detectServices() == 0) {
    diagnosis.explainDetection();
  } else {
    outcome = findServices(analyser, diagnosis, services);
  }
  diagnosis.explainElements();
  KestrelAnalysis* const analysis =
      outcome == KESTREL_FILLED
          ? inOneBlock(request, diagnosis, analyser.fileTracks().records(), services.records())
          : inOneBlock(request, diagnosis, {}, {});
  analysis->outcome = outcome;
  analysis->trackTotal = analyser.fileTrackCount();
  return analysis;
}

void freeAnalysis(KestrelAnalysis* analysis) noexcept { ::operator delete(analysis); }

}  // namespace kestrel
