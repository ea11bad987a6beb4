#include "VemRLC.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <map>
#include <random>
#include <set>

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "support/GuardedBytes.h"
#include "support/Support.h"

namespace {

using Contour = std::vector<cv::Point>;

struct Found {
  std::vector<cv::Point> points;
  std::vector<int> pointStarts;
  std::vector<cv::Vec4i> hierarchy;
  std::vector<::Run> runs;
  std::vector<int> runStarts;
  std::vector<Contour> contours;
};

Found Find(cv::Mat raster) {
  Found found;
  VemRLC::FindContours(raster, 1, &found.points, &found.pointStarts, &found.hierarchy, nullptr,
                       &found.runs, &found.runStarts, true, -1, -1, 1, false);
  VemRLC::Convert(found.points, found.pointStarts, found.contours);
  return found;
}

std::vector<::Run> FillRuns(cv::Mat raster) {
  VemRLC coder;
  coder.SetParam(1, 6, true, -1, -1, 1, false, false);
  coder.Calc(raster, true);
  return coder.FillRuns;
}

VemRLC Components(cv::Mat raster) {
  VemRLC coder;
  coder.SetParam(1, 9, false, -1, -1, -1, false, false);
  coder.Calc(raster, true);
  return coder;
}

bool IsSet(const cv::Mat& raster, int row, int column) {
  return column >= 0 && column < raster.cols && raster.at<unsigned char>(row, column) != 0;
}

std::vector<::Run> PlainRuns(const cv::Mat& raster) {
  std::vector<::Run> runs;
  for (int row = 0; row < raster.rows; ++row) {
    for (int column = 0; column < raster.cols; ++column) {
      if (!IsSet(raster, row, column)) continue;
      if (!IsSet(raster, row, column - 1)) runs.push_back({row, column, column});
      runs.back().LastColumn = column;
    }
  }
  return runs;
}

// Runs by component, components in the order of their first runs, by OpenCV's labels.
std::vector<std::vector<::Run>> PlainComponents(const cv::Mat& raster) {
  cv::Mat labels;
  cv::connectedComponents(raster, labels, 8, CV_32S);
  std::vector<std::vector<::Run>> components;
  std::map<int, std::size_t> places;
  for (const ::Run& run : PlainRuns(raster)) {
    const auto place =
        places.emplace(labels.at<int>(run.Row, run.FirstColumn), components.size()).first->second;
    if (place == components.size()) components.emplace_back();
    components[place].push_back(run);
  }
  return components;
}

struct Outline {
  Contour contour;
  Contour parent;  // Empty for an outer border.

  bool operator==(const Outline& other) const {
    return contour == other.contour && parent == other.parent;
  }
};

std::vector<Outline> WithParents(const std::vector<Contour>& contours,
                                 const std::vector<cv::Vec4i>& hierarchy) {
  std::vector<Outline> outlines;
  for (std::size_t i = 0; i < contours.size(); ++i) {
    const int parent = hierarchy[i][3];
    outlines.push_back(
        {contours[i], parent < 0 ? Contour() : contours[static_cast<std::size_t>(parent)]});
  }
  return outlines;
}

bool Before(const Outline& a, const Outline& b) {
  const auto order = [](const cv::Point& p, const cv::Point& q) {
    return std::make_pair(p.y, p.x) < std::make_pair(q.y, q.x);
  };
  if (a.contour != b.contour) {
    return std::lexicographical_compare(a.contour.begin(), a.contour.end(), b.contour.begin(),
                                        b.contour.end(), order);
  }
  return std::lexicographical_compare(a.parent.begin(), a.parent.end(), b.parent.begin(),
                                      b.parent.end(), order);
}

std::vector<Outline> OpenCVOutlines(const cv::Mat& raster) {
  std::vector<Contour> contours;
  std::vector<cv::Vec4i> hierarchy;
  cv::findContours(raster.clone(), contours, hierarchy, cv::RETR_CCOMP, cv::CHAIN_APPROX_SIMPLE);
  return WithParents(contours, hierarchy);
}

cv::Mat Noise(std::mt19937& random, int rows, int columns, int percent) {
  cv::Mat raster(rows, columns, CV_8UC1);
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      raster.at<unsigned char>(row, column) = static_cast<int>(random() % 100) < percent ? 255 : 0;
    }
  }
  return raster;
}

