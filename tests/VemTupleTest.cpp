#include "VemTuple.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <climits>
#include <csignal>
#include <cstddef>
#include <cstring>
#include <new>
#include <random>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "support/PrivateAccess.h"
#include "support/Support.h"

struct PrivateVemVarArrayStore {
  using Type = std::vector<VemVar>* VemVarArray::*;
  friend Type PrivateOf(PrivateVemVarArrayStore);
};

template struct PrivateAccess<PrivateVemVarArrayStore, &VemVarArray::store_>;

namespace {

static_assert(sizeof(VemVarArray) == sizeof(void*), "a handle is one pointer");
static_assert(!std::is_polymorphic_v<VemVarArray>, "a plain class");

static_assert(std::is_convertible_v<long, VemVarArray> && std::is_convertible_v<int, VemVarArray> &&
                  std::is_convertible_v<double, VemVarArray> &&
                  std::is_convertible_v<float, VemVarArray> &&
                  std::is_convertible_v<const char*, VemVarArray> &&
                  std::is_convertible_v<const VemVar&, VemVarArray>,
              "values become arrays of one implicitly");

using Array = VemVarArray;
static_assert(std::is_same_v<decltype(&Array::operator=), Array& (Array::*)(const Array&)>);
static_assert(std::is_same_v<decltype(&Array::Copy), void (Array::*)(const Array&)>);
static_assert(std::is_same_v<decltype(&Array::Length), int (Array::*)() const>);
static_assert(std::is_same_v<decltype(&Array::Append), void (Array::*)(const VemVar&)>);
static_assert(std::is_same_v<decltype(&Array::Insert), void (Array::*)(int, const VemVar&)>);
static_assert(std::is_same_v<decltype(&Array::Remove), void (Array::*)(int)>);
static_assert(std::is_same_v<decltype(&Array::Replace), void (Array::*)(int, const VemVar&)>);
static_assert(std::is_same_v<decltype(&Array::Select), void (Array::*)(int, VemVar*) const>);
static_assert(std::is_same_v<decltype(&Array::Swap), void (Array::*)(int, int)>);
static_assert(std::is_same_v<decltype(&Array::IndexOf), int (Array::*)(const VemVar&, int)>);
static_assert(std::is_same_v<decltype(&Array::Invert), void (Array::*)()>);
static_assert(std::is_same_v<decltype(&Array::Clear), void (Array::*)()>);
static_assert(std::is_same_v<decltype(&Array::Reset), void (Array::*)()>);
static_assert(std::is_same_v<decltype(&Array::operator+), Array (Array::*)(const Array&) const>);
static_assert(std::is_same_v<decltype(&Array::operator==), bool (Array::*)(const Array&) const>);
static_assert(std::is_same_v<decltype(&Array::operator!=), bool (Array::*)(const Array&) const>);
static_assert(std::is_same_v<decltype(std::declval<Array&>()[0]), VemVar&>);
static_assert(std::is_same_v<decltype(std::declval<const Array&>()[0]), VemVar>);

template <typename T, typename = void>
struct CanBeAppended : std::false_type {};
template <typename T>
struct CanBeAppended<T,
                     std::void_t<decltype(std::declval<VemVarArray&>().Append(std::declval<T>()))>>
    : std::true_type {};
static_assert(CanBeAppended<const VemVar&>::value);
static_assert(!CanBeAppended<VemVarArray&>::value && !CanBeAppended<const VemVarArray&>::value,
              "arrays are joined by +");

std::vector<VemVar>*& Store(VemVarArray& array) {
  return array.*PrivateOf(PrivateVemVarArrayStore());
}

VemVarArray Of(const std::vector<VemVar>& values) {
  VemVarArray array;
  for (const VemVar& value : values) array.Append(value);
  return array;
}

/// The elements, seen through Select, for comparing with a list of values.
std::vector<VemVar> ValuesOf(const VemVarArray& array) {
  std::vector<VemVar> values;
  for (int i = 0; i < array.Length(); ++i) {
    VemVar value;
    array.Select(i, &value);
    values.push_back(value);
  }
  return values;
}

testing::AssertionResult Holds(const VemVarArray& array, const std::vector<VemVar>& expected) {
  const std::vector<VemVar> values = ValuesOf(array);
  const bool same = std::equal(values.begin(), values.end(), expected.begin(), expected.end(),
                               [](const VemVar& a, const VemVar& b) { return Same(a, b); });
  if (same) return testing::AssertionSuccess();
  return testing::AssertionFailure()
         << testing::PrintToString(values) << " instead of " << testing::PrintToString(expected);
}

/// Every kind, and two of each kind that holds something.
std::vector<VemVar> Mixed() { return {3L, "three", 3.5, VemVar(), -7, "", kInfinity}; }

/// Texts long enough for blocks of their own size: "00", "111", "2222" and so on.
std::vector<VemVar> Texts(int count) {
  std::vector<VemVar> texts;
  for (int i = 0; i < count; ++i) {
    texts.push_back(
        std::string(static_cast<std::size_t>(i) + 2, static_cast<char>('0' + i)).c_str());
  }
  return texts;
}

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

/// How a process ends that touches an address it must not; the sanitizers exit with a code instead.
bool Faulted(int status) {
  if (kSanitized && WIFEXITED(status)) return WEXITSTATUS(status) != 0;
  return WIFSIGNALED(status) && WTERMSIG(status) == SIGSEGV;
}

// Construction

TEST(VemTuple, DefaultIsEmpty) { EXPECT_EQ(VemVarArray().Length(), 0); }

TEST(VemTuple, OneValueMakesOneElement) {
  const struct {
    const char* name;
    VemVarArray array;
    VemVar element;
  } cases[] = {
      {"Long", VemVarArray(5L), 5L},
      {"Int", VemVarArray(5), 5L},
      {"Zero", VemVarArray(0), 0L},
      {"NegativeInt", VemVarArray(-3), -3L},
      {"LargeLong", VemVarArray(LONG_MIN), LONG_MIN},
      {"Double", VemVarArray(5.25), 5.25},
      {"Float", VemVarArray(2.5f), 2.5},
      {"FloatIsWidened", VemVarArray(0.1f), 0.10000000149011612},
      {"Text", VemVarArray("text"), "text"},
      {"EmptyText", VemVarArray(""), ""},
      {"Value", VemVarArray(VemVar("value")), "value"},
      {"None", VemVarArray(VemVar()), VemVar()},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_TRUE(Holds(c.array, {c.element}));
  }
}

TEST(VemTuple, TextElementsHaveTheirOwnBlocks) {
  const char text[] = "text";
  const VemVar value(text);
  VemVarArray fromText(text);
  VemVarArray fromValue(value);
  VemVarArray appended;
  appended.Append(value);
  VemVarArray copied(appended);
  const char* const blocks[] = {
      text, value.S(), fromText[0].S(), fromValue[0].S(), appended[0].S(), copied[0].S()};
  for (const char* block : blocks) {
    EXPECT_STREQ(block, "text");
    EXPECT_EQ(std::count(std::begin(blocks), std::end(blocks), block), 1);
  }
}

// Copying

TEST(VemTuple, CopiesAreIndependent) {
  for (const std::vector<VemVar>& values : {Mixed(), Texts(3), std::vector<VemVar>()}) {
    VemVarArray source = Of(values);
    const VemVarArray constructed(source);
    VemVarArray assigned(Of({"old", 1L}));
    EXPECT_EQ(&(assigned = source), &assigned);
    VemVarArray copied(Of(Texts(9)));
    copied.Copy(source);

    source.Append("more");
    source[0] = "changed";
    EXPECT_TRUE(Holds(constructed, values));
    EXPECT_TRUE(Holds(assigned, values));
    EXPECT_TRUE(Holds(copied, values));

    assigned.Clear();
    copied.Append(1L);
    EXPECT_TRUE(Holds(constructed, values));
    EXPECT_EQ(source.Length(), static_cast<int>(values.size()) + 1);
  }
}

TEST(VemTuple, CopyingOntoItselfChangesNothing) {
  for (const std::vector<VemVar>& values : {Mixed(), Texts(5), std::vector<VemVar>()}) {
    VemVarArray array = Of(values);
    const VemVarArray& alias = array;
    array = alias;
    EXPECT_TRUE(Holds(array, values));
    array.Copy(alias);
    EXPECT_TRUE(Holds(array, values));
  }
}

TEST(VemTuple, AssignmentsChain) {
  VemVarArray a, b;
  const VemVarArray c = Of(Mixed());
  a = b = c;
  EXPECT_TRUE(Holds(a, Mixed()));
  EXPECT_TRUE(Holds(b, Mixed()));
}

TEST(VemTuple, CopyMakesAMissingStore) {
  VemVarArray array;
  delete Store(array);
  Store(array) = nullptr;
  array.Copy(Of(Mixed()));
  EXPECT_TRUE(Holds(array, Mixed()));
}

// Operations

TEST(VemTuple, AppendAddsCopiesAtTheEnd) {
  VemVarArray array;
  std::vector<VemVar> expected;
  for (VemVar value : Mixed()) {
    array.Append(value);
    expected.push_back(value);
    value = "changed";
    ASSERT_TRUE(Holds(array, expected));
  }
}

TEST(VemTuple, CapacityDoublesOnAppend) {
  VemVarArray array;
  std::size_t expected = 1;
  for (std::size_t length = 1; length <= 1000; ++length) {
    array.Append(7L);
    if (length > expected) expected *= 2;
    ASSERT_EQ(Store(array)->capacity(), expected) << length;
  }
}

TEST(VemTuple, OwnElementMayBeAppended) {
  for (int length = 1; length <= 9; ++length) {
    for (int i = 0; i < length; ++i) {
      VemVarArray array = Of(Texts(length));
      array.Append(array[i]);
      std::vector<VemVar> expected = Texts(length);
      expected.push_back(Texts(length)[static_cast<std::size_t>(i)]);
      ASSERT_TRUE(Holds(array, expected)) << length << ", " << i;
    }
  }
}

TEST(VemTuple, InsertPutsBeforeAnElementInRange) {
  const std::vector<VemVar> before = {1L, "two", VemVar()};
  const struct {
    const char* name;
    int index;
    std::vector<VemVar> expected;
  } cases[] = {
      {"First", 0, {"new", 1L, "two", VemVar()}},
      {"Middle", 1, {1L, "new", "two", VemVar()}},
      {"Last", 2, {1L, "two", "new", VemVar()}},
      {"Length", 3, before},
      {"AboveLength", 4, before},
      {"Largest", INT_MAX, before},
      {"MinusOne", -1, before},
      {"Smallest", INT_MIN, before},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    VemVarArray array = Of(before);
    VemVar value("new");
    array.Insert(c.index, value);
    value = "changed";
    EXPECT_TRUE(Holds(array, c.expected));
  }
  VemVarArray empty;
  empty.Insert(0, 1L);
  EXPECT_EQ(empty.Length(), 0);
}

// With spare capacity and without.
TEST(VemTuple, OwnElementMayBeInserted) {
  for (int length = 1; length <= 9; ++length) {
    for (int index = 0; index < length; ++index) {
      for (int i = 0; i < length; ++i) {
        std::vector<VemVar> expected = Texts(length);
        expected.insert(expected.begin() + index, Texts(length)[static_cast<std::size_t>(i)]);

        VemVarArray full = Of(Texts(length));
        Store(full)->shrink_to_fit();
        full.Insert(index, full[i]);
        ASSERT_TRUE(Holds(full, expected)) << length << ", " << index << ", " << i;

        VemVarArray spare = Of(Texts(length));
        Store(spare)->reserve(20);
        spare.Insert(index, spare[i]);
        ASSERT_TRUE(Holds(spare, expected)) << length << ", " << index << ", " << i;
      }
    }
  }
}

TEST(VemTuple, RemoveMovesElementsDown) {
  const std::vector<VemVar> before = {"one", 2L, "three"};
  const struct {
    const char* name;
    int index;
    std::vector<VemVar> expected;
  } cases[] = {
      {"First", 0, {2L, "three"}},   {"Middle", 1, {"one", "three"}}, {"Last", 2, {"one", 2L}},
      {"Length", 3, before},         {"Largest", INT_MAX, before},    {"MinusOne", -1, before},
      {"Smallest", INT_MIN, before},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    VemVarArray array = Of(before);
    array.Remove(c.index);
    EXPECT_TRUE(Holds(array, c.expected));
  }
  VemVarArray single("only");
  single.Remove(0);
  EXPECT_EQ(single.Length(), 0);
  single.Remove(0);
  EXPECT_EQ(single.Length(), 0);
}

TEST(VemTuple, ReplaceAssignsOverAnElement) {
  const std::vector<VemVar> before = {"one", 2L, "three"};
  const struct {
    const char* name;
    int index;
    std::vector<VemVar> expected;
  } cases[] = {
      {"First", 0, {"new", 2L, "three"}}, {"Middle", 1, {"one", "new", "three"}},
      {"Last", 2, {"one", 2L, "new"}},    {"Length", 3, before},
      {"MinusOne", -1, before},           {"Smallest", INT_MIN, before},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    VemVarArray array = Of(before);
    VemVar value("new");
    array.Replace(c.index, value);
    value = "changed";
    EXPECT_TRUE(Holds(array, c.expected));
  }
  VemVarArray array = Of(before);
  array.Replace(0, array[2]);
  EXPECT_TRUE(Holds(array, {"three", 2L, "three"}));
  VemVarArray empty;
  empty.Replace(0, 1L);
  EXPECT_EQ(empty.Length(), 0);
}

TEST(VemTuple, SelectCopiesAnElementInRange) {
  const VemVarArray array = Of(Mixed());
  for (int i = 0; i < array.Length(); ++i) {
    for (VemVar out : {VemVar("old"), VemVar(1L), VemVar()}) {
      array.Select(i, &out);
      EXPECT_TRUE(Same(out, Mixed()[static_cast<std::size_t>(i)])) << i;
      out = "changed";
    }
  }
  EXPECT_TRUE(Holds(array, Mixed()));
  for (const int index : {array.Length(), -1, INT_MAX, INT_MIN}) {
    VemVar out("old");
    array.Select(index, &out);
    EXPECT_TRUE(Same(out, "old")) << index;
  }
  VemVar out("old");
  VemVarArray().Select(0, &out);
  EXPECT_TRUE(Same(out, "old"));
}

TEST(VemTuple, SwapExchangesElementsInRange) {
  const std::vector<VemVar> before = {"one", 2L, "three"};
  const struct {
    const char* name;
    int i;
    int j;
    std::vector<VemVar> expected;
  } cases[] = {
      {"Ends", 0, 2, {"three", 2L, "one"}},
      {"EndsBackward", 2, 0, {"three", 2L, "one"}},
      {"TextAndNumber", 0, 1, {2L, "one", "three"}},
      {"NumberWithItself", 1, 1, before},
      {"SecondIsLength", 0, 3, before},
      {"FirstIsLength", 3, 0, before},
      {"BothAreLength", 3, 3, before},
      {"SecondIsNegative", 0, -1, before},
      {"FirstIsNegative", -1, 0, before},
      {"BothAreNegative", -1, -1, before},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    VemVarArray array = Of(before);
    array.Swap(c.i, c.j);
    EXPECT_TRUE(Holds(array, c.expected));
  }
  VemVarArray empty;
  empty.Swap(0, 0);
  EXPECT_EQ(empty.Length(), 0);
}

TEST(VemTuple, InvertReversesTheOrder) {
  for (int length = 0; length <= 9; ++length) {
    VemVarArray array = Of(Texts(length));
    std::vector<VemVar> expected = Texts(length);
    std::reverse(expected.begin(), expected.end());
    const std::size_t capacity = Store(array)->capacity();
    array.Invert();
    EXPECT_TRUE(Holds(array, expected));
    EXPECT_EQ(Store(array)->capacity(), capacity);
    array.Invert();
    EXPECT_TRUE(Holds(array, Texts(length)));
  }
  VemVarArray mixed = Of({1L, "two", VemVar()});
  mixed.Invert();
  EXPECT_TRUE(Holds(mixed, {VemVar(), "two", 1L}));
}

TEST(VemTuple, ClearGivesStorageBackAndKeepsTheStore) {
  VemVarArray array = Of(Mixed());
  const std::vector<VemVar>* store = Store(array);
  for (int round = 0; round < 3; ++round) {
    array.Clear();
    EXPECT_EQ(array.Length(), 0);
    EXPECT_EQ(Store(array), store);
    EXPECT_EQ(Store(array)->capacity(), 0u);
  }
  array.Append("again");
  EXPECT_TRUE(Holds(array, {"again"}));
  VemVarArray empty;
  empty.Clear();
  EXPECT_EQ(empty.Length(), 0);
}

// After Reset an array must not be touched again, so it is left without destruction.
TEST(VemTuple, ResetLeavesThePointer) {
  alignas(VemVarArray) unsigned char bytes[sizeof(VemVarArray)];
  auto* array = new (bytes) VemVarArray(Of(Mixed()));
  unsigned char before[sizeof(VemVarArray)];
  std::memcpy(before, bytes, sizeof(before));
  array->Reset();
  EXPECT_EQ(std::memcmp(before, bytes, sizeof(before)), 0);
}

// Readers

TEST(VemTuple, IndexOfFindsTheFirstEqualElement) {
  VemVarArray array = Of({VemVar(), 1L, "1", 2.5, 1.0, kNaN, "1", (1L << 53) + 1, VemVar()});
  const struct {
    const char* name;
    VemVar value;
    int start;
    int expected;
  } cases[] = {
      {"Long", 1L, 0, 1},
      {"StartIsIncluded", 1L, 1, 1},
      {"LongFindsDouble", 1L, 2, 4},
      {"DoubleFindsLong", 1.0, 0, 1},
      {"BehindTheLast", 1L, 5, -1},
      {"Text", "1", 0, 2},
      {"LaterText", "1", 3, 6},
      {"OtherText", "2", 0, -1},
      {"Double", 2.5, 0, 3},
      {"NoneIsNeverFound", VemVar(), 0, -1},
      {"NotANumberIsNeverFound", kNaN, 0, -1},
      {"LongThroughDouble", 9007199254740992.0, 0, 7},
      {"LongAsInteger", 1L << 53, 0, -1},
      {"LastPosition", VemVar(), 8, -1},
      {"StartAtLength", 1L, 9, -1},
      {"StartAboveLength", 1L, 10, -1},
      {"StartLargest", 1L, INT_MAX, -1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(array.IndexOf(c.value, c.start), c.expected);
  }
  EXPECT_EQ(array.IndexOf(1.0), 1) << "the default start";
  EXPECT_EQ(array.IndexOf(1.0, -5), 1);
  EXPECT_EQ(array.IndexOf(1.0, INT_MIN), 1);
  EXPECT_EQ(VemVarArray().IndexOf(1L, 0), -1);
  EXPECT_EQ(Of({VemVar(), VemVar()}).IndexOf(VemVar(), 0), -1);
}

TEST(VemTuple, ReferenceReachesTheElement) {
  VemVarArray array = Of(Mixed());
  array[0] = "in place";
  array[1] = 9L;
  VemVar* element = &array[2];
  *element = VemVar();
  std::vector<VemVar> expected = Mixed();
  expected[0] = "in place";
  expected[1] = 9L;
  expected[2] = VemVar();
  EXPECT_TRUE(Holds(array, expected));
}

TEST(VemTuple, ConstAccessCopies) {
  VemVarArray array = Of(Mixed());
  const VemVarArray& fixed = array;
  for (int i = 0; i < array.Length(); ++i) {
    const VemVar copy = fixed[i];
    EXPECT_TRUE(Same(copy, Mixed()[static_cast<std::size_t>(i)])) << i;
    if (copy.ValType() == VemVarString) {
      EXPECT_NE(copy.S(), array[i].S());
    }
  }
  const VemVar text = fixed[1];
  array[1] = "changed";
  EXPECT_STREQ(text.S(), "three");
}

TEST(VemTuple, ConstAccessOutOfRangeGivesNone) {
  const VemVarArray array = Of({1L, "two"});
  for (const int index : {2, 3, -1, INT_MAX, INT_MIN}) {
    EXPECT_TRUE(Same(array[index], VemVar())) << index;
  }
  const VemVarArray empty;
  EXPECT_TRUE(Same(empty[0], VemVar()));
}

TEST(VemTuple, ReferenceOutOfRangeFaultsOnlyWhenTouched) {
  VemVarArray array = Of({1L, "two"});
  for (const int index : {2, 3, -1, INT_MAX, INT_MIN}) {
    SCOPED_TRACE(index);
    [[maybe_unused]] VemVar& bound = array[index];
    EXPECT_TRUE(Holds(array, {1L, "two"}));
    if (kSanitized) continue;
    EXPECT_EXIT({ [[maybe_unused]] volatile int kind = bound.ValType(); }, Faulted, "");
    EXPECT_EXIT(bound = VemVar(5L), Faulted, "");
  }
}

TEST(VemTuple, SumIsConcatenation) {
  const std::vector<VemVar> lists[] = {{}, {"one"}, {1L, 2L}, Mixed()};
  for (const std::vector<VemVar>& left : lists) {
    for (const std::vector<VemVar>& right : lists) {
      VemVarArray a = Of(left);
      VemVarArray b = Of(right);
      VemVarArray sum = a + b;
      std::vector<VemVar> expected = left;
      expected.insert(expected.end(), right.begin(), right.end());
      EXPECT_TRUE(Holds(sum, expected));
      for (int i = 0; i < sum.Length(); ++i) sum[i] = "changed";
      EXPECT_TRUE(Holds(a, left));
      EXPECT_TRUE(Holds(b, right));
    }
  }
  const VemVarArray twice = Of(Texts(3));
  EXPECT_TRUE(Holds(twice + twice, {"00", "111", "2222", "00", "111", "2222"}));
}

// Comparison

void CheckComparison(const VemVarArray& a, const VemVarArray& b, bool equal) {
  EXPECT_EQ(a == b, equal);
  EXPECT_EQ(b == a, equal);
  EXPECT_EQ(a != b, !equal);
  EXPECT_EQ(b != a, !equal);
}

// Elements that are neither equal nor unequal count as the same.
TEST(VemTuple, ComparisonOfEachPairOfKinds) {
  const char* const kinds[] = {"long", "double", "string", "none"};
  const VemVar left[4] = {1L, 1.0, "1", VemVar()};
  const VemVar right[4] = {2L, 2.0, "2", VemVar()};
  const bool same[4][4] = {
      {false, false, true, true},
      {false, false, true, true},
      {true, true, false, true},
      {true, true, true, true},
  };
  for (int l = 0; l < 4; ++l) {
    for (int r = 0; r < 4; ++r) {
      SCOPED_TRACE(std::string(kinds[l]) + " and " + kinds[r]);
      CheckComparison(VemVarArray(left[l]), VemVarArray(left[r]), true);
      CheckComparison(VemVarArray(left[l]), VemVarArray(right[r]), same[l][r]);
    }
  }
}

TEST(VemTuple, ArraysCompareByLengthAndPosition) {
  const struct {
    const char* name;
    VemVarArray left;
    VemVarArray right;
    bool equal;
  } cases[] = {
      {"BothEmpty", {}, {}, true},
      {"EmptyAndOne", {}, 1L, false},
      {"EmptyAndNone", {}, VemVar(), false},
      {"Prefix", Of({1L, 2L}), Of({1L, 2L, 3L}), false},
      {"PrefixAndNone", Of({1L, 2L}), Of({1L, 2L, VemVar()}), false},
      {"Same", Of(Mixed()), Of(Mixed()), true},
      {"FirstDiffers", Of({1L, 2L, 3L}), Of({0L, 2L, 3L}), false},
      {"MiddleDiffers", Of({1L, 2L, 3L}), Of({1L, 0L, 3L}), false},
      {"LastDiffers", Of({1L, 2L, 3L}), Of({1L, 2L, 0L}), false},
      {"OrderDiffers", Of({1L, 2L}), Of({2L, 1L}), false},
      {"DifferenceBehindAlike", Of({VemVar(), "a"}), Of({1L, "b"}), false},
      {"None", VemVar(), VemVar(), true},
      {"TextAndLong", "1", 1L, true},
      {"LongAndDouble", 1L, 1.0, true},
      {"NotANumberWithItself", kNaN, kNaN, false},
      {"NotANumberWithDouble", kNaN, 1.0, false},
      {"NotANumberWithLong", kNaN, 1L, false},
      {"NotANumberBehind", Of({1L, kNaN}), Of({1L, kNaN}), false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    CheckComparison(c.left, c.right, c.equal);
  }
  const VemVarArray notANumber(kNaN);
  CheckComparison(notANumber, notANumber, false);
  const VemVarArray mixed = Of(Mixed());
  CheckComparison(mixed, mixed, true);
}

// Random operations beside a list of plain values

using Plain = std::variant<std::monostate, long, double, std::string>;

VemVar ToVar(const Plain& plain) {
  if (const long* l = std::get_if<long>(&plain)) return *l;
  if (const double* d = std::get_if<double>(&plain)) return *d;
  if (const std::string* s = std::get_if<std::string>(&plain)) return s->c_str();
  return VemVar();
}

/// Whether an element is found by a value: small numbers by value, texts by text, nothing never.
bool Finds(const Plain& element, const Plain& value) {
  const auto number = [](const Plain& plain) {
    const long* l = std::get_if<long>(&plain);
    return l != nullptr ? static_cast<double>(*l) : std::get<double>(plain);
  };
  const auto isNumber = [](const Plain& plain) { return plain.index() == 1 || plain.index() == 2; };
  if (isNumber(element) && isNumber(value)) return number(element) == number(value);
  return element.index() == 3 && element == value;
}

/// An array and its model, which do the same.
class Walk {
 public:
  explicit Walk(unsigned seed) : random_(seed) {}

  void Step() {
    const int length = static_cast<int>(model_.size());
    const bool atEnd = length < 12 && Random(0, 1) == 0;
    if (atEnd) return Append();
    const int i = Random(-2, length + 1);
    const bool inRange = i >= 0 && i < length;
    switch (Random(0, 11)) {
      case 0:
      case 1:
        return Insert(i, inRange);
      case 2:
      case 3:
        array_.Remove(i);
        if (inRange) model_.erase(model_.begin() + i);
        return;
      case 4:
      case 5:
        return Replace(i, inRange);
      case 6:
      case 7:
        return Swap(i, inRange);
      case 8:
        array_.Invert();
        std::reverse(model_.begin(), model_.end());
        return;
      case 9:
        return Find();
      case 10:
        return Concatenate();
      default:
        if (Random(0, 9) != 0) return;
        array_.Clear();
        model_.clear();
    }
  }

  testing::AssertionResult Agrees() const {
    std::vector<VemVar> expected;
    for (const Plain& plain : model_) expected.push_back(ToVar(plain));
    return Holds(array_, expected);
  }

 private:
  int Random(int low, int high) {
    return low + static_cast<int>(random_() % static_cast<unsigned>(high - low + 1));
  }

  Plain RandomPlain() {
    const int n = Random(-3, 3);
    switch (Random(0, 3)) {
      case 0:
        return static_cast<long>(n);
      case 1:
        return n * 0.5;
      case 2:
        return std::string(static_cast<std::size_t>(n + 3) * 7, 'a');
      default:
        return std::monostate();
    }
  }

  void Append() {
    const Plain plain = RandomPlain();
    array_.Append(ToVar(plain));
    model_.push_back(plain);
  }

  void Insert(int i, bool inRange) {
    const Plain plain = RandomPlain();
    array_.Insert(i, ToVar(plain));
    if (inRange) model_.insert(model_.begin() + i, plain);
  }

  void Replace(int i, bool inRange) {
    const Plain plain = RandomPlain();
    if (inRange && Random(0, 1) == 0) {
      array_[i] = ToVar(plain);
    } else {
      array_.Replace(i, ToVar(plain));
    }
    if (inRange) model_[static_cast<std::size_t>(i)] = plain;
  }

  // A text must not be exchanged with itself.
  void Swap(int i, bool inRange) {
    const int length = static_cast<int>(model_.size());
    const int j = Random(-2, length + 1);
    if (i == j && inRange && array_[i].ValType() == VemVarString) return;
    array_.Swap(i, j);
    if (!inRange || j < 0 || j >= length) return;
    std::swap(model_[static_cast<std::size_t>(i)], model_[static_cast<std::size_t>(j)]);
  }

  void Find() {
    const Plain plain = RandomPlain();
    const int start = Random(0, static_cast<int>(model_.size()) + 1);
    int expected = -1;
    for (int i = static_cast<int>(model_.size()) - 1; i >= start; --i) {
      if (Finds(model_[static_cast<std::size_t>(i)], plain)) expected = i;
    }
    EXPECT_EQ(array_.IndexOf(ToVar(plain), start), expected);
  }

  void Concatenate() {
    const Plain plain = RandomPlain();
    array_ = array_ + VemVarArray(ToVar(plain));
    model_.push_back(plain);
  }

  std::mt19937 random_;
  VemVarArray array_;
  std::vector<Plain> model_;
};

TEST(VemTuple, RandomOperationsAgreeWithAPlainList) {
  Walk walk(20240517);
  for (int step = 0; step < 20000; ++step) {
    walk.Step();
    ASSERT_TRUE(walk.Agrees()) << "step " << step;
  }
}

}  // namespace
