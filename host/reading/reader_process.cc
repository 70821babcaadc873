// The process that reads a file writes to a pipe whose end it holds open as long as it lives: the
// end of its output is its own end, also when libmediainfo closes the standard output.
#include "host/reading/reader_process.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "host/basics/descriptors.h"
#include "host/basics/text_parts.h"
#include "host/reading/input_file.h"
#include "host/reading/libmediainfo_fields.h"
#include "host/reading/reader_protocol.h"

namespace kestrel::host {
namespace {

constexpr char kCommand[] = "--as-reader-process";

[[noreturn]] void fail() { throw std::runtime_error("a system call failed"); }

// False at the end of what there is to read.
bool readMore(int descriptor, std::string& text) {
  std::array<char, 65536> buffer{};
  const std::ptrdiff_t count = readSome(descriptor, buffer.data(), buffer.size());
  if (count > 0) {
    text.append(buffer.data(), static_cast<std::size_t>(count));
  }
  return count > 0;
}

void send(int descriptor, std::string_view text) {
  if (writeAll(descriptor, text)) {
    fail();
  }
}

// The kernel kills this process when its parent ends; a parent that ended before the request is
// told by the id.
void endWithParent(pid_t parent) {
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (::getppid() != parent) {
    ::_exit(EXIT_FAILURE);
  }
}

// Not by an exception: libmediainfo might take it for the end of the file.
void endOverMemory() { ::_exit(kReaderOverMemory); }

// The file is opened here, within its time limit, and is all that is left to the process then.
std::string answerOf(const ReaderRequest& request, const ProcessLimits& limits) {
  try {
    const InputFile file(request.file);
    isolateProcess(limits, file.descriptor());
    return rawMediaToJson(readFieldsWithLibmediainfo(file, request.parseSpeed));
  } catch (const NotExamined& reason) {
    return reasonToJson(reason);
  }
}

// The end of the process runs nothing on its way out: libmediainfo's own clean-up is of no use.
[[noreturn]] void readFile(const ReaderRequest& request, const ProcessLimits& limits, pid_t parent,
                           int output) {
  endWithParent(parent);
  ::dup2(output, STDOUT_FILENO);
  ::dup2(::open("/dev/null", O_RDONLY | O_CLOEXEC), STDIN_FILENO);
  std::set_new_handler(endOverMemory);
  int code = EXIT_FAILURE;
  try {
    send(STDOUT_FILENO, answerOf(request, limits));
    code = EXIT_SUCCESS;
  } catch (const std::exception&) {
    // The exit code tells; there is nobody else to be told.
  }
  ::_exit(code);
}

// A request comes after the answer to the one before, so all that the standard input can do
// meanwhile is to end: then nobody waits for the answer.
std::string outputOf(pid_t child, int pipe) {
  std::string output;
  for (;;) {
    std::array<pollfd, 2> sources = {{{STDIN_FILENO, 0, 0}, {pipe, POLLIN, 0}}};
    if (::poll(sources.data(), sources.size(), -1) < 0 && errno != EINTR) {
      fail();
    }
    if (sources[0].revents != 0) {
      ::_exit(EXIT_FAILURE);
    }
    if (sources[1].revents != 0 && !readMore(pipe, output)) {
      return output;
    }
    if (output.size() > kLongestAnswer) {
      ::kill(child, SIGKILL);
    }
  }
}

ReaderAnswer answerTo(const ReaderRequest& request, const ProcessLimits& limits) {
  std::array<int, 2> pipe{};
  if (::pipe2(pipe.data(), O_CLOEXEC) != 0) {
    fail();
  }
  const pid_t self = ::getpid();
  const pid_t child = ::fork();
  if (child == 0) {
    ::close(pipe[0]);
    readFile(request, limits, self, pipe[1]);
  }
  ::close(pipe[1]);
  if (child < 0) {
    fail();
  }
  std::string output = outputOf(child, pipe[0]);
  ::close(pipe[0]);
  int status = 0;
  if (::waitpid(child, &status, 0) != child) {
    fail();
  }
  const bool isSignalled = WIFSIGNALED(status);
  return {isSignalled, isSignalled ? WTERMSIG(status) : WEXITSTATUS(status), std::move(output)};
}

// The preparation takes longer than it saves one file, so a reader of one file does without.
void answerAll(const ProcessLimits& limits) {
  std::string input;
  std::size_t requests = 0;
  do {
    while (const auto request = takeRequest(input)) {
      if (++requests == 2) {
        prepareLibmediainfo();
      }
      send(STDOUT_FILENO, textOf(answerTo(*request, limits)));
    }
  } while (readMore(STDIN_FILENO, input));
}

}  // namespace

std::vector<std::string> readerArguments(const ProcessLimits& limits) {
  return {kCommand, std::to_string(limits.memory), std::to_string(limits.processorTime.count())};
}

std::optional<ProcessLimits> readerCommandIn(const std::vector<std::string>& arguments) {
  if (arguments.size() != 3 || arguments[0] != kCommand) {
    return std::nullopt;
  }
  const auto memory = leadingNumber<std::uint64_t>(arguments[1]);
  const auto seconds = leadingNumber<std::chrono::seconds::rep>(arguments[2]);
  if (!memory || !seconds) {
    return std::nullopt;
  }
  return ProcessLimits{*memory, std::chrono::seconds(*seconds)};
}

void runReaderProcess(const ProcessLimits& limits) {
  int code = EXIT_SUCCESS;
  try {
    answerAll(limits);
  } catch (const std::exception&) {
    code = EXIT_FAILURE;
  }
  ::_exit(code);
}

}  // namespace kestrel::host
