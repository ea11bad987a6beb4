#ifndef TESTS_SUPPORT_SUPPORT_H_
#define TESTS_SUPPORT_SUPPORT_H_

#include <limits>
#include <ostream>
#include <string>
#include <vector>

#include <opencv2/core.hpp>

#include "Vem3DPoint.h"
#include "VemPoint.h"
#include "VemRLC.h"
#include "VemTuple.h"
#include "VemVar.h"

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// How GoogleTest prints our types.
void PrintTo(const VemVar& value, std::ostream* out);
void PrintTo(const VemVarArray& values, std::ostream* out);
void PrintTo(const VemPoint& point, std::ostream* out);
void PrintTo(const Vem3DPoint& point, std::ostream* out);
void PrintTo(const Run& run, std::ostream* out);

bool operator==(const Run& a, const Run& b);

/// Whether two values have the same kind and the same payload: doubles bit by bit, texts by their
/// bytes, and two values of kind VemVarNone are the same.
bool Same(const VemVar& a, const VemVar& b);
bool Same(const VemVarArray& a, const VemVarArray& b);

/// The three arrays of a run triple as a list of runs. Every element must be an integer, and the
/// lengths must be equal.
std::vector<Run> RunsOf(const VemVarArray& rows, const VemVarArray& firstColumns,
                        const VemVarArray& lastColumns);

/// A raster drawn in characters, a line for each row: '#' becomes 255, anything else 0.
cv::Mat Raster(const std::string& picture);
/// The drawing of a CV_8UC1 raster: '#' where it is not zero, '.' elsewhere.
std::string Picture(const cv::Mat& raster);
/// The drawing of runs on a canvas, each clipped to it.
std::string Picture(const std::vector<Run>& runs, int width, int height);

#endif  // TESTS_SUPPORT_SUPPORT_H_
