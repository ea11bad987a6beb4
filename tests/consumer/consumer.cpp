#include <cstdio>

#include "VemData.h"

int main() {
  VemPoint corner(10, 20), opposite(12, 22);
  VemROI roi;
  roi.GenRect1(corner, opposite);
  VemVarArray rows, firstColumns, lastColumns;
  int width = 0, height = 0;
  roi.GetMask(&rows, &firstColumns, &lastColumns, &width, &height);
  std::printf("%d runs on %d x %d\n", rows.Length(), width, height);
  return rows.Length() == 3 && width == 13 && height == 23 ? 0 : 1;
}
