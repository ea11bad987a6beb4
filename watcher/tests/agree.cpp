// Calls generators and arrays with arguments at random, and tells by what they leave how often each
// has refused or ignored them: as the watcher sums it up.

#include <sys/wait.h>

#include <csignal>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <map>
#include <random>
#include <string>

#include "VemData.h"
#include "watcher/tests/Child.h"

namespace {

std::mt19937 g_random(20261121);
std::map<std::string, long> g_counts;

template <std::size_t size, typename T>
T OneOf(const T (&choices)[size]) {
  return choices[g_random() % size];
}

double Number() {
  const double kChoices[] = {-1,
                             0,
                             1,
                             1,
                             2,
                             5,
                             90,
                             0.5,
                             std::numeric_limits<double>::quiet_NaN(),
                             std::numeric_limits<double>::infinity()};
  return OneOf(kChoices);
}

int Integer() {
  const int kChoices[] = {-2147483647 - 1, -2, -1, 0, 1, 2, 2, 3, 4, 5, 6, 7, 512, 513};
  return OneOf(kChoices);
}

VemPoint Point() { return VemPoint(Number(), Number()); }

VemPointArray Points() {
  VemPointArray points;
  for (int left = Integer() & 7; left > 0; --left) {
    VemPoint point = Point();
    points.Append(point);
  }
  return points;
}

VemVarArray Integers(int count) {
  VemVarArray list;
  for (int i = 0; i < count; ++i) list.Append(i);
  return list;
}

void Count(const char* name, bool refused) {
  if (refused) ++g_counts[name];
}

// The type left is none where the generator refuses; a generator from points drops the numbers.
template <typename Generate>
void Roi(const char* name, Generate generate) {
  VemROI roi;
  generate(roi);
  Count(name, roi.ROIType() == VemROINone);
}

template <typename Generate>
void Overlay(const char* name, Generate generate) {
  VemOverlay overlay;
  generate(overlay);
  Count(name, overlay.OverlayType() == VemOverlayNone);
}

void AgreeOnShapes() {
  VemPoint p1 = Point();
  VemPoint p2 = Point();
  const double a = Number();
  const double b = Number();
  const double c = Number();
  const double d = Number();
  const int mode = Integer();
  const int count = Integer();
  VemPointArray points = Points();
  VemVarArray rows = Integers(count & 3);
  VemVarArray cols = Integers(mode & 3);
  VemContourArray contours;
  Roi("VemROI::GenRect1", [&](VemROI& roi) { roi.GenRect1(p1, p2); });
  Roi("VemROI::GenCircle", [&](VemROI& roi) { roi.GenCircle(p1, a); });
  Roi("VemROI::GenTorus", [&](VemROI& roi) { roi.GenTorus(p1, a, b, c, d); });
  Roi("VemROI::GenRect2", [&](VemROI& roi) { roi.GenRect2(p1, a, b, c); });
  Roi("VemROI::GenLine", [&](VemROI& roi) { roi.GenLine(p1, p2); });
  Roi("VemROI::GenEllipse", [&](VemROI& roi) { roi.GenEllipse(p1, a, b, c); });
  Roi("VemROI::GenArc", [&](VemROI& roi) { roi.GenArc(p1, a, b, c); });
  Roi("VemROI::GenPolygon", [&](VemROI& roi) { roi.GenPolygon(rows, cols); });
  Roi("VemROI::GenPolygon", [&](VemROI& roi) { roi.GenPolygon(points); });
  Roi("VemROI::GenIrregular", [&](VemROI& roi) { roi.GenIrregular(points); });
  Roi("VemROI::GenMask", [&](VemROI& roi) { roi.GenMask(rows, cols, rows, mode, 5); });
  Roi("VemROI::GenMask", [&](VemROI& roi) { roi.GenMask(contours, mode, count); });

  using O = VemOverlay;
  Overlay("VemOverlay::GenArrowLine", [&](O& o) { o.GenArrowLine(p1, p2); });
  Overlay("VemOverlay::GenLine", [&](O& o) { o.GenLine(p1, p2); });
  Overlay("VemOverlay::GenRect1", [&](O& o) { o.GenRect1(p1, p2); });
  Overlay("VemOverlay::GenRakeRect1", [&](O& o) { o.GenRakeRect1(p1, p2, mode, count); });
  Overlay("VemOverlay::GenCircle", [&](O& o) { o.GenCircle(p1, a); });
  Overlay("VemOverlay::GenEllipse", [&](O& o) { o.GenEllipse(p1, a, b, c); });
  Overlay("VemOverlay::GenPolygon", [&](O& o) { o.GenPolygon(points); });
  Overlay("VemOverlay::GenPolyLine", [&](O& o) { o.GenPolyLine(points); });
  Overlay("VemOverlay::GenRect2", [&](O& o) { o.GenRect2(p1, a, b, c); });
  Overlay("VemOverlay::GenRakeRect2", [&](O& o) { o.GenRakeRect2(p1, a, b, c, mode, count); });
  Overlay("VemOverlay::GenTorus", [&](O& o) { o.GenTorus(p1, a, b, c, d); });
  Overlay("VemOverlay::GenSpokeTorus", [&](O& o) { o.GenSpokeTorus(p1, a, b, c, d, mode, count); });
  Overlay("VemOverlay::GenArc", [&](O& o) { o.GenArc(p1, a, b, c); });
  Overlay("VemOverlay::GenIrregular", [&](O& o) { o.GenIrregular(points); });
}

void AgreeOnRest() {
  const VemPoint p1 = Point();
  const VemPoint p2 = Point();
  const VemLine line(p1, p2);
  // Points that are dropped leave the origin, where they may have been anyhow.
  Count("VemLine::VemLine", p1.x == p2.x && p1.y == p2.y);
  static_cast<void>(line);

  const int a = Integer() & 7;
  const int b = Integer() & 7;
  int values[64] = {};
  VemMorphStructure structure;
  const auto kind = static_cast<VemMorphStructureType>(Integer());
  int* const table = kind == VemMorphStructureCustom ? values : nullptr;
  Count("VemMorphStructure::CreateElement",
        structure.CreateElement(a, b, Integer(), Integer(), kind, table) != 0);

  unsigned char bytes[4096] = {};
  VemImage image;
  const auto type = static_cast<VemImageType>(Integer());
  const bool taken = image.CreateImage(bytes, Integer(), a, b, Integer(), type);
  Count("VemImage::CreateImage", !taken || type < 0 || type > 6);

  VemVarArray rows = Integers(a & 3);
  VemVarArray cols = Integers(b & 3);
  const int width = Integer();
  VemRegion region(width, 4, rows, cols, rows);
  Count("VemRegion::VemRegion", region.Height() == 0);
  VemPointArray points = Points();
  VemRegion ofPoints(width, 4, points);
  Count("VemRegion::VemRegion", ofPoints.Height() == 0);
}

// An array shows by its elements what was done.
void AgreeOnIndexes() {
  VemPointArray points = Points();
  const int length = points.Length();
  const int index = Integer();
  const VemPoint mark(77, 78);
  VemPoint point = mark;
  points.Insert(index, point);
  Count("VemPointArray::Insert", points.Length() == length);
  const int grown = points.Length();
  points.Remove(index);
  Count("VemPointArray::Remove", points.Length() == grown);
  VemPoint read = mark;
  points.Select(index, &read);
  Count("VemPointArray::Select", read.x == 77);
  // A reference into the first page is the invalid one.
  const auto place = reinterpret_cast<std::uintptr_t>(&points[index]);
  Count("VemPointArray::operator[]", place < 4096);
}

// Each in a child, which the mask of a vertical line ends.
int CountFaults() {
  const double kPlaces[] = {-3.5, -0.5, 0, 0.9, 1, 3.1, 3.9};
  int faults = 0;
  for (const double x1 : kPlaces) {
    for (const double x2 : kPlaces) {
      for (const double y1 : {-5.0, 2.0}) {
        const int status = InChild([=] {
          VemROI roi;
          VemPoint p1(x1, y1);
          VemPoint p2(x2, -3);
          roi.GenLine(p1, p2);
          VemVarArray runs[3];
          int size = 0;
          roi.GetMask(&runs[0], &runs[1], &runs[2], &size, &size);
        });
        if (WIFSIGNALED(status) && WTERMSIG(status) == SIGFPE) ++faults;
      }
    }
  }
  return faults;
}

}  // namespace

int main(int argc, char**) {
  if (argc > 1) {
    std::printf("%d\n", CountFaults());
    return 0;
  }
  for (int i = 0; i < 5000; ++i) {
    AgreeOnShapes();
    AgreeOnRest();
    AgreeOnIndexes();
  }
  for (const auto& count : g_counts) std::printf("%s %ld\n", count.first.c_str(), count.second);
  return 0;
}
