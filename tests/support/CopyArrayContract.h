#ifndef TESTS_SUPPORT_COPY_ARRAY_CONTRACT_H_
#define TESTS_SUPPORT_COPY_ARRAY_CONTRACT_H_

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <random>
#include <utility>
#include <vector>

/// What the arrays have in common whose elements come out as copies only. A test file tells about
/// its array in a `Kind` and instantiates:
///
///     using Array, Element;
///     struct Value;                            // the whole contents of an element, with == and
///                                              // PrintTo
///     static Value Sample(int i);              // a value for each i from 0 to 9, all different
///     static Value Random(std::mt19937&);
///     static Element Make(const Value&);
///     static Value Read(Element&);
///     static Value Stored(const Value&);       // what operator[] gives of it
///     static Value Selected(const Value& old, const Value& element);  // what Select makes of old
///     static void Disturb(Element&);           // changes it in place, through all it may share
///     static void Replace(Array&, int, Element&);
///     static constexpr bool kSelfAssignmentEmpties, kTestsPositions;
///
/// Without kTestsPositions, Insert and Replace must be given good positions, and Insert takes the
/// end for one.
template <typename Kind>
class CopyArrayContract : public testing::Test {
 public:
  using Array = typename Kind::Array;
  using Element = typename Kind::Element;
  using Value = typename Kind::Value;
  using Values = std::vector<Value>;

  static Values Samples(int begin, int end) {
    Values values;
    for (int i = begin; i < end; ++i) values.push_back(Kind::Sample(i));
    return values;
  }

  static void AppendTo(Array& array, const Values& values) {
    for (const Value& value : values) {
      Element element = Kind::Make(value);
      array.Append(element);
    }
  }

  static Array ArrayOf(const Values& values) {
    Array array;
    AppendTo(array, values);
    return array;
  }

  static Values Contents(const Array& array) {
    Values values;
    for (int i = 0; i < array.Length(); ++i) {
      Element element = array[i];
      values.push_back(Kind::Read(element));
    }
    return values;
  }

  static Values Stored(Values values) {
    for (Value& value : values) value = Kind::Stored(value);
    return values;
  }

  static std::vector<int> BadIndices(int length) {
    return {-1, -2, length, length + 1, INT_MIN, INT_MAX};
  }

  static typename Values::iterator At(Values& values, int index) { return values.begin() + index; }
};

/// An array beside a plain list that everything is done to as well.
template <typename Kind>
class ArrayAndModel {
  using Contract = CopyArrayContract<Kind>;
  using Array = typename Contract::Array;
  using Element = typename Contract::Element;
  using Value = typename Contract::Value;
  using Values = typename Contract::Values;

 public:
  explicit ArrayAndModel(unsigned seed) : random_(seed) {}

  void Step() {
    constexpr int kLongest = 12;
    if (array_.Length() > kLongest) return Clear();
    switch (Below(13)) {
      case 0:
      case 1:
        return Append();
      case 2:
        return AppendArray();
      case 3:
        return AppendItself();
      case 4:
      case 5:
        return Insert();
      case 6:
      case 7:
        return Remove();
      case 8:
        return Replace();
      case 9:
        return Swap();
      case 10:
        return Select();
      case 11:
        return Copy();
      default:
        return Below(4) == 0 ? AssignItself() : ReadAnywhere();
    }
  }

  void Compare() {
    ASSERT_EQ(array_.Length(), static_cast<int>(model_.size()));
    ASSERT_EQ(Contract::Contents(array_), model_);
  }

