#ifndef WATCHER_TURN_H_
#define WATCHER_TURN_H_

#include <csignal>

namespace watcher {

/// While it lives, its thread tells, and no other. Nothing comes between: no handler of a signal,
/// which might never return, but where the thread waits for the reader of stderr; no end of the
/// thread, which a write may be; and no signal that the reader has gone. errno stays.
class Turn {
 public:
  Turn();
  ~Turn();
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;

  /// Runs something on a stack of the watcher's own: the thread's may be small.
  void RunWithRoom(void (*work)(const void*), const void* argument) const;

  /// The signals that the thread whose turn it is has blocked by itself.
  static const sigset_t& Mask();
  /// In a child process, which has no other thread.
  static void ForgetAll();

 private:
  sigset_t mask_;
  int cancel_ = 0;
  int error_;
  bool hadPipeSignal_ = false;
};

}  // namespace watcher

#endif  // WATCHER_TURN_H_
