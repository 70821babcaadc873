#include "host/reading/isolation.h"

#include <fcntl.h>
#include <linux/landlock.h>
#include <seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <span>
#include <stdexcept>

namespace kestrel::host {
namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kIsSanitized = true;
#elif defined(__has_feature)
constexpr bool kIsSanitized = __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
constexpr bool kIsSanitized = false;
#endif

void require(bool holds) {
  if (!holds) {
    throw std::runtime_error("the reader process cannot be isolated");
  }
}

void setLimit(__rlimit_resource resource, rlim_t limit) {
  const rlimit both{limit, limit};
  require(::setrlimit(resource, &both) == 0);
}

// The version of its interface; below 1 without it. The C library has no function for landlock.
long landlockVersion() {
  return ::syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
}

bool hasSeccomp() { return ::prctl(PR_GET_SECCOMP) >= 0; }

// All rights of the file system that a version knows: later ones added linking between folders,
// cutting files short, and orders to devices.
std::uint64_t allRights(long version) {
  constexpr std::array<std::uint64_t, 5> kRights = {0x1FFF, 0x3FFF, 0x7FFF, 0x7FFF, 0xFFFF};
  const auto known = std::min<std::size_t>(static_cast<std::size_t>(version), kRights.size());
  return kRights.at(known - 1);
}

// A sanitizer asks by a pipe whether it may look at memory, and for the other stack of signals.
constexpr std::array kAllowedWhenSanitized = {SCMP_SYS(pipe2), SCMP_SYS(close),
                                              SCMP_SYS(sigaltstack)};

struct ReleaseFilter {
  void operator()(void* filter) const { ::seccomp_release(filter); }
};

constexpr std::array kAllowed = {
    SCMP_SYS(read),         SCMP_SYS(pread64),       SCMP_SYS(write),
    SCMP_SYS(lseek),        SCMP_SYS(fstat),         SCMP_SYS(brk),
    SCMP_SYS(munmap),       SCMP_SYS(mremap),        SCMP_SYS(madvise),
    SCMP_SYS(futex),        SCMP_SYS(clock_gettime), SCMP_SYS(gettimeofday),
    SCMP_SYS(time),         SCMP_SYS(getpid),        SCMP_SYS(gettid),
    SCMP_SYS(getrandom),    SCMP_SYS(sched_yield),   SCMP_SYS(rt_sigaction),
    SCMP_SYS(rt_sigreturn), SCMP_SYS(exit),          SCMP_SYS(rt_sigprocmask),
    SCMP_SYS(exit_group)};

void allow(scmp_filter_ctx filter, std::span<const int> calls) {
  for (const int call : calls) {
    require(::seccomp_rule_add(filter, SCMP_ACT_ALLOW, call, 0) == 0);
  }
}

// Memory may be asked for, but none that can be executed.
constexpr std::array kAllowedWithoutExecution = {SCMP_SYS(mmap), SCMP_SYS(mprotect)};

}  // namespace

std::vector<std::string> missingWalls() {
  std::vector<std::string> missing;
  if (landlockVersion() < 1) {
    missing.emplace_back("landlock");
  }
  if (!hasSeccomp()) {
    missing.emplace_back("seccomp");
  }
  return missing;
}

void denyInheritance(int kept) {
  require(::clearenv() == 0);
  require(::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0);
  require(::prctl(PR_SET_DUMPABLE, 0) == 0);
  setLimit(RLIMIT_CORE, 0);
  const auto only = static_cast<unsigned>(kept);
  constexpr unsigned kFirst = STDERR_FILENO + 1;
  require(only <= kFirst || ::close_range(kFirst, only - 1, 0) == 0);
  require(::close_range(only + 1, ~0U, 0) == 0);
}

void limitProcess(const ProcessLimits& limits) {
  if constexpr (!kIsSanitized) {
    setLimit(RLIMIT_AS, limits.memory);
  }
  setLimit(RLIMIT_CPU, static_cast<rlim_t>(limits.processorTime.count()));
}

void denyFileSystem() {
  const landlock_ruleset_attr attributes{.handled_access_fs = allRights(landlockVersion())};
  const auto ruleset =
      static_cast<int>(::syscall(SYS_landlock_create_ruleset, &attributes, sizeof attributes, 0));
  require(ruleset >= 0);
  require(::syscall(SYS_landlock_restrict_self, ruleset, 0) == 0);
  ::close(ruleset);
}

void denySystemCalls() {
  const std::unique_ptr<void, ReleaseFilter> filter(::seccomp_init(SCMP_ACT_ERRNO(EPERM)));
  require(filter != nullptr);
  allow(filter.get(), kAllowed);
  if constexpr (kIsSanitized) {
    allow(filter.get(), kAllowedWhenSanitized);
  }
  for (const int call : kAllowedWithoutExecution) {
    require(::seccomp_rule_add(filter.get(), SCMP_ACT_ALLOW, call, 1,
                               SCMP_A2(SCMP_CMP_MASKED_EQ, PROT_EXEC, 0)) == 0);
  }
  require(::seccomp_load(filter.get()) == 0);
}

void isolateProcess(const ProcessLimits& limits, int kept) {
  denyInheritance(kept);
  limitProcess(limits);
  if (landlockVersion() >= 1) {
    denyFileSystem();
  }
  if (hasSeccomp()) {
    denySystemCalls();
  }
}

}  // namespace kestrel::host