 private:
  int Below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }
  int Length() { return static_cast<int>(model_.size()); }
  int AnyIndex() { return Below(Length() + 4) - 2; }
  bool InRange(int index) { return index >= 0 && index < Length(); }

  void Clear() {
    array_.Clear();
    model_.clear();
  }

  void Append() {
    const Value value = Kind::Random(random_);
    Element element = Kind::Make(value);
    array_.Append(element);
    model_.push_back(Kind::Stored(value));
  }

  void AppendArray() {
    Values values;
    for (int i = Below(4); i > 0; --i) values.push_back(Kind::Random(random_));
    Array added = Contract::ArrayOf(values);
    array_.Append(added);
    for (const Value& value : values) model_.push_back(Kind::Stored(value));
  }

  void AppendItself() {
    if (Length() > 6) return;
    array_.Append(array_);
    const Values before = model_;
    model_.insert(model_.end(), before.begin(), before.end());
  }

  void Insert() {
    const int index = Kind::kTestsPositions ? AnyIndex() : Below(Length() + 1);
    const Value value = Kind::Random(random_);
    Element element = Kind::Make(value);
    array_.Insert(index, element);
    if (InRange(index) || !Kind::kTestsPositions) {
      model_.insert(Contract::At(model_, index), Kind::Stored(value));
    }
  }

  void Remove() {
    const int index = AnyIndex();
    array_.Remove(index);
    if (InRange(index)) model_.erase(Contract::At(model_, index));
  }

  void Replace() {
    const int index = AnyIndex();
    if (!InRange(index) && !Kind::kTestsPositions) return;
    const Value value = Kind::Random(random_);
    Element element = Kind::Make(value);
    Kind::Replace(array_, index, element);
    if (InRange(index)) *Contract::At(model_, index) = Kind::Stored(value);
  }

  void Swap() {
    const int i = AnyIndex();
    const int j = AnyIndex();
    array_.Swap(i, j);
    if (InRange(i) && InRange(j)) std::iter_swap(Contract::At(model_, i), Contract::At(model_, j));
  }

  void Select() {
    const int index = AnyIndex();
    const Value old = Kind::Random(random_);
    Element out = Kind::Make(old);
    array_.Select(index, &out);
    const Value expected = InRange(index) ? Kind::Selected(old, *Contract::At(model_, index)) : old;
    ASSERT_EQ(Kind::Read(out), expected);
  }

  void Copy() {
    const Array copy(array_);
    ASSERT_EQ(Contract::Contents(copy), model_);
    Array other = Contract::ArrayOf({Kind::Random(random_)});
    other = copy;
    Clear();
    array_ = other;
    model_ = Contract::Contents(copy);
  }

  void AssignItself() {
    const Array& itself = array_;
    array_ = itself;
    if (Kind::kSelfAssignmentEmpties) model_.clear();
  }

  void ReadAnywhere() {
    const Array& array = array_;
    const int index = AnyIndex();
    Element element = array[index];
    Element none;
    const Value expected = InRange(index) ? *Contract::At(model_, index) : Kind::Read(none);
    ASSERT_EQ(Kind::Read(element), expected);
    Kind::Disturb(element);
  }

  std::mt19937 random_;
  Array array_;
  Values model_;
};

TYPED_TEST_SUITE_P(CopyArrayContract);

TYPED_TEST_P(CopyArrayContract, DefaultIsEmpty) {
  const typename TypeParam::Array array;
  EXPECT_EQ(array.Length(), 0);
}

TYPED_TEST_P(CopyArrayContract, EmptyArrayIgnoresIndices) {
  typename TypeParam::Array array;
  typename TypeParam::Element element = TypeParam::Make(TypeParam::Sample(0));
  for (const int index : TestFixture::BadIndices(0)) {
    if (TypeParam::kTestsPositions) array.Insert(index, element);
    if (TypeParam::kTestsPositions) array.Replace(index, element);
    array.Remove(index);
    array.Swap(index, index);
    array.Select(index, &element);
  }
  EXPECT_EQ(array.Length(), 0);
  EXPECT_EQ(TypeParam::Read(element), TypeParam::Sample(0));
}

