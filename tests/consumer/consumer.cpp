#include <cstdio>
#include <cstring>

#include "VemData.h"
#include "vem/value.h"

static_assert(VEM_DATA_VERSION / 10000 == VEM_DATA_VERSION_MAJOR &&
                  VEM_DATA_VERSION / 100 % 100 == VEM_DATA_VERSION_MINOR &&
                  VEM_DATA_VERSION % 100 == VEM_DATA_VERSION_PATCH,
              "three numbers in one");

// The text says what the numbers say, and what the package that was found says.
bool VersionsAgree() {
  char text[32];
  std::snprintf(text, sizeof(text), "%d.%d.%d", VEM_DATA_VERSION_MAJOR, VEM_DATA_VERSION_MINOR,
                VEM_DATA_VERSION_PATCH);
  return std::strcmp(text, VEM_DATA_VERSION_TEXT) == 0 && std::strcmp(text, PACKAGE_VERSION) == 0;
}

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
  return plain && companion && VersionsAgree() ? 0 : 1;
}
