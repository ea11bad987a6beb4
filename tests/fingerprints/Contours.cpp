#include <cstddef>

#include "fingerprints/Samples.h"

namespace {

void Append(VemContourArray& contours, VemPointArray& points) {
  VemContour contour;
  contour.FromPointArray(points);
  contours.Append(contour);
}

/// A point on the canvas, or up to a reach beyond its edges.
VemPoint MakePoint(Numbers& numbers, cv::Size canvas, int reachX, int reachY) {
  const double x = numbers.Fraction(-reachX, canvas.width - 1 + reachX);
  const double y = numbers.Fraction(-reachY, canvas.height - 1 + reachY);
  return VemPoint(x, y);
}

int MakeCount(Numbers& numbers) {
  const int die = numbers.Between(1, 100);
  return die <= 90 ? numbers.Between(1, 12) : die <= 99 ? numbers.Between(13, 40) : 200;
}

void MakeRandom(Numbers& numbers, cv::Size canvas, int reachX, int reachY,
                VemContourArray& contours) {
  for (int count = numbers.Between(1, 4); count > 0; --count) {
    VemPointArray points;
    for (int rest = MakeCount(numbers); rest > 0; --rest) {
      VemPoint point = MakePoint(numbers, canvas, reachX, reachY);
      points.Append(point);
    }
    Append(contours, points);
  }
}

/// Every `step`th of sixteen directions: a ring, or a star that crosses itself.
VemPointArray MakeStar(VemPoint center, int radiusX, int radiusY, int step) {
  constexpr int kCount = 16;
  const int across[kCount] = {16, 15, 11, 6, 0, -6, -11, -15, -16, -15, -11, -6, 0, 6, 11, 15};
  VemPointArray points;
  int direction = 0;
  do {
    const int down = (direction + 4) % kCount;
    VemPoint point = center;
    point.x += static_cast<double>(across[direction] * radiusX) / 16;
    point.y += static_cast<double>(across[down] * radiusY) / 16;
    points.Append(point);
    direction = (direction + step) % kCount;
  } while (direction != 0);
  return points;
}

VemPointArray MakeCollinear(Numbers& numbers, VemPoint start) {
  const int dx = numbers.Between(-5, 5);
  const int dy = numbers.Between(-5, 5);
  VemPointArray points;
  for (int count = numbers.Between(1, 8); count > 0; --count) {
    const int steps = numbers.Between(-9, 9);
    VemPoint point(start.x + steps * dx, start.y + steps * dy);
    points.Append(point);
  }
  return points;
}

/// A chain that goes back the way it came, from one of its points on.
VemPointArray MakeSpike(Numbers& numbers, cv::Size canvas) {
  VemPointArray points;
  for (int count = numbers.Between(2, 8); count > 0; --count) {
    VemPoint point = MakePoint(numbers, canvas, 9, 9);
    points.Append(point);
  }
  for (int i = points.Length() - 2; i >= numbers.Between(0, 3); --i) {
    VemPoint point = points[i];
    points.Append(point);
  }
  return points;
}

VemPointArray MakeRepeated(Numbers& numbers, cv::Size canvas) {
  VemPointArray points;
  for (int count = numbers.Between(1, 8); count > 0; --count) {
    VemPoint point = MakePoint(numbers, canvas, 9, 9);
    for (int times = numbers.Between(1, 4); times > 0; --times) points.Append(point);
  }
  return points;
}

/// Upright and level edges alone.
VemPointArray MakeStairs(Numbers& numbers, VemPoint corner) {
  VemPointArray points;
  for (int count = numbers.Between(1, 8); count > 0; --count) {
    corner.x += numbers.Between(-9, 9);
    points.Append(corner);
    corner.y += numbers.Between(-9, 9);
    points.Append(corner);
  }
  return points;
}

template <typename T>
void Scatter(Numbers& numbers, int grain, int density, cv::Mat& raster) {
  for (int y = 0; y < raster.rows; y += grain) {
    for (int x = 0; x < raster.cols; x += grain) {
      if (numbers.Between(1, 100) > density) continue;
      const T value = static_cast<T>(numbers.Between(1, 100));
      for (int row = y; row < y + grain && row < raster.rows; ++row) {
        for (int col = x; col < x + grain && col < raster.cols; ++col) {
          raster.ptr<T>(row)[col] = value;
        }
      }
    }
  }
}

}  // namespace