void ExpectRuns(const cv::Mat& raster) {
  const std::vector<::Run> expected = PlainRuns(raster);
  ASSERT_EQ(FillRuns(raster), expected);
  ASSERT_EQ(Find(raster).runs, expected);
}

void ExpectComponents(const cv::Mat& raster) {
  const std::vector<std::vector<::Run>> expected = PlainComponents(raster);
  const VemRLC coder = Components(raster);
  const Found found = Find(raster);
  ASSERT_EQ(coder.ComponentCount, static_cast<int>(expected.size()));
  std::vector<::Run> runs;
  std::vector<int> starts;
  std::vector<::Run> firstRuns;
  for (const std::vector<::Run>& component : expected) {
    starts.push_back(static_cast<int>(runs.size()));
    runs.insert(runs.end(), component.begin(), component.end());
    firstRuns.push_back(component[0]);
  }
  if (!expected.empty()) starts.push_back(static_cast<int>(runs.size()));
  ASSERT_EQ(coder.ComponentRuns, runs);
  ASSERT_EQ(coder.ComponentStarts, starts);

  ASSERT_EQ(found.runStarts.size(), starts.size());
  for (std::size_t i = 0; i < firstRuns.size(); ++i) {
    ASSERT_EQ(found.runs[static_cast<std::size_t>(found.runStarts[i])], firstRuns[i]);
  }
  if (!expected.empty()) {
    ASSERT_EQ(found.runStarts.back(), static_cast<int>(runs.size()));
  }
}

// Siblings are chained in index order, and a parent names the first of its holes.
void ExpectLinked(const std::vector<cv::Vec4i>& hierarchy) {
  std::map<int, int> last;
  for (int i = 0; i < static_cast<int>(hierarchy.size()); ++i) {
    const cv::Vec4i& record = hierarchy[static_cast<std::size_t>(i)];
    const auto before = last.find(record[3]);
    ASSERT_EQ(record[1], before == last.end() ? -1 : before->second);
    if (before != last.end()) {
      ASSERT_EQ(hierarchy[static_cast<std::size_t>(before->second)][0], i);
    } else if (record[3] >= 0) {
      ASSERT_EQ(hierarchy[static_cast<std::size_t>(record[3])][2], i);
    }
    last[record[3]] = i;
  }
  for (const auto& [parent, sibling] : last) {
    ASSERT_EQ(hierarchy[static_cast<std::size_t>(sibling)][0], -1);
  }
  for (int i = 0; i < static_cast<int>(hierarchy.size()); ++i) {
    if (last.count(i) == 0) {
      ASSERT_EQ(hierarchy[static_cast<std::size_t>(i)][2], -1);
    }
  }
}

void ExpectOutlines(const cv::Mat& raster) {
  const Found found = Find(raster);
  std::vector<Outline> actual = WithParents(found.contours, found.hierarchy);
  std::vector<Outline> expected = OpenCVOutlines(raster);
  std::sort(actual.begin(), actual.end(), Before);
  std::sort(expected.begin(), expected.end(), Before);
  ASSERT_TRUE(actual == expected) << Picture(raster);
  ExpectLinked(found.hierarchy);
}

// Where a scan by rows meets an outline: row, column, and whether it is a hole's.
using Meeting = std::array<int, 3>;

// A scan meets an outer border at the component's first pixel, and a hole's border at the pixel
// left of the hole's first one; at one and the same pixel, the outer border first.
std::vector<Meeting> Meetings(const cv::Mat& raster) {
  std::vector<Meeting> meetings;
  for (const std::vector<::Run>& component : PlainComponents(raster)) {
    meetings.push_back({component[0].Row, component[0].FirstColumn, 0});
  }
  cv::Mat padded;
  cv::copyMakeBorder(raster, padded, 1, 1, 1, 1, cv::BORDER_CONSTANT, cv::Scalar(0));
  cv::Mat labels;
  cv::connectedComponents(padded == 0, labels, 4, CV_32S);
  std::set<int> met = {0, labels.at<int>(0, 0)};  // The foreground and what lies around it.
  for (int y = 0; y < labels.rows; ++y) {
    for (int x = 0; x < labels.cols; ++x) {
      if (met.insert(labels.at<int>(y, x)).second) meetings.push_back({y - 1, x - 2, 1});
    }
  }
  std::sort(meetings.begin(), meetings.end());
  return meetings;
}

