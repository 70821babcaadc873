#include "host/scanning/scan_workers.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace kestrel::host {
namespace {

class Sharing {
 public:
  explicit Sharing(const SharedWork& work) : work_(work) {}

  void run() {
    {
      std::vector<std::jthread> threads;
      for (std::size_t job = 0; job < std::min(work_.jobs, work_.count); ++job) {
        threads.emplace_back([this] { workOn(); });
      }
    }
    if (failure_) {
      std::rethrow_exception(failure_);
    }
  }

 private:
  void workOn() {
    try {
      while (!hasFailed_ && !work_.isStopped()) {
        const std::size_t piece = next_++;
        if (piece >= work_.count) {
          return;
        }
        work_.doPiece(piece);
      }
    } catch (...) {
      fail(std::current_exception());
    }
  }

  void fail(std::exception_ptr failure) {
    const std::lock_guard lock(mutex_);
    hasFailed_ = true;
    failure_ = failure_ ? failure_ : std::move(failure);
  }

  const SharedWork& work_;
  std::atomic<std::size_t> next_ = 0;
  std::atomic<bool> hasFailed_ = false;
  std::mutex mutex_;
  std::exception_ptr failure_;
};

}  // namespace

void shareWork(const SharedWork& work) { Sharing(work).run(); }

}  // namespace kestrel::host
