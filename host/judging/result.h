// What the examination of one file came to: the one structure from which every output is made, the
// text, the JSON and the page. Plain data; the names are those of
// docs/schema/kestrel-result-1.json. The facts come as they are from evidence/, the judgement is
// made here.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/basics/exit_code.h"
#include "host/evidence/tracks.h"

namespace kestrel::host {

/// A layout of the catalogue.
struct NamedItem {
  std::int32_t id = 0;
  std::string name;
};

/// What the file's AS-11 metadata declares.
struct DeclaredLayout {
  std::string text;        ///< as it stands in the file: "EBU R 123: 8b"
  std::string vocabulary;  ///< "EBU R 123", "EBU R 48" or "unknown"
  std::string code;        ///< "8b"; empty when the vocabulary is unknown
  std::optional<NamedItem> item;
};

enum class ExpectationKind { kLayout, kLayoutFile, kItem, kCode, kDeclared };

/// What the file is held against.
struct Expectation {
  ExpectationKind kind = ExpectationKind::kLayout;
  std::string text;  ///< as the user or the file gives it
  std::optional<NamedItem> item;
  std::string code;         ///< of EBU R 123; empty without one
  std::string description;  ///< the layout description for the library
};

/// A programme on the pair of a pair-coded service.
struct ServiceProgramme {
  std::size_t stream = 0;
  std::int32_t channels = 0;
  std::vector<std::string> labels;
};

/// One expected service, laid over the tracks in the order of the description.
struct ResultService {
  std::string name;         ///< "Mono", "Stereo", "5.1 Mix", "7.1 Mix", "EMCA", or an unknown text
  TrackNumbers tracks;      ///< those that it would take; some may be past the end of the file
  bool isHeld = false;      ///< no error concerns it
  bool isRequested = true;  ///< false: it stands after "-"
  std::vector<std::string> labels;
  std::vector<ServiceProgramme> programmes;
};

/// A service of a catalogue item on the tracks.
struct PlacedService {
  std::string name;  ///< "Stereo", "5.1 Mix", "Dolby E", ...
  TrackNumbers tracks;
};

struct Reason {
  std::string id;  ///< see docs/host.md
  std::int32_t points = 0;
  std::string sentence;
  TrackNumbers tracks;
};

/// A layout that the tracks can carry.
struct Candidate {
  NamedItem item;
  std::int32_t score = 0;  ///< the sum of the points of its reasons
  std::vector<std::string> codes;
  std::vector<PlacedService> services;
  std::vector<Reason> reasons;
};

/// What one source of evidence says about some tracks.
struct EvidenceValue {
  std::string source;  ///< "declared code", "expected map", "tracks" or "labels"
  std::string value;
};

struct Disagreement {
  std::string id;  ///< see docs/host.md
  std::string sentence;
  TrackNumbers tracks;
  std::vector<EvidenceValue> values;  ///< the two sides
};

struct Majority {
  std::optional<NamedItem> item;     ///< empty: no layout has more sources than another
  std::vector<std::string> sources;  ///< that speak for it
  std::int32_t sourceCount = 0;      ///< of all that say anything
  std::string sentence;
};

/// The declared code against everything else that is known.
struct CrossCheck {
  std::vector<Disagreement> disagreements;
  Majority majority;
};

enum class Severity { kError, kWarning, kNote };

struct Finding {
  std::string id;  ///< stable; see docs/host.md
  Severity severity = Severity::kError;
  std::string sentence;
  std::optional<std::size_t> service;  ///< index into the services
  TrackNumbers tracks;
};

enum class VerdictResult { kConforms, kDoesNotConform, kIdentified, kNotExamined };

struct Verdict {
  VerdictResult result = VerdictResult::kNotExamined;
  ExitCode exitCode = ExitCode::kNotExamined;
  std::string sentence;
};

/// Why a file could not be examined.
struct ExaminationError {
  std::string id;  ///< stable; see docs/host.md
  std::string sentence;
};

/// What is said about the facts of one file.
struct Judgement {
  std::optional<DeclaredLayout> declared;
  std::optional<Expectation> expectation;
  std::vector<ResultService> services;
  std::vector<Candidate> identification;  ///< the best supported first
  std::optional<CrossCheck> crossCheck;   ///< where an EBU R 123 code is declared
  std::vector<Finding> findings;          ///< errors first, then warnings, then notes
};

struct FileResult {
  FileFacts facts;
  Judgement judgement;
  std::optional<ExaminationError> error;  ///< exactly when the verdict is kNotExamined
  Verdict verdict;
};

}  // namespace kestrel::host
