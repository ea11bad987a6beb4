#ifndef TESTS_FINGERPRINTS_SAMPLES_H_
#define TESTS_FINGERPRINTS_SAMPLES_H_

#include <opencv2/core.hpp>

#include "IVemROIPara.h"
#include "VemContourArray.h"
#include "VemPointArray.h"
#include "fingerprints/Numbers.h"

// One function for each kind of sample: it draws its numbers and makes the sample. Most are below
// 60 pixels, some reach 200, few 2,000; some cross the origin or the canvas, some are refused.
//
// The numbers drawn decide the fingerprints: a change here makes all of them void.

/// The canvas that contours and runs are painted on: mostly small, so that much crosses it.
cv::Size MakeCanvas(Numbers& numbers);

void MakeRect1(Numbers& numbers, IVemROIPara& roi);
void MakeCircle(Numbers& numbers, IVemROIPara& roi);
void MakeTorus(Numbers& numbers, IVemROIPara& roi);
void MakePolygon(Numbers& numbers, IVemROIPara& roi);
void MakeIrregular(Numbers& numbers, IVemROIPara& roi);
void MakeRect2(Numbers& numbers, IVemROIPara& roi);
void MakeLine(Numbers& numbers, IVemROIPara& roi);         ///< Never upright.
void MakeUprightLine(Numbers& numbers, IVemROIPara& roi);  ///< Its runs must not be asked for.
void MakeEllipse(Numbers& numbers, IVemROIPara& roi);
void MakeArc(Numbers& numbers, IVemROIPara& roi);
void MakeMask(Numbers& numbers, IVemROIPara& roi);

/// Contours of random points inside the canvas, which cross themselves and one another.
void MakeInside(Numbers& numbers, cv::Size canvas, VemContourArray& contours);
/// The same, reaching one canvas beyond each edge.
void MakeCrossing(Numbers& numbers, cv::Size canvas, VemContourArray& contours);
/// The same, of few points, up to 32,767 pixels beyond each edge.
void MakeFar(Numbers& numbers, cv::Size canvas, VemContourArray& contours);
/// Stars and rings about one centre, one in the other.
void MakeNested(Numbers& numbers, cv::Size canvas, VemContourArray& contours);
/// Points on one line, spikes, repeated points, single points, contours without points.
void MakeCrooked(Numbers& numbers, cv::Size canvas, VemContourArray& contours);

/// Points in and around a canvas; at least one.
void MakePoints(Numbers& numbers, cv::Size canvas, VemPointArray& points);

/// A raster of random spots, of any depth.
cv::Mat MakeSpots(Numbers& numbers, cv::Size canvas);

#endif  // TESTS_FINGERPRINTS_SAMPLES_H_
