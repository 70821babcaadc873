// Writes the lines of a file of results. Each line goes out with one write(2) at the end of the
// file, so that a process which is killed leaves whole lines and at most one torn one, and threads
// do not mix theirs.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <system_error>

#include "host/reporting/results_file.h"

namespace kestrel::host {

class ResultsWriter {
 public:
  /// Lines go to the standard output.
  ResultsWriter();
  /// Raises OutputError when the file cannot be opened or another scan writes to it. A file that is
  /// not there is made; the lines of one that is there stay.
  explicit ResultsWriter(const std::filesystem::path& file);
  ResultsWriter(const ResultsWriter&) = delete;
  ResultsWriter& operator=(const ResultsWriter&) = delete;
  ~ResultsWriter();

  /// Takes away a torn line and adds a newline that is missing, as readResultsFile() found them.
  /// Raises OutputError when another scan wrote to the file while it was read.
  void mend(const ResultsEnd& end);

  /// Takes away all that stands in the file. Raises OutputError.
  void clear();

  /// Raises OutputError when the line cannot be written; what was written of it is taken away. One
  /// thread at a time.
  void append(const std::string& line);

  /// Waits until the lines are on the disk. Raises OutputError for what only shows at the end, such
  /// as the quota of a network file system.
  void finish();

 private:
  [[noreturn]] void fail(const std::error_code& error) const;
  [[noreturn]] void refuse() const;
  void keepLocked() const;
  void write(std::string_view text);

  std::string name_;
  int descriptor_;
  off_t size_ = -1;  ///< when it was opened; -1: it is no regular file
};

}  // namespace kestrel::host
