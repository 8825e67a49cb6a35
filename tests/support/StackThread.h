#pragma once

#include <cstddef>
#include <exception>
#include <functional>
#include <stdexcept>

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>
#else
#include <pthread.h>
#endif

namespace test_support {

namespace stack_thread_detail {

struct Job {
  const std::function<void()>& work;
  std::exception_ptr failure;
};

inline void Run(void* argument) {
  auto& job = *static_cast<Job*>(argument);
  try {
    job.work();
  } catch (...) {
    job.failure = std::current_exception();
  }
}

#ifdef _WIN32

inline DWORD WINAPI Entry(void* argument) {
  Run(argument);
  return 0;
}

inline void RunAndWait(std::size_t stackBytes, Job& job) {
  const HANDLE thread =
      CreateThread(nullptr, stackBytes, &Entry, &job, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
  if (thread == nullptr) throw std::runtime_error("cannot create a thread with that stack");
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
}

#else

inline void* Entry(void* argument) {
  Run(argument);
  return nullptr;
}

inline void RunAndWait(std::size_t stackBytes, Job& job) {
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_t thread{};
  const bool started = pthread_attr_setstacksize(&attributes, stackBytes) == 0 &&
                       pthread_create(&thread, &attributes, &Entry, &job) == 0;
  pthread_attr_destroy(&attributes);
  if (!started) throw std::runtime_error("cannot create a thread with that stack");
  pthread_join(thread, nullptr);
}

#endif

}  // namespace stack_thread_detail

/// Runs `work` on a thread of its own with a call stack of `stackBytes` and waits for it; std::thread cannot
/// choose its stack. What `work` throws is thrown here.
inline void RunWithStack(std::size_t stackBytes, const std::function<void()>& work) {
  stack_thread_detail::Job job{work, nullptr};
  stack_thread_detail::RunAndWait(stackBytes, job);
  if (job.failure) std::rethrow_exception(job.failure);
}

}  // namespace test_support
