// kestrel explain TEXT
#include <CLI/CLI.hpp>
#include <memory>

#include "host/basics/output.h"
#include "host/basics/usage_error.h"
#include "host/basics/utf8.h"
#include "host/commands/command_line.h"
#include "host/reporting/layout_explanation.h"

namespace kestrel::host {
namespace {

constexpr char kExplainFooter[] =
    "Examples:\n"
    "  kestrel explain 'T8=5.1 Mix,Stereo;T4=Stereo,Stereo'\n"
    "  kestrel explain 'T4=Sterio,Stereo'\n"
    "\n"
    "Exit codes: 0 every entry is sound; 1 something in the text is not used or not known.";

ExitCode explain(const std::string& text) {
  if (!wideFromUtf8(text)) {
    throw UsageError("the text is not UTF-8");
  }
  const LayoutExplanation explanation = explainLayout(text);
  writeResult("", explanation.text);
  return explanation.isSound ? ExitCode::kConforms : ExitCode::kDoesNotConform;
}

}  // namespace

void addExplain(CLI::App& program, CommandRun& run) {
  CLI::App* command =
      program.add_subcommand("explain", "Says how a layout description is read, entry by entry");
  const auto text = std::make_shared<std::string>();
  command->add_option("TEXT", *text, "The layout description")->required();
  command->footer(kExplainFooter);
  command->callback([text, &run] { run = [text] { return explain(*text); }; });
}

}  // namespace kestrel::host
