#ifndef WATCHER_TEXT_H_
#define WATCHER_TEXT_H_

#include <csignal>
#include <cstdarg>
#include <cstddef>

/// What the watcher writes.
namespace watcher {

/// A text of limited length: what does not fit is cut off.
class Text {
 public:
  void Add(const char* format, ...) __attribute__((format(printf, 2, 3)));
  void AddList(const char* format, va_list arguments) __attribute__((format(printf, 2, 0)));
  /// Adds what the program or its files call something, cut off between two characters where it
  /// takes more than `room` bytes. Only what is printable in UTF-8 goes out as it is: nothing looks
  /// like a line of its own, and no terminal takes it for a command.
  void AddForeign(const char* text, std::size_t room);
  /// Whether there is room for a line.
  bool HasRoom() const { return length_ + 400 < sizeof(bytes_); }
  void Clear() { length_ = 0; }
  /// Goes out on stderr in one piece, and is empty then. While that has no room, other signals are
  /// blocked.
  void Write(const sigset_t& whileWaiting);

 private:
  char bytes_[4096];  ///< As much as a pipe takes in one piece.
  std::size_t length_ = 0;
};

/// Keeps stderr as it is now: what the program opens in its place later is not written to.
void KeepErrors();

}  // namespace watcher

#endif  // WATCHER_TEXT_H_
