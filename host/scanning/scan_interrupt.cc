// A signal handler has no argument of its own, so the number it leaves stands at file scope.
#include "host/scanning/scan_interrupt.h"

#include <atomic>

namespace kestrel::host {
namespace {

std::atomic<int> lastSignal = 0;
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler may not wait");

void takeNote(int signal) { lastSignal = signal; }

// What was told to be ignored stays so: nohup, a job in the background.
bool isIgnored(int signal) {
  struct sigaction now {};
  return ::sigaction(signal, nullptr, &now) == 0 && now.sa_handler == SIG_IGN;
}

}  // namespace

ScanInterrupt::ScanInterrupt() {
  lastSignal = 0;
  struct sigaction action {};
  action.sa_handler = takeNote;
  action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    ::sigaction(kSignals.at(i), isIgnored(kSignals.at(i)) ? nullptr : &action, &before_.at(i));
  }
}

ScanInterrupt::~ScanInterrupt() {
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    ::sigaction(kSignals.at(i), &before_.at(i), nullptr);
  }
}

int ScanInterrupt::signal() { return lastSignal; }

}  // namespace kestrel::host
