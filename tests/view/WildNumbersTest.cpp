#include <algorithm>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstring>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "Scenes.h"
#include "VemContourArray.h"
#include "VemOverlayPath.h"
#include "vem/view.h"

// Whatever the numbers, drawing raises nothing, stays in its picture and comes to an end soon.

namespace {

// Under sanitizers all of it takes ten times as long.
#ifdef VEM_SANITIZED
constexpr int kThoroughness = 1;
#else
constexpr int kThoroughness = 10;
#endif

using vem::channel_order;
using vem::draw;
using vem::draw_style;

/// Numbers of which many are wild.
class Wild {
 public:
  explicit Wild(unsigned seed) : engine_(seed) {}

  int Int(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine_); }

  double Number() {
    static const double kNumbers[] = {
        kNaN, kInfinity,  -kInfinity,  1e300,         -1e300, 1.7e308, -1.7e308, 5e-324,
        0,    -0.0,       INT_MIN,     INT_MAX,       1e9,    -1e9,    3e38,     32767,
        1e15, 2147483648, 4.2949673e9, -2147483649.0, 1e5,    -1e5,    0.5,      16777217,
        360,  359.5,      1e100,       -1e100,        9e18,   -9.3e18, 65536,    1};
    if (Int(0, 2) == 0) return kNumbers[Int(0, static_cast<int>(std::size(kNumbers)) - 1)];
    if (Int(0, 3) == 0) return std::ldexp(Int(-1000, 1000), Int(-20, 60));
    return std::uniform_real_distribution<double>(-20, 60)(engine_);
  }

  long Long() {
    static const long kNumbers[] = {0,       1,       -1,      2,         255,        256,
                                    INT_MIN, INT_MAX, 1 << 20, 123456789, LONG_MIN,   LONG_MAX,
                                    32767,   32768,   100,     1000,      4294967295, 12};
    return kNumbers[Int(0, static_cast<int>(std::size(kNumbers)) - 1)];
  }

  int Whole() { return static_cast<int>(Long()); }
  VemPoint Point() { return VemPoint(Number(), Number()); }

  VemPointArray Points() {
    VemPointArray points;
    for (int i = Int(0, 12); i > 0; --i) {
      VemPoint point = Point();
      points.Append(point);
    }
    return points;
  }

  VemVar Value() {
    switch (Int(0, 5)) {
      case 0:
        return VemVar(Number());
      case 1:
        return VemVar("text");
      case 2:
        return VemVar();
      case 3:
        return VemVar(Long());
      default:
        return VemVar(Int(-5, 50));
    }
  }

  VemVarArray Values() {
    VemVarArray values;
    for (int i = Int(0, 20); i > 0; --i) values.Append(Value());
    return values;
  }

  VemRegion Region() {
    VemRegion region;
    VemVarArray rows = Values(), firsts = Values(), lasts = Values();
    region.CreateRegion(Whole(), Whole(), rows, firsts, lasts);
    return region;
  }

  VemContour Contour() {
    VemContour contour;
    VemPointArray points = Points();
    contour.FromPointArray(points);
    return contour;
  }

  draw_style Style() { return {Whole(), Whole(), Whole(), Whole(), Int(0, 1) == 1}; }
  channel_order Order() { return static_cast<channel_order>(Int(-1, 2)); }

 private:
  std::mt19937 engine_;
};

VemROI WildRoi(Wild& wild) {
  VemROI roi;
  VemPoint a = wild.Point(), b = wild.Point();
  VemPointArray points = wild.Points();
  const double n[] = {wild.Number(), wild.Number(), wild.Number(), wild.Number()};
  VemRegion region = wild.Region();
  VemVarArray rows, firsts, lasts;
  region.GetRegionRuns(&rows, &firsts, &lasts);
  switch (wild.Int(0, 10)) {
    case 0:
      roi.GenPoint(a);
      break;
    case 1:
      roi.GenRect1(a, b);
      break;
    case 2:
      roi.GenCircle(a, n[0]);
      break;
    case 3:
      roi.GenTorus(a, n[0], n[1], n[2], n[3]);
      break;
    case 4:
      roi.GenRect2(a, n[0], n[1], n[2]);
      break;
    case 5:
      roi.GenLine(a, b);
      break;
    case 6:
      roi.GenEllipse(a, n[0], n[1], n[2]);
      break;
    case 7:
      roi.GenArc(a, n[0], n[1], n[2]);
      break;
    case 8:
      roi.GenPolygon(points);
      break;
    case 9:
      roi.GenIrregular(points);
      break;
    default:
      roi.GenMask(rows, firsts, lasts, 30, 30);
  }
  // Below three points the numbers go and the type stays.
  VemPointArray none;
  if (wild.Int(0, 9) == 0) roi.GenPolygon(none);
  return roi;
}

