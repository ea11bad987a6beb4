#ifndef RASTER_MAT_STORE_H_
#define RASTER_MAT_STORE_H_

#include <vector>

#include <opencv2/core.hpp>

/// What the arrays of images and of matrices do, on the vector behind a handle: it points to one
/// `cv::Mat` for each element, owned by the array alone, none of them null.
///
/// Pixels are cloned on the way in and on the way out, once each, so that no element shares any
/// with the caller. A clone has packed rows. What OpenCV or the allocator raises on the way passes
/// to the caller; the header that was allocated for a clone that failed is not given back.
namespace mat_store {

using Store = std::vector<cv::Mat*>;

void Append(Store& store, const cv::Mat& element);
/// Appends clones of all elements of `added`, which may be `store` itself, or none.
void AppendAll(Store& store, const Store& added);
void Insert(Store& store, int index, const cv::Mat& element);
void Remove(Store& store, int index);
/// Leaves the element that was there allocated for good, with its pixels.
void Replace(Store& store, int index, const cv::Mat& element);
/// Destroys all elements before it looks at `source`: a store assigned to itself becomes empty, and
/// so does one whose new elements can't all be cloned.
void Assign(Store& store, const Store& source);
void Clear(Store& store);
/// Clones the element into `*out`, which is made if it is null. Its old pixels are let go, never
/// written.
void Select(const Store& store, int index, cv::Mat*& out);

}  // namespace mat_store

#endif  // RASTER_MAT_STORE_H_
