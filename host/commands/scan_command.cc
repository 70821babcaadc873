#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "host/basics/usage_error.h"
#include "host/commands/command_line.h"
#include "host/commands/inspect_arguments.h"
#include "host/commands/output_arguments.h"
#include "host/scanning/scan.h"
#include "host/scanning/scan_files.h"

namespace kestrel::host {
namespace {

constexpr char kScanExamples[] =
    "Examples:\n"
    "  kestrel scan /media/deliveries -o results.jsonl\n"
    "  kestrel scan /media/deliveries -o results.jsonl --resume\n"
    "  kestrel scan /media/deliveries -o results.jsonl --recheck\n"
    "  find . -name '*.mxf' -print0 | kestrel scan --files-from - -0 --code 8b > results.jsonl\n"
    "Exit codes: the highest of the files (0 good, 1 does not conform, 2 not examined); 130 after\n"
    "Ctrl-C, which lets the files in hand be finished (a second one does not).";

struct ScanArguments {
  std::vector<std::string> paths;
  std::string filesFrom;
  bool isNullEnded = false;
  OutputArguments output;
  bool resume = false;
  bool recheck = false;
  bool isQuiet = false;
  std::size_t jobs = std::max(1U, std::thread::hardware_concurrency());
  InspectArguments inspect;
};

void addFileOptions(CLI::App& command, ScanArguments& arguments) {
  command.add_option("PATH", arguments.paths,
                     "Media files, and directories to be searched with all below them for files "
                     "of these extensions: " +
                         mediaExtensions());
  command.add_option("--files-from", arguments.filesFrom,
                     "A file with one PATH per line; - is the standard input");
  command.add_flag("-0,--null", arguments.isNullEnded,
                   "The paths of --files-from end with a null byte, not with a newline");
}

void addScanOptions(CLI::App& command, ScanArguments& arguments) {
  addOutputOptions(command, arguments.output,
                   "The results, a line of JSON for each file as it is finished; without it or "
                   "with - they go to the standard output");
  command.add_flag("--resume", arguments.resume,
                   "Go on with the results of -o: files that stand there and have not changed "
                   "since are not examined again");
  command.add_flag("--recheck", arguments.recheck,
                   "Go on with the results of -o, but examine all files anew and tell whose "
                   "verdict changed");
  command.add_option("--jobs", arguments.jobs, "Files that are examined at the same time")
      ->check(CLI::Range(1, 1024))
      ->capture_default_str();
  command.add_flag("-q,--quiet", arguments.isQuiet, "No progress bar and no summary");
}

std::vector<std::filesystem::path> pathsOf(const ScanArguments& arguments) {
  std::vector<std::filesystem::path> paths(arguments.paths.begin(), arguments.paths.end());
  if (!arguments.filesFrom.empty()) {
    const NameEnd end = arguments.isNullEnded ? NameEnd::kNull : NameEnd::kNewline;
    const auto listed = namesFrom(arguments.filesFrom, end);
    paths.insert(paths.end(), listed.begin(), listed.end());
  } else if (paths.empty()) {
    throw UsageError("scan: no PATH and no --files-from");
  }
  return paths;
}

void requireResults(const OutputArguments& output, const std::string& option) {
  if (output.isStandardOutput()) {
    throw UsageError(option + " needs -o with a file");
  }
  if (output.isForced) {
    throw UsageError(option + " goes on with results and --force replaces them: give one of them");
  }
}

ScanRequest requestOf(const ScanArguments& arguments) {
  if (arguments.isNullEnded && arguments.filesFrom.empty()) {
    throw UsageError("-0 needs --files-from");
  }
  const OutputArguments& output = arguments.output;
  if (arguments.resume || arguments.recheck) {
    requireResults(output, arguments.recheck ? "--recheck" : "--resume");
  }
  requireNoInput(output, {arguments.filesFrom, arguments.inspect.layoutFile.value_or("")});
  return {.paths = pathsOf(arguments),
          .inspect = inspectOptions(arguments.inspect),
          .output = output.target(),
          .resume = arguments.resume,
          .recheck = arguments.recheck,
          .replace = output.isForced,
          .isQuiet = arguments.isQuiet,
          .jobs = arguments.jobs};
}

}  // namespace

void addScan(CLI::App& program, CommandRun& run) {
  CLI::App* command = program.add_subcommand(
      "scan", "Examines many files, whole directories: a line of JSON for each");
  const auto arguments = std::make_shared<ScanArguments>();
  addFileOptions(*command, *arguments);
  addScanOptions(*command, *arguments);
  addInspectOptions(*command, arguments->inspect);
  command->footer(kScanExamples);
  command->callback(
      [arguments, &run] { run = [arguments] { return scan(requestOf(*arguments)); }; });
}

}  // namespace kestrel::host
