#ifndef PLATFORM_IMAGE_FILES_H_
#define PLATFORM_IMAGE_FILES_H_

#include <opencv2/core.hpp>
#include <string>
#include <vector>

/// The flags of a read that keeps the depth and drops an alpha channel. OpenCV's own pair turns the
/// image by the orientation that its file claims, from some version on: the 128 keeps it as it is.
constexpr int kReadWithoutAlpha = 2 | 4 | 128;

/// Reads a file as `cv::imread` does, in any version of OpenCV: a file that can't be opened or
/// decoded gives the default matrix, and one that is missing or may not be read prints nothing.
/// Raises what `cv::imread` raises for damaged files.
cv::Mat ReadImageFile(const std::string& path, int flags);

/// Writes a file as `cv::imwrite` does, in any version of OpenCV, and returns whether that went
/// well.
///
/// Raises `cv::Exception`, with the file untouched, for an extension that no encoder has and for an
/// image that its encoder refuses. Then an image without pixels and a place that can't be written
/// give false and print nothing; the file is left alone.
bool WriteImageFile(const std::string& path, const cv::_InputArray& image,
                    const std::vector<int>& parameters);

#endif  // PLATFORM_IMAGE_FILES_H_
