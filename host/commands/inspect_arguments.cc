#include "host/commands/inspect_arguments.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <array>
#include <cstdint>

#include "host/basics/file_names.h"
#include "host/basics/usage_error.h"
#include "host/basics/utf8.h"
#include "host/judging/expectation.h"
#include "host/reading/media_reader.h"

namespace kestrel::host {
namespace {

/// One way to say what is expected.
struct ExpectationOption {
  const char* name;
  std::optional<std::string> InspectArguments::*text;
  Expectation (*read)(const std::string& text);
  const char* help;
};

Expectation layoutFile(const std::string& name) { return expectedLayoutFile(pathFromUtf8(name)); }

constexpr std::array<ExpectationOption, 4> kExpectations = {{
    {"--layout", &InspectArguments::layout, expectedLayout,
     "Expected: services for each total of tracks, as in 'T8=5.1 Mix,Stereo;T2=Stereo'"},
    {"--layout-file", &InspectArguments::layoutFile, layoutFile,
     "Expected: the same, read from a file; - is the standard input"},
    {"--item", &InspectArguments::item, expectedItem,
     "Expected: a layout of the catalogue, by id, name or services ('Stereo,5.1 Mix')"},
    {"--code", &InspectArguments::code, expectedCode,
     "Expected: a layout code of EBU R 123, as '8b' or 'EBU R 123: 8b'"},
}};

std::optional<Expectation> readExpectation(const InspectArguments& arguments) {
  std::optional<Expectation> expectation;
  for (const ExpectationOption& option : kExpectations) {
    const std::optional<std::string>& text = arguments.*option.text;
    if (!text) {
      continue;
    }
    if (expectation) {
      throw UsageError("--layout, --layout-file, --item and --code exclude each other");
    }
    try {
      expectation = option.read(*text);
    } catch (const UsageError& error) {
      throw UsageError(fmt::format("{}: {}", option.name, error.what()));
    }
  }
  return expectation;
}

void requireWalls() {
  const std::vector<std::string> missing = missingReaderWalls();
  if (!missing.empty()) {
    throw UsageError(
        fmt::format("--require-isolation: this system has no {}", fmt::join(missing, " and no ")));
  }
}

}  // namespace

void addInspectOptions(CLI::App& command, InspectArguments& arguments) {
  for (const ExpectationOption& option : kExpectations) {
    command.add_option(option.name, arguments.*option.text, option.help);
  }
  command
      .add_option("--order", arguments.order, "The labels of a 5.1 Mix in the order that is wanted")
      ->capture_default_str();
  command.add_flag("--no-label-check", arguments.skipLabels,
                   "Do not look at the labels of the file's tracks");
  command.add_flag("--report-all", arguments.reportAll,
                   "List the services behind a '-' of the layout too");
  command.add_flag("--strict", arguments.isStrict, "Warnings fail too");
  command.add_option("--timeout", arguments.timeout, "Seconds for reading one file")
      ->check(CLI::Range(1, 86400))
      ->capture_default_str();
  command.add_option("--memory-limit", arguments.memoryLimit, "MiB of memory for reading one file")
      ->check(CLI::Range(128, 1048576))
      ->capture_default_str();
  command.add_flag("--require-isolation", arguments.requiresIsolation,
                   "Read no file if the system cannot shut its reader off from the machine");
}

InspectOptions inspectOptions(const InspectArguments& arguments) {
  if (!wideFromUtf8(arguments.order)) {
    throw UsageError("--order: the text is not UTF-8");
  }
  InspectOptions options;
  options.expectation = readExpectation(arguments);
  options.surroundChannelOrder = arguments.order;
  options.checkLabels = !arguments.skipLabels;
  options.reportAll = arguments.reportAll;
  options.isStrict = arguments.isStrict;
  options.timeLimit = std::chrono::seconds(arguments.timeout);
  if (arguments.requiresIsolation) {
    requireWalls();
  }
  options.reader =
      platformReader({options.timeLimit, static_cast<std::uint64_t>(arguments.memoryLimit) << 20});
  return options;
}

}  // namespace kestrel::host
