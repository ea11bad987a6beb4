// Codes rasters of every depth, padded or packed, in the coder's three forms. What must hold:
//
// - runs are those that a loop over the pixels lists;
// - components are those that flooding finds, in the order of their first runs;
// - outlines are those of a walk along the cracks between pixels, in the order in which a scan
// meets
//   them, linked as their components and holes lie;
// - a raster without pixels, or of several channels, gives empty lists;
// - the raster is not written, and nothing beside it read.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

#include <opencv2/core.hpp>

#include "ByteReader.h"
#include "Require.h"
#include "VemRLC.h"
#include "support/Support.h"
#include "twins/CoderTwin.h"

namespace {

// --- The raster ---------------------------------------------------------------------------------

// Values of a depth that are easily taken for others; the first is the plain one.
template <typename T>
std::vector<T> Values() {
  using Limits = std::numeric_limits<T>;
  return {T{1}, Limits::max(), Limits::lowest(), static_cast<T>(Limits::max() / 2 + 1), T{0}};
}
template <>
std::vector<float> Values() {
  using Limits = std::numeric_limits<float>;
  return {1, -0.0f, Limits::denorm_min(), Limits::quiet_NaN(), -1, Limits::infinity()};
}
template <>
std::vector<double> Values() {
  using Limits = std::numeric_limits<double>;
  return {1, -0.0, Limits::denorm_min(), Limits::quiet_NaN(), -1e-300, Limits::infinity()};
}

/// A float of 16 bits; all that is compared with is its zero, of either sign.
struct Half {
  bool operator!=(const Half& zero) const { return ((bits ^ zero.bits) & 0x7fff) != 0; }
  std::uint16_t bits;
};
template <>
std::vector<Half> Values() {
  return {{0x3c00}, {0x8000}, {0x0001}, {0x7e00}, {0xbc00}, {0x7c00}};
}

/// A raster over bytes of its own, which end with the last pixel, and what is set in it.
class AnyRaster {
 public:
  explicit AnyRaster(ByteReader& in)
      : depth_(in.Below(8)),
        width_(1 + (in.Flag() ? in.Below(40) : in.Below(700))),
        height_(1 + in.Below(width_ > 100 ? 12 : 40)),
        padding_(in.Flag() ? in.Below(70) : 0),
        pixels_(width_, height_) {
    StoreAll(Layout(in), in);
  }

  const Grid& Pixels() const { return pixels_; }
  const std::vector<unsigned char>& Bytes() const { return bytes_; }
  cv::Mat Mat() { return cv::Mat(height_, width_, depth_, bytes_.data(), step_); }

 private:
  // Pixel by pixel, in stretches that end where the next begins, or as rows that differ little.
  std::vector<bool> Layout(ByteReader& in) {
    const int count = width_ * height_;
    std::vector<bool> set;
    const int kind = in.Below(3);
    while (static_cast<int>(set.size()) < count && !in.IsEmpty()) {
      const unsigned byte = in.Byte();
      if (kind == 0) {
        for (int bit = 0; bit < 8; ++bit) set.push_back((byte >> bit & 1) != 0);
      } else if (kind == 1) {
        set.insert(set.end(), byte >> 1, (byte & 1) != 0);
      } else if (static_cast<int>(set.size()) < width_ || byte < 64) {
        set.insert(set.end(), byte % 64, (byte >> 6 & 1) != 0);
      } else {  // The pixels above, some of them flipped.
        const std::size_t above = set.size() - static_cast<std::size_t>(width_);
        for (unsigned i = 0; i < byte; ++i) set.push_back(set[above + i]);
        set.back() = !set.back();
      }
    }
    set.resize(static_cast<std::size_t>(count));
    return set;
  }

  void StoreAll(const std::vector<bool>& set, ByteReader& in) {
    switch (depth_) {
      case CV_8U:
        return Store<std::uint8_t>(set, in);
      case CV_8S:
        return Store<std::int8_t>(set, in);
      case CV_16U:
        return Store<std::uint16_t>(set, in);
      case CV_16S:
        return Store<std::int16_t>(set, in);
      case CV_32S:
        return Store<std::int32_t>(set, in);
      case CV_32F:
        return Store<float>(set, in);
      case CV_64F:
        return Store<double>(set, in);
      default:
        return Store<Half>(set, in);
    }
  }

  template <typename T>
  void Store(const std::vector<bool>& set, ByteReader& in) {
    const std::vector<T> values = Values<T>();
    const std::size_t kinds = in.Flag() ? values.size() : 1;
    step_ = (static_cast<std::size_t>(width_) + static_cast<std::size_t>(padding_)) * sizeof(T);
    const std::size_t row = static_cast<std::size_t>(width_) * sizeof(T);
    bytes_.assign(static_cast<std::size_t>(height_ - 1) * step_ + row, 0xa5);
    std::size_t i = 0;
    for (int y = 0; y < height_; ++y) {
      for (int x = 0; x < width_; ++x, ++i) {
        const T value = set[i] ? values[i % kinds] : T{0};
        std::memcpy(
            &bytes_[static_cast<std::size_t>(y) * step_ + static_cast<std::size_t>(x) * sizeof(T)],
            &value, sizeof(T));
        pixels_.At(x, y) = value != T{0} ? 1 : 0;
      }
    }
  }

