// Shares the files of a scan among threads. A thread mostly waits for its reader process, so there
// are as many readers at work as threads.
#pragma once

#include <cstddef>
#include <functional>

namespace kestrel::host {

struct SharedWork {
  std::size_t count = 0;
  std::size_t jobs = 1;
  std::function<bool()> isStopped;           ///< asked before each piece is begun
  std::function<void(std::size_t)> doPiece;  ///< called by any of the threads
};

/// Does the pieces 0 .. count-1, each once, begun in that order. Returns when all are done, or when
/// those begun before a stop are. What a piece raises stops the others and is raised here.
void shareWork(const SharedWork& work);

}  // namespace kestrel::host
