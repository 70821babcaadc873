#include "host/commands/command_line.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <array>
#include <sstream>

#include "api/kestrel.h"
#include "host/basics/output.h"
#include "host/basics/text_parts.h"
#include "host/basics/usage_error.h"
#include "host/reading/media_reader.h"

namespace kestrel::host {
namespace {

constexpr char kProgramFooter[] =
    "Examples:\n"
    "  kestrel inspect film.mxf\n"
    "  kestrel inspect film.mxf --layout 'T8=5.1 Mix,Stereo;T4=Stereo,Stereo'\n"
    "  kestrel explain 'T8=5.1 Mix,Stereo'\n"
    "\n"
    "Exit codes: 0 the files conform, or nothing was expected and they were identified; 1 one "
    "does\n"
    "not conform; 2 one could not be examined, or the arguments make no sense.";

// The commands, in the order in which the help lists them.
constexpr std::array kCommands = {AddCommand{addInspect}, AddCommand{addCatalogue},
                                  AddCommand{addCodes},   AddCommand{addExplain},
                                  AddCommand{addScan},    AddCommand{addReport}};

// What the reader of media files cannot be shut off by, in a second line.
std::string versionText() {
  const std::vector<std::string> missing = missingReaderWalls();
  std::string text = std::string("kestrel ") + KESTREL_VERSION;
  if (!missing.empty()) {
    text += fmt::format("\nThis system cannot isolate the reader fully: it has no {}.",
                        fmt::join(missing, " and no "));
  }
  return text;
}

// Help and version come as "errors" of exit code 0.
std::string answerOrRaise(const CLI::App& app, const CLI::ParseError& error) {
  if (error.get_exit_code() != 0) {
    throw UsageError(onOneLine(error.what()) + " (kestrel --help tells more)");
  }
  std::ostringstream answer;
  app.exit(error, answer, answer);
  return answer.str();
}

}  // namespace

CommandRun parseCommandLine(const std::vector<std::string>& arguments) {
  CLI::App app("Knows and checks which audio services a media file carries on its tracks.",
               "kestrel");
  CommandRun run;
  app.set_version_flag("--version", versionText());
  app.require_subcommand(1);
  app.footer(kProgramFooter);
  for (const AddCommand add : kCommands) {
    add(app, run);
  }
  try {
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
  } catch (const CLI::ParseError& error) {
    return [answer = answerOrRaise(app, error)] {
      writeResult("", answer);
      return ExitCode::kConforms;
    };
  }
  return run;
}

}  // namespace kestrel::host
