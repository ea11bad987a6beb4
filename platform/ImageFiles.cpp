#include "platform/ImageFiles.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <opencv2/imgcodecs.hpp>
#include <system_error>

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

// A blank image of the given one's kind: as large as that, so that what is too small for a format
// is refused, but no larger than any format needs.
cv::Mat Sample(const cv::_InputArray& image) {
  constexpr int kLargeEnough = 32;
  const bool severalPages = image.isMatVector() || image.isUMatVector();
  const cv::Mat page = image.getMat(severalPages ? 0 : -1);
  if (page.empty()) return cv::Mat::zeros(kLargeEnough, kLargeEnough, page.type());
  return cv::Mat::zeros(std::min(page.rows, kLargeEnough), std::min(page.cols, kLargeEnough),
                        page.type());
}

// Raises if no encoder takes such an image under this name. Some versions of `cv::imwrite` print an
// encoder's refusal instead of raising it, and leave half a file behind.
void AskEncoder(const std::string& path, const cv::_InputArray& image,
                const std::vector<int>& parameters) {
  std::vector<unsigned char> encoded;
  try {
    cv::imencode(path, Sample(image), encoded, parameters);
  } catch (const cv::Exception& failure) {
    // An encoder that can't write to memory takes a temporary file. That this fails, which OpenCV
    // asserts under this name, is no refusal.
    if (failure.err != "code") throw;
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
  AskEncoder(path, image, parameters);
  return !image.empty() && CanWrite(path) && cv::imwrite(path, image, parameters);
}
