// Each code has one template. Words in braces are replaced by data of the finding and its analysis:
//
//   {service}  "service 2 (Stereo)"       {slot}   the slot, counted from 1
//   {place}    "track 12 (stream 3)": its track number, and the stream, counted from 1
//   {key}      the number of a format key
//   {first}, {second}                     the two values; {firstSlot} the first one as a slot
//   {element}  the element of the description, shortened if it is long
//   {offset}   its position in the description, counted from 1
//   {totals}   the totals that the description has entries for
#include "plain_c/finding_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "analyser/layout_description.h"
#include "plain_c/described_totals.h"
#include "plain_c/kept_analysis.h"

namespace kestrel {

namespace {

struct FindingTemplate {
  std::int32_t code;
  std::string_view text;
};

constexpr std::string_view kKeyDiffers =
    "Track {slot} of {service}, {place}, differs from its neighbour in format key {key}: {first} "
    "there, {second} here.";

constexpr std::array<FindingTemplate, 17> kTemplates = {{
    {KESTREL_NO_STREAMS, "The file has no audio streams."},
    {KESTREL_NO_ENTRY,
     "The layout description has no entry for {first} tracks; it has entries for {totals}."},
    {KESTREL_PAIR_CODED_TRACK,
     "Track {slot} of {service} must be an ordinary track, but {place} is pair-coded."},
    {KESTREL_PLAIN_TRACK,
     "Track {slot} of {service} must be pair-coded, but {place} is an ordinary track."},
    {KESTREL_TOO_FEW_TRACKS,
     "The file runs out of tracks at track {slot} of {service}: it needs {first} and gets "
     "{second}."},
    {KESTREL_KEY1_DIFFERS, kKeyDiffers},
    {KESTREL_KEY2_DIFFERS, kKeyDiffers},
    {KESTREL_KEY3_DIFFERS, kKeyDiffers},
    {KESTREL_UNKNOWN_SERVICE,
     "Element {element} at character {offset} of the layout description names no known service, so "
     "{service} takes no tracks."},
    {KESTREL_EMPTY_ELEMENT,
     "The element at character {offset} of the layout description is empty, so {service} takes no "
     "tracks."},
    {KESTREL_TRACKS_LEFT_OVER,
     "The services take {first} of the file's {second} tracks; {place} is the first that is left "
     "over."},
    {KESTREL_LABEL_MISSING, "Track {slot} of {service}, {place}, has no label."},
    {KESTREL_LABEL_UNKNOWN,
     "The label of track {slot} of {service}, {place}, is none of L, R, C, LFE, Ls and Rs."},
    {KESTREL_LABEL_DOUBLED,
     "Track {slot} of {service}, {place}, has the same label as its track {firstSlot}."},
    {KESTREL_LABELS_REORDERED,
     "The labels of {service} are complete, but from its track {slot}, {place}, on they are not in "
     "the surround channel order."},
    {KESTREL_RUN_TOO_LONG,
     "A pair-coded run of {service} that begins at {place} has {second} tracks, of which the first "
     "{first} are reported."},
    {KESTREL_SERVICE_WITHOUT_TRACK,
     "No track is left where {service} should stand: the services before it took more than they "
     "occupy."},
}};

std::string shortened(std::string_view element) {
  constexpr std::size_t kLongest = 40;
  std::string text(element.substr(0, kLongest));
  if (element.size() > kLongest) text += "...";
  return text;
}

std::string_view elementOf(const KestrelFinding& finding, const KestrelAnalysis& analysis) {
  return analysis.elements[static_cast<std::size_t>(finding.service)];
}

std::string serviceText(const KestrelFinding& finding, const KestrelAnalysis& analysis) {
  std::string_view name = elementOf(finding, analysis);
  if (isSilent(name)) name.remove_prefix(1);
  const std::string number = "service " + std::to_string(finding.service + 1);
  return name.empty() ? number : number + " (" + shortened(name) + ")";
}

std::string placeText(const KestrelFinding& finding, const KestrelAnalysis& /*analysis*/) {
  return "track " + std::to_string(finding.track) + " (stream " +
         std::to_string(finding.stream + 1) + ")";
}

using Finding = const KestrelFinding&;
using Analysis = const KestrelAnalysis&;

struct Word {
  std::string_view name;
  std::string (*text)(Finding, Analysis);
};

constexpr std::array<Word, 10> kWords = {{
    {"service", serviceText},
    {"place", placeText},
    {"slot", [](Finding f, Analysis) { return std::to_string(f.slot + 1); }},
    {"key", [](Finding f, Analysis) { return std::to_string(f.code - KESTREL_KEY1_DIFFERS + 1); }},
    {"first", [](Finding f, Analysis) { return std::to_string(f.first); }},
    {"second", [](Finding f, Analysis) { return std::to_string(f.second); }},
    {"firstSlot", [](Finding f, Analysis) { return std::to_string(f.first + 1); }},
    {"element", [](Finding f, Analysis a) { return '"' + shortened(elementOf(f, a)) + '"'; }},
    {"offset", [](Finding f, Analysis) { return std::to_string(f.textOffset + 1); }},
    {"totals", [](Finding, Analysis a) { return DescribedTotals(a.layoutDescription).spoken(); }},
}};

}  // namespace

std::string findingText(const KestrelFinding& finding, const KestrelAnalysis& analysis) {
  const auto* const found = std::ranges::find(kTemplates, finding.code, &FindingTemplate::code);
  std::string_view rest = found->text;
  std::string text;
  for (std::size_t open = rest.find('{'); open != std::string_view::npos; open = rest.find('{')) {
    text += rest.substr(0, open);
    const std::size_t close = rest.find('}');
    const auto* const word =
        std::ranges::find(kWords, rest.substr(open + 1, close - open - 1), &Word::name);
    text += word->text(finding, analysis);
    rest.remove_prefix(close + 1);
  }
  return text += rest;
}

}  // namespace kestrel
