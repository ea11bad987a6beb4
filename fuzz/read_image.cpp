// Reads what the fuzzer makes up as an image file. Whatever the file holds, reading throws nothing
// and gives either pixels of at most three channels or the empty image.
//
//     .ci/fuzz [seconds]

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include <opencv2/core.hpp>

#include "VemImage.h"

namespace {

void Require(bool condition) {
  if (!condition) std::abort();
}

// A file in memory, which has a name for as long as it is open.
class MemoryFile {
 public:
  MemoryFile(const std::uint8_t* data, std::size_t size) : file_(memfd_create("image", 0)) {
    Require(file_ >= 0);
    Require(write(file_, data, size) == static_cast<ssize_t>(size));
  }
  ~MemoryFile() { close(file_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  std::string Path() const { return "/proc/self/fd/" + std::to_string(file_); }

 private:
  int file_;
};

void RequireSound(bool result, const VemImage& image) {
  Require(result == (image.Width() > 0 && image.Height() > 0));
  Require(image.Channels() >= 1 && image.Channels() <= 3);
  if (!result) {
    Require(image.Mat().data == nullptr && image.Mat().dims == 0 && image.Mat().type() == 0);
    return;
  }
  const VemImage copy = image.DeepCopy();  // Touches every pixel.
  Require(copy.Width() == image.Width() && copy.Height() == image.Height());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const MemoryFile file(data, size);
  const std::string path = file.Path();

  VemImage narrow;
  const bool result = narrow.ReadImage(path.c_str());
  RequireSound(result, narrow);

  VemImage wide = narrow;
  RequireSound(wide.ReadImage(std::wstring(path.begin(), path.end()).c_str()), wide);
  Require(result == (wide.Width() > 0));
  return 0;
}
