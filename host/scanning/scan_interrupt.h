// Ctrl-C in the middle of a scan: the first asks it to end, the next one ends the process.
#pragma once

#include <array>
#include <csignal>

namespace kestrel::host {

/// While it lives, SIGINT, SIGTERM and SIGHUP are taken note of once each; then they do what they
/// did before. One at a time.
class ScanInterrupt {
 public:
  ScanInterrupt();
  ScanInterrupt(const ScanInterrupt&) = delete;
  ScanInterrupt& operator=(const ScanInterrupt&) = delete;
  ~ScanInterrupt();

  /// The number of the signal that came; 0: none. Any thread may ask.
  static int signal();

 private:
  static constexpr std::array<int, 3> kSignals = {SIGINT, SIGTERM, SIGHUP};
  std::array<struct sigaction, kSignals.size()> before_{};
};

}  // namespace kestrel::host
