// Runs any operations on an array of each class, beside a plain list of its elements' numbers. What
// must hold: after each operation the array has the list's elements, by every way of reading; an
// operation with a bad index does nothing; copies and sources stay as they were; what the classes
// do each in their own way, they do as their traits tell.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "ByteReader.h"
#include "Require.h"
#include "Vem1DCodeArray.h"
#include "Vem2DVarArray.h"
#include "Vem3DPointArray.h"
#include "VemContourArray.h"
#include "VemDMCodeArray.h"
#include "VemFeaturePointArray.h"
#include "VemImageArray.h"
#include "VemMatrixArray.h"
#include "VemPDF417CodeArray.h"
#include "VemPointArray.h"
#include "VemQRCodeArray.h"
#include "VemROIArray.h"
#include "VemRegionArray.h"
#include "VemTuple.h"
#include "VemVCodeArray.h"
#include "support/ArrayTraits.h"
#include "support/CodeRecords.h"
#include "support/MatArrayContract.h"
#include "support/OutlineReference.h"
#include "support/Regions.h"
#include "support/Support.h"

struct PrivateVemImageArrayStore {
  using Type = std::vector<cv::Mat*>* VemImageArray::*;
  friend Type PrivateOf(PrivateVemImageArrayStore);
};
template struct PrivateAccess<PrivateVemImageArrayStore, &VemImageArray::store_>;

struct PrivateVemMatrixArrayStore {
  using Type = std::vector<cv::Mat*>* VemMatrixArray::*;
  friend Type PrivateOf(PrivateVemMatrixArrayStore);
};
template struct PrivateAccess<PrivateVemMatrixArrayStore, &VemMatrixArray::store_>;

namespace {

// --- The classes --------------------------------------------------------------------------------

struct VarTraits : ArrayTraits<VemVarArray, VemVar> {
  using Assigned = VemVarArray&;
  static constexpr bool kMayAssignToItself = false;

  static bool IsNone(int number) { return number % 8 == 7; }
  static bool IsText(int number) { return number % 8 == 5; }
  // Numbers of one kind never equal those of another.
  static VemVar Make(int number) {
    if (IsNone(number)) return VemVar();
    if (IsText(number)) return VemVar(("text " + std::to_string(number)).c_str());
    if (number % 2 == 0) return VemVar(number + 0.25);
    return VemVar(number);
  }
  static bool IsMade(const VemVar& value, int number) { return Same(value, Make(number)); }
  static bool IsDefault(const VemVar& value) { return value.ValType() == VemVarNone; }
};

struct RowTraits : ArrayTraits<Vem2DVarArray, VemVarArray> {
  static VemVarArray Make(int number) {
    VemVarArray row;
    for (int i = 0; i <= number % 4; ++i) row.Append(VarTraits::Make(number + i));
    row.Append(number);
    return row;
  }
  static bool IsMade(const VemVarArray& row, int number) { return Same(row, Make(number)); }
  static bool IsDefault(const VemVarArray& row) { return row.Length() == 0; }
};

struct PointTraits : ArrayTraits<VemPointArray, VemPoint> {
  static VemPoint Make(int number) { return VemPoint(number, -0.5 * number); }
  static bool IsMade(const VemPoint& point, int number) {
    return point.x == number && point.y == -0.5 * number;
  }
  static bool IsDefault(const VemPoint& point) { return IsMade(point, 0); }
};

struct SpacePointTraits : ArrayTraits<Vem3DPointArray, Vem3DPoint> {
  static Vem3DPoint Make(int number) { return Vem3DPoint(number, -0.5 * number, 3.0 * number); }
  static bool IsMade(const Vem3DPoint& point, int number) {
    return point.x == number && point.y == -0.5 * number && point.z == 3.0 * number;
  }
  static bool IsDefault(const Vem3DPoint& point) { return IsMade(point, 0); }
};

struct ContourTraits : ArrayTraits<VemContourArray, VemContour> {
  using Assigned = VemContourArray&;
  static constexpr bool kHasReferences = false;

