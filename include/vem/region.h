#ifndef VEM_VEM_REGION_H_
#define VEM_VEM_REGION_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <type_traits>
#include <vector>

#include "VemPoint.h"
#include "VemRegion.h"
#include "VemRegionData.h"
#include "VemTuple.h"
#include "VemVar.h"
#include "vem/parts.h"
#include "vem/runs.h"

/// Regions as sets of pixels. Their runs are read where they stand, by a header of ours that needs
/// OpenCV's include path.
namespace vem {

/// A horizontal run of pixels, both ends included.
struct pixel_run {
  int row;           ///< Grows downward.
  int first_column;  ///< The leftmost pixel.
  int last_column;   ///< The rightmost pixel.
};

/// Whether both are the same pixels.
inline bool operator==(const pixel_run& a, const pixel_run& b) {
  return a.row == b.row && a.first_column == b.first_column && a.last_column == b.last_column;
}
/// The opposite of ==.
inline bool operator!=(const pixel_run& a, const pixel_run& b) { return !(a == b); }

/// The smallest rectangle around pixels, all sides included. That of no pixels is 0 by 0 at the
/// origin: right and bottom are -1.
struct pixel_box {
  int left;    ///< The first column.
  int top;     ///< The first row.
  int right;   ///< The last column.
  int bottom;  ///< The last row.
};

/// Whether all sides are the same.
inline bool operator==(const pixel_box& a, const pixel_box& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}
/// The opposite of ==.
inline bool operator!=(const pixel_box& a, const pixel_box& b) { return !(a == b); }

/// Sums over all pixels, x the column and y the row: their number, then those of x, y, x * x, x * y
/// and y * y.
struct pixel_sums {
  std::int64_t count;  ///< The number of pixels.
  std::int64_t x;      ///< Of their columns.
  std::int64_t y;      ///< Of their rows.
  std::int64_t xx;     ///< Of the squares of their columns.
  std::int64_t xy;     ///< Of the products of column and row.
  std::int64_t yy;     ///< Of the squares of their rows.
};

/// The mean squares of the distances from the center, along x, along both, along y, in square
/// pixels: what OpenCV calls mu20 / m00, mu11 / m00 and mu02 / m00.
struct pixel_spread {
  double xx;  ///< Along x.
  double xy;  ///< Along both; positive where the pixels lie from upper left to lower right.
  double yy;  ///< Along y.
};

/// What most callers ask of a region: its area, its center and its second moments.
struct pixel_measures {
  std::int64_t area;    ///< The number of pixels.
  VemPoint center;      ///< The mean of their coordinates; NaN of no pixels.
  pixel_spread spread;  ///< About the center; NaN of no pixels.
};

/// A set of pixels, in its one normal form: runs by row, then by column, none of which overlap or
/// touch. Two sets of the same pixels are equal, whatever runs they came from.
///
/// Rows and columns are any int. Every operation is linear in the runs of what it reads and makes,
/// complement in the rows of the canvas too; but contains is logarithmic, and making a set of runs
/// that do not stand in order sorts them first. What throws is the allocator, and what is told.
///
/// Use a set from one thread at a time; reading it from several at once is safe.
class pixel_set {
 public:
  /// No pixels.
  pixel_set() {}
  /// The pixels of the runs, in any order, overlapping or not. A run whose first column is beyond
  /// its last has none.
  explicit pixel_set(const std::vector<pixel_run>& runs) {
    spans_.reserve(runs.size());
    for (const pixel_run& run : runs) add(run.row, run.first_column, run.last_column);
    normalize();
  }
  /// The pixels of a region's runs, in any order, on or off its canvas. Where its lists differ in
  /// length, the shortest counts; what is no integer is read as VemVar::I reads it.
  explicit pixel_set(const VemRegion& region) {
    const VemRegionData& data = parts(region);
    spans_.reserve(static_cast<std::size_t>(
        detail::run_count(data.Rows, data.FirstColumns, data.LastColumns)));
    detail::for_each_run(data.Rows, data.FirstColumns, data.LastColumns,
                         [this](int row, int first, int last) { add(row, first, last); });
    normalize();
  }
  /// All pixels of a canvas; none where a side is not positive.
  static pixel_set canvas(int width, int height) { return pixel_set().complement(width, height); }

