// A program that includes vem/vem.h and is linked to the library alone: nothing of OpenCV's.
#include <functional>
#include <iostream>

#include "VemOverlayPath.h"
#include "vem/vem.h"

int main() {
  unsigned char pixel = 7;
  const VemImage image(&pixel, 0, 1, 1, 1, VemImageType8U);
  const auto path = vem::to<VemOverlayPath>(
      {vem::overlay_of(image, {1, 2}), vem::overlay_of(vem::region_of("##"))});
  const bool equal = path == path && std::hash<VemOverlay>()(path[0]) != 0;
  std::cout << path << '\n' << vem::drawing(vem::rect1({1, 1}, {3, 2}));
  return equal && vem::pixel_set(vem::region_of("##")).area() == 2 ? 0 : 1;
}