  static Chain Points(int number) {
    Chain points;
    for (int i = 0; i < number % 4; ++i) points.emplace_back(number, i / 8.0);
    return points;
  }
  static VemContour Make(int number) { return ContourOf(Points(number)); }
  static bool IsMade(const VemContour& contour, int number) {
    return PointsOf(contour) == Points(number);
  }
  static bool IsDefault(const VemContour& contour) { return contour.Length() == 0; }
};

struct ImageTraits : MatArrayTraits<VemImageArray, VemImage, 4> {
  static std::vector<cv::Mat*>*& Store(VemImageArray& array) {
    return array.*PrivateOf(PrivateVemImageArrayStore());
  }
  static void Replace(VemImageArray& array, int index, VemImage& element) {
    ReplaceAndRelease<ImageTraits>(array, index, element);
  }
};

struct MatrixTraits : MatArrayTraits<VemMatrixArray, VemMatrix, 1> {
  static std::vector<cv::Mat*>*& Store(VemMatrixArray& array) {
    return array.*PrivateOf(PrivateVemMatrixArrayStore());
  }
  static void Replace(VemMatrixArray& array, int index, VemMatrix& element) {
    ReplaceAndRelease<MatrixTraits>(array, index, element);
  }
};

// All have outlines, or none has: the array delivers outlines rightly only then.
template <bool kHaveOutlines>
struct RegionTraits : ArrayTraits<VemRegionArray, VemRegion> {
  using Assigned = VemRegionArray&;
  static constexpr bool kHasReferences = false;
  static constexpr bool kTestsPositions = false;
  static constexpr bool kSelectIsConst = false;

  static RegionValue Value(int number) {
    RegionValue value = {10 + number, 20 - number, {}, {}};
    for (int i = 0; i < number % 3; ++i) value.runs.push_back({number, 2 * i, 3 * number});
    if (kHaveOutlines) value.outlines = {{{{number, 0}, {0, number}}}, {{-1, -1, -1, -1}}};
    return value;
  }
  static VemRegion Make(int number) { return MakeRegion(Value(number)); }
  static bool IsMade(VemRegion region, int number) { return ValueOf(region) == Value(number); }
  static bool IsDefault(VemRegion region) { return ValueOf(region) == RegionValue(); }
};

// Each fourth is a mask, whose runs Select does not give.
struct ROITraits : ArrayTraits<VemROIArray, VemROI> {
  using Assigned = VemROIArray&;
  static constexpr bool kSelfAssignmentEmpties = true;
  static constexpr bool kHasReferences = false;
  static constexpr bool kSelectIsWhole = false;

  static bool IsMask(int number) { return number % 4 == 0; }
  static VemROI Make(int number) {
    VemROI roi;
    if (IsMask(number)) {
      VemVarArray rows(number), firsts(0), lasts(number);
      roi.GenMask(rows, firsts, lasts, number + 2, number + 3);
    } else {
      VemPoint center(number, -number);
      roi.GenCircle(center, number + 0.5);
    }
    return roi;
  }
  static bool IsMade(const VemROI& roi, int number) {
    return IsMask(number) ? IsMaskOf(roi, number, {{number, 0, number}}) : IsCircleOf(roi, number);
  }
  static bool IsSelected(const VemROI& roi, int old, int number) {
    if (!IsMask(number)) return IsCircleOf(roi, number);
    return IsMaskOf(roi, number,
                    IsMask(old) ? std::vector<Run>{{old, 0, old}} : std::vector<Run>());
  }
  static bool IsDefault(const VemROI& roi) { return roi.ROIType() == VemROINone; }

