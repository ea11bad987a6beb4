#include "watcher/Text.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace watcher {
namespace {

// A file, a pipe or a terminal, whatever number it is open by.
struct Stream {
  bool Is(int descriptor) const {
    struct stat now;
    return isOpen && fstat(descriptor, &now) == 0 && now.st_dev == device && now.st_ino == node;
  }

  bool isOpen = false;
  dev_t device = 0;
  ino_t node = 0;
};

Stream g_errors;
int g_copy = -1;
bool g_isKept = false;

// The program may have closed either by now, and opened something else in its place.
int ErrorsNow() {
  KeepErrors();
  if (g_errors.Is(g_copy)) return g_copy;
  return g_errors.Is(STDERR_FILENO) ? STDERR_FILENO : -1;
}

// Whoever reads may be slow. It is waited for, but for a second alone where the program has asked
// not to wait; and a signal may end the process meanwhile.
bool IsReady(int descriptor, const sigset_t& whileWaiting) {
  const timespec second = {1, 0};
  const bool waits = (fcntl(descriptor, F_GETFL) & O_NONBLOCK) == 0;
  pollfd wanted = {descriptor, POLLOUT, 0};
  while (true) {
    const int found = ppoll(&wanted, 1, waits ? nullptr : &second, &whileWaiting);
    if (found >= 0 || errno != EINTR) return found > 0;
  }
}

void WriteAll(int descriptor, const char* bytes, std::size_t length, const sigset_t& whileWaiting) {
  while (length > 0 && IsReady(descriptor, whileWaiting)) {
    const ssize_t written = write(descriptor, bytes, length);
    if (written == 0 || (written < 0 && errno != EINTR && errno != EAGAIN)) return;
    if (written < 0) continue;
    bytes += written;
    length -= static_cast<std::size_t>(written);
  }
}

bool IsWithin(unsigned char byte, int first, int last) { return byte >= first && byte <= last; }

// How many bytes a printable character has in UTF-8; 0 where there is none.
std::size_t CharacterAt(const char* text) {
  const auto* const bytes = reinterpret_cast<const unsigned char*>(text);
  const unsigned char lead = bytes[0];
  if (IsWithin(lead, 0x20, 0x7E)) return 1;
  const std::size_t length = IsWithin(lead, 0xC2, 0xDF)   ? 2
                             : IsWithin(lead, 0xE0, 0xEF) ? 3
                             : IsWithin(lead, 0xF0, 0xF4) ? 4
                                                          : 0;
  for (std::size_t i = 1; i < length; ++i) {
    if (!IsWithin(bytes[i], 0x80, 0xBF)) return 0;
  }
  // Control characters, overlong forms, surrogates, and what lies beyond the last character.
  const unsigned char second = length > 1 ? bytes[1] : 0;
  if (lead == 0xC2 && second < 0xA0) return 0;
  if (lead == 0xE0 && second < 0xA0) return 0;
  if (lead == 0xED && second > 0x9F) return 0;
  if (lead == 0xF0 && second < 0x90) return 0;
  if (lead == 0xF4 && second > 0x8F) return 0;
  return length;
}

}  // namespace

void Text::Add(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  AddList(format, arguments);
  va_end(arguments);
}

void Text::AddList(const char* format, va_list arguments) {
  const std::size_t room = sizeof(bytes_) - length_;
  const int added = std::vsnprintf(bytes_ + length_, room, format, arguments);
  if (added < 0) return;
  const std::size_t wanted = static_cast<std::size_t>(added);
  length_ += wanted < room ? wanted : room - 1;
}

void Text::AddForeign(const char* text, std::size_t room) {
  char bytes[8];
  while (*text != '\0') {
    std::size_t read = CharacterAt(text);
    std::size_t told = read;
    if (read == 0 || *text == '\\' || *text == '"') {
      read = 1;
      const auto value = static_cast<unsigned>(static_cast<unsigned char>(*text));
      told = static_cast<std::size_t>(std::snprintf(bytes, sizeof(bytes), "\\x%02x", value));
    } else {
      std::memcpy(bytes, text, read);
    }
    if (told > room) return Add("...");
    Add("%.*s", static_cast<int>(told), bytes);
    text += read;
    room -= told;
  }
}

void Text::Write(const sigset_t& whileWaiting) {
  if (length_ > 0) bytes_[length_ - 1] = '\n';
  const int errors = ErrorsNow();
  if (errors >= 0) WriteAll(errors, bytes_, length_, whileWaiting);
  length_ = 0;
}

void KeepErrors() {
  if (g_isKept) return;
  g_isKept = true;
  struct stat now;
  if (fstat(STDERR_FILENO, &now) != 0) return;
  g_errors.isOpen = true;
  g_errors.device = now.st_dev;
  g_errors.node = now.st_ino;
  // Out of the way of what a program that closes a file expects to get in its place.
  constexpr int kOutOfTheWay = 500;
  g_copy = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, kOutOfTheWay);
  if (g_copy < 0) g_copy = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
}

}  // namespace watcher
