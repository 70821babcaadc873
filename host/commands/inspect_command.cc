// kestrel inspect FILE...
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <array>
#include <memory>
#include <nlohmann/json.hpp>

#include "host/basics/file_names.h"
#include "host/basics/json.h"
#include "host/basics/output.h"
#include "host/basics/usage_error.h"
#include "host/commands/command_line.h"
#include "host/commands/inspect_arguments.h"
#include "host/commands/output_arguments.h"
#include "host/reading/mediainfo_json.h"
#include "host/reporting/html_page.h"
#include "host/reporting/result_json.h"
#include "host/reporting/text_report.h"

namespace kestrel::host {
namespace {

constexpr char kInspectFooter[] =
    "Examples:\n"
    "  kestrel inspect film.mxf                      what is it, and does it hold what it "
    "declares?\n"
    "  kestrel inspect film.mxf --code 8b            is it 5.1 and a stereo downmix?\n"
    "  kestrel inspect *.mxf --item '2 Stereo' --strict --format json -o results.json\n"
    "  mediainfo --Output=JSON -f film.mxf | kestrel inspect --streams-from -\n"
    "\n"
    "Exit codes: 0 the file conforms, or nothing was expected and it was identified; 1 it does "
    "not\n"
    "conform; 2 it could not be examined. For several files the highest.";

struct InspectCommand {
  std::vector<std::string> files;
  std::optional<std::string> streamsFrom;
  InspectArguments arguments;
  std::string format = "text";
  OutputArguments output;
};

using Results = std::vector<FileResult>;

std::string asText(const Results& results) {
  const TextStyle style = standardOutputStyle();
  std::string text;
  for (const FileResult& result : results) {
    if (!result.error) {
      text += (text.empty() ? "" : "\n") + textReport(result, style);
    }
  }
  return text;
}

std::string asPlainText(const Results& results) {
  std::string text;
  for (const FileResult& result : results) {
    text += (text.empty() ? "" : "\n") + textReport(result, {});
  }
  return text;
}

Json documentsOf(const Results& results) {
  auto documents = Json::array();
  for (const FileResult& result : results) {
    documents.push_back(toJson(result));
  }
  return documents;
}

std::string asJson(const Results& results) {
  const Json documents = documentsOf(results);
  return jsonText(results.size() == 1 ? documents.front() : documents, 2) + "\n";
}

std::string rendered(const InspectCommand& command, const Results& results) {
  if (command.format == "json") {
    return asJson(results);
  }
  if (command.format == "html") {
    return htmlPage(documentsOf(results));
  }
  return command.output.isStandardOutput() ? asText(results) : asPlainText(results);
}

// The options with the reader, and the files when only the reader knows them.
InspectOptions prepare(InspectCommand& command) {
  InspectOptions options = inspectOptions(command.arguments);
  if (command.streamsFrom) {
    const auto reader = std::make_shared<JsonReader>(*command.streamsFrom);
    if (command.files.empty()) {
      command.files = reader->files();
    }
    options.reader = reader;
  } else if (!options.reader) {
    throw UsageError("this build reads no media files itself: --streams-from is needed");
  } else if (command.files.empty()) {
    throw UsageError("no file is given (kestrel inspect --help tells more)");
  }
  return options;
}

void checkOutput(const InspectCommand& command) {
  requireNoInput(command.output, command.files);
  requireNoInput(command.output,
                 {command.streamsFrom.value_or(""), command.arguments.layoutFile.value_or("")});
  requireOwn(command.output);
}

ExitCode runInspect(InspectCommand& command) {
  const InspectOptions options = prepare(command);
  checkOutput(command);
  Results results;
  ExitCode exitCode = ExitCode::kConforms;
  for (const std::string& file : command.files) {
    const FileResult& result = results.emplace_back(inspectFile(pathFromUtf8(file), options));
    exitCode = worse(exitCode, result.verdict.exitCode);
    if (result.error) {
      printFileMessage(file, result.error->sentence);
    }
  }
  writeResult(command.output.target(), rendered(command, results));
  return exitCode;
}

}  // namespace

void addInspect(CLI::App& program, CommandRun& run) {
  CLI::App* inspect = program.add_subcommand(
      "inspect", "Shows which audio services media files carry, and whether they are the expected");
  const auto command = std::make_shared<InspectCommand>();
  inspect->add_option("FILE", command->files, "The media files");
  inspect->add_option("--streams-from", command->streamsFrom,
                      "Read no media file: take the streams from the output of 'mediainfo "
                      "--Output=JSON -f', a file or - for the standard input");
  addInspectOptions(*inspect, command->arguments);
  inspect->add_option("--format", command->format, "text, json or html")
      ->check(CLI::IsMember({"text", "json", "html"}))
      ->capture_default_str();
  addOutputOptions(*inspect, command->output,
                   "Write the result into this file, whole or not at all; - is the standard "
                   "output");
  inspect->footer(kInspectFooter);
  inspect->callback([command, &run] { run = [command] { return runInspect(*command); }; });
}

}  // namespace kestrel::host
