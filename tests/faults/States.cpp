#include "faults/States.h"

#include <cstdio>
#include <vector>

#include <opencv2/core.hpp>

#include "IVemOverlay.h"
#include "IVemOverlayPath.h"
#include "support/PrivateAccess.h"

struct FaultsRegionArray {
  using Type = IVemRegionArrayPara* VemRegionArray::*;
  friend Type PrivateOf(FaultsRegionArray);
};
template struct PrivateAccess<FaultsRegionArray, &VemRegionArray::impl_>;

struct FaultsROI {
  using Type = IVemROIPara* VemROI::*;
  friend Type PrivateOf(FaultsROI);
};
template struct PrivateAccess<FaultsROI, &VemROI::impl_>;

struct FaultsOverlay {
  using Type = IVemOverlay* VemOverlay::*;
  friend Type PrivateOf(FaultsOverlay);
};
template struct PrivateAccess<FaultsOverlay, &VemOverlay::impl_>;

struct FaultsOverlayPath {
  using Type = IVemOverlayPath* VemOverlayPath::*;
  friend Type PrivateOf(FaultsOverlayPath);
};
template struct PrivateAccess<FaultsOverlayPath, &VemOverlayPath::impl_>;

struct FaultsRegion {
  using Type = VemRegionData* VemRegion::*;
  friend Type PrivateOf(FaultsRegion);
};
template struct PrivateAccess<FaultsRegion, &VemRegion::data_>;

struct FaultsROIArray {
  using Type = std::vector<IVemROIArrayPara>* VemROIArray::*;
  friend Type PrivateOf(FaultsROIArray);
};
template struct PrivateAccess<FaultsROIArray, &VemROIArray::store_>;

struct FaultsMorphStructure {
  using Type = bool VemMorphStructure::*;
  friend Type PrivateOf(FaultsMorphStructure);
};
template struct PrivateAccess<FaultsMorphStructure, &VemMorphStructure::ownsValues_>;

namespace {

std::string Number(double value) {
  char text[32];
  std::snprintf(text, sizeof(text), "%.17g ", value);
  return text;
}

std::string Number(int value) { return std::to_string(value) + ' '; }
std::string Number(long value) { return std::to_string(value) + ' '; }
std::string Number(std::uint64_t value) { return std::to_string(value) + ' '; }
std::string Number(unsigned value) { return std::to_string(value) + ' '; }

template <typename... T>
std::string Numbers(T... values) {
  return (Number(values) + ...);
}

template <typename... T>
std::string States(T&... objects) {
  return '(' + (StateOf(objects) + ...) + ')';
}

template <typename Item, typename List>
std::string ItemsOf(List& list) {
  std::string text = "[";
  for (Item& item : list) text += StateOf(item) + ' ';
  return text + ']';
}

// Through the reference, and through Select, which must agree.
template <typename Element, typename Array>
std::string ElementsInPlace(Array& array) {
  std::string text = "[";
  for (int i = 0; i < array.Length(); ++i) {
    const std::string state = StateOf(array[i]);
    Element selected = array[i];
    array.Select(i, &selected);
    Require(StateOf(selected) == state, "Select gives another element than []");
    text += state + ' ';
  }
  return text + ']';
}

template <typename Element, typename Array>
std::string ElementCopies(Array& array) {
  std::string text = "[";
  for (int i = 0; i < array.Length(); ++i) {
    Element element = array[i];
    text += StateOf(element) + ' ';
  }
  return text + ']';
}

}  // namespace

std::string StateOf(bool& value) { return value ? "true" : "false"; }

std::string StateOf(VemVar& value) {
  switch (value.ValType()) {
    case VemVarLong:
      return std::to_string(value.L());
    case VemVarDouble:
      return Number(value.D());
    case VemVarString:
      return '"' + std::string(value.S()) + '"';
    default:
      return "none";
  }
}

std::string StateOf(VemVarArray& array) { return ElementCopies<VemVar>(array); }
std::string StateOf(VemPoint& point) { return Numbers(point.x, point.y); }
std::string StateOf(Vem3DPoint& point) { return Numbers(point.x, point.y, point.z); }

std::string StateOf(VemContour& contour) {
  VemPointArray points;
  contour.ToPointArray(&points);
  Require(points.Length() == contour.Length(), "a contour tells another length than it has points");
  return StateOf(points);
}

std::string StateOf(cv::Mat& mat) {
  std::string text = Numbers(mat.rows, mat.cols, mat.empty() ? 0 : mat.type());
  for (int row = 0; row < mat.rows; ++row) {
    text.append(reinterpret_cast<const char*>(mat.ptr(row)),
                static_cast<std::size_t>(mat.cols) * mat.elemSize());
  }
  return text;
}

std::string StateOf(VemImage& image) { return StateOf(image.Mat()); }
std::string StateOf(VemMatrix& matrix) { return StateOf(matrix.Mat()); }

std::string StateOf(VemFeatureDescriptor& descriptor) {
  std::string text = Numbers(descriptor.Row(), descriptor.Col());
  const unsigned char* const data = descriptor.MatData();
  for (int i = 0; data != nullptr && i < descriptor.Row() * descriptor.Col(); ++i) {
    text += Number(static_cast<int>(data[i]));
  }
  return text;
}

