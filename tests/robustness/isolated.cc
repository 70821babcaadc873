// The child writes its answers into a pipe, one after the other. What it has not answered when it
// ends is asked of the next one, but for the row at which it ended.
#include "tests/robustness/isolated.h"

#include <exception>

#include "tests/small_stack.h"

#if !defined(_WIN32)
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
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

using RowSpan = std::span<const CallRow>;

// A process costs much more than a call where a sanitizer is at work.
constexpr std::size_t kRowsOfAProcess = 25;

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

// Two texts for each row, each with a NUL behind it; neither holds one.
[[noreturn]] void answerInto(int file, RowSpan rows) {
  for (const CallRow& row : rows) {
    const Answer answer = askOnSmallStack(row);
    writeAll(file, answer.end + '\0' + answer.written + '\0');
  }
  _exit(0);
}

std::string endInWords(int status) {
  if (WIFSIGNALED(status)) return "signal " + std::to_string(WTERMSIG(status));
  return "the process ended with status " + std::to_string(status);
}

std::vector<Answer> answersIn(std::string_view texts) {
  std::vector<Answer> answers;
  const auto take = [&](std::size_t end) {
    const std::string text(texts.substr(0, end));
    texts.remove_prefix(end + 1);
    return text;
  };
  while (std::ranges::count(texts, '\0') >= 2) {
    std::string end = take(texts.find('\0'));
    answers.push_back({std::move(end), take(texts.find('\0'))});
  }
  return answers;
}

// The answers of one process: all, or those up to a crash, which is told as one more.
std::vector<Answer> askChild(RowSpan rows) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no child process");
  if (child == 0) answerInto(ends[1], rows);
  close(ends[1]);
  std::vector<Answer> answers = answersIn(readAll(ends[0]));
  close(ends[0]);
  int status = 0;
  if (waitpid(child, &status, 0) != child) throw std::runtime_error("the child is lost");
  if (answers.size() < rows.size()) answers.push_back({endInWords(status), ""});
  return answers;
}

#endif

}  // namespace

#if defined(_WIN32)

std::vector<Answer> askIsolated(const CallRows& rows) {
  std::vector<Answer> answers;
  for (const CallRow& row : rows) answers.push_back(askOnSmallStack(row));
  return answers;
}

#else

std::vector<Answer> askIsolated(const CallRows& rows) {
  std::vector<Answer> answers;
  while (answers.size() < rows.size()) {
    const RowSpan rest = RowSpan(rows).subspan(answers.size());
    const std::vector<Answer> some = askChild(rest.first(std::min(rest.size(), kRowsOfAProcess)));
    answers.insert(answers.end(), some.begin(), some.end());
  }
  return answers;
}

#endif

}  // namespace kestrel::test
