#ifndef TESTS_SUPPORT_CODE_RECORDS_H_
#define TESTS_SUPPORT_CODE_RECORDS_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <set>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "Vem1DCode.h"
#include "VemDMCode.h"
#include "VemPDF417Code.h"
#include "VemPointArray.h"
#include "VemQRCode.h"
#include "VemVCode.h"
#include "VemVar.h"
#include "support/ArrayTraits.h"
#include "support/HeapCounter.h"
#include "support/Support.h"

// What the tests of the code records and of their arrays share: the lists of fields, in order, the
// visitors that fill, compare and name them, and what holds for every record.

/// Gives every field a content that depends on the record's number and on the field's position.
class Fill {
 public:
  explicit Fill(int number) : number_(number) {}

  void operator()(int& field) { field = Next(); }
  void operator()(float& field) { field = static_cast<float>(Next()) / 8; }
  void operator()(double& field) { field = Next() / 3.0; }
  void operator()(std::uint64_t& field) {
    field = 0x9e3779b97f4a7c15U * static_cast<std::uint64_t>(Next());
  }
  void operator()(VemVar& field) {
    const int content = Next();
    field = VemVar(("text " + std::to_string(content)).c_str());
  }
  void operator()(VemPointArray& field) {
    const int content = Next();
    field.Clear();
    for (int i = 0; i <= content % 3; ++i) {
      VemPoint point(content, i);
      field.Append(point);
    }
  }

 private:
  int Next() { return number_ * 100 + position_++; }

  int number_;
  int position_ = 0;
};

inline bool Equal(const VemVar& a, const VemVar& b) { return Same(a, b); }
inline bool Equal(const VemPointArray& a, const VemPointArray& b) {
  if (a.Length() != b.Length()) return false;
  for (int i = 0; i < a.Length(); ++i) {
    if (a[i].x != b[i].x || a[i].y != b[i].y) return false;
  }
  return true;
}
/// Numbers bit by bit.
template <typename T>
bool Equal(const T& a, const T& b) {
  return std::memcmp(&a, &b, sizeof(T)) == 0;
}

/// Compares every field with what Fill would have put there.
class IsFilled {
 public:
  IsFilled(int number, bool* result) : fill_(number), result_(result) {}

  template <typename T>
  void operator()(const T& field) {
    T expected;
    fill_(expected);
    if (!Equal(field, expected)) *result_ = false;
  }

 private:
  Fill fill_;
  bool* result_;
};

/// Whether values hold nothing and point arrays no points; numbers do not count.
class IsEmpty {
 public:
  explicit IsEmpty(bool* result) : result_(result) {}

  void operator()(const VemVar& field) {
    if (field.ValType() != VemVarNone) *result_ = false;
  }
  void operator()(const VemPointArray& field) {
    if (field.Length() != 0) *result_ = false;
  }
  template <typename T>
  void operator()(const T&) {}

 private:
  bool* result_;
};

/// Whether every byte of every number is `kByte`; values and point arrays do not count.
class IsUnwritten {
 public:
  static constexpr unsigned char kByte = 0xa5;

  explicit IsUnwritten(bool* result) : result_(result) {}

  void operator()(const VemVar&) {}
  void operator()(const VemPointArray&) {}
  template <typename T>
  void operator()(const T& field) {
    unsigned char bytes[sizeof(T)];
    std::memcpy(bytes, &field, sizeof(T));
    for (const unsigned char byte : bytes) {
      if (byte != kByte) *result_ = false;
    }
  }

 private:
  bool* result_;
};

/// Puts a letter for each field's type: int, float, double, word, value or points.
class Letters {
 public:
  explicit Letters(std::string* letters) : letters_(letters) {}

  void operator()(const int&) { *letters_ += 'i'; }
  void operator()(const float&) { *letters_ += 'f'; }
  void operator()(const double&) { *letters_ += 'd'; }
  void operator()(const std::uint64_t&) { *letters_ += 'w'; }
  void operator()(const VemVar&) { *letters_ += 'V'; }
  void operator()(const VemPointArray&) { *letters_ += 'P'; }

 private:
  std::string* letters_;
};

/// Puts every text, in order.
class Texts {
 public:
  explicit Texts(std::vector<const char*>* texts) : texts_(texts) {}

