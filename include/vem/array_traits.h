#ifndef VEM_VEM_ARRAY_TRAITS_H_
#define VEM_VEM_ARRAY_TRAITS_H_

#include <type_traits>

class Vem1DCode;
class Vem1DCodeArray;
class Vem2DVarArray;
class Vem3DPoint;
class Vem3DPointArray;
class VemContour;
class VemContourArray;
class VemDMCode;
class VemDMCodeArray;
class VemFeaturePoint;
class VemFeaturePointArray;
class VemImage;
class VemImageArray;
class VemMatrix;
class VemMatrixArray;
class VemOverlay;
class VemOverlayPath;
class VemPDF417Code;
class VemPDF417CodeArray;
class VemPoint;
class VemPointArray;
class VemQRCode;
class VemQRCodeArray;
class VemROI;
class VemROIArray;
class VemRegion;
class VemRegionArray;
class VemScratchGroup;
class VemScratchLayer;
class VemScratchLayerArray;
class VemVCode;
class VemVCodeArray;
class VemVar;
class VemVarArray;
struct VemScratchFeature;

/// Which classes are arrays: what their elements are, how many there are, and how one is added at
/// the end. The classes themselves are included by whoever uses them.

/// @cond
namespace vem {
namespace detail {

// The three counts that classes have, and the two ways to add at the end.
struct counts_length {
  template <class A>
  static int count(const A& array) {
    return array.Length();
  }
  template <class A, class E>
  static void add(A& array, E& element) {
    array.Append(element);
  }
};
struct counts_overlays : counts_length {
  template <class A, class E>
  static void add(A& array, E& element) {
    array.AddOverlay(element);
  }
};
struct counts_features : counts_length {
  template <class A>
  static int count(const A& array) {
    return array.GetFeatureNum();
  }
};
struct counts_groups : counts_length {
  template <class A>
  static int count(const A& array) {
    return array.GetGroupNum();
  }
};
struct counts_layers : counts_length {
  template <class A>
  static int count(const A& array) {
    return array.GetLayerNum();
  }
};

template <class E, class Counts = counts_length>
struct in_place : Counts {
  typedef E element;
  static const bool copies = false;
};
template <class E>
struct by_copy : counts_length {
  typedef E element;
  static const bool copies = true;
};

template <class A>
struct array_traits {};
// clang-format off
template <> struct array_traits<VemVarArray> : in_place<VemVar> {};
template <> struct array_traits<Vem2DVarArray> : in_place<VemVarArray> {};
template <> struct array_traits<VemPointArray> : in_place<VemPoint> {};
template <> struct array_traits<Vem3DPointArray> : in_place<Vem3DPoint> {};
template <> struct array_traits<VemFeaturePointArray> : in_place<VemFeaturePoint> {};
template <> struct array_traits<Vem1DCodeArray> : in_place<Vem1DCode> {};
template <> struct array_traits<VemDMCodeArray> : in_place<VemDMCode> {};
template <> struct array_traits<VemQRCodeArray> : in_place<VemQRCode> {};
template <> struct array_traits<VemPDF417CodeArray> : in_place<VemPDF417Code> {};
template <> struct array_traits<VemVCodeArray> : in_place<VemVCode> {};
template <> struct array_traits<VemOverlayPath> : in_place<VemOverlay, counts_overlays> {};
template <> struct array_traits<VemScratchGroup> : in_place<VemScratchFeature, counts_features> {};
template <> struct array_traits<VemScratchLayer> : in_place<VemScratchGroup, counts_groups> {};
template <> struct array_traits<VemScratchLayerArray> : in_place<VemScratchLayer, counts_layers> {};
template <> struct array_traits<VemContourArray> : by_copy<VemContour> {};
template <> struct array_traits<VemROIArray> : by_copy<VemROI> {};
template <> struct array_traits<VemRegionArray> : by_copy<VemRegion> {};
template <> struct array_traits<VemImageArray> : by_copy<VemImage> {};
template <> struct array_traits<VemMatrixArray> : by_copy<VemMatrix> {};
// clang-format on

template <class A>
using element_of = typename array_traits<typename std::remove_cv<A>::type>::element;

template <class A>
struct is_array_class {
  template <class B>
  static std::true_type test(element_of<B>*);
  template <class B>
  static std::false_type test(...);
  static const bool value = decltype(test<A>(nullptr))::value;
};

template <class A>
int count_of(const A& array) {
  return array_traits<A>::count(array);
}

// The points of a contour. ToPointArray changes nothing of it, though it is not const.
template <class Points, class Contour>
Points points_of(const Contour& contour) {
  Points points;
  const_cast<Contour&>(contour).ToPointArray(&points);
  return points;
}

}  // namespace detail
}  // namespace vem
/// @endcond

#endif  // VEM_VEM_ARRAY_TRAITS_H_