 private:
  static bool IsCircleOf(const VemROI& roi, int number) {
    VemPoint center;
    double radius = 0;
    return roi.GetCircle(&center, &radius) && center.x == number && center.y == -number &&
           radius == number + 0.5;
  }
  static bool IsMaskOf(const VemROI& roi, int number, const std::vector<Run>& runs) {
    VemVarArray rows, firsts, lasts;
    int width = 0;
    int height = 0;
    return roi.ROIType() == VemROIMask && roi.GetMask(&rows, &firsts, &lasts, &width, &height) &&
           width == number + 2 && height == number + 3 && RunsOf(rows, firsts, lasts) == runs;
  }
};

struct FeaturePointTraits : ArrayTraits<VemFeaturePointArray, VemFeaturePoint> {
  static VemFeaturePoint Make(int number) {
    const auto value = static_cast<float>(number);
    VemFeaturePoint point(value, -value, value / 2, value / 4, value / 8, number * 3, value / 16);
    point.ValueF = value / 32;
    return point;
  }
  static bool IsMade(const VemFeaturePoint& point, int number) {
    return Equal(point, Make(number));
  }
  static bool IsDefault(const VemFeaturePoint&) { return true; }  // It has no values.
};

// The one array whose constant access does not read its elements.
struct BarcodeTraits : RecordTraits<Vem1DCodeArray, Vem1DCodeFields> {
  static constexpr bool kConstAccessReads = false;
};
template <typename Array, typename Fields>
struct CodeTraits : RecordTraits<Array, Fields> {
  static bool IsDefault(const typename Fields::Record&) { return true; }  // Its numbers have none.
};

// --- The operations -----------------------------------------------------------------------------

/// An array, another beside it, and what both must hold.
template <typename Traits>
class Sequence {
 public:
  using Array = typename Traits::Array;
  using Element = typename Traits::Element;

  explicit Sequence(ByteReader& in) : in_(in) {}

  void Perform() {
    for (int left = 60; left > 0 && !in_.IsEmpty(); --left) {
      const int operation = in_.Below(20);
      Step(operation);
      RequireHeld(operation);
      if (numbers_.size() > 24) Clear();
    }
    std::swap(array_, other_);
    std::swap(numbers_, otherNumbers_);
    RequireHeld(-1);
  }

 private:
  void Step(int operation) {
    switch (operation) {
      case 0:
      case 1:
      case 2:
        return Append();
      case 3:
      case 4:
        return Insert();
      case 5:
        return InsertOwn();
      case 6:
        return Remove();
      case 7:
        return Replace();
      case 8:
        return ReplaceByOwn();
      case 9:
        return Swap();
      case 10:
        return Write();
      case 11:
        return Select();
      case 12:
        return AppendArray();
      case 13:
        return AppendItself();
      case 14:
        return Assign();
      case 15:
        return AssignItself();
      case 16:
        return Exchange();
      case 17:
        return ReadOutOfRange();
      case 18:
        return in_.Flag() ? Clear() : AppendOwn();
      default:
        return Further();
    }
  }

  void RequireHeld(int operation) {
    const testing::AssertionResult held = Holds<Traits>(array_, numbers_);
    if (held) return;
    Fail(testing::PrintToString(numbers_), " after operation ", operation, ": ", held.message());
  }

  int Number() { return 1 + in_.Below(40); }
  int Index() { return in_.Index(static_cast<int>(numbers_.size())); }
  bool Has(int index) const { return IsIndex(numbers_, index); }
  int& At(int index) { return numbers_[static_cast<std::size_t>(index)]; }
  Element ElementAt(int index) {
    Element element = Traits::Make(50);
    if constexpr (Traits::kHasReferences) element = array_[index];
    if constexpr (!Traits::kHasReferences) element = std::as_const(array_)[index];
    return element;
  }

  void Append() {
    const int number = Number();
    Element element = Traits::Make(number);
    array_.Append(element);
    Require(Traits::IsMade(element, number), "an argument stays as it is");
    numbers_.push_back(number);
  }

  void AppendOwn() {
    const int index = Index();
    if (!Has(index)) return;
    if constexpr (Traits::kHasReferences) {
      array_.Append(array_[index]);
    } else {
      Element element = ElementAt(index);
      array_.Append(element);
    }
    numbers_.push_back(At(index));
  }

