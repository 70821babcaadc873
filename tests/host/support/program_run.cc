#include "tests/host/support/program_run.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/capability.h>
#include <pty.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>

namespace kestrel::host {
namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File temporaryFile() { return {std::tmpfile(), &std::fclose}; }

std::string writtenTo(std::FILE* file) {
  std::rewind(file);
  std::string content;
  for (int unit = std::fgetc(file); unit != EOF; unit = std::fgetc(file)) {
    content.push_back(static_cast<char>(unit));
  }
  return content;
}

// Both ends of a terminal: what the program writes into the one is read from the other.
struct Terminal {
  explicit Terminal(unsigned short columns) {
    winsize size{24, columns, 0, 0};
    ::openpty(&reader, &writer, nullptr, nullptr, &size);
  }

  // Reads until the program has ended and everything is read.
  std::string content() {
    ::close(writer);
    std::string text;
    std::array<char, 4096> block{};
    for (ssize_t count = 0; (count = ::read(reader, block.data(), block.size())) > 0;) {
      text.append(block.data(), static_cast<std::size_t>(count));
    }
    ::close(reader);
    std::erase(text, '\r');
    return text;
  }

  int reader = -1;
  int writer = -1;
};

// A program that the super-user starts gets no right that the bounding set lacks.
void dropReadingRights() {
  ::prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE, 0, 0, 0);
  ::prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH, 0, 0, 0);
}

[[noreturn]] void becomeProgram(const std::vector<std::string>& arguments, int output, int errors,
                                const RunOptions& options) {
  std::vector<std::string> words = {KESTREL_PROGRAM};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  for (std::string& word : words) {
    pointers.push_back(word.data());
  }
  pointers.push_back(nullptr);
  if (!options.workingDirectory.empty() && ::chdir(options.workingDirectory.c_str()) != 0) {
    ::_exit(127);
  }
  if (options.obeyFileModes) {
    dropReadingRights();
  }
  if (!options.inputFile.empty()) {
    ::dup2(::open(options.inputFile.c_str(), O_RDONLY), STDIN_FILENO);
  }
  if (options.largestFile != 0) {
    std::signal(SIGXFSZ, SIG_IGN);  // writing fails in its place
    const rlimit limit{options.largestFile, options.largestFile};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  for (const std::string& variable : options.environment) {
    ::putenv(const_cast<char*>(variable.c_str()));
  }
  ::dup2(output, STDOUT_FILENO);
  ::dup2(errors, STDERR_FILENO);
  ::execv(pointers.front(), pointers.data());
  ::_exit(127);
}

}  // namespace

ProgramRun runProgramOnTerminal(const std::vector<std::string>& arguments,
                                const RunOptions& options) {
  Terminal terminal(options.terminalColumns);
  const File errors = temporaryFile();
  const pid_t child = ::fork();
  if (child == 0) {
    becomeProgram(arguments, terminal.writer, ::fileno(errors.get()), options);
  }
  const std::string output = terminal.content();
  int status = 0;
  ::waitpid(child, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, output, writtenTo(errors.get())};
}

ProgramRun runProgramProcess(const std::vector<std::string>& arguments, const RunOptions& options) {
  const File output = options.outputFile.empty()
                          ? temporaryFile()
                          : File(std::fopen(options.outputFile.c_str(), "w"), &std::fclose);
  const File errors = temporaryFile();
  const pid_t child = ::fork();
  if (child == 0) {
    becomeProgram(arguments, ::fileno(output.get()), ::fileno(errors.get()), options);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1,
          options.outputFile.empty() ? writtenTo(output.get()) : "", writtenTo(errors.get())};
}

bool holds(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

void expectFailure(const ProgramRun& run, const std::string& error) {
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.errors, "kestrel: " + error + "\n");
}

std::vector<pid_t> childrenOf(pid_t parent) {
  std::vector<pid_t> children;
  for (const auto& thread :
       std::filesystem::directory_iterator("/proc/" + std::to_string(parent) + "/task")) {
    std::ifstream list(thread.path() / "children");
    children.insert(children.end(), std::istream_iterator<pid_t>(list), {});
  }
  return children;
}

}  // namespace kestrel::host
