#ifndef VEM_VEM_MAKE_REGIONS_H_
#define VEM_VEM_MAKE_REGIONS_H_

#include <climits>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <exception>
#include <new>
#include <string>
#if __cplusplus >= 201703L
#include <optional>
#endif

#include "IVemROIPara.h"
#include "VemImage.h"
#include "VemPoint.h"
#include "VemPointArray.h"
#include "VemROI.h"
#include "VemROIType.h"
#include "VemRegion.h"
#include "VemTuple.h"
#include "vem/line_rule.h"
#include "vem/make_drafts.h"
#include "vem/parts.h"
#include "vem/range.h"

/// Regions by value: of runs, of points, of a region of interest, of a mask image, of a drawing.
/// What is refused throws `std::invalid_argument` with the reason; from C++17 on, `try_region_of`
/// gives an empty `std::optional` instead.
namespace vem {

/// @cond
namespace detail {

template <class Rows, class FirstColumns, class LastColumns>
runs_draft runs_of_ranges(const Rows& rows, const FirstColumns& first_columns,
                          const LastColumns& last_columns, int width, int height) {
  return runs_draft{vem::to<VemVarArray>(rows), vem::to<VemVarArray>(first_columns),
                    vem::to<VemVarArray>(last_columns), width, height};
}

// GetRegionRuns changes nothing, though it is not const.
inline runs_draft runs_of_region(const VemRegion& region) {
  runs_draft runs = {VemVarArray(), VemVarArray(), VemVarArray(), region.Width(), region.Height()};
  const_cast<VemRegion&>(region).GetRegionRuns(&runs.rows, &runs.first_columns, &runs.last_columns);
  return runs;
}

inline bool fits_int(double number) { return number > INT_MIN - 1.0 && number < INT_MAX + 1.0; }

// Where the shape lies, or, since sums of large numbers wrap, counts as lying.
inline std::string outside_refusal(const VemVarArray& numbers) {
  for (const VemVar& number : numbers) {
    if (!(std::fabs(number.D()) < 1 << 30)) {
      return "the shape counts as left of or above the origin: " + digits(number.D()) +
             " is too large for whole numbers";
    }
  }
  return "the shape lies left of or above the origin";
}

inline std::string unless_shape(const VemROI& roi) {
  const IVemROIPara& from = parts(roi);
  if (from.Type == VemROINone) return "the region of interest has no shape";
  return unless(from.Type == VemROIMask || from.Params.Length() > 0,
                "the shape has lost its numbers");
}
inline std::string unless_runs(const VemROI& roi) {
  if (roi.ROIType() == VemROIPoint) return "a point has no runs";
  const char* const fault = line_fault(roi);
  return fault == nullptr ? std::string() : fault;
}

// The runs of the shape. Where there are none to be told, `reason` tells why.
inline runs_draft runs_of_roi(const VemROI& roi, std::string* reason) {
  runs_draft runs = {VemVarArray(), VemVarArray(), VemVarArray(), 0, 0};
  *reason = first_of(unless_shape(roi), unless_runs(roi));
  if (!reason->empty()) return runs;
  try {
    if (!roi.GetMask(&runs.rows, &runs.first_columns, &runs.last_columns, &runs.width,
                     &runs.height)) {
      *reason = outside_refusal(parts(roi).Params);
    }
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception&) {
    *reason = "the canvas is beyond what integers can tell";
  }
  return runs;
}

// Collects the runs of a row, pixel by pixel.
class run_writer {
 public:
  explicit run_writer(runs_draft& runs) : runs_(runs), first_(-1) {}

  void put(int row, int column, bool inside) {
    if (inside && first_ < 0) first_ = column;
    if (!inside) close(row, column);
  }
  void close(int row, int end) {
    if (first_ < 0) return;
    runs_.rows.Append(VemVar(row));
    runs_.first_columns.Append(VemVar(first_));
    runs_.last_columns.Append(VemVar(end - 1));
    first_ = -1;
  }

