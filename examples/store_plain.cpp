// A store of 10,000 regions: how many differ, which is the largest, how many pixels all have. The
// same as store.cpp, with the classes alone.
#include <cstdio>
#include <set>
#include <vector>

#include "VemROI.h"
#include "VemRegion.h"
#include "VemRegionArray.h"

namespace {

// Canvas and runs as a list, to tell regions apart by.
std::vector<long> KeyOf(VemRegion& region) {
  VemVarArray rows, firstColumns, lastColumns;
  region.GetRegionRuns(&rows, &firstColumns, &lastColumns);
  std::vector<long> key = {region.Width(), region.Height()};
  for (int i = 0; i < rows.Length(); ++i) {
    key.push_back(rows[i].L());
    key.push_back(firstColumns[i].L());
    key.push_back(lastColumns[i].L());
  }
  return key;
}

}  // namespace

int main() {
  VemRegionArray store;
  for (int i = 0; i < 10000; ++i) {
    VemROI roi;
    VemPoint center(20 + i % 17, 20 + i % 5);
    roi.GenCircle(center, 4 + i % 7);
    VemVarArray rows, firstColumns, lastColumns;
    int width = 0, height = 0;
    if (!roi.GetMask(&rows, &firstColumns, &lastColumns, &width, &height)) return 1;
    VemRegion region(width, height, rows, firstColumns, lastColumns);
    store.Append(region);
  }

  std::set<std::vector<long>> different;
  long largest = 0, sum = 0;
  int place = -1;
  for (int i = 0; i < store.Length(); ++i) {
    VemRegion region = store[i];
    different.insert(KeyOf(region));
    VemVarArray rows, firstColumns, lastColumns;
    region.GetRegionRuns(&rows, &firstColumns, &lastColumns);
    long area = 0;
    for (int j = 0; j < rows.Length(); ++j) {
      area += lastColumns[j].L() - firstColumns[j].L() + 1;
    }
    sum += area;
    if (area > largest) {
      largest = area;
      place = i;
    }
  }
  std::printf("%d regions, %d different, %ld pixels\n", store.Length(),
              static_cast<int>(different.size()), sum);
  std::printf("the largest is region %d, of %ld pixels on %dx%d\n", place, largest,
              store[place].Width(), store[place].Height());
}
