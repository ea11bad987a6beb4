#include "masks/DenseFill.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "masks/EdgeWalk.h"

namespace {

constexpr int kWordBits = 64;

/// What one word of a row's pixels holds.
struct Word {
  std::uint64_t turns;    ///< Where the row turns from outside to inside or back.
  std::uint64_t covered;  ///< Pixels that a border covers, or a crossing meets in their centre.
};

// Bit i becomes the parity of the bits up to i.
std::uint64_t Parities(std::uint64_t bits) {
  for (int shift = 1; shift < kWordBits; shift *= 2) bits ^= bits << shift;
  return bits;
}

class DenseFill {
 public:
  explicit DenseFill(const FillArea& area)
      : area_(area),
        words_(static_cast<std::size_t>(area.width) / kWordBits + 1),
        plane_(words_ * static_cast<std::size_t>(area.endRow - area.firstRow)) {}

  void AddEdge(const FillEdge& edge) {
    if (IsShort(edge)) return AddShortEdge(edge.from, edge.to);
    AddCrossings(edge);
    FillEdge line = edge;
    if (!ClipEdge(line, area_)) return;
    WalkBorder(line, area_, [&](int row, int first, int last) {
      Cover(plane_.data() + RowStart(row), static_cast<std::size_t>(first),
            static_cast<std::size_t>(last));
    });
  }

  void HandOut(RunSink& sink) const {
    RunBatch batch(sink);
    const std::size_t most = static_cast<std::size_t>(area_.width) / 2 + 1;
    for (int row = area_.firstRow; row < area_.endRow; ++row) {
      batch.Take(ListRuns(row, batch.Room(most)));
    }
    batch.Finish();
  }

 private:
  std::size_t RowStart(int row) const {
    return words_ * static_cast<std::size_t>(row - area_.firstRow);
  }

  bool IsInside(const cv::Point& p) const {
    return p.x >= 0 && p.x < area_.width && p.y >= area_.firstRow && p.y < area_.endRow;
  }

  bool IsShort(const FillEdge& edge) const {
    constexpr int kShort = 16;
    return IsInside(edge.from) && IsInside(edge.to) && std::abs(edge.from.x - edge.to.x) < kShort &&
           std::abs(edge.from.y - edge.to.y) < kShort;
  }

  // A pixel is inside where an odd number of crossings lie left of it, and where one meets it.
  void AddCrossings(const FillEdge& edge) {
    WalkCrossings(edge, area_, [&](int row, std::int64_t x) {
      Word* const words = plane_.data() + RowStart(row);
      const std::int64_t before = ColumnTo(x);
      const auto turn = static_cast<std::size_t>(
          std::min<std::int64_t>(std::max<std::int64_t>(before + 1, 0), area_.width));
      words[turn / kWordBits].turns ^= std::uint64_t{1} << turn % kWordBits;
      if ((x & (kCrossingOne - 1)) == 0 && before >= 0 && before < area_.width) {
        const auto met = static_cast<std::size_t>(before);
        words[met / kWordBits].covered |= std::uint64_t{1} << met % kWordBits;
      }
    });
  }

  // A short edge within the area, pixel by pixel. It is so near its border in each row that the row
  // may turn at any pixel of the border: those between are covered.
  void AddShortEdge(const cv::Point& from, const cv::Point& to) {
    const bool rightward = from.x <= to.x;
    const cv::Point& left = rightward ? from : to;
    const cv::Point& right = rightward ? to : from;
    const bool downward = left.y <= right.y;
    const int across = right.x - left.x;
    const int down = std::abs(right.y - left.y);
    const int longer = std::max(across, down);
    const int shorter = std::min(across, down);
    const std::ptrdiff_t always =
        down > across ? -1 : 0;  // A step of a steep edge changes its row.
    const auto rowStep = static_cast<std::ptrdiff_t>(downward ? words_ : 0 - words_);
    Word* words = plane_.data() + RowStart(left.y);
    auto column = static_cast<std::size_t>(left.x);
    int error = longer - 2 * shorter;
    for (int i = 0; i < longer; ++i) {
      words[column / kWordBits].covered |= std::uint64_t{1} << column % kWordBits;
      // -1 where the line leaves its row, or its column if steep.
      const int sideways = error >> 31;
      error += (2 * longer & sideways) - 2 * shorter;
      const std::ptrdiff_t leaves = sideways | always;
      column += static_cast<std::size_t>(always != 0 ? -sideways : 1);
      Word* const next = words + (rowStep & leaves);
      Word* const upper = downward ? words : next;
      upper[column / kWordBits].turns ^= static_cast<std::uint64_t>(leaves & 1)
                                         << column % kWordBits;
      words = next;
    }
    words[column / kWordBits].covered |= std::uint64_t{1} << column % kWordBits;
  }

  static void Cover(Word* words, std::size_t first, std::size_t last) {
    const std::uint64_t from = ~std::uint64_t{0} << first % kWordBits;
    const std::uint64_t to = ~std::uint64_t{0} >> (kWordBits - 1 - last % kWordBits);
    Word* word = words + first / kWordBits;
    Word* const lastWord = words + last / kWordBits;
    if (word == lastWord) {
      word->covered |= from & to;
      return;
    }
    word->covered |= from;
    while (++word != lastWord) word->covered = ~std::uint64_t{0};
    word->covered |= to;
  }

  Run* ListRuns(int row, Run* run) const {
    const Word* const words = plane_.data() + RowStart(row);
    std::uint64_t inside = 0;
    std::uint64_t before = 0;
    for (std::size_t i = 0; i < words_; ++i) {
      if ((words[i].turns | words[i].covered) == 0 && (inside & 1) == before && i + 1 < words_) {
        continue;
      }
      const std::uint64_t between = Parities(words[i].turns) ^ inside;
      inside = 0 - (between >> (kWordBits - 1));
      std::uint64_t pixels = between | words[i].covered;
      if (i + 1 == words_) pixels &= (std::uint64_t{1} << area_.width % kWordBits) - 1;
      const int column = static_cast<int>(i) * kWordBits;
      for (std::uint64_t edges = pixels ^ (pixels << 1 | before); edges != 0; edges &= edges - 1) {
        const int edge = column + __builtin_ctzll(edges);
        if ((pixels >> (edge - column) & 1) != 0) {
          run->Row = row;
          run->FirstColumn = edge;
        } else {
          run++->LastColumn = edge - 1;
        }
      }
      before = pixels >> (kWordBits - 1);
    }
    return run;
  }

  const FillArea& area_;
  const std::size_t words_;
  std::vector<Word> plane_;
};

}  // namespace

void FillDensely(const FillContours& contours, const FillArea& area, RunSink& sink) {
  DenseFill fill(area);
  contours.ForEach([&](const cv::Point* first, const cv::Point* end) {
    for (const cv::Point* to = first + 1; to != end; ++to) fill.AddEdge({to[-1], *to});
  });
  fill.HandOut(sink);
}
