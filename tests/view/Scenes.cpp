#include "Scenes.h"

#include "VemContourArray.h"
#include "VemOverlayPath.h"
#include "vem/view.h"

namespace {

using vem::draw;
using vem::draw_style;

// A pen of its own and a brush that is set, but leaves shapes empty.
VemOverlay Outlined(long width = 2) {
  VemOverlay overlay;
  overlay.SetPen(60, 215, 255, width);
  overlay.SetBrush(235, 205, 60, 0);
  return overlay;
}

VemOverlay Filled(long width = 2) {
  VemOverlay overlay = Outlined(width);
  overlay.SetBrush(235, 205, 60, 1);
  return overlay;
}

const draw_style kLine(90, 220, 110, 2);
const draw_style kFilled(90, 220, 110, 1, true);
const draw_style kInside(90, 220, 110, 0, true);

VemPoint At(double x, double y) { return VemPoint(x, y); }
VemPoint middle(36.25, 31.5);

const std::vector<std::pair<double, double>> kStar = {
    {36, 6}, {50, 54}, {10, 22}, {62, 22}, {22, 54}};
const std::vector<std::pair<double, double>> kZigzag = {
    {8, 50}, {20, 12.5}, {33.5, 48}, {47, 10}, {64, 40}};

// A scene of one overlay, which `generate` makes.
template <typename Generate>
Scene OverlayScene(const std::string& name, VemOverlay overlay, Generate generate) {
  return {name, [=](cv::Mat& picture) {
            VemOverlay generated(overlay);
            generate(generated);
            draw(picture, generated);
          }};
}

template <typename Generate>
Scene RoiScene(const std::string& name, const draw_style& style, Generate generate) {
  return {name, [=](cv::Mat& picture) {
            VemROI roi;
            generate(roi);
            draw(picture, roi, style);
          }};
}

// An image of 20 by 12: a ramp in each channel.
VemImage Ramp(int channels) {
  std::vector<unsigned char> pixels;
  for (int row = 0; row < 12; ++row) {
    for (int column = 0; column < 20; ++column) {
      const int ramps[] = {column * 13, row * 21, 255 - column * 13, column * 12 + row};
      for (int c = 0; c < channels; ++c) pixels.push_back(static_cast<unsigned char>(ramps[c]));
    }
  }
  return VemImage(pixels.data(), 0, 12, 20, channels, VemImageType8U);
}

void AddLines(std::vector<Scene>& scenes) {
  scenes.push_back(OverlayScene("overlay_point", Outlined(1),
                                [](VemOverlay& overlay) { overlay.GenPoint(middle); }));
  scenes.push_back(OverlayScene("overlay_line", Outlined(3), [](VemOverlay& overlay) {
    VemPoint from = At(6, 12), to = At(66, 50.5);
    overlay.GenLine(from, to);
  }));
  scenes.push_back(OverlayScene("overlay_line_thin", Outlined(1), [](VemOverlay& overlay) {
    VemPoint from = At(-40, 70), to = At(90, 10);
    overlay.GenLine(from, to);
  }));
  scenes.push_back(OverlayScene("overlay_arrow", Outlined(3), [](VemOverlay& overlay) {
    VemPoint from = At(8, 54), to = At(62, 10);
    overlay.GenArrowLine(from, to);
  }));
  scenes.push_back(OverlayScene("overlay_arrow_short", Outlined(3), [](VemOverlay& overlay) {
    VemPoint from = At(30, 30), to = At(36, 30);
    overlay.GenArrowLine(from, to);
  }));
  scenes.push_back(OverlayScene("overlay_polyline", Filled(3), [](VemOverlay& overlay) {
    overlay.GenPolyLine(PointsOf(kZigzag));
  }));
  scenes.push_back(OverlayScene("overlay_irregular", Filled(1), [](VemOverlay& overlay) {
    overlay.GenIrregular(PointsOf(kZigzag));
  }));
  scenes.push_back(OverlayScene("overlay_arc", Outlined(4),
                                [](VemOverlay& overlay) { overlay.GenArc(middle, 24, -30, 240); }));
}

void AddAreas(std::vector<Scene>& scenes) {
  scenes.push_back(OverlayScene("overlay_polygon", Filled(),
                                [](VemOverlay& overlay) { overlay.GenPolygon(PointsOf(kStar)); }));
  scenes.push_back(OverlayScene("overlay_rect1", Outlined(), [](VemOverlay& overlay) {
    VemPoint from = At(12, 10), to = At(60.5, 50);
    overlay.GenRect1(from, to);
  }));
  scenes.push_back(OverlayScene("overlay_rect2", Filled(),
                                [](VemOverlay& overlay) { overlay.GenRect2(middle, 52, 22, 30); }));
  scenes.push_back(OverlayScene("overlay_circle", Filled(1),
                                [](VemOverlay& overlay) { overlay.GenCircle(middle, 24.5); }));
  scenes.push_back(OverlayScene("overlay_circle_cut", Filled(5), [](VemOverlay& overlay) {
    VemPoint center = At(2, 60);
    overlay.GenCircle(center, 40);
  }));
  scenes.push_back(OverlayScene("overlay_ellipse", Outlined(), [](VemOverlay& overlay) {
    overlay.GenEllipse(middle, 30, 14, 25);
  }));
  scenes.push_back(OverlayScene("overlay_torus", Filled(), [](VemOverlay& overlay) {
    overlay.GenTorus(middle, 12, 28, 20, 250);
  }));
  scenes.push_back(OverlayScene("overlay_torus_whole", Filled(), [](VemOverlay& overlay) {
    overlay.GenTorus(middle, 12, 28, 20, 360);
  }));
}

void AddProbes(std::vector<Scene>& scenes) {
  for (int mode = 0; mode <= 3; ++mode) {
    scenes.push_back(OverlayScene("overlay_rake_rect1_mode" + std::to_string(mode), Outlined(1),
                                  [mode](VemOverlay& overlay) {
                                    VemPoint from = At(8, 8), to = At(64, 54);
                                    overlay.GenRakeRect1(from, to, mode, 4);
                                  }));
  }
  scenes.push_back(OverlayScene("overlay_rake_rect2", Filled(1), [](VemOverlay& overlay) {
    overlay.GenRakeRect2(middle, 48, 32, 30, 2, 4);
  }));
  for (int mode = 4; mode <= 5; ++mode) {
    scenes.push_back(OverlayScene(
        "overlay_spokes_mode" + std::to_string(mode), Outlined(1),
        [mode](VemOverlay& overlay) { overlay.GenSpokeTorus(middle, 9, 29, 15, 270, mode, 9); }));
  }
}

void AddTexts(std::vector<Scene>& scenes) {
  scenes.push_back(OverlayScene("overlay_text", Outlined(), [](VemOverlay& overlay) {
    VemPoint place = At(4, 40);
    VemVar name("Plain");
    VemFont font(name, 11);
    overlay.GenText(place, "12.4 \xc2\xb5m", font);
  }));
  scenes.push_back(OverlayScene("overlay_text_times", Outlined(), [](VemOverlay& overlay) {
    VemPoint place = At(-5, 40);
    VemVar name("Times");
    VemFont font(name, 24);
    font.Weight = 400;
    overlay.GenText(place, "Text", font);
  }));
}

void AddContents(std::vector<Scene>& scenes) {
  for (const int channels : {1, 3, 4}) {
    scenes.push_back(OverlayScene("overlay_image_channels" + std::to_string(channels), Outlined(),
                                  [channels](VemOverlay& overlay) {
                                    VemPoint place = At(20.4, 24.6);
                                    VemImage image = Ramp(channels);
                                    overlay.GenImage(place, image);
                                  }));
  }
  scenes.push_back(OverlayScene("overlay_image_cut", Outlined(1), [](VemOverlay& overlay) {
    VemPoint place = At(-8, 58);
    VemImage image = Ramp(3);
    overlay.GenImage(place, image);
  }));
  const auto blot = [](VemOverlay& overlay) {
    VemRegion region = RegionOf({{-2, 0, 9},
                                 {10, 20, 50},
                                 {11, 18, 52},
                                 {11, 40, 60},
                                 {12, 18, 60},
                                 {20, -5, 8},
                                 {30, 60, 99},
                                 {31, 9, 8}},
                                10, 10);
    overlay.GenRegion(region);
  };
  scenes.push_back(OverlayScene("overlay_region_pen", Outlined(), blot));
  scenes.push_back(OverlayScene("overlay_region_brush", Filled(), blot));
}

void AddPath(std::vector<Scene>& scenes) {
  scenes.push_back({"path", [](cv::Mat& picture) {
                      VemOverlayPath path;
                      VemPoint center = At(24, 24), from = At(10, 10), to = At(50, 50);
                      path.AddCircle(center, -1);  // Refused: nothing is drawn.
                      path.AddRect1(from, to);
                      VemOverlay circle = Filled(3);
                      circle.GenCircle(center, 18);
                      path.AddOverlay(circle);
                      path.AddLine(from, to);
                      draw(picture, path);
                    }});
}

void AddRoundRois(std::vector<Scene>& scenes) {
  scenes.push_back(RoiScene("roi_circle", kFilled, [](VemROI& roi) { roi.GenCircle(middle, 20); }));
  scenes.push_back(
      RoiScene("roi_torus", kFilled, [](VemROI& roi) { roi.GenTorus(middle, 12, 26, 10, 200); }));
  scenes.push_back(RoiScene("roi_torus_whole", kInside,
                            [](VemROI& roi) { roi.GenTorus(middle, 12, 26, 10, 360); }));
  scenes.push_back(
      RoiScene("roi_ellipse", kFilled, [](VemROI& roi) { roi.GenEllipse(middle, 28, 12, 30); }));
  scenes.push_back(
      RoiScene("roi_arc", kFilled, [](VemROI& roi) { roi.GenArc(middle, 22, 45, 200); }));
}

void AddRois(std::vector<Scene>& scenes) {
  scenes.push_back(RoiScene("roi_point", kLine, [](VemROI& roi) { roi.GenPoint(middle); }));
  scenes.push_back(RoiScene("roi_line_upright", kFilled, [](VemROI& roi) {
    VemPoint from = At(30, 6), to = At(30, 50);
    roi.GenLine(from, to);
  }));
  scenes.push_back(RoiScene("roi_rect1", kFilled, [](VemROI& roi) {
    VemPoint from = At(12, 10), to = At(60, 50);
    roi.GenRect1(from, to);
  }));
  scenes.push_back(
      RoiScene("roi_rect2", kInside, [](VemROI& roi) { roi.GenRect2(middle, 50, 24, -20); }));
  scenes.push_back(RoiScene("roi_polygon", kInside, [](VemROI& roi) {
    VemPointArray points = PointsOf(kStar);
    roi.GenPolygon(points);
  }));
  scenes.push_back(RoiScene("roi_polygon_line", kLine, [](VemROI& roi) {
    VemPointArray points = PointsOf(kStar);
    roi.GenPolygon(points);
  }));
  scenes.push_back(RoiScene("roi_irregular", kFilled, [](VemROI& roi) {
    VemPointArray points = PointsOf(kZigzag);
    roi.GenIrregular(points);
  }));
  scenes.push_back(RoiScene("roi_mask", kFilled, [](VemROI& roi) {
    VemVarArray rows, firsts, lasts;
    for (int row = 8; row < 50; ++row) {
      rows.Append(VemVar(row));
      firsts.Append(VemVar(60 - row));
      lasts.Append(VemVar(90 - row));
    }
    roi.GenMask(rows, firsts, lasts, 72, 64);
  }));
}

void AddRegionsAndContours(std::vector<Scene>& scenes) {
  const auto ring = [] {
    std::vector<std::vector<int>> runs;
    for (int row = 10; row < 54; ++row) {
      if (row < 20 || row >= 44) runs.push_back({row, 10, 61});
      if (row >= 20 && row < 44) runs.push_back({row, 10, 24});
      if (row >= 20 && row < 44) runs.push_back({row, 44, 61});
    }
    return RegionOf(runs, 72, 64);
  };
  scenes.push_back({"region_border", [ring](cv::Mat& picture) {
                      draw(picture, ring(), draw_style(190, 110, 255, 3));
                    }});
  scenes.push_back({"region_filled", [ring](cv::Mat& picture) {
                      draw(picture, ring(), draw_style(190, 110, 255, 1, true));
                    }});
  scenes.push_back({"contour", [](cv::Mat& picture) {
                      draw(picture, ContourOf(kZigzag), draw_style(50, 150, 255, 2));
                    }});
  scenes.push_back({"contour_filled", [](cv::Mat& picture) {
                      draw(picture, ContourOf(kStar), draw_style(50, 150, 255, 0, true));
                    }});
  scenes.push_back({"contours_filled", [](cv::Mat& picture) {
                      VemContourArray contours;
                      VemContour outer = ContourOf({{8, 8}, {64, 8}, {64, 56}, {8, 56}});
                      VemContour inner = ContourOf({{24, 20}, {48, 20}, {36, 44}});
                      contours.Append(outer);
                      contours.Append(inner);
                      draw(picture, contours, draw_style(50, 150, 255, 1, true));
                    }});
  scenes.push_back({"points", [](cv::Mat& picture) {
                      draw(picture, PointsOf(kZigzag), draw_style(50, 150, 255, 2));
                    }});
}

std::vector<Scene> AllScenes() {
  std::vector<Scene> scenes;
  AddLines(scenes);
  AddAreas(scenes);
  AddProbes(scenes);
  AddTexts(scenes);
  AddContents(scenes);
  AddPath(scenes);
  AddRoundRois(scenes);
  AddRois(scenes);
  AddRegionsAndContours(scenes);
  return scenes;
}

}  // namespace

