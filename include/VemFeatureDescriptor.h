#ifndef VEM_FEATURE_DESCRIPTOR_H_
#define VEM_FEATURE_DESCRIPTOR_H_

#include "VemExport.h"

namespace cv {
class Mat;
}  // namespace cv

/// The descriptors of a feature extraction: rows of numbers in one `cv::Mat`, of any type and any
/// number of channels.
///
/// Unlike images and matrices, descriptors never share: every copy has a matrix and a buffer of its
/// own, with packed rows. When OpenCV fails while a descriptor is copied, the copy is empty, and
/// nothing is raised but a failure to allocate the `cv::Mat` object itself.
///
/// Use an object from one thread at a time; reading it from several at once is safe.
class VEM_EXPORT VemFeatureDescriptor {
 public:
  VemFeatureDescriptor();                                   ///< Empty: 0 by 0, no data.
  explicit VemFeatureDescriptor(const cv::Mat& numbers);    ///< A copy of a matrix.
  VemFeatureDescriptor(const VemFeatureDescriptor& other);  ///< A deep copy.
  /// Takes over a deep copy, complete before the old buffer is let go. Assigned to itself, a
  /// descriptor keeps its numbers in a new buffer: what MatData() gave before is no longer valid.
  VemFeatureDescriptor& operator=(const VemFeatureDescriptor& other);
  ~VemFeatureDescriptor();

  int Row() const;  ///< Number of rows.
  int Col() const;  ///< Number of columns.
  /// The first number, writable, null in an empty descriptor. It stays valid until the descriptor
  /// is assigned to or destroyed.
  unsigned char* MatData();

 private:
  cv::Mat* mat;
};

#endif  // VEM_FEATURE_DESCRIPTOR_H_