TYPED_TEST_P(CopyArrayContract, AppendAddsAtTheEnd) {
  typename TypeParam::Array array;
  for (int length = 1; length <= 10; ++length) {
    typename TypeParam::Element element = TypeParam::Make(TypeParam::Sample(length - 1));
    array.Append(element);
    EXPECT_EQ(array.Length(), length);
    EXPECT_EQ(TypeParam::Read(element), TypeParam::Sample(length - 1));
    EXPECT_EQ(this->Contents(array), this->Stored(this->Samples(0, length)));
  }
}

TYPED_TEST_P(CopyArrayContract, AppendOfAnArrayAddsAllItsElements) {
  for (const int length : {0, 1, 4}) {
    for (const int added : {0, 1, 5}) {
      typename TypeParam::Array array = this->ArrayOf(this->Samples(0, length));
      typename TypeParam::Array source = this->ArrayOf(this->Samples(length, length + added));
      array.Append(source);
      EXPECT_EQ(array.Length(), length + added);
      EXPECT_EQ(this->Contents(array), this->Stored(this->Samples(0, length + added)));
      EXPECT_EQ(this->Contents(source), this->Stored(this->Samples(length, length + added)));
    }
  }
}

TYPED_TEST_P(CopyArrayContract, AppendOfAnArrayToItselfDoubles) {
  for (const int length : {0, 1, 2, 3, 8, 10}) {
    typename TypeParam::Array array = this->ArrayOf(this->Samples(0, length));
    array.Append(array);
    auto expected = this->Stored(this->Samples(0, length));
    const auto half = expected;
    expected.insert(expected.end(), half.begin(), half.end());
    EXPECT_EQ(this->Contents(array), expected);
  }
}

TYPED_TEST_P(CopyArrayContract, InsertPutsBeforeTheIndex) {
  typename TypeParam::Element element = TypeParam::Make(TypeParam::Sample(9));
  for (int index = 0; index < 4; ++index) {
    typename TypeParam::Array array = this->ArrayOf(this->Samples(0, 4));
    array.Insert(index, element);
    auto expected = this->Samples(0, 4);
    expected.insert(this->At(expected, index), TypeParam::Sample(9));
    EXPECT_EQ(this->Contents(array), this->Stored(expected));
    EXPECT_EQ(TypeParam::Read(element), TypeParam::Sample(9));
  }
}

TYPED_TEST_P(CopyArrayContract, InsertNeverAddsAtTheEndUnlessItTestsNothing) {
  typename TypeParam::Element element = TypeParam::Make(TypeParam::Sample(9));
  auto expected = this->Samples(0, 3);
  typename TypeParam::Array array = this->ArrayOf(expected);
  if (TypeParam::kTestsPositions) {
    for (const int index : this->BadIndices(3)) array.Insert(index, element);
  } else {
    array.Insert(3, element);
    expected.push_back(TypeParam::Sample(9));
  }
  EXPECT_EQ(this->Contents(array), this->Stored(expected));
}

TYPED_TEST_P(CopyArrayContract, RemoveTakesOneElementOut) {
  for (int index = 0; index < 4; ++index) {
    typename TypeParam::Array array = this->ArrayOf(this->Samples(0, 4));
    array.Remove(index);
    auto expected = this->Samples(0, 4);
    expected.erase(this->At(expected, index));
    EXPECT_EQ(array.Length(), 3);
    EXPECT_EQ(this->Contents(array), this->Stored(expected));
    for (const int bad : this->BadIndices(3)) array.Remove(bad);
    EXPECT_EQ(this->Contents(array), this->Stored(expected));
  }
}

TYPED_TEST_P(CopyArrayContract, ReplaceAssignsOneElement) {
  typename TypeParam::Element element = TypeParam::Make(TypeParam::Sample(9));
  for (int index = 0; index < 4; ++index) {
    typename TypeParam::Array array = this->ArrayOf(this->Samples(0, 4));
    TypeParam::Replace(array, index, element);
    auto expected = this->Samples(0, 4);
    *this->At(expected, index) = TypeParam::Sample(9);
    EXPECT_EQ(this->Contents(array), this->Stored(expected));
    if (!TypeParam::kTestsPositions) continue;
    for (const int bad : this->BadIndices(4)) array.Replace(bad, element);
    EXPECT_EQ(this->Contents(array), this->Stored(expected));
  }
}

