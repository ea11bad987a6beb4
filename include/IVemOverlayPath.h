#ifndef I_VEM_OVERLAY_PATH_H_
#define I_VEM_OVERLAY_PATH_H_

#include <cstddef>
#include <vector>

#include "VemExport.h"
#include "VemOverlay.h"

class VemOverlayPath;

/// An ordered list of overlays, one drawing of many elements: the implementation object behind
/// VemOverlayPath, which tells what its operations do. Told here is what is kept, and what differs.
///
/// A position must be valid unless told otherwise: nothing is reported. What throws is the
/// allocator, OpenCV's included, and what is told below. Use an object from one thread at a time;
/// reading its list from several at once is safe.
class VEM_EXPORT IVemOverlayPath {
 public:
  IVemOverlayPath();                              ///< No elements.
  IVemOverlayPath(const IVemOverlayPath& other);  ///< A deep copy of the list alone.
  /// Makes the list a deep copy of `other`'s and returns a further copy by value, not this object.
  /// That copy is made whether it is taken or not.
  IVemOverlayPath operator=(const IVemOverlayPath& other);
  ~IVemOverlayPath();

  void AddPoint(VemPoint& point);                                      ///< VemOverlay::GenPoint
  void AddLine(VemPoint& p1, VemPoint& p2);                            ///< VemOverlay::GenLine
  void AddArrowLine(VemPoint& p1, VemPoint& p2);                       ///< VemOverlay::GenArrowLine
  void AddCircle(VemPoint& center, double radius);                     ///< VemOverlay::GenCircle
  void AddRect1(VemPoint& p1, VemPoint& p2);                           ///< VemOverlay::GenRect1
  void AddRakeRect1(VemPoint& p1, VemPoint& p2, int mode, int count);  ///< VemOverlay::GenRakeRect1
  void AddEllipse(VemPoint& center, double radius1, double radius2,
                  double angle);  ///< VemOverlay::GenEllipse
  void AddArc(VemPoint& center, double radius, double startAngle,
              double sweepAngle);                  ///< VemOverlay::GenArc
  void AddPolygon(const VemPointArray& points);    ///< VemOverlay::GenPolygon
  void AddPolyLine(const VemPointArray& points);   ///< VemOverlay::GenPolyLine
  void AddIrregular(const VemPointArray& points);  ///< VemOverlay::GenIrregular
  void AddTorus(VemPoint& center, double innerRadius, double outerRadius, double startAngle,
                double sweepAngle);  ///< VemOverlay::GenTorus
  void AddSpokeTorus(VemPoint& center, double innerRadius, double outerRadius, double startAngle,
                     double sweepAngle, int mode, int count);  ///< VemOverlay::GenSpokeTorus
  void AddRect2(VemPoint& center, double length1, double length2,
                double angle);  ///< VemOverlay::GenRect2
  void AddRakeRect2(VemPoint& center, double length1, double length2, double angle, int mode,
                    int count);                                    ///< VemOverlay::GenRakeRect2
  void AddText(VemPoint& point, const char* text, VemFont& font);  ///< VemOverlay::GenText
  void AddImage(VemPoint& point, VemImage& image);                 ///< VemOverlay::GenImage
  void AddRegion(VemRegion& region);                               ///< VemOverlay::GenRegion

  void AddOverlay(VemOverlay& overlay);  ///< Adds a copy; the working overlay plays no part.
  /// Adds copies of all elements of `path`, in order; an own list is doubled.
  void AddPath(VemOverlayPath& path);
  /// Inserts the overlay before the element at `position`, or at the end at Length().
  void Insert(int position, VemOverlay overlay);
  void Remove(int position);                       ///< Removes the element at `position`.
  void Replace(int position, VemOverlay overlay);  ///< Puts the overlay in an element's place.
  void Clear();                                    ///< Empties the list and gives its storage back.
  /// Makes room for `count` elements in all. A negative count throws `std::length_error`.
  void Reserve(int count);

  int Length() const;  ///< The number of elements.

  /// The element itself. At no valid position: an invalid reference, which faults when touched.
  VemOverlay& operator[](int position);
  /// A copy of the element. At no valid position it throws `std::out_of_range`.
  VemOverlay operator[](int position) const;

  VemOverlay Scratch;                ///< The working overlay; no part of the path's value.
  std::vector<VemOverlay> Overlays;  ///< The elements.

 private:
  void AddScratch();
  void MakeRoom();
  void Grow(std::size_t capacity);
  void Take(VemOverlay& overlay);
};

#endif  // I_VEM_OVERLAY_PATH_H_
