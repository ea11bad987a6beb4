// What looks like a misuse and is none: each call does what it is asked for.

#include <vector>

#include <opencv2/core.hpp>

#include "VemData.h"

namespace {

void UseOutlinesAlone() {
  IVemRegionArrayPara parts;
  std::vector<std::vector<cv::Point>> contours(1);
  std::vector<cv::Vec4i> hierarchy(1);
  parts.Append(contours, hierarchy, true);
  parts.Append(contours, hierarchy, true);
  parts.Swap(0, 1);
  parts.Remove(1);
  parts.Remove(0);
}

void AskForNothing() {
  constexpr int kNoType = 9;
  VemMatrix(0, 0, static_cast<VemMatrixType>(kNoType));
  VemMatrix(nullptr, 0, 3, static_cast<VemMatrixType>(kNoType));
  VemImage(nullptr, 0, 3, 0, 0, static_cast<VemImageType>(kNoType));
  VemImage image;
  image.SaveImage(static_cast<const char*>(nullptr));
  image.SaveImage(static_cast<const wchar_t*>(nullptr), 3);
  VemVarArray none;
  VemRegion(0, 0, none, none, none);
}

void SelectMasks() {
  VemVarArray none;
  VemROI mask;
  mask.GenMask(none, none, none, 5, 5);
  VemROI point;
  VemPoint place(1, 2);
  point.GenPoint(place);
  VemROIArray array;
  array.Append(mask);
  array.Append(point);
  VemROI out;
  array.Select(0, &out);
  array.Select(1, &out);
}

}  // namespace

int main() {
  UseOutlinesAlone();
  AskForNothing();
  SelectMasks();
  VemMorphStructure structure;
  structure.CreateElement(3, 3, 1, 1, VemMorphStructureUnset, nullptr);
  const VemVar remainder = VemVar(7L) % VemVar(-2L);
  return remainder == VemVar(1L) ? 0 : 1;
}
