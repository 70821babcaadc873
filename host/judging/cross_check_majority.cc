// Every layout of the file's total of tracks is asked which sources speak for it:
//
//   declared code   for the code's layout
//   expected map    for the layout with the same services
//   tracks          for every layout that they can carry, by pairs, formats and total
//   labels          for those layouts that have the most points by labels, if any has some
#include "host/judging/cross_check.h"

#include <fmt/format.h>

#include <algorithm>

#include "host/evidence/track_map.h"
#include "host/judging/catalogue_items.h"
#include "host/judging/identification.h"

namespace kestrel::host {
namespace {

struct Support {
  const CatalogueItem* item;
  std::vector<std::string> sources;
};

// The most points by labels that any layout has; 0 when the labels speak for none.
std::int32_t bestLabelPoints(const std::vector<const CatalogueItem*>& items, const TrackMap& map) {
  std::int32_t best = 0;
  for (const CatalogueItem* item : items) {
    best = std::max(best, pointsOf(labelReasons(*item, map)));
  }
  return best;
}

bool areTheServices(const CatalogueItem& item, const std::vector<ResultService>& expected) {
  return std::ranges::equal(placedServices(item), placedServices(expected), areEqual);
}

std::vector<Support> supports(const CrossCheckInput& input) {
  const std::vector<const CatalogueItem*> items = itemsOfTotal(trackTotal(input.map));
  const std::int32_t bestPoints = bestLabelPoints(items, input.map);
  std::vector<Support> all;
  for (const CatalogueItem* item : items) {
    Support support{item, {}};
    const auto vote = [&](const char* source, bool isFor) {
      if (isFor) {
        support.sources.emplace_back(source);
      }
    };
    vote(kDeclaredCode, item->item.id == input.declared.item->id);
    vote(kExpectedMap, areTheServices(*item, input.expected));
    vote(kTracks, std::ranges::any_of(input.identification, [&](const Candidate& candidate) {
           return candidate.item.id == item->item.id;
         }));
    vote(kLabels, bestPoints > 0 && pointsOf(labelReasons(*item, input.map)) == bestPoints);
    all.push_back(support);
  }
  return all;
}

std::int32_t sourceCount(const CrossCheckInput& input) {
  const bool labelsSpeak = bestLabelPoints(itemsOfTotal(trackTotal(input.map)), input.map) > 0;
  return 2 + (input.expected.empty() ? 0 : 1) + (labelsSpeak ? 1 : 0);
}

std::string inWords(const Support& support) {
  return fmt::format("\"{}\" ({})", support.item->item.name, fmt::join(support.sources, ", "));
}

std::string tieInWords(const std::vector<Support>& best) {
  std::vector<std::string> words;
  std::ranges::transform(best, std::back_inserter(words), inWords);
  return fmt::format("The evidence for {} weighs the same.", fmt::join(words, " and "));
}

// Those with the most sources.
std::vector<Support> bestSupports(const CrossCheckInput& input) {
  std::vector<Support> all = supports(input);
  std::size_t most = 1;
  for (const Support& support : all) {
    most = std::max(most, support.sources.size());
  }
  std::erase_if(all, [most](const Support& support) { return support.sources.size() < most; });
  return all;
}

}  // namespace

Majority evidenceMajority(const CrossCheckInput& input) {
  const std::vector<Support> best = bestSupports(input);
  Majority majority{std::nullopt, {}, sourceCount(input), ""};
  if (best.size() == 1) {
    majority.item = best.front().item->item;
    majority.sources = best.front().sources;
    majority.sentence =
        fmt::format("{} of {} sources ({}) speak for \"{}\".", majority.sources.size(),
                    majority.sourceCount, fmt::join(majority.sources, ", "), majority.item->name);
  } else {
    majority.sentence =
        best.empty() ? "No layout of the catalogue fits the evidence." : tieInWords(best);
  }
  return majority;
}

}  // namespace kestrel::host