  /// Whether there are no pixels.
  bool empty() const { return spans_.empty(); }
  /// The number of runs.
  std::size_t run_count() const { return spans_.size(); }
  /// A run, by row, then by column; the index must be below run_count().
  pixel_run run(std::size_t index) const {
    const span& s = spans_[index];
    return {row_of(s.first), column_of(s.first), column_of(s.last)};
  }
  /// All runs, by row, then by column.
  std::vector<pixel_run> runs() const {
    std::vector<pixel_run> result;
    result.reserve(spans_.size());
    for (std::size_t i = 0; i < spans_.size(); ++i) result.push_back(run(i));
    return result;
  }
  /// A region of the runs, on the given canvas, which clips nothing.
  VemRegion to_region(int width, int height) const {
    VemRegion region;
    VemRegionData& data = parts(region);
    data.Width = width;
    data.Height = height;
    for (const span& s : spans_) {
      data.Rows.Append(VemVar(row_of(s.first)));
      data.FirstColumns.Append(VemVar(column_of(s.first)));
      data.LastColumns.Append(VemVar(column_of(s.last)));
    }
    return region;
  }

  /// Whether the pixel at column x, row y is in the set.
  bool contains(int x, int y) const {
    const std::uint64_t pixel = position(y, x);
    const std::vector<span>::const_iterator next =
        std::lower_bound(spans_.begin(), spans_.end(), pixel, ends_before);
    return next != spans_.end() && next->first <= pixel;
  }
  /// The same for a point whose coordinates are truncated toward zero, as VemRegion truncates
  /// points. One that no integer can hold is not in the set.
  bool contains(const VemPoint& point) const {
    const double low = std::numeric_limits<int>::min();
    const double high = std::numeric_limits<int>::max();
    if (!(point.x > low - 1 && point.x < high + 1 && point.y > low - 1 && point.y < high + 1)) {
      return false;
    }
    return contains(static_cast<int>(point.x), static_cast<int>(point.y));
  }
  /// The same for column x, row y of which one is a floating-point number, or both.
  template <class X, class Y>
  typename std::enable_if<std::is_floating_point<X>::value || std::is_floating_point<Y>::value,
                          bool>::type
  contains(X x, Y y) const {
    return contains(VemPoint(static_cast<double>(x), static_cast<double>(y)));
  }

  /// The number of pixels. Raises `std::overflow_error` beyond 2^63 - 1.
  std::int64_t area() const {
    std::uint64_t sum = 0;
    for (const span& s : spans_) {
      sum += s.last - s.first + 1;
      if (sum > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) fail();
    }
    return static_cast<std::int64_t>(sum);
  }

  /// The smallest rectangle around the pixels.
  pixel_box bounding_box() const {
    if (empty()) return {0, 0, -1, -1};
    pixel_box box = {column_of(spans_.front().first), row_of(spans_.front().first),
                     column_of(spans_.front().last), row_of(spans_.back().first)};
    for (const span& s : spans_) {
      box.left = std::min(box.left, column_of(s.first));
      box.right = std::max(box.right, column_of(s.last));
    }
    return box;
  }

  /// The sums over all pixels, exact. They fit for every set within 32768 columns and rows of the
  /// origin, to either side; where one does not fit 64 bits, raises `std::overflow_error`.
  pixel_sums sums() const {
    const wide_sums s = absolute_sums();
    return {narrow(s.count), narrow(s.x), narrow(s.y), narrow(s.xx), narrow(s.xy), narrow(s.yy)};
  }

  /// The mean of the pixels' coordinates. The sums are exact; rounded are the quotients, and what
  /// they make with the corner of the bounding box. That of no pixels is NaN.
  VemPoint center() const {
    const pixel_box box = bounding_box();
    return center_of(relative_sums(box), box);
  }

  /// The second moments about the center. Up to a box of 32768 by 32768 pixels the sums and their
  /// differences are exact, and rounded are the difference, the square of the count and their
  /// quotient; beyond, the differences are taken with the 64 bits of a long double. Those of no
  /// pixels are NaN.
  pixel_spread spread() const {
    const pixel_box box = bounding_box();
    return spread_of(relative_sums(box), box);
  }

  /// All three at once, in the time of one. Raises `std::overflow_error` where area does.
  pixel_measures measures() const {
    const pixel_box box = bounding_box();
    const wide_sums s = relative_sums(box);
    return {narrow(s.count), center_of(s, box), spread_of(s, box)};
  }

