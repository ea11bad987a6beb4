// Shapes to masks, beside OpenCV's drawing and beside the runs of a circle, the plainest shape.

#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>

#include <opencv2/imgproc.hpp>

#include "IVemROIPara.h"
#include "compare/Compare.h"
#include "compare/Rasters.h"

namespace {

using Contours = std::vector<std::vector<cv::Point>>;

/// What a mask is written into; kept from call to call, as a caller in a loop does.
struct Target {
  VemVarArray rows;
  VemVarArray firstColumns;
  VemVarArray lastColumns;
  VemContourArray contours;
  int width = 0;
  int height = 0;
};

/// Shared by the works of a row, since a copy of a shape does not take a mask's canvas along.
using Shape = std::shared_ptr<IVemROIPara>;

std::size_t Runs(const Shape& shape) {
  static Target target;
  shape->GetMask(&target.rows, &target.firstColumns, &target.lastColumns, &target.width,
                 &target.height);
  return static_cast<std::size_t>(target.rows.Length());
}

std::size_t Outlines(const Shape& shape) {
  static Target target;
  shape->GetMask(&target.contours, &target.width, &target.height);
  return static_cast<std::size_t>(target.contours.Length());
}

/// Numbers from a generator of our own, the same in every run.
class Numbers {
 public:
  int Below(int end) {
    state_ = state_ * 6364136223846793005u + 1442695040888963407u;
    return static_cast<int>((state_ >> 33) % static_cast<std::uint64_t>(end));
  }

 private:
  std::uint64_t state_ = 1;
};

std::vector<cv::Point> RandomPolygon(int vertices, int box) {
  Numbers numbers;
  std::vector<cv::Point> polygon;
  for (int i = 0; i < vertices; ++i) {
    const int x = numbers.Below(box);
    polygon.emplace_back(x, numbers.Below(box));
  }
  return polygon;
}

std::vector<cv::Point> Star(int vertices, int box) {
  Numbers numbers;
  std::vector<cv::Point> polygon;
  for (int i = 0; i < vertices; ++i) {
    const double angle = 6.283185307 * i / vertices;
    const double radius = box * (0.2 + 0.0003 * numbers.Below(1000));
    polygon.emplace_back(static_cast<int>(box / 2.0 + radius * std::cos(angle)),
                         static_cast<int>(box / 2.0 + radius * std::sin(angle)));
  }
  return polygon;
}

template <typename Generate>
Shape Generated(Generate generate) {
  const Shape shape = std::make_shared<IVemROIPara>();
  generate(*shape);
  return shape;
}

Shape PolygonShape(const std::vector<cv::Point>& vertices) {
  VemPointArray points;
  for (const cv::Point& p : vertices) {
    VemPoint point(p.x, p.y);
    points.Append(point);
  }
  return Generated([&](IVemROIPara& shape) { shape.GenPolygon(points); });
}

Shape CircleShape(double x, double y, double radius) {
  VemPoint center(x, y);
  return Generated([&](IVemROIPara& shape) { shape.GenCircle(center, radius); });
}

Shape RingShape(double radius, double sweep) {
  VemPoint center(radius + 10, radius + 10);
  return Generated(
      [&](IVemROIPara& shape) { shape.GenTorus(center, radius / 2, radius, 30, sweep); });
}

Shape EllipseShape(double x, double y, double radius) {
  VemPoint center(x, y);
  return Generated([&](IVemROIPara& shape) { shape.GenEllipse(center, radius, radius * 0.6, 20); });
}

cv::Mat Drawn(const Contours& contours, int size) {
  cv::Mat raster(size, size, CV_8UC1, cv::Scalar(0));
  cv::drawContours(raster, contours, -1, cv::Scalar(255), cv::FILLED, 8);
  return raster;
}

/// Runs as plain lists.
struct IntTriple {
  std::vector<int> rows;
  std::vector<int> firstColumns;
  std::vector<int> lastColumns;

