#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <filesystem>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "host/basics/file_names.h"
#include "host/basics/output.h"
#include "host/basics/usage_error.h"
#include "host/commands/command_line.h"
#include "host/commands/output_arguments.h"
#include "host/reporting/report.h"
#include "host/scanning/scan_files.h"

namespace kestrel::host {
namespace {

constexpr char kExamples[] =
    "Examples:\n"
    "  kestrel report monday.jsonl tuesday.jsonl -o report.html\n"
    "  kestrel report monday.jsonl tuesday.jsonl --format jsonl -o both.jsonl\n"
    "  kestrel report both.jsonl --files-from deliveries.txt --format text\n"
    "Exit codes: 0 the report is written, 2 it is not.";

struct ReportFormat {
  const char* name;
  Report (*make)(const std::vector<std::filesystem::path>& results, const WantedFiles& wanted);
};

constexpr std::array kFormats = {ReportFormat{"html", reportPage},
                                 ReportFormat{"text", reportTotals},
                                 ReportFormat{"jsonl", reportLines}};

struct ReportArguments {
  std::vector<std::string> results;
  std::string format = kFormats.front().name;
  std::string filesFrom;
  bool isNullEnded = false;
  OutputArguments output;
};

WantedFiles wantedFiles(const ReportArguments& arguments) {
  if (!arguments.filesFrom.empty()) {
    return namesFrom(pathFromUtf8(arguments.filesFrom),
                     arguments.isNullEnded ? NameEnd::kNull : NameEnd::kNewline);
  }
  if (arguments.isNullEnded) {
    throw UsageError("-0 needs --files-from");
  }
  return std::nullopt;
}

ExitCode report(const ReportArguments& arguments) {
  requireNoInput(arguments.output, arguments.results);
  requireNoInput(arguments.output, {arguments.filesFrom});
  requireOwn(arguments.output);
  std::vector<std::filesystem::path> results;
  std::ranges::transform(arguments.results, std::back_inserter(results), pathFromUtf8);
  const auto* format = std::ranges::find(kFormats, arguments.format, &ReportFormat::name);
  const Report made = format->make(results, wantedFiles(arguments));
  std::ranges::for_each(made.warnings, printMessage);
  writeResult(arguments.output.target(), made.text);
  return ExitCode::kConforms;
}

void addOptions(CLI::App& command, ReportArguments& arguments) {
  std::vector<std::string> formats;
  std::ranges::transform(kFormats, std::back_inserter(formats), &ReportFormat::name);
  command
      .add_option("RESULTS", arguments.results,
                  "Files that kestrel scan wrote; - is the standard input")
      ->required();
  command
      .add_option("--format", arguments.format,
                  "html: a page; text: the totals; jsonl: the last result of each file, as lines")
      ->check(CLI::IsMember(formats))
      ->capture_default_str();
  command.add_option("--files-from", arguments.filesFrom,
                     "A file with one file's name per line, - is the standard input: the report is "
                     "of these, and is not made when one of them has no result");
  command.add_flag("-0,--null", arguments.isNullEnded,
                   "The names of --files-from end with a null byte, not with a newline");
  addOutputOptions(command, arguments.output,
                   "The report, whole or not at all; without it or with - it goes to the standard "
                   "output");
}

}  // namespace

void addReport(CLI::App& program, CommandRun& run) {
  CLI::App* command = program.add_subcommand("report", "Makes one report of the results of scans");
  const auto arguments = std::make_shared<ReportArguments>();
  addOptions(*command, *arguments);
  command->footer(kExamples);
  command->callback([arguments, &run] { run = [arguments] { return report(*arguments); }; });
}

}  // namespace kestrel::host
