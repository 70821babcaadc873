// One libuv loop per child. Three handles live in it: the process, the pipe from its standard
// output and the timer. The loop ends when all three are closed, which is when the child was reaped
// and its output is complete, or when it was killed.
#include "host/child_process.h"

#include <uv.h>

#include <array>
#include <csignal>
#include <string>

#include "host/not_examined.h"

namespace kestrel::host {
namespace {

class ChildRun {
 public:
  explicit ChildRun(const ChildCommand& command) : command_(command) {
    uv_loop_init(&loop_);
    uv_pipe_init(&loop_, &pipe_, 0);
    uv_timer_init(&loop_, &timer_);
    pipe_.data = timer_.data = process_.data = this;
  }
  ChildRun(const ChildRun&) = delete;
  ChildRun& operator=(const ChildRun&) = delete;
  ~ChildRun() { uv_loop_close(&loop_); }

  ChildOutcome run() {
    const int error = spawn();
    if (error == 0) {
      startHandles();
    } else {
      closeAll();
    }
    uv_run(&loop_, UV_RUN_DEFAULT);
    if (error != 0) {
      throw NotExamined("reader-failed",
                        "the reader cannot be started: " + std::string(uv_strerror(error)));
    }
    return outcome_;
  }

 private:
  template <typename Handle>
  static ChildRun& from(const Handle* handle) {
    return *static_cast<ChildRun*>(handle->data);
  }

  template <typename Handle>
  static void close(Handle& handle) {
    auto* base = reinterpret_cast<uv_handle_t*>(&handle);
    if (uv_is_closing(base) == 0) {
      uv_close(base, nullptr);
    }
  }

  int spawn() {
    std::vector<char*> words;
    words.reserve(command_.words.size() + 1);
    for (const std::string& word : command_.words) {
      words.push_back(const_cast<char*>(word.c_str()));
    }
    words.push_back(nullptr);
    std::array<uv_stdio_container_t, 3> stdio{};
    stdio[0].flags = UV_IGNORE;
    stdio[1].flags = static_cast<uv_stdio_flags>(UV_CREATE_PIPE | UV_WRITABLE_PIPE);
    stdio[1].data.stream = stream();
    stdio[2].flags = UV_IGNORE;
    uv_process_options_t options{};
    options.file = words.front();
    options.flags = UV_PROCESS_DETACHED;  // the Ctrl-C of a terminal is not for it
    options.args = words.data();
    options.stdio = stdio.data();
    options.stdio_count = static_cast<int>(stdio.size());
    options.exit_cb = onExit;
    return uv_spawn(&loop_, &process_, &options);
  }

  void startHandles() {
    uv_read_start(stream(), onBufferWanted, onRead);
    const auto limit = static_cast<std::uint64_t>(command_.timeLimit.count());
    uv_timer_start(&timer_, onTimer, limit, 0);
  }

  uv_stream_t* stream() { return reinterpret_cast<uv_stream_t*>(&pipe_); }

  void closeAll() {
    close(process_);
    close(pipe_);
    close(timer_);
  }

  // The pipe is closed too: a process that the child had started would hold it open.
  void kill(ChildEnd reason) {
    outcome_.end = reason;
    if (!isReaped_) {
      uv_process_kill(&process_, SIGKILL);
    }
    outputEnded();
  }

  void outputEnded() {
    close(pipe_);
    isOutputComplete_ = true;
    closeTimerWhenDone();
  }

  void closeTimerWhenDone() {
    if (isReaped_ && isOutputComplete_) {
      close(timer_);
    }
  }

  void exited(std::int64_t exitCode, int signal) {
    isReaped_ = true;
    if (outcome_.end == ChildEnd::kExited) {
      outcome_.end = signal == 0 ? ChildEnd::kExited : ChildEnd::kSignalled;
      outcome_.code = signal == 0 ? exitCode : signal;
    }
    close(process_);
    closeTimerWhenDone();
  }

  void received(ssize_t count) {
    if (count < 0) {
      return outputEnded();
    }
    outcome_.output.append(buffer_.data(), static_cast<std::size_t>(count));
    if (outcome_.output.size() > command_.outputLimit) {
      kill(ChildEnd::kOverOutput);
    }
  }

  static void onExit(uv_process_t* process, std::int64_t exitCode, int signal) {
    from(process).exited(exitCode, signal);
  }
  static void onBufferWanted(uv_handle_t* pipe, std::size_t /*hint*/, uv_buf_t* buffer) {
    std::array<char, 65536>& own = from(pipe).buffer_;
    *buffer = uv_buf_init(own.data(), static_cast<unsigned>(own.size()));
  }
  static void onRead(uv_stream_t* pipe, ssize_t count, const uv_buf_t* /*own*/) {
    from(pipe).received(count);
  }
  static void onTimer(uv_timer_t* timer) { from(timer).kill(ChildEnd::kOverTime); }

  const ChildCommand& command_;
  uv_loop_t loop_{};
  uv_process_t process_{};
  uv_pipe_t pipe_{};
  uv_timer_t timer_{};
  std::array<char, 65536> buffer_{};
  ChildOutcome outcome_{ChildEnd::kExited, 0, {}};
  bool isReaped_ = false;
  bool isOutputComplete_ = false;
};

}  // namespace

ChildOutcome runChild(const ChildCommand& command) { return ChildRun(command).run(); }

}  // namespace kestrel::host