  /// The pixels of the canvas that are not in the set.
  pixel_set complement(int width, int height) const {
    pixel_set result;
    if (width <= 0 || height <= 0) return result;
    const std::size_t rows = static_cast<std::size_t>(height);
    result.spans_.resize(spans_.size() + rows);
    span* to = result.spans_.data();
    std::vector<span>::const_iterator at =
        std::lower_bound(spans_.begin(), spans_.end(), position(0, 0), ends_before);
    for (int row = 0; row < height; ++row) {
      std::uint64_t next = position(row, 0);
      const std::uint64_t end = position(row, width - 1);
      for (; at != spans_.end() && at->first <= end; ++at) {
        if (at->first > next) *to++ = span(next, at->first - 1);
        if (at->last >= next) next = at->last + 1;
        if (at->last > end) break;
      }
      if (next <= end) *to++ = span(next, end);
      const std::uint64_t below = position(row, std::numeric_limits<int>::max());
      while (at != spans_.end() && at->last <= below) ++at;
    }
    result.keep(to);
    return result;
  }

  /// The pixels moved by dx columns and dy rows. Raises `std::overflow_error` where one would leave
  /// the range of int.
  pixel_set shifted(int dx, int dy) const {
    const pixel_box box = bounding_box();
    if (empty()) return *this;
    if (!fits(box.left, dx) || !fits(box.right, dx) || !fits(box.top, dy) ||
        !fits(box.bottom, dy)) {
      fail();
    }
    pixel_set result;
    result.spans_.reserve(spans_.size());
    for (const span& s : spans_) {
      const int row = row_of(s.first) + dy;
      result.spans_.push_back(
          span(position(row, column_of(s.first) + dx), position(row, column_of(s.last) + dx)));
    }
    return result;
  }

  /// The pixels of either set.
  friend pixel_set operator|(const pixel_set& a, const pixel_set& b) {
    if (a.empty()) return b;
    if (b.empty()) return a;
    pixel_set result;
    result.spans_.resize(a.spans_.size() + b.spans_.size());
    result.keep(unite(a.begin(), a.end(), b.begin(), b.end(), result.spans_.data()));
    return result;
  }
  /// The pixels of both sets.
  friend pixel_set operator&(const pixel_set& a, const pixel_set& b) {
    pixel_set result;
    if (a.empty() || b.empty()) return result;
    const span* x = std::lower_bound(a.begin(), a.end(), b.spans_.front().first, ends_before);
    const span* y = std::lower_bound(b.begin(), b.end(), a.spans_.front().first, ends_before);
    result.spans_.resize(static_cast<std::size_t>((a.end() - x) + (b.end() - y)));
    result.keep(intersect(x, a.end(), y, b.end(), result.spans_.data()));
    return result;
  }
  /// The pixels of `a` that are not in `b`.
  friend pixel_set operator-(const pixel_set& a, const pixel_set& b) {
    if (a.empty() || b.empty()) return a;
    pixel_set result;
    result.spans_.resize(a.spans_.size() + b.spans_.size());
    result.keep(subtract(a.begin(), a.end(), b.begin(), b.end(), result.spans_.data()));
    return result;
  }
  /// The pixels of one of the sets alone.
  friend pixel_set operator^(const pixel_set& a, const pixel_set& b) { return (a - b) | (b - a); }

  /// Adds the pixels of the other.
  pixel_set& operator|=(const pixel_set& other) { return *this = *this | other; }
  /// Keeps the pixels that the other has, too.
  pixel_set& operator&=(const pixel_set& other) { return *this = *this & other; }
  /// Takes the pixels of the other away.
  pixel_set& operator-=(const pixel_set& other) { return *this = *this - other; }
  /// Keeps the pixels of one of both alone.
  pixel_set& operator^=(const pixel_set& other) { return *this = *this ^ other; }

  /// Whether both hold the same pixels.
  friend bool operator==(const pixel_set& a, const pixel_set& b) {
    return a.spans_.size() == b.spans_.size() && std::equal(a.begin(), a.end(), b.begin(), same);
  }
  /// The opposite of ==.
  friend bool operator!=(const pixel_set& a, const pixel_set& b) { return !(a == b); }

