#ifndef VEM_VEM_OPENCV_H_
#define VEM_VEM_OPENCV_H_

#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include <opencv2/core.hpp>

#include "IVemROIPara.h"
#include "VemContour.h"
#include "VemContourArray.h"
#include "VemImage.h"
#include "VemMatrix.h"
#include "VemPoint.h"
#include "VemPointArray.h"
#include "VemROI.h"
#include "VemRegion.h"
#include "VemRegionData.h"
#include "VemTuple.h"
#include "vem/array_traits.h"
#include "vem/line_rule.h"
#include "vem/parts.h"
#include "vem/region.h"
#include "vem/runs.h"

/// OpenCV's points, rectangles, matrices and contours in and out of the classes.
///
/// What can't be told in the other library raises `std::invalid_argument`.

namespace vem {

// --- Points ---

/// The same numbers.
inline VemPoint from_cv(const cv::Point& point) { return VemPoint(point.x, point.y); }
/// A float is a double: nothing is rounded.
inline VemPoint from_cv(const cv::Point2f& point) {
  return VemPoint(static_cast<double>(point.x), static_cast<double>(point.y));
}
/// The same numbers.
inline VemPoint from_cv(const cv::Point2d& point) { return VemPoint(point.x, point.y); }

/// The same numbers.
inline cv::Point2d to_cv(const VemPoint& point) { return cv::Point2d(point.x, point.y); }
/// The nearest float of each coordinate; beyond the largest, an infinity.
inline cv::Point2f to_point2f(const VemPoint& point) {
  return cv::Point2f(static_cast<float>(point.x), static_cast<float>(point.y));
}
/// The nearest pixel, halves to the even one as OpenCV rounds. Raises where an int can't hold it.
inline cv::Point to_pixel(const VemPoint& point) {
  const double x = std::nearbyint(point.x);
  const double y = std::nearbyint(point.y);
  const double low = std::numeric_limits<int>::min();
  const double high = std::numeric_limits<int>::max();
  if (!(x >= low && x <= high && y >= low && y <= high)) {
    throw std::invalid_argument("vem::to_pixel: beyond what integers can hold");
  }
  return cv::Point(static_cast<int>(x), static_cast<int>(y));
}

// --- Rectangles ---

/// A region of interest of the pixels that the rectangle holds. `cv::Rect` ends before its right
/// and its lower side, VemROI includes its second corner: a rectangle of 10 by 5 at the origin goes
/// from (0, 0) to (9, 4). One of less than 2 by 2 pixels is none for VemROI, and raises.
inline VemROI from_cv(const cv::Rect& rect) {
  if (rect.width < 2 || rect.height < 2) {
    throw std::invalid_argument("vem::from_cv: a rectangle has at least 2 by 2 pixels");
  }
  VemPoint first(rect.x, rect.y);
  VemPoint last(static_cast<double>(rect.x) + rect.width - 1,
                static_cast<double>(rect.y) + rect.height - 1);
  VemROI roi;
  roi.GenRect1(first, last);
  return roi;
}

/// The pixels of an axis-parallel rectangle, whose corners lose their fractions as they do where it
/// becomes a mask. Raises for another shape, and where integers can't hold it.
inline cv::Rect to_rect(const VemROI& roi) {
  const IVemROIPara& from = parts(roi);
  if (from.Type != VemROIRect1 || from.Params.Length() != 4) {
    throw std::invalid_argument("vem::to_rect: no axis-parallel rectangle");
  }
  double side[4];
  for (int i = 0; i < 4; ++i) side[i] = std::trunc(from.Params[i].D());
  const double low = std::numeric_limits<int>::min();
  const double high = std::numeric_limits<int>::max();
  const double width = side[3] - side[1] + 1;
  const double height = side[2] - side[0] + 1;
  if (!(side[0] >= low && side[1] >= low && side[2] <= high && side[3] <= high && width <= high &&
        height <= high)) {
    throw std::invalid_argument("vem::to_rect: beyond what integers can hold");
  }
  return cv::Rect(static_cast<int>(side[1]), static_cast<int>(side[0]), static_cast<int>(width),
                  static_cast<int>(height));
}

/// A rectangle around the pixels of a box, as OpenCV counts them: its right and lower side are not
/// in it. Raises where a side is more than an int.
inline cv::Rect to_cv(const pixel_box& box) {
  const long width = static_cast<long>(box.right) - box.left + 1;
  const long height = static_cast<long>(box.bottom) - box.top + 1;
  if (width > std::numeric_limits<int>::max() || height > std::numeric_limits<int>::max()) {
    throw std::invalid_argument("vem::to_cv: beyond what integers can hold");
  }
  return cv::Rect(box.left, box.top, static_cast<int>(width), static_cast<int>(height));
}

/// A rotated rectangle of the same outline. OpenCV's angles grow clockwise as the image is seen,
/// VemROI's counter-clockwise: the sign changes. Width is length1, height is length2; both count
/// between the sides, not pixels. Raises unless both are above 0.
inline VemROI from_cv(const cv::RotatedRect& rect) {
  VemPoint center = from_cv(rect.center);
  VemROI roi;
  roi.GenRect2(center, static_cast<double>(rect.size.width), static_cast<double>(rect.size.height),
               -static_cast<double>(rect.angle));
  if (roi.ROIType() == VemROINone) {
    throw std::invalid_argument("vem::from_cv: a rotated rectangle has sides above 0");
  }
  return roi;
}

/// A rotated rectangle of a region of interest, its numbers rounded to float. Raises for another
/// shape.
inline cv::RotatedRect to_rotated_rect(const VemROI& roi) {
  const IVemROIPara& from = parts(roi);
  if (from.Type != VemROIRect2 || from.Params.Length() != 5) {
    throw std::invalid_argument("vem::to_rotated_rect: no rotated rectangle");
  }
  return cv::RotatedRect(to_point2f(VemPoint(from.Params[1].D(), from.Params[0].D())),
                         cv::Size2f(from.Params[2].F(), from.Params[3].F()), -from.Params[4].F());
}

// --- Pixels ---

/// An image of the same pixels, shared through `cv::Mat`'s count, whatever the stride: a part of a
/// larger matrix too. A matrix over a caller's buffer does not own it, and neither does the image.
/// Raises for more than two dimensions and for a depth that VemImageType has not; an empty matrix
/// gives the empty image.
inline VemImage share_image(const cv::Mat& mat) {
  if (mat.dims > 2 || mat.depth() > CV_64F) {
    throw std::invalid_argument("vem::share_image: no image");
  }
  VemImage image;
  if (!mat.empty()) image.Mat() = mat;
  return image;
}

/// An image with pixels of its own, in packed rows. Raises as share_image does.
inline VemImage copy_image(const cv::Mat& mat) { return share_image(mat).DeepCopy(); }

/// The pixels of an image, shared: what is written shows in the image.
inline cv::Mat share_mat(const VemImage& image) { return image.Mat(); }
/// The elements of a matrix, shared.
inline cv::Mat share_mat(const VemMatrix& matrix) { return matrix.Mat(); }

/// A matrix with elements of its own, in packed rows, from one channel of up to two dimensions;
/// raises for anything else. An empty one gives the empty matrix.
inline VemMatrix copy_matrix(const cv::Mat& mat) {
  if (mat.dims > 2 || mat.depth() > CV_64F || mat.channels() != 1) {
    throw std::invalid_argument("vem::copy_matrix: no matrix of one channel");
  }
  VemMatrix matrix;
  if (!mat.empty()) matrix.Mat() = mat.clone();
  return matrix;
}

/// A matrix of the same elements, shared through `cv::Mat`'s count. Raises as copy_matrix does, and
/// for rows that are not packed, as those of a part of a larger matrix: VemMatrix counts on them.
inline VemMatrix share_matrix(const cv::Mat& mat) {
  if (mat.dims > 2 || mat.depth() > CV_64F || mat.channels() != 1 || !mat.isContinuous()) {
    throw std::invalid_argument("vem::share_matrix: no packed matrix of one channel");
  }
  VemMatrix matrix;
  if (!mat.empty()) matrix.Mat() = mat;
  return matrix;
}

// --- Contours ---

/// A contour of the points, in their order; nothing is closed.
template <typename Number>
VemContour contour_from_cv(const std::vector<cv::Point_<Number>>& points) {
  VemPointArray array;
  for (const cv::Point_<Number>& point : points) {
    VemPoint next(static_cast<double>(point.x), static_cast<double>(point.y));
    array.Append(next);
  }
  VemContour contour;
  contour.FromPointArray(array);
  return contour;
}

/// Contours of such points, as above, in their order.
template <typename Number>
VemContourArray contours_from_cv(const std::vector<std::vector<cv::Point_<Number>>>& contours) {
  VemContourArray array;
  for (const std::vector<cv::Point_<Number>>& points : contours) {
    VemContour contour = contour_from_cv(points);
    array.Append(contour);
  }
  return array;
}

/// The points of a contour, not rounded.
inline std::vector<cv::Point2d> to_cv(const VemContour& contour) {
  const VemPointArray array = detail::points_of<VemPointArray>(contour);
  std::vector<cv::Point2d> points;
  points.reserve(static_cast<std::size_t>(array.Length()));
  for (int i = 0; i < array.Length(); ++i) points.push_back(to_cv(array[i]));
  return points;
}

/// The points of a contour as to_pixel rounds them.
inline std::vector<cv::Point> to_pixels(const VemContour& contour) {
  std::vector<cv::Point> pixels;
  for (const cv::Point2d& point : to_cv(contour)) pixels.push_back(to_pixel(from_cv(point)));
  return pixels;
}

/// The points of all contours, not rounded.
inline std::vector<std::vector<cv::Point2d>> to_cv(const VemContourArray& contours) {
  std::vector<std::vector<cv::Point2d>> result;
  for (int i = 0; i < contours.Length(); ++i) result.push_back(to_cv(contours[i]));
  return result;
}

/// The points of all contours as to_pixel rounds them.
inline std::vector<std::vector<cv::Point>> to_pixels(const VemContourArray& contours) {
  std::vector<std::vector<cv::Point>> result;
  for (int i = 0; i < contours.Length(); ++i) result.push_back(to_pixels(contours[i]));
  return result;
}

// --- Masks: 255 inside, 0 outside ---

namespace opencv_detail {

// 255 in the pixels of runs, as far as they lie on the mask.
class painter {
 public:
  explicit painter(cv::Mat& mask) : mask_(mask) {}
  void operator()(int row, int first, int last) const {
    std::memset(mask_.ptr(row) + first, 255,
                static_cast<std::size_t>(last) - static_cast<std::size_t>(first) + 1);
  }

