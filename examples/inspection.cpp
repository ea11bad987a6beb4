// An inspection: which of the measured points lie on a part and off its bore, and what a display is
// to show of it. The same as inspection_plain.cpp, with the companions.
#include <iostream>

#include "VemOverlayPath.h"
#include "VemPointArray.h"
#include "vem/vem.h"

int main() {
  const VemROI part = vem::rect2({120, 80}, 200, 40, 30);
  const vem::pixel_set bore(vem::region_of(vem::circle({150, 62}, 12)));
  const vem::pixel_set solid = vem::pixel_set(vem::region_of(part)) - bore;

  VemPointArray measured;
  for (int i = 0; i < 8; ++i) vem::append(measured, {40.0 + 22 * i, 126 - 12.5 * i});

  auto shown = vem::to<VemOverlayPath>({vem::with_pen(vem::overlay_of(part), 0, 255, 0, 2)});
  int good = 0;
  for (const VemPoint& point : measured) {
    const bool onPart = solid.contains(point);
    good += onPart;
    const auto mark = vem::point<VemOverlay>(point);
    vem::append(shown, vem::with_pen(mark, onPart ? 0 : 255, onPart ? 255 : 0, 0));
    std::cout << point << " is " << (onPart ? "on the part" : "off") << '\n';
  }
  std::cout << good << " of " << measured.Length() << " points on the part, " << shown.Length()
            << " overlays\n";
}