bool IsBetween(int value, int a, int b) {
  return value >= std::min(a, b) && value <= std::max(a, b);
}

// Whether a pixel lies on the straight way from one vertex to the next.
bool IsOnWay(const cv::Point& pixel, const cv::Point& from, const cv::Point& to) {
  const cv::Point a = pixel - from;
  const cv::Point b = to - from;
  return a.x * b.y == a.y * b.x && IsBetween(pixel.x, from.x, to.x) &&
         IsBetween(pixel.y, from.y, to.y);
}

// An outline's chain starts where the scan meets it: at its first vertex or on the way there.
void ExpectScanOrder(const cv::Mat& raster) {
  const Found found = Find(raster);
  const std::vector<Meeting> meetings = Meetings(raster);
  ASSERT_EQ(found.contours.size(), meetings.size());
  for (std::size_t i = 0; i < meetings.size(); ++i) {
    const Contour& contour = found.contours[i];
    const cv::Point pixel(meetings[i][1], meetings[i][0]);
    ASSERT_EQ(found.hierarchy[i][3] >= 0, meetings[i][2] == 1);
    ASSERT_TRUE(IsOnWay(pixel, contour.back(), contour.front())) << Picture(raster);
  }
}

void ExpectPaintedBack(const cv::Mat& raster) {
  const Found found = Find(raster);
  cv::Mat painted = cv::Mat::zeros(raster.size(), CV_8UC1);
  if (!found.contours.empty()) {
    cv::drawContours(painted, found.contours, -1, cv::Scalar(255), cv::FILLED);
  }
  ASSERT_EQ(Picture(painted), Picture(raster));
}

TEST(VemRLC, NewObjectHasEmptyResults) {
  const VemRLC coder;
  EXPECT_EQ(coder.ComponentCount, 0);
  EXPECT_TRUE(coder.ComponentRuns.empty());
  EXPECT_TRUE(coder.ComponentStarts.empty());
  EXPECT_TRUE(coder.FillRuns.empty());
}

TEST(VemRLC, OnePixelIsOneRunAndOneVertex) {
  const cv::Mat raster = Raster(
      "......\n"
      "......\n"
      "......\n"
      "....#.\n");
  const std::vector<::Run> expected = {{3, 4, 4}};
  EXPECT_EQ(FillRuns(raster), expected);
  const Found found = Find(raster);
  EXPECT_EQ(found.runs, expected);
  EXPECT_EQ(found.runStarts, (std::vector<int>{0, 1}));
  EXPECT_EQ(found.points, (Contour{{4, 3}}));
  EXPECT_EQ(found.pointStarts, (std::vector<int>{0, 1}));
  EXPECT_EQ(found.hierarchy, (std::vector<cv::Vec4i>{{-1, -1, -1, -1}}));
}

TEST(VemRLC, BrokenRowIsTwoRuns) {
  const std::vector<::Run> expected = {{0, 1, 2}, {0, 4, 4}};
  EXPECT_EQ(FillRuns(Raster(".##.#\n")), expected);
}

TEST(VemRLC, ComponentsFollowTheirFirstRuns) {
  const VemRLC coder =
      Components(Raster("#...##\n"
                        "#.....\n"
                        ".##..#\n"));
  EXPECT_EQ(coder.ComponentCount, 3);
  EXPECT_EQ(coder.ComponentRuns,
            (std::vector<::Run>{{0, 0, 0}, {1, 0, 0}, {2, 1, 2}, {0, 4, 5}, {2, 5, 5}}));
  EXPECT_EQ(coder.ComponentStarts, (std::vector<int>{0, 3, 4, 5}));
  EXPECT_TRUE(coder.FillRuns.empty());
}

