#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>

#include "host/basics/console.h"
#include "host/basics/utf8.h"

namespace kestrel::host {

// main() gets its arguments in the code page of the system, which cannot hold every name; the
// system keeps the wide ones.
std::vector<std::string> programArguments(int /*argc*/, char** /*argv*/) {
  int count = 0;
  LPWSTR* words = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int index = 1; words != nullptr && index < count; ++index) {
    arguments.push_back(utf8FromWide(words[index]));
  }
  LocalFree(words);
  return arguments;
}

bool isTerminal(StandardStream stream) { return _isatty(static_cast<int>(stream)) != 0; }

std::size_t terminalColumns(StandardStream stream) {
  HANDLE handle =
      GetStdHandle(stream == StandardStream::kErrors ? STD_ERROR_HANDLE : STD_OUTPUT_HANDLE);
  CONSOLE_SCREEN_BUFFER_INFO info{};
  if (GetConsoleScreenBufferInfo(handle, &info) == 0) {
    return 0;
  }
  return static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left + 1);
}

void prepareStandardStreams() {
  SetConsoleOutputCP(CP_UTF8);
  HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
  DWORD mode = 0;
  if (GetConsoleMode(output, &mode) != 0) {
    SetConsoleMode(output, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
  }
  for (int stream = 0; stream <= 2; ++stream) {
    _setmode(stream, _O_BINARY);
  }
}

}  // namespace kestrel::host