cv::Size MakeCanvas(Numbers& numbers) {
  const int die = numbers.Between(1, 1000);
  const int largest = die <= 900 ? 60 : die <= 998 ? 200 : 2000;
  const int width = numbers.Between(1, largest);
  const int height = numbers.Between(1, largest);
  return cv::Size(width, height);
}

void MakeInside(Numbers& numbers, cv::Size canvas, VemContourArray& contours) {
  MakeRandom(numbers, canvas, 0, 0, contours);
}

void MakeCrossing(Numbers& numbers, cv::Size canvas, VemContourArray& contours) {
  MakeRandom(numbers, canvas, canvas.width, canvas.height, contours);
}

void MakeFar(Numbers& numbers, cv::Size canvas, VemContourArray& contours) {
  for (int count = numbers.Between(1, 2); count > 0; --count) {
    const int reach = (1 << numbers.Between(6, 15)) - 1;
    VemPointArray points;
    for (int rest = numbers.Between(2, 6); rest > 0; --rest) {
      const int used = numbers.OneIn(2) ? reach : 0;
      VemPoint point = MakePoint(numbers, canvas, used, used);
      points.Append(point);
    }
    Append(contours, points);
  }
}

void MakeNested(Numbers& numbers, cv::Size canvas, VemContourArray& contours) {
  const VemPoint center = MakePoint(numbers, canvas, 9, 9);
  int radiusX = numbers.Between(0, canvas.width);
  int radiusY = numbers.Between(0, canvas.height);
  for (int level = numbers.Between(1, 5); level > 0; --level) {
    VemPointArray points = MakeStar(center, radiusX, radiusY, numbers.Between(1, 8));
    Append(contours, points);
    radiusX = numbers.Between(0, radiusX);
    radiusY = numbers.Between(0, radiusY);
  }
}

void MakeCrooked(Numbers& numbers, cv::Size canvas, VemContourArray& contours) {
  for (int count = numbers.Between(0, 4); count > 0; --count) {
    VemPoint start = MakePoint(numbers, canvas, 9, 9);
    VemPointArray points;
    switch (numbers.Between(0, 5)) {
      case 0:
        points = MakeCollinear(numbers, start);
        break;
      case 1:
        points = MakeSpike(numbers, canvas);
        break;
      case 2:
        points = MakeRepeated(numbers, canvas);
        break;
      case 3:
        points = MakeStairs(numbers, start);
        break;
      case 4:
        points.Append(start);
        break;
      default:
        break;
    }
    Append(contours, points);
  }
}

void MakePoints(Numbers& numbers, cv::Size canvas, VemPointArray& points) {
  for (int count = numbers.Between(1, numbers.OneIn(20) ? 400 : 40); count > 0; --count) {
    VemPoint point = MakePoint(numbers, canvas, canvas.width / 8, canvas.height / 8);
    points.Append(point);
  }
}

cv::Mat MakeSpots(Numbers& numbers, cv::Size canvas) {
  const int types[] = {CV_8UC1, CV_8UC1, CV_16SC1, CV_32SC1, CV_32FC1, CV_64FC1};
  const int border = numbers.OneIn(4) ? 3 : 0;
  cv::Mat raster(canvas.height + border, canvas.width + border, types[numbers.Between(0, 5)],
                 cv::Scalar(0));
  const int grain = 1 << numbers.Between(0, 4);
  const int density = numbers.Between(0, 100);
  switch (raster.depth()) {
    case CV_8U:
      Scatter<unsigned char>(numbers, grain, density, raster);
      break;
    case CV_16S:
      Scatter<short>(numbers, grain, density, raster);
      break;
    case CV_32S:
      Scatter<int>(numbers, grain, density, raster);
      break;
    case CV_32F:
      Scatter<float>(numbers, grain, density, raster);
      break;
    default:
      Scatter<double>(numbers, grain, density, raster);
  }
  return raster(cv::Rect(border, border, canvas.width, canvas.height));
}
