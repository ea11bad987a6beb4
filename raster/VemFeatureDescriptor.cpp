#include "VemFeatureDescriptor.h"

#include <opencv2/core.hpp>

#include "raster/MatCopy.h"

VemFeatureDescriptor::VemFeatureDescriptor() : mat(new cv::Mat) {}

VemFeatureDescriptor::VemFeatureDescriptor(const cv::Mat& numbers) : VemFeatureDescriptor() {
  CloneOrEmpty(numbers, *mat);
}

VemFeatureDescriptor::VemFeatureDescriptor(const VemFeatureDescriptor& other)
    : VemFeatureDescriptor(*other.mat) {}

VemFeatureDescriptor& VemFeatureDescriptor::operator=(const VemFeatureDescriptor& other) {
  if (mat == nullptr) mat = new cv::Mat;
  CloneOrEmpty(*other.mat, *mat);
  return *this;
}

VemFeatureDescriptor::~VemFeatureDescriptor() { delete mat; }

int VemFeatureDescriptor::Row() const { return mat == nullptr ? 0 : mat->rows; }
int VemFeatureDescriptor::Col() const { return mat == nullptr ? 0 : mat->cols; }
unsigned char* VemFeatureDescriptor::MatData() { return mat == nullptr ? nullptr : mat->data; }
