// What the program says: results on the standard output or in a file that is written whole or not
// at all, messages on the standard error.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

namespace kestrel::host {

/// The result cannot be written; the text says why.
class OutputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Writes a file beside the given one and puts it in its place when it is complete, so that nobody
/// ever finds a half-written file under the name and an older file stays when writing fails. It
/// keeps the mode of the older one, and its owner where that is permitted. A device or a pipe is
/// written directly. Raises OutputError.
void writeWholeFile(const std::filesystem::path& file, std::string_view content);

/// Raises UsageError when a regular file is to be written that is the input too, by whatever name
/// or link.
/// @param input  in UTF-8; "-": the standard input; empty: none
void requireOtherFile(const std::filesystem::path& output, const std::string& input);

/// @param file  in UTF-8; empty or "-": the standard output. Raises OutputError
void writeResult(const std::string& file, std::string_view content);

/// A text for the user on the standard error; what cannot be written there is lost.
void printText(const std::string& text);

/// A line of it.
void printMessage(const std::string& text);

/// "name": why
void printFileMessage(const std::string& name, const std::string& why);

}  // namespace kestrel::host
