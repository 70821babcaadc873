#include <exception>

#include "host/basics/console.h"
#include "host/basics/exit_code.h"
#include "host/basics/output.h"
#include "host/commands/command_line.h"
#if !defined(_WIN32)
#include "host/reading/reader_process.h"
#endif

namespace kestrel::host {
namespace {

ExitCode runProgram(const std::vector<std::string>& arguments) {
  try {
    return parseCommandLine(arguments)();
  } catch (const std::exception& error) {
    printMessage(error.what());
    return ExitCode::kNotExamined;
  }
}

}  // namespace
}  // namespace kestrel::host

int main(int argc, char** argv) {
  using namespace kestrel::host;
  prepareStandardStreams();
  const std::vector<std::string> arguments = programArguments(argc, argv);
#if !defined(_WIN32)
  if (const auto limits = readerCommandIn(arguments)) {
    runReaderProcess(*limits);
  }
#endif
  return static_cast<int>(runProgram(arguments));
}
