#ifndef VIEW_COVERAGE_H_
#define VIEW_COVERAGE_H_

#include <cstdint>
#include <vector>

#include <opencv2/core.hpp>

#include "view/Shapes.h"

/// How much of each pixel closed chains cover, from 0 to 255. A pixel reaches half a pixel to each
/// side of its whole coordinates.
///
/// Each row is cut into 16 lines, on which a chain begins and ends at 1/256 of a column; steps are
/// rounded one by one, so that the result is the same on every machine.
class Coverage {
 public:
  explicit Coverage(const cv::Size& picture) : width_(picture.width), height_(picture.height) {}

  /// Adds a chain of finite numbers; its last point is joined to its first.
  void Add(const Chain& chain);

  /// Takes the weights of a row's columns from `first` on.
  class Sink {
   public:
    virtual void Add(int row, int first, const std::vector<unsigned char>& weights) = 0;

   protected:
    ~Sink() = default;
  };

  /// Hands out the rows that are covered: what an odd number of chains enclose.
  void HandOutEvenOdd(Sink& sink) { HandOut(1, sink); }
  /// What any chain encloses, where all go round the same way.
  void HandOutUnion(Sink& sink) { HandOut(-1, sink); }

 private:
  struct Edge {
    std::int64_t firstLine;
    std::int64_t endLine;
    cv::Point2d upper;
    double across;   // From the upper to the lower end.
    double perDown;  // What one pixel downward is of the edge.
    int turn;
  };
  struct Crossing {
    std::int64_t x;
    int turn;
  };

  void AddEdge(const cv::Point2d& a, const cv::Point2d& b);
  void HandOut(int mask, Sink& sink);
  void Admit(std::int64_t row, std::size_t& next);
  void CrossLine(std::int64_t line);
  void CoverLine(int mask);
  void Cover(std::int64_t from, std::int64_t to);
  void HandOutRow(int row, Sink& sink);

  std::int64_t width_;
  std::int64_t height_;
  std::vector<Edge> edges_;
  std::vector<Edge> met_;            // By the row at hand.
  std::vector<Crossing> crossings_;  // Of the line at hand.
  std::vector<std::int64_t> steps_;  // From column to column, in 1/256 of a line.
  std::int64_t firstColumn_ = 0;     // What is not 0 among the steps.
  std::int64_t endColumn_ = 0;
  std::vector<unsigned char> weights_;
};

#endif  // VIEW_COVERAGE_H_