TEST(VemRLC, CornersConnect) {
  EXPECT_EQ(Components(Raster("#..\n.#.\n#..\n")).ComponentCount, 1);
  EXPECT_EQ(Components(Raster("#..\n..#\n#..\n")).ComponentCount, 3);
}

TEST(VemRLC, CalcEmptiesWhatItDoesNotFill) {
  cv::Mat raster = Raster("##\n");
  VemRLC coder;
  coder.SetParam(1, 9, false, -1, -1, -1, false, false);
  coder.Calc(raster, true);
  coder.SetParam(1, 6, true, -1, -1, 1, false, false);
  coder.Calc(raster, true);
  EXPECT_EQ(coder.FillRuns.size(), 1u);
  EXPECT_EQ(coder.ComponentCount, 0);
  EXPECT_TRUE(coder.ComponentRuns.empty());
  EXPECT_TRUE(coder.ComponentStarts.empty());
}

TEST(VemRLC, NewObjectListsRunsAndCalcReplacesThem) {
  cv::Mat raster = Raster("##\n");
  VemRLC coder;
  coder.Calc(raster, true);
  coder.Calc(raster, true);
  EXPECT_EQ(coder.FillRuns, (std::vector<::Run>{{0, 0, 1}}));
  coder.SetParam(1, 9, false, -1, -1, -1, false, false);
  coder.Calc(raster, true);
  EXPECT_TRUE(coder.FillRuns.empty());
  EXPECT_EQ(coder.ComponentCount, 1);
}

TEST(VemRLC, ResultsStandInTheirOrder) {
  const VemRLC coder;
  const auto place = [](const auto& member) { return reinterpret_cast<std::uintptr_t>(&member); };
  EXPECT_LT(place(coder.ComponentCount), place(coder.ComponentRuns));
  EXPECT_LT(place(coder.ComponentRuns), place(coder.ComponentStarts));
  EXPECT_LT(place(coder.ComponentStarts), place(coder.FillRuns));
}

TEST(VemRLC, OuterBorderRunsDownTheLeftSideFirst) {
  const Found found =
      Find(Raster(".....\n"
                  ".###.\n"
                  ".###.\n"
                  ".....\n"));
  EXPECT_EQ(found.contours, (std::vector<Contour>{{{1, 1}, {1, 2}, {3, 2}, {3, 1}}}));
}

TEST(VemRLC, HoleStandsBehindItsOuterBorder) {
  const Found found =
      Find(Raster("#####.#\n"
                  "#.#.#..\n"
                  "#####.#\n"));
  EXPECT_EQ(found.contours.size(), 5u);
  EXPECT_EQ(found.contours[0], (Contour{{0, 0}, {0, 2}, {4, 2}, {4, 0}}));
  EXPECT_EQ(found.contours[1], (Contour{{6, 0}}));
  EXPECT_EQ(found.contours[2], (Contour{{0, 1}, {1, 0}, {2, 1}, {1, 2}}));
  EXPECT_EQ(found.contours[3], (Contour{{2, 1}, {3, 0}, {4, 1}, {3, 2}}));
  EXPECT_EQ(found.contours[4], (Contour{{6, 2}}));
  EXPECT_EQ(found.hierarchy,
            (std::vector<cv::Vec4i>{
                {1, -1, 2, -1}, {4, 0, -1, -1}, {3, -1, -1, 0}, {-1, 2, -1, 0}, {-1, 1, -1, -1}}));
  EXPECT_EQ(found.runStarts, (std::vector<int>{0, 1, 6, 7}));
}

// The hole's border runs straight through the pixel left of the hole's first one.
TEST(VemRLC, FirstPixelOfABorderNeedsNoVertex) {
  const cv::Mat raster = Raster(
      "...#..\n"
      "..#.#.\n"
      ".#...#\n"
      "..#.#.\n"
      "...#..\n");
  ExpectOutlines(raster);
  const Found found = Find(raster);
  ASSERT_EQ(found.contours.size(), 2u);
  EXPECT_EQ(found.contours[1], (Contour{{3, 0}, {5, 2}, {3, 4}, {1, 2}}));
}

