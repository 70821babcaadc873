#include "host/judging/expected_map.h"

#include <fmt/format.h>

#include <algorithm>

#include "host/basics/text_parts.h"
#include "host/evidence/track_map.h"
#include "host/judging/layout_description.h"
#include "host/judging/service_findings.h"

namespace kestrel::host {
namespace {

std::vector<ResultService> servicesOf(const LayoutEntry& entry) {
  std::vector<ResultService> services;
  std::int32_t next = 1;
  for (const LayoutElement& element : entry.elements) {
    ResultService service;
    service.name = element.name;
    service.tracks = trackRange(next, element.tracks);
    service.isHeld = true;
    service.isRequested = !element.isHidden;
    services.push_back(service);
    next += element.tracks;
  }
  return services;
}

std::string totalsInWords(const std::vector<std::int32_t>& totals) {
  if (totals.size() == 1) {
    return std::to_string(totals.front());
  }
  const std::vector<std::int32_t> front(totals.begin(), totals.end() - 1);
  return fmt::format("{} and {}", fmt::join(front, ", "), totals.back());
}

Finding noEntry(const LibraryAnalysis& analysis) {
  return {"no-entry",
          Severity::kError,
          fmt::format("The file has {} tracks; the expected layout is for {} tracks.",
                      analysis.trackTotal(), totalsInWords(analysis.describedTotals())),
          std::nullopt,
          {}};
}

// The formats of the coded programmes on some tracks, or nothing.
std::string codedFormats(const TrackMap& map, const TrackNumbers& tracks) {
  std::string formats;
  for (const std::int32_t number : tracks) {
    const AudioTrack& track = map.tracks[static_cast<std::size_t>(number - 1)];
    const std::string& format = map.streams[track.streams.front()].format;
    if (track.isPairCoded && formats.find(format) == std::string::npos) {
      formats += (formats.empty() ? "" : ", ") + format;
    }
  }
  return formats;
}

TrackNumbers tracksOfCoding(const TrackMap& map, const TrackNumbers& tracks, bool isPairCoded) {
  TrackNumbers found;
  std::ranges::copy_if(tracks, std::back_inserter(found), [&](std::int32_t number) {
    return number <= std::ssize(map.tracks) &&
           map.tracks[static_cast<std::size_t>(number - 1)].isPairCoded == isPairCoded;
  });
  return found;
}

// Makes the findings of one file.
class MapCheck {
 public:
  MapCheck(const TrackMap& map, const LibraryAnalysis& analysis, const LabelOptions& options,
           std::vector<ResultService> services)
      : map_(map), analysis_(analysis), options_(options) {
    result_.services = std::move(services);
  }

  ExpectedMap run() {
    result_.isCarried = analysis_.isCarried();
    if (analysis_.outcome() == KESTREL_UNTOUCHED) {
      findMisplaced();
    } else {
      findUnequalFormats();
      findLabels();
      findEnds();
    }
    findLeftOver();
    fillServices();
    explainTheRest();
    return std::move(result_);
  }

 private:
  void add(const char* id, Severity severity, std::size_t service, const TrackNumbers& tracks,
           const std::string& sentence) {
    result_.findings.push_back({id, severity, sentence, service, tracks});
  }

  // The library stops at the first service that does not fit; people want to know them all.
  void findMisplaced() {
    for (std::size_t index = 0; index < result_.services.size(); ++index) {
      checkCoding(index);
      checkEnd(index);
    }
  }

  void checkCoding(std::size_t index) {
    const ResultService& service = result_.services[index];
    const bool mustBeCoded = service.name == "EMCA";
    const TrackNumbers wrong = tracksOfCoding(map_, service.tracks, !mustBeCoded);
    if (wrong.empty()) {
      return;
    }
    const std::string where = tracksInWords(service.tracks);
    if (mustBeCoded) {
      add("coded-pair-missing", Severity::kError, index, wrong,
          fmt::format("A coded pair (EMCA) is expected on {}, but plain audio is on {}.", where,
                      tracksInWords(wrong)));
    } else {
      add("coded-pair-unexpected", Severity::kError, index, wrong,
          fmt::format("A plain {} is expected on {}, but coded audio ({}) is on {}.", service.name,
                      where, codedFormats(map_, wrong), tracksInWords(wrong)));
    }
  }

  void checkEnd(std::size_t index) {
    const ResultService& service = result_.services[index];
    if (isInside(service)) {
      return;
    }
    add("too-few-tracks", Severity::kError, index, service.tracks,
        fmt::format("The {} needs {}, but the file ends with track {}.", service.name,
                    tracksInWords(service.tracks), trackTotal(map_)));
  }