const std::vector<Scene>& Scenes() {
  static const std::vector<Scene> scenes = AllScenes();
  return scenes;
}

bool HasText(const Scene& scene) { return scene.name.find("_text") != std::string::npos; }

cv::Mat Ground() {
  cv::Mat ground(64, 72, CV_8UC3);
  for (int y = 0; y < ground.rows; ++y) {
    for (int x = 0; x < ground.cols; ++x) {
      ground.at<cv::Vec3b>(y, x) = cv::Vec3b::all(static_cast<unsigned char>(40 + x));
    }
  }
  return ground;
}

VemPointArray PointsOf(const std::vector<std::pair<double, double>>& points) {
  VemPointArray array;
  for (const auto& [x, y] : points) {
    VemPoint point(x, y);
    array.Append(point);
  }
  return array;
}

VemContour ContourOf(const std::vector<std::pair<double, double>>& points) {
  VemContour contour;
  VemPointArray array = PointsOf(points);
  contour.FromPointArray(array);
  return contour;
}

VemRegion RegionOf(const std::vector<std::vector<int>>& runs, int width, int height) {
  VemVarArray rows, firsts, lasts;
  for (const std::vector<int>& run : runs) {
    rows.Append(VemVar(run[0]));
    firsts.Append(VemVar(run[1]));
    lasts.Append(VemVar(run[2]));
  }
  return VemRegion(width, height, rows, firsts, lasts);
}

VemROI Rect1(double x1, double y1, double x2, double y2) {
  VemROI roi;
  VemPoint p1(x1, y1), p2(x2, y2);
  roi.GenRect1(p1, p2);
  return roi;
}

VemROI Circle(double x, double y, double radius) {
  VemROI roi;
  VemPoint center(x, y);
  roi.GenCircle(center, radius);
  return roi;
}
