#include <sys/ioctl.h>
#include <unistd.h>

#include "host/basics/console.h"

namespace kestrel::host {

std::vector<std::string> programArguments(int argc, char** argv) {
  return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

bool isTerminal(StandardStream stream) { return ::isatty(static_cast<int>(stream)) == 1; }

std::size_t terminalColumns(StandardStream stream) {
  winsize size{};
  return ::ioctl(static_cast<int>(stream), TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

void prepareStandardStreams() {}

}  // namespace kestrel::host
