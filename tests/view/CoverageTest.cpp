#include "view/Coverage.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

// Coverages beside slow twins, which note each part of each line of a picture by itself.

namespace {

constexpr int kWidth = 37;
constexpr int kHeight = 11;
constexpr int kColumns = kWidth * kParts;

class Weights final : public RowSink {
 public:
  void Add(int row, int first, const std::vector<unsigned char>& weights) override {
    for (std::size_t i = 0; i < weights.size(); ++i) {
      unsigned char& weight = picture_.at<unsigned char>(row, first + static_cast<int>(i));
      EXPECT_EQ(weight, 0) << "row " << row << " twice";
      weight = weights[i];
    }
  }

  const cv::Mat& Picture() const { return picture_; }

 private:
  cv::Mat picture_ = cv::Mat::zeros(kHeight, kWidth, CV_8UC1);
};

cv::Mat HandedOut(Coverage& coverage, const std::vector<Chain>& chains) {
  for (const Chain& chain : chains) coverage.Add(chain);
  Weights weights;
  coverage.HandOut(weights);
  return weights.Picture().clone();
}

// Where a line crosses the edges of a chain, in parts, from left to right.
std::vector<int> Crossings(const Chain& chain, int line) {
  std::vector<int> crossings;
  const double y = (line + 0.5) / kLines - 0.5;
  for (std::size_t i = 0; i < chain.size(); ++i) {
    const cv::Point2d a = chain[i], b = chain[(i + 1) % chain.size()];
    if ((a.y <= y) == (b.y <= y)) continue;
    const double x = a.x + (y - a.y) / (b.y - a.y) * (b.x - a.x) + 0.5;
    crossings.push_back(static_cast<int>(std::min(std::max(x, 0.0), 1.0 * kWidth) * kParts + 0.5));
  }
  std::sort(crossings.begin(), crossings.end());
  return crossings;
}

cv::Mat Slowly(const std::vector<Chain>& chains, bool evenOdd) {
  cv::Mat picture(kHeight, kWidth, CV_8UC1);
  std::vector<int> covered(kWidth);
  for (int line = 0; line < kHeight * kLines; ++line) {
    std::vector<char> parts(kColumns, 0);
    for (const Chain& chain : chains) {
      const std::vector<int> crossings = Crossings(chain, line);
      for (std::size_t i = 1; i < crossings.size(); i += 2) {
        for (int part = crossings[i - 1]; part < crossings[i]; ++part) {
          char& noted = parts[static_cast<std::size_t>(part)];
          noted = evenOdd ? !noted : 1;
        }
      }
    }
    if (line % kLines == 0) std::fill(covered.begin(), covered.end(), 0);
    for (int part = 0; part < kColumns; ++part) {
      covered[static_cast<std::size_t>(part / kParts)] += parts[static_cast<std::size_t>(part)];
    }
    for (int x = 0; line % kLines == kLines - 1 && x < kWidth; ++x) {
      const int full = kLines * kParts, sum = covered[static_cast<std::size_t>(x)];
      picture.at<unsigned char>(line / kLines, x) =
          static_cast<unsigned char>((sum * 255 + full / 2) / full);
    }
  }
  return picture;
}

class Dice {
 public:
  explicit Dice(unsigned seed) : engine_(seed) {}
  double Real(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(engine_);
  }
  cv::Point2d Point() { return {Real(-9, kWidth + 9), Real(-5, kHeight + 5)}; }

 private:
  std::mt19937 engine_;
};

// A line of a width, as a pen makes it.
Chain Bar(Dice& dice, double width) {
  const cv::Point2d a = dice.Point(), b = dice.Point();
  const cv::Point2d along = Direction(a, b), side = width / 2 * cv::Point2d(-along.y, along.x);
  return {a + side, b + side, b - side, a - side};
}

// More than are sorted line by line, and fewer.
const int kNumbers[] = {1, 2, 40, 256, 257, 900};

}  // namespace

TEST(Coverage, OfPiecesIsTheirUnion) {
  Dice dice(1);
  for (const int number : kNumbers) {
    for (const double width : {0.02, 0.3, 4.0}) {
      SCOPED_TRACE(testing::Message() << number << " of width " << width);
      std::vector<Chain> pieces;
      while (static_cast<int>(pieces.size()) < number) {
        pieces.push_back(Bar(dice, width));
        if (pieces.size() % 7 == 0)
          pieces.back() = CircleOf(dice.Point(), width, Frame({9, 9}, 99));
      }
      UnionCoverage coverage({kWidth, kHeight});
      EXPECT_EQ(cv::norm(HandedOut(coverage, pieces), Slowly(pieces, false), cv::NORM_INF), 0);
    }
  }
}

