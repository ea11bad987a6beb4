// A stand-in for a display: builds one overlay path with every kind of element over a picture and
// draws it with the drawing library.
//
//     display
//
// The picture is a plate of parts, six by three. Each part gets the element that an inspection
// would show on it, and the kind's name below. The program writes display.png.

#include <cstdio>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "VemImage.h"
#include "VemOverlayPath.h"
#include "display_scene.h"
#include "vem/view.h"

int main() {
  const VemImage picture = DrawPicture();
  const VemOverlayPath path = BuildPath(picture);
  cv::Mat display;
  cv::cvtColor(picture.Mat(), display, cv::COLOR_GRAY2BGR);
  vem::draw(display, path);
  if (!cv::imwrite("display.png", display)) {
    std::fprintf(stderr, "display: cannot write display.png\n");
    return 1;
  }
  std::printf("%d overlays on a picture of %d x %d\n", path.Length(), picture.Width(),
              picture.Height());
  return 0;
}
