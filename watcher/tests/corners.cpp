// Runs the corners of CornerMisuses.cpp, each in a process of its own with a stderr of its own, and
// compares how it ends and what is told. The library comes with the corners, unless the program is
// linked to it.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

enum Errors { kFile, kPipeWithoutReader, kFullPipe, kNone };

struct Corner {
  const char* name;
  Errors errors;
  const char* mode;  ///< VEM_CHECK.
  const char* told;
  int signal = 0;  ///< What ends it.
};

#define VEM_REMOVED "VemPointArray::Remove: index 3, length 0\n"
#define VEM_NO_DOT \
  "VemImage::SaveImage: nothing is written, path has no dot in its last four characters\n"
#define VEM_20 "aaaaaaaaaaaaaaaaaaaa"

const Corner kCorners[] = {
    {"Constructor", kFile, "print", VEM_REMOVED},
    {"Reload", kFile, "print", VEM_REMOVED VEM_REMOVED},
    {"ReaderGone", kPipeWithoutReader, "print", ""},
    {"ReaderGone", kPipeWithoutReader, "count", ""},
    {"ReaderSleeps", kFullPipe, "print", "", SIGALRM},
    {"Forked", kFullPipe, "print", ""},
    {"OtherFile", kFile, "print", VEM_REMOVED},
    {"AllClosed", kFile, "print", ""},
    {"OtherFile", kNone, "print", ""},
    {"SmallStack", kFile, "print", VEM_REMOVED},
    {"Cancelled", kFile, "print", VEM_REMOVED},
    {"Texts", kFile, "print",
     VEM_NO_DOT "    with path \"a\\x0aVemVar::D: forged\\x1b[31m\"\n"             //
     VEM_NO_DOT "    with path \"\\x22b\\x5c \xC3\xA9 \\xc2\\x85 \\xe9t\\xe9\"\n"  //
     VEM_NO_DOT "    with path \"" VEM_20 VEM_20 VEM_20 VEM_20 "\"\n"              //
     VEM_NO_DOT "    with path \"" VEM_20 VEM_20 VEM_20 "aaaaaaaaaaaaaaaaaaa...\"\n"},
    {"ManyPlaces", kFile, "print", ""},
    {"Remove", kFile, "", VEM_REMOVED},
    {"Remove", kFile, "cuont\n",
     "VemCheck: VEM_CHECK is \"cuont\\x0a\", which is none of print, abort and count: every misuse "
     "is told\n" VEM_REMOVED},
};

int Run(const char* name) {
  const std::string wanted(name);
  void* const corners = dlopen(wanted == "Constructor" ? VEM_STARTER : VEM_CORNERS, RTLD_NOW);
  if (corners == nullptr) return 90;
  if (wanted == "Constructor") return 0;
  using Function = int (*)();
  const auto run = reinterpret_cast<Function>(dlsym(corners, name));
  if (run == nullptr) return 91;
  const int status = run();
  if (wanted != "Reload" || status != 0) return status;
  dlclose(corners);
  return dlopen(VEM_STARTER, RTLD_NOW) != nullptr ? 0 : 92;
}

// All lines but those with places.
std::string Told(std::FILE* file) {
  std::string told;
  char line[4096];
  std::rewind(file);
  while (std::fgets(line, sizeof(line), file) != nullptr) {
    if (std::string(line).rfind("    at ", 0) != 0) told += line;
  }
  return told;
}

void Become(const Corner& corner, const char* program, int file) {
  int ends[2];
  if (corner.errors == kFile) dup2(file, STDERR_FILENO);
  if (corner.errors == kNone) close(STDERR_FILENO);
  if (corner.errors == kPipeWithoutReader && pipe(ends) == 0) {
    dup2(ends[1], STDERR_FILENO);
    close(ends[0]);
    close(ends[1]);
  }
  if (corner.errors == kFullPipe && pipe2(ends, O_NONBLOCK) == 0) {
    while (write(ends[1], "", 1) == 1) {
    }
    fcntl(ends[1], F_SETFL, 0);
    dup2(ends[1], STDERR_FILENO);
    setenv("CORNER_READER", std::to_string(ends[0]).c_str(), 1);
  }
  setenv("VEM_CHECK", corner.mode, 1);
  alarm(corner.signal == SIGALRM ? 2 : 20);
  execl(program, program, corner.name, nullptr);
  _exit(93);
}

bool Holds(const Corner& corner, const char* program) {
  std::FILE* const file = std::tmpfile();
  const pid_t child = fork();
  if (child == 0) Become(corner, program, fileno(file));
  int status = 0;
  waitpid(child, &status, 0);
  const std::string told = Told(file);
  std::fclose(file);
  if (status == corner.signal && told == corner.told) return true;
  std::printf("%s with VEM_CHECK=%s ended with %x, told:\n%s", corner.name, corner.mode,
              static_cast<unsigned>(status), told.c_str());
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 1) return Run(argv[1]);
  int failed = 0;
  for (const Corner& corner : kCorners) {
    if (!Holds(corner, "/proc/self/exe")) ++failed;
  }
  std::printf("%zu corners, %d do not hold\n", sizeof(kCorners) / sizeof(*kCorners), failed);
  return failed == 0 ? 0 : 1;
}
