#include "support/Files.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() : path_((fs::temp_directory_path() / "vem-XXXXXX").string()) {
  if (mkdtemp(path_.data()) == nullptr) std::abort();
  fs::permissions(path_, fs::perms::all);
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

std::vector<std::string> TemporaryFolder::Names() const {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(path_)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

bool Exists(const std::string& path) { return fs::exists(fs::symlink_status(path)); }

std::vector<unsigned char> ReadBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return std::vector<unsigned char>(std::istreambuf_iterator<char>(file),
                                    std::istreambuf_iterator<char>());
}

void WriteBytes(const std::string& path, const std::vector<unsigned char>& bytes) {
  std::ofstream file(path, std::ios::binary);
  for (const unsigned char byte : bytes) file.put(static_cast<char>(byte));
  file.flush();
  EXPECT_TRUE(file.good()) << path;
}

std::wstring Widen(const std::string& utf8) {
  std::wstring wide;
  for (const char c : utf8) {
    const auto byte = static_cast<unsigned char>(c);
    const int lengthBits = byte >= 0xF0 ? 5 : byte >= 0xE0 ? 4 : 3;
    if (byte < 0x80) {
      wide += static_cast<wchar_t>(byte);
    } else if (byte < 0xC0) {
      wide.back() = wide.back() << 6 | (byte & 0x3F);
    } else {
      wide += static_cast<wchar_t>(byte & (0xFF >> lengthBits));
    }
  }
  return wide;
}

Outcome RunApart(const std::function<int()>& body) {
  std::FILE* output = std::tmpfile();
  if (output == nullptr) std::abort();
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child == 0) {
    dup2(fileno(output), STDOUT_FILENO);
    dup2(fileno(output), STDERR_FILENO);
    int status = 255;
    try {
      status = body();
    } catch (...) {
    }
    std::fflush(nullptr);
    _exit(status);
  }
  int status = 0;
  waitpid(child, &status, 0);
  const bool returned = child > 0 && WIFEXITED(status) && WEXITSTATUS(status) != 255;
  Outcome outcome = {returned ? WEXITSTATUS(status) : -1, ""};
  std::rewind(output);
  for (int c = std::fgetc(output); c != EOF; c = std::fgetc(output)) {
    outcome.output += static_cast<char>(c);
  }
  std::fclose(output);
  return outcome;
}

Outcome RunUnprivileged(const std::function<int()>& body) {
  return RunApart([&] {
    constexpr uid_t kNobody = 65534;
    if (geteuid() == 0 && (setegid(kNobody) != 0 || seteuid(kNobody) != 0)) return 255;
    return body();
  });
}
