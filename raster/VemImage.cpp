#include "VemImage.h"

#include <opencv2/core.hpp>

#include "platform/CloneBuffer.h"
#include "raster/MatCopy.h"
#include "values/Processor.h"

namespace {

bool IsImageType(VemImageType type) { return type >= VemImageType8U && type <= VemImageType64F; }

// OpenCV's type code; OpenCV cuts a channel count that the code has no room for.
int MatType(VemImageType type, int channels) {
  const int code = WrapMultiply(WrapSubtract(channels, 1), 1 << CV_CN_SHIFT);
  return WrapAdd(static_cast<int>(type), code);
}

int ElementSize(VemImageType type) { return static_cast<int>(CV_ELEM_SIZE1(type)); }

}  // namespace

VemImage::VemImage() : mat(new cv::Mat) {}

VemImage::VemImage(unsigned char* data, int step, int height, int width, int channels,
                   VemImageType type)
    : VemImage() {
  if (IsImageType(type)) *mat = CloneBuffer(data, step, height, width, MatType(type, channels));
}

VemImage::VemImage(const VemImage& other) : VemImage() { ShareOrEmpty(*other.mat, *mat); }

VemImage& VemImage::operator=(const VemImage& other) {
  if (mat == nullptr) mat = new cv::Mat;
  if (mat != other.mat) ShareOrEmpty(*other.mat, *mat);
  return *this;
}

VemImage::~VemImage() { delete mat; }

bool VemImage::CreateImage(unsigned char* data, int step, int height, int width, int channels,
                           VemImageType type) {
  if (height < 0 || width < 0) return false;
  if (channels != 1 && channels != 3) return false;
  if (!IsImageType(type)) return true;  // Taken and ignored: this is meant.
  if (step != WrapMultiply(WrapMultiply(width, channels), ElementSize(type))) return false;
  *mat = CloneBuffer(data, step, height, width, MatType(type, channels));
  return true;
}

VemImage VemImage::DeepCopy() const {
  VemImage copy;
  CloneOrEmpty(*mat, *copy.mat);
  return copy;
}

VemImage VemImage::ShallowCopy() const { return *this; }

int VemImage::Width() const { return mat == nullptr ? 0 : mat->cols; }
int VemImage::Height() const { return mat == nullptr ? 0 : mat->rows; }
int VemImage::Step() const { return mat == nullptr ? 0 : static_cast<int>(mat->step[0]); }
unsigned char* VemImage::ImageData() { return mat == nullptr ? nullptr : mat->data; }
int VemImage::Channels() const { return mat == nullptr ? 0 : mat->channels(); }

// Codes 1 to 6 stand for themselves, everything else counts as 8U.
VemImageType VemImage::BitDepth() const {
  const int depth = mat->depth();
  return depth <= VemImageType64F ? static_cast<VemImageType>(depth) : VemImageType8U;
}

cv::Mat& VemImage::Mat() { return *mat; }
const cv::Mat& VemImage::Mat() const { return *mat; }
