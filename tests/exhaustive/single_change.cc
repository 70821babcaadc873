#include "tests/exhaustive/single_change.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace kestrel::test {
namespace {

using plain::Outcome;
using plain::PlainResult;

constexpr std::array<const char*, 9> kChangeNames = {
    "label unknown", "label repeated", "label missing", "labels swapped",  "format key 1",
    "format key 2",  "format key 3",   "pair coding",   "streams swapped",
};

constexpr std::array<const char*, 5> kEffectNames = {"untouched", "emptied", "same records",
                                                     "other labels", "other tracks"};

void append(ChangeKind kind, std::size_t count, std::vector<Change>& changes) {
  for (std::size_t at = 0; at < count; ++at) changes.push_back({kind, at});
}

std::size_t neighbourOf(const Item& item, std::size_t track) {
  return track + 1 < item.trackCount ? track + 1 : track - 1;
}

std::wstring labelOf(const Carrier& carrier, std::size_t track) {
  const Place place = placeOf(carrier, track);
  return labelsOf(carrier.streams[place.stream])[place.channel];
}

void setLabel(Carrier& carrier, std::size_t track, const std::wstring& label) {
  const Place place = placeOf(carrier, track);
  std::vector<std::wstring> labels = labelsOf(carrier.streams[place.stream]);
  labels[place.channel] = label;
  setLabels(carrier.streams[place.stream], labels);
}

void removeLabel(Carrier& carrier, std::size_t track) {
  const Place place = placeOf(carrier, track);
  std::vector<std::wstring> labels = labelsOf(carrier.streams[place.stream]);
  labels.erase(labels.begin() + static_cast<std::ptrdiff_t>(place.channel));
  setLabels(carrier.streams[place.stream], labels);
}

void changeLabels(const Item& item, const Change& change, Carrier& carrier) {
  const std::size_t neighbour = neighbourOf(item, change.at);
  const std::wstring own = labelOf(carrier, change.at);
  if (change.kind == ChangeKind::kLabelMissing) return removeLabel(carrier, change.at);
  if (change.kind == ChangeKind::kLabelUnknown) return setLabel(carrier, change.at, L"l");
  setLabel(carrier, change.at, labelOf(carrier, neighbour));
  if (change.kind == ChangeKind::kLabelsSwapped) setLabel(carrier, neighbour, own);
}

void turnPairCoding(AudioStreamInfo& stream) { stream.isPairCoded = stream.isPairCoded ? 0 : 1; }

bool isCoded(const Carrier& carrier, std::size_t stream) {
  return carrier.streams[stream].isPairCoded != 0;
}

bool isInSurround(const Item& item, std::size_t track) {
  return item.serviceOf(track).type == k51Mix;
}

bool hasTrackIn(const Carrier& carrier, const ItemService& service, std::size_t stream,
                bool inside) {
  for (std::size_t i = 0; i < service.trackCount; ++i) {
    if ((placeOf(carrier, service.firstTrack + i).stream == stream) == inside) return true;
  }
  return false;
}

// A stream's format clears the result when a plain service has tracks in it and tracks elsewhere.
bool sharesPlainService(const Item& item, const Carrier& carrier, std::size_t stream) {
  const auto isShared = [&](const ItemService& service) {
    return !service.isCoded && hasTrackIn(carrier, service, stream, true) &&
           hasTrackIn(carrier, service, stream, false);
  };
  return std::any_of(item.services.begin(), item.services.end(), isShared);
}

Effect labelEffect(const Carrier& carrier, bool inSurround) {
  return carrier.surroundCheck && inSurround ? Effect::kOtherLabels : Effect::kSameRecords;
}

bool differInLabelsAlone(const PlainResult& before, PlainResult after) {
  if (before.results.size() != after.results.size()) return false;
  for (std::size_t i = 0; i < after.results.size(); ++i) {
    after.results[i].label = before.results[i].label;
  }
  return plain::sameResults(before, after);
}

std::optional<Effect> ruleForCarried(const Item& item, const Carrier& carrier,
                                     const Change& change) {
  const std::size_t at = change.at;
  switch (change.kind) {
    case ChangeKind::kLabelUnknown:
    case ChangeKind::kLabelRepeated:
      return labelEffect(carrier, isInSurround(item, at));
    case ChangeKind::kLabelMissing:
      if (carrier.surroundCheck) return std::nullopt;
      return Effect::kSameRecords;
    case ChangeKind::kLabelsSwapped:
      return labelEffect(carrier, isInSurround(item, at) || isInSurround(item, at + 1));
    case ChangeKind::kFormatKey1:
    case ChangeKind::kFormatKey2:
    case ChangeKind::kFormatKey3:
      return sharesPlainService(item, carrier, at) ? Effect::kEmptied : Effect::kSameRecords;
    case ChangeKind::kPairCoding:
      return Effect::kUntouched;
    case ChangeKind::kStreamsSwapped:
      if (isCoded(carrier, at) || isCoded(carrier, at + 1)) return std::nullopt;
      return Effect::kOtherTracks;
  }
  return std::nullopt;
}

}  // namespace

