#include "host/basics/console.h"
#include "host/commands/program.h"
#if !defined(_WIN32)
#include "host/reading/reader_process.h"
#endif

int main(int argc, char** argv) {
  using namespace kestrel::host;
  const std::vector<std::string> arguments = programArguments(argc, argv);
#if !defined(_WIN32)
  if (isReaderCommand(arguments)) {
    runReaderProcess();
  }
#endif
  prepareStandardStreams();
  return static_cast<int>(runProgram(arguments));
}
