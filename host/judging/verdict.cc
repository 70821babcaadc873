#include "host/judging/verdict.h"

#include <fmt/format.h>

#include <algorithm>

#include "host/judging/identification.h"

namespace kestrel::host {
namespace {

std::ptrdiff_t countOf(const FileResult& result, Severity severity) {
  return std::ranges::count(result.judgement.findings, severity, &Finding::severity);
}

std::string warningsInWords(std::ptrdiff_t count) {
  return count == 1 ? "a warning" : fmt::format("{} warnings", count);
}

std::string nameOfExpected(const FileResult& result) {
  return result.judgement.expectation->item
             ? fmt::format("\"{}\"", result.judgement.expectation->item->name)
             : "the expected services";
}

Verdict withoutExpectation(const FileResult& result) {
  if (result.judgement.identification.empty()) {
    return {VerdictResult::kDoesNotConform, ExitCode::kDoesNotConform,
            "Nothing was expected, and no layout of the catalogue fits the file."};
  }
  return {VerdictResult::kIdentified, ExitCode::kConforms,
          fmt::format("Nothing was expected; the file looks like {}.",
                      bestInWords(result.judgement.identification))};
}

Verdict withExpectation(const FileResult& result) {
  if (countOf(result, Severity::kError) > 0) {
    return {VerdictResult::kDoesNotConform, ExitCode::kDoesNotConform,
            fmt::format("The file does not carry {}.", nameOfExpected(result))};
  }
  return {VerdictResult::kConforms, ExitCode::kConforms,
          fmt::format("The file carries {}.", nameOfExpected(result))};
}

std::string withoutStop(const std::string& sentence) {
  return sentence.substr(0, sentence.size() - 1);
}

}  // namespace

Verdict verdictOf(const FileResult& result, bool isStrict) {
  if (result.error) {
    return {VerdictResult::kNotExamined, ExitCode::kNotExamined,
            fmt::format("The file could not be examined: {}.", result.error->sentence)};
  }
  Verdict verdict =
      result.judgement.expectation ? withExpectation(result) : withoutExpectation(result);
  const std::ptrdiff_t warnings = countOf(result, Severity::kWarning);
  if (verdict.exitCode != ExitCode::kConforms || warnings == 0) {
    return verdict;
  }
  verdict.sentence = withoutStop(verdict.sentence) + ", with " + warningsInWords(warnings);
  if (isStrict) {
    verdict.result = VerdictResult::kDoesNotConform;
    verdict.exitCode = ExitCode::kDoesNotConform;
    verdict.sentence += ", which fails because of --strict";
  }
  verdict.sentence += ".";
  return verdict;
}

}  // namespace kestrel::host