VemImage WildImage(Wild& wild) {
  const int depth = wild.Int(0, 6), channels = wild.Int(1, 5);
  cv::Mat pixels(wild.Int(0, 9), wild.Int(0, 9), CV_MAKETYPE(depth, channels));
  cv::Mat flat = pixels.reshape(1);
  if (!flat.empty()) flat.setTo(depth >= 5 ? wild.Number() : wild.Int(0, 255));
  VemImage image;
  image.Mat() = pixels;
  return image;
}

VemOverlay WildOverlay(Wild& wild) {
  VemOverlay overlay;
  overlay.SetPen(wild.Long(), wild.Long(), wild.Long(), wild.Long());
  overlay.SetBrush(wild.Long(), wild.Long(), wild.Long(), wild.Int(0, 1));
  VemPoint a = wild.Point(), b = wild.Point();
  const double n[] = {wild.Number(), wild.Number(), wild.Number(), wild.Number()};
  VemVar name = wild.Value();
  VemFont font(name, wild.Long());
  font.Weight = wild.Long();
  VemRegion region = wild.Region();
  VemImage image = WildImage(wild);
  switch (wild.Int(0, 20)) {
    case 0:
      overlay.GenPoint(a);
      break;
    case 1:
      overlay.GenArrowLine(a, b);
      break;
    case 2:
      overlay.GenLine(a, b);
      break;
    case 3:
      overlay.GenRect1(a, b);
      break;
    case 4:
      overlay.GenRakeRect1(a, b, wild.Int(0, 3), wild.Whole());
      break;
    case 5:
      overlay.GenCircle(a, n[0]);
      break;
    case 6:
      overlay.GenEllipse(a, n[0], n[1], n[2]);
      break;
    case 7:
      overlay.GenPolygon(wild.Points());
      break;
    case 8:
      overlay.GenPolyLine(wild.Points());
      break;
    case 9:
      overlay.GenRect2(a, n[0], n[1], n[2]);
      break;
    case 10:
      overlay.GenRakeRect2(a, n[0], n[1], n[2], wild.Int(0, 3), wild.Whole());
      break;
    case 11:
      overlay.GenTorus(a, n[0], n[1], n[2], n[3]);
      break;
    case 12:
    case 13:
      overlay.GenSpokeTorus(a, n[0], n[1], n[2], n[3], wild.Int(4, 5), wild.Whole());
      break;
    case 14:
      overlay.GenArc(a, n[0], n[1], n[2]);
      break;
    case 15:
      overlay.GenIrregular(wild.Points());
      break;
    case 16:
      overlay.GenText(a,
                      std::string(static_cast<std::size_t>(wild.Int(0, 40)),
                                  static_cast<char>(wild.Int(1, 255)))
                          .c_str(),
                      font);
      break;
    case 17:
      overlay.GenImage(a, image);
      break;
    case 18:
      overlay.GenRegion(region);
      break;
    default:
      overlay.FromROI(WildRoi(wild));
      if (wild.Int(0, 2) == 0) overlay.FromContour(wild.Contour());
  }
  return overlay;
}

void DrawWild(Wild& wild, cv::Mat& picture) {
  const channel_order order = wild.Order();
  VemContourArray contours;
  VemOverlayPath path;
  switch (wild.Int(0, 9)) {
    case 0:
      return void(draw(picture, wild.Region(), wild.Style(), order));
    case 1:
      return void(draw(picture, wild.Contour(), wild.Style(), order));
    case 2:
      return void(draw(picture, wild.Points(), wild.Style(), order));
    case 3:
      for (int i = wild.Int(0, 3); i > 0; --i) {
        VemContour contour = wild.Contour();
        contours.Append(contour);
      }
      return void(draw(picture, contours, wild.Style(), order));
    case 4:
      for (int i = wild.Int(0, 3); i > 0; --i) {
        VemOverlay overlay = WildOverlay(wild);
        path.AddOverlay(overlay);
      }
      return void(draw(picture, path, order));
    case 5:
    case 6:
      return void(draw(picture, WildRoi(wild), wild.Style(), order));
    default:
      return void(draw(picture, WildOverlay(wild), order));
  }
}

}  // namespace

