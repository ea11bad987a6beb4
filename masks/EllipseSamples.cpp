#include "masks/EllipseSamples.h"

#include <emmintrin.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "values/Processor.h"

namespace {

constexpr int kTurn = 360;

// The sines of 0 to 90 degrees in units of 1e-7.
constexpr int kSines[] = {
    0,       174524,  348995,  523360,  697565,  871557,  1045285, 1218693, 1391731, 1564345,
    1736482, 1908090, 2079117, 2249511, 2419219, 2588190, 2756374, 2923717, 3090170, 3255682,
    3420201, 3583679, 3746066, 3907311, 4067366, 4226183, 4383711, 4539905, 4694716, 4848096,
    5000000, 5150381, 5299193, 5446390, 5591929, 5735764, 5877853, 6018150, 6156615, 6293204,
    6427876, 6560590, 6691306, 6819984, 6946584, 7071068, 7193398, 7313537, 7431448, 7547096,
    7660444, 7771460, 7880108, 7986355, 8090170, 8191520, 8290376, 8386706, 8480481, 8571673,
    8660254, 8746197, 8829476, 8910065, 8987940, 9063078, 9135455, 9205049, 9271839, 9335804,
    9396926, 9455186, 9510565, 9563048, 9612617, 9659258, 9702957, 9743701, 9781476, 9816272,
    9848078, 9876883, 9902681, 9925462, 9945219, 9961947, 9975641, 9986295, 9993908, 9998477,
    10000000};

/// The sines of 0 to 450 degrees, each as a float has it, and one more.
struct SineTable {
  constexpr SineTable() : sines() {
    for (int degrees = 0; degrees < kTurn + kTurn / 4 + 2; ++degrees) {
      const int half = degrees % (kTurn / 2);
      const int quarter = half > kTurn / 4 ? kTurn / 2 - half : half;
      const double sine = static_cast<double>(static_cast<float>(kSines[quarter] / 1e7));
      sines[degrees] = degrees % kTurn < kTurn / 2 ? sine : -sine;
    }
  }

  double sines[kTurn + kTurn / 4 + 2];
};

constexpr SineTable kTable;

double Sine(int degrees) { return kTable.sines[degrees]; }
double Cosine(int degrees) { return kTable.sines[degrees + kTurn / 4]; }

int WrapToInt(std::int64_t value) {
  return static_cast<int>(static_cast<std::uint32_t>(static_cast<std::uint64_t>(value)));
}

// Turns the angles, ascending, so that the first is not negative, then so that the second is at
// most a turn. The second may pass the largest integer on the first way, and comes back as a small
// one.
void TurnIntoReach(int& from, int& to) {
  if (from > to) std::swap(from, to);
  if (from < 0) {
    const std::int64_t turns = (std::int64_t{kTurn} - 1 - from) / kTurn * kTurn;
    from = WrapToInt(from + turns);
    to = WrapToInt(to + turns);
  }
  if (to > kTurn) {
    const std::int64_t turns = (std::int64_t{to} - 1) / kTurn * kTurn;
    from = WrapToInt(from - turns);
    to = WrapToInt(to - turns);
  }
  if (std::int64_t{to} - from > kTurn) {
    from = 0;
    to = kTurn;
  }
}

// Calls `visit` with the angles to sample, each from 0 to a turn.
template <typename Visit>
void VisitDegrees(int from, int to, int step, Visit visit) {
  TurnIntoReach(from, to);
  for (int i = from; i < to + step; i += step) {
    const int degrees = std::min(i, to);
    visit(degrees < 0 ? degrees + kTurn : degrees);
  }
}

// A rotation from 0 to a turn.
int TurnIntoReach(int rotation) {
  if (rotation < 0) return static_cast<int>((std::int64_t{rotation} % kTurn + kTurn) % kTurn);
  return rotation > kTurn ? (rotation - 1) % kTurn + 1 : rotation;
}

}  // namespace

std::vector<cv::Point2d> SampleEllipse(const cv::Point2d& center, const cv::Size2d& axes,
                                       const EllipseArc& arc, int step) {
  const int rotation = TurnIntoReach(arc.rotation);
  const double cosine = Cosine(rotation);
  const double sine = Sine(rotation);
  std::vector<cv::Point2d> samples;
  VisitDegrees(arc.from, arc.to, step, [&](int degrees) {
    const double x = axes.width * Cosine(degrees);
    const double y = axes.height * Sine(degrees);
    samples.emplace_back(center.x + x * cosine - y * sine, center.y + x * sine + y * cosine);
  });
  if (samples.size() == 1) samples.assign(2, center);
  return samples;
}

namespace {

/// Where the sines of 0 to 450 degrees lie on a circle's axis, in pixels.
struct AxisTable {
  AxisTable(int center, int radius) {
    const __m128d middle = _mm_set1_pd(center);
    const __m128d scale = _mm_set1_pd(radius);
    for (int degrees = 0; degrees < kCount; degrees += 2) {
      const __m128d sines = _mm_loadu_pd(kTable.sines + degrees);
      const __m128i rounded = _mm_cvtpd_epi32(_mm_add_pd(middle, _mm_mul_pd(scale, sines)));
      _mm_storel_epi64(reinterpret_cast<__m128i*>(pixels + degrees), rounded);
    }
  }

  cv::Point At(int degrees) const {
    if (degrees < 0) degrees += kTurn;
    return cv::Point(pixels[degrees + kTurn / 4], pixels[degrees]);
  }

  static constexpr int kCount = sizeof kTable.sines / sizeof *kTable.sines;
  static_assert(kCount % 2 == 0, "two at a time");

  int pixels[kCount];
};

constexpr int kTop = -kTurn / 4;

}  // namespace

std::vector<cv::Point> SampleCircle(int center, int radius, int from, int to) {
  TurnIntoReach(from, to);
  if (from > to) return {};
  if (to - from == kTurn) {
    from = kTop;
    to = kTop + kTurn;
  }
  const AxisTable axis(center, radius);
  std::vector<cv::Point> pixels(kTurn + 1);
  cv::Point before = axis.At(from);
  pixels[0] = before;
  cv::Point* end = pixels.data() + 1;
  for (int degrees = from + 1; degrees <= to; ++degrees) {
    const cv::Point pixel = axis.At(degrees);
    end->x = pixel.x;
    end->y = pixel.y;
    end += (pixel.x ^ before.x) | (pixel.y ^ before.y) ? 1 : 0;
    before = pixel;
  }
  pixels.resize(static_cast<std::size_t>(end - pixels.data()));
  if (pixels.size() == 1) pixels.assign(2, cv::Point(center, center));
  return pixels;
}
