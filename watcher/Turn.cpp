#include "watcher/Turn.h"

#include <pthread.h>
#include <ucontext.h>

#include <cerrno>
#include <ctime>
#include <initializer_list>

namespace watcher {
namespace {

pthread_mutex_t g_turn = PTHREAD_MUTEX_INITIALIZER;

// Of the thread whose turn it is.
sigset_t g_mask;
alignas(16) char g_room[256 * 1024];
ucontext_t g_thread;
ucontext_t g_teller;
void (*g_work)(const void*);
const void* g_argument;

void Work() { g_work(g_argument); }

bool HasPipeSignal() {
  sigset_t pending;
  return sigpending(&pending) == 0 && sigismember(&pending, SIGPIPE) == 1;
}

void DropPipeSignal() {
  sigset_t pipe;
  sigemptyset(&pipe);
  sigaddset(&pipe, SIGPIPE);
  const timespec none = {0, 0};
  sigtimedwait(&pipe, nullptr, &none);
}

}  // namespace

Turn::Turn() : error_(errno) {
  sigset_t all;
  sigfillset(&all);
  for (const int fault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP}) sigdelset(&all, fault);
  pthread_sigmask(SIG_BLOCK, &all, &mask_);
  pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &cancel_);
  hadPipeSignal_ = HasPipeSignal();
  pthread_mutex_lock(&g_turn);
  g_mask = mask_;
  // A reader that has gone is nothing to be told while the thread waits for it.
  sigaddset(&g_mask, SIGPIPE);
}

Turn::~Turn() {
  pthread_mutex_unlock(&g_turn);
  if (!hadPipeSignal_ && HasPipeSignal()) DropPipeSignal();
  pthread_setcancelstate(cancel_, nullptr);
  pthread_sigmask(SIG_SETMASK, &mask_, nullptr);
  errno = error_;
}

void Turn::RunWithRoom(void (*work)(const void*), const void* argument) const {
  if (getcontext(&g_teller) != 0) return work(argument);
  g_work = work;
  g_argument = argument;
  g_teller.uc_stack.ss_sp = g_room;
  g_teller.uc_stack.ss_size = sizeof(g_room);
  g_teller.uc_link = &g_thread;
  makecontext(&g_teller, &Work, 0);
  swapcontext(&g_thread, &g_teller);
}

const sigset_t& Turn::Mask() { return g_mask; }

void Turn::ForgetAll() { g_turn = PTHREAD_MUTEX_INITIALIZER; }

}  // namespace watcher