  void operator()(const VemVar& field) {
    if (field.ValType() == VemVarString) texts_->push_back(field.S());
  }
  template <typename T>
  void operator()(const T&) {}

 private:
  std::vector<const char*>* texts_;
};

// Beside its fields, each tells the texts that a new record has.

struct Vem1DCodeFields {
  using Record = Vem1DCode;
  static std::vector<std::string> NewTexts() { return {}; }

  template <typename R, typename Visitor>
  static void ForEach(R& record, Visitor visit) {
    visit(record.Number);
    visit(record.Value);
    visit(record.Points);
    visit(record.Word0);
    visit(record.Word1);
    visit(record.Word2);
    visit(record.Word3);
    visit(record.Word4);
    visit(record.Word5);
    visit(record.Word6);
    visit(record.Word7);
  }
};

struct VemDMCodeFields {
  using Record = VemDMCode;
  static std::vector<std::string> NewTexts() { return {"ECC-200 ", "BlackOnWhite"}; }

  template <typename R, typename Visitor>
  static void ForEach(R& record, Visitor visit) {
    visit(record.Number);
    visit(record.Value);
    visit(record.SymbolType);
    visit(record.Polarity);
    visit(record.Value3);
    visit(record.Value4);
    visit(record.Count0);
    visit(record.Count1);
    visit(record.Count2);
    visit(record.Real0);
    visit(record.Real1);
    visit(record.Points0);
    visit(record.Points1);
    visit(record.Points2);
    visit(record.Word0);
    visit(record.Word1);
    visit(record.Word2);
    visit(record.Word3);
    visit(record.Word4);
    visit(record.Word5);
  }
};

struct VemQRCodeFields {
  using Record = VemQRCode;
  static std::vector<std::string> NewTexts() { return {"QR Mode 2", "BlackOnWhite"}; }

  template <typename R, typename Visitor>
  static void ForEach(R& record, Visitor visit) {
    visit(record.Number);
    visit(record.Value);
    visit(record.SymbolType);
    visit(record.Polarity);
    visit(record.Value3);
    visit(record.Value4);
    visit(record.Count0);
    visit(record.Count1);
    visit(record.Count2);
    visit(record.Count3);
    visit(record.Real0);
    visit(record.Real1);
    visit(record.Points0);
    visit(record.Points1);
    visit(record.Points2);
    visit(record.Word0);
    visit(record.Word1);
    visit(record.Word2);
    visit(record.Word3);
    visit(record.Word4);
    visit(record.Word5);
    visit(record.Word6);
  }
};

struct VemPDF417CodeFields {
  using Record = VemPDF417Code;
  static std::vector<std::string> NewTexts() { return {"BlackOnWhite"}; }

  template <typename R, typename Visitor>
  static void ForEach(R& record, Visitor visit) {
    visit(record.Number);
    visit(record.Value);
    visit(record.Polarity);
    visit(record.Value2);
    visit(record.Count0);
    visit(record.Count1);
    visit(record.Count2);
    visit(record.Real0);
    visit(record.Real1);
    visit(record.Real2);
    visit(record.Points);
    visit(record.Word0);
    visit(record.Word1);
    visit(record.Word2);
    visit(record.Word3);
    visit(record.Word4);
    visit(record.Word5);
  }
};

struct VemVCodeFields {
  using Record = VemVCode;
  static std::vector<std::string> NewTexts() { return {}; }

  template <typename R, typename Visitor>
  static void ForEach(R& record, Visitor visit) {
    visit(record.Count0);
    visit(record.Count1);
    visit(record.Count2);
    visit(record.Real0);
    visit(record.Real1);
    visit(record.Real2);
    visit(record.Value0);
    visit(record.Value1);
    visit(record.Value2);
    visit(record.Value3);
    visit(record.Points);
  }
};

template <typename Fields>
typename Fields::Record MakeRecord(int number) {
  typename Fields::Record record;
  Fields::ForEach(record, Fill(number));
  return record;
}

template <typename Fields>
bool IsMadeRecord(const typename Fields::Record& record, int number) {
  bool result = true;
  Fields::ForEach(record, IsFilled(number, &result));
  return result;
}

/// Whether no value and no point array holds anything; numbers do not count.
template <typename Fields>
bool HoldsNothing(const typename Fields::Record& record) {
  bool result = true;
  Fields::ForEach(record, IsEmpty(&result));
  return result;
}

