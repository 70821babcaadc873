// The standard library's threads cannot be given a stack size, so the platform's own are used. An
// exception cannot leave such a thread; it is carried over beside the work.
#include "tests/small_stack.h"

#include <cstddef>
#include <exception>
#include <stdexcept>
#include <utility>

#if defined(_WIN32)
#include <windows.h>
#else
#include <pthread.h>
#endif

namespace kestrel::test {
namespace {

constexpr std::size_t kStackSize = 256 * 1024;

struct Job {
  std::function<void()> work;
  std::exception_ptr thrown;
};

void run(Job& job) noexcept {
  try {
    job.work();
  } catch (...) {
    job.thrown = std::current_exception();
  }
}

#if defined(_WIN32)

DWORD WINAPI runThread(void* job) {
  run(*static_cast<Job*>(job));
  return 0;
}

void runOnThread(Job& job) {
  // Without the flag the size would be that of the memory committed at the start, not of the stack.
  const HANDLE thread = CreateThread(nullptr, kStackSize, runThread, &job,
                                     STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
  if (thread == nullptr) throw std::runtime_error("cannot start a thread");
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
}

#else

void* runThread(void* job) {
  run(*static_cast<Job*>(job));
  return nullptr;
}

void runOnThread(Job& job) {
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_t thread;
  const bool started = pthread_attr_setstacksize(&attributes, kStackSize) == 0 &&
                       pthread_create(&thread, &attributes, runThread, &job) == 0;
  pthread_attr_destroy(&attributes);
  if (!started) throw std::runtime_error("cannot start a thread");
  pthread_join(thread, nullptr);
}

#endif

}  // namespace

void runOnSmallStack(std::function<void()> work) {
  Job job{std::move(work), nullptr};
  runOnThread(job);
  if (job.thrown) std::rethrow_exception(job.thrown);
}

}  // namespace kestrel::test
