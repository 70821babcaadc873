#include "host/judging/inspect_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <exception>
#include <new>
#include <utility>

#include "host/basics/utf8.h"
#include "host/evidence/stream_mapping.h"
#include "host/judging/cross_check.h"
#include "host/judging/expectation.h"
#include "host/judging/expected_map.h"
#include "host/judging/identification.h"
#include "host/judging/verdict.h"
#include "host/reading/not_examined.h"

namespace kestrel::host {
namespace {

// More than any real file has; it bounds the memory that a forged number of channels takes.
constexpr std::int64_t kMostTracks = 4096;

MappedMedia readAndMap(const std::filesystem::path& file, const MediaReader& reader,
                       FileResult& result) {
  const ReadMedia read = reader.read(file);
  MappedMedia media = mapMedia(read.raw);
  result.reader = read.reader;
  result.container = media.container;
  if (media.streams.empty()) {
    throw NotExamined("no-audio", "no audio stream in it");
  }
  if (!read.quickReason.empty()) {
    media.warnings.push_back({"quick-read", read.quickReason});
  }
  return media;
}

void requireFewTracks(const MappedMedia& media) {
  std::int64_t tracks = 0;
  for (const AudioStreamInfo& stream : media.streams) {
    tracks += std::max(stream.channelCount, 2);
  }
  if (tracks > kMostTracks) {
    throw NotExamined("too-many-tracks", fmt::format("it claims to have {} audio tracks", tracks));
  }
}

// Gathers one file's result, step by step.
class Inspection {
 public:
  Inspection(const MappedMedia& media, const InspectOptions& options, FileResult& result)
      : options_(options),
        labels_{options.surroundChannelOrder, options.checkLabels},
        map_(trackMap(media)),
        streams_(media.streams),
        result_(result) {
    for (const MappingWarning& warning : media.warnings) {
      add(warning.id.c_str(), Severity::kWarning, warning.sentence);
    }
    if (!media.declaredLayout.empty()) {
      result.declared = declaredLayout(media.declaredLayout);
    }
  }

  void run() {
    result_.trackTotal = static_cast<std::int32_t>(map_.tracks.size());
    result_.identification = identify(map_, streams_);
    chooseExpectation();
    holdAgainstExpectation();
    checkDeclaration();
    noteIdentity();
    std::ranges::stable_sort(result_.findings, {}, &Finding::severity);
    result_.streams = std::move(map_.streams);
    result_.tracks = std::move(map_.tracks);
  }

 private:
  void add(const char* id, Severity severity, const std::string& sentence) {
    result_.findings.push_back({id, severity, sentence, std::nullopt, {}});
  }

  void chooseExpectation() {
    if (result_.declared) {
      declared_ = expectedDeclared(*result_.declared);
      explainDeclaration(*result_.declared);
    }
    result_.expectation = options_.expectation ? options_.expectation : declared_;
    for (auto* expectation : {&result_.expectation, &declared_}) {
      settle(*expectation);
    }
  }

  void settle(std::optional<Expectation>& expectation) {
    if (!expectation) {
      return;
    }
    if (const auto finding = settleAmbiguousCode(*expectation, result_.trackTotal)) {
      const bool isNew =
          std::ranges::find(result_.findings, finding->id, &Finding::id) == result_.findings.end();
      if (isNew) {
        result_.findings.push_back(*finding);
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
    if (!result_.expectation) {
      return;
    }
    ExpectedMap map =
        expectedMap(map_, streams_, result_.expectation->description, labels_, options_.reportAll);
    result_.services = std::move(map.services);
    std::ranges::move(map.findings, std::back_inserter(result_.findings));
  }

  void checkDeclaration() {
    if (!declared_) {
      return;
    }
    const bool isOther = result_.expectation->kind != ExpectationKind::kDeclared;
    const std::vector<ResultService> expected =
        isOther ? allExpectedServices() : std::vector<ResultService>{};
    result_.crossCheck = crossCheck({*declared_, expected, map_, streams_, result_.identification});
    for (const Disagreement& disagreement : result_.crossCheck->disagreements) {
      result_.findings.push_back({"declaration-contradicted", Severity::kWarning,
                                  disagreement.sentence, std::nullopt, disagreement.tracks});
    }
  }

  // With those that stand behind "-".
  std::vector<ResultService> allExpectedServices() {
    return expectedMap(map_, streams_, result_.expectation->description, labels_, true).services;
  }

  void noteIdentity() {
    if (result_.identification.empty()) {
      add("not-identified", Severity::kNote,
          fmt::format("No layout of the catalogue fits {} tracks like these.", result_.trackTotal));
      return;
    }
    const std::int32_t best = result_.identification.front().item.id;
    const bool isExpected =
        result_.expectation && result_.expectation->item && result_.expectation->item->id == best;
    const bool isWrong = std::ranges::any_of(result_.findings, [](const Finding& finding) {
      return finding.severity == Severity::kError;
    });
    if (isWrong && !isExpected) {
      add("looks-like", Severity::kNote,
          fmt::format("The file looks like {}.", bestInWords(result_.identification)));
    }
  }

  const InspectOptions& options_;
  LabelOptions labels_;
  TrackMap map_;
  LibraryStreams streams_;
  FileResult& result_;
  std::optional<Expectation> declared_;
};

void inspectInto(FileResult& result, const std::filesystem::path& file,
                 const InspectOptions& options) {
  try {
    const MappedMedia media = readAndMap(file, *options.reader, result);
    requireFewTracks(media);
    Inspection(media, options, result).run();
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
  result.file = utf8FromPath(file);
  inspectInto(result, file, options);
  result.verdict = verdictOf(result, options.isStrict);
  return result;
}

}  // namespace kestrel::host
