#include "VemOverlayPath.h"

#include <csignal>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "IVemOverlayPath.h"
#include "support/HeapCounter.h"
#include "support/OverlayCases.h"
#include "support/OverlayKinds.h"
#include "support/OverlayPaths.h"
#include "support/OverlayRecords.h"
#include "support/PixelCounter.h"
#include "support/Support.h"

namespace {

// What holds for the handle holds for the implementation too.
template <typename Path>
class OverlayPath : public testing::Test {};

using Paths = testing::Types<VemOverlayPath, IVemOverlayPath>;
TYPED_TEST_SUITE(OverlayPath, Paths);

static_assert(sizeof(VemOverlayPath) == sizeof(void*), "a handle is one pointer");
static_assert(!std::is_polymorphic<VemOverlayPath>::value, "no virtual operations");
static_assert(!std::is_polymorphic<IVemOverlayPath>::value, "no virtual operations");
static_assert(offsetof(IVemOverlayPath, Scratch) == 0, "the stated order");
static_assert(offsetof(IVemOverlayPath, Overlays) == sizeof(VemOverlay), "the stated order");

template <typename Path>
constexpr bool kAssignmentIsByValue =
    std::is_same<decltype(std::declval<Path&>() = std::declval<const Path&>()), Path>::value;
static_assert(kAssignmentIsByValue<VemOverlayPath>, "assignment gives a further copy");
static_assert(kAssignmentIsByValue<IVemOverlayPath>, "assignment gives a further copy");

[[maybe_unused]] constexpr void (VemOverlayPath::*kInsert)(int, const VemOverlay&) =
    &VemOverlayPath::Insert;
[[maybe_unused]] constexpr void (VemOverlayPath::*kReplace)(int, const VemOverlay&) =
    &VemOverlayPath::Replace;
[[maybe_unused]] constexpr void (IVemOverlayPath::*kInsertValue)(int, VemOverlay) =
    &IVemOverlayPath::Insert;
[[maybe_unused]] constexpr void (IVemOverlayPath::*kReplaceValue)(int, VemOverlay) =
    &IVemOverlayPath::Replace;

void AddTo(VemOverlayPath& path, const OverlayKind& kind, const Doubles& arguments) {
  kind.add(path, arguments);
}
void AddTo(IVemOverlayPath& path, const OverlayKind& kind, const Doubles& arguments) {
  kind.addToImplementation(path, arguments);
}

template <typename Path>
bool CanAdd(const OverlayKind& kind) {
  return std::is_same<Path, IVemOverlayPath>::value || kind.add != nullptr;
}

VemOverlay ImageOverlay() {
  VemOverlay overlay;
  VemPoint point(1, 2);
  VemImage image = ImageOf("#.\n");
  overlay.GenImage(point, image);
  return overlay;
}

void ExpectDefaultPenAndBrush(IVemOverlay& overlay) {
  EXPECT_FALSE(overlay.isRedrawPen());
  EXPECT_FALSE(overlay.isRedrawBrush());
  EXPECT_EQ(overlay.PenColor2, 255);
  EXPECT_EQ(overlay.BrushColor0, 227);
}

// --- Adding ---

TYPED_TEST(OverlayPath, StartsEmpty) {
  const TypeParam path;
  EXPECT_EQ(path.Length(), 0);
}

TYPED_TEST(OverlayPath, AddsEveryKind) {
  TypeParam path;
  int length = 0;
  for (const StoredCase& c : kStoredCases) {
    SCOPED_TRACE(c.name);
    if (!CanAdd<TypeParam>(KindOf(c.type))) continue;
    AddTo(path, KindOf(c.type), c.arguments);
    ASSERT_EQ(path.Length(), ++length);
    EXPECT_EQ(path[length - 1].OverlayType(), c.type);
    ExpectValues(ElementOf(path, length - 1), c.values);
    ExpectDefaultPenAndBrush(ElementOf(path, length - 1));
  }
  EXPECT_EQ(path[0].OverlayType(), kStoredCases[0].type);
  ExpectValues(ElementOf(path, 0), kStoredCases[0].values);
}

TYPED_TEST(OverlayPath, AddsRefusedElementsAsNone) {
  TypeParam path;
  int length = 0;
  for (const RefusedCase& c : kRefusedCases) {
    SCOPED_TRACE(c.name);
    if (!CanAdd<TypeParam>(KindOf(c.type))) continue;
    VemPoint point(1, 2);
    path.AddPoint(point);
    AddTo(path, KindOf(c.type), c.arguments);
    length += 2;
    ASSERT_EQ(path.Length(), length);
    EXPECT_EQ(path[length - 1].OverlayType(), VemOverlayNone);
    ExpectValues(ElementOf(path, length - 1), {});
  }
}

TEST(IVemOverlayPath, AloneAddsPolyLines) {
  for (const OverlayKind& kind : OverlayKinds()) {
    EXPECT_EQ(kind.add == nullptr, kind.type == VemOverlayPolyLine);
  }
}

TYPED_TEST(OverlayPath, AddsText) {
  TypeParam path;
  VemPoint point(1.5, 2.5);
  VemVar name("Mono");
  VemFont font(name, 12);
  path.AddText(point, "label", font);
  ASSERT_EQ(path.Length(), 1);
  EXPECT_EQ(path[0].OverlayType(), VemOverlayText);
  ExpectValues(ElementOf(path, 0), {2.5, 1.5, "label", 12L, 500L, 0, 0, 0, "Mono"});
}

TYPED_TEST(OverlayPath, AddsImageAndRegion) {
  TypeParam path;
  VemPoint point(1.5, 2.5);
  VemImage image = ImageOf("#.\n");
  path.AddImage(point, image);
  image.Mat().setTo(0);
  VemRegion region = RegionOf(7, 8, 1, 2, 3);
  path.AddRegion(region);
  region = RegionOf(9, 9, 4, 4, 4);
  ASSERT_EQ(path.Length(), 2);
  EXPECT_EQ(path[0].OverlayType(), VemOverlayImage);
  ExpectValues(ElementOf(path, 0), {1.5, 2.5});
  EXPECT_TRUE(path[0].GetImage(&point, &image));
  EXPECT_EQ(Picture(image.Mat()), "#.\n");
  EXPECT_EQ(path[1].OverlayType(), VemOverlayRegion);
  EXPECT_TRUE(path[1].GetRegion(&region));
  ExpectRegion(region, 7, 8, {{1, 2, 3}});
}

// The working overlay is never reset: what it held last goes along with every later element.
TYPED_TEST(OverlayPath, LaterElementsCarryTheLastPixelsAndRuns) {
  TypeParam path;
  VemPoint point(1, 2);
  path.AddPoint(point);
  VemImage image = ImageOf("#.\n");
  path.AddImage(point, image);
  VemRegion region = RegionOf(7, 8, 1, 2, 3);
  path.AddRegion(region);
  path.AddCircle(point, -1);
  image = ImageOf("##\n");
  path.AddImage(point, image);
  path.Clear();
  path.AddPoint(point);

  ASSERT_EQ(path.Length(), 1);
  EXPECT_EQ(path[0].OverlayType(), VemOverlayPoint);
  EXPECT_EQ(Picture(ElementOf(path, 0).Image), "##\n");
  EXPECT_EQ(ElementOf(path, 0).Width, 7);
  ExpectRuns(ElementOf(path, 0), 1, 2, 3);

  path.AddPoint(point);
  image = ImageOf("..\n");
  path[0].GenImage(point, image);
  EXPECT_EQ(Picture(ElementOf(path, 1).Image), "##\n");
}

TYPED_TEST(OverlayPath, ElementsOfEveryKindCarryPixelsAndRuns) {
  TypeParam path;
  VemPoint point(1, 2);
  VemImage image = ImageOf("#.\n");
  path.AddImage(point, image);
  VemRegion region = RegionOf(7, 8, 1, 2, 3);
  path.AddRegion(region);
  VemFont font;
  path.AddText(point, "label", font);
  for (const StoredCase& c : kStoredCases) {
    if (CanAdd<TypeParam>(KindOf(c.type))) AddTo(path, KindOf(c.type), c.arguments);
  }
  for (int i = 1; i < path.Length(); ++i) {
    SCOPED_TRACE(path[i].OverlayType());
    EXPECT_EQ(Picture(ElementOf(path, i).Image), "#.\n");
    ExpectRuns(ElementOf(path, i), 1, 2, 3);
  }
}

TYPED_TEST(OverlayPath, AddsACopyOfAnOverlayAsItIs) {
  TypeParam path;
  VemPoint point(1, 2);
  VemRegion region = RegionOf(9, 9, 4, 5, 6);
  path.AddRegion(region);
  VemOverlay overlay;
  Impl(overlay) = FullOverlay();
  path.AddOverlay(overlay);
  Impl(overlay).Image.setTo(0);
  Impl(overlay).Rows[0] = VemVar(9);
  overlay.Reset();
  overlay.SetPen(1, 1, 1, 1);
  path.AddPoint(point);
  ASSERT_EQ(path.Length(), 3);
  ExpectFullOverlay(ElementOf(path, 1));
  ExpectDefaultPenAndBrush(ElementOf(path, 2));
  ExpectRuns(ElementOf(path, 2), 4, 5, 6);
}

// Whatever the capacity, as the list may move while one of its own elements is added.
TYPED_TEST(OverlayPath, AddsItsOwnElements) {
  TypeParam path = NumberedPath<TypeParam>(1);
  for (int i = 1; i < 40; ++i) {
    path.AddOverlay(path[i - 1]);
    ASSERT_EQ(NumbersOf(path), std::vector<int>(static_cast<std::size_t>(i + 1), 0));
  }
}

TEST(VemOverlayPath, AddPathKeepsTheOrder) {
  VemOverlayPath path = NumberedPath<VemOverlayPath>(2);
  VemOverlayPath other = NumberedPath<VemOverlayPath>(3);
  VemOverlayPath empty;
  path.AddPath(other);
  path.AddPath(empty);
  EXPECT_EQ(NumbersOf(path), (std::vector<int>{0, 1, 0, 1, 2}));
  EXPECT_EQ(NumbersOf(other), (std::vector<int>{0, 1, 2}));
  other[0].Reset();
  EXPECT_EQ(path[2].OverlayType(), VemOverlayPoint);
  path.AddPath(path);
  EXPECT_EQ(NumbersOf(path), (std::vector<int>{0, 1, 0, 1, 2, 0, 1, 0, 1, 2}));
  empty.AddPath(empty);
  EXPECT_EQ(empty.Length(), 0);
}

TEST(IVemOverlayPath, AddPathTakesAHandle) {
  IVemOverlayPath path = NumberedPath<IVemOverlayPath>(1);
  VemOverlayPath other = NumberedPath<VemOverlayPath>(3);
  path.AddPath(other);
  EXPECT_EQ(NumbersOf(path), (std::vector<int>{0, 0, 1, 2}));
}

// --- Changing ---

TYPED_TEST(OverlayPath, InsertsAtEveryPlace) {
  for (int position = 0; position <= 3; ++position) {
    SCOPED_TRACE(position);
    TypeParam path = NumberedPath<TypeParam>(3);
    path.Insert(position, Numbered(9));
    std::vector<int> expected = {0, 1, 2};
    expected.insert(expected.begin() + position, 9);
    EXPECT_EQ(NumbersOf(path), expected);
  }
  TypeParam empty;
  empty.Insert(0, Numbered(9));
  EXPECT_EQ(NumbersOf(empty), std::vector<int>{9});
}

TYPED_TEST(OverlayPath, RemovesAtEveryPlace) {
  for (int position = 0; position < 3; ++position) {
    SCOPED_TRACE(position);
    TypeParam path = NumberedPath<TypeParam>(3);
    path.Remove(position);
    std::vector<int> expected = {0, 1, 2};
    expected.erase(expected.begin() + position);
    EXPECT_EQ(NumbersOf(path), expected);
  }
}

TYPED_TEST(OverlayPath, ReplacesAtEveryPlace) {
  for (int position = 0; position < 3; ++position) {
    SCOPED_TRACE(position);
    TypeParam path = NumberedPath<TypeParam>(3);
    path.Replace(position, Numbered(9));
    std::vector<int> expected = {0, 1, 2};
    expected[static_cast<std::size_t>(position)] = 9;
    EXPECT_EQ(NumbersOf(path), expected);
  }
}

TYPED_TEST(OverlayPath, InsertsAndReplacesByDeepCopies) {
  TypeParam path = NumberedPath<TypeParam>(2);
  VemOverlay overlay;
  Impl(overlay) = FullOverlay();
  path.Insert(1, overlay);
  path.Replace(0, overlay);
  Impl(overlay).Image.setTo(0);
  overlay.Reset();
  ExpectFullOverlay(ElementOf(path, 0));
  ExpectFullOverlay(ElementOf(path, 1));
  EXPECT_NE(ElementOf(path, 0).Image.data, ElementOf(path, 1).Image.data);
}

TYPED_TEST(OverlayPath, InsertsAndReplacesWithItsOwnElements) {
  TypeParam path = NumberedPath<TypeParam>(3);
  path.Insert(0, path[2]);
  path.Replace(3, path[2]);
  path.Replace(1, path[1]);
  EXPECT_EQ(NumbersOf(path), (std::vector<int>{2, 0, 1, 1}));
}

TYPED_TEST(OverlayPath, WrongPositionsChangeNothing) {
  TypeParam path = NumberedPath<TypeParam>(2);
  for (const int position : {-1, 3, 1000000000, -2147483647 - 1}) {
    path.Insert(position, Numbered(9));
    path.Remove(position);
    path.Replace(position, Numbered(9));
  }
  path.Remove(2);
  path.Replace(2, Numbered(9));
  EXPECT_EQ(NumbersOf(path), (std::vector<int>{0, 1}));
  TypeParam empty;
  empty.Remove(0);
  EXPECT_EQ(empty.Length(), 0);
}

TYPED_TEST(OverlayPath, ClearLeavesAUsablePath) {
  TypeParam path = NumberedPath<TypeParam>(5);
  path.Clear();
  path.Clear();
  EXPECT_EQ(path.Length(), 0);
  VemPoint point(7, 0);
  path.AddPoint(point);
  EXPECT_EQ(NumbersOf(path), std::vector<int>{7});
}

TEST(IVemOverlayPath, ClearReleasesTheStorage) {
  IVemOverlayPath path = NumberedPath<IVemOverlayPath>(5);
  path.Clear();
  EXPECT_EQ(path.Overlays.capacity(), 0u);
}

TYPED_TEST(OverlayPath, ReserveLeavesTheElements) {
  TypeParam path = NumberedPath<TypeParam>(3);
  path.Reserve(100);
  path.Reserve(2);
  path.Reserve(0);
  EXPECT_EQ(NumbersOf(path), (std::vector<int>{0, 1, 2}));
}

TEST(IVemOverlayPath, ReserveMakesRoom) {
  IVemOverlayPath path = NumberedPath<IVemOverlayPath>(3);
  path.Reserve(100);
  EXPECT_GE(path.Overlays.capacity(), 100u);
  path.Reserve(2);
  EXPECT_GE(path.Overlays.capacity(), 100u);
}

TEST(IVemOverlayPath, RoomDoublesAsOverlaysAreAdded) {
  IVemOverlayPath path;
  VemPoint point(1, 2);
  int moves = 0;
  for (int i = 0; i < 1000; ++i) {
    const std::size_t room = path.Overlays.capacity();
    path.AddPoint(point);
    moves += path.Overlays.capacity() != room ? 1 : 0;
  }
  EXPECT_LE(moves, 12);
}

TYPED_TEST(OverlayPath, NegativeReserveThrows) {
  TypeParam path = NumberedPath<TypeParam>(2);
  for (const int count : {-1, -2147483647 - 1}) {
    try {
      path.Reserve(count);
      ADD_FAILURE() << "nothing thrown for " << count;
    } catch (const std::length_error& error) {
      EXPECT_STREQ(error.what(), "vector::reserve");
    }
  }
  EXPECT_EQ(NumbersOf(path), (std::vector<int>{0, 1}));
}

// --- Access ---

TYPED_TEST(OverlayPath, ElementsAreChangedInPlace) {
  TypeParam path = NumberedPath<TypeParam>(2);
  VemPoint point(8, 0);
  path[1].GenPoint(point);
  EXPECT_EQ(NumbersOf(path), (std::vector<int>{0, 8}));
}

TYPED_TEST(OverlayPath, ConstAccessGivesACopy) {
  TypeParam path;
  VemOverlay overlay;
  Impl(overlay) = FullOverlay();
  path.AddOverlay(overlay);
  const TypeParam& same = path;
  static_assert(std::is_same<decltype(same[0]), VemOverlay>::value, "by value");
  VemOverlay copy = same[0];
  Impl(copy).Image.setTo(0);
  copy.Reset();
  ExpectFullOverlay(ElementOf(path, 0));
}

TEST(IVemOverlayPath, ConstAccessTestsThePosition) {
  const IVemOverlayPath path = NumberedPath<IVemOverlayPath>(2);
  const std::pair<int, std::string> cases[] = {
      {2, "2"}, {3, "3"}, {-1, "18446744073709551615"}, {-2147483647 - 1, "18446744071562067968"}};
  for (const auto& [position, text] : cases) {
    SCOPED_TRACE(position);
    try {
      const VemOverlay copy = path[position];
      ADD_FAILURE() << "nothing thrown";
    } catch (const std::out_of_range& error) {
      EXPECT_EQ(error.what(),
                "vector::_M_range_check: __n (which is " + text + ") >= this->size() (which is 2)");
    }
  }
}

// The sanitizers catch the signal themselves.
void WithPlainSignals(void (*action)()) {
  std::signal(SIGSEGV, SIG_DFL);
  action();
}

TEST(VemOverlayPath, AccessAtAWrongPositionFaults) {
  const auto constAccess = [] {
    const VemOverlayPath path = NumberedPath<VemOverlayPath>(2);
    const VemOverlay copy = path[2];
  };
  const auto writing = [] {
    VemOverlayPath path = NumberedPath<VemOverlayPath>(2);
    path[-1].Reset();
  };
  EXPECT_EXIT(WithPlainSignals(constAccess), testing::KilledBySignal(SIGSEGV), "");
  EXPECT_EXIT(WithPlainSignals(writing), testing::KilledBySignal(SIGSEGV), "");
}

// --- Copies ---

TYPED_TEST(OverlayPath, CopiesShareNothing) {
  TypeParam source;
  VemOverlay overlay;
  Impl(overlay) = FullOverlay();
  source.AddOverlay(overlay);
  TypeParam copy(source);
  TypeParam assigned = NumberedPath<TypeParam>(3);
  TypeParam returned = assigned = source;
  for (TypeParam* path : {&copy, &assigned, &returned}) ASSERT_EQ(path->Length(), 1);
  ElementOf(source, 0).Image.setTo(0);
  source[0].Reset();
  ExpectFullOverlay(ElementOf(copy, 0));
  returned[0].Reset();
  ExpectFullOverlay(ElementOf(assigned, 0));
  source.Clear();
  EXPECT_EQ(copy.Length(), 1);
}

TYPED_TEST(OverlayPath, AssignmentReplacesTheList) {
  for (int from = 0; from < 4; ++from) {
    for (int to = 0; to < 4; ++to) {
      SCOPED_TRACE(testing::Message() << from << " over " << to);
      TypeParam target = NumberedPath<TypeParam>(to);
      TypeParam source = NumberedPath<TypeParam>(from);
      target = source;
      EXPECT_EQ(NumbersOf(target), NumbersOf(source));
      EXPECT_EQ(source.Length(), from);
    }
  }
}

TYPED_TEST(OverlayPath, GivesAllItsBlocksBack) {
  VemOverlay overlay = ImageOverlay();
  const auto use = [&] {
    TypeParam path;
    path.AddOverlay(overlay);
    const TypeParam copy(path);
    TypeParam assigned;
    assigned = copy;
    EXPECT_EQ(assigned.Length(), 1);
  };
  use();
  const HeapCounter heap;
  use();
  EXPECT_EQ(heap.Kept(), 0);
}

TYPED_TEST(OverlayPath, AssignmentToItselfChangesNothing) {
  TypeParam path = NumberedPath<TypeParam>(3);
  const TypeParam& same = path;
  path = same;
  EXPECT_EQ(NumbersOf(path), (std::vector<int>{0, 1, 2}));
}

TEST(IVemOverlayPath, CopiesLeaveTheWorkingOverlay) {
  IVemOverlayPath source;
  VemPoint point(1, 2);
  VemImage image = ImageOf("#.\n");
  source.AddImage(point, image);
  IVemOverlayPath copy(source);
  IVemOverlayPath assigned;
  assigned = source;
  for (IVemOverlayPath* path : {&copy, &assigned}) {
    EXPECT_EQ(path->Scratch.OverlayType(), VemOverlayNone);
    path->AddPoint(point);
    EXPECT_TRUE(ElementOf(*path, 1).Image.empty());
    EXPECT_EQ(Picture(ElementOf(*path, 0).Image), "#.\n");
  }
}

// --- Cost ---

TYPED_TEST(OverlayPath, PixelsAreCopiedOnceOnTheWayIn) {
  TypeParam path;
  VemOverlay overlay = ImageOverlay();
  VemOverlay plain = Numbered(1);
  PixelCounter counter;
  for (int i = 0; i < 20; ++i) {
    path.AddOverlay(overlay);
    EXPECT_EQ(counter.Take(), 1);
    path.AddOverlay(plain);
    EXPECT_EQ(counter.Take(), 0);
  }
  path.Insert(0, overlay);
  EXPECT_EQ(counter.Take(), 1);
  path.Replace(1, overlay);
  EXPECT_EQ(counter.Take(), 1);
  path.Reserve(1000);
  path.Remove(0);
  path.Insert(0, plain);
  path.Replace(0, plain);
  EXPECT_EQ(counter.Take(), 0);
  const TypeParam copy(path);
  EXPECT_EQ(counter.Take(), 20);
}

TYPED_TEST(OverlayPath, ElementsBehindAnImageCopyNoPixels) {
  TypeParam path;
  VemPoint point(1, 2);
  VemImage image = ImageOf("#.\n");
  PixelCounter counter;
  path.AddImage(point, image);
  EXPECT_EQ(counter.Take(), 1);
  for (int i = 0; i < 20; ++i) path.AddPoint(point);
  EXPECT_EQ(counter.Take(), 0);

  image.Mat().setTo(0);
  VemImage read;
  path[0].GetImage(&point, &read);
  read.Mat().setTo(0);
  path[1].GenImage(point, image);
  VemOverlay copy(path[0]);
  Impl(copy).Image.setTo(0);
  for (const int position : {0, 2, 20}) {
    EXPECT_EQ(Picture(ElementOf(path, position).Image), "#.\n") << position;
  }
}

TYPED_TEST(OverlayPath, AssignmentCopiesPixelsForTargetAndResult) {
  TypeParam path;
  VemOverlay overlay = ImageOverlay();
  path.AddOverlay(overlay);
  TypeParam target;
  PixelCounter counter;
  target = path;
  EXPECT_EQ(counter.Take(), 2);
}

}  // namespace