  bool isInside(const ResultService& service) const {
    return service.tracks.empty() || service.tracks.back() <= trackTotal(map_);
  }

  // The library counts the tracks of some odd files otherwise; no service may lie past the end.
  void findEnds() {
    for (std::size_t index = 0; index < result_.services.size(); ++index) {
      checkEnd(index);
    }
  }

  void findUnequalFormats() {
    for (const KestrelFinding& finding : analysis_.findings()) {
      const auto index = static_cast<std::size_t>(finding.service);
      if (auto made = unequalFormats(finding.code, result_.services, index, map_)) {
        addOnce(*made);
      }
    }
  }

  // The library has one finding for each neighbour that differs; here there is one per service.
  void addOnce(const Finding& finding) {
    const bool isThere = std::ranges::any_of(result_.findings, [&](const Finding& other) {
      return other.id == finding.id && other.service == finding.service;
    });
    if (!isThere) {
      result_.findings.push_back(finding);
    }
  }

  void findLabels() {
    for (std::size_t index = 0; index < result_.services.size(); ++index) {
      const ResultService& service = result_.services[index];
      if (options_.checkLabels && service.name == "5.1 Mix" && isInside(service)) {
        std::ranges::move(labelFindings(service, index, map_, options_.surroundChannelOrder),
                          std::back_inserter(result_.findings));
      }
    }
  }

  void findLeftOver() {
    const std::int32_t count = trackTotal(map_);
    std::int32_t taken = 0;
    for (const ResultService& service : result_.services) {
      taken += static_cast<std::int32_t>(service.tracks.size());
    }
    if (taken < count) {
      const TrackNumbers rest = trackRange(taken + 1, count - taken);
      result_.findings.push_back(
          {"tracks-left-over", Severity::kWarning,
           fmt::format("The expected services leave {} over.", tracksInWords(rest)), std::nullopt,
           rest});
    }
  }

  void fillServices() {
    for (const Finding& finding : result_.findings) {
      if (finding.severity == Severity::kError && finding.service) {
        result_.services[*finding.service].isHeld = false;
      }
    }
    for (const KestrelService& found : analysis_.services()) {
      ResultService& service = result_.services.at(static_cast<std::size_t>(found.serviceIndex));
      const std::vector<std::string_view> labels = splitAtBlanks(found.label);
      service.labels = {labels.begin(), labels.end()};
    }
    for (ResultService& service : result_.services) {
      if (service.name == "EMCA" && service.isHeld && !service.tracks.empty()) {
        addProgrammes(service);
      }
    }
  }

  void addProgrammes(ResultService& service) {
    const auto first = static_cast<std::size_t>(service.tracks.front() - 1);
    for (const std::size_t index : map_.tracks[first].streams) {
      const AudioStream& stream = map_.streams[index];
      service.programmes.push_back({index, stream.channels, stream.labels});
    }
  }

  // No error without a word: the library's own sentence, where none of the above said why.
  void explainTheRest() {
    const bool isExplained = std::ranges::any_of(result_.findings, [](const Finding& finding) {
      return finding.severity == Severity::kError;
    });
    if (result_.isCarried || isExplained) {
      return;
    }
    const std::string sentence = analysis_.findings().empty()
                                     ? "The tracks do not carry the expected services."
                                     : analysis_.findingText(0);
    result_.findings.push_back(
        {"services-not-carried", Severity::kError, sentence, std::nullopt, {}});
  }

  const TrackMap& map_;
  const LibraryAnalysis& analysis_;
  const LabelOptions& options_;
  ExpectedMap result_;
};

// Services after "-" are left out; findings keep the numbers of the services that stay.
void leaveOutHidden(ExpectedMap& map) {
  std::vector<std::optional<std::size_t>> places;
  places.reserve(map.services.size());
  std::size_t count = 0;
  for (const ResultService& service : map.services) {
    places.push_back(service.isRequested ? std::optional(count++) : std::nullopt);
  }
  for (Finding& finding : map.findings) {
    if (finding.service) {
      finding.service = places[*finding.service];
    }
  }
  std::erase_if(map.services, [](const ResultService& service) { return !service.isRequested; });
}

}  // namespace

ExpectedMap expectedMap(const TrackMap& map, const LibraryStreams& streams,
                        const std::string& description, const LabelOptions& options,
                        bool reportAll) {
  const LibraryAnalysis analysis(streams, description, options);
  const auto entry = layoutEntry(description, analysis.trackTotal());
  if (!entry) {
    return {false, {}, {noEntry(analysis)}};
  }
  ExpectedMap result = MapCheck(map, analysis, options, servicesOf(*entry)).run();
  if (!reportAll) {
    leaveOutHidden(result);
  }
  return result;
}

}  // namespace kestrel::host
