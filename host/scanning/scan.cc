// The threads examine files side by side; what they share, the results file, the counts and the
// bar, is touched by one at a time.
#include "host/scanning/scan.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <mutex>
#include <nlohmann/json.hpp>
#include <string>

#include "host/basics/file_names.h"
#include "host/basics/json.h"
#include "host/basics/output.h"
#include "host/basics/usage_error.h"
#include "host/basics/utf8.h"
#include "host/reporting/result_json.h"
#include "host/reporting/scan_summary.h"
#include "host/scanning/progress_bar.h"
#include "host/scanning/results_writer.h"
#include "host/scanning/scan_files.h"
#include "host/scanning/scan_interrupt.h"
#include "host/scanning/scan_line.h"
#include "host/scanning/scan_resume.h"
#include "host/scanning/scan_workers.h"

namespace kestrel::host {
namespace {

namespace fs = std::filesystem;

// What a file is among those that are examined anew.
constexpr char kChanged[] = "changed";
constexpr char kUnchanged[] = "unchanged";
constexpr char kNew[] = "new";

ScanFiles findFiles(const ScanRequest& request) {
  ScanFiles found = filesOfScan(request.paths);
  for (const std::string& problem : found.problems) {
    printMessage(problem);
  }
  if (found.files.empty()) {
    throw UsageError("no media file to scan");
  }
  if (!request.output.empty()) {
    for (const std::string& file : found.files) {
      requireOtherFile(request.output, file);
    }
  }
  return found;
}

ResultsWriter openOutput(const fs::path& output) {
  return output.empty() ? ResultsWriter() : ResultsWriter(output);
}

class Scan {
 public:
  explicit Scan(const ScanRequest& request)
      : request_(request),
        options_(optionsOf(request.inspect)),
        found_(findFiles(request)),
        output_(openOutput(request.output)) {}

  ExitCode run() {
    skipWhatIsDone();
    const ScanInterrupt interrupt;
    {
      ProgressBar bar(found_.files.size(), !request_.isQuiet);
      bar_ = &bar;
      shareWork({found_.files.size(), request_.jobs, [] { return ScanInterrupt::signal() != 0; },
                 [this](std::size_t index) { examine(index); }});
    }
    output_.finish();
    return end();
  }

 private:
  void skipWhatIsDone() {
    if (request_.output.empty()) {
      return;
    }
    if (request_.recheck) {
      output_.mend(readVerdicts(request_.output, request_.inspect, found_.files, before_));
      summary_.rechecked = {{kChanged, 0}, {kUnchanged, 0}};
    } else if (request_.resume) {
      output_.mend(removeDone(request_.output, request_.inspect, found_.files, summary_));
    } else if (request_.replace) {
      output_.clear();
    } else if (std::error_code error; fs::file_size(request_.output, error) > 0 && !error) {
      throw UsageError(fmt::format(
          "\"{}\" holds something already; --resume goes on with results, --force replaces it",
          printable(utf8FromPath(request_.output))));
    }
  }

  void examine(std::size_t index) {
    const fs::path file = found_.files[index];
    Json identity = identityOf(file);
    const FileResult result = inspectFile(file, request_.inspect);
    // A reader that is just being started gets the interrupt too, and fails for no fault of the
    // file.
    if (result.error && ScanInterrupt::signal() != 0) {
      return;
    }
    Json document = toJson(result);
    document[kIdentityMember] = std::move(identity);
    document[kOptionsMember] = options_;
    const std::string line = jsonText(document);
    const std::lock_guard lock(mutex_);
    output_.append(line);
    const ResultFacts facts = factsOf(document);
    summary_.add(facts);
    compare(index, facts.verdict);
    ++done_;
    bar_->advance();
  }

  void compare(std::size_t index, const std::string& verdict) {
    if (before_.empty()) {
      return;
    }
    const std::string& before = before_[index];
    const bool hasChanged = !before.empty() && before != verdict;
    ++summary_.rechecked[before.empty() ? kNew : hasChanged ? kChanged : kUnchanged];
    if (hasChanged) {
      changes_[found_.files[index]] =
          fmt::format("it was \"{}\", now it is \"{}\"", verdictText(before), verdictText(verdict));
    }
  }

  ExitCode end() const {
    for (const auto& [file, change] : changes_) {
      printFileMessage(file, change);
    }
    if (!request_.isQuiet) {
      printText(summaryText(summary_));
    }
    if (const int signal = ScanInterrupt::signal(); signal != 0) {
      printMessage(fmt::format("interrupted, {} of {} files are left; --resume goes on with them",
                               found_.files.size() - done_, found_.files.size()));
      return static_cast<ExitCode>(128 + signal);
    }
    const auto highest = static_cast<ExitCode>(summary_.exitCode);
    return found_.problems.empty() ? highest : std::max(highest, ExitCode::kNotExamined);
  }

  const ScanRequest& request_;
  const Json options_;
  ScanFiles found_;
  ResultsWriter output_;
  ScanSummary summary_;
  std::mutex mutex_;
  std::vector<std::string> before_;             // the verdicts, when all is examined anew
  std::map<std::string, std::string> changes_;  // by the names of the files
  std::size_t done_ = 0;
  ProgressBar* bar_ = nullptr;
};

}  // namespace

ExitCode scan(const ScanRequest& request) { return Scan(request).run(); }

}  // namespace kestrel::host
