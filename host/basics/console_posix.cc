#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>

#include "host/basics/console.h"
#include "host/basics/exit_code.h"

namespace kestrel::host {
namespace {

bool isClosed(int descriptor) { return ::fcntl(descriptor, F_GETFD) < 0 && errno == EBADF; }

// Those before it are open, so the lowest number that is free is the wanted one.
void openNullDeviceAs(int descriptor, int mode) {
  if (::open("/dev/null", mode) != descriptor) {
    std::_Exit(static_cast<int>(ExitCode::kNotExamined));  // there is nobody to be told
  }
}

void openClosedStreams() {
  constexpr std::array kModes = {O_WRONLY, O_RDONLY, O_WRONLY};
  for (int descriptor = 0; descriptor < static_cast<int>(kModes.size()); ++descriptor) {
    if (isClosed(descriptor)) {
      openNullDeviceAs(descriptor, kModes.at(static_cast<std::size_t>(descriptor)));
    }
  }
}

}  // namespace

std::vector<std::string> programArguments(int argc, char** argv) {
  return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

bool isTerminal(StandardStream stream) { return ::isatty(static_cast<int>(stream)) == 1; }

std::size_t terminalColumns(StandardStream stream) {
  winsize size{};
  return ::ioctl(static_cast<int>(stream), TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

void prepareStandardStreams() {
  openClosedStreams();
  std::signal(SIGXFSZ, SIG_IGN);
}

}  // namespace kestrel::host
