// Each disagreement between the declared code and one other source is found for itself.
#include "host/judging/cross_check.h"

#include <fmt/format.h>

#include <algorithm>

#include "api/kestrel.h"
#include "host/evidence/track_labels.h"
#include "host/evidence/track_map.h"
#include "host/judging/catalogue_items.h"
#include "host/judging/expected_map.h"
#include "host/judging/identification.h"

namespace kestrel::host {
namespace {

const CatalogueItem& declaredItem(const CrossCheckInput& input) {
  return catalogueItems().at(static_cast<std::size_t>(input.declared.item->id));
}

struct Side {
  const char* source;
  std::string value;
};

Disagreement disagreement(const char* id, const TrackNumbers& tracks, const std::string& code,
                          const std::string& declaredValue, const Side& other) {
  return {id,
          fmt::format("The declared code {} says {}, the {} say{} {}.", code, declaredValue,
                      other.source, other.source == std::string_view(kExpectedMap) ? "s" : "",
                      other.value),
          tracks,
          {{kDeclaredCode, declaredValue}, {other.source, other.value}}};
}

// The services that begin within a stretch of tracks, by name.
std::string namesWithin(const std::vector<PlacedService>& services, std::int32_t first,
                        std::int32_t last) {
  std::string names;
  for (const PlacedService& service : services) {
    const bool isWithin = !service.tracks.empty() && service.tracks.front() >= first &&
                          service.tracks.front() <= last;
    names += isWithin ? (names.empty() ? "" : ", ") + service.name : "";
  }
  return names.empty() ? "nothing" : names;
}

// The tracks on which the two maps do not have the same service, in stretches.
std::vector<TrackNumbers> differingStretches(const std::vector<PlacedService>& left,
                                             const std::vector<PlacedService>& right) {
  TrackNumbers differing;
  const auto collect = [&](const std::vector<PlacedService>& from,
                           const std::vector<PlacedService>& other) {
    for (const PlacedService& service : from) {
      const bool isInBoth = std::ranges::any_of(
          other, [&](const PlacedService& candidate) { return areEqual(service, candidate); });
      if (!isInBoth) {
        differing.insert(differing.end(), service.tracks.begin(), service.tracks.end());
      }
    }
  };
  collect(left, right);
  collect(right, left);
  std::ranges::sort(differing);
  const auto doubled = std::ranges::unique(differing);
  differing.erase(doubled.begin(), doubled.end());
  std::vector<TrackNumbers> stretches;
  for (const std::int32_t track : differing) {
    if (stretches.empty() || stretches.back().back() + 1 != track) {
      stretches.emplace_back();
    }
    stretches.back().push_back(track);
  }
  return stretches;
}

// Makes the disagreements of one file.
class Comparison {
 public:
  explicit Comparison(const CrossCheckInput& input)
      : input_(input), item_(declaredItem(input)), code_(input.declared.code) {}

  std::vector<Disagreement> run() {
    if (!input_.expected.empty()) {
      compareExpected();
    }
    if (item_.tracks != trackTotal(input_.map)) {
      compareTotals();
    } else {
      compareTracks();
      compareLabels();
    }
    return std::move(disagreements_);
  }

 private:
  void add(const char* id, const TrackNumbers& tracks, const std::string& declaredValue,
           const Side& other) {
    disagreements_.push_back(disagreement(id, tracks, code_, declaredValue, other));
  }

  void compareExpected() {
    const std::vector<PlacedService> declared = placedServices(item_);
    const std::vector<PlacedService> expected = placedServices(input_.expected);
    for (const TrackNumbers& stretch : differingStretches(declared, expected)) {
      add("expected-map-differs", stretch,
          fmt::format("{} on {}", namesWithin(declared, stretch.front(), stretch.back()),
                      tracksInWords(stretch)),
          {kExpectedMap, namesWithin(expected, stretch.front(), stretch.back())});
    }
  }

  void compareTotals() {
    add("total-differs", {}, fmt::format("{} tracks", item_.tracks),
        {kTracks, fmt::format("{}", trackTotal(input_.map))});
  }

  // Pairs, rates, depths and formats: what keeps the tracks from carrying the declared services.
  void compareTracks() {
    const ExpectedMap map =
        expectedMap(input_.map, input_.streams, item_.description, {"", false}, true);
    for (const Finding& finding : map.findings) {
      if (finding.severity != Severity::kError || !finding.service) {
        continue;
      }
      const PlacedService& service = item_.placed.at(*finding.service).placed;
      const bool isPlain = finding.id == "coded-pair-missing";
      const bool isCoded = finding.id == "coded-pair-unexpected";
      add(finding.id.c_str(), finding.tracks,
          fmt::format("{} on {}", service.name, tracksInWords(service.tracks)),
          {kTracks, isPlain   ? "plain audio"
                    : isCoded ? "coded audio"
                              : "they differ in format"});
    }
  }

  void compareLabels() {
    for (const Reason& reason : labelReasons(item_, input_.map)) {
      if (reason.points < 0) {
        const std::string names =
            namesWithin(placedServices(item_), reason.tracks.front(), reason.tracks.back());
        add("labels-differ", reason.tracks,
            fmt::format("{} on {}", names, tracksInWords(reason.tracks)),
            {kLabels, fmt::format("{}", fmt::join(labelsOn(input_.map, reason.tracks), " "))});
      }
    }
  }

  const CrossCheckInput& input_;
  const CatalogueItem& item_;
  const std::string& code_;
  std::vector<Disagreement> disagreements_;
};

}  // namespace

CrossCheck crossCheck(const CrossCheckInput& input) {
  return {Comparison(input).run(), evidenceMajority(input)};
}

}  // namespace kestrel::host
