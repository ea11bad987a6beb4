#include "platform/ImageFiles.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <system_error>

#include <opencv2/imgcodecs.hpp>

namespace {

namespace fs = std::filesystem;

// Opens nothing, and asks for the user that an opening would count for. C libraries before 2.33 ask
// for the one that started the process, so the kernel is asked past them.
bool Permits(const fs::path& path, int mode) {
#if defined(__NR_faccessat2) && __GLIBC__ == 2 && __GLIBC_MINOR__ < 33
  const long answer = syscall(__NR_faccessat2, AT_FDCWD, path.c_str(), mode, AT_EACCESS);
  if (answer == 0 || errno != ENOSYS) return answer == 0;
#endif
  return faccessat(AT_FDCWD, path.c_str(), mode, AT_EACCESS) == 0;
}

// Whether a file can be written or created under this name.
bool CanWrite(const fs::path& path) {
  std::error_code error;
  if (Permits(path, W_OK)) return !fs::is_directory(path, error);
  if (errno != ENOENT) return false;
  const fs::path target = fs::read_symlink(path, error);
  const fs::path folder = path.parent_path();
  if (!error) return CanWrite(folder / target);  // The file comes to be where the link points.
  return Permits(folder.empty() ? fs::path(".") : folder, W_OK | X_OK);
}

// Calls `cv::imwrite` where it can open nothing. It looks at the name, then at the image, and at
// last at the number of parameters, which is more than it takes; if it should not count them, there
// is no file below a device.
void WriteNowhere(const std::string& path, const cv::_InputArray& image) {
  constexpr std::size_t kTooMany = 10000;
  cv::imwrite("/dev/null/" + path, image, std::vector<int>(kTooMany));
}

// What is raised for the number of parameters alone.
std::string Objection() {
  try {
    WriteNowhere("a.bmp", cv::Mat::zeros(1, 1, CV_8UC1));
  } catch (const cv::Exception& failure) {
    return failure.err;
  }
  return "";
}

// Raises what `cv::imwrite` raises for a name or an image that no encoder takes.
void RaiseRefusal(const std::string& path, const cv::_InputArray& image) {
  try {
    WriteNowhere(path, image);
  } catch (const cv::Exception& failure) {
    if (failure.err != Objection()) throw;
  }
}

}  // namespace

cv::Mat ReadImageFile(const std::string& path, int flags) {
  if (!Permits(path, R_OK)) return cv::Mat();
  const cv::Mat image = cv::imread(path, flags);
  return image.empty() ? cv::Mat() : image;
}

bool WriteImageFile(const std::string& path, const cv::_InputArray& image,
                    const std::vector<int>& parameters) {
  if (image.empty()) {
    // Floats are the one depth that every encoder takes.
    RaiseRefusal(path, cv::Mat::zeros(1, 1, CV_32FC1));
    return false;
  }
  if (CanWrite(path)) return cv::imwrite(path, image, parameters);
  RaiseRefusal(path, image);
  return false;
}
