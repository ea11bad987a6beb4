#ifndef PLATFORM_IMAGE_FILES_H_
#define PLATFORM_IMAGE_FILES_H_

#include <string>
#include <vector>

#include <opencv2/core.hpp>

/// The flags of a read that keeps the depth and drops an alpha channel. OpenCV's own pair turns the
/// image by the orientation that its file claims, from some version on: the 128 keeps it as it is.
constexpr int kReadWithoutAlpha = 2 | 4 | 128;

/// Reads a file as `cv::imread` does, in any version of OpenCV: a file that can't be opened or
/// decoded gives the default matrix, and one that is missing or may not be read prints nothing.
/// Raises what `cv::imread` raises for damaged files.
cv::Mat ReadImageFile(const std::string& path, int flags);

/// Writes a file as `cv::imwrite` does, and returns what that returns.
///
/// Where a file can be written or created under this name, `cv::imwrite` alone decides: what it
/// raises, prints and leaves behind is its own. Where none can, a name or an image that no encoder
/// takes raises `cv::Exception` as it does there, and anything else gives false and prints nothing.
/// An image without pixels raises for such a name, else gives false; the file is then left alone.
bool WriteImageFile(const std::string& path, const cv::_InputArray& image,
                    const std::vector<int>& parameters);

#endif  // PLATFORM_IMAGE_FILES_H_
