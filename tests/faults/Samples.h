#ifndef TESTS_FAULTS_SAMPLES_H_
#define TESTS_FAULTS_SAMPLES_H_

#include <vector>

#include <opencv2/core.hpp>

#include "IVemROIAPara.h"
#include "IVemRegionAPara.h"
#include "VemData.h"

// Objects to work on, each with something in it that must be copied: a text, points, pixels.

template <typename T>
T Sample(int number);
template <>
VemVar Sample(int number);
template <>
VemVarArray Sample(int number);
template <>
VemPoint Sample(int number);
template <>
Vem3DPoint Sample(int number);
template <>
VemContour Sample(int number);
template <>
VemImage Sample(int number);
template <>
VemMatrix Sample(int number);
template <>
VemRegion Sample(int number);
template <>
VemROI Sample(int number);
template <>
VemFeaturePoint Sample(int number);
template <>
Vem1DCode Sample(int number);
template <>
VemDMCode Sample(int number);
template <>
VemQRCode Sample(int number);
template <>
VemPDF417Code Sample(int number);
template <>
VemVCode Sample(int number);
template <>
VemScratchFeature Sample(int number);
template <>
VemScratchGroup Sample(int number);
template <>
VemScratchLayer Sample(int number);
template <>
VemScratchLayerArray Sample(int number);
template <>
VemFont Sample(int number);
template <>
VemMorphStructure Sample(int number);
template <>
VemFeatureDescriptor Sample(int number);
template <>
IVemRegionArrayPara Sample(int number);
template <>
VemOverlay Sample(int number);

/// The element of an array; void for what is none.
template <typename T>
struct ElementType {
  using Type = void;
};
template <typename T>
using ElementOf = typename ElementType<T>::Type;

#define VEM_ELEMENT_TYPE(array, element) \
  template <>                            \
  struct ElementType<array> {            \
    using Type = element;                \
  }
VEM_ELEMENT_TYPE(VemVarArray, VemVar);
VEM_ELEMENT_TYPE(Vem2DVarArray, VemVarArray);
VEM_ELEMENT_TYPE(VemPointArray, VemPoint);
VEM_ELEMENT_TYPE(Vem3DPointArray, Vem3DPoint);
VEM_ELEMENT_TYPE(VemContourArray, VemContour);
VEM_ELEMENT_TYPE(VemImageArray, VemImage);
VEM_ELEMENT_TYPE(VemMatrixArray, VemMatrix);
VEM_ELEMENT_TYPE(VemRegionArray, VemRegion);
VEM_ELEMENT_TYPE(VemROIArray, VemROI);
VEM_ELEMENT_TYPE(VemFeaturePointArray, VemFeaturePoint);
VEM_ELEMENT_TYPE(Vem1DCodeArray, Vem1DCode);
VEM_ELEMENT_TYPE(VemDMCodeArray, VemDMCode);
VEM_ELEMENT_TYPE(VemQRCodeArray, VemQRCode);
VEM_ELEMENT_TYPE(VemPDF417CodeArray, VemPDF417Code);
VEM_ELEMENT_TYPE(VemVCodeArray, VemVCode);
#undef VEM_ELEMENT_TYPE

/// An array of elements from `first` on, without room for more.
template <typename Array>
Array ArrayOf(int count, int first = 0) {
  Array array;
  for (int i = 0; i < count; ++i) {
    ElementOf<Array> element = Sample<ElementOf<Array>>(first + i);
    array.Append(element);
  }
  return Array(array);
}

/// The same with room for one more.
template <typename Array>
void MakeRoom(Array& array) {
  ElementOf<Array> element = Sample<ElementOf<Array>>(0);
  array.Append(element);
  array.Remove(array.Length() - 1);
}

VemVarArray Numbers(const std::vector<int>& values);
VemPointArray Points(const std::vector<VemPoint>& points);
/// A region with outlines.
VemRegion OutlinedRegion(int number);
VemROI Mask();
VemOverlay ImageOverlay();
VemOverlayPath Path();

#endif  // TESTS_FAULTS_SAMPLES_H_