 private:
  runs_draft& runs_;
  int first_;
};

template <class Pixel>
void code_pixels(const unsigned char* data, int step, runs_draft& runs) {
  run_writer writer(runs);
  for (int row = 0; row < runs.height; ++row) {
    const unsigned char* const line = data + static_cast<std::ptrdiff_t>(row) * step;
    for (int column = 0; column < runs.width; ++column) {
      Pixel pixel;
      std::memcpy(&pixel, line + static_cast<std::size_t>(column) * sizeof pixel, sizeof pixel);
      writer.put(row, column, !(pixel >= 0 && pixel <= 0));
    }
    writer.close(row, runs.width);
  }
}

inline runs_draft runs_of_image(const VemImage& image, std::string* reason) {
  runs_draft runs = {VemVarArray(), VemVarArray(), VemVarArray(), image.Width(), image.Height()};
  *reason =
      first_of(unless(runs.width > 0 && runs.height > 0, "the image is empty"),
               unless(image.Channels() == 1,
                      "the image has " + std::to_string(image.Channels()) + " channels, not 1"));
  if (!reason->empty()) return runs;
  const unsigned char* const data = VemImage(image).ImageData();
  switch (image.BitDepth()) {
    case VemImageType8U:
    case VemImageType8S:
      code_pixels<unsigned char>(data, image.Step(), runs);
      break;
    case VemImageType16U:
    case VemImageType16S:
      code_pixels<unsigned short>(data, image.Step(), runs);
      break;
    case VemImageType32S:
      code_pixels<int>(data, image.Step(), runs);
      break;
    case VemImageType32F:
      code_pixels<float>(data, image.Step(), runs);
      break;
    case VemImageType64F:
      code_pixels<double>(data, image.Step(), runs);
      break;
  }
  return runs;
}

inline runs_draft runs_of_drawing(const std::string& drawing, std::string* reason) {
  runs_draft runs = {VemVarArray(), VemVarArray(), VemVarArray(), 0, 0};
  run_writer writer(runs);
  int column = 0;
  for (char c : drawing.empty() || drawing.back() == '\n' ? drawing : drawing + '\n') {
    if (c == '\n') {
      writer.close(runs.height, column);
      if (column > runs.width) runs.width = column;
      ++runs.height;
      column = 0;
    } else if (c == '#' || c == '.') {
      writer.put(runs.height, column, c == '#');
      ++column;
    } else {
      *reason = std::string("'") + c + "' in row " + std::to_string(runs.height) +
                " is neither '#' nor '.'";
      return runs;
    }
  }
  return runs;
}

// The region of runs, or of none where there is a reason.
inline VemRegion region_of_runs(runs_draft runs, std::string* reason) {
  if (reason->empty()) *reason = runs.refusal(1);
  if (!reason->empty()) return VemRegion();
  return VemRegion(runs.width, runs.height, runs.rows, runs.first_columns, runs.last_columns);
}

inline VemRegion coded(const runs_draft& runs, std::string* reason) {
  return region_of_runs(runs, reason);
}
inline VemRegion coded(const VemROI& roi, std::string* reason) {
  const runs_draft runs = runs_of_roi(roi, reason);
  return region_of_runs(runs, reason);
}
inline VemRegion coded(const VemImage& mask, std::string* reason) {
  const runs_draft runs = runs_of_image(mask, reason);
  return region_of_runs(runs, reason);
}
inline VemRegion coded(const std::string& drawing, std::string* reason) {
  const runs_draft runs = runs_of_drawing(drawing, reason);
  return region_of_runs(runs, reason);
}
// Why no canvas holds points, which all have coordinates of their own.
inline std::string points_refusal(const VemPointArray& points) {
  for (const VemPoint& point : points) {
    if (!fits_int(point.x) || !fits_int(point.y)) {
      return "no canvas holds the points: " + shown(point) + " is beyond the integers";
    }
  }
  return "no canvas holds the points: they lie in row 0 or above, or in column 0 or left of it";
}

// The largest int has no canvas.
inline bool needs_too_much(const VemPointArray& points) {
  for (const VemPoint& point : points) {
    if ((point.x >= INT_MAX && fits_int(point.x)) || (point.y >= INT_MAX && fits_int(point.y))) {
      return true;
    }
  }
  return false;
}

inline VemRegion coded(const VemPointArray& points, std::string* reason) {
  if (points.Length() == 0) *reason = "there are no points";
  if (needs_too_much(points)) *reason = "the canvas is beyond what integers can tell";
  if (!reason->empty()) return VemRegion();
  VemPointArray copy(points);
  VemRegion region(copy);
  if (region.Width() == 0) *reason = points_refusal(points);
  return region;
}

template <class Source>
VemRegion made_region(const Source& source) {
  return made_or_throw<VemRegion>("region_of",
                                  [&](std::string* reason) { return coded(source, reason); });
}

#if __cplusplus >= 201703L
template <class Source>
std::optional<VemRegion> tried_region(const Source& source) {
  return made_or_nothing([&](std::string* reason) { return coded(source, reason); });
}
#endif

}  // namespace detail
/// @endcond

/// The pixels of a region of interest, as VemROI::GetMask tells them. Refused are no shape, a
/// point, a shape without numbers, one wholly left of or above the origin or with a canvas that
/// integers can't tell, and a line that is vertical in whole numbers, where GetMask is a fault of
/// the processor.
inline VemRegion region_of(const VemROI& roi) { return detail::made_region(roi); }
/// The pixels of an image of one channel that are not zero, on a canvas of its size. A depth that
/// VemImageType has not counts as bytes, as VemImage::BitDepth has it.
inline VemRegion region_of(const VemImage& mask) { return detail::made_region(mask); }
/// A drawing in characters, a line for each row: '#' is inside, '.' is not. The longest line tells
/// the width.
inline VemRegion region_of(const std::string& drawing) { return detail::made_region(drawing); }
/// The pixels of points, as VemRegion has them. Refused are none, those that all lie in row 0 or
/// above or in column 0 or left of it, and a coordinate of 2147483647.
inline VemRegion region_of(const VemPointArray& points) { return detail::made_region(points); }
/// Runs on a canvas that must be at least 1 by 1, each list any range of integers. Lists that
/// differ in length are refused.
template <class Rows, class FirstColumns, class LastColumns>
VemRegion region_of(int width, int height, const Rows& rows, const FirstColumns& first_columns,
                    const LastColumns& last_columns) {
  return detail::made_region(
      detail::runs_of_ranges(rows, first_columns, last_columns, width, height));
}

#if __cplusplus >= 201703L

/// What region_of makes, or nothing.
inline std::optional<VemRegion> try_region_of(const VemROI& roi) {
  return detail::tried_region(roi);
}
/// What region_of makes, or nothing.
inline std::optional<VemRegion> try_region_of(const VemImage& mask) {
  return detail::tried_region(mask);
}
/// What region_of makes, or nothing.
inline std::optional<VemRegion> try_region_of(const std::string& drawing) {
  return detail::tried_region(drawing);
}
/// What region_of makes, or nothing.
inline std::optional<VemRegion> try_region_of(const VemPointArray& points) {
  return detail::tried_region(points);
}
/// What region_of makes, or nothing.
template <class Rows, class FirstColumns, class LastColumns>
std::optional<VemRegion> try_region_of(int width, int height, const Rows& rows,
                                       const FirstColumns& first_columns,
                                       const LastColumns& last_columns) {
  return detail::tried_region(
      detail::runs_of_ranges(rows, first_columns, last_columns, width, height));
}

#endif

}  // namespace vem

#endif  // VEM_VEM_MAKE_REGIONS_H_
