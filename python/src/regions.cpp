#include "vem/region.h"

#include <algorithm>
#include <climits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "IVemRegionAPara.h"
#include "VemROI.h"
#include "VemRegion.h"
#include "VemRegionArray.h"
#include "VemRegionData.h"
#include "python/src/arrays.h"
#include "python/src/module.h"
#include "python/src/runs.h"
#include "vem/make.h"
#include "vem/parts.h"

void TestElement(const VemRegionArray& array, const VemRegion& region) {
  const bool outlined = !vem::parts(array).Hierarchies.empty();
  if (array.Length() == 0 || outlined != vem::parts(region).Hierarchy.empty()) return;
  throw py::value_error("all regions of an array come with outlines, or none");
}

namespace {

using Pixels = vem::pixel_set;

// What `make` gives, made while others may run.
template <class Make>
auto Unlocked(Make make) {
  const py::gil_scoped_release others;
  return make();
}

using Made = std::unique_ptr<VemRegion>;

Made OfMask(const py::array& array) {
  const MaskView mask = MaskOf(array);
  return Unlocked([&] {
    const std::vector<Run> runs = RunsOf(mask);
    return RegionOf(runs, 0, runs.size(), cv::Size(mask.width, mask.height));
  });
}

Made OfRoi(const VemROI& roi) {
  return Unlocked([&] {
    RunLists runs = RunsOf(roi);
    if (runs.width < 1 || runs.height < 1) {
      throw std::invalid_argument("the shape lies left of or above the origin");
    }
    return Made(new VemRegion(runs.width, runs.height, runs.rows, runs.firsts, runs.lasts));
  });
}

std::vector<Run> RunsIn(const py::array& array) {
  const char kind = array.dtype().kind();
  if (kind != 'i' && kind != 'u') {
    throw py::type_error("runs are integers, not " + Words(array.dtype()));
  }
  if (array.size() == 0) return std::vector<Run>();
  if (array.ndim() != 2 || array.shape(1) != 3) {
    throw py::value_error("runs have the shape (n, 3), not " + Words(array.attr("shape")));
  }
  const py::object least = array.attr("min")();
  const py::object most = array.attr("max")();
  IntegerOf(least, "the smallest number", INT_MIN, INT_MAX);
  IntegerOf(most, "the largest number", INT_MIN, INT_MAX);
  const auto numbers = py::array_t<int, py::array::forcecast>::ensure(array);
  if (!numbers) throw py::error_already_set();
  const auto at = numbers.unchecked<2>();
  std::vector<Run> runs;
  for (py::ssize_t i = 0; i < at.shape(0); ++i) runs.push_back({at(i, 0), at(i, 1), at(i, 2)});
  return runs;
}

// The canvas that just holds the runs.
cv::Size CanvasOfRuns(const std::vector<Run>& runs) {
  if (runs.empty()) throw py::value_error("no runs tell no canvas; pass shape=(height, width)");
  int right = 0;
  int bottom = 0;
  for (const Run& run : runs) {
    right = std::max(right, run.LastColumn);
    bottom = std::max(bottom, run.Row);
  }
  if (right == INT_MAX || bottom == INT_MAX) {
    throw py::value_error("the canvas is beyond what integers can tell");
  }
  return cv::Size(right + 1, bottom + 1);
}

cv::Size PositiveCanvas(const py::object& shape) {
  const cv::Size canvas = CanvasOf(shape);
  if (canvas.width > 0 && canvas.height > 0) return canvas;
  throw py::value_error("the canvas is " + std::to_string(canvas.width) + " by " +
                        std::to_string(canvas.height) + ", not 1 by 1 or larger");
}

Made OfRuns(const py::array& array, const py::object& shape) {
  const std::vector<Run> runs = RunsIn(array);
  const cv::Size canvas = shape.is_none() ? CanvasOfRuns(runs) : PositiveCanvas(shape);
  return RegionOf(runs, 0, runs.size(), canvas);
}

// A point beyond the integers would count as another one.
void TestPoints(const VemPointArray& points) {
  for (int i = 0; i < points.Length(); ++i) {
    const VemPoint point = points[i];
    if (!vem::detail::fits_int(point.x) || !vem::detail::fits_int(point.y)) {
      throw py::value_error("the point " + Line(point) + " is beyond the integers");
    }
  }
}

VemRegion OfPoints(const PointsArg& points, const py::object& shape) {
  TestPoints(points.list);
  if (shape.is_none()) return Unlocked([&] { return vem::region_of(points.list); });
  const cv::Size canvas = PositiveCanvas(shape);
  return Unlocked([&] {
    VemPointArray copy(points.list);
    return VemRegion(canvas.width, canvas.height, copy);
  });
}

VemRegion OfContours(const py::object& contours, const py::object& shape) {
  VemContourArray list = ContoursOf(contours);
  for (int i = 0; i < list.Length(); ++i) {
    TestPoints(vem::detail::points_of<VemPointArray>(list[i]));
  }
  const cv::Size canvas = CanvasOf(shape);
  return Unlocked([&] { return vem::region_of(vem::mask(list, canvas.width, canvas.height)); });
}

// On a canvas that holds those of both.
template <class Operation>
VemRegion Combined(const VemRegion& a, const VemRegion& b, Operation operation) {
  return Unlocked([&] {
    return operation(Pixels(a), Pixels(b))
        .to_region(std::max(a.Width(), b.Width()), std::max(a.Height(), b.Height()));
  });
}

py::object Box(const VemRegion& region) {
  const vem::pixel_box box = Unlocked([&] { return Pixels(region).bounding_box(); });
  static const py::handle type =
      py::object(py::module_::import("vemdata._vemdata").attr("Bounds")).release();
  return type(box.left, box.top, box.right, box.bottom);
}

// Traced from the runs, without a raster, with the pixels moved to the origin.
std::vector<std::vector<cv::Point>> Outlines(const VemRegion& region) {
  std::vector<std::vector<cv::Point>> outlines;
  const Pixels pixels(region);
  if (pixels.empty()) return outlines;
  const vem::pixel_box box = pixels.bounding_box();
  const auto side = [](int first, int last) {
    const long length = static_cast<long>(last) - first + 1;
    if (length < INT_MAX) return static_cast<int>(std::max(length, 2L));
    throw std::invalid_argument("the pixels lie too far apart");
  };
  const int width = side(box.left, box.right);
  const int height = side(box.top, box.bottom);
  VemRegion moved = pixels.shifted(-box.left, -box.top).to_region(width, height);
  VemContourArray contours;
  int canvas[2];
  vem::mask(moved).GetMask(&contours, &canvas[0], &canvas[1]);
  for (int i = 0; i < contours.Length(); ++i) {
    const VemPointArray points = vem::detail::points_of<VemPointArray>(contours[i]);
    outlines.emplace_back();
    for (int k = 0; k + 1 < points.Length(); ++k) {  // The last one closes the outline.
      outlines.back().emplace_back(static_cast<int>(points[k].x) + box.left,
                                   static_cast<int>(points[k].y) + box.top);
    }
  }
  return outlines;
}

py::list OutlineList(const VemRegion& region) {
  const std::vector<std::vector<cv::Point>> outlines = Unlocked([&] { return Outlines(region); });
  py::list list;
  for (const std::vector<cv::Point>& outline : outlines) list.append(ArrayOf(outline));
  return list;
}

bool HasPixels(const VemRegion& region) { return !Pixels(region).empty(); }

vem::pixel_measures MeasuresOf(const VemRegion& region) {
  const vem::pixel_measures measures = Unlocked([&] { return Pixels(region).measures(); });
  if (measures.area == 0) throw py::value_error("the region has no pixels");
  return measures;
}

void AddMaking(py::class_<VemRegion>& region) {
  region.def(py::init<>(), "No pixels, on a canvas of 0 by 0.");
  region.def(py::init(&OfRoi), py::arg("roi"), "The pixels of a region of interest.");
  region.def(
      py::init(&OfMask), py::arg("mask"),
      "The pixels of an array that are not zero: of shape (height, width), of any integers or\n"
      "bools and with any strides, which is read where it lies.");
  region.def_static(
      "from_runs", &OfRuns, py::arg("runs"), py::arg("shape") = py::none(),
      "Runs of shape (n, 3): row, first and last column, both included, in any order,\n"
      "on or off the canvas, which is (height, width), or else just holds them.");
  region.def_static(
      "from_contours", &OfContours, py::arg("contours"), py::arg("shape"),
      "The pixels that contours cover when they are filled, even-odd over all of them,\n"
      "their outlines included, on a canvas (height, width) of at least 2 by 2.");
  region.def_static(
      "from_points", &OfPoints, py::arg("points"), py::arg("shape") = py::none(),
      "The pixels of points, their coordinates truncated toward zero, on a canvas\n"
      "(height, width), beyond which points are lost, or on one that just holds them.");
}

void AddReaders(py::class_<VemRegion>& region) {
  region.def(
      "runs",
      [](const VemRegion& self) {
        const VemRegionData& data = vem::parts(self);
        return RunArray(data.Rows, data.FirstColumns, data.LastColumns);
      },
      "The runs as they stand, an int32 array of shape (n, 3): row, first and last column.");
  region.def(
      "mask",
      [](const VemRegion& self, const py::object& shape) {
        const VemRegionData& data = vem::parts(self);
        const cv::Size own(std::max(self.Width(), 0), std::max(self.Height(), 0));
        return Painted(data.Rows, data.FirstColumns, data.LastColumns,
                       shape.is_none() ? own : CanvasOf(shape));
      },
      py::arg("shape") = py::none(),
      "A uint8 picture, 255 in the pixels, else 0; of the size of the canvas, or of a shape\n"
      "(height, width), beyond which pixels are lost.");
  region.def(
      "contours", &OutlineList,
      "The outlines of the pixels and of their holes, int32 arrays of shape (m, 2), x before\n"
      "y, as outlines() gives them.");
  region.def_property_readonly(
      "canvas", [](const VemRegion& self) { return py::make_tuple(self.Width(), self.Height()); },
      "(width, height) of the canvas.");
  region.def_property_readonly(
      "area", [](const VemRegion& self) { return Unlocked([&] { return Pixels(self).area(); }); },
      "The number of pixels, each counted once.");
  region.def_property_readonly(
      "bounds", &Box,
      "The smallest rectangle around the pixels, all sides included, as a named tuple: left, top,\n"
      "right, bottom. That of no pixels is (0, 0, -1, -1).");
  region.def_property_readonly(
      "center", [](const VemRegion& self) { return MeasuresOf(self).center; },
      "The mean of the pixels' coordinates. Raises ValueError where there are none.");
  region.def_property_readonly(
      "spread",
      [](const VemRegion& self) {
        const vem::pixel_spread spread = MeasuresOf(self).spread;
        return py::make_tuple(spread.xx, spread.xy, spread.yy);
      },
      "The mean squares of the distances from the center, along x, along both, along y. Raises\n"
      "ValueError where there are no pixels.");
  region.def("__bool__", &HasPixels);
  region.def("__contains__",
             [](const VemRegion& self, PointArg at) { return Pixels(self).contains(at.at); });
}

void AddSets(py::class_<VemRegion>& region) {
  const auto add = [&region](const char* name, auto operation) {
    region.def(
        name,
        [operation](const VemRegion& a, const VemRegion& b) { return Combined(a, b, operation); },
        py::is_operator());
  };
  add("__or__", [](const Pixels& a, const Pixels& b) { return a | b; });
  add("__and__", [](const Pixels& a, const Pixels& b) { return a & b; });
  add("__sub__", [](const Pixels& a, const Pixels& b) { return a - b; });
  add("__xor__", [](const Pixels& a, const Pixels& b) { return a ^ b; });
  region.def(
      "__invert__",
      [](const VemRegion& self) {
        return Unlocked([&] {
          return Pixels(self)
              .complement(self.Width(), self.Height())
              .to_region(self.Width(), self.Height());
        });
      },
      "The pixels of the canvas that are not in the region.");
  region.def(
      "shifted",
      [](const VemRegion& self, py::object dx, py::object dy) {
        const int x = static_cast<int>(IntegerOf(dx, "dx", INT_MIN, INT_MAX));
        const int y = static_cast<int>(IntegerOf(dy, "dy", INT_MIN, INT_MAX));
        return Unlocked(
            [&] { return Pixels(self).shifted(x, y).to_region(self.Width(), self.Height()); });
      },
      py::arg("dx"), py::arg("dy"), "The pixels moved, on the same canvas, which clips nothing.");
  region.def(
      "same_pixels",
      [](const VemRegion& self, const VemRegion& other) {
        return Unlocked([&] { return Pixels(self) == Pixels(other); });
      },
      py::arg("other"), "Whether both cover the same pixels, whatever runs and canvases are.");
}

}  // namespace

void AddRegions(py::module_& module) {
  module.attr("Bounds") =
      py::module_::import("collections")
          .attr("namedtuple")("Bounds", "left top right bottom", py::arg("module") = "vemdata");

  py::class_<VemRegion> region(
      module, "Region",
      "A set of pixels on a canvas, held as horizontal runs. It never changes.\n\n"
      "a | b, a & b, a - b, a ^ b and ~a are sets; (x, y) in region asks for a pixel. a == b "
      "compares\n"
      "canvas and runs in their order, same_pixels the pixels alone.");
  AddMaking(region);
  AddReaders(region);
  AddSets(region);
  region.def("__hash__", [](const VemRegion& self) { return HashOf(self); });
  AddEquality(region);
  AddLine(region);
  AddDocuments(region);
  AddFrozenCopies(region);

  module.def(
      "mask", [](const VemRegion& self) { return vem::mask(self); }, py::arg("region"),
      "A region of interest of the runs of a region, on its canvas, which must be at least 2\n"
      "by 2, else ValueError.");

  py::class_<VemRegionArray> regions(module, "RegionArray",
                                     "A list of regions; all of them with outlines, or none.");
  AddList(regions);
}
