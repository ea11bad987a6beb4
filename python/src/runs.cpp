#include "python/src/runs.h"

#include <climits>
#include <cmath>
#include <cstring>
#include <exception>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

#include "IVemROIPara.h"
#include "VemRegionData.h"
#include "python/src/convert.h"
#include "vem/array_traits.h"
#include "vem/make_regions.h"
#include "vem/parts.h"
#include "vem/runs.h"
#include "vem/shapes.h"

py::array_t<int> RunArray(const VemVarArray& rows, const VemVarArray& firsts,
                          const VemVarArray& lasts) {
  const int count = vem::detail::run_count(rows, firsts, lasts);
  py::array_t<int> array({static_cast<py::ssize_t>(count), py::ssize_t{3}});
  int* to = array.mutable_data();
  vem::detail::for_each_run(rows, firsts, lasts, [&to](int row, int first, int last) {
    *to++ = row;
    *to++ = first;
    *to++ = last;
  });
  return array;
}

py::array_t<std::uint8_t> Painted(const VemVarArray& rows, const VemVarArray& firsts,
                                  const VemVarArray& lasts, cv::Size canvas) {
  const py::object zeros = py::module_::import("numpy").attr("zeros")(
      py::make_tuple(canvas.height, canvas.width), "uint8");
  auto picture = zeros.cast<py::array_t<std::uint8_t>>();
  std::uint8_t* const data = picture.mutable_data();
  const py::gil_scoped_release others;
  const auto paint = [data, canvas](int row, int first, int last) {
    std::memset(data + static_cast<std::ptrdiff_t>(row) * canvas.width + first, 255,
                static_cast<std::size_t>(last - first) + 1);
  };
  vem::detail::for_each_run(rows, firsts, lasts,
                            vem::detail::clip(canvas.width, canvas.height, paint));
  return picture;
}

MaskView MaskOf(const py::array& array) {
  const char kind = array.dtype().kind();
  if ((kind != 'b' && kind != 'i' && kind != 'u') || array.itemsize() > 8) {
    throw py::type_error("a mask is an array of integers or bools, not of " + Words(array.dtype()));
  }
  if (array.ndim() != 2) {
    throw py::value_error("a mask has the shape (height, width), not " +
                          Words(array.attr("shape")));
  }
  if (array.shape(0) > INT_MAX || array.shape(1) > INT_MAX) {
    throw py::value_error("a mask has at most 2147483647 rows and columns");
  }
  return {static_cast<const char*>(array.data()),
          static_cast<int>(array.shape(0)),
          static_cast<int>(array.shape(1)),
          array.strides(0),
          array.strides(1),
          static_cast<int>(array.itemsize())};
}

namespace {

bool IsAligned(const MaskView& mask) {
  const std::size_t bytes = static_cast<std::size_t>(mask.bytes);
  return reinterpret_cast<std::uintptr_t>(mask.data) % bytes == 0 &&
         mask.rowStride % mask.bytes == 0;
}

// Whether a matrix can stand over the pixels, and so the coder read them.
bool IsMat(const MaskView& mask) {
  return mask.bytes <= 4 && IsAligned(mask) &&
         (mask.width == 1 || mask.columnStride == mask.bytes) &&
         (mask.height == 1 ||
          mask.rowStride >= static_cast<std::ptrdiff_t>(mask.width) * mask.bytes);
}

cv::Mat MatOver(const MaskView& mask) {
  const int type = mask.bytes == 1 ? CV_8UC1 : mask.bytes == 2 ? CV_16UC1 : CV_32SC1;
  const std::size_t step =
      mask.height == 1 ? std::size_t{cv::Mat::AUTO_STEP} : static_cast<std::size_t>(mask.rowStride);
  return cv::Mat(mask.height, mask.width, type, const_cast<char*>(mask.data), step);
}

template <class Word>
bool IsInside(const char* pixel) {
  Word word;
  std::memcpy(&word, pixel, sizeof word);  // It may lie at any address.
  return word != 0;
}

template <class Word>
void Scan(const MaskView& mask, std::vector<Run>& runs) {
  for (int row = 0; row < mask.height; ++row) {
    const char* pixel = mask.data + row * mask.rowStride;
    int first = -1;
    for (int column = 0; column < mask.width; ++column, pixel += mask.columnStride) {
      const bool inside = IsInside<Word>(pixel);
      if (inside && first < 0) first = column;
      if (!inside && first >= 0) {
        runs.push_back({row, first, column - 1});
        first = -1;
      }
    }
    if (first >= 0) runs.push_back({row, first, mask.width - 1});
  }
}

}  // namespace