TEST(VemRLC, RastersWithoutForegroundLeaveListsEmpty) {
  const cv::Mat kRasters[] = {cv::Mat(),
                              cv::Mat::zeros(5, 70, CV_8UC1),
                              cv::Mat(4, 4, CV_8UC3, cv::Scalar::all(255)),
                              cv::Mat(0, 4, CV_8UC1),
                              cv::Mat(4, 0, CV_8UC1),
                              cv::Mat(std::vector<int>{3, 3, 3}, CV_8UC1, cv::Scalar(255))};
  for (const cv::Mat& raster : kRasters) {
    EXPECT_TRUE(FillRuns(raster).empty());
    const VemRLC coder = Components(raster);
    EXPECT_EQ(coder.ComponentCount, 0);
    EXPECT_TRUE(coder.ComponentRuns.empty());
    EXPECT_TRUE(coder.ComponentStarts.empty());
    const Found found = Find(raster);
    EXPECT_TRUE(found.points.empty());
    EXPECT_TRUE(found.pointStarts.empty());
    EXPECT_TRUE(found.hierarchy.empty());
    EXPECT_TRUE(found.runs.empty());
    EXPECT_TRUE(found.runStarts.empty());
    EXPECT_TRUE(found.contours.empty());
  }
}

TEST(VemRLC, FindContoursAndConvertReplaceWhatListsHeld) {
  cv::Mat raster = Raster("#.#\n");
  cv::Mat blank = Raster("...\n");
  Found found = Find(Raster("#.#\n#.#\n###\n"));
  const auto find = [&](cv::Mat& source) {
    VemRLC::FindContours(source, 1, &found.points, &found.pointStarts, &found.hierarchy, nullptr,
                         &found.runs, &found.runStarts, true, -1, -1, 1, false);
    VemRLC::Convert(found.points, found.pointStarts, found.contours);
  };
  find(raster);
  EXPECT_EQ(found.points, (Contour{{0, 0}, {2, 0}}));
  EXPECT_EQ(found.pointStarts, (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(found.hierarchy, (std::vector<cv::Vec4i>{{1, -1, -1, -1}, {-1, 0, -1, -1}}));
  EXPECT_EQ(found.runs, (std::vector<::Run>{{0, 0, 0}, {0, 2, 2}}));
  EXPECT_EQ(found.contours, (std::vector<Contour>{{{0, 0}}, {{2, 0}}}));
  EXPECT_EQ(found.runStarts, (std::vector<int>{0, 1, 2}));
  find(blank);
  EXPECT_TRUE(found.points.empty());
  EXPECT_TRUE(found.pointStarts.empty());
  EXPECT_TRUE(found.hierarchy.empty());
  EXPECT_TRUE(found.runs.empty());
  EXPECT_TRUE(found.runStarts.empty());
  EXPECT_TRUE(found.contours.empty());
}

template <typename T>
void ExpectDepth(int type, T foreground) {
  SCOPED_TRACE(type);
  std::mt19937 random(7);
  for (const int columns : {1, 63, 64, 65, 130}) {
    const cv::Mat mask = Noise(random, 3, columns, 40);
    cv::Mat raster = cv::Mat::zeros(mask.size(), type);
    for (int row = 0; row < mask.rows; ++row) {
      for (int column = 0; column < mask.cols; ++column) {
        if (IsSet(mask, row, column)) raster.at<T>(row, column) = foreground;
      }
    }
    ASSERT_EQ(FillRuns(raster), PlainRuns(mask));
  }
}

TEST(VemRLC, AnyNonZeroPixelOfAnyDepthIsForeground) {
  ExpectDepth<std::uint8_t>(CV_8UC1, 1);
  ExpectDepth<std::int8_t>(CV_8SC1, -128);
  ExpectDepth<std::uint16_t>(CV_16UC1, 256);
  ExpectDepth<std::int16_t>(CV_16SC1, -32768);
  ExpectDepth<std::int32_t>(CV_32SC1, 65536);
  ExpectDepth<std::int32_t>(CV_32SC1, std::numeric_limits<std::int32_t>::min());
  ExpectDepth<float>(CV_32FC1, 1e-40f);
  ExpectDepth<float>(CV_32FC1, std::numeric_limits<float>::quiet_NaN());
  ExpectDepth<double>(CV_64FC1, -1e-310);
#ifdef CV_16F
  ExpectDepth<std::uint16_t>(CV_MAKETYPE(CV_16F, 1), 0x8001);
#endif
}

TEST(VemRLC, MinusZeroIsBackground) {
  EXPECT_TRUE(FillRuns(cv::Mat(2, 3, CV_32FC1, cv::Scalar(-0.0))).empty());
  EXPECT_TRUE(FillRuns(cv::Mat(2, 3, CV_64FC1, cv::Scalar(-0.0))).empty());
#ifdef CV_16F
  cv::Mat half(1, 2, CV_MAKETYPE(CV_16F, 1));
  half.at<std::uint16_t>(0, 0) = half.at<std::uint16_t>(0, 1) = 0x8000;
  EXPECT_TRUE(FillRuns(half).empty());
#endif
}

TEST(VemRLC, RunsAgreeWithPlainLoopsAroundWordBorders) {
  std::mt19937 random(1);
  for (const int columns :
       {1, 2, 15, 16, 17, 31, 62, 63, 64, 65, 66, 127, 128, 129, 191, 192, 193, 256, 1000, 1024}) {
    for (const int percent : {0, 1, 10, 50, 90, 99, 100}) {
      SCOPED_TRACE(testing::Message() << columns << " columns, " << percent << " percent");
      ASSERT_NO_FATAL_FAILURE(ExpectRuns(Noise(random, 9, columns, percent)));
    }
  }
}

TEST(VemRLC, EveryRasterOf4By4AgreesWithOpenCV) {
  for (int bits = 0; bits < 1 << 16; ++bits) {
    cv::Mat raster(4, 4, CV_8UC1);
    for (int i = 0; i < 16; ++i) raster.data[i] = (bits >> i & 1) != 0 ? 255 : 0;
    ASSERT_NO_FATAL_FAILURE(ExpectRuns(raster));
    ASSERT_NO_FATAL_FAILURE(ExpectComponents(raster));
    ASSERT_NO_FATAL_FAILURE(ExpectOutlines(raster));
  }
}

TEST(VemRLC, RandomRastersAgreeWithOpenCV) {
  std::mt19937 random(2);
  for (int i = 0; i < 3000; ++i) {
    const int rows = 1 + static_cast<int>(random() % 40);
    const int columns = random() % 4 == 0 ? 62 + static_cast<int>(random() % 5)
                                          : 1 + static_cast<int>(random() % 40);
    const cv::Mat raster = Noise(random, rows, columns, static_cast<int>(random() % 101));
    SCOPED_TRACE(i);
    ASSERT_NO_FATAL_FAILURE(ExpectRuns(raster));
    ASSERT_NO_FATAL_FAILURE(ExpectComponents(raster));
    ASSERT_NO_FATAL_FAILURE(ExpectOutlines(raster));
    ASSERT_NO_FATAL_FAILURE(ExpectScanOrder(raster));
    ASSERT_NO_FATAL_FAILURE(ExpectPaintedBack(raster));
  }
}

cv::Mat Shapes(std::mt19937& random, int size) {
  const auto any = [&](int limit) {
    return static_cast<int>(random() % static_cast<unsigned>(limit));
  };
  cv::Mat raster = cv::Mat::zeros(size, size + 7, CV_8UC1);
  for (int i = 0; i < 40; ++i) {
    const cv::Scalar color(i % 3 == 2 ? 0 : 255);
    const cv::Point center(any(size), any(size));
    if (i % 2 == 0) {
      cv::circle(raster, center, 1 + any(size / 5), color, i % 5 == 0 ? 2 : cv::FILLED);
    } else {
      cv::rectangle(raster, cv::Rect(center, cv::Size(1 + any(size / 3), 1 + any(size / 3))), color,
                    i % 5 == 0 ? 1 : cv::FILLED);
    }
  }
  return raster;
}

TEST(VemRLC, NestedShapesAgreeWithOpenCVAndPaintBack) {
  std::mt19937 random(3);
  for (int i = 0; i < 60; ++i) {
    const cv::Mat raster = Shapes(random, 64 + 9 * i);
    SCOPED_TRACE(i);
    ASSERT_NO_FATAL_FAILURE(ExpectRuns(raster));
    ASSERT_NO_FATAL_FAILURE(ExpectComponents(raster));
    ASSERT_NO_FATAL_FAILURE(ExpectOutlines(raster));
    ASSERT_NO_FATAL_FAILURE(ExpectScanOrder(raster));
    ASSERT_NO_FATAL_FAILURE(ExpectPaintedBack(raster));
  }
}

TEST(VemRLC, PartsOfALargerRasterAreReadWithinTheirBounds) {
  std::mt19937 random(4);
  const cv::Mat whole(70, 300, CV_8UC1, cv::Scalar(255));
  for (int i = 0; i < 200; ++i) {
    const cv::Rect place(static_cast<int>(random() % 100), static_cast<int>(random() % 30),
                         1 + static_cast<int>(random() % 200), 1 + static_cast<int>(random() % 40));
    cv::Mat part = whole.clone()(place);
    const cv::Mat noise = Noise(random, place.height, place.width, 30);
    noise.copyTo(part);
    ASSERT_EQ(FillRuns(part), PlainRuns(noise));
    ASSERT_EQ(Components(part).ComponentRuns, Components(noise).ComponentRuns);
    ASSERT_EQ(Find(part).contours, Find(noise).contours);
  }
}

TEST(VemRLC, SingleRowsAndColumnsWork) {
  std::mt19937 random(5);
  for (const int length : {1, 2, 63, 64, 65, 500}) {
    for (const cv::Size size : {cv::Size(length, 1), cv::Size(1, length)}) {
      for (int i = 0; i < 20; ++i) {
        const cv::Mat raster = Noise(random, size.height, size.width, 5 * i);
        ASSERT_NO_FATAL_FAILURE(ExpectRuns(raster));
        ASSERT_NO_FATAL_FAILURE(ExpectComponents(raster));
        ASSERT_NO_FATAL_FAILURE(ExpectOutlines(raster));
        ASSERT_NO_FATAL_FAILURE(ExpectPaintedBack(raster));
      }
    }
  }
}

// The raster ends at a page that can't be read, and then begins behind one.
TEST(VemRLC, NothingOutsideTheRasterIsRead) {
  std::mt19937 random(8);
  const int rows = 4;
  const GuardedBytes bytes(rows * 300 * sizeof(float));
  for (int columns = 1; columns <= 300; ++columns) {
    const cv::Mat noise = Noise(random, rows, columns, 40);
    for (const int type : {CV_8UC1, CV_16UC1, CV_32FC1}) {
      cv::Mat expected;
      noise.convertTo(expected, type);
      const std::size_t size = expected.total() * expected.elemSize();
      for (unsigned char* const place : {bytes.Begin(), bytes.End() - size}) {
        std::memcpy(place, expected.data, size);
        const cv::Mat raster(rows, columns, type, place);
        ASSERT_EQ(FillRuns(raster), PlainRuns(noise));
        ASSERT_EQ(Components(raster).ComponentRuns, Components(noise).ComponentRuns);
        ASSERT_EQ(Find(raster).contours, Find(noise).contours);
      }
    }
  }
}

// The lists grow by what the rows before had.
TEST(VemRLC, RowsMayBecomeFullerAndEmptier) {
  std::mt19937 random(9);
  for (const bool fuller : {true, false}) {
    for (const int percent : {10, 50}) {
      cv::Mat raster = cv::Mat::zeros(300, 900, CV_8UC1);
      const cv::Rect half(0, fuller ? 200 : 0, 900, 100);
      Noise(random, half.height, half.width, percent).copyTo(raster(half));
      ASSERT_NO_FATAL_FAILURE(ExpectRuns(raster));
      ASSERT_NO_FATAL_FAILURE(ExpectComponents(raster));
    }
  }
}

// Next to each other stand rows of short and long, near and distant runs.
TEST(VemRLC, RowsOfManyRunsMeetInAnyWay) {
  std::mt19937 random(11);
  for (int i = 0; i < 60; ++i) {
    cv::Mat raster(40, 100 + static_cast<int>(random() % 300), CV_8UC1);
    for (int row = 0; row < raster.rows; ++row) {
      const int grain = 1 + static_cast<int>(random() % 12);
      const int percent = 20 + static_cast<int>(random() % 61);
      const cv::Mat cells = Noise(random, 1, raster.cols / grain + 1, percent);
      for (int column = 0; column < raster.cols; ++column) {
        raster.at<unsigned char>(row, column) = cells.at<unsigned char>(0, column / grain);
      }
    }
    SCOPED_TRACE(i);
    ASSERT_NO_FATAL_FAILURE(ExpectComponents(raster));
  }
}

// So borders go straight on for up to six rows and more, at every kind of side.
TEST(VemRLC, RowsMayBeRepeated) {
  std::mt19937 random(12);
  for (int i = 0; i < 1500; ++i) {
    const cv::Mat rows =
        Noise(random, 1 + static_cast<int>(random() % 12), 1 + static_cast<int>(random() % 24),
              static_cast<int>(random() % 101));
    const auto most = 1 + random() % 6;
    cv::Mat raster;
    for (int row = 0; row < rows.rows; ++row) {
      for (auto times = 1 + random() % most; times > 0; --times) raster.push_back(rows.row(row));
    }
    SCOPED_TRACE(i);
    ASSERT_NO_FATAL_FAILURE(ExpectComponents(raster));
    ASSERT_NO_FATAL_FAILURE(ExpectOutlines(raster));
    ASSERT_NO_FATAL_FAILURE(ExpectScanOrder(raster));
    ASSERT_NO_FATAL_FAILURE(ExpectPaintedBack(raster));
  }
}

// A hole with a tip at its top, through which its border runs straight, and more vertices than are
// gathered at once.
TEST(VemRLC, LongBordersMayBeginWithoutAVertex) {
  for (const int teeth : {10, 120, 130, 500}) {
    const int half = 2 * teeth;
    cv::Mat raster(half + 20, 2 * half + 20, CV_8UC1, cv::Scalar(255));
    for (int y = 0; y <= half; ++y) {
      for (int x = -y; x <= y; ++x) raster.at<unsigned char>(y + 5, half + 10 + x) = 0;
    }
    for (int x = 1; x < 2 * half; x += 4) {
      for (int y = 0; y < 5; ++y) raster.at<unsigned char>(half + 6 + y, x + 10) = 0;
    }
    ASSERT_NO_FATAL_FAILURE(ExpectOutlines(raster));
    const Found found = Find(raster);
    ASSERT_EQ(found.contours.size(), 2u);
    EXPECT_NE(found.contours[1][0], cv::Point(half + 9, 5));
  }
}

TEST(VemRLC, LargeNoiseAgreesWithOpenCV) {
  std::mt19937 random(10);
  for (const int percent : {5, 35, 50, 65, 95}) {
    const cv::Mat raster = Noise(random, 150, 260, percent);
    ASSERT_NO_FATAL_FAILURE(ExpectRuns(raster));
    ASSERT_NO_FATAL_FAILURE(ExpectComponents(raster));
    ASSERT_NO_FATAL_FAILURE(ExpectOutlines(raster));
    ASSERT_NO_FATAL_FAILURE(ExpectScanOrder(raster));
  }
}

TEST(VemRLC, RasterStaysUnchanged) {
  std::mt19937 random(6);
  const cv::Mat original = Noise(random, 50, 100, 50);
  const cv::Mat raster = original.clone();
  FillRuns(raster);
  Components(raster);
  Find(raster);
  EXPECT_EQ(Picture(raster), Picture(original));
  EXPECT_EQ(cv::countNonZero(raster != original), 0);
}

}  // namespace
