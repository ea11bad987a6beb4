#include <memory>
#include <utility>
#include <vector>

#include <opencv2/core.hpp>

#include "VemRLC.h"
#include "VemRegion.h"
#include "python/src/convert.h"
#include "python/src/module.h"
#include "python/src/runs.h"

namespace {

using Regions = std::vector<std::unique_ptr<VemRegion>>;

Regions Components(const MaskView& mask) {
  cv::Mat raster = MatOf(mask);
  VemRLC coder;
  coder.SetParam(1, 9, false, -1, -1, -1, false, false);
  coder.Calc(raster, false);
  Regions regions;
  regions.reserve(static_cast<std::size_t>(coder.ComponentCount));
  for (std::size_t i = 0; i + 1 < coder.ComponentStarts.size(); ++i) {
    regions.push_back(RegionOf(
        coder.ComponentRuns, static_cast<std::size_t>(coder.ComponentStarts[i]),
        static_cast<std::size_t>(coder.ComponentStarts[i + 1]), cv::Size(mask.width, mask.height)));
  }
  return regions;
}

py::list ComponentList(const py::array& array) {
  const MaskView mask = MaskOf(array);
  Regions regions;
  {
    const py::gil_scoped_release others;
    regions = Components(mask);
  }
  py::list list(regions.size());
  for (std::size_t i = 0; i < regions.size(); ++i) list[i] = py::cast(std::move(regions[i]));
  return list;
}

struct OutlineTree {
  std::vector<cv::Point> points;
  std::vector<int> starts;
  std::vector<cv::Vec4i> hierarchy;
};

OutlineTree OutlinesIn(const MaskView& mask) {
  cv::Mat raster = MatOf(mask);
  OutlineTree tree;
  std::vector<Run> runs;
  std::vector<int> runStarts;
  VemRLC::FindContours(raster, 1, &tree.points, &tree.starts, &tree.hierarchy, nullptr, &runs,
                       &runStarts, true, -1, -1, 1, false);
  return tree;
}

py::tuple OutlinesWithHierarchy(const py::array& array) {
  const MaskView mask = MaskOf(array);
  OutlineTree tree;
  {
    const py::gil_scoped_release others;
    tree = OutlinesIn(mask);
  }
  py::list outlines;
  for (std::size_t i = 0; i + 1 < tree.starts.size(); ++i) {
    outlines.append(ArrayOf(std::vector<cv::Point>(tree.points.begin() + tree.starts[i],
                                                   tree.points.begin() + tree.starts[i + 1])));
  }
  py::array_t<int> hierarchy({static_cast<py::ssize_t>(tree.hierarchy.size()), py::ssize_t{4}});
  int* to = hierarchy.mutable_data();
  for (const cv::Vec4i& entry : tree.hierarchy) {
    for (int k = 0; k < 4; ++k) *to++ = entry[k];
  }
  return py::make_tuple(outlines, hierarchy);
}

}  // namespace

void AddMasks(py::module_& module) {
  module.def(
      "components", &ComponentList, py::arg("mask"),
      "The 8-connected parts of a mask, a list of regions on its canvas, in the order in which a\n"
      "scan by rows meets them. The mask is an array of shape (height, width), of integers or\n"
      "bools with any strides; what is not zero is inside.");
  module.def(
      "outlines", &OutlinesWithHierarchy, py::arg("mask"),
      "The outlines of a mask and their tree: a list of int32 arrays of shape (m, 2), x before\n"
      "y, and an int32 array of shape (n, 4): of each outline the next and the previous one of\n"
      "its level, its first hole and the outline around it, -1 where there is none. They are\n"
      "those of cv2.findContours with RETR_CCOMP and CHAIN_APPROX_SIMPLE, in the order of a scan.");
}
