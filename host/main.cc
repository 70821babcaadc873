#include <string>
#include <vector>

#include "host/program.h"
#include "host/reader_process.h"

int main(int argc, char** argv) {
  using namespace kestrel::host;
  const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
  if (isReaderCommand(arguments)) {
    runReaderProcess(arguments);
  }
  return static_cast<int>(runProgram(arguments));
}
