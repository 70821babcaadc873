#include "host/reporting/text_report.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "host/basics/utf8.h"
#include "host/evidence/track_map.h"
#include "host/reporting/text_tracks.h"

namespace kestrel::host {
namespace {

constexpr std::size_t kShownCandidates = 3;

struct SeverityWord {
  const char* word;
  Colour colour;
};

constexpr std::array<SeverityWord, 3> kSeverities = {
    {{"error", Colour::kBad}, {"warning", Colour::kWarning}, {"note", Colour::kFaint}}};

Colour verdictColour(const FileResult& result) {
  return result.verdict.exitCode == ExitCode::kConforms ? Colour::kGood : Colour::kBad;
}

// "Declared  EBU R 123: 8b": a word of the margin, then a text that is wrapped beside it.
std::string entry(const std::string& word, Colour colour, const std::string& text,
                  const TextStyle& style) {
  constexpr std::size_t kMargin = 10;
  TextStyle narrow = style;
  narrow.columns -= std::min(style.columns, kMargin);
  std::string lines = wrapped(text, narrow);
  std::string result = StyledLine().add(fmt::format("{:<9}", word), colour).text(style);
  result.pop_back();
  result += std::string(kMargin - std::min(kMargin, word.size()), ' ');
  for (std::size_t at = lines.find('\n'); at + 1 < lines.size(); at = lines.find('\n', at + 1)) {
    lines.insert(at + 1, std::string(kMargin, ' '));
  }
  return result + lines;
}

std::string plainEntry(const std::string& word, const std::string& text, const TextStyle& style) {
  return entry(word, Colour::kFaint, text, style);
}

std::string declaredInWords(const DeclaredLayout& declared) {
  const std::string text = printable(declared.text);
  return declared.item ? fmt::format("{} (\"{}\")", text, declared.item->name) : text;
}

std::string expectedInWords(const Expectation& expectation) {
  const std::string description = printable(expectation.description);
  return expectation.item ? fmt::format("\"{}\" ({})", expectation.item->name, description)
                          : description;
}

std::string head(const FileResult& result, const TextStyle& style) {
  const std::string kind =
      result.facts.container.empty()
          ? ""
          : fmt::format(" ({}, {} track{})", printable(result.facts.container),
                        trackTotal(result.facts.map), trackTotal(result.facts.map) == 1 ? "" : "s");
  std::string text = plainEntry("File", printable(result.facts.file) + kind, style);
  if (result.judgement.declared) {
    text += plainEntry("Declared", declaredInWords(*result.judgement.declared), style);
  }
  if (result.judgement.expectation) {
    text += plainEntry("Expected", expectedInWords(*result.judgement.expectation), style);
  }
  return text + entry("Verdict", verdictColour(result), result.verdict.sentence, style);
}

std::string findings(const FileResult& result, const TextStyle& style) {
  std::string text;
  for (const Finding& finding : result.judgement.findings) {
    const SeverityWord& severity = kSeverities.at(static_cast<std::size_t>(finding.severity));
    text += entry(severity.word, severity.colour, finding.sentence, style);
  }
  return text.empty() ? "" : "\n" + text;
}

std::string candidateInWords(const Candidate& candidate) {
  const std::string codes = fmt::format("{}", fmt::join(candidate.codes, ", "));
  return fmt::format("\"{}\"{}{}, {} point{}", candidate.item.name,
                     codes.empty() ? "" : ", EBU R 123 ", codes, candidate.score,
                     candidate.score == 1 ? "" : "s");
}

std::string candidateEntry(const std::string& word, const Candidate& candidate,
                           const TextStyle& style) {
  std::string text = plainEntry(word, candidateInWords(candidate), style);
  for (const Reason& reason : candidate.reasons) {
    text += plainEntry("", fmt::format("{:+} {}", reason.points, reason.sentence), style);
  }
  return text;
}

std::string identification(const FileResult& result, const TextStyle& style) {
  std::string text;
  const std::size_t shown = std::min(kShownCandidates, result.judgement.identification.size());
  for (std::size_t index = 0; index < shown; ++index) {
    text += candidateEntry(index == 0 ? "Fits" : "", result.judgement.identification[index], style);
  }
  std::string others;
  for (std::size_t index = shown; index < result.judgement.identification.size(); ++index) {
    others += fmt::format("{}\"{}\"", others.empty() ? "" : ", ",
                          result.judgement.identification[index].item.name);
  }
  text += others.empty() ? "" : plainEntry("", "Also possible: " + others + ".", style);
  return text.empty() ? "" : "\n" + text;
}

std::string crossCheckInWords(const FileResult& result, const TextStyle& style) {
  if (!result.judgement.crossCheck) {
    return "";
  }
  const CrossCheck& check = *result.judgement.crossCheck;
  const std::string agreement = check.disagreements.empty()
                                    ? "Nothing contradicts the declared code."
                                    : "The declared code is contradicted (see the warnings).";
  return "\n" + plainEntry("Evidence", agreement + " " + check.majority.sentence, style);
}

}  // namespace

std::string textReport(const FileResult& result, const TextStyle& style) {
  std::string text = head(result, style);
  if (!result.error) {
    text += "\n" + textTracks(result, style) + findings(result, style) +
            identification(result, style) + crossCheckInWords(result, style);
  }
  return text;
}

}  // namespace kestrel::host
