#include "host/commands/output_arguments.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <filesystem>
#include <system_error>

#include "host/basics/file_names.h"
#include "host/basics/output.h"
#include "host/basics/text_input.h"
#include "host/basics/usage_error.h"
#include "host/basics/utf8.h"
#include "host/reporting/own_output.h"

namespace kestrel::host {
namespace {

namespace fs = std::filesystem;

bool holdsSomething(const fs::path& file) {
  std::error_code error;
  return fs::is_regular_file(file, error) && fs::file_size(file, error) > 0 && !error;
}

}  // namespace

void addOutputOptions(CLI::App& command, OutputArguments& arguments, const std::string& help) {
  command.add_option("-o,--output", arguments.file, help);
  command.add_flag("--force", arguments.isForced,
                   "Replace what the file of -o holds, whoever wrote it");
}

void requireNoInput(const OutputArguments& arguments, const std::vector<std::string>& inputs) {
  if (arguments.isStandardOutput()) {
    return;
  }
  for (const std::string& input : inputs) {
    requireOtherFile(pathFromUtf8(arguments.file), input);
  }
}

void requireOwn(const OutputArguments& arguments) {
  const fs::path file = pathFromUtf8(arguments.file);
  if (arguments.isForced || arguments.isStandardOutput() || !holdsSomething(file)) {
    return;
  }
  if (!isOwnOutput(TextInput(file).takeRest(kOwnOutputBegin))) {
    throw UsageError(fmt::format(
        "\"{}\" was not written by kestrel: give -o another name, or --force to replace it",
        printable(arguments.file)));
  }
}

}  // namespace kestrel::host
