// What all variants of the row kernels have in common. Each variant includes this once, between the
// macro ROW_KERNEL, which every function bears and which says what the processor must offer, and
// the functions that it does in a way of its own. So there is no include guard.

#include <emmintrin.h>

#include <cstring>

#include "coder/EdgeTable.h"
#include "coder/RowKernels.h"

namespace {

constexpr int kWordBits = 64;

ROW_KERNEL inline __m128i Load128(const void* from) {
  return _mm_loadu_si128(static_cast<const __m128i*>(from));
}

// For each kind of pixel, the 16 bytes that are 0xff where one of 16 pixels is background. Floating
// point numbers are background when only the sign is set.

template <int kSignBits>
struct Pixels16 {
  static constexpr int kShift = kSignBits;
  using Pixel = std::uint16_t;
  ROW_KERNEL static __m128i Zero8(const Pixel* pixels) {
    return _mm_cmpeq_epi16(_mm_slli_epi16(Load128(pixels), kShift), _mm_setzero_si128());
  }
  ROW_KERNEL static __m128i Zero16(const Pixel* pixels) {
    return _mm_packs_epi16(Zero8(pixels), Zero8(pixels + 8));
  }
};

template <int kSignBits>
struct Pixels32 {
  static constexpr int kShift = kSignBits;
  using Pixel = std::uint32_t;
  ROW_KERNEL static __m128i Zero4(const Pixel* pixels) {
    return _mm_cmpeq_epi32(_mm_slli_epi32(Load128(pixels), kShift), _mm_setzero_si128());
  }
  ROW_KERNEL static __m128i Zero16(const Pixel* pixels) {
    return _mm_packs_epi16(_mm_packs_epi32(Zero4(pixels), Zero4(pixels + 4)),
                           _mm_packs_epi32(Zero4(pixels + 8), Zero4(pixels + 12)));
  }
};

struct Bytes {
  static constexpr int kShift = 0;
  using Pixel = std::uint8_t;
  ROW_KERNEL static __m128i Zero16(const Pixel* pixels) {
    return _mm_cmpeq_epi8(Load128(pixels), _mm_setzero_si128());
  }
};

struct Doubles {
  static constexpr int kShift = 1;
  using Pixel = std::uint64_t;
  // Both halves of a number have to be zero.
  ROW_KERNEL static __m128i Zero4(const Pixel* pixels) {
    const __m128i first = _mm_slli_epi64(Load128(pixels), 1);
    const __m128i second = _mm_slli_epi64(Load128(pixels + 2), 1);
    const __m128 a = _mm_castsi128_ps(_mm_cmpeq_epi32(first, _mm_setzero_si128()));
    const __m128 b = _mm_castsi128_ps(_mm_cmpeq_epi32(second, _mm_setzero_si128()));
    return _mm_castps_si128(_mm_and_ps(_mm_shuffle_ps(a, b, 0x88), _mm_shuffle_ps(a, b, 0xdd)));
  }
  ROW_KERNEL static __m128i Zero16(const Pixel* pixels) {
    return _mm_packs_epi16(_mm_packs_epi32(Zero4(pixels), Zero4(pixels + 4)),
                           _mm_packs_epi32(Zero4(pixels + 8), Zero4(pixels + 12)));
  }
};

using Shorts = Pixels16<0>;
using Halves = Pixels16<1>;
using Ints = Pixels32<0>;
using Floats = Pixels32<1>;

ROW_KERNEL inline std::uint64_t NotZeroBits(__m128i zeros) {
  return static_cast<std::uint64_t>(_mm_movemask_epi8(zeros) ^ 0xffff);
}

template <typename Pixels>
ROW_KERNEL inline std::uint64_t Bits16(const typename Pixels::Pixel* pixels) {
  return NotZeroBits(Pixels::Zero16(pixels));
}

// The bits of fewer pixels than Bits16 takes.
template <typename Pixels>
ROW_KERNEL inline std::uint64_t BitsOfFew(const typename Pixels::Pixel* pixels, int count) {
  typename Pixels::Pixel padded[16] = {};
  std::memcpy(padded, pixels, static_cast<std::size_t>(count) * sizeof(*pixels));
  return Bits16<Pixels>(padded);
}

// The first and the last of them, which may overlap.
template <typename Part>
ROW_KERNEL inline std::uint64_t BitsOfEnds(const std::uint8_t* pixels, int count) {
  constexpr int kPart = sizeof(Part);
  Part first;
  Part last;
  std::memcpy(&first, pixels, sizeof(Part));
  std::memcpy(&last, pixels + count - kPart, sizeof(Part));
  const __m128i both = _mm_set_epi64x(static_cast<long long>(last), static_cast<long long>(first));
  const std::uint64_t bits = NotZeroBits(_mm_cmpeq_epi8(both, _mm_setzero_si128()));
  return (bits & 0xff) | (bits >> 8) << (count - kPart);
}

template <>
ROW_KERNEL inline std::uint64_t BitsOfFew<Bytes>(const std::uint8_t* pixels, int count) {
  if (count >= 8) return BitsOfEnds<std::uint64_t>(pixels, count);
  if (count >= 4) return BitsOfEnds<std::uint32_t>(pixels, count);
  std::uint64_t bits = 0;
  for (int i = 0; i < count; ++i) bits |= static_cast<std::uint64_t>(pixels[i] != 0) << i;
  return bits;
}

// The bits of fewer pixels than a word has, none before them to overlap with.
template <typename Pixels>
ROW_KERNEL inline std::uint64_t ShortWord(const typename Pixels::Pixel* pixels, int count) {
  if (count < 16) return BitsOfFew<Pixels>(pixels, count);
  std::uint64_t word = Bits16<Pixels>(pixels + count - 16) << (count - 16);
  for (int i = 0; i + 16 < count; i += 16) word |= Bits16<Pixels>(pixels + i) << i;
  return word;
}

// A word whose last bit is that of the pixel before.
template <typename Pixels>
ROW_KERNEL inline std::uint64_t BitBefore(const typename Pixels::Pixel* pixels) {
  const auto bits = static_cast<typename Pixels::Pixel>(pixels[-1] << Pixels::kShift);
  return static_cast<std::uint64_t>(bits != 0) << (kWordBits - 1);
}

// All bits as the last one.
ROW_KERNEL inline std::uint64_t AllAsLast(std::uint64_t word) {
  return static_cast<std::uint64_t>(static_cast<std::int64_t>(word) >> (kWordBits - 1));
}

template <typename Pixels>
ROW_KERNEL std::uint64_t Word(const typename Pixels::Pixel* pixels);

// Writes the places of the set bits, counted from a column. Returns the end of what it wrote.
ROW_KERNEL Edge* StoreColumns(std::uint64_t bits, Edge column, Edge* edges);

ROW_KERNEL inline Edge* StoreChanges(std::uint64_t word, std::uint64_t before, int column,
                                     Edge* edges) {
  const std::uint64_t changes = word ^ (word << 1 | before >> (kWordBits - 1));
  return changes == 0 ? edges : StoreColumns(changes, static_cast<Edge>(column), edges);
}

// Finds the edges of as many pixels as there is a quick way for, from the first pixel. Moves the
// column behind them.
template <typename Pixels>
ROW_KERNEL Edge* FindWideEdges(const typename Pixels::Pixel* pixels, int columns, int& column,
                               Edge* edges);

// Two words at a time, since most are all background or all foreground as what stands before them.
template <typename Pixels>
ROW_KERNEL inline Edge* FindWordEdges(const typename Pixels::Pixel* pixels, int columns,
                                      int& column, Edge* edges) {
  std::uint64_t before = 0;  // A word whose last bit is that of the pixel before.
  for (; columns - column >= 2 * kWordBits; column += 2 * kWordBits) {
    const std::uint64_t first = Word<Pixels>(pixels + column);
    const std::uint64_t second = Word<Pixels>(pixels + column + kWordBits);
    const std::uint64_t same = AllAsLast(before);
    if (((first ^ same) | (second ^ same)) == 0) continue;
    edges = StoreChanges(first, before, column, edges);
    edges = StoreChanges(second, first, column + kWordBits, edges);
    before = second;
  }
  return edges;
}

template <typename Pixels>
ROW_KERNEL inline Edge* FindRowEdges(const typename Pixels::Pixel* pixels, int columns,
                                     Edge* edges) {
  int column = 0;
  edges = FindWideEdges<Pixels>(pixels, columns, column, edges);
  // A word whose last bit is that of the pixel before.
  std::uint64_t before = column > 0 ? BitBefore<Pixels>(pixels + column) : 0;
  if (columns - column >= kWordBits) {
    const std::uint64_t word = Word<Pixels>(pixels + column);
    edges = StoreChanges(word, before, column, edges);
    before = word;
    column += kWordBits;
  }
  const int rest = columns - column;
  if (rest != 0) {  // Read with what stands before it, where there is enough.
    const std::uint64_t word =
        column > 0 ? Word<Pixels>(pixels + columns - kWordBits) >> (kWordBits - rest)
                   : ShortWord<Pixels>(pixels, rest);
    return StoreChanges(word, before, column, edges);
  }
  if (AllAsLast(before) != 0) *edges++ = static_cast<Edge>(columns);
  return edges;
}

ROW_KERNEL inline bool Equal(const Edge* a, const Edge* aEnd, const Edge* b, const Edge* bEnd) {
  if (aEnd - a != bEnd - b) return false;
  for (; a != aEnd; ++a, ++b) {
    if (*a != *b) return false;
  }
  return true;
}

// The edges of the next row, and whether they are those of the one above. A row that differs from
// the one above it makes a further such row likely: after two, their pixels are not compared
// beforehand.
template <typename Pixels>
ROW_KERNEL inline Edge* FindNextEdges(PixelRows& rows, Edge* edges, bool& likeAbove) {
  if (rows.above != nullptr && rows.differing < 2 &&
      std::memcmp(rows.pixels, rows.pixels - rows.step, rows.rowBytes) == 0) {
    likeAbove = true;
    const std::size_t count = static_cast<std::size_t>(rows.aboveEnd - rows.above);
    std::memcpy(edges, rows.above, count * sizeof(Edge));
    return edges + count;
  }
  Edge* const end = FindRowEdges<Pixels>(
      reinterpret_cast<const typename Pixels::Pixel*>(rows.pixels), rows.columns, edges);
  likeAbove = rows.above != nullptr && Equal(rows.above, rows.aboveEnd, edges, end);
  rows.differing = likeAbove ? 0 : rows.differing + 1;
  return end;
}

template <typename Pixels>
ROW_KERNEL void FindEdges(PixelRows& rows, EdgeRows& found) {
  const std::ptrdiff_t room = static_cast<std::ptrdiff_t>(EdgeRoom(rows.columns));
  Edge* edges = found.begin;
  found.count = 0;
  do {
    Edge* const end = FindNextEdges<Pixels>(rows, edges, found.likeAbove[found.count]);
    end[0] = kNoEdge;
    end[1] = kNoEdge;
    found.ends[found.count++] = end;
    rows.above = edges;
    rows.aboveEnd = end;
    edges = end + kClosingEdges;
    --rows.count;
    if (rows.count == 0) return;  // No place behind the last row is told.
    rows.pixels += rows.step;
  } while (found.count < EdgeRows::kMost && found.end - edges >= room);
}

}  // namespace
