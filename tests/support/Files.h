#ifndef TESTS_SUPPORT_FILES_H_
#define TESTS_SUPPORT_FILES_H_

#include <functional>
#include <string>
#include <vector>

/// A new folder, open to every user, that is removed with all it holds.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::string Path() const { return path_; }
  /// The path of a file in the folder.
  std::string operator/(const std::string& name) const { return path_ + '/' + name; }
  /// The names in the folder, sorted.
  std::vector<std::string> Names() const;

 private:
  std::string path_;
};

bool Exists(const std::string& path);
std::vector<unsigned char> ReadBytes(const std::string& path);
void WriteBytes(const std::string& path, const std::vector<unsigned char>& bytes);

/// An ASCII or UTF-8 text as a wide string, a character for each code point.
std::wstring Widen(const std::string& utf8);

/// What a body does in a process of its own: what it printed, or how it ended.
struct Outcome {
  int status;  ///< What it returned; -1 when it was killed, or an exception left it.
  std::string output;
};

/// Runs the body in a child whose output is caught.
Outcome RunApart(const std::function<int()>& body);
/// The same for a user who may do nothing in particular. Root remains the child's real user, but
/// not its effective one.
Outcome RunUnprivileged(const std::function<int()>& body);

#endif  // TESTS_SUPPORT_FILES_H_