  int depth_;
  int width_;
  int height_;
  int padding_;
  std::size_t step_ = 0;
  Grid pixels_;
  std::vector<unsigned char> bytes_;
};

// --- The three forms ----------------------------------------------------------------------------

void Calculate(VemRLC& coder, cv::Mat raster, bool components) {
  if (components) {
    coder.SetParam(1, 9, false, -1, -1, -1, false, false);
  } else {
    coder.SetParam(1, 6, true, -1, -1, 1, false, false);
  }
  coder.Calc(raster, true);
}

void RequireRuns(VemRLC& coder, const cv::Mat& raster, const CodedRaster& expected) {
  Calculate(coder, raster, false);
  Require(coder.FillRuns == expected.runs, "FillRuns are those of a loop");
  Require(coder.ComponentCount == 0 && coder.ComponentRuns.empty() && coder.ComponentStarts.empty(),
          "listing runs leaves no components");
}

void RequireComponents(VemRLC& coder, const cv::Mat& raster, const CodedRaster& expected) {
  Calculate(coder, raster, true);
  std::vector<Run> runs;
  std::vector<int> starts;
  for (const std::vector<Run>& component : expected.components) {
    starts.push_back(static_cast<int>(runs.size()));
    runs.insert(runs.end(), component.begin(), component.end());
  }
  if (!starts.empty()) starts.push_back(static_cast<int>(runs.size()));
  Require(coder.ComponentCount == static_cast<int>(expected.components.size()), "ComponentCount ",
          coder.ComponentCount, " is ", expected.components.size());
  Require(coder.ComponentStarts == starts, "ComponentStarts are those of flooding");
  Require(coder.ComponentRuns == runs, "ComponentRuns are those of flooding");
  Require(coder.FillRuns.empty(), "finding components leaves no FillRuns");
}

void RequireOutlines(cv::Mat raster, const CodedRaster& expected) {
  std::vector<cv::Point> points(3);  // What the lists held is replaced.
  std::vector<int> pointStarts = {7};
  std::vector<cv::Vec4i> hierarchy(2);
  std::vector<Run> runs(1);
  std::vector<int> runStarts = {9, 9};
  VemRLC::FindContours(raster, 1, &points, &pointStarts, &hierarchy, nullptr, &runs, &runStarts,
                       true, -1, -1, 1, false);
  Require(runs == expected.runs, "the runs beside the outlines are those of a loop");
  std::vector<PixelChain> contours(1);
  VemRLC::Convert(points, pointStarts, contours);
  Require(contours.size() == expected.outlines.size(), contours.size(), " outlines are ",
          expected.outlines.size());
  for (std::size_t i = 0; i < contours.size(); ++i) {
    Require(contours[i] == expected.outlines[i], "outline ", i, ' ', contours[i], " is ",
            expected.outlines[i]);
    Require(hierarchy[i] == expected.hierarchy[i], "record ", i, ' ', hierarchy[i], " is ",
            expected.hierarchy[i]);
  }
  Require(hierarchy.size() == contours.size(), "a record for each outline");
  Require(pointStarts.size() == (contours.empty() ? 0 : contours.size() + 1), "a closing start");
  std::vector<Run> firstRuns;
  for (std::size_t i = 0; i + 1 < runStarts.size(); ++i) {
    firstRuns.push_back(runs.at(static_cast<std::size_t>(runStarts[i])));
  }
  std::vector<Run> expectedRuns;
  for (const std::vector<Run>& component : expected.components) {
    expectedRuns.push_back(component[0]);
  }
  Require(firstRuns == expectedRuns, "runStarts name each component's first run");
  Require(runStarts.empty() ? runs.empty() : runStarts.back() == static_cast<int>(runs.size()),
          "runStarts end with the number of runs");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ByteReader in(data, size);
  const int order = in.Byte();
  AnyRaster raster(in);
  const std::vector<unsigned char> before = raster.Bytes();
  const CodedRaster expected = CodePlainly(raster.Pixels());
  VemRLC coder;  // The forms in any order leave nothing of one another.
  if ((order & 1) != 0) RequireComponents(coder, raster.Mat(), expected);
  RequireRuns(coder, raster.Mat(), expected);
  RequireComponents(coder, raster.Mat(), expected);
  RequireOutlines(raster.Mat(), expected);
  Require(raster.Bytes() == before, "a raster is only read");
  if ((order & 2) != 0) {
    const cv::Mat unfit = (order & 4) != 0 ? cv::Mat() : cv::Mat::ones(2, 3, CV_8UC2);
    RequireRuns(coder, unfit, CodedRaster());
    RequireComponents(coder, unfit, CodedRaster());
    RequireOutlines(unfit, CodedRaster());
  }
  return 0;
}
