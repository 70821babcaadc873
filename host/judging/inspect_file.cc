#include "host/judging/inspect_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <exception>
#include <new>
#include <utility>

#include "host/basics/file_names.h"
#include "host/basics/utf8.h"
#include "host/evidence/stream_mapping.h"
#include "host/evidence/track_map.h"
#include "host/judging/cross_check.h"
#include "host/judging/expectation.h"
#include "host/judging/expected_map.h"
#include "host/judging/identification.h"
#include "host/judging/verdict.h"
#include "host/reading/media_facts.h"

namespace kestrel::host {
namespace {

MappedMedia readAndMap(const std::filesystem::path& file, const MediaReader& reader,
                       FileFacts& facts) {
  const ReadMedia read = reader.read(file);
  MappedMedia media = mapMedia(read.raw);
  facts.reader = read.reader;
  facts.container = media.container;
  if (media.streams.empty()) {
    throw NotExamined("no-audio", "no audio stream in it");
  }
  if (!read.quickReason.empty()) {
    media.warnings.push_back({"quick-read", read.quickReason});
  }
  return media;
}

// Streams are bounded too: any number of programmes can stand on one pair, and some have no
// channel.
void requireFewTracks(const MappedMedia& media) {
  const std::int64_t tracks = claimedTracks(media);
  if (tracks > kMostExaminedTracks) {
    throw NotExamined("too-many-tracks", fmt::format("it claims to have {} audio tracks", tracks));
  }
  if (media.streams.size() > kMostExaminedTracks) {
    throw NotExamined("too-many-tracks",
                      fmt::format("it claims to have {} audio streams on {} tracks",
                                  media.streams.size(), tracks));
  }
}

// Makes the judgement on one file, step by step.
class Judging {
 public:
  Judging(const MappedMedia& media, const TrackMap& map, const InspectOptions& options)
      : media_(media),
        map_(map),
        options_(options),
        labels_{options.surroundChannelOrder, options.checkLabels},
        streams_(media.streams) {}

  Judgement run() {
    takeWarnings();
    judgement_.identification = identify(map_, streams_);
    chooseExpectation();
    holdAgainstExpectation();
    checkDeclaration();
    noteIdentity();
    std::ranges::stable_sort(judgement_.findings, {}, &Finding::severity);
    return std::move(judgement_);
  }

 private:
  void add(const char* id, Severity severity, const std::string& sentence) {
    judgement_.findings.push_back({id, severity, sentence, std::nullopt, {}});
  }

  void takeWarnings() {
    for (const MappingWarning& warning : media_.warnings) {
      add(warning.id.c_str(), Severity::kWarning, warning.sentence);
    }
  }

  void chooseExpectation() {
    if (!media_.declaredLayout.empty()) {
      judgement_.declared = declaredLayout(media_.declaredLayout);
      declared_ = expectedDeclared(*judgement_.declared);
      explainDeclaration(*judgement_.declared);
    }
    judgement_.expectation = options_.expectation ? options_.expectation : declared_;
    for (auto* expectation : {&judgement_.expectation, &declared_}) {
      settle(*expectation);
    }
  }

  void settle(std::optional<Expectation>& expectation) {
    if (!expectation) {
      return;
    }
    if (const auto finding = settleAmbiguousCode(*expectation, trackTotal(map_))) {
      const bool isNew = std::ranges::find(judgement_.findings, finding->id, &Finding::id) ==
                         judgement_.findings.end();
      if (isNew) {
        judgement_.findings.push_back(*finding);
      }
    }
  }

  void explainDeclaration(const DeclaredLayout& declared) {
    if (declared.vocabulary == "EBU R 48") {
      add("declared-code-not-r123", Severity::kNote,
          fmt::format("The file declares \"{}\", a code of EBU R 48, which is not looked up.",
                      declared.text));
    } else if (!declared.item) {
      add("declared-code-unknown", Severity::kWarning,
          fmt::format("No layout is known for what the file declares: \"{}\".",
                      printable(declared.text)));
    }
  }

  void holdAgainstExpectation() {
    if (!judgement_.expectation) {
      return;
    }
    ExpectedMap map = expectedMap(map_, streams_, judgement_.expectation->description, labels_,
                                  options_.reportAll);
    judgement_.services = std::move(map.services);
    std::ranges::move(map.findings, std::back_inserter(judgement_.findings));
  }

  void checkDeclaration() {
    if (!declared_) {
      return;
    }
    const bool isOther = judgement_.expectation->kind != ExpectationKind::kDeclared;
    const std::vector<ResultService> expected =
        isOther ? allExpectedServices() : std::vector<ResultService>{};
    judgement_.crossCheck =
        crossCheck({*declared_, expected, map_, streams_, judgement_.identification});
    for (const Disagreement& disagreement : judgement_.crossCheck->disagreements) {
      judgement_.findings.push_back({"declaration-contradicted", Severity::kWarning,
                                     disagreement.sentence, std::nullopt, disagreement.tracks});
    }
  }

  // With those that stand after "-".
  std::vector<ResultService> allExpectedServices() {
    return expectedMap(map_, streams_, judgement_.expectation->description, labels_, true).services;
  }

  void noteIdentity() {
    if (judgement_.identification.empty()) {
      add("not-identified", Severity::kNote,
          fmt::format("No layout of the catalogue fits {} tracks like these.", trackTotal(map_)));
      return;
    }
    const std::int32_t best = judgement_.identification.front().item.id;
    const bool isExpected = judgement_.expectation && judgement_.expectation->item &&
                            judgement_.expectation->item->id == best;
    const bool isWrong = std::ranges::any_of(judgement_.findings, [](const Finding& finding) {
      return finding.severity == Severity::kError;
    });
    if (isWrong && !isExpected) {
      add("looks-like", Severity::kNote,
          fmt::format("The file looks like {}.", bestInWords(judgement_.identification)));
    }
  }

  const MappedMedia& media_;
  const TrackMap& map_;
  const InspectOptions& options_;
  LabelOptions labels_;
  LibraryStreams streams_;
  Judgement judgement_;
  std::optional<Expectation> declared_;
};

void inspectInto(FileResult& result, const std::filesystem::path& file,
                 const InspectOptions& options) {
  try {
    const MappedMedia media = readAndMap(file, *options.reader, result.facts);
    requireFewTracks(media);
    result.facts.map = trackMap(media);
    result.judgement = Judging(media, result.facts.map, options).run();
  } catch (const NotExamined& reason) {
    result.error = ExaminationError{reason.id(), reason.what()};
  } catch (const std::bad_alloc&) {
    result.error = ExaminationError{"no-memory", "there is not enough memory"};
  } catch (const std::exception& failure) {
    result.error = ExaminationError{"failed", failure.what()};
  }
}

}  // namespace

FileResult inspectFile(const std::filesystem::path& file, const InspectOptions& options) {
  FileResult result;
  result.facts.file = utf8FromPath(file);
  inspectInto(result, file, options);
  result.verdict = verdictOf(result, options.isStrict);
  return result;
}

}  // namespace kestrel::host
