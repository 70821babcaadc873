#include "host/program.h"

#include <fmt/format.h>

#include <cstdio>
#include <exception>

#include "host/command_line.h"
#include "host/inspection.h"
#include "host/libmediainfo_reader.h"
#include "host/not_examined.h"
#include "host/text_report.h"
#include "host/utf8.h"

namespace kestrel::host {
namespace {

// The program itself, whatever name it was started by.
constexpr char kOwnProgram[] = "/proc/self/exe";

ExitCode fail(const std::string& text) {
  fmt::print(stderr, "kestrel: {}\n", text);
  return ExitCode::kNotExamined;
}

ExitCode print(const std::string& text, ExitCode code) {
  const bool isWritten = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
  if (std::fflush(stdout) != 0 || !isWritten) {
    return fail("the result cannot be written to the standard output");
  }
  return code;
}

ExitCode inspect(const InspectCommand& command) {
  try {
    LibmediainfoReader reader(kOwnProgram, command.timeLimit);
    const Inspection inspection = inspectFile(command.file, command.request, reader);
    const bool conforms = inspection.check.conformance == Conformance::kConforms;
    return print(textReport(inspection),
                 conforms ? ExitCode::kConforms : ExitCode::kDoesNotConform);
  } catch (const NotExamined& reason) {
    return fail(fmt::format("\"{}\": {}", printable(command.file), reason.what()));
  }
}

}  // namespace

ExitCode runProgram(const std::vector<std::string>& arguments) {
  try {
    const CommandLine commandLine = parseCommandLine(arguments);
    return commandLine.inspect ? inspect(*commandLine.inspect)
                               : print(commandLine.answer, ExitCode::kConforms);
  } catch (const std::exception& error) {
    return fail(error.what());
  }
}

}  // namespace kestrel::host
