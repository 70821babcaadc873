#include "host/commands/program_arguments.h"

namespace kestrel::host {

std::vector<std::string> programArguments(int argc, char** argv) {
  return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

}  // namespace kestrel::host
