#include "VemTuple.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <new>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/HeapCounter.h"
#include "support/PrivateAccess.h"
#include "support/Support.h"
#include "support/VarArrays.h"

struct PrivateVemVarArrayStore {
  using Type = VemVarStore* VemVarArray::*;
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
template <typename Value, void (Array::*)(Value) = &Array::Append>
constexpr bool kIsAppended = true;
static_assert(kIsAppended<const VemVar&> && kIsAppended<VemVar&&>);
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

VemVarStore*& Store(VemVarArray& array) { return array.*PrivateOf(PrivateVemVarArrayStore()); }

std::size_t Capacity(VemVarArray& array) {
  return static_cast<std::size_t>(Store(array)->Limit - Store(array)->First);
}

/// Texts long enough for blocks of their own size: "00", "111", "2222" and so on.
std::vector<VemVar> Texts(int count) {
  std::vector<VemVar> texts;
  for (int i = 0; i < count; ++i) {
    texts.push_back(
        std::string(static_cast<std::size_t>(i) + 2, static_cast<char>('0' + i)).c_str());
  }
  return texts;
}

#ifdef VEM_SANITIZED
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
    ASSERT_EQ(Capacity(array), expected) << length;
  }
}

// Their owners stay, wherever the elements go.
TEST(VemTuple, GrowthDoesNotCopyTexts) {
  VemVarArray array;
  std::vector<const char*> texts;
  for (const VemVar& text : Texts(40)) {
    array.Append(text);
    texts.push_back(array[array.Length() - 1].S());
  }
  for (int i = 0; i < array.Length(); ++i) {
    EXPECT_EQ(array[i].S(), texts[static_cast<std::size_t>(i)]) << i;
  }
}

/// Integers with a text at one position.
VemVarArray WithTextAt(int position, int length) {
  VemVarArray array;
  for (int i = 0; i < length; ++i) array.Append(i);
  array[position] = "text";
  return array;
}

/// Positions around the ends and the middle of an array, and around its eighths.
std::vector<int> TellingPositions(int length) {
  std::vector<int> positions;
  for (int eighth = 0; eighth <= 8; ++eighth) {
    for (int offset = -9; offset <= 9; ++offset) {
      const int position = length * eighth / 8 + offset;
      if (position >= 0 && position < length) positions.push_back(position);
    }
  }
  std::sort(positions.begin(), positions.end());
  positions.erase(std::unique(positions.begin(), positions.end()), positions.end());
  return positions;
}

// One text among numbers is copied and released as such, wherever it stands.
TEST(VemTuple, OneTextIsFoundAmongNumbers) {
  std::vector<int> lengths = {511, 512, 513, 4095, 4096, 4097, 4131};
  for (int length = 1; length <= 40; ++length) lengths.push_back(length);
  for (const int length : lengths) {
    VemVarArray numbers;
    for (int i = 0; i < length; ++i) numbers.Append(i);
    for (const int position : TellingPositions(length)) {
      SCOPED_TRACE(std::to_string(position) + " of " + std::to_string(length));
      VemVarArray source = WithTextAt(position, length);
      VemVarArray copy(source);
      ASSERT_TRUE(copy == source);
      ASSERT_STREQ(copy[position].S(), "text");
      ASSERT_NE(copy[position].S(), source[position].S());
      VemVarArray target = WithTextAt(length - 1 - position, length);
      target = source;
      ASSERT_TRUE(target == source);
      ASSERT_NE(target[position].S(), source[position].S());
      target = numbers;
      ASSERT_TRUE(target == numbers);
      ASSERT_TRUE((source + numbers)[position] == VemVar("text"));
    }
  }
}

TEST(VemTuple, TextsGiveTheirBlocksBack) {
  const HeapCounter heap;
  {
    VemVarArray array;
    for (int i = 0; i < 100; ++i) array.Append(i % 3 == 0 ? VemVar("text") : VemVar(i));
    const VemVarArray copy(array);
    array.Remove(0);
    array = array + copy;
    array = VemVarArray(7);
    array = copy;
    array.Clear();
    array.Append("another");
  }
  EXPECT_EQ(heap.Kept(), 0);
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

TEST(VemTuple, AppendTakesOverATemporary) {
  for (int length = 0; length <= 9; ++length) {
    std::vector<VemVar> expected = Texts(length);
    VemVarArray array = Of(expected);
    for (VemVar value : Mixed()) {
      expected.push_back(value);
      const char* const text = value.S();
      array.Append(std::move(value));
      ASSERT_TRUE(Holds(array, expected));
      ASSERT_EQ(value.ValType(), VemVarNone);
      if (expected.back().ValType() == VemVarString) {
        ASSERT_EQ(array[array.Length() - 1].S(), text);
      }
    }
  }
}

TEST(VemTuple, OwnElementMayBeTakenOver) {
  for (int length = 1; length <= 9; ++length) {
    for (int i = 0; i < length; ++i) {
      VemVarArray array = Of(Texts(length));
      array.Append(std::move(array[i]));
      std::vector<VemVar> expected = Texts(length);
      expected.push_back(expected[static_cast<std::size_t>(i)]);
      expected[static_cast<std::size_t>(i)] = VemVar();
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

        const VemVarArray source = Of(Texts(length));
        VemVarArray full(source);
        ASSERT_EQ(Capacity(full), static_cast<std::size_t>(length));
        full.Insert(index, full[i]);
        ASSERT_TRUE(Holds(full, expected)) << length << ", " << index << ", " << i;

        VemVarArray spare = Of(Texts(20));
        spare = source;
        ASSERT_GE(Capacity(spare), 20u);
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
    const std::size_t capacity = Capacity(array);
    array.Invert();
    EXPECT_TRUE(Holds(array, expected));
    EXPECT_EQ(Capacity(array), capacity);
    array.Invert();
    EXPECT_TRUE(Holds(array, Texts(length)));
  }
  VemVarArray mixed = Of({1L, "two", VemVar()});
  mixed.Invert();
  EXPECT_TRUE(Holds(mixed, {VemVar(), "two", 1L}));
}

TEST(VemTuple, ClearGivesStorageBackAndKeepsTheStore) {
  VemVarArray array = Of(Mixed());
  const VemVarStore* store = Store(array);
  for (int round = 0; round < 3; ++round) {
    array.Clear();
    EXPECT_EQ(array.Length(), 0);
    EXPECT_EQ(Store(array), store);
    EXPECT_EQ(Capacity(array), 0u);
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

// Ends the process by whoever is asked when memory runs short.
void GrowWithShortMemory() {
  std::size_t pages = 0;
  std::ifstream("/proc/self/statm") >> pages;
  const std::size_t bytes =
      pages * static_cast<std::size_t>(getpagesize()) + (std::size_t{1} << 26);
  const rlimit limit = {bytes, bytes};
  setrlimit(RLIMIT_AS, &limit);
  std::set_new_handler([] { std::_Exit(7); });
  VemVarArray array;
  for (int i = 0; i < INT_MAX; ++i) array.Append(i);
}

TEST(VemTuple, GrowthOfLargeBlocksAsksTheHandlerOfNewForMemory) {
  if (kSanitized) GTEST_SKIP() << "Sanitizers need the addresses.";
  EXPECT_EXIT(GrowWithShortMemory(), testing::ExitedWithCode(7), "");
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

}  // namespace
