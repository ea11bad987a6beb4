#ifndef VEM_OVERLAY_PATH_H_
#define VEM_OVERLAY_PATH_H_

#include "VemExport.h"
#include "VemOverlay.h"

class IVemOverlayPath;

/// An ordered list of overlays: one drawing of many elements, passed as a whole to a display, which
/// draws them in the list's order.
///
/// Whatever goes in is a deep copy, and no argument is changed. Every call adds one element;
/// refused arguments add an overlay of the type VemOverlayNone, which a display skips. The calls
/// that build an element build it in one working overlay, with the default pen and brush: after
/// AddImage or AddRegion the later ones carry the last pixels and runs along, under types that do
/// not show them: the pixels are shared with the image's element, the runs are copied. A copy of
/// the path has pixels of its own for each such element; to save that, build overlays apart and
/// pass them to AddOverlay.
///
/// A position must be valid: nothing is reported. A reference to an element lives until the path
/// grows beyond its room, loses an element, is assigned to or ends. What throws is the allocator,
/// OpenCV's included, and Reserve; the path is then as before, but where an assignment fails in the
/// copy that it returns, it is done. Use a path from one thread at a time; reading it from several
/// at once is safe.
///
/// The handle owns an IVemOverlayPath, alone.
class VEM_EXPORT VemOverlayPath {
 public:
  VemOverlayPath();                             ///< No elements.
  VemOverlayPath(const VemOverlayPath& other);  ///< A deep copy.
  /// Makes the list a deep copy of `other`'s and returns a further copy by value, not this path.
  /// That copy is made whether it is taken or not, and when the source is the object itself, which
  /// stays as it is.
  VemOverlayPath operator=(const VemOverlayPath& other);
  ~VemOverlayPath();

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

  void AddOverlay(VemOverlay& overlay);  ///< Adds a copy.
  /// Adds copies of all elements of `path`, in order; an own list is doubled.
  void AddPath(VemOverlayPath& path);
  /// Inserts a copy before the element at `position`, or at the end at Length().
  void Insert(int position, const VemOverlay& overlay);
  void Remove(int position);                              ///< Removes the element at `position`.
  void Replace(int position, const VemOverlay& overlay);  ///< Puts a copy in an element's place.
  void Clear();  ///< Empties the list and gives its storage back.
  /// Makes room for `count` elements in all. A negative count throws `std::length_error`.
  void Reserve(int count);

  int Length() const;  ///< The number of elements.

  /// The element itself. At no valid position: an invalid reference, which faults when touched.
  VemOverlay& operator[](int position);
  /// A copy of the element. At no valid position it faults.
  VemOverlay operator[](int position) const;

 private:
  IVemOverlayPath* impl_;
};

#endif  // VEM_OVERLAY_PATH_H_