TEST(WildNumbers, NeverRaiseAndNeverLeaveThePicture) {
  constexpr int kRounds = 600 * kThoroughness;
  const int types[] = {CV_8UC1, CV_8UC3, CV_8UC4, CV_16UC3, CV_32FC1, CV_64FC4};
  int drawn = 0;
  for (unsigned round = 0; round < kRounds; ++round) {
    SCOPED_TRACE(round);
    Wild wild(round);
    const int type = types[round % std::size(types)];
    const cv::Rect place(wild.Int(1, 9), wild.Int(1, 9), wild.Int(1, 40), wild.Int(1, 40));
    cv::Mat large(60, 60, type);
    std::memset(large.data, 0x3d, large.total() * large.elemSize());
    const cv::Mat before = large.clone();
    cv::Mat part = large(place);
    ASSERT_NO_THROW(DrawWild(wild, part));
    drawn += std::memcmp(large.data, before.data, large.total() * large.elemSize()) != 0 ? 1 : 0;
    before(place).copyTo(part);
    ASSERT_EQ(std::memcmp(large.data, before.data, large.total() * large.elemSize()), 0);
  }
  EXPECT_GT(drawn, kRounds / 8);
}

TEST(WildNumbers, ThatAreNotFiniteDrawNothing) {
  for (const double wild : {kNaN, kInfinity, -kInfinity}) {
    cv::Mat picture = Ground();
    VemOverlay overlay;
    overlay.SetBrush(0, 0, 0, 1);
    VemPoint bad(wild, 5), good(5, 5);
    overlay.GenLine(bad, good);
    draw(picture, overlay);
    overlay.GenCircle(bad, 9);
    draw(picture, overlay);
    overlay.GenPolygon(PointsOf({{3, 3}, {60, 3}, {30, wild}}));
    draw(picture, overlay);
    draw(picture, PointsOf({{5, wild}}));
    draw(picture, ContourOf({{3, 3}, {60, 3}, {30, wild}}), draw_style(0, 0, 0, 1, true));
    EXPECT_EQ(cv::norm(picture, Ground(), cv::NORM_INF), 0) << wild;
  }
}

// A half plane told by numbers of any size.
TEST(WildNumbers, ThatAreHugeCoverWhatTheyReach) {
  for (const double huge : {1e5, 1e9, 1e12, 1e17, 1e18, 1e30, 3e38}) {
    cv::Mat picture(40, 40, CV_8UC1, cv::Scalar(0));
    draw(picture, Rect1(-huge, -huge, 19, huge), draw_style(255, 255, 255, 0, true));
    EXPECT_EQ(cv::countNonZero(picture), 20 * 40) << huge;
    picture.setTo(0);
    draw(picture, Circle(20, 20, huge), draw_style(255, 255, 255, 0, true));
    EXPECT_EQ(cv::countNonZero(picture), 40 * 40) << huge;
    picture.setTo(0);
    draw(picture, ContourOf({{-huge, -huge}, {huge, huge}}), draw_style(255, 255, 255, 3));
    EXPECT_EQ(cv::countNonZero(picture.diag() == 255), 40) << huge;
    EXPECT_EQ(picture.at<unsigned char>(30, 10), 0) << huge;
  }
}

// What reaches far out is on the picture as what reaches just beyond it.
TEST(WildNumbers, LeaveTheirPartOnThePicture) {
  const auto drawn = [](double far) {
    cv::Mat picture = Ground();
    draw(picture, Rect1(-far, -far, 30, 40.5), draw_style(0, 255, 0, 2, true));
    VemOverlay overlay;
    overlay.SetPen(60, 215, 255, 2);
    overlay.SetBrush(235, 205, 60, 1);
    overlay.GenPolygon(PointsOf({{-far, -far}, {far, far}, {-far, far}}));
    draw(picture, overlay);
    VemROI roi;
    VemPointArray points = PointsOf({{40, -far}, {far, -far}, {far, far}, {40, far}});
    roi.GenPolygon(points);
    draw(picture, roi, draw_style(255, 0, 255, 1, true));
    VemPoint from(-far, 10), to(far, 20);
    overlay.GenRakeRect1(from, to, 0, 2);
    draw(picture, overlay);
    overlay.GenRakeRect1(from, to, 2, 3);
    draw(picture, overlay);
    return picture;
  };
  // So far that no mask is asked for, and that the rake's arrows are level.
  const cv::Mat expected = drawn(1e6);
  for (const double far : {1e17, 1e18, 1e30, 3e38}) {
    EXPECT_LE(cv::norm(drawn(far), expected, cv::NORM_INF), 1) << far;
  }
}

