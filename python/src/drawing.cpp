#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "IVemOverlay.h"
#include "IVemOverlayPath.h"
#include "VemContour.h"
#include "VemContourArray.h"
#include "VemImage.h"
#include "VemOverlay.h"
#include "VemOverlayPath.h"
#include "VemPointArray.h"
#include "VemROI.h"
#include "VemRegion.h"
#include "python/src/buffers.h"
#include "python/src/convert.h"
#include "python/src/module.h"
#include "python/src/rasters.h"
#include "python/src/runs.h"
#include "vem/parts.h"
#include "vem/region.h"
#include "vem/shapes.h"
#include "vem/view.h"

namespace {

// --- draw ---

vem::channel_order OrderOf(const std::string& order) {
  if (order == "bgr") return vem::channel_order::bgr;
  if (order == "rgb") return vem::channel_order::rgb;
  throw py::value_error("order is 'bgr' or 'rgb', not '" + order + "'");
}

vem::draw_style StyleOf(const py::tuple& color, const py::object& width, bool filled) {
  if (color.size() != 3) throw py::value_error("a color has three components");
  int parts[3];
  for (std::size_t i = 0; i < 3; ++i) {
    parts[i] = static_cast<int>(IntegerOf(py::object(color[i]), "a component", 0, 255));
  }
  const int line = static_cast<int>(IntegerOf(width, "the width", 0, 32767));
  return vem::draw_style(parts[0], parts[1], parts[2], line, filled);
}

void RequireDrawn(bool drawn) {
  if (drawn) return;
  throw py::value_error(
      "a picture to draw on has 1, 3 or 4 channels of uint8, uint16, float32 or float64, and "
      "pixels");
}

// Draws on an array where it lies; on pixels that lie apart by a copy that is written back.
template <class Draw>
void DrawOnArray(const py::array& array, Draw draw) {
  if (!array.writeable()) throw py::value_error("the picture is not to be written to");
  cv::Mat picture;
  bool inPlace = true;
  try {
    picture = MatOver(array);
  } catch (const py::value_error&) {
    picture = MatCopied(array);
    inPlace = false;
  }
  bool drawn = false;
  {
    const py::gil_scoped_release others;
    drawn = draw(picture);
  }
  RequireDrawn(drawn);
  if (!inPlace)
    array[py::ellipsis()] = py::array(BufferOf(picture)).attr("reshape")(array.attr("shape"));
}

template <class Draw>
void DrawOn(const py::object& picture, Draw draw) {
  if (py::isinstance<VemImage>(picture)) {
    cv::Mat mat = picture.cast<VemImage&>().Mat();
    bool drawn = false;
    {
      const py::gil_scoped_release others;
      drawn = draw(mat);
    }
    return RequireDrawn(drawn);
  }
  if (!py::isinstance<py::array>(picture)) RaiseType("an array or a vemdata.Image", picture);
  DrawOnArray(py::reinterpret_borrow<py::array>(picture), draw);
}

constexpr const char* kDraw =
    "Draws on a picture: an array or an Image of 1, 3 or 4 channels of uint8, uint16, float32 or\n"
    "float64, else ValueError. Overlays and paths have pens and brushes of their own; everything "
    "else\n"
    "is drawn with a color (blue, green, red) from 0 to 255, a width and, filled, its inside "
    "tinted.\n"
    "order='rgb' is for pictures with red first.";

// What changes may be changed by other threads while it is drawn: it is copied first.
template <class Element>
void AddPenned(py::module_& module) {
  module.def(
      "draw",
      [](const py::object& picture, const Element& what, const std::string& order) {
        const vem::channel_order channels = OrderOf(order);
        const Element copy(what);
        DrawOn(picture, [&](cv::Mat& mat) { return vem::draw(mat, copy, channels); });
      },
      py::arg("picture"), py::arg("what"), py::kw_only(), py::arg("order") = "bgr", kDraw);
}

template <class Element>
void AddStyled(py::module_& module) {
  module.def(
      "draw",
      [](const py::object& picture, const Element& what, const py::tuple& color,
         const py::object& width, bool filled, const std::string& order) {
        const vem::draw_style style = StyleOf(color, width, filled);
        const vem::channel_order channels = OrderOf(order);
        const Element copy(what);
        DrawOn(picture, [&](cv::Mat& mat) { return vem::draw(mat, copy, style, channels); });
      },
      py::arg("picture"), py::arg("what"), py::arg("color") = py::make_tuple(0, 0, 255),
      py::arg("width") = 1, py::arg("filled") = false, py::kw_only(), py::arg("order") = "bgr");
}

// --- How objects show themselves ---

constexpr int kLargestSide = 4096;  // The side of a picture that is still made.
constexpr int kMargin = 8;

// As far as elements reach from the origin, to the right and down.
struct Reach {
  double right = 0;
  double bottom = 0;

