#include "tests/host/support/scan_program.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "host/reporting/result_json.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

int shellCode(int status) {
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

[[noreturn]] void become(std::vector<std::string> words) {
  std::vector<char*> pointers;
  for (std::string& word : words) {
    pointers.push_back(word.data());
  }
  pointers.push_back(nullptr);
  ::execv(pointers.front(), pointers.data());
  ::_exit(127);
}

}  // namespace

ProgramRun runScript(const std::filesystem::path& directory, const std::string& script) {
  const TemporaryDirectory outputs;
  const std::string out = outputs / "out";
  const std::string err = outputs / "err";
  const pid_t child = ::fork();
  if (child == 0) {
    ::setenv("KESTREL", KESTREL_PROGRAM, 1);
    std::filesystem::current_path(directory);
    become({"/bin/sh", "-c", "exec >'" + out + "' 2>'" + err + "'\n" + script});
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return {shellCode(status), contentOf(out), contentOf(err)};
}

RunningProgram::RunningProgram(std::vector<std::string> arguments) : id_(::fork()) {
  if (id_ == 0) {
    ::setpgid(0, 0);
    const int nothing = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    ::dup2(nothing, STDOUT_FILENO);
    ::dup2(nothing, STDERR_FILENO);
    arguments.insert(arguments.begin(), KESTREL_PROGRAM);
    become(arguments);
  }
  ::setpgid(id_, id_);
}

void RunningProgram::signal(int number) const { ::kill(-id_, number); }

int RunningProgram::wait() const {
  int status = 0;
  ::waitpid(id_, &status, 0);
  return shellCode(status);
}

void waitForLines(const std::filesystem::path& file, std::size_t count) {
  const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  while (std::ranges::count(contentOf(file), '\n') < static_cast<std::ptrdiff_t>(count)) {
    if (std::chrono::steady_clock::now() > limit) {
      throw std::runtime_error("no line came");
    }
    std::this_thread::yield();
  }
}

std::string contentOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<nlohmann::ordered_json> documentsIn(const std::string& lines) {
  EXPECT_TRUE(lines.empty() || lines.back() == '\n') << "half a line";
  std::vector<nlohmann::ordered_json> documents;
  std::istringstream stream(lines);
  for (std::string line; std::getline(stream, line);) {
    documents.push_back(nlohmann::ordered_json::parse(line, nullptr, false));
    EXPECT_TRUE(documents.back().is_object()) << line;
  }
  return documents;
}

std::vector<std::string> namesIn(const std::string& lines) {
  std::vector<std::string> names;
  for (const nlohmann::ordered_json& document : documentsIn(lines)) {
    names.push_back(std::filesystem::path(fileNameIn(document)).filename());
  }
  std::ranges::sort(names);
  return names;
}

}  // namespace kestrel::host