TYPED_TEST_P(CopyArrayContract, SelectReadsOneElement) {
  typename TypeParam::Array array = this->ArrayOf(this->Samples(0, 4));
  for (int index = 0; index < 4; ++index) {
    typename TypeParam::Element out = TypeParam::Make(TypeParam::Sample(9));
    array.Select(index, &out);
    EXPECT_EQ(TypeParam::Read(out),
              TypeParam::Selected(TypeParam::Sample(9), TypeParam::Sample(index)));
  }
  for (const int bad : this->BadIndices(4)) {
    typename TypeParam::Element out = TypeParam::Make(TypeParam::Sample(9));
    array.Select(bad, &out);
    EXPECT_EQ(TypeParam::Read(out), TypeParam::Sample(9));
  }
  EXPECT_EQ(this->Contents(array), this->Stored(this->Samples(0, 4)));
}

TYPED_TEST_P(CopyArrayContract, SwapExchangesTwoElements) {
  for (int i = 0; i < 4; ++i) {
    for (int j = 0; j < 4; ++j) {
      typename TypeParam::Array array = this->ArrayOf(this->Samples(0, 4));
      array.Swap(i, j);
      auto expected = this->Samples(0, 4);
      std::iter_swap(this->At(expected, i), this->At(expected, j));
      EXPECT_EQ(this->Contents(array), this->Stored(expected));
    }
  }
}

TYPED_TEST_P(CopyArrayContract, SwapIgnoresAnyBadIndex) {
  typename TypeParam::Array array = this->ArrayOf(this->Samples(0, 4));
  for (const int bad : this->BadIndices(4)) {
    array.Swap(0, bad);
    array.Swap(bad, 3);
    array.Swap(bad, bad);
  }
  EXPECT_EQ(this->Contents(array), this->Stored(this->Samples(0, 4)));
}

TYPED_TEST_P(CopyArrayContract, ClearedArrayCanBeFilledAgain) {
  typename TypeParam::Array array = this->ArrayOf(this->Samples(0, 4));
  array.Clear();
  EXPECT_EQ(array.Length(), 0);
  array.Clear();
  EXPECT_EQ(array.Length(), 0);
  this->AppendTo(array, this->Samples(5, 6));
  EXPECT_EQ(array.Length(), 1);
  EXPECT_EQ(this->Contents(array), this->Stored(this->Samples(5, 6)));
}

TYPED_TEST_P(CopyArrayContract, ConstIndexGivesADefaultElementOutOfRange) {
  const typename TypeParam::Array empty;
  const typename TypeParam::Array array = this->ArrayOf(this->Samples(0, 3));
  typename TypeParam::Element none;
  for (const int bad : this->BadIndices(3)) {
    typename TypeParam::Element element = array[bad];
    EXPECT_EQ(TypeParam::Read(element), TypeParam::Read(none));
  }
  typename TypeParam::Element element = empty[0];
  EXPECT_EQ(TypeParam::Read(element), TypeParam::Read(none));
}

TYPED_TEST_P(CopyArrayContract, CopiesAreDeep) {
  typename TypeParam::Array source = this->ArrayOf(this->Samples(0, 4));
  typename TypeParam::Array copy(source);
  typename TypeParam::Array assigned = this->ArrayOf(this->Samples(6, 8));
  assigned = source;
  for (typename TypeParam::Array* target : {&copy, &assigned}) {
    EXPECT_EQ(this->Contents(*target), this->Stored(this->Samples(0, 4)));
    target->Remove(0);
    target->Swap(0, 2);
  }
  EXPECT_EQ(this->Contents(source), this->Stored(this->Samples(0, 4)));
  const auto changed = this->Contents(copy);
  source.Clear();
  EXPECT_EQ(this->Contents(copy), changed);
  EXPECT_EQ(this->Contents(assigned), changed);
}

