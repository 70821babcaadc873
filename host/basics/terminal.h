// What the standard streams lead to.
#pragma once

#include <cstddef>

namespace kestrel::host {

enum class StandardStream { kInput = 0, kOutput = 1, kErrors = 2 };

bool isTerminal(StandardStream stream);

/// The width of the terminal of the standard output; 0: not known.
std::size_t terminalColumns();

/// On Windows: lets the console show UTF-8 and colours, and keeps the standard streams from
/// changing line ends. Nothing elsewhere.
void prepareStandardStreams();

}  // namespace kestrel::host
