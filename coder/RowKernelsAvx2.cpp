// The row kernels with AVX2 and the instructions for bits that come with it.

#define ROW_KERNEL __attribute__((target("avx2,bmi,popcnt")))

#include <immintrin.h>

#include "coder/RowKernelsBody.h"
#include "platform/Avx2.h"

namespace {

ROW_KERNEL inline __m256i Load256(const void* from) {
  return _mm256_loadu_si256(static_cast<const __m256i*>(from));
}

// Packing goes by halves of a register: these put the parts of what was packed in order.
ROW_KERNEL inline __m256i InOrder2(__m256i packed) {
  return _mm256_permute4x64_epi64(packed, 0xd8);
}
ROW_KERNEL inline __m256i InOrder4(__m256i packed) {
  return _mm256_permutevar8x32_epi32(packed, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
}

// For each kind of pixel, the 32 bytes that are 0xff where one of 32 pixels is background.
template <typename Pixels>
struct Wide;

template <>
struct Wide<Bytes> {
  ROW_KERNEL static __m256i Zero32(const std::uint8_t* pixels) {
    return _mm256_cmpeq_epi8(Load256(pixels), _mm256_setzero_si256());
  }
};

template <int kShift>
struct Wide<Pixels16<kShift>> {
  ROW_KERNEL static __m256i Zero16(const std::uint16_t* pixels) {
    return _mm256_cmpeq_epi16(_mm256_slli_epi16(Load256(pixels), kShift), _mm256_setzero_si256());
  }
  ROW_KERNEL static __m256i Zero32(const std::uint16_t* pixels) {
    return InOrder2(_mm256_packs_epi16(Zero16(pixels), Zero16(pixels + 16)));
  }
};

template <int kShift>
struct Wide<Pixels32<kShift>> {
  ROW_KERNEL static __m256i Zero8(const std::uint32_t* pixels) {
    return _mm256_cmpeq_epi32(_mm256_slli_epi32(Load256(pixels), kShift), _mm256_setzero_si256());
  }
  ROW_KERNEL static __m256i Zero32(const std::uint32_t* pixels) {
    return InOrder4(_mm256_packs_epi16(_mm256_packs_epi32(Zero8(pixels), Zero8(pixels + 8)),
                                       _mm256_packs_epi32(Zero8(pixels + 16), Zero8(pixels + 24))));
  }
};

template <>
struct Wide<Doubles> {
  ROW_KERNEL static __m256 Zero4(const std::uint64_t* pixels) {
    return _mm256_castsi256_ps(
        _mm256_cmpeq_epi64(_mm256_slli_epi64(Load256(pixels), 1), _mm256_setzero_si256()));
  }
  ROW_KERNEL static __m256i Zero8(const std::uint64_t* pixels) {
    return InOrder2(_mm256_castps_si256(_mm256_shuffle_ps(Zero4(pixels), Zero4(pixels + 4), 0x88)));
  }
  ROW_KERNEL static __m256i Zero32(const std::uint64_t* pixels) {
    return InOrder4(_mm256_packs_epi16(_mm256_packs_epi32(Zero8(pixels), Zero8(pixels + 8)),
                                       _mm256_packs_epi32(Zero8(pixels + 16), Zero8(pixels + 24))));
  }
};

template <typename Pixels>
ROW_KERNEL inline std::uint64_t ZeroBits32(const typename Pixels::Pixel* pixels) {
  return static_cast<std::uint32_t>(_mm256_movemask_epi8(Wide<Pixels>::Zero32(pixels)));
}

template <typename Pixels>
ROW_KERNEL inline std::uint64_t Word(const typename Pixels::Pixel* pixels) {
  return ~(ZeroBits32<Pixels>(pixels) | ZeroBits32<Pixels>(pixels + 32) << 32);
}

// Out of the way of words with few edges.
__attribute__((noinline)) ROW_KERNEL Edge* StoreManyColumns(std::uint64_t bits, Edge column,
                                                            Edge* edges) {
  __m256i base = _mm256_set1_epi32(static_cast<int>(column));
  for (int i = 0; i < 8; ++i, bits >>= 8) {
    const std::size_t byte = bits & 0xff;
    const void* const places = kEdgeTable.places[byte];
    const __m256i columns =
        _mm256_cvtepu8_epi32(_mm_loadl_epi64(static_cast<const __m128i*>(places)));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(edges), _mm256_add_epi32(columns, base));
    edges += _mm_popcnt_u32(static_cast<unsigned>(byte));
    base = _mm256_add_epi32(base, _mm256_set1_epi32(8));
  }
  return edges;
}

// Two or six at once rather than a loop whose end can't be foretold.
ROW_KERNEL inline Edge* StoreColumns(std::uint64_t bits, Edge column, Edge* edges) {
  const int count = static_cast<int>(_mm_popcnt_u64(bits));
  if (count > 6) return StoreManyColumns(bits, column, edges);
  edges[0] = column + static_cast<Edge>(_tzcnt_u64(bits));
  bits &= bits - 1;
  edges[1] = column + static_cast<Edge>(_tzcnt_u64(bits));
  if (count > 2) {
    for (int i = 2; i < 6; ++i) {
      bits &= bits - 1;
      edges[i] = column + static_cast<Edge>(_tzcnt_u64(bits));
    }
  }
  return edges + count;
}

template <typename Pixels>
ROW_KERNEL inline Edge* FindWideEdges(const typename Pixels::Pixel* pixels, int columns,
                                      int& column, Edge* edges) {
  return FindWordEdges<Pixels>(pixels, columns, column, edges);
}

ROW_KERNEL inline __m256i ZeroBytes(const std::uint8_t* pixels) {
  return Wide<Bytes>::Zero32(pixels);
}

ROW_KERNEL inline std::uint64_t JoinBits(__m256i first, __m256i second) {
  const std::uint64_t low = static_cast<std::uint32_t>(_mm256_movemask_epi8(first));
  const std::uint64_t high = static_cast<std::uint32_t>(_mm256_movemask_epi8(second));
  return low | high << 32;
}

// Single bytes are compared with their predecessors before they become bits: most blocks have no
// edge, and need no bits.
template <>
ROW_KERNEL inline Edge* FindWideEdges<Bytes>(const std::uint8_t* pixels, int columns, int& column,
                                             Edge* edges) {
  constexpr int kBlock = 128;
  if (columns < kBlock) return edges;
  // Before the first pixel stands background.
  const __m256i first = ZeroBytes(pixels);
  const __m256i shifted = _mm256_permute2x128_si256(_mm256_set1_epi8(-1), first, 0x20);
  __m256i before = _mm256_alignr_epi8(first, shifted, 15);
  for (;; before = ZeroBytes(pixels + column - 1)) {
    const std::uint8_t* const block = pixels + column;
    const __m256i a = _mm256_xor_si256(ZeroBytes(block), before);
    const __m256i b = _mm256_xor_si256(ZeroBytes(block + 32), ZeroBytes(block + 31));
    const __m256i c = _mm256_xor_si256(ZeroBytes(block + 64), ZeroBytes(block + 63));
    const __m256i d = _mm256_xor_si256(ZeroBytes(block + 96), ZeroBytes(block + 95));
    const __m256i any = _mm256_or_si256(_mm256_or_si256(a, b), _mm256_or_si256(c, d));
    if (_mm256_testz_si256(any, any) == 0) {
      const std::uint64_t low = JoinBits(a, b);
      if (low != 0) edges = StoreColumns(low, static_cast<Edge>(column), edges);
      const std::uint64_t high = JoinBits(c, d);
      if (high != 0) edges = StoreColumns(high, static_cast<Edge>(column) + kWordBits, edges);
    }
    column += kBlock;
    if (columns - column < kBlock) return edges;
  }
}

// Four runs at a time: eight edges become twelve numbers.
ROW_KERNEL void StoreRuns(const Edge* edges, std::size_t count, int row, Run* runs) {
  if (count <= 4) {  // Edges that were written one by one just now are read so.
    for (; count > 0; --count, edges += 2) {
      *runs++ = {row, static_cast<int>(edges[0]), static_cast<int>(edges[1] - 1)};
    }
    return;
  }
  const __m256i behind = _mm256_setr_epi32(0, 1, 0, 1, 0, 1, 0, 1);
  const __m256i front = _mm256_setr_epi32(0, 0, 1, 0, 2, 3, 0, 4);
  const __m256i back = _mm256_setr_epi32(5, 0, 6, 7, 0, 0, 0, 0);
  const __m256i rows = _mm256_set1_epi32(row);
  int* out = reinterpret_cast<int*>(runs);
  for (std::size_t i = 0; i < count; i += 4, edges += 8, out += 12) {
    const __m256i columns = _mm256_sub_epi32(Load256(edges), behind);
    _mm256_storeu_si256(
        reinterpret_cast<__m256i*>(out),
        _mm256_blend_epi32(_mm256_permutevar8x32_epi32(columns, front), rows, 0x49));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 8),
                     _mm256_castsi256_si128(_mm256_blend_epi32(
                         _mm256_permutevar8x32_epi32(columns, back), rows, 0x02)));
  }
}

}  // namespace

const RowKernels kAvx2Kernels = {"AVX2",
                                 OffersAvx2,
                                 {FindEdges<Bytes>, FindEdges<Shorts>, FindEdges<Ints>,
                                  FindEdges<Halves>, FindEdges<Floats>, FindEdges<Doubles>},
                                 StoreRuns};
