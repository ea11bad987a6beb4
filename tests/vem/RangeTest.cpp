#include "vem/range.h"

#include <algorithm>
#include <iterator>
#include <list>
#include <numeric>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>
#if __cplusplus >= 202002L
#include <ranges>
#endif

#include <gtest/gtest.h>

#include "Vem1DCodeArray.h"
#include "Vem2DVarArray.h"
#include "Vem3DPointArray.h"
#include "VemContourArray.h"
#include "VemDMCodeArray.h"
#include "VemFeaturePointArray.h"
#include "VemImageArray.h"
#include "VemMatrixArray.h"
#include "VemOverlayPath.h"
#include "VemPDF417CodeArray.h"
#include "VemPointArray.h"
#include "VemQRCodeArray.h"
#include "VemROIArray.h"
#include "VemRegionArray.h"
#include "VemScratchGroup.h"
#include "VemVCodeArray.h"

namespace {

// An element with a number to know it by, and that number.
template <class E>
struct Marked;

template <class E>
struct MarkedByNumber {
  static E Make(int mark) {
    E element;
    element.Number = mark;
    return element;
  }
  static int Read(const E& element) { return element.Number; }
};
template <>
struct Marked<Vem1DCode> : MarkedByNumber<Vem1DCode> {};
template <>
struct Marked<VemDMCode> : MarkedByNumber<VemDMCode> {};
template <>
struct Marked<VemQRCode> : MarkedByNumber<VemQRCode> {};
template <>
struct Marked<VemPDF417Code> : MarkedByNumber<VemPDF417Code> {};

template <>
struct Marked<VemVCode> {
  static VemVCode Make(int mark) {
    VemVCode element;
    element.Count0 = mark;
    return element;
  }
  static int Read(const VemVCode& element) { return element.Count0; }
};
template <>
struct Marked<VemVar> {
  static VemVar Make(int mark) { return VemVar(mark); }
  static int Read(const VemVar& element) { return element.I(); }
};
template <>
struct Marked<VemVarArray> {
  static VemVarArray Make(int mark) { return VemVarArray(mark); }
  static int Read(const VemVarArray& element) { return element[0].I(); }
};
template <>
struct Marked<VemPoint> {
  static VemPoint Make(int mark) { return VemPoint(mark, 0); }
  static int Read(const VemPoint& element) { return static_cast<int>(element.x); }
};
template <>
struct Marked<Vem3DPoint> {
  static Vem3DPoint Make(int mark) { return Vem3DPoint(0, 0, mark); }
  static int Read(const Vem3DPoint& element) { return static_cast<int>(element.z); }
};
template <>
struct Marked<VemFeaturePoint> {
  static VemFeaturePoint Make(int mark) {
    return VemFeaturePoint(static_cast<float>(mark), 0.0f, 0.0f);
  }
  static int Read(const VemFeaturePoint& element) { return static_cast<int>(element.x); }
};
template <>
struct Marked<VemOverlay> {
  static VemOverlay Make(int mark) {
    VemOverlay element;
    element.SetPen(mark, 0, 0, 1);
    return element;
  }
  static int Read(VemOverlay element) {
    long color = 0, other = 0;
    element.GetPen(&color, &other, &other, &other);
    return static_cast<int>(color);
  }
};
template <>
struct Marked<VemScratchFeature> {
  static VemScratchFeature Make(int mark) { return VemScratchFeature{0, 0, mark, 0}; }
  static int Read(const VemScratchFeature& element) { return element.SortKey; }
};
template <>
struct Marked<VemScratchGroup> {
  static VemScratchGroup Make(int mark) {
    VemVar label(mark);
    return VemScratchGroup(label);
  }
  static int Read(const VemScratchGroup& element) { return element.Label.I(); }
};
template <>
struct Marked<VemScratchLayer> {
  static VemScratchLayer Make(int mark) {
    VemScratchLayer element;
    element.Settings.Param0 = mark;
    return element;
  }
  static int Read(const VemScratchLayer& element) { return element.Settings.Param0; }
};
template <>
struct Marked<VemContour> {
  static VemContour Make(int mark) {
    VemPointArray points;
    VemPoint point;
    for (int i = 0; i < mark; ++i) points.Append(point);
    VemContour element;
    element.FromPointArray(points);
    return element;
  }
  static int Read(const VemContour& element) { return element.Length(); }
};
template <>
struct Marked<VemROI> {
  static VemROI Make(int mark) {
    VemPoint center;
    VemROI element;
    element.GenCircle(center, mark);
    return element;
  }
  static int Read(const VemROI& element) {
    VemPoint center;
    double radius = 0;
    element.GetCircle(&center, &radius);
    return static_cast<int>(radius);
  }
};
template <>
struct Marked<VemRegion> {
  static VemRegion Make(int mark) {
    VemRegion element;
    element.SetWidth(mark);
    return element;
  }
  static int Read(const VemRegion& element) { return element.Width(); }
};
template <>
struct Marked<VemImage> {
  static VemImage Make(int mark) {
    std::vector<unsigned char> pixels(static_cast<std::size_t>(mark));
    return VemImage(pixels.data(), 0, 1, mark, 1, VemImageType8U);
  }
  static int Read(const VemImage& element) { return element.Width(); }
};
template <>
struct Marked<VemMatrix> {
  static VemMatrix Make(int mark) { return VemMatrix(1, mark, VemMatrixType8U); }
  static int Read(const VemMatrix& element) { return element.Cols(); }
};

template <class A>
class VemRange : public testing::Test {
 public:
  typedef vem::detail::element_of<A> Held;

