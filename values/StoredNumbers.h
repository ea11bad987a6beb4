#ifndef VALUES_STORED_NUMBERS_H_
#define VALUES_STORED_NUMBERS_H_

#include <initializer_list>

#include "VemPointArray.h"
#include "VemTuple.h"
#include "values/Processor.h"

/// How shapes and overlays keep their numbers in a list, and read them back.
namespace stored {

/// Where a stored value goes, and the reader that gives it: F rounds to float, D does not, and a
/// whole number is what D gives, truncated.
struct Output {
  enum Reader { kF, kD, kWhole };

  void Write(const VemVar& value) const {
    if (reader == kWhole) {
      *whole = TruncateToInt(value.D());
    } else {
      *number = reader == kF ? static_cast<double>(value.F()) : value.D();
    }
  }

  Reader reader;
  double* number;
  int* whole;
};

inline Output F(double* target) { return {Output::kF, target, nullptr}; }
inline Output D(double* target) { return {Output::kD, target, nullptr}; }
inline Output Whole(int* target) { return {Output::kWhole, nullptr, target}; }

/// Appends values in stored order: a double is stored as a double, an int as an integer.
inline void Append(VemVarArray& numbers, std::initializer_list<VemVar> values) {
  for (const VemVar& value : values) numbers.Append(value);
}

/// Writes all outputs, which stand in stored order. There must be as many numbers.
inline void Read(const VemVarArray& numbers, std::initializer_list<Output> outputs) {
  int index = 0;
  for (const Output& output : outputs) output.Write(numbers[index++]);
}

/// Appends points, y before x.
inline void AppendPoints(VemVarArray& numbers, const VemPointArray& points) {
  const int count = points.Length();
  for (int i = 0; i < count; ++i) {
    const VemPoint point = points[i];
    numbers.Append(point.y);
    numbers.Append(point.x);
  }
}

/// Replaces the points by those that stand in the numbers, rounded to float.
inline void ReadPoints(const VemVarArray& numbers, VemPointArray* points) {
  points->Clear();
  for (int i = 0; i + 1 < numbers.Length(); i += 2) {
    VemPoint point;
    F(&point.y).Write(numbers[i]);
    F(&point.x).Write(numbers[i + 1]);
    points->Append(point);
  }
}

}  // namespace stored

#endif  // VALUES_STORED_NUMBERS_H_
