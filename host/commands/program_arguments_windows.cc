// main() gets its arguments in the code page of the system, which cannot hold every name; the
// system keeps the wide ones.
#include "host/commands/program_arguments.h"

#include <windows.h>

#include <shellapi.h>

#include "host/basics/utf8.h"

namespace kestrel::host {

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

}  // namespace kestrel::host