  void InsertAt(int index, Element& element, int number) {
    const bool adds = !Traits::kTestsPositions && index == array_.Length();
    if (!Traits::kTestsPositions && !Has(index) && !adds) return;
    array_.Insert(index, element);
    if (Has(index) || adds) numbers_.insert(numbers_.begin() + index, number);
  }

  void Insert() {
    const int index = Index();
    const int number = Number();
    Element element = Traits::Make(number);
    InsertAt(index, element, number);
  }

  void InsertOwn() {
    const int index = Index();
    const int from = Index();
    if (!Has(from)) return;
    const int number = At(from);
    if constexpr (Traits::kHasReferences) {
      InsertAt(index, array_[from], number);
    } else {
      Element element = ElementAt(from);
      InsertAt(index, element, number);
    }
  }

  void Remove() {
    const int index = Index();
    array_.Remove(index);
    if (Has(index)) numbers_.erase(numbers_.begin() + index);
  }

  void Replace() {
    const int index = Index();
    const int number = Number();
    if (!Traits::kTestsPositions && !Has(index)) return;
    Element element = Traits::Make(number);
    Traits::Replace(array_, index, element);
    if (Has(index)) At(index) = number;
  }

  void ReplaceByOwn() {
    const int index = Index();
    const int from = Index();
    if (!Has(index) || !Has(from) || (index == from && !Traits::kMayAssignToItself)) return;
    if constexpr (Traits::kHasReferences) {
      array_.Replace(index, array_[from]);
    } else {
      Element element = ElementAt(from);
      Traits::Replace(array_, index, element);
    }
    At(index) = At(from);
  }

  void Swap() {
    const int i = Index();
    const int j = Index();
    if (i == j && Has(i) && !Traits::kMayAssignToItself) return;
    array_.Swap(i, j);
    if (Has(i) && Has(j)) std::iter_swap(numbers_.begin() + i, numbers_.begin() + j);
  }

  void Write() {
    const int index = Index();
    const int number = Number();
    if (!Has(index)) return;
    Put<Traits>(array_, index, number);
    At(index) = number;
  }

  // Bad indices leave the target alone.
  void Select() {
    const int index = Index();
    const int old = Number();
    Element element = Traits::Make(old);
    SelectFrom<Traits>(array_, index, &element);
    if (Has(index)) {
      Require(IsSelected<Traits>(element, old, At(index)), "Select gives the element");
    } else {
      Require(Traits::IsMade(element, old), "Select out of range gives nothing");
    }
  }

  // Outlines would stay behind.
  static constexpr bool kAppendsArrays = !std::is_same_v<Traits, RegionTraits<true>>;

  void AppendArray() {
    if (!kAppendsArrays || numbers_.size() + otherNumbers_.size() > 30) return;
    if constexpr (!std::is_same_v<Traits, VarTraits>) array_.Append(other_);
    if constexpr (std::is_same_v<Traits, VarTraits>) array_ = array_ + other_;
    numbers_.insert(numbers_.end(), otherNumbers_.begin(), otherNumbers_.end());
    RequireOther();
  }

  void AppendItself() {
    if (!kAppendsArrays) return;
    if constexpr (!std::is_same_v<Traits, VarTraits>) array_.Append(array_);
    if constexpr (std::is_same_v<Traits, VarTraits>) array_ = array_ + array_;
    const Numbers once = numbers_;
    numbers_.insert(numbers_.end(), once.begin(), once.end());
  }

  void RequireOther() {
    const testing::AssertionResult held = Holds<Traits>(other_, otherNumbers_);
    Require(held, "a source stays as it is: ", held.message());
  }

  void Assign() {
    if constexpr (std::is_reference_v<typename Traits::Assigned>) {
      const Array* const given = &(other_ = array_);
      const bool givesSource = std::is_const_v<std::remove_reference_t<typename Traits::Assigned>>;
      Require(given == (givesSource ? &array_ : &other_), "an assignment gives what it tells");
    } else {
      const Array given = (other_ = array_);
      Require(Holds<Traits>(given, numbers_), "an assignment gives a copy");
    }
    otherNumbers_ = numbers_;
    RequireOther();
  }