const char* nameOf(ChangeKind kind) { return kChangeNames.at(static_cast<std::size_t>(kind)); }

const char* nameOf(Effect effect) { return kEffectNames.at(static_cast<std::size_t>(effect)); }

std::vector<Change> changesOf(const Item& item, const Carrier& carrier) {
  std::vector<Change> changes;
  const std::size_t tracks = item.trackCount;
  const std::size_t streams = carrier.streams.size();
  append(ChangeKind::kLabelUnknown, tracks, changes);
  append(ChangeKind::kLabelRepeated, tracks, changes);
  append(ChangeKind::kLabelMissing, tracks, changes);
  append(ChangeKind::kLabelsSwapped, tracks - 1, changes);
  append(ChangeKind::kFormatKey1, streams, changes);
  append(ChangeKind::kFormatKey2, streams, changes);
  append(ChangeKind::kFormatKey3, streams, changes);
  append(ChangeKind::kPairCoding, streams, changes);
  append(ChangeKind::kStreamsSwapped, streams - 1, changes);
  return changes;
}

Carrier changed(const Item& item, const Carrier& carrier, const Change& change) {
  Carrier result = carrier;
  if (isOfLabels(change.kind)) {
    changeLabels(item, change, result);
    return result;
  }
  AudioStreamInfo& stream = result.streams[change.at];
  if (change.kind == ChangeKind::kFormatKey1) ++stream.formatKey1;
  if (change.kind == ChangeKind::kFormatKey2) ++stream.formatKey2;
  if (change.kind == ChangeKind::kFormatKey3) ++stream.formatKey3;
  if (change.kind == ChangeKind::kPairCoding) turnPairCoding(stream);
  if (change.kind == ChangeKind::kStreamsSwapped) std::swap(stream, result.streams[change.at + 1]);
  return result;
}

Effect effectOf(const PlainResult& before, const PlainResult& after) {
  if (after.outcome == Outcome::kUntouched) return Effect::kUntouched;
  if (after.outcome == Outcome::kEmptied) return Effect::kEmptied;
  if (plain::sameResults(before, after)) return Effect::kSameRecords;
  return differInLabelsAlone(before, after) ? Effect::kOtherLabels : Effect::kOtherTracks;
}

std::optional<Effect> ruleFor(const Item& item, const Carrier& carrier, bool carries,
                              const Change& change) {
  if (carries) return ruleForCarried(item, carrier, change);
  // Labels and format keys are looked at only in a file whose tracks are in their places.
  if (change.kind <= ChangeKind::kFormatKey3) return Effect::kUntouched;
  return std::nullopt;
}

}  // namespace kestrel::test
