// What it takes to turn each shape into runs, for shapes of about the given size.

#include <benchmark/benchmark.h>

#include "VemROI.h"

namespace {

using Make = void (*)(VemROI& roi, double size);

VemPoint Center(double size) { return VemPoint(size, size); }

void MakeRect1(VemROI& roi, double size) {
  VemPoint p1(size / 2, size / 2);
  VemPoint p2(size * 3 / 2, size * 3 / 2);
  roi.GenRect1(p1, p2);
}

void MakeCircle(VemROI& roi, double size) {
  VemPoint center = Center(size);
  roi.GenCircle(center, size / 2);
}

void MakeTorus(VemROI& roi, double size) {
  VemPoint center = Center(size);
  roi.GenTorus(center, size / 4, size / 2, 30, 200);
}

void MakePolygon(VemROI& roi, double size) {
  VemPointArray points;
  const double kStar[][2] = {{0, -1},        {0.23, -0.31}, {0.95, -0.31}, {0.37, 0.12},
                             {0.59, 0.81},   {0, 0.38},     {-0.59, 0.81}, {-0.37, 0.12},
                             {-0.95, -0.31}, {-0.23, -0.31}};
  for (const auto& vertex : kStar) {
    VemPoint point(size + vertex[0] * size / 2, size + vertex[1] * size / 2);
    points.Append(point);
  }
  roi.GenPolygon(points);
}

void MakeIrregular(VemROI& roi, double size) {
  VemPointArray points;
  for (double i = 0; i < size; ++i) {
    VemPoint point(size + i / 2, size - i / 3);
    points.Append(point);
  }
  roi.GenIrregular(points);
}

void MakeRect2(VemROI& roi, double size) {
  VemPoint center = Center(size);
  roi.GenRect2(center, size, size / 2, 30);
}

void MakeLine(VemROI& roi, double size) {
  VemPoint p1(size, size / 2);
  VemPoint p2(size * 1.2, size * 3 / 2);
  roi.GenLine(p1, p2);
}

void MakeEllipse(VemROI& roi, double size) {
  VemPoint center = Center(size);
  roi.GenEllipse(center, size / 2, size / 4, 30);
}

void MakeArc(VemROI& roi, double size) {
  VemPoint center = Center(size);
  roi.GenArc(center, size / 2, 30, 200);
}

void GetMask(benchmark::State& state, Make make) {
  VemROI roi;
  make(roi, static_cast<double>(state.range(0)));
  VemVarArray rows;
  VemVarArray firstColumns;
  VemVarArray lastColumns;
  int width = 0;
  int height = 0;
  for (auto _ : state) {
    roi.GetMask(&rows, &firstColumns, &lastColumns, &width, &height);
    benchmark::ClobberMemory();
  }
  state.counters["runs"] = rows.Length();
}

#define VEM_BENCH_SHAPE(shape)                   \
  BENCHMARK_CAPTURE(GetMask, shape, Make##shape) \
      ->ArgName("size")                          \
      ->Arg(64)                                  \
      ->Arg(512)                                 \
      ->Unit(benchmark::kMicrosecond)

VEM_BENCH_SHAPE(Rect1);
VEM_BENCH_SHAPE(Circle);
VEM_BENCH_SHAPE(Torus);
VEM_BENCH_SHAPE(Polygon);
VEM_BENCH_SHAPE(Irregular);
VEM_BENCH_SHAPE(Rect2);
VEM_BENCH_SHAPE(Line);
VEM_BENCH_SHAPE(Ellipse);
VEM_BENCH_SHAPE(Arc);

}  // namespace