// A table may be missing, and only its first quarter has values where it was copied.
std::string StateOf(VemMorphStructure& structure) {
  int rows = 0, cols = 0, anchorX = 0, anchorY = 0;
  VemMorphStructureType type = VemMorphStructureUnset;
  int* cells = nullptr;
  structure.QueryInfo(&rows, &cols, &anchorX, &anchorY, &type, &cells);
  std::string text = Numbers(rows, cols, anchorX, anchorY, static_cast<int>(type));
  if (!(structure.*PrivateOf(FaultsMorphStructure()))) return text;
  return text + std::string(reinterpret_cast<const char*>(cells),
                            static_cast<std::size_t>(rows) * static_cast<std::size_t>(cols));
}

std::string StateOf(VemRegion& region) {
  VemVarArray rows, firstColumns, lastColumns;
  region.GetRegionRuns(&rows, &firstColumns, &lastColumns);
  VemRegionData& data = *(region.*PrivateOf(FaultsRegion()));
  return Numbers(region.Width(), region.Height()) +
         States(rows, firstColumns, lastColumns, data.Hierarchy, data.Contours);
}

std::string StateOf(IVemRegionArrayPara& para) {
  const std::size_t count = para.Rows.size();
  Require(para.Widths.size() == count && para.Heights.size() == count &&
              para.FirstColumns.size() == count && para.LastColumns.size() == count &&
              static_cast<std::size_t>(para.Length()) == count,
          "the lists of the run track are out of step");
  Require(para.Contours.size() == para.Hierarchies.size(),
          "the lists of the contour track are out of step");
  std::string text = States(para.Widths, para.Heights);
  text += ItemsOf<std::vector<std::vector<cv::Point>>>(para.Contours);
  text += ItemsOf<std::vector<cv::Vec4i>>(para.Hierarchies);
  text += ItemsOf<std::vector<int>>(para.Rows);
  text += ItemsOf<std::vector<int>>(para.FirstColumns);
  text += ItemsOf<std::vector<int>>(para.LastColumns);
  return text;
}

std::string StateOf(VemRegionArray& array) {
  VemRegion united;
  array.Union(&united);
  return StateOf(*(array.*PrivateOf(FaultsRegionArray()))) + StateOf(united) +
         ElementCopies<VemRegion>(array);
}

// Canvas numbers are a mask's alone. Whatever the shape, both masks are read.
std::string StateOf(IVemROIPara& para) {
  std::string text = Number(static_cast<int>(para.Type));
  if (para.IsMask()) text += Numbers(para.Width, para.Height);
  text += States(para.Params, para.Rows, para.FirstColumns, para.LastColumns);
  VemVarArray rows, firstColumns, lastColumns;
  VemContourArray contours;
  int width = 0, height = 0;
  const IVemROIPara& read = para;
  if (para.Type != VemROILine || para.Params.Length() == 4) {  // A line could divide by zero.
    read.GetMask(&rows, &firstColumns, &lastColumns, &width, &height);
  }
  para.GetMask(&contours, &width, &height);
  return text;
}

std::string StateOf(VemROI& roi) { return StateOf(*(roi.*PrivateOf(FaultsROI()))); }

std::string StateOf(IVemROIArrayPara& para) {
  std::string text = Number(static_cast<int>(para.Type));
  if (para.IsMask()) text += Numbers(para.Width, para.Height);
  return text + States(para.Params, para.Rows, para.FirstColumns, para.LastColumns);
}

std::string StateOf(VemFont& font) {
  return StateOf(font.Name) + ' ' +
         Numbers(font.Size, font.Weight, int{font.Flag0}, int{font.Flag1}, int{font.Flag2},
                 int{font.Flag3});
}

std::string StateOf(IVemOverlay& o) {
  return Numbers(static_cast<int>(o.Type), o.Width, o.Height, o.PenColor0, o.PenColor1, o.PenColor2,
                 o.BrushColor0, o.BrushColor1, o.BrushColor2, o.BrushMode, o.PenWidth,
                 int{o.RedrawPen}, int{o.RedrawBrush}) +
         States(o.Params, o.Rows, o.FirstColumns, o.LastColumns, o.Image);
}

std::string StateOf(VemOverlay& overlay) { return StateOf(*(overlay.*PrivateOf(FaultsOverlay()))); }
std::string StateOf(IVemOverlayPath& path) { return ItemsOf<VemOverlay>(path.Overlays); }
std::string StateOf(VemOverlayPath& path) {
  return StateOf(*(path.*PrivateOf(FaultsOverlayPath())));
}

std::string StateOf(VemFeaturePoint& p) {
  const double numbers[] = {p.x, p.y, p.ValueC, p.ValueD, p.ValueE, p.ValueF, p.ValueG};
  std::string text = Number(p.IntValue);
  for (const double number : numbers) text += Number(number);
  return text;
}

