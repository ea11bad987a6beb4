#ifndef VEM_ROI_ARRAY_H_
#define VEM_ROI_ARRAY_H_

#include <vector>

#include "VemExport.h"
#include "VemROI.h"

class IVemROIArrayPara;

/// An ordered list of regions of interest. What goes in is copied: the kind and the numbers of a
/// shape, or the runs and the canvas of a mask. What comes out of operator[] is a whole copy; what
/// comes out of Select is not, for a mask.
///
/// An index is in range when it is not negative and below Length(). An operation that tests its
/// index does nothing on a bad one; nothing is reported. What throws is the allocator alone.
///
/// No argument is changed, though its reference is not const. Pointers to write through must not be
/// null.
///
/// After a throw the array is as before, with these exceptions. After an assignment it is empty.
/// Remove, Replace and Swap, and Insert where there is room, assign elements over elements: where
/// that fails, every element is sound, but one may stand twice or have taken over a part of
/// another; `*out` of a Select may then have its new type over its old numbers.
///
/// Use an array from one thread at a time; reading it from several at once is safe.
class VEM_EXPORT VemROIArray {
 public:
  VemROIArray();                          ///< Empty.
  VemROIArray(const VemROIArray& other);  ///< A deep copy.
  /// Empties this array, then makes it a deep copy of `other`: assigned to itself, an array becomes
  /// empty.
  VemROIArray& operator=(const VemROIArray& other);
  ~VemROIArray();

  void Append(VemROI& value);        ///< Adds a copy at the end.
  void Append(VemROIArray& values);  ///< Adds copies of all elements; itself: it doubles.
  /// Inserts a copy before the element at `index`. Length() is out of range: nothing is ever added
  /// at the end, nor to an empty array.
  void Insert(int index, VemROI& value);
  void Remove(int index);                  ///< Removes the element at `index`.
  void Replace(int index, VemROI& value);  ///< Puts a copy in the place of the element at `index`.
  void Swap(int i, int j);                 ///< Exchanges two elements, both in range.
  void Clear();                            ///< Empties the array and gives its storage back.

  int Length() const;  ///< The number of elements.
  /// Writes a part of the element over `*out`; out of range, `*out` stays as it was.
  ///
  /// Of a shape, the kind and the numbers; `*out` keeps the runs and the canvas that it held, which
  /// have no meaning then. Of a mask, the kind and the canvas, never the runs: `*out` becomes a
  /// mask of the runs that it held, none if it is new. To get a mask's runs, use operator[].
  void Select(int index, VemROI* out) const;
  /// A whole copy of the element. Out of range: no shape.
  VemROI operator[](int index) const;

 private:
  std::vector<IVemROIArrayPara>* store_;
};

#endif  // VEM_ROI_ARRAY_H_
