// The word kernels with AVX2: a register holds two values.

#include "values/WordKernels.h"

#include <immintrin.h>

#include <algorithm>

#include "platform/Avx2.h"

#define WORD_KERNEL __attribute__((target("avx2")))

namespace {

// Values are taken four at a time, and in a few stretches side by side: memory feeds several
// streams faster than one.
constexpr std::size_t kStep = 4;

WORD_KERNEL inline __m256i Load(const VemVar* pair) {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(pair));
}
WORD_KERNEL inline void Store(VemVar* pair, __m256i words) {
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(pair), words);
}

// Where the kinds are those of texts; the words' other parts have no meaning.
WORD_KERNEL inline __m256i IsText(__m256i words) {
  return _mm256_cmpeq_epi32(words, _mm256_setr_epi32(VemVarString, 0, 0, 0, VemVarString, 0, 0, 0));
}
WORD_KERNEL inline bool AnyKind(__m256i found) {
  return (_mm256_movemask_ps(_mm256_castsi256_ps(found)) & 0x11) != 0;
}
WORD_KERNEL inline __m256i TextsOfFour(const VemVar* values) {
  return _mm256_or_si256(IsText(Load(values)), IsText(Load(values + 2)));
}

WORD_KERNEL bool AnyText(const VemVar* values, std::size_t count) {
  constexpr std::size_t kStreams = 8;
  const std::size_t stretch = count / kStreams / kStep * kStep;
  __m256i found = _mm256_setzero_si256();
  for (std::size_t i = 0; i < stretch; i += kStep) {
    for (std::size_t k = 0; k < kStreams; ++k) {
      found = _mm256_or_si256(found, TextsOfFour(values + k * stretch + i));
    }
  }
  const std::size_t done = kStreams * stretch;
  return AnyKind(found) || kSse2Words.anyText(values + done, count - done);
}

WORD_KERNEL bool Copy(VemVar* target, const VemVar* source, std::size_t count) {
  constexpr std::size_t kStreams = 4;
  const std::size_t stretch = count / kStreams / kStep * kStep;
  __m256i found = _mm256_setzero_si256();
  for (std::size_t i = 0; i < stretch; i += kStep) {
    for (std::size_t k = 0; k < kStreams; ++k) {
      const std::size_t place = k * stretch + i;
      const __m256i front = Load(source + place);
      const __m256i back = Load(source + place + 2);
      found = _mm256_or_si256(found, _mm256_or_si256(IsText(front), IsText(back)));
      Store(target + place, front);
      Store(target + place + 2, back);
    }
  }
  const std::size_t done = kStreams * stretch;
  const bool anyBehind = kSse2Words.copy(target + done, source + done, count - done);
  return AnyKind(found) || anyBehind;
}

WORD_KERNEL std::size_t CopyOver(VemVar* target, const VemVar* source, std::size_t count) {
  std::size_t i = 0;
  for (; i + kStep <= count && !AnyKind(TextsOfFour(target + i)); i += kStep) {
    Store(target + i, Load(source + i));
    Store(target + i + 2, Load(source + i + 2));
  }
  return i + kSse2Words.copyOver(target + i, source + i, count - i);
}

WORD_KERNEL inline int LargerLowHalf(__m256i words) {
  return std::max(_mm256_extract_epi32(words, 2), _mm256_extract_epi32(words, 6));
}

WORD_KERNEL bool CopyIntegers(VemVar* target, const VemVar* source, std::size_t count,
                              int& largest) {
  static_assert(VemVarLong == 0, "the kind of an integer");
  constexpr std::size_t kStreams = 4;
  const std::size_t stretch = count / kStreams / kStep * kStep;
  __m256i kinds = _mm256_setzero_si256();
  __m256i most = _mm256_set1_epi32(largest);
  for (std::size_t i = 0; i < stretch; i += kStep) {
    for (std::size_t k = 0; k < kStreams; ++k) {
      const std::size_t place = k * stretch + i;
      const __m256i front = Load(source + place);
      const __m256i back = Load(source + place + 2);
      kinds = _mm256_or_si256(kinds, _mm256_or_si256(front, back));
      most = _mm256_max_epi32(most, _mm256_max_epi32(front, back));
      Store(target + place, front);
      Store(target + place + 2, back);
    }
  }
  largest = LargerLowHalf(most);
  const std::size_t done = kStreams * stretch;
  const bool isBehind =
      kSse2Words.copyIntegers(target + done, source + done, count - done, largest);
  return isBehind && (_mm256_extract_epi32(kinds, 0) | _mm256_extract_epi32(kinds, 4)) == 0;
}

// The kind is the zero in front of each integer, which is widened to 64 bits.
WORD_KERNEL inline void WriteFour(VemVar* target, const int* source) {
  static_assert(VemVarLong == 0, "the kind of an integer");
  const __m256i longs =
      _mm256_cvtepi32_epi64(_mm_loadu_si128(reinterpret_cast<const __m128i*>(source)));
  const __m256i zero = _mm256_setzero_si256();
  Store(target, _mm256_blend_epi32(zero, _mm256_permute4x64_epi64(longs, 0x50), 0xcc));
  Store(target + 2, _mm256_blend_epi32(zero, _mm256_permute4x64_epi64(longs, 0xfa), 0xcc));
}

WORD_KERNEL void Write(VemVar* target, const int* source, std::size_t count) {
  std::size_t i = 0;
  for (; i + kStep <= count; i += kStep) WriteFour(target + i, source + i);
  kSse2Words.write(target + i, source + i, count - i);
}

WORD_KERNEL std::size_t WriteOver(VemVar* target, const int* source, std::size_t count) {
  std::size_t i = 0;
  for (; i + kStep <= count && !AnyKind(TextsOfFour(target + i)); i += kStep) {
    WriteFour(target + i, source + i);
  }
  return i + kSse2Words.writeOver(target + i, source + i, count - i);
}

}  // namespace

const WordKernels kAvx2Words = {"AVX2",       OffersAvx2, AnyText, Copy,
                                CopyIntegers, CopyOver,   Write,   WriteOver};