std::vector<Run> RunsOf(const MaskView& mask) {
  if (mask.width == 0 || mask.height == 0) return std::vector<Run>();
  if (IsMat(mask)) {
    cv::Mat raster = MatOver(mask);
    VemRLC coder;
    coder.SetParam(1, 6, true, -1, -1, 1, false, false);
    coder.Calc(raster, false);
    return std::move(coder.FillRuns);
  }
  std::vector<Run> runs;
  if (mask.bytes == 1) Scan<std::uint8_t>(mask, runs);
  if (mask.bytes == 2) Scan<std::uint16_t>(mask, runs);
  if (mask.bytes == 4) Scan<std::uint32_t>(mask, runs);
  if (mask.bytes == 8) Scan<std::uint64_t>(mask, runs);
  return runs;
}

cv::Mat MatOf(const MaskView& mask) {
  if (mask.width == 0 || mask.height == 0) return cv::Mat();
  if (IsMat(mask)) return MatOver(mask);
  cv::Mat copy = cv::Mat::zeros(mask.height, mask.width, CV_8UC1);
  for (const Run& run : RunsOf(mask)) {
    std::memset(copy.ptr(run.Row) + run.FirstColumn, 1,
                static_cast<std::size_t>(run.LastColumn - run.FirstColumn) + 1);
  }
  return copy;
}

std::unique_ptr<VemRegion> RegionOf(const std::vector<Run>& runs, std::size_t from, std::size_t to,
                                    cv::Size canvas) {
  std::unique_ptr<VemRegion> region(new VemRegion());
  VemRegionData& data = vem::parts(*region);
  data.Width = canvas.width;
  data.Height = canvas.height;
  for (; from < to; ++from) {
    data.Rows.Append(VemVar(runs[from].Row));
    data.FirstColumns.Append(VemVar(runs[from].FirstColumn));
    data.LastColumns.Append(VemVar(runs[from].LastColumn));
  }
  return region;
}

namespace {

using vem::detail::member;

// Coordinates and sizes beyond this make sums that wrap: what comes of them means nothing.
constexpr double kLargest = 1 << 30;

void TestSize(double number) {
  if (std::fabs(number) < kLargest) return;
  throw std::invalid_argument(vem::detail::digits(number) + " is too large for pixels");
}

// A shape over the numbers of its generator, which are small enough to be pixels.
void TestNumbers(const IVemROIPara& roi) {
  const vem::detail::shape* const form =
      vem::detail::find_shape(&vem::detail::shape::roi, roi.Type);
  if (form == nullptr) return;
  const int length = roi.Params.Length();
  int next = 0;
  for (const vem::detail::shape::part& part : form->parts) {
    if (part.kind == member::none) break;
    int count = vem::detail::stored_count(part.kind);
    if (part.kind == member::chain && length > count && length % 2 == 0) count = length;
    if (next + count > length) throw std::invalid_argument("the shape has lost its numbers");
    for (; count > 0; --count, ++next) {
      if (part.kind != member::number && part.kind != member::sweep) {
        TestSize(roi.Params[next].D());
      }
    }
  }
}

void TestShape(const VemROI& roi) {
  std::string reason = vem::detail::unless_shape(roi);
  if (roi.ROIType() == VemROIPoint) reason = "a point has no pixels";
  if (!reason.empty()) throw std::invalid_argument(reason);
  TestNumbers(vem::parts(roi));
}

// Runs `code`; where a canvas can't be told, says so.
template <class Code>
void Told(Code code) {
  try {
    code();
  } catch (const cv::Exception&) {
    throw std::invalid_argument("the canvas is beyond what integers can tell");
  }
}

}  // namespace

RunLists RunsOf(const VemROI& roi) {
  TestShape(roi);
  if (const char* const fault = vem::detail::line_fault(roi)) throw std::invalid_argument(fault);
  RunLists runs;
  Told([&] { roi.GetMask(&runs.rows, &runs.firsts, &runs.lasts, &runs.width, &runs.height); });
  return runs;
}

VemContourArray OutlinesOf(const VemROI& roi, cv::Size* canvas) {
  TestShape(roi);
  VemContourArray outlines;
  *canvas = cv::Size(0, 0);
  Told([&] { roi.GetMask(&outlines, &canvas->width, &canvas->height); });
  return outlines;
}

py::list OutlineArrays(const VemContourArray& outlines) {
  py::list list;
  for (int i = 0; i < outlines.Length(); ++i) {
    const VemPointArray points = vem::detail::points_of<VemPointArray>(outlines[i]);
    py::array_t<int> array({static_cast<py::ssize_t>(points.Length()), py::ssize_t{2}});
    int* to = array.mutable_data();
    for (int k = 0; k < points.Length(); ++k) {
      const VemPoint point = points[k];
      *to++ = static_cast<int>(point.x);
      *to++ = static_cast<int>(point.y);
    }
    list.append(array);
  }
  return list;
}
