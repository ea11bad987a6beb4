#include "VemContourArray.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/OutlineReference.h"
#include "support/PrivateAccess.h"
#include "support/Support.h"

struct PrivateVemContourArray {
  using Type = std::vector<std::vector<cv::Point2d>>* VemContourArray::*;
  friend Type PrivateOf(PrivateVemContourArray);
};
template struct PrivateAccess<PrivateVemContourArray, &VemContourArray::store_>;

struct PrivateVemContourArrayElement {
  using Type = std::vector<cv::Point2d>* VemContour::*;
  friend Type PrivateOf(PrivateVemContourArrayElement);
};
template struct PrivateAccess<PrivateVemContourArrayElement, &VemContour::store_>;

namespace {

static_assert(sizeof(VemContourArray) == sizeof(void*), "a handle is one pointer");
static_assert(!std::is_polymorphic<VemContourArray>::value, "no virtual operations");
static_assert(
    std::is_same<decltype(std::declval<VemContourArray&>() = std::declval<VemContourArray&>()),
                 VemContourArray&>::value,
    "assignment returns a reference to the array");
static_assert(std::is_same<decltype(std::declval<VemContourArray&>()[0]), VemContour>::value,
              "no access to the element itself");

const Chain kA = {{1, 2}, {3.5, -4}};
const Chain kB = {{5, 6}, {7, 8}, {9, 0.25}};
const Chain kC = {{-1, -1}};
const Chain kX = {{10, 11}, {12, 13}, {14, 15}, {16, 17}};

std::vector<std::vector<cv::Point2d>>& StoreOf(VemContourArray& contours) {
  return *(contours.*PrivateOf(PrivateVemContourArray()));
}

std::vector<const cv::Point2d*> Addresses(VemContourArray& contours) {
  std::vector<const cv::Point2d*> addresses;
  for (const std::vector<cv::Point2d>& chain : StoreOf(contours)) addresses.push_back(chain.data());
  return addresses;
}

// What `change` makes of the contours A, B, C.
template <typename Change>
Chains AfterChange(Change change) {
  VemContourArray contours = ContoursOf({kA, kB, kC});
  VemContour x = ContourOf(kX);
  change(contours, x);
  EXPECT_EQ(PointsOf(x), kX);
  return PointsOf(contours);
}

TEST(VemContourArray, DefaultIsEmpty) {
  const VemContourArray contours;
  EXPECT_EQ(contours.Length(), 0);
  EXPECT_EQ(PointsOf(contours), Chains());
}

TEST(VemContourArray, EmptyArrayIgnoresEveryIndex) {
  VemContourArray contours;
  VemContour x = ContourOf(kX);
  contours.Insert(0, x);
  contours.Remove(0);
  contours.Replace(0, x);
  contours.Swap(0, 0);
  contours.Select(0, &x);
  EXPECT_EQ(contours.Length(), 0);
  EXPECT_EQ(PointsOf(x), kX);
  contours.Clear();
  EXPECT_EQ(contours.Length(), 0);
}

TEST(VemContourArray, AppendAddsACopyAtTheEnd) {
  VemContourArray contours;
  VemContour a = ContourOf(kA);
  VemContour none;
  contours.Append(a);
  EXPECT_EQ(contours.Length(), 1);
  contours.Append(none);
  a = ContourOf(kB);
  contours.Append(a);
  EXPECT_EQ(contours.Length(), 3);
  EXPECT_EQ(PointsOf(contours), (Chains{kA, {}, kB}));
}

TEST(VemContourArray, AppendOfAnArrayAddsItsElementsInOrder) {
  VemContourArray contours = ContoursOf({kA});
  VemContourArray others = ContoursOf({kB, {}, kC});
  contours.Append(others);
  EXPECT_EQ(PointsOf(contours), (Chains{kA, kB, {}, kC}));
  EXPECT_EQ(PointsOf(others), (Chains{kB, {}, kC}));
  others.Clear();
  EXPECT_EQ(PointsOf(contours), (Chains{kA, kB, {}, kC}));
  contours.Append(others);
  EXPECT_EQ(PointsOf(contours), (Chains{kA, kB, {}, kC}));
}

TEST(VemContourArray, AppendedToItselfItDoubles) {
  VemContourArray contours = ContoursOf({kA, kB, kC});
  contours.Append(contours);
  EXPECT_EQ(PointsOf(contours), (Chains{kA, kB, kC, kA, kB, kC}));
  contours.Append(contours);
  EXPECT_EQ(contours.Length(), 12);
  VemContourArray none;
  none.Append(none);
  EXPECT_EQ(none.Length(), 0);
}

TEST(VemContourArray, InsertGoesBeforeAnElementInRange) {
  const struct {
    int index;
    Chains expected;
  } cases[] = {
      {0, {kX, kA, kB, kC}},   {1, {kA, kX, kB, kC}},   {2, {kA, kB, kX, kC}},
      {3, {kA, kB, kC}},       {-1, {kA, kB, kC}},      {4, {kA, kB, kC}},
      {INT_MIN, {kA, kB, kC}}, {INT_MAX, {kA, kB, kC}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.index);
    EXPECT_EQ(
        AfterChange([&](VemContourArray& contours, VemContour& x) { contours.Insert(c.index, x); }),
        c.expected);
  }
}

TEST(VemContourArray, RemoveTakesAnElementInRange) {
  const struct {
    int index;
    Chains expected;
  } cases[] = {
      {0, {kB, kC}},      {1, {kA, kC}},     {2, {kA, kB}},           {3, {kA, kB, kC}},
      {-1, {kA, kB, kC}}, {4, {kA, kB, kC}}, {INT_MIN, {kA, kB, kC}}, {INT_MAX, {kA, kB, kC}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.index);
    EXPECT_EQ(
        AfterChange([&](VemContourArray& contours, VemContour&) { contours.Remove(c.index); }),
        c.expected);
  }
}

TEST(VemContourArray, ReplaceAssignsOverAnElementInRange) {
  const struct {
    int index;
    Chains expected;
  } cases[] = {
      {0, {kX, kB, kC}},  {1, {kA, kX, kC}}, {2, {kA, kB, kX}},       {3, {kA, kB, kC}},
      {-1, {kA, kB, kC}}, {4, {kA, kB, kC}}, {INT_MIN, {kA, kB, kC}}, {INT_MAX, {kA, kB, kC}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.index);
    EXPECT_EQ(AfterChange(
                  [&](VemContourArray& contours, VemContour& x) { contours.Replace(c.index, x); }),
              c.expected);
  }
}

TEST(VemContourArray, SwapExchangesTwoElementsInRange) {
  const struct {
    int i;
    int j;
    Chains expected;
  } cases[] = {
      {0, 2, {kC, kB, kA}},  {2, 0, {kC, kB, kA}},       {0, 1, {kB, kA, kC}},
      {1, 1, {kA, kB, kC}},  {0, -1, {kA, kB, kC}},      {-1, 0, {kA, kB, kC}},
      {0, 3, {kA, kB, kC}},  {3, 0, {kA, kB, kC}},       {-1, -1, {kA, kB, kC}},
      {-1, 3, {kA, kB, kC}}, {INT_MIN, 1, {kA, kB, kC}}, {1, INT_MAX, {kA, kB, kC}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.i << ", " << c.j);
    EXPECT_EQ(AfterChange([&](VemContourArray& contours, VemContour&) { contours.Swap(c.i, c.j); }),
              c.expected);
  }
}

TEST(VemContourArray, SelectAssignsAnElementInRange) {
  const VemContourArray contours = ContoursOf({kA, {}, kC});
  VemContour out = ContourOf(kX);
  for (int index : {3, -1, 4, INT_MIN, INT_MAX}) {
    contours.Select(index, &out);
    EXPECT_EQ(PointsOf(out), kX) << index;
  }
  contours.Select(0, &out);
  EXPECT_EQ(PointsOf(out), kA);
  contours.Select(2, &out);
  EXPECT_EQ(PointsOf(out), kC);
  contours.Select(1, &out);
  EXPECT_EQ(out.Length(), 0);
}

TEST(VemContourArray, SelectAssignsToTheStoreThatThereIs) {
  const VemContourArray contours = ContoursOf({kA, {}});
  VemContour out = ContourOf(kX);
  const std::vector<cv::Point2d>* const store = out.*PrivateOf(PrivateVemContourArrayElement());
  const cv::Point2d* const points = store->data();
  for (const int index : {0, 1}) {
    contours.Select(index, &out);
    EXPECT_EQ(out.*PrivateOf(PrivateVemContourArrayElement()), store) << index;
    EXPECT_EQ(store->data(), points) << index;
  }
}

TEST(VemContourArray, IndexGivesACopy) {
  const VemContourArray contours = ContoursOf({kA, kB});
  VemContour element = contours[1];
  EXPECT_EQ(PointsOf(element), kB);
  VemPointArray none;
  element.FromPointArray(none);
  EXPECT_EQ(PointsOf(contours), (Chains{kA, kB}));
}

TEST(VemContourArray, IndexOutOfRangeGivesAContourThatCanBeUsed) {
  const VemContourArray contours = ContoursOf({kA, kB});
  for (int index : {2, -1, INT_MIN, INT_MAX}) {
    VemContour element = contours[index];
    EXPECT_EQ(element.Length(), 0) << index;
    element = contours[0];
    EXPECT_EQ(PointsOf(element), kA);
  }
}

TEST(VemContourArray, ClearGivesTheStorageBackAndKeepsTheArrayUsable) {
  VemContourArray contours = ContoursOf({kA, kB, kC});
  contours.Clear();
  EXPECT_EQ(contours.Length(), 0);
  EXPECT_EQ(StoreOf(contours).capacity(), 0U);
  VemContour x = ContourOf(kX);
  contours.Append(x);
  EXPECT_EQ(contours.Length(), 1);
  EXPECT_EQ(PointsOf(contours), Chains{kX});
}

TEST(VemContourArray, ElementsShareNoPointsWithContours) {
  VemContourArray contours = ContoursOf({kA, kA, kA});
  VemContour x = ContourOf(kX);
  contours.Insert(0, x);
  contours.Replace(1, x);
  contours.Append(x);
  VemPointArray none;
  x.FromPointArray(none);
  EXPECT_EQ(PointsOf(contours), (Chains{kX, kX, kA, kA, kX}));
  contours.Select(0, &x);
  x.FromPointArray(none);
  EXPECT_EQ(PointsOf(contours), (Chains{kX, kX, kA, kA, kX}));
  contours.Select(0, &x);
  contours.Clear();
  EXPECT_EQ(PointsOf(x), kX);
}

TEST(VemContourArray, CopiesAreDeep) {
  VemContourArray source = ContoursOf({kA, kB});
  VemContourArray copy(source);
  VemContourArray assigned = ContoursOf({kC, kC, kC});
  EXPECT_EQ(&(assigned = source), &assigned);
  EXPECT_NE(&StoreOf(copy), &StoreOf(source));
  EXPECT_NE(&StoreOf(assigned), &StoreOf(source));
  VemContour x = ContourOf(kX);
  source.Replace(0, x);
  source.Remove(1);
  EXPECT_EQ(PointsOf(copy), (Chains{kA, kB}));
  EXPECT_EQ(PointsOf(assigned), (Chains{kA, kB}));
  copy.Clear();
  EXPECT_EQ(PointsOf(source), Chains{kX});
  source = copy;
  EXPECT_EQ(source.Length(), 0);
}

TEST(VemContourArray, CopyOutlivesItsSource) {
  VemContourArray assigned;
  VemContourArray* source = new VemContourArray(ContoursOf({kA, kB}));
  const VemContourArray copy(*source);
  assigned = *source;
  delete source;
  EXPECT_EQ(PointsOf(copy), (Chains{kA, kB}));
  EXPECT_EQ(PointsOf(assigned), (Chains{kA, kB}));
}

TEST(VemContourArray, SelfAssignmentChangesNothing) {
  VemContourArray contours = ContoursOf({kA, kB});
  const VemContourArray& self = contours;
  EXPECT_EQ(&(contours = self), &contours);
  EXPECT_EQ(PointsOf(contours), (Chains{kA, kB}));
}

TEST(VemContourArray, RemoveMovesWithoutCopyingPoints) {
  VemContourArray contours = ContoursOf({kA, kB, kC, kX});
  std::vector<const cv::Point2d*> expected = Addresses(contours);
  expected.erase(expected.begin() + 1);
  contours.Remove(1);
  EXPECT_EQ(Addresses(contours), expected);
}

TEST(VemContourArray, DestructorAllowsAMissingStore) {
  const auto store = PrivateOf(PrivateVemContourArray());
  VemContourArray contours;
  delete (contours.*store);
  contours.*store = nullptr;
  EXPECT_EQ(contours.*store, nullptr);
}

// --- Against a plain list, at random ----------------------------------------------------------

class Pair {
 public:
  explicit Pair(unsigned seed) : random_(seed) {}

