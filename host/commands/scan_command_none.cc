// Where the host cannot read media files itself there is nothing to scan.
#include "host/commands/command_line.h"

namespace kestrel::host {

void addScan(CLI::App& /*program*/, CommandRun& /*run*/) {}

}  // namespace kestrel::host
