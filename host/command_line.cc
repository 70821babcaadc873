#include "host/command_line.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <sstream>

#include "host/utf8.h"

namespace kestrel::host {
namespace {

constexpr char kFooter[] =
    "Exit codes: 0 the file carries the services, 1 it does not, 2 it could not be examined.";

struct Texts {
  std::string surroundChannelOrder;
  bool noLabelCheck = false;
  int timeout = 30;
};

void addInspect(CLI::App& app, InspectCommand& command, Texts& texts) {
  CLI::App* inspect = app.add_subcommand(
      "inspect", "Says whether the audio tracks of a media file carry the expected services");
  inspect->add_option("FILE", command.file, "The media file")->required();
  inspect
      ->add_option("--layout", command.request.layoutDescription,
                   "The services expected for each total of tracks, as in "
                   "'T8=5.1 Mix,Stereo;T4=Stereo,Stereo'")
      ->required();
  inspect->add_option("--order", texts.surroundChannelOrder,
                      "The labels of a 5.1 Mix whose tracks have none, as in 'L R C LFE Ls Rs'");
  inspect->add_flag("--no-label-check", texts.noLabelCheck,
                    "Do not look at the labels of the file's tracks");
  inspect->add_flag("--report-all", command.request.reportAll,
                    "List the services behind a '-' of the layout too");
  inspect->add_option("--timeout", texts.timeout, "Seconds for reading the file")
      ->check(CLI::Range(1, 86400))
      ->capture_default_str();
}

std::string onOneLine(std::string text) {
  std::ranges::replace_if(
      text, [](char unit) { return static_cast<unsigned char>(unit) < ' '; }, ' ');
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

void applyTexts(const Texts& texts, InspectCommand& command) {
  if (command.request.layoutDescription.empty()) {
    throw UsageError("--layout: the text is empty");
  }
  const auto order = wideFromUtf8(texts.surroundChannelOrder);
  if (!order) {
    throw UsageError("--order: the text is not UTF-8");
  }
  command.request.surroundChannelOrder = *order;
  command.request.checkLabels = !texts.noLabelCheck;
  command.timeLimit = std::chrono::seconds(texts.timeout);
}

}  // namespace

CommandLine parseCommandLine(const std::vector<std::string>& arguments) {
  CLI::App app("Knows and checks which audio services a media file carries on its tracks.",
               "kestrel");
  InspectCommand command;
  Texts texts;
  app.set_version_flag("--version", std::string("kestrel ") + KESTREL_VERSION);
  app.require_subcommand(1);
  app.footer(kFooter);
  addInspect(app, command, texts);
  try {
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
  } catch (const CLI::ParseError& error) {
    return {std::nullopt, answerOrRaise(app, error)};
  }
  applyTexts(texts, command);
  return {command, {}};
}

}  // namespace kestrel::host
