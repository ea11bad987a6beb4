#include "VemTuple.h"

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

#include "support/VarArrays.h"

namespace {

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

TEST(VemTupleRandom, RandomOperationsAgreeWithAPlainList) {
  Walk walk(20240517);
  for (int step = 0; step < 20000; ++step) {
    walk.Step();
    ASSERT_TRUE(walk.Agrees()) << "step " << step;
  }
}

}  // namespace