TYPED_TEST_P(CopyArrayContract, AssignmentTakesEmptyArraysAndLongerOnes) {
  typename TypeParam::Array array = this->ArrayOf(this->Samples(0, 3));
  for (const int length : {0, 9, 1, 3}) {
    array = this->ArrayOf(this->Samples(0, length));
    EXPECT_EQ(this->Contents(array), this->Stored(this->Samples(0, length)));
  }
}

TYPED_TEST_P(CopyArrayContract, SelfAssignment) {
  for (const int length : {0, 1, 5}) {
    typename TypeParam::Array array = this->ArrayOf(this->Samples(0, length));
    const typename TypeParam::Array& itself = array;
    array = itself;
    const int left = TypeParam::kSelfAssignmentEmpties ? 0 : length;
    EXPECT_EQ(this->Contents(array), this->Stored(this->Samples(0, left)));
    this->AppendTo(array, this->Samples(left, 10));
    EXPECT_EQ(this->Contents(array), this->Stored(this->Samples(0, 10)));
  }
}

TYPED_TEST_P(CopyArrayContract, ElementsShareNothingWithTheCaller) {
  typename TypeParam::Array array = this->ArrayOf(this->Samples(0, 3));
  typename TypeParam::Element element = TypeParam::Make(TypeParam::Sample(5));
  array.Append(element);
  TypeParam::Disturb(element);
  element = TypeParam::Make(TypeParam::Sample(6));
  array.Insert(0, element);
  TypeParam::Disturb(element);
  element = TypeParam::Make(TypeParam::Sample(7));
  TypeParam::Replace(array, 1, element);
  TypeParam::Disturb(element);

  const auto expected =
      this->Stored({TypeParam::Sample(6), TypeParam::Sample(7), TypeParam::Sample(1),
                    TypeParam::Sample(2), TypeParam::Sample(5)});
  EXPECT_EQ(this->Contents(array), expected);
  for (int index = 0; index < 5; ++index) {
    typename TypeParam::Element selected;
    array.Select(index, &selected);
    TypeParam::Disturb(selected);
    typename TypeParam::Element read = static_cast<const typename TypeParam::Array&>(array)[index];
    TypeParam::Disturb(read);
  }
  EXPECT_EQ(this->Contents(array), expected);
}

TYPED_TEST_P(CopyArrayContract, RandomOperationsAreThoseOfAPlainList) {
  ArrayAndModel<TypeParam> pair(20260101);
  for (int i = 0; i < 12000; ++i) {
    SCOPED_TRACE(i);
    pair.Step();
    pair.Compare();
    if (this->HasFailure()) return;
  }
}

REGISTER_TYPED_TEST_SUITE_P(CopyArrayContract, DefaultIsEmpty, EmptyArrayIgnoresIndices,
                            AppendAddsAtTheEnd, AppendOfAnArrayAddsAllItsElements,
                            AppendOfAnArrayToItselfDoubles, InsertPutsBeforeTheIndex,
                            InsertNeverAddsAtTheEndUnlessItTestsNothing, RemoveTakesOneElementOut,
                            ReplaceAssignsOneElement, SelectReadsOneElement,
                            SwapExchangesTwoElements, SwapIgnoresAnyBadIndex,
                            ClearedArrayCanBeFilledAgain, ConstIndexGivesADefaultElementOutOfRange,
                            CopiesAreDeep, AssignmentTakesEmptyArraysAndLongerOnes, SelfAssignment,
                            ElementsShareNothingWithTheCaller,
                            RandomOperationsAreThoseOfAPlainList);

#endif  // TESTS_SUPPORT_COPY_ARRAY_CONTRACT_H_
