#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "host/command.h"
#include "host/messages.h"
#include "host/output.h"
#include "host/report_page.h"
#include "host/utf8.h"

namespace kestrel::host {
namespace {

constexpr char kExamples[] =
    "Example:\n"
    "  kestrel report monday.jsonl tuesday.jsonl -o report.html\n"
    "Exit codes: 0 the page is written, 2 it is not.";

struct ReportArguments {
  std::vector<std::string> results;
  std::string output;
};

ExitCode report(const ReportArguments& arguments) {
  std::vector<std::filesystem::path> results;
  std::ranges::transform(arguments.results, std::back_inserter(results), pathFromUtf8);
  const ReportPage page = reportPage(results);
  std::ranges::for_each(page.warnings, printMessage);
  writeResult(arguments.output, page.html);
  return ExitCode::kConforms;
}

}  // namespace

void addReport(CLI::App& program, CommandRun& run) {
  CLI::App* command = program.add_subcommand("report", "Makes one page of the results of scans");
  const auto arguments = std::make_shared<ReportArguments>();
  command->add_option("RESULTS", arguments->results, "Files that kestrel scan wrote")->required();
  command->add_option("-o,--output", arguments->output,
                      "The page; without it, it goes to the standard output");
  command->footer(kExamples);
  command->callback([arguments, &run] { run = [arguments] { return report(*arguments); }; });
}

}  // namespace kestrel::host