  static std::vector<Held> Elements(std::initializer_list<int> marks) {
    std::vector<Held> elements;
    for (int mark : marks) elements.push_back(Marked<Held>::Make(mark));
    return elements;
  }
  static std::vector<int> Marks(const A& array) {
    std::vector<int> marks;
    for (const auto& element : array) marks.push_back(Marked<Held>::Read(element));
    return marks;
  }
};

typedef testing::Types<VemVarArray, Vem2DVarArray, VemPointArray, Vem3DPointArray,
                       VemFeaturePointArray, Vem1DCodeArray, VemDMCodeArray, VemQRCodeArray,
                       VemPDF417CodeArray, VemVCodeArray, VemOverlayPath, VemScratchGroup,
                       VemScratchLayer, VemScratchLayerArray, VemContourArray, VemROIArray,
                       VemRegionArray, VemImageArray, VemMatrixArray>
    Arrays;
TYPED_TEST_SUITE(VemRange, Arrays, );

TYPED_TEST(VemRange, WalksNoElements) {
  TypeParam array;
  const TypeParam constant;
  EXPECT_TRUE(begin(array) == end(array));
  EXPECT_TRUE(begin(constant) == end(constant));
  EXPECT_TRUE(vem::to_vector(array).empty());
}

TYPED_TEST(VemRange, ComesOfAVectorAndGoesBack) {
  const auto elements = this->Elements({3, 1, 2});
  const TypeParam array = vem::to<TypeParam>(elements);
  EXPECT_EQ(this->Marks(array), (std::vector<int>{3, 1, 2}));
  const auto back = vem::to_vector(array);
  ASSERT_EQ(back.size(), 3u);
  typedef Marked<typename TestFixture::Held> Mark;
  for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(Mark::Read(back[i]), Mark::Read(elements[i]));
}

TYPED_TEST(VemRange, ComesOfAListAndOfAnyRange) {
  typedef typename TestFixture::Held Element;
  const auto made = [](int mark) { return Marked<Element>::Make(mark); };
  EXPECT_EQ(this->Marks(vem::to<TypeParam>({made(5), made(4)})), (std::vector<int>{5, 4}));
  const std::list<Element> list{made(6), made(7)};
  EXPECT_EQ(this->Marks(vem::to<TypeParam>(list)), (std::vector<int>{6, 7}));
  const Element plain[] = {made(8), made(9)};
  EXPECT_EQ(this->Marks(vem::to<TypeParam>(plain)), (std::vector<int>{8, 9}));
  const TypeParam array = vem::to<TypeParam>(list);
  EXPECT_EQ(this->Marks(vem::to<TypeParam>(array)), (std::vector<int>{6, 7}));
}

TYPED_TEST(VemRange, GrowsAtItsEnd) {
  typedef typename TestFixture::Held Element;
  TypeParam array;
  vem::append(array, Marked<Element>::Make(1));
  const Element constant = Marked<Element>::Make(2);
  vem::append(array, constant);
  vem::append_range(array, this->Elements({3, 4}));
  EXPECT_EQ(this->Marks(array), (std::vector<int>{1, 2, 3, 4}));
  vem::append_range(array, array);
  EXPECT_EQ(this->Marks(array), (std::vector<int>{1, 2, 3, 4, 1, 2, 3, 4}));
}

TYPED_TEST(VemRange, TellsAnIndexOutOfRange) {
  typedef typename TestFixture::Held Element;
  TypeParam array = vem::to<TypeParam>(this->Elements({7, 8}));
  const TypeParam constant = array;
  EXPECT_EQ(Marked<Element>::Read(vem::at(array, 1)), 8);
  EXPECT_EQ(Marked<Element>::Read(vem::at(constant, 0)), 7);
  for (int index : {-1, 2}) {
    try {
      vem::at(constant, index);
      ADD_FAILURE();
    } catch (const std::out_of_range& error) {
      EXPECT_EQ(error.what(), "vem::at: index " + std::to_string(index) + ", length 2");
    }
  }
}

TYPED_TEST(VemRange, SearchesAndCounts) {
  typedef typename TestFixture::Held Element;
  const TypeParam array = vem::to<TypeParam>(this->Elements({1, 2, 3}));
  const auto found = std::find_if(begin(array), end(array), [](const Element& element) {
    return Marked<Element>::Read(element) == 2;
  });
  EXPECT_EQ(found - begin(array), 1);
  EXPECT_EQ(std::distance(begin(array), end(array)), 3);
}

#if __cplusplus >= 202002L
TYPED_TEST(VemRange, IsARangeOfTheStandardLibrary) {
  static_assert(std::ranges::random_access_range<TypeParam>);
  static_assert(std::ranges::random_access_range<const TypeParam>);
  static_assert(std::ranges::sized_range<const TypeParam>);
  TypeParam array = vem::to<TypeParam>(this->Elements({1, 2, 3}));
  EXPECT_EQ(std::ranges::size(array), 3u);
}
#endif

TEST(VemRangeInPlace, WritesThroughTheElement) {
  VemPointArray points = vem::to<VemPointArray>({{1, 2}, {3, 4}});
  for (VemPoint& point : points) point.x += 10;
  EXPECT_EQ(points[0].x, 11);
  EXPECT_EQ(points[1].x, 13);
  static_assert(std::is_same<decltype(begin(points)), VemPoint*>::value, "");
  const VemPointArray& constant = points;
  static_assert(std::is_same<decltype(begin(constant)), const VemPoint*>::value, "");
  EXPECT_EQ(begin(constant), &points[0]);
}

TEST(VemRangeInPlace, SortsWithTheStandardLibrary) {
  VemVarArray values = vem::array(3, 1.5, 2);
  std::sort(begin(values), end(values));
  EXPECT_TRUE(values[0] == 1.5);
  EXPECT_TRUE(values[1] == 2);
  EXPECT_TRUE(values[2] == 3);
  EXPECT_EQ(std::find(begin(values), end(values), 2) - begin(values), 1);
}

TEST(VemRangeByCopy, StepsAsAnIteratorDoes) {
  const VemMatrixArray array =
      vem::to<VemMatrixArray>({VemMatrix(1, 1, VemMatrixType8U), VemMatrix(2, 1, VemMatrixType8U),
                               VemMatrix(3, 1, VemMatrixType8U)});
  auto i = begin(array);
  EXPECT_EQ(i->Rows(), 1);
  EXPECT_EQ((*i++).Rows(), 1);
  EXPECT_EQ((*++i).Rows(), 3);
  EXPECT_EQ((*i--).Rows(), 3);
  EXPECT_EQ((*--i).Rows(), 1);
  EXPECT_EQ((*(i + 1)).Rows(), 2);
  EXPECT_EQ((*(2 + i)).Rows(), 3);
  EXPECT_EQ(i[2].Rows(), 3);
  i += 3;
  EXPECT_TRUE(i == end(array));
  EXPECT_FALSE(i != end(array));
  EXPECT_EQ((i - 1)->Rows(), 3);
  i -= 3;
  EXPECT_EQ(end(array) - i, 3);
  EXPECT_TRUE(i < end(array));
  EXPECT_TRUE(i <= end(array));
  EXPECT_FALSE(i > end(array));
  EXPECT_FALSE(i >= end(array));
}

TEST(VemRangeByCopy, SharesNoPixels) {
  unsigned char pixel = 7;
  VemImageArray array = vem::to<VemImageArray>({VemImage(&pixel, 0, 1, 1, 1, VemImageType8U)});
  for (VemImage image : array) image.ImageData()[0] = 9;
  VemImage image = array[0];
  EXPECT_EQ(image.ImageData()[0], 7);
}

TEST(VemRangeValues, AreMadeOfNumbersAndTexts) {
  const VemVarArray values = vem::array(1, 2.5, "x", std::string("y"), VemVar(), 3u);
  ASSERT_EQ(values.Length(), 6);
  EXPECT_TRUE(values[0] == 1);
  EXPECT_TRUE(values[1] == 2.5);
  EXPECT_TRUE(values[2] == "x");
  EXPECT_TRUE(values[3] == "y");
  EXPECT_EQ(values[4].ValType(), VemVarNone);
  EXPECT_EQ(values[5].ValType(), VemVarLong);
  EXPECT_EQ(vem::array().Length(), 0);
  EXPECT_EQ(vem::to<VemVarArray>({1, 2.5, "x"}).Length(), 3);
  const VemVarArray texts = vem::to<VemVarArray>(std::vector<std::string>{"a", "b"});
  EXPECT_TRUE(texts[1] == "b");
  const VemVarArray shorts = vem::to<VemVarArray>(std::list<short>{7, 8});
  EXPECT_TRUE(shorts[1] == 8);
  EXPECT_THROW(vem::array(1, ~0UL), std::out_of_range);
}

struct Convertible {
  operator VemVar() const { return VemVar(7); }
};
struct Derived : VemVar {
  using VemVar::VemVar;
};

TEST(VemRangeValues, AreMadeOfWhatConverts) {
  EXPECT_EQ(vem::to<VemVarArray>(std::vector<Convertible>(2)), vem::array(7, 7));
  EXPECT_EQ(vem::to<VemVarArray>(std::vector<Derived>{Derived(2.5)}), vem::array(2.5));
}

TEST(VemRangeValues, AreReadIntoVectors) {
  std::vector<bool> flags = {true, false};
  EXPECT_EQ(vem::to_vector<int>(vem::to<VemVarArray>(flags)), (std::vector<int>{1, 0}));
  const std::vector<bool> fixed = flags;
  EXPECT_EQ(vem::to_vector<int>(vem::to<VemVarArray>(fixed)), (std::vector<int>{1, 0}));
  EXPECT_EQ(vem::to_vector<int>(vem::array(1, 2)), (std::vector<int>{1, 2}));
  EXPECT_EQ(vem::to_vector<double>(vem::array(1, 2.5)), (std::vector<double>{1, 2.5}));
  EXPECT_EQ(vem::to_vector<std::string>(vem::array("a", "")), (std::vector<std::string>{"a", ""}));
  try {
    vem::to_vector<int>(vem::array(1, 2, "x"));
    ADD_FAILURE();
  } catch (const vem::bad_value_access& error) {
    EXPECT_STREQ(error.what(),
                 "vem::to_vector: element 2: vem::get: asked for an integer from -2147483648 to "
                 "2147483647, the value is the text \"x\"");
  }
}

TEST(VemRangeTables, AreMadeOfRangesOfRanges) {
  const std::vector<std::vector<double>> rows = {{1, 2}, {}, {3.5}};
  const Vem2DVarArray table = vem::to<Vem2DVarArray>(rows);
  ASSERT_EQ(table.Length(), 3);
  EXPECT_EQ(table[1].Length(), 0);
  EXPECT_EQ(vem::to_vector<std::vector<double>>(table), rows);
  const Vem2DVarArray mixed = vem::to<Vem2DVarArray>({vem::array(1, "x"), vem::array(2.5)});
  EXPECT_TRUE(mixed[0][1] == "x");
}

TEST(VemRangeContours, AreMadeOfPoints) {
  const VemContour contour = vem::to<VemContour>({{0, 0}, {4, 0}, {4, 3}});
  EXPECT_EQ(contour.Length(), 3);
  const std::vector<VemPoint> points = vem::to_vector(contour);
  ASSERT_EQ(points.size(), 3u);
  EXPECT_EQ(points[2].x, 4);
  EXPECT_EQ(points[2].y, 3);
  const std::vector<std::vector<VemPoint>> lists = {points, {VemPoint(7, 8)}};
  const VemContourArray contours = vem::to<VemContourArray>(lists);
  ASSERT_EQ(contours.Length(), 2);
  EXPECT_EQ(contours[0].Perimeter(), 7.0);
  EXPECT_EQ(vem::to_vector<std::vector<VemPoint>>(contours)[1][0].y, 8);
}

// A range that can be walked once, and not while it is constant.
struct Counter {
  int next = 0;
  struct Iterator {
    Counter* counter;
    int operator*() const { return counter->next; }
    Iterator& operator++() {
      ++counter->next;
      return *this;
    }
    bool operator!=(const Iterator&) const { return counter->next != 3; }
  };
  Iterator begin() { return Iterator{this}; }
  Iterator end() { return Iterator{this}; }
};

TEST(VemRangeValues, ComeOfARangeThatChanges) {
  EXPECT_EQ(vem::to_vector<int>(vem::to<VemVarArray>(Counter())), (std::vector<int>{0, 1, 2}));
}

}  // namespace