// Contours tell doubles.
TEST(WildNumbers, OfContoursLeaveTheirPartOnThePicture) {
  const auto drawn = [](double far) {
    cv::Mat picture = Ground();
    draw(picture, ContourOf({{-far, 50}, {far, 50}}), draw_style(0, 0, 255, 3));
    draw(picture, ContourOf({{far, -far}, {-far, far}, {12, far}, {12, -far}, {70, 60}}));
    return picture;
  };
  const cv::Mat expected = drawn(1e6);
  EXPECT_GT(cv::norm(expected, Ground(), cv::NORM_L1), 10000);
  for (const double far : {1e17, 1e18, 1e30, 1e300, DBL_MAX}) {
    EXPECT_LE(cv::norm(drawn(far), expected, cv::NORM_INF), 1) << far;
  }
}

// From 2^31 on there is no mask of them: borders are smooth then, and what lies inside stays
// inside.
TEST(WildNumbers, OfFilledContoursLeaveTheirPartOnThePicture) {
  const auto tinted = [](double far) {
    cv::Mat picture = cv::Mat::zeros(100, 100, CV_8UC1);
    draw(picture, ContourOf({{50, 10}, {far, 50}, {50, 90}}), draw_style(255, 255, 255, 0, true));
    return picture;
  };
  const cv::Mat expected = tinted(2e9);
  ASSERT_EQ(cv::countNonZero(expected.colRange(0, 50)), 0);
  ASSERT_GT(cv::countNonZero(expected.colRange(50, 100)), 3900);
  for (const double far : {2147483647.0, 3e9, 1e17, 1e300, DBL_MAX}) {
    const cv::Mat found = tinted(far);
    EXPECT_EQ(cv::countNonZero(found.colRange(0, 50)), 0) << far;
    EXPECT_EQ(cv::norm(found(cv::Rect(51, 12, 49, 77)), expected(cv::Rect(51, 12, 49, 77))), 0)
        << far;
  }
  cv::Mat picture = cv::Mat::zeros(100, 100, CV_8UC1);
  draw(picture, ContourOf({{-3e9, -3e9}, {3e9, -3e9}, {3e9, 3e9}, {-3e9, 3e9}}),
       draw_style(255, 255, 255, 0, true));
  EXPECT_EQ(cv::countNonZero(picture), 10000);
}

// Each takes some milliseconds, though as shapes they are beyond every limit: drawn pixel by pixel,
// sample by sample or one over another they would take minutes or hours.
TEST(WildNumbers, CostWhatThePictureCosts) {
  cv::Mat picture(480, 640, CV_8UC3, cv::Scalar::all(0));
  const draw_style style(255, 255, 255, 2, true);
  VemPoint corner(0, 0), far(1e9, 1e9), off(-1e9, 240), at(320, 240);
  EXPECT_TRUE(draw(picture, Circle(-1e9, 240, 1e9), style));
  EXPECT_TRUE(draw(picture, Circle(0, 0, 1e300), style));
  VemROI roi;
  roi.GenArc(at, 100, 0, 1e300);
  EXPECT_TRUE(draw(picture, roi, style));
  roi.GenArc(at, 100, 2147483648.0, 1e9);
  EXPECT_TRUE(draw(picture, roi, style));
  roi.GenTorus(at, 100, 1e9, 0, 1e9);
  EXPECT_TRUE(draw(picture, roi, style));
  roi.GenEllipse(at, 1e15, 1e-15, 30);
  EXPECT_TRUE(draw(picture, roi, style));
  roi.GenEllipse(off, 1e9, 1, 0);
  EXPECT_TRUE(draw(picture, roi, style));
  VemPoint above(320, -1e9), below(320, 1e9);
  roi.GenLine(above, below);
  EXPECT_TRUE(draw(picture, roi, style));

  VemOverlay overlay;
  overlay.GenRakeRect1(corner, far, 0, INT_MAX);
  EXPECT_TRUE(draw(picture, overlay));
  overlay.GenSpokeTorus(off, 1e8, 2e9, 0, 1e300, 5, INT_MAX);
  EXPECT_TRUE(draw(picture, overlay));
  overlay.GenSpokeTorus(at, 10, 100, 0, 1e300, 5, INT_MAX);
  EXPECT_TRUE(draw(picture, overlay));
  overlay.SetPen(0, 0, 0, INT_MAX);
  overlay.GenLine(corner, at);
  EXPECT_TRUE(draw(picture, overlay));
  overlay.GenIrregular(PointsOf({{1, 1}, {300, 400}, {50, 60}}));
  EXPECT_TRUE(draw(picture, overlay));
  std::vector<std::vector<int>> runs(200000, {240, INT_MIN, INT_MAX});
  EXPECT_TRUE(draw(picture, RegionOf(runs, 640, 480)));
}