  void Step() {
    const int operation = Int(0, 99);
    if (operation < 40) return One(operation % 5);
    if (operation < 70) return Indexed(operation % 3);
    if (operation < 97) return SwapOrSelect(operation % 2 == 0);
    Whole(operation - 97);
  }

  const VemContourArray& Array() const { return array_; }
  const Chains& Model() const { return model_; }

 private:
  using Position = Chains::difference_type;

  int Int(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
  int Length() const { return static_cast<int>(model_.size()); }
  int Index() { return Int(0, 7) == 0 ? Int(-3, Length() + 3) : Int(0, Length()); }
  bool InRange(int index) const { return index >= 0 && index < Length(); }
  Chain& At(int index) { return model_[static_cast<std::size_t>(index)]; }

  Chain NewChain() {
    Chain chain(static_cast<std::size_t>(Int(0, 5)));
    for (cv::Point2d& p : chain) p = cv::Point2d(Int(-99, 99) / 8.0, Int(-99, 99) / 8.0);
    return chain;
  }

  void One(int weight) {
    if (weight == 0 && Length() > 40) {
      array_.Clear();
      return model_.clear();
    }
    const Chain chain = NewChain();
    VemContour contour = ContourOf(chain);
    array_.Append(contour);
    model_.push_back(chain);
  }

  void Indexed(int kind) {
    const int index = Index();
    const Chain chain = NewChain();
    VemContour contour = ContourOf(chain);
    if (kind == 0) array_.Insert(index, contour);
    if (kind == 1) array_.Remove(index);
    if (kind == 2) array_.Replace(index, contour);
    if (!InRange(index)) return;
    const Position position = index;
    if (kind == 0) model_.insert(model_.begin() + position, chain);
    if (kind == 1) model_.erase(model_.begin() + position);
    if (kind == 2) At(index) = chain;
  }

  void SwapOrSelect(bool swap) {
    const int i = Index();
    const int j = Index();
    if (swap) {
      array_.Swap(i, j);
      if (InRange(i) && InRange(j)) std::swap(At(i), At(j));
      return;
    }
    VemContour out = ContourOf(kX);
    array_.Select(i, &out);
    EXPECT_EQ(PointsOf(out), InRange(i) ? At(i) : kX);
    EXPECT_EQ(PointsOf(array_[j]), InRange(j) ? At(j) : Chain());
  }

  void Whole(int kind) {
    if (kind == 0) {
      const VemContourArray copy(array_);
      array_ = copy;
    } else if (kind == 1 && Length() <= 20) {
      array_.Append(array_);
      const Chains twice = model_;
      model_.insert(model_.end(), twice.begin(), twice.end());
    } else {
      const Chains chains = {NewChain(), NewChain()};
      VemContourArray others = ContoursOf(chains);
      array_.Append(others);
      model_.insert(model_.end(), chains.begin(), chains.end());
    }
  }

  std::mt19937 random_;
  VemContourArray array_;
  Chains model_;
};

TEST(VemContourArray, RandomOperationsFollowAPlainList) {
  Pair pair(5);
  std::size_t longest = 0;
  for (int i = 0; i < 20000; ++i) {
    pair.Step();
    longest = std::max(longest, pair.Model().size());
    ASSERT_EQ(pair.Array().Length(), static_cast<int>(pair.Model().size())) << "step " << i;
    if (i % 4 != 0) continue;
    ASSERT_EQ(PointsOf(pair.Array()), pair.Model()) << "step " << i;
  }
  EXPECT_GT(longest, 40U);
}

}  // namespace