std::string StateOf(Vem1DCode& c) {
  return Numbers(c.Number, c.Word0, c.Word7) + States(c.Value, c.Points);
}
std::string StateOf(VemDMCode& c) {
  return Numbers(c.Number, c.Count2, c.Real1, c.Word5) + States(c.Value, c.SymbolType, c.Polarity,
                                                                c.Value3, c.Value4, c.Points0,
                                                                c.Points1, c.Points2);
}
std::string StateOf(VemQRCode& c) {
  return Numbers(c.Number, c.Count3, c.Real1, c.Word6) + States(c.Value, c.SymbolType, c.Polarity,
                                                                c.Value3, c.Value4, c.Points0,
                                                                c.Points1, c.Points2);
}
std::string StateOf(VemPDF417Code& c) {
  return Numbers(c.Number, c.Count2, c.Real2, c.Word5) +
         States(c.Value, c.Polarity, c.Value2, c.Points);
}
std::string StateOf(VemVCode& c) {
  return Numbers(c.Count0, c.Count2, static_cast<double>(c.Real2)) +
         States(c.Value0, c.Value1, c.Value2, c.Value3, c.Points);
}

std::string StateOf(VemScratchGroup& group) {
  std::string text = StateOf(group.Label) + '[';
  for (int i = 0; i < group.GetFeatureNum(); ++i) {
    text += Numbers(group[i].Head0, group[i].Head1, group[i].SortKey, group[i].Tail);
  }
  return text + ']';
}
std::string StateOf(VemScratchLayer& layer) {
  const VemScratchPrecessing& s = layer.Settings;
  std::string text =
      Numbers(s.Param0, static_cast<double>(s.Param1), s.Param2, s.Param3, s.Param4, s.Param5) +
      '[';
  for (int i = 0; i < layer.GetGroupNum(); ++i) text += StateOf(layer[i]) + ' ';
  return text + ']';
}
std::string StateOf(VemScratchLayerArray& array) {
  std::string text = "[";
  for (int i = 0; i < array.GetLayerNum(); ++i) text += StateOf(array[i]) + ' ';
  return text + ']';
}

// A failed call may leave any part of its results.
std::string StateOf(VemRLC& coder) {
  return Number(coder.ComponentCount) +
         States(coder.ComponentRuns, coder.ComponentStarts, coder.FillRuns);
}

std::string StateOf(Vem2DVarArray& array) { return ElementsInPlace<VemVarArray>(array); }
std::string StateOf(VemPointArray& array) { return ElementsInPlace<VemPoint>(array); }
std::string StateOf(Vem3DPointArray& array) { return ElementsInPlace<Vem3DPoint>(array); }
std::string StateOf(VemContourArray& array) { return ElementCopies<VemContour>(array); }
std::string StateOf(VemImageArray& array) { return ElementCopies<VemImage>(array); }
std::string StateOf(VemMatrixArray& array) { return ElementCopies<VemMatrix>(array); }
std::string StateOf(VemROIArray& array) {
  std::vector<IVemROIArrayPara>& store = *(array.*PrivateOf(FaultsROIArray()));
  return ItemsOf<IVemROIArrayPara>(store) + ElementCopies<VemROI>(array);
}
std::string StateOf(VemFeaturePointArray& array) { return ElementsInPlace<VemFeaturePoint>(array); }
std::string StateOf(Vem1DCodeArray& array) { return ElementsInPlace<Vem1DCode>(array); }
std::string StateOf(VemDMCodeArray& array) { return ElementsInPlace<VemDMCode>(array); }
std::string StateOf(VemQRCodeArray& array) { return ElementsInPlace<VemQRCode>(array); }
std::string StateOf(VemPDF417CodeArray& array) { return ElementsInPlace<VemPDF417Code>(array); }
std::string StateOf(VemVCodeArray& array) { return ElementsInPlace<VemVCode>(array); }

std::string StateOf(std::vector<int>& list) {
  std::string text = "[";
  for (const int value : list) text += Number(value);
  return text + ']';
}
std::string StateOf(std::vector<Run>& runs) {
  std::string text = "[";
  for (const Run& run : runs) text += Numbers(run.Row, run.FirstColumn, run.LastColumn) + ',';
  return text + ']';
}
std::string StateOf(std::vector<cv::Point>& points) {
  std::string text = "[";
  for (const cv::Point& point : points) text += Numbers(point.x, point.y) + ',';
  return text + ']';
}
std::string StateOf(std::vector<std::vector<cv::Point>>& contours) {
  return ItemsOf<std::vector<cv::Point>>(contours);
}
std::string StateOf(std::vector<std::vector<cv::Point2d>>& contours) {
  std::string text = "[";
  for (const std::vector<cv::Point2d>& contour : contours) {
    for (const cv::Point2d& point : contour) text += Numbers(point.x, point.y) + ',';
    text += ';';
  }
  return text + ']';
}
std::string StateOf(std::vector<cv::Vec4i>& hierarchy) {
  std::string text = "[";
  for (const cv::Vec4i& entry : hierarchy) {
    text += Numbers(entry[0], entry[1], entry[2], entry[3]) + ',';
  }
  return text + ']';
}