// A text of which the picture shows a few letters, drawn again and again.
TEST(WildNumbers, OfATextCostWhatIsSeenOfIt) {
  cv::Mat picture(480, 640, CV_8UC1, cv::Scalar(0));
  const std::string text(5000000, 'i');
  VemOverlay overlay;
  VemFont font;
  for (const long size : {LONG_MAX, 8000L, 20L}) {
    font.Size = size;
    for (const double x : {-1e7, 10.0}) {
      VemPoint place(x, 300);
      overlay.GenText(place, text.c_str(), font);
      for (int i = 0; i < kThoroughness; ++i) EXPECT_TRUE(draw(picture, overlay));
    }
  }
  EXPECT_GT(cv::countNonZero(picture), 1000);
}

// Hundreds of drawings, of which each once took some seconds: all the arrows one by one.
TEST(WildNumbers, OfArrowsCostWhatThePictureCosts) {
  cv::Mat picture(480, 640, CV_8UC3, cv::Scalar::all(0));
  VemPoint at(320, 240);
  VemOverlay overlay;
  overlay.SetPen(255, 255, 255, INT_MAX);
  for (int i = 0; i < 12 * kThoroughness; ++i) {
    overlay.GenRakeRect2(at, 500, 400, 30, 1, INT_MAX - i);
    EXPECT_TRUE(draw(picture, overlay));
    overlay.GenSpokeTorus(at, 10, 200, 0, 360, 4, INT_MAX - i);
    EXPECT_TRUE(draw(picture, overlay));
  }
  EXPECT_EQ(cv::countNonZero(picture.reshape(1)), 480 * 640 * 3);
}

// However many they are, they fill the band from the first to the last one.
TEST(WildNumbers, OfArrowsFillTheirPlace) {
  const auto drawn = [](int pen, int count, bool spokes) {
    cv::Mat picture(300, 300, CV_8UC1, cv::Scalar(0));
    VemOverlay overlay;
    VemPoint from(60, 50), to(240, 250), center(150, 150);
    overlay.SetPen(255, 255, 255, pen);
    overlay.GenRakeRect1(from, to, 0, count);
    if (spokes) overlay.GenSpokeTorus(center, 20, 120, 10, 300, 5, count);
    draw(picture, overlay);
    return picture;
  };
  for (const int pen : {1, 2, 7}) {
    for (const bool spokes : {false, true}) {
      // As many as have no place of their own any more.
      const cv::Mat many = drawn(pen, 4000, spokes), most = drawn(pen, INT_MAX, spokes);
      cv::Mat inside;
      cv::erode(many == 255, inside, cv::Mat::ones(5, 5, CV_8UC1));
      EXPECT_GT(cv::countNonZero(inside), 20000);
      EXPECT_EQ(cv::countNonZero(inside & (most != 255)), 0) << pen;
      cv::erode(most == 255, inside, cv::Mat::ones(5, 5, CV_8UC1));
      EXPECT_EQ(cv::countNonZero(inside & (many != 255)), 0) << pen;
    }
  }
}

