// The row kernels with what every x86-64 offers.

#define ROW_KERNEL

#include "coder/RowKernelsBody.h"

namespace {

template <typename Pixels>
std::uint64_t Word(const typename Pixels::Pixel* pixels) {
  return Bits16<Pixels>(pixels) | Bits16<Pixels>(pixels + 16) << 16 |
         Bits16<Pixels>(pixels + 32) << 32 | Bits16<Pixels>(pixels + 48) << 48;
}

Edge* StoreColumns(std::uint64_t bits, Edge column, Edge* edges) {
  // Few one by one, many byte after byte.
  for (int i = 0; i < 6; ++i) {
    *edges++ = column + static_cast<Edge>(__builtin_ctzll(bits));
    bits &= bits - 1;
    if (bits == 0) return edges;
  }
  const __m128i zero = _mm_setzero_si128();
  __m128i base = _mm_set1_epi32(static_cast<int>(column));
  for (int i = 0; i < 8; ++i, bits >>= 8) {
    const std::size_t byte = bits & 0xff;
    const void* const places = kEdgeTable.places[byte];
    const __m128i shorts =
        _mm_unpacklo_epi8(_mm_loadl_epi64(static_cast<const __m128i*>(places)), zero);
    __m128i* const out = reinterpret_cast<__m128i*>(edges);
    _mm_storeu_si128(out, _mm_add_epi32(_mm_unpacklo_epi16(shorts, zero), base));
    _mm_storeu_si128(out + 1, _mm_add_epi32(_mm_unpackhi_epi16(shorts, zero), base));
    edges += kEdgeTable.counts[byte];
    base = _mm_add_epi32(base, _mm_set1_epi32(8));
  }
  return edges;
}

template <typename Pixels>
Edge* FindWideEdges(const typename Pixels::Pixel* pixels, int columns, int& column, Edge* edges) {
  return FindWordEdges<Pixels>(pixels, columns, column, edges);
}

void StoreRuns(const Edge* edges, std::size_t count, int row, Run* runs) {
  for (std::size_t i = 0; i < count; ++i) {
    runs[i] = {row, static_cast<int>(edges[2 * i]), static_cast<int>(edges[2 * i + 1] - 1)};
  }
}

bool IsOffered() { return true; }

}  // namespace

const RowKernels kSse2Kernels = {"SSE2",
                                 IsOffered,
                                 {FindEdges<Bytes>, FindEdges<Shorts>, FindEdges<Ints>,
                                  FindEdges<Halves>, FindEdges<Floats>, FindEdges<Doubles>},
                                 StoreRuns};
