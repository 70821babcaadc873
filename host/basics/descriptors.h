// Files by their descriptors: only so is every failure told, closing included, and with its reason.
// What is opened here is not inherited by other programs. Negative: failed, errno says why.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace kestrel::host {

inline constexpr int kStandardInput = 0;
inline constexpr int kStandardOutput = 1;

/// What errno says.
std::error_code lastError();

int openForReading(const std::filesystem::path& file);

/// What is there already, such as a device; nothing is made.
int openForWriting(const std::filesystem::path& file);

/// Makes a file that is not there yet, with the mode of `model`, and its owner where that is
/// permitted; where there is no `model`, with what the user's umask leaves.
int createLike(const std::filesystem::path& file, const std::filesystem::path& model);

/// Zero at the end.
std::ptrdiff_t readSome(int descriptor, char* buffer, std::size_t size);

// These give nothing on success.

std::error_code writeAll(int descriptor, std::string_view content);

/// Waits until a file is on the disk.
std::error_code synchronise(int descriptor);

std::error_code closeFile(int descriptor);

/// The failure that closing would tell, of a descriptor that stays open.
std::error_code tryClosing(int descriptor);

}  // namespace kestrel::host
