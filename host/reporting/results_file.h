// Files of results: one document per line, as a scan writes them.
//
// A line is complete when its newline stands. What is after the last newline is what a scan was
// writing when it was killed, or a whole document whose newline an editor took away.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <stdexcept>

#include "host/basics/json.h"

namespace kestrel::host {

/// The file is not one of results; what() says which line of which file.
class NoResults : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// In bytes; a result of thousands of tracks has a few. A longer line is refused.
inline constexpr std::size_t kLongestLine = 16U << 20;

struct ResultsEnd {
  std::uintmax_t size = 0;    ///< of the file without a torn line, in bytes
  bool isTorn = false;        ///< part of a line stands after that size
  bool lacksNewline = false;  ///< the last document is whole but for its newline
};

/// Calls `use` with each document in turn; only one of them is held at a time. Raises NoResults at
/// the first line that is too long, is not a result, has not its form (result_form.h) or for which
/// `use` raises anything, InputError where the file cannot be read; `use` has then seen those
/// before it.
ResultsEnd readResultsFile(const std::filesystem::path& file,
                           const std::function<void(const Json&)>& use);

}  // namespace kestrel::host
