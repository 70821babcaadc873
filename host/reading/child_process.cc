// One libuv loop per child, which runs while an answer is waited for. Four handles live in it: the
// process, a pipe to its standard input, one from its standard output, and the timer. The child is
// done with when it was reaped and its output is complete, or when it was killed.
#include "host/reading/child_process.h"

#include <sys/socket.h>
#include <uv.h>

#include <array>
#include <csignal>
#include <string>
#include <utility>

#include "host/reading/media_facts.h"

namespace kestrel::host {

class ChildProcess::Run {
 public:
  explicit Run(const std::vector<std::string>& words) {
    uv_loop_init(&loop_);
    uv_pipe_init(&loop_, &input_, 0);
    uv_pipe_init(&loop_, &output_, 0);
    uv_timer_init(&loop_, &timer_);
    input_.data = output_.data = timer_.data = process_.data = this;
    if (const int error = spawn(words); error != 0) {
      isReaped_ = true;
      end();
      throw NotExamined("reader-failed",
                        "the reader cannot be started: " + std::string(uv_strerror(error)));
    }
    uv_read_start(streamOf(output_), onBufferWanted, onRead);
  }
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;
  ~Run() { end(); }

  ChildOutcome ask(const ChildRequest& request) {
    outcome_ = {ChildEnd::kExited, 0, {}};
    outputLimit_ = request.outputLimit;
    send(request.text);
    uv_update_time(&loop_);  // it stood still since the last answer
    uv_timer_start(&timer_, onTimer, static_cast<std::uint64_t>(request.timeLimit.count()), 0);
    while (!hasEnded()) {
      uv_run(&loop_, UV_RUN_ONCE);
      if (outcome_.end == ChildEnd::kExited && request.isWhole(outcome_.output)) {
        outcome_.end = ChildEnd::kAnswered;
        break;
      }
    }
    uv_timer_stop(&timer_);
    return std::move(outcome_);
  }

 private:
  template <typename Handle>
  static Run& from(const Handle* handle) {
    return *static_cast<Run*>(handle->data);
  }

  template <typename Handle>
  static void close(Handle& handle) {
    auto* base = reinterpret_cast<uv_handle_t*>(&handle);
    if (uv_is_closing(base) == 0) {
      uv_close(base, nullptr);
    }
  }

  static uv_stream_t* streamOf(uv_pipe_t& pipe) { return reinterpret_cast<uv_stream_t*>(&pipe); }

  int spawn(const std::vector<std::string>& words) {
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (const std::string& word : words) {
      pointers.push_back(const_cast<char*>(word.c_str()));
    }
    pointers.push_back(nullptr);
    std::array<uv_stdio_container_t, 3> stdio{};
    stdio[0].flags = static_cast<uv_stdio_flags>(UV_CREATE_PIPE | UV_READABLE_PIPE);
    stdio[0].data.stream = streamOf(input_);
    stdio[1].flags = static_cast<uv_stdio_flags>(UV_CREATE_PIPE | UV_WRITABLE_PIPE);
    stdio[1].data.stream = streamOf(output_);
    stdio[2].flags = UV_IGNORE;
    uv_process_options_t options{};
    options.file = pointers.front();
    options.flags = UV_PROCESS_DETACHED;  // the Ctrl-C of a terminal is not for it
    options.args = pointers.data();
    options.stdio = stdio.data();
    options.stdio_count = static_cast<int>(stdio.size());
    options.exit_cb = onExit;
    return uv_spawn(&loop_, &process_, &options);
  }

  // Not by uv_write: that raises SIGPIPE when the child has gone. Requests are short and the pipe
  // is empty, so it goes in one piece; one that does not arrive shows by the end of the child, or
  // by the time limit.
  void send(const std::string& text) {
    uv_os_fd_t descriptor = -1;
    if (uv_fileno(reinterpret_cast<uv_handle_t*>(&input_), &descriptor) == 0) {
      [[maybe_unused]] const ssize_t ignored =
          ::send(descriptor, text.data(), text.size(), MSG_NOSIGNAL);
    }
  }

  bool hasEnded() const { return isReaped_ && isOutputComplete_; }

  // The output is closed too: a process that the child had started would hold it open.
  void kill(ChildEnd reason) {
    outcome_.end = reason;
    if (!isReaped_) {
      uv_process_kill(&process_, SIGKILL);
    }
    outputEnded();
  }

  void outputEnded() {
    close(output_);
    isOutputComplete_ = true;
  }

  void end() {
    if (!isReaped_) {
      uv_process_kill(&process_, SIGKILL);
    }
    while (!isReaped_) {
      uv_run(&loop_, UV_RUN_ONCE);
    }
    close(process_);
    close(input_);
    close(output_);
    close(timer_);
    uv_run(&loop_, UV_RUN_DEFAULT);
    uv_loop_close(&loop_);
  }

  void exited(std::int64_t exitCode, int signal) {
    isReaped_ = true;
    if (outcome_.end == ChildEnd::kExited) {
      outcome_.end = signal == 0 ? ChildEnd::kExited : ChildEnd::kSignalled;
      outcome_.code = signal == 0 ? exitCode : signal;
    }
    close(process_);
  }

  void received(ssize_t count) {
    if (count < 0) {
      return outputEnded();
    }
    outcome_.output.append(buffer_.data(), static_cast<std::size_t>(count));
    if (outcome_.output.size() > outputLimit_) {
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

  uv_loop_t loop_{};
  uv_process_t process_{};
  uv_pipe_t input_{};
  uv_pipe_t output_{};
  uv_timer_t timer_{};
  std::array<char, 65536> buffer_{};
  ChildOutcome outcome_{ChildEnd::kExited, 0, {}};
  std::size_t outputLimit_ = 0;
  bool isReaped_ = false;
  bool isOutputComplete_ = false;
};

ChildProcess::ChildProcess(const std::vector<std::string>& words)
    : run_(std::make_unique<Run>(words)) {}

ChildProcess::~ChildProcess() = default;

ChildOutcome ChildProcess::ask(const ChildRequest& request) { return run_->ask(request); }

}  // namespace kestrel::host