  void AssignItself() {
    const Array& itself = array_;
    array_ = itself;
    if (Traits::kSelfAssignmentEmpties) numbers_.clear();
  }

  void Exchange() {
    const Array copy(array_);
    array_ = other_;
    other_ = copy;
    numbers_.swap(otherNumbers_);
    RequireOther();
  }

  void ReadOutOfRange() {
    const int index = Index();
    if constexpr (Traits::kConstAccessReads) {
      if (!Has(index)) {
        Require(Traits::IsDefault(std::as_const(array_)[index]), "nothing is out of range");
      }
    }
  }

  void Clear() {
    array_.Clear();
    numbers_.clear();
  }

  void Further() {
    if constexpr (std::is_same_v<Traits, VarTraits>) {
      FurtherOfVars();
    } else if constexpr (std::is_same_v<Array, VemRegionArray>) {
      Unite();
    } else {
      Append();
    }
  }

  // Two values differ as their array sees it: none differs from nothing, nor a text from a number.
  static bool Differ(int a, int b) {
    if (VarTraits::IsNone(a) || VarTraits::IsNone(b)) return false;
    return VarTraits::IsText(a) == VarTraits::IsText(b) && a != b;
  }

  void FurtherOfVars() {
    const int kind = in_.Below(3);
    if (kind == 0) {
      array_.Invert();
      return std::reverse(numbers_.begin(), numbers_.end());
    }
    if (kind == 1) {
      const int number = Number();
      const int start = in_.Below(static_cast<int>(numbers_.size()) + 2);
      int expected = -1;
      for (int i = start; expected < 0 && Has(i); ++i) {
        if (At(i) == number && !VarTraits::IsNone(number)) expected = i;
      }
      const int found = array_.IndexOf(Traits::Make(number), start);
      return Require(found == expected, "IndexOf gives ", found, ", not ", expected);
    }
    bool differ = numbers_.size() != otherNumbers_.size();
    for (std::size_t i = 0; !differ && i < numbers_.size(); ++i) {
      differ = Differ(numbers_[i], otherNumbers_[i]);
    }
    Require((array_ != other_) == differ && (array_ == other_) == !differ, "arrays compare by !=");
  }

  void Unite() {
    RegionValue expected;
    for (const int number : numbers_) {
      const RegionValue value = Traits::Value(number);
      expected.width = std::max(expected.width, value.width);
      expected.height = std::max(expected.height, value.height);
      expected.runs.insert(expected.runs.end(), value.runs.begin(), value.runs.end());
    }
    VemRegion united;
    array_.Union(&united);
    Require(ValueOf(united) == expected, "the union has all runs, on the largest canvas");
  }

  ByteReader& in_;
  Array array_;
  Array other_;
  Numbers numbers_;
  Numbers otherNumbers_;
};

template <typename Traits>
void RunSequence(ByteReader& in) {
  Sequence<Traits>(in).Perform();
}

constexpr void (*kSequences[])(ByteReader&) = {
    RunSequence<VarTraits>,
    RunSequence<RowTraits>,
    RunSequence<PointTraits>,
    RunSequence<SpacePointTraits>,
    RunSequence<ContourTraits>,
    RunSequence<ImageTraits>,
    RunSequence<MatrixTraits>,
    RunSequence<RegionTraits<false>>,
    RunSequence<ROITraits>,
    RunSequence<FeaturePointTraits>,
    RunSequence<BarcodeTraits>,
    RunSequence<CodeTraits<VemDMCodeArray, VemDMCodeFields>>,
    RunSequence<CodeTraits<VemQRCodeArray, VemQRCodeFields>>,
    RunSequence<CodeTraits<VemPDF417CodeArray, VemPDF417CodeFields>>,
    RunSequence<CodeTraits<VemVCodeArray, VemVCodeFields>>,
    RunSequence<RegionTraits<true>>,
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ByteReader in(data, size);
  constexpr auto kCount = static_cast<int>(sizeof(kSequences) / sizeof(kSequences[0]));
  kSequences[in.Below(kCount)](in);
  return 0;
}
