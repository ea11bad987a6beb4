#include <cstdint>
#include <cstring>
#include <iostream>
#include <string>
#include <vector>

#include "IVemROIPara.h"
#include "VemContourArray.h"
#include "VemPointArray.h"
#include "VemTuple.h"
#include "fingerprints/Samples.h"

// 10,000 random shapes of a kind, the same as those of the fingerprints, each with its numbers and
// with what GetMask gives of it: 32-bit integers and doubles, one after the other, on standard
// output. A script in Python reads them, makes the shapes anew and compares.
//
//   vemdata_shapes <kind>

namespace {

constexpr int kSamples = 10000;

struct Kind {
  const char* name;
  void (*make)(Numbers&, IVemROIPara&);
  bool hasRuns;
};

constexpr Kind kKinds[] = {
    {"Rect1", MakeRect1, true},         {"Circle", MakeCircle, true},
    {"Torus", MakeTorus, true},         {"Polygon", MakePolygon, true},
    {"Irregular", MakeIrregular, true}, {"Rect2", MakeRect2, true},
    {"Line", MakeLine, true},           {"UprightLine", MakeUprightLine, false},
    {"Ellipse", MakeEllipse, true},     {"Arc", MakeArc, true},
    {"Mask", MakeMask, true},
};

void Put(int number) { std::cout.write(reinterpret_cast<const char*>(&number), sizeof number); }
void Put(double number) { std::cout.write(reinterpret_cast<const char*>(&number), sizeof number); }

void PutRuns(VemVarArray& rows, VemVarArray& firsts, VemVarArray& lasts) {
  Put(rows.Length());
  for (int i = 0; i < rows.Length(); ++i) {
    Put(rows[i].I());
    Put(firsts[i].I());
    Put(lasts[i].I());
  }
}

void PutMask(const IVemROIPara& roi) {
  VemVarArray rows, firsts, lasts;
  int width = 0;
  int height = 0;
  Put(roi.GetMask(&rows, &firsts, &lasts, &width, &height) ? 1 : 0);
  Put(width);
  Put(height);
  PutRuns(rows, firsts, lasts);
}

void PutOutlines(IVemROIPara& roi) {
  VemContourArray outlines;
  int width = 0;
  int height = 0;
  Put(roi.GetMask(&outlines, &width, &height) ? 1 : 0);
  Put(outlines.Length());
  for (int i = 0; i < outlines.Length(); ++i) {
    VemPointArray points;
    outlines[i].ToPointArray(&points);
    Put(points.Length());
    for (int k = 0; k < points.Length(); ++k) {
      Put(static_cast<int>(points[k].x));
      Put(static_cast<int>(points[k].y));
    }
  }
}

void PutSample(const Kind& kind, Numbers& numbers) {
  IVemROIPara roi;
  kind.make(numbers, roi);
  Put(static_cast<int>(roi.Type));
  Put(roi.Params.Length());
  for (int i = 0; i < roi.Params.Length(); ++i) Put(roi.Params[i].D());
  if (roi.Type == VemROIMask) {
    Put(roi.Width);
    Put(roi.Height);
    PutRuns(roi.Rows, roi.FirstColumns, roi.LastColumns);
  }
  if (roi.Type == VemROINone) return;
  if (kind.hasRuns) PutMask(roi);
  PutOutlines(roi);
}

}  // namespace

int main(int argc, char** argv) {
  for (const Kind& kind : kKinds) {
    if (argc != 2 || std::strcmp(argv[1], kind.name) != 0) continue;
    for (int sample = 0; sample < kSamples; ++sample) {
      Hash seed;
      seed.Add(reinterpret_cast<const unsigned char*>(kind.name), std::strlen(kind.name));
      seed.Add(sample);
      Numbers numbers(seed.Value());
      PutSample(kind, numbers);
    }
    return 0;
  }
  std::cerr << "vemdata_shapes <kind>\n";
  return 2;
}
