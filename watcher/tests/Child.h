#ifndef WATCHER_TESTS_CHILD_H_
#define WATCHER_TESTS_CHILD_H_

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

/// Runs in a child process what may end it, and returns how the child has ended.
template <typename Misuse>
int InChild(Misuse misuse) {
  const pid_t child = fork();
  if (child == 0) {
    const rlimit none = {0, 0};
    setrlimit(RLIMIT_CORE, &none);
    try {
      misuse();
    } catch (...) {
    }
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return status;
}

#endif  // WATCHER_TESTS_CHILD_H_
