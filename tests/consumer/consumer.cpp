#include <cstdio>

#include "VemData.h"
#include "vem/value.h"

int main() {
  VemPoint corner(10, 20), opposite(12, 22);
  VemROI roi;
  roi.GenRect1(corner, opposite);
  VemVarArray rows, firstColumns, lastColumns;
  int width = 0, height = 0;
  roi.GetMask(&rows, &firstColumns, &lastColumns, &width, &height);
  std::printf("%d runs on %d x %d\n", rows.Length(), width, height);
  const bool plain = rows.Length() == 3 && width == 13 && height == 23;
  const bool companion = vem::get<int>(rows[0]) == 20 && vem::get_or(VemVar("x"), 7) == 7;
  return plain && companion ? 0 : 1;
}
