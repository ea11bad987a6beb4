#ifndef TESTS_SUPPORT_IMAGE_SAMPLES_H_
#define TESTS_SUPPORT_IMAGE_SAMPLES_H_

#include <string>
#include <vector>

#include <opencv2/core.hpp>

#include "VemImage.h"

/// A raster with neither flat nor random pixels, so that encoders tell their parameters by bytes.
cv::Mat Texture(int height, int width, int type);

VemImage ImageOf(const cv::Mat& pixels);
/// Whether two matrices agree in type, size and pixels; two without pixels may agree.
bool SamePixels(const cv::Mat& a, const cv::Mat& b);
/// The first three channels.
cv::Mat WithoutAlpha(const cv::Mat& pixels);

/// The PNG of an image whose rows are stored as they are but which asks to be turned by a quarter.
std::vector<unsigned char> TurnedPng(const cv::Mat& image);

struct ImageFile {
  std::string name;  ///< Of letters, digits, '_' and '.'.
  std::vector<unsigned char> bytes;
};

/// A file of each common format, with several depths and channel counts.
std::vector<ImageFile> SoundFiles();
/// Files that begin like images and hold none: cut short, noise behind a signature, or a size that
/// nobody has memory for.
std::vector<ImageFile> BrokenFiles();

#endif  // TESTS_SUPPORT_IMAGE_SAMPLES_H_
