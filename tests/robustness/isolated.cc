// The child writes how the call ended, a NUL and what the call wrote into a pipe; nothing but both
// of them whole, from a child that ended in order, is an answer.
#include "tests/robustness/isolated.h"

#include <exception>

#include "tests/small_stack.h"

#if !defined(_WIN32)
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <string_view>
#endif

namespace kestrel::test {
namespace {

Answer askOnSmallStack(const CallRow& row) {
  Answer answer;
  try {
    runOnSmallStack([&] { answer = row.ask([](const std::function<void()>& call) { call(); }); });
  } catch (const std::exception& error) {
    answer.end = std::string("the row raised ") + error.what();
  }
  return answer;
}

#if !defined(_WIN32)

void writeAll(int file, std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = write(file, text.data(), text.size());
    if (count <= 0) _exit(1);
    text.remove_prefix(static_cast<std::size_t>(count));
  }
}

std::string readAll(int file) {
  std::string text;
  std::array<char, 4096> buffer;
  for (ssize_t count = 0; (count = read(file, buffer.data(), buffer.size())) > 0;)
    text.append(buffer.data(), static_cast<std::size_t>(count));
  return text;
}

[[noreturn]] void answerInto(int file, const CallRow& row) {
  const Answer answer = askOnSmallStack(row);
  writeAll(file, answer.end + '\0' + answer.written);
  _exit(0);
}

Answer answerFrom(const std::string& text, int status) {
  if (WIFSIGNALED(status)) return {"signal " + std::to_string(WTERMSIG(status)), ""};
  const auto middle = text.find('\0');
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0 || middle == std::string::npos)
    return {"the process ended with status " + std::to_string(status), ""};
  return {text.substr(0, middle), text.substr(middle + 1)};
}

#endif

}  // namespace

#if defined(_WIN32)

Answer askIsolated(const CallRow& row) { return askOnSmallStack(row); }

#else

Answer askIsolated(const CallRow& row) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no child process");
  if (child == 0) answerInto(ends[1], row);
  close(ends[1]);
  const std::string text = readAll(ends[0]);
  close(ends[0]);
  int status = 0;
  if (waitpid(child, &status, 0) != child) throw std::runtime_error("the child is lost");
  return answerFrom(text, status);
}

#endif

}  // namespace kestrel::test