/// An array of records for the suites of ArrayContract.h, but for its store.
template <typename A, typename F>
struct RecordTraits : ArrayTraits<A, typename F::Record> {
  using Fields = F;
  using Element = typename Fields::Record;
  static constexpr bool kMakesRoomOnce = true;
  static constexpr bool kMayAssignToItself = false;

  static Element Make(int number) { return MakeRecord<Fields>(number); }
  static bool IsMade(const Element& record, int number) {
    return IsMadeRecord<Fields>(record, number);
  }
};

template <typename Fields>
std::vector<const char*> TextsIn(const typename Fields::Record& record) {
  std::vector<const char*> texts;
  Fields::ForEach(record, Texts(&texts));
  return texts;
}

/// Whether all texts of some records, which live at the same time, have memory of their own.
template <typename Fields>
testing::AssertionResult ShareNoText(const std::vector<const typename Fields::Record*>& records) {
  std::set<const char*> texts;
  for (std::size_t i = 0; i < records.size(); ++i) {
    for (const char* text : TextsIn<Fields>(*records[i])) {
      if (texts.insert(text).second) continue;
      return testing::AssertionFailure() << "record " << i << " shares \"" << text << '"';
    }
  }
  return testing::AssertionSuccess();
}

template <typename Fields>
std::string TypesOf() {
  std::string letters;
  const typename Fields::Record record = MakeRecord<Fields>(1);
  Fields::ForEach(record, Letters(&letters));
  return letters;
}

/// A record built over memory of which every byte is IsUnwritten::kByte.
template <typename Record>
class RecordInPlace {
 public:
  RecordInPlace() {
    std::memset(memory_, IsUnwritten::kByte, sizeof(memory_));
    record_ = new (memory_) Record;
  }
  RecordInPlace(const RecordInPlace&) = delete;
  RecordInPlace& operator=(const RecordInPlace&) = delete;
  ~RecordInPlace() { record_->~Record(); }

  const Record& Get() const { return *record_; }

 private:
  alignas(Record) unsigned char memory_[sizeof(Record)];
  Record* record_;
};

/// What holds for every record, with the list of its fields as the parameter.
template <typename Fields>
class RecordContract : public testing::Test {};
TYPED_TEST_SUITE_P(RecordContract);

TYPED_TEST_P(RecordContract, IsAPlainClass) {
  using Record = typename TypeParam::Record;
  static_assert(!std::is_polymorphic_v<Record> && std::is_standard_layout_v<Record>);
  static_assert(
      std::is_same_v<decltype(std::declval<Record&>() = std::declval<const Record&>()), Record&>);
  static_assert(!std::is_convertible_v<int, Record> && !std::is_convertible_v<VemVar, Record>);
  // Fields that differ by no more than their position are told apart by Fill.
  const Record record = MakeRecord<TypeParam>(3);
  EXPECT_TRUE(IsMadeRecord<TypeParam>(record, 3));
  EXPECT_FALSE(IsMadeRecord<TypeParam>(record, 4));
}

TYPED_TEST_P(RecordContract, ConstructorLeavesNumbersUnwritten) {
  const RecordInPlace<typename TypeParam::Record> record;
  bool unwritten = true;
  TypeParam::ForEach(record.Get(), IsUnwritten(&unwritten));
  EXPECT_TRUE(unwritten);
}

TYPED_TEST_P(RecordContract, CopyCarriesEveryFieldAndSharesNone) {
  using Record = typename TypeParam::Record;
  auto source = std::make_unique<Record>(MakeRecord<TypeParam>(7));
  const Record copy(*source);
  TypeParam::ForEach(*source, Fill(8));
  EXPECT_TRUE(IsMadeRecord<TypeParam>(copy, 7));
  source.reset();
  EXPECT_TRUE(IsMadeRecord<TypeParam>(copy, 7));
}

TYPED_TEST_P(RecordContract, AssignmentCarriesEveryFieldAndSharesNone) {
  using Record = typename TypeParam::Record;
  auto source = std::make_unique<Record>(MakeRecord<TypeParam>(7));
  Record target = MakeRecord<TypeParam>(9);
  Record& result = (target = *source);
  EXPECT_EQ(&result, &target);
  TypeParam::ForEach(*source, Fill(8));
  EXPECT_TRUE(IsMadeRecord<TypeParam>(target, 7));
  source.reset();
  EXPECT_TRUE(IsMadeRecord<TypeParam>(target, 7));
}

