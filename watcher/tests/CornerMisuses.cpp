// Misuses where it is hard to tell them. Each returns 0 if the program is as it would be without
// the watcher.

#include <fcntl.h>
#include <limits.h>
#include <poll.h>
#include <pthread.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>

#include "VemData.h"

extern "C" {
#pragma GCC visibility push(default)
int Remove();
int Reload();
int ReaderGone();
int ReaderSleeps();
int OtherFile();
int AllClosed();
int SmallStack();
int Cancelled();
int Forked();
int Texts();
int ManyPlaces();
#pragma GCC visibility pop
}

namespace {

void Misuse() {
  VemPointArray points;
  points.Remove(3);
}

// What is opened in the place of stderr stays empty.
int MisuseBesideAFile() {
  char name[] = "/tmp/corner-XXXXXX";
  const int file = mkstemp(name);
  if (file < 0) return 1;
  unlink(name);
  if (file != STDERR_FILENO) return 2;
  Misuse();
  struct stat now;
  return fstat(file, &now) == 0 && now.st_size == 0 ? 0 : 3;
}

}  // namespace

// A name that takes much to read.
template <typename T>
struct Deep {
  __attribute__((noinline)) static void* Run(void* argument) {
    Misuse();
    return argument;
  }
};
using Pair = std::pair<std::string, std::string>;
using Pairs = std::pair<Pair, std::pair<Pair, Pair>>;
template struct Deep<std::pair<Pairs, Pairs>>;

int Remove() {
  Misuse();
  return 0;
}

int Reload() { return Remove(); }

int ReaderGone() { return Remove(); }

int ReaderSleeps() { return Remove(); }

int OtherFile() {
  close(STDERR_FILENO);
  return MisuseBesideAFile();
}

int AllClosed() {
  for (int file = STDERR_FILENO; file < 1024; ++file) close(file);
  return MisuseBesideAFile();
}

int SmallStack() {
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, PTHREAD_STACK_MIN);
  pthread_t thread;
  int status = pthread_create(&thread, &attributes, &Deep<std::pair<Pairs, Pairs>>::Run, nullptr);
  if (status == 0) status = pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
  return status;
}

int Cancelled() {
  static bool isBehind = false;
  const auto run = [](void* argument) -> void* {
    pthread_cancel(pthread_self());
    Misuse();
    isBehind = true;
    pthread_testcancel();
    return argument;
  };
  pthread_t thread;
  void* result = nullptr;
  if (pthread_create(&thread, nullptr, run, nullptr) != 0) return 1;
  pthread_join(thread, &result);
  return isBehind && result == PTHREAD_CANCELED ? 0 : 2;
}

// Reads all that there is in a pipe, waiting a moment for the first of it.
static std::string ReadAll(int reader) {
  std::string all;
  char bytes[4096];
  for (pollfd end = {reader, POLLIN, 0}; poll(&end, 1, 100) == 1;) {
    const ssize_t count = read(reader, bytes, sizeof(bytes));
    if (count <= 0) break;
    all.append(bytes, static_cast<std::size_t>(count));
  }
  return all;
}

// In a child, forked while a thread of the parent is in the midst of telling: the pipe is full. The
// parent stands still until the child has looked at what it tells itself.
static int TellsAlone(int reader) {
  kill(getppid(), SIGSTOP);
  ReadAll(reader);
  Misuse();
  const std::string told = ReadAll(reader);
  kill(getppid(), SIGCONT);
  const std::string line = "VemPointArray::Remove: index 3, length 0\n    at ";
  return told.compare(0, line.size(), line) == 0 && told.find(line, 1) == std::string::npos ? 0 : 3;
}

int Forked() {
  const char* const reader = std::getenv("CORNER_READER");
  if (reader == nullptr) return 1;
  pthread_t thread;
  const auto run = [](void* argument) -> void* { return Misuse(), argument; };
  if (pthread_create(&thread, nullptr, run, nullptr) != 0) return 2;
  usleep(300000);  // The thread has begun to tell, and waits for room.
  const pid_t child = fork();
  if (child == 0) _exit(TellsAlone(std::atoi(reader)));
  int status = 0;
  waitpid(child, &status, 0);
  ReadAll(std::atoi(reader));
  pthread_join(thread, nullptr);
  return status == 0 ? 0 : 4;
}

// Finds in its stderr, a file, that 4096 places are told, and that there are more; and empties it.
int ManyPlaces() {
#define VEM_10(call) call call call call call call call call call call
#define VEM_1000(call) VEM_10(VEM_10(VEM_10(call)))
  VemPointArray points;
  // clang-format off
  VEM_1000(points.Remove(3);)
  VEM_1000(points.Remove(3);)
  VEM_1000(points.Remove(3);)
  VEM_1000(points.Remove(3);)
  VEM_1000(points.Remove(3);)
  // clang-format on
#undef VEM_1000
#undef VEM_10
  std::string told(static_cast<std::size_t>(lseek(STDERR_FILENO, 0, SEEK_END)), ' ');
  if (pread(STDERR_FILENO, &told[0], told.size(), 0) < 0) return 1;
  int places = 0;
  int notes = 0;
  for (std::size_t at = 0; at < told.size(); at = told.find('\n', at) + 1) {
    if (told.compare(at, 23, "VemPointArray::Remove: ") == 0) ++places;
    if (told.compare(at, 40, "VemCheck: misuse from more than 4096 pla") == 0) ++notes;
  }
  if (places != 4096 || notes != 1) return 2;
  return ftruncate(STDERR_FILENO, 0) == 0 ? 0 : 3;
}

int Texts() {
  unsigned char byte = 0;
  VemImage image(&byte, 1, 1, 1, 1, VemImageType8U);
  image.SaveImage("a\nVemVar::D: forged\x1B[31m");
  image.SaveImage("\"b\\ \xC3\xA9 \xC2\x85 \xE9t\xE9");
  image.SaveImage(std::string(80, 'a').c_str());
  image.SaveImage((std::string(79, 'a') + "\xC3\xA9\xC3\xA9").c_str());
  return 0;
}
