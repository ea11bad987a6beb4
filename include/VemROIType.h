#ifndef VEM_ROI_TYPE_H_
#define VEM_ROI_TYPE_H_

/// @file
/// The shapes of regions of interest.

/// The shape of a region of interest.
enum VemROIType : int {
  VemROIRect1 = 0,      ///< axis-parallel rectangle by two corners
  VemROICircle = 1,     ///< filled circle
  VemROITorus = 2,      ///< ring or ring sector
  VemROINone = 3,       ///< no shape
  VemROIPolygon = 4,    ///< filled polygon
  VemROIIrregular = 5,  ///< closed chain of listed pixels
  VemROIRect2 = 6,      ///< rotated rectangle
  VemROILine = 7,       ///< line segment
  VemROIEllipse = 8,    ///< rotated filled ellipse
  VemROIArc = 9,        ///< circular arc
  VemROIPoint = 10,     ///< single point
  VemROIMask = 11       ///< ready-made run mask
};

#endif  // VEM_ROI_TYPE_H_
