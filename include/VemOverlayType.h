#ifndef VEM_OVERLAY_TYPE_H_
#define VEM_OVERLAY_TYPE_H_

/// @file
/// The kinds of overlays and their ways of drawing.

/// The kind of a graphic element. The values 0 and 17 stand for nothing and never occur.
enum VemOverlayType : int {
  VemOverlayPoint = 1,        ///< point
  VemOverlayArrowLine = 2,    ///< line segment with an arrow head
  VemOverlayLine = 3,         ///< line segment
  VemOverlayRect1 = 4,        ///< axis-parallel rectangle by two corners
  VemOverlayRakeRect1 = 5,    ///< axis-parallel rectangle with a mode and a count
  VemOverlayCircle = 6,       ///< circle
  VemOverlayEllipse = 7,      ///< rotated ellipse
  VemOverlayPolygon = 8,      ///< polygon
  VemOverlayPolyLine = 9,     ///< open chain of segments
  VemOverlayRect2 = 10,       ///< rotated rectangle
  VemOverlayRakeRect2 = 11,   ///< rotated rectangle with a mode and a count
  VemOverlayTorus = 12,       ///< ring or ring sector
  VemOverlaySpokeTorus = 13,  ///< ring or ring sector with a mode and a count
  VemOverlayArc = 14,         ///< circular arc
  VemOverlayIrregular = 15,   ///< chain of listed points
  VemOverlayText = 16,        ///< text at a position
  VemOverlayImage = 18,       ///< image at a position
  VemOverlayRegion = 19,      ///< region of runs
  VemOverlayNone = 20         ///< nothing
};

#endif  // VEM_OVERLAY_TYPE_H_