// Only as many of a rake's arrows as the picture shows, but those where they belong.
TEST(WildNumbers, OfARakeKeepItsArrowsInTheirPlaces) {
  const auto rows = [](int count, double height) {
    cv::Mat picture(64, 64, CV_8UC1, cv::Scalar(0));
    VemOverlay overlay;
    overlay.SetPen(255, 255, 255, 1);
    VemPoint from(-1e6, 0), to(1e6, height);
    overlay.GenRakeRect1(from, to, 0, count);
    draw(picture, overlay);
    std::string drawing;
    for (int y = 1; y < picture.rows - 1; ++y) {
      drawing += picture.at<unsigned char>(y, 30) == 255 ? '#' : '.';
    }
    return drawing;
  };
  const std::string expected = rows(4, 64);
  EXPECT_EQ(std::count(expected.begin(), expected.end(), '#'), 4) << expected;
  // A million times as high, with as many times the arrows.
  EXPECT_EQ(rows(4 * 1000000, 64.0 * 1000000), expected);
}

// Spokes around a center that can't be seen are those that a larger picture shows there.
TEST(WildNumbers, OfSpokesKeepThemInTheirPlaces) {
  for (const double start : {0.0, 90.0, -170.0, 1000.5}) {
    SCOPED_TRACE(start);
    const auto draw_spokes = [start](cv::Mat& picture, double x, double y) {
      VemOverlay overlay;
      overlay.SetPen(255, 255, 255, 1);
      VemPoint center(x, y);
      overlay.GenSpokeTorus(center, 90, 380, start, 360, 4, 150);
      draw(picture, overlay);
    };
    cv::Mat large(800, 800, CV_8UC1, cv::Scalar(0));
    draw_spokes(large, 400, 400);
    for (const cv::Point place : {cv::Point(650, 370), cv::Point(370, 80), cv::Point(100, 380)}) {
      cv::Mat small(60, 60, CV_8UC1, cv::Scalar(0));
      draw_spokes(small, 400 - place.x, 400 - place.y);
      EXPECT_LE(cv::norm(small, large(cv::Rect(place, small.size())), cv::NORM_INF), 1) << place;
      EXPECT_GT(cv::countNonZero(small), 100);
    }
  }
}

// Letters behind thousands that can't be seen stand where a larger picture shows them.
TEST(WildNumbers, OfATextKeepItsLettersInTheirPlaces) {
  for (const long size : {1L, 5L, 13L}) {
    const auto left = [size](int width, double x) {
      cv::Mat picture(40, width, CV_8UC1, cv::Scalar(0));
      VemOverlay overlay;
      overlay.SetPen(255, 255, 255, 1);
      VemPoint place(x, 30);
      VemVar name("Plain");
      VemFont font(name, size);
      overlay.GenText(place, (std::string(2000, ' ') + "H").c_str(), font);
      draw(picture, overlay);
      return cv::boundingRect(picture).x;
    };
    const int expected = left(40000, 0);
    EXPECT_GT(expected, 1000);
    EXPECT_NEAR(left(60, 20 - expected), 20, 1) << size;
  }
}

// A character of UTF-8 is one '?', and so is each byte that begins none.
TEST(WildNumbers, OfBytesAreAsManyLettersAsTheyTell) {
  const auto written = [](const std::string& text) {
    cv::Mat picture = cv::Mat::zeros(60, 300, CV_8UC1);
    VemOverlay overlay;
    VemPoint place(10, 40);
    VemFont font;
    font.Size = 20;
    overlay.SetPen(255, 255, 255, 1);
    overlay.GenText(place, text.c_str(), font);
    EXPECT_TRUE(draw(picture, overlay));
    return picture;
  };
  const auto same = [&](const std::string& a, const std::string& b) {
    return cv::norm(written(a), written(b), cv::NORM_INF) == 0;
  };
  EXPECT_FALSE(same("5?", "5"));
  EXPECT_TRUE(same("5\xb0", "5?"));
  EXPECT_TRUE(same("5\xc2\xb0\xb0", "5??"));
  EXPECT_TRUE(same("\xe2\x82\xac\xf0\x9f\x98\x80m", "??m"));
  EXPECT_TRUE(same("\xc2m", "?m"));
}

TEST(WildNumbers, OfAFontCountAsTheLargest) {
  const auto written = [](long size) {
    cv::Mat picture(8, 9000, CV_8UC1, cv::Scalar(0));
    VemOverlay overlay;
    VemPoint place(100, 4000);
    VemVar name("Plain");
    VemFont font(name, size);
    overlay.GenText(place, "H", font);
    overlay.SetPen(255, 255, 255, 1);
    draw(picture, overlay);
    return picture;
  };
  EXPECT_GT(cv::countNonZero(written(8000)), 0);
  EXPECT_EQ(cv::norm(written(LONG_MAX), written(8000), cv::NORM_INF), 0);
}
