#include "tests/exhaustive/carrier.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace kestrel::test {
namespace {

constexpr std::int32_t kFirstGroup = 100;

struct Span {
  std::size_t first = 0;
  std::size_t width = 0;
};

std::vector<Span> spansOf(const Cut& cut) {
  std::vector<Span> spans;
  std::size_t first = 0;
  for (const std::size_t width : cut) {
    spans.push_back({first, width});
    first += width;
  }
  return spans;
}

std::size_t codedTracks(const Item& item, const Span& span) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < span.width; ++i) {
    if (item.serviceOf(span.first + i).isCoded) ++count;
  }
  return count;
}

bool isMixed(const Item& item, const Span& span) {
  const std::size_t coded = codedTracks(item, span);
  return coded > 0 && coded < span.width;
}

bool isMarkedCoded(const Item& item, const Span& span, MixedStreams mixed) {
  if (isMixed(item, span)) return mixed == MixedStreams::kCoded;
  return codedTracks(item, span) > 0;
}

std::wstring labelOf(const Item& item, std::size_t track) {
  static const std::array<std::wstring, 8> kLabels = {L"L",  L"R",  L"C",   L"LFE",
                                                      L"Ls", L"Rs", L"Lrs", L"Rrs"};
  const ItemService& service = item.serviceOf(track);
  if (service.type == kMono) return L"M";
  return kLabels.at(track - service.firstTrack);
}

std::wstring numberText(std::size_t track) { return std::to_wstring(track + 1); }

void markCoded(const Item& item, const Span& span, Pairing pairing, AudioStreamInfo& stream) {
  const ItemService& service = item.serviceOf(span.first);
  stream.isPairCoded = 1;
  stream.isPairShared = pairing == Pairing::kShared ? 1 : 0;
  if (pairing == Pairing::kShared) return;
  const std::size_t pair = service.isCoded ? service.firstTrack : span.first;
  stream.streamId = numberText(pair) + L"-" + numberText(span.first);
  if (pairing == Pairing::kByGroup) stream.group = kFirstGroup + static_cast<std::int32_t>(pair);
}

AudioStreamInfo streamOf(const Span& span) {
  AudioStreamInfo stream;
  stream.streamId = numberText(span.first);
  stream.group = kFirstGroup + static_cast<std::int32_t>(span.first);
  stream.channelCount = static_cast<std::int32_t>(span.width);
  stream.formatKey1 = 48000;
  stream.formatKey2 = 24;
  stream.formatKey3 = 1;
  return stream;
}

std::vector<std::wstring> labelsOf(const Item& item, const Span& span) {
  std::vector<std::wstring> labels;
  for (std::size_t i = 0; i < span.width; ++i) labels.push_back(labelOf(item, span.first + i));
  return labels;
}

}  // namespace

Carrier carrierOf(const Item& item, const Way& way) {
  Carrier carrier{item.description, kOrderOfCall, {}, false, false};
  for (const Span& span : spansOf(way.cut)) {
    AudioStreamInfo stream = streamOf(span);
    if (isMarkedCoded(item, span, way.mixed)) markCoded(item, span, way.pairing, stream);
    setLabels(stream, labelsOf(item, span));
    carrier.streams.push_back(stream);
  }
  return carrier;
}

bool hasMixedStream(const Item& item, const Cut& cut) {
  const std::vector<Span> spans = spansOf(cut);
  return std::any_of(spans.begin(), spans.end(),
                     [&item](const Span& span) { return isMixed(item, span); });
}

std::vector<Way> waysToCarry(const Item& item) {
  std::vector<Way> ways;
  for (const Cut& cut : cutsOf(item.trackCount)) {
    for (const Pairing pairing : {Pairing::kByGroup, Pairing::kByNumber, Pairing::kShared}) {
      if (item.codedServices() == 0 && pairing != Pairing::kByGroup) continue;
      ways.push_back({cut, pairing, MixedStreams::kPlain});
      if (hasMixedStream(item, cut)) ways.push_back({cut, pairing, MixedStreams::kCoded});
    }
  }
  return ways;
}

std::vector<std::wstring> labelsOf(const AudioStreamInfo& stream) {
  std::vector<std::wstring> labels;
  for (const wchar_t c : stream.trackLabels) {
    if (labels.empty() || c == L' ') labels.emplace_back();
    if (c != L' ') labels.back() += c;
  }
  return labels;
}

void setLabels(AudioStreamInfo& stream, const std::vector<std::wstring>& labels) {
  std::wstring& text = stream.trackLabels;
  text.clear();
  for (const std::wstring& label : labels) text += (text.empty() ? L"" : L" ") + label;
}

Place placeOf(const Carrier& carrier, std::size_t track) {
  Place place{0, track};
  while (place.channel >= static_cast<std::size_t>(carrier.streams[place.stream].channelCount)) {
    place.channel -= static_cast<std::size_t>(carrier.streams[place.stream++].channelCount);
  }
  return place;
}

}  // namespace kestrel::test
