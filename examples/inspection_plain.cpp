// An inspection: which of the measured points lie on a part and off its bore, and what a display is
// to show of it. The same as inspection.cpp, with the classes alone.
#include <cstdio>

#include "VemOverlayPath.h"
#include "VemPointArray.h"
#include "VemROI.h"
#include "VemRegion.h"

namespace {

bool Contains(VemRegion& region, const VemPoint& point) {
  VemVarArray rows, firstColumns, lastColumns;
  region.GetRegionRuns(&rows, &firstColumns, &lastColumns);
  for (int i = 0; i < rows.Length(); ++i) {
    if (rows[i].L() == static_cast<long>(point.y) &&
        firstColumns[i].L() <= static_cast<long>(point.x) &&
        lastColumns[i].L() >= static_cast<long>(point.x)) {
      return true;
    }
  }
  return false;
}

bool RegionOf(const VemROI& roi, VemRegion* region) {
  VemVarArray rows, firstColumns, lastColumns;
  int width = 0, height = 0;
  if (!roi.GetMask(&rows, &firstColumns, &lastColumns, &width, &height)) return false;
  *region = VemRegion(width, height, rows, firstColumns, lastColumns);
  return true;
}

}  // namespace

int main() {
  VemROI part, bore;
  VemPoint partCenter(120, 80), boreCenter(150, 62);
  part.GenRect2(partCenter, 200, 40, 30);
  if (part.ROIType() == VemROINone) return 1;
  bore.GenCircle(boreCenter, 12);
  if (bore.ROIType() == VemROINone) return 1;
  VemRegion partRegion, boreRegion;
  if (!RegionOf(part, &partRegion) || !RegionOf(bore, &boreRegion)) return 1;

  VemPointArray measured;
  for (int i = 0; i < 8; ++i) {
    VemPoint point(40 + 22 * i, 126 - 12.5 * i);
    measured.Append(point);
  }

  VemOverlayPath shown;
  VemOverlay outline;
  outline.FromROI(part);
  outline.SetPen(0, 255, 0, 2);
  shown.AddOverlay(outline);
  int good = 0;
  for (int i = 0; i < measured.Length(); ++i) {
    VemPoint point = measured[i];
    const bool onPart = Contains(partRegion, point) && !Contains(boreRegion, point);
    if (onPart) ++good;
    VemOverlay mark;
    mark.GenPoint(point);
    mark.SetPen(onPart ? 0 : 255, onPart ? 255 : 0, 0, 1);
    shown.AddOverlay(mark);
    std::printf("(%g, %g) is %s\n", point.x, point.y, onPart ? "on the part" : "off");
  }
  std::printf("%d of %d points on the part, %d overlays\n", good, measured.Length(),
              shown.Length());
  return 0;
}