  void To(double x, double y) {
    right = std::max(right, x);
    bottom = std::max(bottom, y);
  }
  bool Fits() const { return right <= kLargestSide && bottom <= kLargestSide; }
  cv::Mat Paper() const {
    return cv::Mat(static_cast<int>(bottom) + 1 + kMargin, static_cast<int>(right) + 1 + kMargin,
                   CV_8UC3, cv::Scalar::all(255));
  }
};

void ReachShape(Reach& reach, const vem::detail::shape& form, const VemVarArray& numbers) {
  using vem::detail::member;
  if (!vem::detail::fits(form, numbers)) return;
  double x = 0, y = 0, length = 0;
  int next = 0;
  for (const vem::detail::shape::part& part : form.parts) {
    if (part.kind == member::none) break;
    const bool chain = part.kind == member::chain;
    do {
      if (chain || vem::detail::is_point(part.kind)) {
        const VemPoint at = vem::detail::stored_point(part.kind, numbers, next);
        reach.To(x = at.x, y = at.y);
      } else if (part.kind == member::length) {
        length = std::max(length, numbers[next].D());
      }
      next += chain ? 2 : vem::detail::stored_count(part.kind);
    } while (chain && next + 1 < numbers.Length());
  }
  reach.To(x + length, y + length);
}

void ReachOverlay(Reach& reach, const VemOverlay& overlay) {
  const IVemOverlay& from = vem::parts(overlay);
  VemOverlay copy(overlay);
  VemPoint at;
  if (from.Type == VemOverlayText) {
    VemVar text;
    VemFont font;
    copy.GetText(&at, &text, &font);
    const double length = static_cast<double>(std::string(text.S()).size());
    reach.To(at.x + length * static_cast<double>(font.Size) * 1.2, at.y);
  } else if (from.Type == VemOverlayImage) {
    copy.GetPoint(&at);
    reach.To(at.x + from.Image.cols, at.y + from.Image.rows);
  } else if (from.Type == VemOverlayRegion) {
    reach.To(from.Width, from.Height);
  } else if (const auto* form = vem::detail::find_shape(&vem::detail::shape::overlay, from.Type)) {
    ReachShape(reach, *form, from.Params);
  }
}

py::object Png(const cv::Mat& picture) {
  std::vector<unsigned char> bytes;
  {
    const py::gil_scoped_release others;
    cv::imencode(".png", picture, bytes);
  }
  return py::bytes(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}

const vem::draw_style kShown(190, 110, 30, 1, true);

template <class Element>
py::object Shown(const Element& element, const Reach& reach) {
  if (!reach.Fits()) return py::none();
  cv::Mat paper = reach.Paper();
  vem::draw(paper, element, kShown);
  return Png(paper);
}

py::object ShownRoi(const VemROI& roi) {
  const IVemROIPara& from = vem::parts(roi);
  Reach reach;
  if (from.Type == VemROIMask) {
    reach.To(from.Width, from.Height);
  } else if (const auto* form = vem::detail::find_shape(&vem::detail::shape::roi, from.Type)) {
    ReachShape(reach, *form, from.Params);
  }
  return Shown(roi, reach);
}

py::object ShownRegion(const VemRegion& region) {
  const vem::pixel_box box = vem::pixel_set(region).bounding_box();
  Reach reach;
  reach.To(region.Width(), region.Height());
  reach.To(box.right, box.bottom);
  return Shown(region, reach);
}

py::object ShownPath(const VemOverlayPath& path) {
  VemOverlayPath& elements = const_cast<VemOverlayPath&>(path);  // Read in place.
  Reach reach;
  for (int i = 0; i < path.Length(); ++i) ReachOverlay(reach, elements[i]);
  if (!reach.Fits()) return py::none();
  cv::Mat paper = reach.Paper();
  vem::draw(paper, path);
  return Png(paper);
}

py::object ShownOverlay(const VemOverlay& overlay) {
  VemOverlay copy(overlay);
  VemOverlayPath path;
  path.AddOverlay(copy);
  return ShownPath(path);
}

py::object ShownImage(const VemImage& image) {
  const cv::Mat& mat = image.Mat();
  const int channels = mat.channels();
  const bool shown = !mat.empty() && (mat.depth() == CV_8U || mat.depth() == CV_16U) &&
                     (channels == 1 || channels == 3 || channels == 4);
  return shown ? Png(mat) : py::none();
}

template <class T>
void AddPng(py::module_& module, const char* name, py::object (*show)(const T&)) {
  module.attr(name).attr("_repr_png_") =
      py::cpp_function(show, py::is_method(module.attr(name)), py::name("_repr_png_"),
                       "A PNG picture for notebooks; None where it would be too large.");
}

}  // namespace

void AddDrawing(py::module_& module) {
  AddPenned<VemOverlayPath>(module);
  AddPenned<VemOverlay>(module);
  AddStyled<VemROI>(module);
  AddStyled<VemRegion>(module);
  AddStyled<VemContour>(module);
  AddStyled<VemContourArray>(module);
  AddStyled<VemPointArray>(module);
  AddPng<VemROI>(module, "ROI", &ShownRoi);
  AddPng<VemRegion>(module, "Region", &ShownRegion);
  AddPng<VemOverlayPath>(module, "OverlayPath", &ShownPath);
  AddPng<VemOverlay>(module, "Overlay", &ShownOverlay);
  AddPng<VemImage>(module, "Image", &ShownImage);
}