TYPED_TEST_P(RecordContract, EveryNewRecordHasTextsOfItsOwn) {
  using Record = typename TypeParam::Record;
  const Record first;
  const Record second;
  const Record copy(first);
  Record target;
  target = first;
  const std::vector<const Record*> records = {&first, &second, &copy, &target};
  EXPECT_TRUE(ShareNoText<TypeParam>(records));
  for (const Record* record : records) {
    const std::vector<const char*> texts = TextsIn<TypeParam>(*record);
    EXPECT_EQ(std::vector<std::string>(texts.begin(), texts.end()), TypeParam::NewTexts());
  }
}

TYPED_TEST_P(RecordContract, EveryFilledRecordHasTextsOfItsOwn) {
  using Record = typename TypeParam::Record;
  const Record first = MakeRecord<TypeParam>(3);
  const Record copy(first);
  Record target = MakeRecord<TypeParam>(4);
  target = first;
  EXPECT_FALSE(TextsIn<TypeParam>(first).empty());
  EXPECT_TRUE(ShareNoText<TypeParam>({&first, &copy, &target}));
  for (const Record* record : {&first, &copy, static_cast<const Record*>(&target)}) {
    EXPECT_TRUE(IsMadeRecord<TypeParam>(*record, 3));
  }
}

REGISTER_TYPED_TEST_SUITE_P(RecordContract, IsAPlainClass, ConstructorLeavesNumbersUnwritten,
                            CopyCarriesEveryFieldAndSharesNone,
                            AssignmentCarriesEveryFieldAndSharesNone,
                            EveryNewRecordHasTextsOfItsOwn, EveryFilledRecordHasTextsOfItsOwn);

/// What holds for every array of records, with its traits for ArrayContract.h as the parameter.
template <typename Traits>
class RecordArrayContract : public testing::Test {};
TYPED_TEST_SUITE_P(RecordArrayContract);

TYPED_TEST_P(RecordArrayContract, EveryWayInAndOutMakesTextsOfItsOwn) {
  using Array = typename TypeParam::Array;
  using Fields = typename TypeParam::Fields;
  using Record = typename Fields::Record;
  Record record = TypeParam::Make(1);
  Record other = TypeParam::Make(2);
  Array array;
  array.Append(record);
  array.Insert(0, record);
  array.Append(array);
  array.Append(other);
  array.Replace(4, record);
  Record out;
  array.Select(0, &out);
  Array copy(array);
  Array target;
  target.Append(other);
  Array result = (target = array);

  std::vector<const Record*> records = {&record, &out};
  for (Array* each : {&array, &copy, &target, &result}) {
    ASSERT_EQ(each->Length(), 5);
    for (int i = 0; i < 5; ++i) records.push_back(&(*each)[i]);
  }
  // Initialised by what the access gives, without a copy between.
  const Array& constant = array;
  const Record read = TypeParam::kConstAccessReads ? constant[4] : Record(record);
  records.push_back(&read);
  EXPECT_TRUE(ShareNoText<Fields>(records));
  for (const Record* each : records) EXPECT_TRUE(TypeParam::IsMade(*each, 1));
}

// Nothing guards a record from being exchanged with itself, nor its texts, which are released
// before they are read. A sanitizer would end the process.
TYPED_TEST_P(RecordArrayContract, SwapOfARecordWithItselfAssignsItsTexts) {
  using Fields = typename TypeParam::Fields;
  if (!HeapCounter::kCounts) GTEST_SKIP() << "no blocks are counted";
  auto array = ArrayOf<TypeParam>({1, 2});
  const auto texts = static_cast<long>(TextsIn<Fields>(array[1]).size());
  const HeapCounter swapping;
  array.Swap(1, 1);
  // Into the copy, over itself, and back.
  EXPECT_GE(swapping.Taken(), 3 * texts);
  EXPECT_EQ(swapping.Kept(), 0);
  EXPECT_TRUE(Holds<TypeParam>(array, {1, 2}));
}

REGISTER_TYPED_TEST_SUITE_P(RecordArrayContract, EveryWayInAndOutMakesTextsOfItsOwn,
                            SwapOfARecordWithItselfAssignsItsTexts);

#endif  // TESTS_SUPPORT_CODE_RECORDS_H_
