#include "tests/host/program_run.h"

#include <fcntl.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <memory>

namespace kestrel::host {
namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File temporaryFile() { return {std::tmpfile(), &std::fclose}; }

std::string contentOf(std::FILE* file) {
  std::rewind(file);
  std::string content;
  for (int unit = std::fgetc(file); unit != EOF; unit = std::fgetc(file)) {
    content.push_back(static_cast<char>(unit));
  }
  return content;
}

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
  ::dup2(output, STDOUT_FILENO);
  ::dup2(errors, STDERR_FILENO);
  ::execv(pointers.front(), pointers.data());
  ::_exit(127);
}

}  // namespace

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
          options.outputFile.empty() ? contentOf(output.get()) : "", contentOf(errors.get())};
}

}  // namespace kestrel::host
