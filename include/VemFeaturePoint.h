#ifndef VEM_FEATURE_POINT_H_
#define VEM_FEATURE_POINT_H_

#include "VemExport.h"

/// A key point, as a feature detector reports it: a flat value of eight fields.
///
/// The order of the fields is part of the binary interface. The library reads none of them; what
/// they mean, the detector settles.
///
/// No constructor zeroes anything: a field that a constructor does not set stays as the memory was,
/// and has no value until somebody writes it. In every constructor the integer stands before the
/// last float, though in the record IntValue stands behind ValueG.
///
/// Nothing throws. Use an object from one thread at a time; reading it from several at once is
/// safe.
class VEM_EXPORT VemFeaturePoint {
 public:
  /// Sets no field.
  VemFeaturePoint();
  /// Sets x, y and ValueG.
  VemFeaturePoint(float xValue, float yValue, float g);
  /// Sets x, y, ValueE, IntValue and ValueG, in this order.
  VemFeaturePoint(float xValue, float yValue, float e, int n, float g);
  /// Sets x, y, ValueC, ValueD, ValueE, IntValue and ValueG, in this order: all but ValueF.
  VemFeaturePoint(float xValue, float yValue, float c, float d, float e, int n, float g);
  VemFeaturePoint(const VemFeaturePoint& other) = default;             ///< Copies all fields.
  VemFeaturePoint& operator=(const VemFeaturePoint& other) = default;  ///< Copies all fields.
  ~VemFeaturePoint() = default;

  float x;       ///< Horizontal coordinate.
  float y;       ///< Vertical coordinate.
  float ValueC;  ///< Set with seven arguments.
  float ValueD;  ///< Set with seven arguments.
  float ValueE;  ///< Set with five or seven arguments.
  float ValueF;  ///< Set by no constructor.
  float ValueG;  ///< Set with three, five or seven arguments.
  int IntValue;  ///< Set with five or seven arguments.
};

#endif  // VEM_FEATURE_POINT_H_