TEST(Coverage, OfChainsIsEvenOdd) {
  Dice dice(2);
  for (const int number : kNumbers) {
    SCOPED_TRACE(number);
    Chain chain;
    for (int i = 0; i < number + 2; ++i) chain.push_back(dice.Point());
    const std::vector<Chain> chains = {chain, Bar(dice, 5), Bar(dice, 5)};
    EvenOddCoverage coverage({kWidth, kHeight});
    EXPECT_EQ(cv::norm(HandedOut(coverage, chains), Slowly(chains, true), cv::NORM_INF), 0);
  }
}

// What lies in no line of the picture, or beside it, is handed out to nobody.
TEST(Coverage, OfNothingIsNone) {
  for (const Chain& chain : {Chain{}, Chain{{1, 1}}, Chain{{1, 3}, {9, 3}, {4, 3}},
                             Chain{{1, -3}, {9, -3}, {4, -1}}, Chain{{99, 1}, {120, 2}, {99, 9}}}) {
    UnionCoverage pieces({kWidth, kHeight});
    EvenOddCoverage chains({kWidth, kHeight});
    EXPECT_EQ(cv::countNonZero(HandedOut(pieces, {chain})), 0);
    EXPECT_EQ(cv::countNonZero(HandedOut(chains, {chain})), 0);
  }
}

TEST(Coverage, IsThatOfNearPointsOnTheSameLines) {
  const Frame frame({kWidth, kHeight}, 3);
  for (const double far : {1e17, 1e18, 1e30, 1e300, 1.7e308}) {
    SCOPED_TRACE(far);
    // Along diagonals, level and upright lines through the picture.
    const Chain chains[] = {{{-far, -far}, {far, far}, {-far, far}},
                            {{-far, 3.25}, {far, 3.25}, {far, 7}, {-far, 7}},
                            {{11.5, -far}, {14.75, -far}, {14.75, far}, {11.5, far}},
                            {{-far, 2 * (far / 2)}, {far, -far}, {far, far}}};
    for (const Chain& chain : chains) {
      Chain near = chain;
      for (cv::Point2d& p : near) {
        if (p.x == far || p.x == -far) p.x = std::copysign(1000, p.x);
        if (p.y == far || p.y == -far) p.y = std::copysign(1000, p.y);
      }
      EvenOddCoverage expected({kWidth, kHeight}), coverage({kWidth, kHeight});
      const cv::Mat picture = HandedOut(coverage, {chain});
      EXPECT_EQ(cv::norm(picture, HandedOut(expected, {near}), cv::NORM_INF), 0);
      EXPECT_GT(cv::countNonZero(picture), 40);

      cv::Point2d a = chain[0], b = chain[1], nearA = near[0], nearB = near[1];
      const bool seen = Clip(a, b, frame);
      ASSERT_EQ(seen, Clip(nearA, nearB, frame));
      if (!seen) continue;
      EXPECT_LT(cv::norm(a - nearA) + cv::norm(b - nearB), 1e-12);
    }
  }
}

// The line y = x / 2 + 3 through points that doubles hold exactly, of which the one is 2^59 wide.
TEST(Coverage, KeepsALineThatMeetsNoAxisAtItsEnds) {
  const double far = 0x1p59;
  const cv::Point2d a(-2 * far - 2048, -far - 1021), b(far * 6, 3 * far + 3);
  const cv::Point2d point = NearPoint({-far * 2, -far}, {far * 2, far});
  EXPECT_EQ(cv::norm(point), 0);
  EXPECT_NEAR(1 / SlopeOf(a, b), 0.5, 1e-12);
  const cv::Point2d through = NearPoint({-0x1p51 * 2 - 2, -0x1p51 + 2}, {0x1p52 * 2, 0x1p52 + 3});
  EXPECT_NEAR(through.x, 0, 1e-12);
  EXPECT_NEAR(through.y, 3, 1e-9);
}

// Each of 20,000 lines meets all the rows; noted one by one or sorted, they would take half an
// hour.
TEST(Coverage, EndsARowThatIsCovered) {
  UnionCoverage coverage({8, 40000});
  constexpr int kPieces = 20000;
  for (int i = 0; i < kPieces; ++i) {
    const double x = 8.0 * i / kPieces;
    coverage.Add({{x - 2, -9}, {x + 2, -9}, {x + 2, 50000}, {x - 2, 50000}});
  }
  class Count final : public RowSink {
   public:
    void Add(int, int first, const std::vector<unsigned char>& weights) override {
      if (first == 0 && weights == std::vector<unsigned char>(8, 255)) ++rows;
    }
    int rows = 0;
  };
  Count count;
  coverage.HandOut(count);
  EXPECT_EQ(count.rows, 40000);
}