 private:
  // A run as the positions of its first and its last pixel. A position is row and column in one
  // word, each with its sign bit turned, so that words compare as row, then column.
  struct span {
    span() {}  // Room that is written next needs no zeros.
    span(std::uint64_t firstPixel, std::uint64_t lastPixel) : first(firstPixel), last(lastPixel) {}
    std::uint64_t first;
    std::uint64_t last;
  };

  // Every sum over up to 2^29 runs fits, which take 8 GB.
  __extension__ typedef __int128 wide;
  struct wide_sums {
    wide count, x, y, xx, xy, yy;
  };

  static std::uint64_t position(int row, int column) {
    return static_cast<std::uint64_t>(static_cast<std::uint32_t>(row) ^ 0x80000000u) << 32 |
           (static_cast<std::uint32_t>(column) ^ 0x80000000u);
  }
  static int row_of(std::uint64_t pixel) {
    return static_cast<int>(static_cast<std::uint32_t>(pixel >> 32) ^ 0x80000000u);
  }
  static int column_of(std::uint64_t pixel) {
    return static_cast<int>(static_cast<std::uint32_t>(pixel) ^ 0x80000000u);
  }

  static bool ends_before(const span& s, std::uint64_t pixel) { return s.last < pixel; }
  static bool begins_before(const span& a, const span& b) { return a.first < b.first; }
  static bool same(const span& a, const span& b) { return a.first == b.first && a.last == b.last; }

  const span* begin() const { return spans_.data(); }
  const span* end() const { return spans_.data() + spans_.size(); }

  void add(int row, int first, int last) {
    if (first <= last) spans_.push_back(span(position(row, first), position(row, last)));
  }

  // The last position that a run which begins after `last` may begin at to touch it. The last
  // column of all touches nothing: the position behind it is in the next row.
  static std::uint64_t reach(std::uint64_t last) {
    return last + (static_cast<std::uint32_t>(last) != 0xffffffffu ? 1 : 0);
  }

  // Puts `next`, which begins no earlier than `*to`, into it or behind it.
  static span* join(span* to, const span& next) {
    const bool apart = next.first > reach(to->last);
    const std::uint64_t first = apart ? next.first : to->first;
    const std::uint64_t last = !apart && to->last > next.last ? to->last : next.last;
    to += apart ? 1 : 0;
    to->first = first;
    to->last = last;
    return to;
  }

  void normalize() {
    if (spans_.empty()) return;
    if (!std::is_sorted(spans_.begin(), spans_.end(), begins_before)) {
      std::sort(spans_.begin(), spans_.end(), begins_before);
    }
    span* to = spans_.data();
    for (const span& next : spans_) to = join(to, next);
    keep(to + 1);
  }

  // Drops what stands from `end` on, and the room for it where it is most of all.
  void keep(const span* end) {
    spans_.resize(static_cast<std::size_t>(end - spans_.data()));
    if (spans_.size() < spans_.capacity() / 4) spans_.shrink_to_fit();
  }

  // Both lists hold something.
  static span* unite(const span* a, const span* a_end, const span* b, const span* b_end, span* to) {
    *to = a->first < b->first ? *a : *b;
    while (a != a_end && b != b_end) {
      const bool from_a = a->first < b->first;
      to = join(to, from_a ? *a : *b);
      a += from_a ? 1 : 0;
      b += from_a ? 0 : 1;
    }
    for (; a != a_end; ++a) to = join(to, *a);
    for (; b != b_end; ++b) to = join(to, *b);
    return to + 1;
  }

  // Writes what two runs share whether they share something or not, and steps on if they do: no
  // branch depends on the pixels. Pieces of maximal runs never touch.
  static span* intersect(const span* a, const span* a_end, const span* b, const span* b_end,
                         span* to) {
    while (a != a_end && b != b_end) {
      const std::uint64_t first = a->first > b->first ? a->first : b->first;
      const bool a_ends = a->last < b->last;
      const std::uint64_t last = a_ends ? a->last : b->last;
      to->first = first;
      to->last = last;
      to += first <= last ? 1 : 0;
      a += a_ends ? 1 : 0;
      b += a_ends ? 0 : 1;
    }
    return to;
  }