  void Append(int row, int first, int last) {
    rows.push_back(row);
    firstColumns.push_back(first);
    lastColumns.push_back(last);
  }
};

// The road over a raster, as fast as one writes it: drawn, then searched by memchr for 255 and 0.
std::size_t RasterRuns(const Contours& contours, int size, std::size_t expected) {
  const cv::Mat raster = Drawn(contours, size);
  IntTriple runs;
  runs.rows.reserve(expected);
  runs.firstColumns.reserve(expected);
  runs.lastColumns.reserve(expected);
  for (int row = 0; row < raster.rows; ++row) {
    const unsigned char* const begin = raster.ptr(row);
    const unsigned char* const end = begin + raster.cols;
    for (const unsigned char* pixel = begin; pixel != end;) {
      const void* const first = std::memchr(pixel, 255, static_cast<std::size_t>(end - pixel));
      if (first == nullptr) break;
      pixel = static_cast<const unsigned char*>(first);
      const void* const behind = std::memchr(pixel, 0, static_cast<std::size_t>(end - pixel));
      const int column = static_cast<int>(pixel - begin);
      pixel = behind == nullptr ? end : static_cast<const unsigned char*>(behind);
      runs.Append(row, column, static_cast<int>(pixel - begin) - 1);
    }
  }
  return runs.rows.size();
}

void AddPolygons(const Setting& setting, std::vector<Row>& rows) {
  struct Size {
    int box;
    double bar;
  };
  for (const Size size : {Size{100, 1.5}, Size{1000, 3.5}, Size{4000, 12.0}}) {
    if (setting.small && size.box > 100) continue;
    for (const bool star : {true, false}) {
      const Contours contours = {star ? Star(40, size.box) : RandomPolygon(40, size.box)};
      const Shape shape = PolygonShape(contours[0]);
      const std::size_t runs = Runs(shape);
      rows.push_back(
          {"polygon to runs",
           std::string(star ? "star" : "random") + ", 40 vertices in " + std::to_string(size.box) +
               "²",
           [=] { Keep(Runs(shape)); },
           {{"raster road", [=] { Keep(RasterRuns(contours, size.box + 1, runs)); }, size.bar}},
           nullptr});
    }
  }
  const int crowd = setting.small ? 100 : 10000;
  const Contours contours = {RandomPolygon(crowd, 1000)};
  const Shape shape = PolygonShape(contours[0]);
  rows.push_back({"polygon to runs",
                  "random, " + std::to_string(crowd) + " vertices in 1000²",
                  [=] { Keep(Runs(shape)); },
                  {{"drawContours", [=] { Keep(Drawn(contours, 1001).total()); }, 2.4}},
                  nullptr});
}

void AddRound(const std::string& work, const std::string& input, Work ours, double radius,
              double bar, std::vector<Row>& rows) {
  const Shape circle = CircleShape(radius + 10, radius + 10, radius);
  rows.push_back(
      {work, input, ours, {{"a circle's runs", [=] { Keep(Runs(circle)); }, bar}}, nullptr});
}

void AddRoundShapes(const Setting& setting, std::vector<Row>& rows) {
  for (const double radius : {100.0, 1000.0}) {
    if (setting.small && radius > 100) continue;
    const std::string size = "r = " + std::to_string(static_cast<int>(radius));
    const Shape ring = RingShape(radius, 360);
    const Shape sector = RingShape(radius, 200);
    AddRound(
        "ring to runs", size, [=] { Keep(Runs(ring)); }, radius, 1 / 8.0, rows);
    AddRound(
        "sector to runs", size, [=] { Keep(Runs(sector)); }, radius, 1 / 8.0, rows);
  }
  const double radius = setting.small ? 50 : 1000;
  const std::string size = "r = " + std::to_string(static_cast<int>(radius));
  AddRound(
      "circle to outlines", size,
      [shape = CircleShape(radius + 10, radius + 10, radius)] { Keep(Outlines(shape)); }, radius,
      1 / 10.0, rows);
  AddRound(
      "ellipse to outlines", size,
      [shape = EllipseShape(radius + 10, radius + 10, radius)] { Keep(Outlines(shape)); }, radius,
      1 / 12.0, rows);
}

void AddFar(const std::string& work, const Shape& far, const Shape& near, std::vector<Row>& rows) {
  rows.push_back({work,
                  "r = 10 at (4000, 4000)",
                  [shape = far] { Keep(Outlines(shape)); },
                  {{"at (30, 30)", [shape = near] { Keep(Outlines(shape)); }, 0.5}},
                  nullptr});
}

Shape MaskOf(const Shape& shape) {
  Target target;
  shape->GetMask(&target.rows, &target.firstColumns, &target.lastColumns, &target.width,
                 &target.height);
  return Generated([&](IVemROIPara& mask) {
    mask.GenMask(target.rows, target.firstColumns, target.lastColumns, target.width, target.height);
  });
}

VemContourArray Widened(const Contours& contours) {
  VemContourArray array;
  for (const std::vector<cv::Point>& contour : contours) {
    VemPointArray points;
    for (const cv::Point& p : contour) {
      VemPoint point(p.x, p.y);
      points.Append(point);
    }
    VemContour chain;
    chain.FromPointArray(points);
    array.Append(chain);
  }
  return array;
}

cv::Mat Filled(const Contours& contours, int size) {
  cv::Mat raster(size, size, CV_8UC1, cv::Scalar(0));
  cv::fillPoly(raster, contours, cv::Scalar(255));
  return raster;
}

Row RasterRow(const std::string& input, const Contours& contours, int size, double bar) {
  return {"contours to raster",
          input,
          [array = Widened(contours), size]() mutable {
            Keep(IVemROIPara().ToMAT(array, size, size).total());
          },
          {{"fillPoly", [=] { Keep(Filled(contours, size).total()); }, bar}},
          nullptr};
}

void AddRasters(const Setting& setting, std::vector<Row>& rows) {
  const int size = setting.small ? 64 : 512;
  Contours outlines;
  cv::findContours(NoiseRaster(size, 4, 50), outlines, cv::RETR_CCOMP, cv::CHAIN_APPROX_SIMPLE);
  rows.push_back(
      RasterRow("outlines of noise " + std::to_string(size) + ", grain 4", outlines, size, 0.8));
  for (const int count : {1000, 10000, 100000}) {
    if (setting.small && count > 1000) continue;
    Numbers numbers;
    Contours triangles(static_cast<std::size_t>(count));
    for (std::vector<cv::Point>& triangle : triangles) {
      const cv::Point corner(numbers.Below(1000), numbers.Below(1000));
      for (int i = 0; i < 3; ++i) {
        const cv::Point p(numbers.Below(10), numbers.Below(10));
        triangle.push_back(corner + p);
      }
    }
    Row row = RasterRow(std::to_string(count) + " triangles on 1000²", triangles, 1000, 0);
    row.units = count;
    row.unit = "triangle";
    row.limitNanoseconds = 1000;
    rows.push_back(row);
  }
}

}  // namespace

void AddMaskRows(const Setting& setting, std::vector<Row>& rows) {
  AddPolygons(setting, rows);
  AddRoundShapes(setting, rows);
  AddFar("circle to outlines", CircleShape(4000, 4000, 10), CircleShape(30, 30, 10), rows);
  AddFar("ellipse to outlines", EllipseShape(4000, 4000, 10), EllipseShape(30, 30, 10), rows);
  AddFar("mask to outlines", MaskOf(CircleShape(4000, 4000, 10)), MaskOf(CircleShape(30, 30, 10)),
         rows);
  AddRasters(setting, rows);
}