 private:
  cv::Mat& mask_;
};
inline detail::clipped<painter> paint_on(cv::Mat& mask) {
  return detail::clip(mask.cols, mask.rows, painter(mask));
}

inline cv::Mat paint(const VemVarArray& rows, const VemVarArray& firsts, const VemVarArray& lasts,
                     int width, int height) {
  cv::Mat mask = cv::Mat::zeros(height, width, CV_8UC1);
  detail::for_each_run(rows, firsts, lasts, paint_on(mask));
  return mask;
}

struct roi_runs {
  VemVarArray rows;
  VemVarArray firsts;
  VemVarArray lasts;
  int width;
  int height;
};

inline void read_runs(const VemROI& roi, roi_runs& runs) {
  if (const char* const fault = detail::line_fault(roi)) {
    throw std::invalid_argument(std::string("vem::to_mask: ") + fault);
  }
  runs.width = 0;
  runs.height = 0;
  roi.GetMask(&runs.rows, &runs.firsts, &runs.lasts, &runs.width, &runs.height);
}

}  // namespace opencv_detail

/// The pixels of a set on a canvas, beyond which they are lost. Raises `cv::Exception` for a
/// negative size, as all forms do.
inline cv::Mat to_mask(const pixel_set& set, int width, int height) {
  cv::Mat mask = cv::Mat::zeros(height, width, CV_8UC1);
  const detail::clipped<opencv_detail::painter> paint = opencv_detail::paint_on(mask);
  for (std::size_t i = 0; i < set.run_count(); ++i) {
    const pixel_run run = set.run(i);
    paint(run.row, run.first_column, run.last_column);
  }
  return mask;
}

/// The pixels of a region on a canvas of the caller's.
inline cv::Mat to_mask(const VemRegion& region, int width, int height) {
  const VemRegionData& data = parts(region);
  return opencv_detail::paint(data.Rows, data.FirstColumns, data.LastColumns, width, height);
}
/// The pixels of a region on its own canvas.
inline cv::Mat to_mask(const VemRegion& region) {
  return to_mask(region, region.Width(), region.Height());
}

/// The pixels of a region of interest as VemROI::GetMask tells them, on a canvas of the caller's. A
/// point has none, neither has no shape, nor what lies left of or above the origin. A line that is
/// vertical in whole numbers raises `std::invalid_argument`, where GetMask is a fault of the
/// processor. What GetMask raises passes on.
inline cv::Mat to_mask(const VemROI& roi, int width, int height) {
  opencv_detail::roi_runs runs;
  opencv_detail::read_runs(roi, runs);
  return opencv_detail::paint(runs.rows, runs.firsts, runs.lasts, width, height);
}
/// The same on the canvas that GetMask tells, which is empty for all of these.
inline cv::Mat to_mask(const VemROI& roi) {
  opencv_detail::roi_runs runs;
  opencv_detail::read_runs(roi, runs);
  return opencv_detail::paint(runs.rows, runs.firsts, runs.lasts, runs.width, runs.height);
}

}  // namespace vem

#endif  // VEM_VEM_OPENCV_H_