  static span* subtract(const span* a, const span* a_end, const span* b, const span* b_end,
                        span* to) {
    for (; a != a_end; ++a) {
      while (b != b_end && b->last < a->first) ++b;
      std::uint64_t next = a->first;
      for (; b != b_end && b->first <= a->last; ++b) {
        if (b->first > next) *to++ = span(next, b->first - 1);
        next = b->last + 1;
        if (b->last >= a->last) break;  // It may reach into the next run.
      }
      if ((b == b_end || b->first > a->last) && next <= a->last) *to++ = span(next, a->last);
    }
    return to;
  }

  static bool fits(int coordinate, int distance) {
    const std::int64_t sum = static_cast<std::int64_t>(coordinate) + distance;
    return sum >= std::numeric_limits<int>::min() && sum <= std::numeric_limits<int>::max();
  }
  static std::int64_t narrow(wide sum) {
    if (sum > std::numeric_limits<std::int64_t>::max()) fail();
    if (sum < std::numeric_limits<std::int64_t>::min()) fail();
    return static_cast<std::int64_t>(sum);
  }
  [[noreturn]] static void fail() {
    throw std::overflow_error("vem::pixel_set: beyond what integers can hold");
  }

  static bool is_small(const pixel_box& box) {
    return static_cast<std::int64_t>(box.right) - box.left < 32768 &&
           static_cast<std::int64_t>(box.bottom) - box.top < 32768;
  }

  // Six times the sum of the squares below k, and twice that of the numbers.
  template <typename Int>
  static Int squares(Int k) {
    return (k - 1) * k * (2 * k - 1);
  }

  // With the box's corner as the origin. In a small box no sum exceeds 6 * 2^60.
  template <typename Int>
  wide_sums relative_sums_in(const pixel_box& box) const {
    Int count = 0, x2 = 0, y = 0, xx6 = 0, xy2 = 0, yy = 0;
    for (const span& s : spans_) {
      const Int row = static_cast<Int>(row_of(s.first)) - box.top;
      const Int first = static_cast<Int>(column_of(s.first)) - box.left;
      const Int last = static_cast<Int>(column_of(s.last)) - box.left;
      const Int length = last - first + 1;
      const Int columns2 = length * (first + last);
      count += length;
      x2 += columns2;
      y += length * row;
      xx6 += squares<Int>(last + 1) - squares<Int>(first);
      xy2 += columns2 * row;
      yy += length * row * row;
    }
    return {count, x2 / 2, y, xx6 / 6, xy2 / 2, yy};
  }
  wide_sums relative_sums(const pixel_box& box) const {
    return is_small(box) ? relative_sums_in<std::int64_t>(box) : relative_sums_in<wide>(box);
  }

  static VemPoint center_of(const wide_sums& s, const pixel_box& box) {
    const double count = static_cast<double>(s.count);
    return VemPoint(box.left + static_cast<double>(s.x) / count,
                    box.top + static_cast<double>(s.y) / count);
  }

  static pixel_spread spread_of(const wide_sums& s, const pixel_box& box) {
    if (is_small(box)) {
      const double square = static_cast<double>(s.count) * static_cast<double>(s.count);
      return {static_cast<double>(s.count * s.xx - s.x * s.x) / square,
              static_cast<double>(s.count * s.xy - s.x * s.y) / square,
              static_cast<double>(s.count * s.yy - s.y * s.y) / square};
    }
    const long double count = static_cast<long double>(s.count);
    const long double x = static_cast<long double>(s.x) / count;
    const long double y = static_cast<long double>(s.y) / count;
    return {static_cast<double>(static_cast<long double>(s.xx) / count - x * x),
            static_cast<double>(static_cast<long double>(s.xy) / count - x * y),
            static_cast<double>(static_cast<long double>(s.yy) / count - y * y)};
  }

  wide_sums absolute_sums() const {
    const pixel_box box = bounding_box();
    const wide_sums r = relative_sums(box);
    const wide left = box.left;
    const wide top = box.top;
    wide_sums s = r;
    s.x += left * r.count;
    s.y += top * r.count;
    s.xx += 2 * left * r.x + left * left * r.count;
    s.xy += left * r.y + top * r.x + left * top * r.count;
    s.yy += 2 * top * r.y + top * top * r.count;
    return s;
  }

  std::vector<span> spans_;
};

/// Whether two regions cover the same pixels, whatever their runs and canvases are.
inline bool same_pixels(const VemRegion& a, const VemRegion& b) {
  return pixel_set(a) == pixel_set(b);
}

}  // namespace vem

#endif  // VEM_VEM_REGION_H_
