// The word kernels with what every x86-64 offers: a register holds one value.

#include "values/WordKernels.h"

#include <emmintrin.h>

#include <new>

namespace {

__m128i Load(const VemVar* value) {
  return _mm_load_si128(reinterpret_cast<const __m128i*>(value));
}
void Store(VemVar* value, __m128i word) {
  _mm_store_si128(reinterpret_cast<__m128i*>(value), word);
}

// Where the kinds are those of texts; the words' other parts have no meaning.
__m128i IsText(__m128i word) { return _mm_cmpeq_epi32(word, _mm_cvtsi32_si128(VemVarString)); }

bool AnyText(const VemVar* values, std::size_t count) {
  __m128i found = _mm_setzero_si128();
  for (std::size_t i = 0; i < count; ++i) found = _mm_or_si128(found, IsText(Load(values + i)));
  return _mm_cvtsi128_si32(found) != 0;
}

bool Copy(VemVar* target, const VemVar* source, std::size_t count) {
  __m128i found = _mm_setzero_si128();
  for (std::size_t i = 0; i < count; ++i) {
    const __m128i word = Load(source + i);
    found = _mm_or_si128(found, IsText(word));
    Store(target + i, word);
  }
  return _mm_cvtsi128_si32(found) != 0;
}

// The kind of an integer is 0. What is no low half is not looked at in the end.
bool CopyIntegers(VemVar* target, const VemVar* source, std::size_t count, int& largest) {
  static_assert(VemVarLong == 0, "the kind of an integer");
  __m128i kinds = _mm_setzero_si128();
  __m128i most = _mm_set1_epi32(largest);
  for (std::size_t i = 0; i < count; ++i) {
    const __m128i word = Load(source + i);
    kinds = _mm_or_si128(kinds, word);
    const __m128i isMore = _mm_cmpgt_epi32(word, most);
    most = _mm_or_si128(_mm_and_si128(isMore, word), _mm_andnot_si128(isMore, most));
    Store(target + i, word);
  }
  largest = _mm_cvtsi128_si32(_mm_shuffle_epi32(most, 2));
  return _mm_cvtsi128_si32(kinds) == 0;
}

std::size_t CopyOver(VemVar* target, const VemVar* source, std::size_t count) {
  std::size_t i = 0;
  for (; i < count && target[i].ValType() != VemVarString; ++i) Store(target + i, Load(source + i));
  return i;
}

void Write(VemVar* target, const int* source, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) new (target + i) VemVar(source[i]);
}

std::size_t WriteOver(VemVar* target, const int* source, std::size_t count) {
  std::size_t i = 0;
  for (; i < count && target[i].ValType() != VemVarString; ++i) new (target + i) VemVar(source[i]);
  return i;
}

bool IsOffered() { return true; }

}  // namespace

const WordKernels kSse2Words = {"SSE2",       IsOffered, AnyText, Copy,
                                CopyIntegers, CopyOver,  Write,   WriteOver};
