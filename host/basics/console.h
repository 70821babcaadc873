// What the program was started with: its arguments and its standard streams.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace kestrel::host {

/// The arguments without the program's name, in UTF-8, or as the bytes that they are where names
/// are bytes.
std::vector<std::string> programArguments(int argc, char** argv);

enum class StandardStream { kInput = 0, kOutput = 1, kErrors = 2 };

bool isTerminal(StandardStream stream);

/// The width of the terminal that the stream leads to; 0: not known.
std::size_t terminalColumns(StandardStream stream);

/// To be called first of all. On Windows: lets the console show UTF-8 and colours, and keeps the
/// standard streams from changing line ends. Elsewhere: takes the place of those that are closed,
/// so that no file that is opened later does. Reading the input and writing the output then still
/// fail; messages are lost. And a limit to the size of files is told as an error.
void prepareStandardStreams();

}  // namespace kestrel::host
