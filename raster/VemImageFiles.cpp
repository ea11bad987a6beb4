#include "VemImage.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "VemWideFiles.h"
#include "platform/ImageFiles.h"

namespace {

cv::Mat ReadFile(const char* path, int flags) {
  return ReadImageFile(path == nullptr ? "" : path, flags);
}
cv::Mat ReadFile(const wchar_t* path, int flags) { return cv::imreadWString(path, flags); }

bool WriteFile(const char* path, const cv::Mat& image, const std::vector<int>& parameters) {
  return WriteImageFile(path, image, parameters);
}
bool WriteFile(const wchar_t* path, const cv::Mat& image, const std::vector<int>& parameters) {
  return cv::imwriteWString(path, image, parameters);
}

template <typename Char>
bool Read(const Char* path, cv::Mat& image) {
  try {
    image = ReadFile(path, cv::IMREAD_UNCHANGED);
    if (image.channels() > 3) image = ReadFile(path, kReadWithoutAlpha);
  } catch (...) {
    image = cv::Mat();
  }
  return image.cols != 0 && image.rows != 0;
}

// The last four characters in upper case, with a blank for each that is not ASCII. Raises
// `std::logic_error` for null and `std::out_of_range` for a shorter name.
template <typename Char>
std::string ExtensionOf(const Char* path) {
  const std::basic_string<Char> name(path);
  std::string extension;
  for (const int c : name.substr(name.size() - 4)) {
    extension += c >= 0 && c < 128 ? static_cast<char>(std::toupper(c)) : ' ';
  }
  return extension;
}

template <typename Char>
bool Save(const VemImage& image, const Char* path, int jpegQuality, int pngCompression) {
  if (image.Width() < 1) return false;
  const std::string extension = ExtensionOf(path);
  std::vector<int> parameters;
  if (extension == ".JPG" || extension == "JPEG") {
    parameters = {cv::IMWRITE_JPEG_QUALITY, jpegQuality};
  } else if (extension == ".PNG") {
    parameters = {cv::IMWRITE_PNG_STRATEGY, cv::IMWRITE_PNG_STRATEGY_FILTERED,
                  cv::IMWRITE_PNG_COMPRESSION, pngCompression};
  } else if (extension.find('.') == std::string::npos) {
    return false;
  }
  return WriteFile(path, image.Mat(), parameters);
}

template <typename Char>
bool SaveAtLevel(const VemImage& image, const Char* path, int quality) {
  const int level = std::clamp(quality, 0, 10);
  return Save(image, path, 100 - level * 10, level);
}

}  // namespace

bool VemImage::ReadImage(const char* path) { return Read(path, *mat); }
bool VemImage::ReadImage(const wchar_t* path) { return Read(path, *mat); }

bool VemImage::SaveImage(const char* path) { return Save(*this, path, 60, 6); }
bool VemImage::SaveImage(const char* path, int quality) {
  return SaveAtLevel(*this, path, quality);
}

// The JPEG quality of a wide name is another one than that of a narrow name, and out of range.
bool VemImage::SaveImage(const wchar_t* path) { return Save(*this, path, 200, 6); }
bool VemImage::SaveImage(const wchar_t* path, int quality) {
  return SaveAtLevel(*this, path, quality);
}
