// Writes the pictures of the documentation:
//
//     VemPictures <folder>

#include <cstdio>
#include <exception>

#include "Pictures.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: VemPictures <folder>\n");
    return 2;
  }
  try {
    DrawShapes(argv[1]);
    DrawOwning(argv[1]);
    DrawCoordinates(argv[1]);
    DrawRegions(argv[1]);
    DrawOverlays(argv[1]);
    DrawStrides(argv[1]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return 0;
}
