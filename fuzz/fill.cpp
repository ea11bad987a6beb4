// Fills closed contours on a canvas, near it and as far away as coordinates go. What must hold:
//
// - the painted raster is, pixel by pixel, what the rule of the fill says;
// - a mask made of the contours has the runs of that raster, and the canvas asked for;
// - coordinates round to the nearest whole number, halves to the even one.

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <opencv2/core.hpp>

#include "ByteReader.h"
#include "IVemROIPara.h"
#include "Require.h"
#include "support/FillReference.h"
#include "support/OutlineReference.h"
#include "support/RunMaskReference.h"
#include "support/Support.h"

namespace {

using IntChain = std::vector<cv::Point>;

// As numbers round that lie halfway between two whole ones; what is none becomes the smallest.
int RoundedToEven(double value) {
  const double whole = std::floor(value);
  const double rest = value - whole;
  const bool up = rest > 0.5 || (rest == 0.5 && std::fmod(whole, 2) != 0);
  return Truncated(up ? whole + 1 : whole);
}

/// Vertices on the canvas, around it, at the ends of 16 and of 32 bits.
class Vertices {
 public:
  Vertices(ByteReader& in, const cv::Size& canvas) : in_(in), canvas_(canvas) {}

  Chain Next() {
    const int kind = in_.Below(8);
    Chain chain;
    for (int left = 1 + in_.Below(kind == 7 ? 120 : 12); left > 0; --left) {
      const bool far = kind == 5 || (kind == 6 && in_.Flag());
      cv::Point2d p(far ? FarCoordinate() : Coordinate(canvas_.width),
                    far ? FarCoordinate() : Coordinate(canvas_.height));
      if (!chain.empty() && kind < 4) Align(kind, chain, p);
      chain.push_back(p);
    }
    return chain;
  }

 private:
  double Coordinate(int size) {
    const int kind = in_.Byte();
    if (kind < 150) return in_.Between(-2, size + 2);
    if (kind < 200) return in_.Between(-2 * size, 3 * size) / 2.0;
    if (kind < 220) return in_.Raw<std::int16_t>();
    return kind < 240 ? FarCoordinate() : in_.Number();
  }

  double FarCoordinate() {
    const int kind = in_.Byte();
    if (kind < 100) return INT_MAX - in_.Below(200);
    return kind < 200 ? INT_MIN + in_.Below(200) : in_.Raw<std::int32_t>();
  }

  // The point before again, a level edge, an upright one, there and back.
  static void Align(int kind, const Chain& chain, cv::Point2d& p) {
    const cv::Point2d& before = chain.back();
    const bool odd = chain.size() % 2 != 0;
    if (kind == 0 && odd) p = before;
    if (kind == 1 && odd) p.y = before.y;
    if (kind == 2 && odd) p.x = before.x;
    if (kind == 3 && chain.size() >= 2) p = chain[chain.size() - 2];
  }

  ByteReader& in_;
  cv::Size canvas_;
};

std::vector<Run> RunsOfPixels(const cv::Mat& pixels) {
  std::vector<Run> runs;
  for (int y = 0; y < pixels.rows; ++y) {
    for (int x = 0; x < pixels.cols; ++x) {
      if (pixels.at<unsigned char>(y, x) == 0) continue;
      if (x == 0 || pixels.at<unsigned char>(y, x - 1) == 0) runs.push_back({y, x, x});
      runs.back().LastColumn = x;
    }
  }
  return runs;
}

std::vector<Run> RunsOfMask(const IVemROIPara& mask) {
  std::vector<Run> runs;
  for (int i = 0; i < mask.Rows.Length(); ++i) {
    runs.push_back({mask.Rows[i].I(), mask.FirstColumns[i].I(), mask.LastColumns[i].I()});
  }
  return runs;
}

void RequireRounding(const Chains& chains, const std::vector<IntChain>& expected) {
  std::vector<IntChain> rounded(1);
  IVemROIPara().VectorD2I(chains, rounded);
  Require(rounded == expected, "coordinates round to the nearest, halves to the even one");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ByteReader in(data, size);
  const int kind = in.Below(4);  // Wide canvases and high ones take different ways.
  const cv::Size canvas(1 + in.Below(kind == 1 ? 700 : 70), 1 + in.Below(kind == 2 ? 300 : 50));
  Chains chains;
  std::vector<IntChain> contours;
  Vertices vertices(in, canvas);
  for (int left = 1 + in.Below(4); left > 0 && !in.IsEmpty(); --left) {
    chains.push_back(vertices.Next());
    contours.emplace_back();
    for (const cv::Point2d& p : chains.back()) {
      contours.back().emplace_back(RoundedToEven(p.x), RoundedToEven(p.y));
    }
  }
  if (in.Flag()) {
    chains.emplace_back();  // One without points adds nothing.
    contours.emplace_back();
  }

  RequireRounding(chains, contours);
  const cv::Mat expected = FilledByRule(contours, canvas.width, canvas.height);
  VemContourArray array = ContoursOf(chains);
  const cv::Mat painted = IVemROIPara().ToMAT(array, canvas.width, canvas.height);
  Require(painted.size() == canvas && painted.type() == CV_8UC1, "the raster is that asked for");
  if (!std::equal(painted.begin<unsigned char>(), painted.end<unsigned char>(),
                  expected.begin<unsigned char>())) {
    Fail("on ", canvas, ":\n", Picture(painted), "is\n", Picture(expected));
  }

  IVemROIPara mask;
  mask.GenMask(array, canvas.width, canvas.height);
  if (canvas.width < 2 || canvas.height < 2) {
    Require(mask.Type == VemROINone, "a canvas below 2 by 2 gives no mask");
    return 0;
  }
  Require(mask.Type == VemROIMask && mask.Width == canvas.width && mask.Height == canvas.height,
          "the mask has the canvas asked for");
  Require(RunsOfMask(mask) == RunsOfPixels(expected), "the mask has the raster's runs");
  return 0;
}
