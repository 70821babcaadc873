// Each service of an item is looked at on its tracks, and each look gives reasons with points:
//
//   where the coded pairs are     the library decides; the points only rank
//   labels                        a full set on the service that needs it, or labels that break it
//   streams                       a service that is a multichannel stream, or is cut out of one
//   formats                       that change where a service ends
//
// A layout without reasons against it and none for it stays in the list: it is possible.
#include "host/judging/identification.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <numeric>

#include "api/kestrel.h"
#include "host/evidence/track_labels.h"
#include "host/evidence/track_map.h"

namespace kestrel::host {
namespace {

constexpr std::int32_t kCodedPair = 10;
constexpr std::int32_t kSetOf71 = 10;
constexpr std::int32_t kSetOf51 = 6;
constexpr std::int32_t kUsualOrder = 2;
constexpr std::int32_t kStereoLabels = 2;
constexpr std::int32_t kWholeStream = 1;  // for each channel of it
constexpr std::int32_t kFormatsAgree = 1;
constexpr std::int32_t kFormatChange = 2;
constexpr std::int32_t kBrokenSet = -6;
constexpr std::int32_t kOtherStereo = -2;
constexpr std::int32_t kSetOnMonos = -4;
constexpr std::int32_t kCutStream = -3;

struct LabelRow {
  std::int32_t type;
  LabelSet set;
  const char* id;
  std::int32_t points;
  const char* words;
};

// What the labels on the tracks of a service of a type mean. What is not listed means nothing.
constexpr std::array<LabelRow, 6> kLabelRows = {{
    {KESTREL_71_MIX, LabelSet::k71, "full-71-set", kSetOf71, "has a full set of 7.1 labels"},
    {KESTREL_71_MIX, LabelSet::kOther, "no-71-set", kBrokenSet, "has labels that make no 7.1 set"},
    {KESTREL_51_MIX, LabelSet::k51, "full-51-set", kSetOf51, "has a full set of 5.1 labels"},
    {KESTREL_51_MIX, LabelSet::kOther, "no-51-set", kBrokenSet, "has labels that make no 5.1 set"},
    {KESTREL_STEREO, LabelSet::kStereo, "stereo-labels", kStereoLabels, "has the labels of a pair"},
    {KESTREL_STEREO, LabelSet::kOther, "no-stereo-labels", kOtherStereo,
     "has labels that make no pair"},
}};

struct Placed {
  const ItemService& service;
  std::vector<std::string> labels;
  std::string words;
};

Placed placed(const ItemService& service, const TrackMap& map) {
  return {service, labelsOn(map, service.placed.tracks),
          fmt::format("The {} on {}", service.placed.name, tracksInWords(service.placed.tracks))};
}

Reason reasonFor(const Placed& placed, const char* id, std::int32_t points, const char* words) {
  return {id, points, fmt::format("{} {}: {}.", placed.words, words, fmt::join(placed.labels, " ")),
          placed.service.placed.tracks};
}

void addLabelReasons(const Placed& placed, std::vector<Reason>& reasons) {
  const LabelSet set = labelSet(placed.labels);
  for (const LabelRow& row : kLabelRows) {
    if (row.type == placed.service.type && row.set == set) {
      reasons.push_back(reasonFor(placed, row.id, row.points, row.words));
    }
  }
  if (placed.service.type == KESTREL_51_MIX && set == LabelSet::k51 &&
      isUsualOrder(placed.labels)) {
    reasons.push_back(
        reasonFor(placed, "usual-order", kUsualOrder, "has its 5.1 labels in a usual order"));
  }
}

// Monos one after the other whose labels make a 5.1 set are hardly monos.
void addMonoReasons(const CatalogueItem& item, const TrackMap& map, std::vector<Reason>& reasons) {
  TrackNumbers monos;
  for (const ItemService& service : item.placed) {
    monos.push_back(service.placed.tracks.front());
    if (service.type != KESTREL_MONO) {
      monos.clear();
    }
    if (monos.size() < 6) {
      continue;
    }
    const TrackNumbers six(monos.end() - 6, monos.end());
    const std::vector<std::string> labels = labelsOn(map, six);
    if (labelSet(labels) == LabelSet::k51 && isUsualOrder(labels)) {
      reasons.push_back({"51-set-on-monos", kSetOnMonos,
                         fmt::format("The Monos on {} have a full set of 5.1 labels: {}.",
                                     tracksInWords(six), fmt::join(labels, " ")),
                         six});
    }
  }
}

const AudioStream& streamOf(const TrackMap& map, std::int32_t track) {
  return map.streams[map.tracks.at(static_cast<std::size_t>(track - 1)).streams.front()];
}

// A service that is one stream and all of it, or one that takes only a part of a stream.
void addStreamReason(const Placed& placed, const TrackMap& map, std::vector<Reason>& reasons) {
  const TrackNumbers& tracks = placed.service.placed.tracks;
  const AudioStream& stream = streamOf(map, tracks.front());
  if (stream.tracks == tracks && tracks.size() > 1) {
    reasons.push_back({"whole-stream", kWholeStream * static_cast<std::int32_t>(tracks.size()),
                       fmt::format("{} is the stream {}, which has {} channels.", placed.words,
                                   stream.id, stream.channels),
                       tracks});
    return;
  }
  const AudioStream& last = streamOf(map, tracks.back());
  const bool beginsInside = stream.tracks.front() != tracks.front();
  const bool endsInside = last.tracks.back() != tracks.back();
  if (&stream != &last && (beginsInside || endsInside)) {
    reasons.push_back({"cut-stream", kCutStream,
                       fmt::format("{} begins or ends inside of a stream.", placed.words), tracks});
  }
}

bool haveOneFormat(const AudioStream& left, const AudioStream& right) {
  return left.sampleRate == right.sampleRate && left.bitDepth == right.bitDepth &&
         left.format == right.format;
}

bool isWidePlain(const ItemService& service) {
  return service.type != KESTREL_DOLBY_E && service.placed.tracks.size() > 1;
}

// Between two plain services, one of which has several tracks.
bool endsPlainService(const ItemService& left, const ItemService& right) {
  return left.type != KESTREL_DOLBY_E && right.type != KESTREL_DOLBY_E &&
         (isWidePlain(left) || isWidePlain(right));
}

void addFormatReasons(const CatalogueItem& item, const TrackMap& map,
                      std::vector<Reason>& reasons) {
  if (std::ranges::any_of(item.placed, isWidePlain)) {
    reasons.push_back(
        {"formats-agree", kFormatsAgree, "The tracks of each service agree in format.", {}});
  }
  for (std::size_t index = 1; index < item.placed.size(); ++index) {
    const std::int32_t first = item.placed[index].placed.tracks.front();
    if (endsPlainService(item.placed[index - 1], item.placed[index]) &&
        !haveOneFormat(streamOf(map, first - 1), streamOf(map, first))) {
      reasons.push_back(
          {"format-changes",
           kFormatChange,
           fmt::format("The format changes where a service ends, before track {}.", first),
           {first - 1, first}});
    }
  }
}

void addPairReason(const ItemService& service, const TrackMap& map, std::vector<Reason>& reasons) {
  const TrackNumbers& tracks = service.placed.tracks;
  const auto& streams = map.tracks.at(static_cast<std::size_t>(tracks.front() - 1)).streams;
  reasons.push_back({"coded-pair", kCodedPair,
                     fmt::format("Coded audio ({}, {} programme{}) is on {}, where the layout has "
                                 "Dolby E.",
                                 map.streams[streams.front()].format, streams.size(),
                                 streams.size() == 1 ? "" : "s", tracksInWords(tracks)),
                     tracks});
}

Candidate candidateOf(const CatalogueItem& item, const TrackMap& map) {
  Candidate candidate{item.item, 0, item.codes, {}, labelReasons(item, map)};
  for (const ItemService& service : item.placed) {
    candidate.services.push_back(service.placed);
    if (service.type == KESTREL_DOLBY_E) {
      addPairReason(service, map, candidate.reasons);
    } else {
      addStreamReason(placed(service, map), map, candidate.reasons);
    }
  }
  addFormatReasons(item, map, candidate.reasons);
  std::ranges::stable_sort(candidate.reasons, std::greater{}, &Reason::points);
  candidate.score = pointsOf(candidate.reasons);
  return candidate;
}

}  // namespace

std::string bestInWords(const std::vector<Candidate>& candidates) {
  std::vector<std::string> names;
  for (const Candidate& candidate : candidates) {
    if (candidate.score == candidates.front().score) {
      names.push_back(fmt::format("\"{}\"", candidate.item.name));
    }
  }
  const std::string last = names.back();
  names.pop_back();
  return names.empty() ? last : fmt::format("{} or {}", fmt::join(names, ", "), last);
}

std::vector<Reason> labelReasons(const CatalogueItem& item, const TrackMap& map) {
  std::vector<Reason> reasons;
  for (const ItemService& service : item.placed) {
    addLabelReasons(placed(service, map), reasons);
  }
  addMonoReasons(item, map, reasons);
  return reasons;
}

std::int32_t pointsOf(const std::vector<Reason>& reasons) {
  return std::accumulate(
      reasons.begin(), reasons.end(), 0,
      [](std::int32_t sum, const Reason& reason) { return sum + reason.points; });
}

std::vector<Candidate> identify(const TrackMap& map, const LibraryStreams& streams) {
  const LabelOptions noLabels{"", false};  // labels rank, they do not decide
  std::vector<Candidate> candidates;
  for (const CatalogueItem* item : itemsOfTotal(trackTotal(map))) {
    if (LibraryAnalysis(streams, item->description, noLabels).isCarried()) {
      candidates.push_back(candidateOf(*item, map));
    }
  }
  std::ranges::stable_sort(candidates, std::greater{}, &Candidate::score);
  return candidates;
}

}  // namespace kestrel::host
