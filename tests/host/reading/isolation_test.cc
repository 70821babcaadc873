// Each wall by a process that tries to get through it.
#include "host/reading/isolation.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <stdexcept>

namespace kestrel::host {
namespace {

constexpr ProcessLimits kLimits{std::uint64_t{1} << 30, std::chrono::seconds(30)};
constexpr int kRaised = 98;
constexpr int kThrough = 99;

// The wait status of a process of its own that does this; its exit code is what `attempt` returns.
int statusOf(const std::function<int()>& attempt) {
  const pid_t child = ::fork();
  if (child == 0) {
    try {
      ::_exit(attempt());
    } catch (const std::exception&) {
      ::_exit(kRaised);
    }
  }
  int status = 0;
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  return status;
}

// The exit code of such a process.
int codeOf(const std::function<int()>& attempt) {
  const int status = statusOf(attempt);
  EXPECT_TRUE(WIFEXITED(status)) << status;
  return WEXITSTATUS(status);
}

// errno when the result says that it failed.
int outcome(long result) { return result < 0 ? errno : kThrough; }

int ownFile() { return ::open("/proc/self/exe", O_RDONLY | O_CLOEXEC); }

bool isMissing(const std::string& wall) {
  const auto missing = missingWalls();
  return std::find(missing.begin(), missing.end(), wall) != missing.end();
}

int openAnything() { return outcome(::open("/etc/passwd", O_RDONLY)); }
int connectAnywhere() { return outcome(::socket(AF_INET, SOCK_STREAM, 0)); }
int runAnything() {
  char shell[] = "/bin/true";
  char* const words[] = {shell, nullptr};
  return outcome(::execve(shell, words, nullptr));
}

TEST(IsolationTest, withoutWallsAllOfItCanBeDone) {
  EXPECT_EQ(codeOf(openAnything), kThrough);
  EXPECT_EQ(codeOf(connectAnywhere), kThrough);
  EXPECT_EQ(codeOf(runAnything), 0);
}

TEST(IsolationTest, behindTheFirstWallNothingOfTheFileSystemOpens) {
  if (isMissing("landlock")) {
    GTEST_SKIP() << "this kernel has no landlock";
  }
  const auto behind = [](auto attempt) {
    return [attempt] {
      denyInheritance(ownFile());
      denyFileSystem();
      return attempt();
    };
  };
  EXPECT_EQ(codeOf(behind(openAnything)), EACCES);
  EXPECT_EQ(codeOf(behind([] { return outcome(::mkdir("/tmp/kestrel-isolation", 0700)); })),
            EACCES);
  EXPECT_EQ(codeOf(behind([] { return outcome(::unlink("/tmp/kestrel-isolation")); })), ENOENT);
  EXPECT_EQ(codeOf(behind(runAnything)), EACCES);
}

TEST(IsolationTest, behindTheSecondWallOnlyListedSystemCallsWork) {
  if (isMissing("seccomp")) {
    GTEST_SKIP() << "this kernel has no seccomp";
  }
  const auto behind = [](auto attempt) {
    return [attempt] {
      denyInheritance(ownFile());
      denySystemCalls();
      return attempt();
    };
  };
  const auto memory = [](int protection) {
    return ::mmap(nullptr, 4096, protection, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0) == MAP_FAILED
               ? errno
               : kThrough;
  };
  EXPECT_EQ(codeOf(behind(openAnything)), EPERM);
  EXPECT_EQ(codeOf(behind(connectAnywhere)), EPERM);
  EXPECT_EQ(codeOf(behind(runAnything)), EPERM);
  EXPECT_EQ(codeOf(behind([] { return outcome(::fork()); })), EPERM);
  EXPECT_EQ(codeOf(behind([] { return outcome(::kill(::getppid(), 0)); })), EPERM);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
  EXPECT_EQ(codeOf(behind([] { return outcome(::close(STDOUT_FILENO)); })), EPERM);
#endif
  EXPECT_EQ(codeOf(behind([&] { return memory(PROT_READ | PROT_EXEC); })), EPERM);
  EXPECT_EQ(codeOf(behind([&] { return memory(PROT_READ | PROT_WRITE); })), kThrough);
}

TEST(IsolationTest, theFileAndTheStandardDescriptorsAreLeft) {
  EXPECT_EQ(codeOf([] {
              const int before = ownFile();
              const int kept = ownFile();
              const int after = ownFile();
              denyInheritance(kept);
              const auto isOpen = [](int descriptor) { return ::fcntl(descriptor, F_GETFD) >= 0; };
              return isOpen(STDOUT_FILENO) && isOpen(kept) && !isOpen(before) && !isOpen(after)
                         ? EXIT_SUCCESS
                         : EXIT_FAILURE;
            }),
            EXIT_SUCCESS);
}

TEST(IsolationTest, noEnvironmentAndNoCoreFileIsLeft) {
  EXPECT_EQ(codeOf([] {
              denyInheritance(ownFile());
              rlimit core{};
              ::getrlimit(RLIMIT_CORE, &core);
              return ::getenv("PATH") == nullptr && core.rlim_max == 0 ? EXIT_SUCCESS
                                                                       : EXIT_FAILURE;
            }),
            EXIT_SUCCESS);
}

TEST(IsolationTest, memoryIsLimited) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  GTEST_SKIP() << "a sanitizer needs more addresses than any limit";
#endif
  const auto taken = [](std::size_t bytes) {
    return [bytes] {
      isolateProcess(kLimits, ownFile());
      void* const block = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE,
                                 MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
      return block == MAP_FAILED ? errno : kThrough;
    };
  };
  EXPECT_EQ(codeOf(taken(std::size_t{2} << 30)), ENOMEM);
  EXPECT_EQ(codeOf(taken(std::size_t{64} << 20)), kThrough);
}

TEST(IsolationTest, processorTimeIsLimited) {
  const int status = statusOf([] {
    isolateProcess({kLimits.memory, std::chrono::seconds(1)}, ownFile());
    volatile bool goesOn = true;
    while (goesOn) {
    }
    return EXIT_SUCCESS;
  });
  ASSERT_TRUE(WIFSIGNALED(status));
  EXPECT_TRUE(WTERMSIG(status) == SIGXCPU || WTERMSIG(status) == SIGKILL) << WTERMSIG(status);
}

TEST(IsolationTest, behindAllWallsAnOpenFileIsRead) {
  EXPECT_EQ(codeOf([] {
              const int file = ownFile();
              isolateProcess(kLimits, file);
              char byte = 0;
              return ::pread(file, &byte, 1, 1) == 1 && byte == 'E' ? openAnything() : kThrough;
            }),
            missingWalls().empty() ? EPERM : kThrough);
}

}  // namespace
}  // namespace kestrel::host
