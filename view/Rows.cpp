#include "view/Rows.h"

#include <algorithm>
#include <bitset>

namespace {

constexpr unsigned kAllLines = (1u << kLines) - 1;

unsigned char WeightOf(std::int64_t coveredParts) {
  constexpr std::int64_t kFull = std::int64_t{kLines} * kParts;
  return static_cast<unsigned char>((coveredParts * 255 + kFull / 2) / kFull);
}

int BitsOf(std::uint64_t word) { return static_cast<int>(std::bitset<64>(word).count()); }

// The bits of a word from the one at `from` to the one before `to`, of 0 to 64.
std::uint64_t BitsBetween(std::size_t from, std::size_t to) {
  const std::uint64_t below = to < 64 ? (std::uint64_t{1} << to) - 1 : ~std::uint64_t{0};
  return below & (~std::uint64_t{0} << from);
}

}  // namespace

void SparseRow::Cover(std::int64_t from, std::int64_t to) {
  if (from >= to) return;
  if (steps_.empty()) steps_.assign(static_cast<std::size_t>(width_ + 2), 0);
  const auto first = static_cast<std::size_t>(from / kParts);
  const auto last = static_cast<std::size_t>(to / kParts);
  steps_[first] += kParts - from % kParts;
  steps_[first + 1] += from % kParts;
  steps_[last] -= kParts - to % kParts;
  steps_[last + 1] -= to % kParts;
  firstColumn_ = std::min(firstColumn_, from / kParts);
  endColumn_ = std::max(endColumn_, to / kParts + 2);
}

void SparseRow::HandOut(std::int64_t row, RowSink& sink) {
  if (firstColumn_ >= endColumn_) return;
  weights_.clear();
  std::int64_t covered = 0;
  for (std::int64_t column = firstColumn_; column < endColumn_; ++column) {
    std::int64_t& step = steps_[static_cast<std::size_t>(column)];
    covered += step;
    step = 0;
    if (column < width_) weights_.push_back(WeightOf(covered));
  }
  sink.Add(static_cast<int>(row), static_cast<int>(firstColumn_), weights_);
  firstColumn_ = width_;
  endColumn_ = 0;
}

void PackedRow::Prepare() {
  if (!columns_.empty()) return;
  columns_.resize(width_ + 1);
  words_.resize((width_ + 1) * kLines * kWords);
  nextOpen_.resize(width_ + 1);
  for (std::size_t column = 0; column <= width_; ++column) nextOpen_[column] = column;
  firstColumn_ = width_;
}

std::uint64_t* PackedRow::Words(std::size_t column, int line) {
  return &words_[(column * kLines + static_cast<std::size_t>(line)) * kWords];
}

std::size_t PackedRow::NextOpen(std::size_t column) {
  while (nextOpen_[column] != column) {
    nextOpen_[column] = nextOpen_[nextOpen_[column]];
    column = nextOpen_[column];
  }
  return column;
}

void PackedRow::CoverColumn(std::size_t column, int line) {
  Column& lines = columns_[column];
  lines.full = static_cast<std::uint16_t>(lines.full | 1u << line);
  if (lines.full == kAllLines) nextOpen_[column] = column + 1;
}

void PackedRow::CoverParts(std::size_t column, int line, std::size_t from, std::size_t to) {
  Column& lines = columns_[column];
  if (from >= to || (lines.full >> line & 1) != 0) return;
  lines.noted = static_cast<std::uint16_t>(lines.noted | 1u << line);
  std::uint64_t* const words = Words(column, line);
  const std::size_t first = from / 64, last = (to - 1) / 64;
  for (std::size_t word = first; word <= last; ++word) {
    words[word] |= BitsBetween(word == first ? from % 64 : 0, word == last ? to - 64 * word : 64);
  }
  const bool full = std::all_of(words, words + kWords, [](std::uint64_t w) { return ~w == 0; });
  if (full) CoverColumn(column, line);
}

void PackedRow::Cover(int line, std::int64_t from, std::int64_t to) {
  if (from >= to) return;
  Prepare();
  const auto begin = static_cast<std::size_t>(from), end = static_cast<std::size_t>(to);
  const std::size_t first = begin / kParts, last = end / kParts;
  firstColumn_ = std::min(firstColumn_, first);
  endColumn_ = std::max(endColumn_, last + 1);
  if (first == last) return CoverParts(first, line, begin % kParts, end % kParts);
  CoverParts(first, line, begin % kParts, kParts);
  for (std::size_t column = NextOpen(first + 1); column < last; column = NextOpen(column + 1)) {
    CoverColumn(column, line);
  }
  CoverParts(last, line, 0, end % kParts);
}

void PackedRow::Toggle(int line, std::int64_t from) {
  Prepare();
  const auto place = static_cast<std::size_t>(from);
  const std::size_t column = place / kParts, begin = place % kParts;
  firstColumn_ = std::min(firstColumn_, column);
  endColumn_ = std::max(endColumn_, column + 1);
  Column& lines = columns_[column];
  lines.toggled = static_cast<std::uint16_t>(lines.toggled ^ 1u << line);
  if (begin == 0) return;
  // What stands left of the place is toggled back.
  lines.noted = static_cast<std::uint16_t>(lines.noted | 1u << line);
  std::uint64_t* const words = Words(column, line);
  for (std::size_t word = 0; word * 64 < begin; ++word) {
    words[word] ^= BitsBetween(0, std::min<std::size_t>(begin - 64 * word, 64));
  }
}

bool PackedRow::IsCovered(std::int64_t from, std::int64_t to) {
  if (from >= to) return true;
  Prepare();
  return NextOpen(static_cast<std::size_t>(from) / kParts) >
         static_cast<std::size_t>(to - 1) / kParts;
}

// Empties the column, too.
int PackedRow::CoveredParts(std::size_t column, unsigned toggled) {
  Column& lines = columns_[column];
  int covered = BitsOf(lines.full | (toggled & ~unsigned{lines.noted})) * kParts;
  for (int line = 0; line < kLines; ++line) {
    if ((lines.noted >> line & 1) == 0) continue;
    std::uint64_t* const words = Words(column, line);
    int noted = 0;
    for (std::size_t word = 0; word < kWords; ++word) noted += BitsOf(words[word]);
    std::fill_n(words, kWords, 0);
    if ((lines.full >> line & 1) != 0) continue;
    covered += (toggled >> line & 1) != 0 ? kParts - noted : noted;
  }
  lines = Column();
  nextOpen_[column] = column;
  return covered;
}

void PackedRow::HandOut(std::int64_t row, RowSink& sink) {
  if (firstColumn_ >= endColumn_) return;
  weights_.clear();
  unsigned toggled = 0;
  for (std::size_t column = firstColumn_; column < endColumn_; ++column) {
    toggled ^= columns_[column].toggled;
    const unsigned char weight = WeightOf(CoveredParts(column, toggled));
    if (column < width_) weights_.push_back(weight);
  }
  if (!weights_.empty()) sink.Add(static_cast<int>(row), static_cast<int>(firstColumn_), weights_);
  firstColumn_ = width_;
  endColumn_ = 0;
}
