#ifndef VEM_IMAGE_ARRAY_H_
#define VEM_IMAGE_ARRAY_H_

#include <vector>

#include "VemExport.h"
#include "VemImage.h"

/// An ordered list of images.
///
/// Unlike a copied image, an element shares its pixels with nothing outside the array: they are
/// cloned on the way in and on the way out, into packed rows. An empty image is an element like
/// any other.
///
/// An index is in range when it is not negative and below Length(). An operation that tests its
/// index does nothing on a bad one; nothing is reported. What throws is the allocator and OpenCV's
/// copying: unlike an image, an array lets that pass, and the header of the clone that failed stays
/// allocated.
///
/// No argument is changed, though its reference is not const. Pointers to write through must not be
/// null. After a throw the array is as before, but after an assignment empty.
///
/// Use an array from one thread at a time; reading it from several at once is safe.
class VEM_EXPORT VemImageArray {
 public:
  VemImageArray();                            ///< Empty.
  VemImageArray(const VemImageArray& other);  ///< Clones all elements.
  /// Destroys the own elements, then clones `other`'s: assigned to itself, an array becomes empty.
  /// Returns `other`, not this array.
  const VemImageArray& operator=(const VemImageArray& other);
  ~VemImageArray();

  void Append(VemImage& value);        ///< Adds a clone at the end.
  void Append(VemImageArray& values);  ///< Adds clones of all elements; itself: it doubles.
  /// Inserts a clone before the element at `index`. Length() is out of range: nothing is ever added
  /// at the end, nor to an empty array.
  void Insert(int index, VemImage& value);
  void Remove(int index);  ///< Removes the element at `index`; copies no pixel.
  /// Puts a clone in the place of the element at `index`, which is not destroyed: it stays
  /// allocated with its pixels until the process ends. To give them back, Insert and Remove.
  void Replace(int index, VemImage& value);
  void Swap(int i, int j);  ///< Exchanges two elements, both in range; copies no pixel.
  void Clear();             ///< Empties the array and gives its storage back.

  int Length() const;  ///< The number of images.
  /// Clones the element at `index` into `*out`, whose old pixels are let go, never written; out of
  /// range, `*out` stays as it was.
  void Select(int index, VemImage* out) const;
  /// A clone of the element. Out of range: indeterminate.
  VemImage operator[](int index) const;

 private:
  std::vector<cv::Mat*>* store_;
};

#endif  // VEM_IMAGE_ARRAY_H_
