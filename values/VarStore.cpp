#include "values/VarStore.h"

#include <emmintrin.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace var_store {

namespace {

// Blocks are aligned to 16 bytes, and so is each element of theirs.
const __m128i* Words(const VemVar* element) { return reinterpret_cast<const __m128i*>(element); }
__m128i* Words(VemVar* element) { return reinterpret_cast<__m128i*>(element); }

__m128i IsText(const VemVar* element) {
  return _mm_cmpeq_epi32(_mm_load_si128(Words(element)), _mm_cvtsi32_si128(VemVarString));
}

// Kind and low half of two elements' payloads.
__m128 LowHalves(const VemVar* pair) {
  return _mm_shuffle_ps(_mm_castsi128_ps(_mm_load_si128(Words(pair))),
                        _mm_castsi128_ps(_mm_load_si128(Words(pair + 1))), _MM_SHUFFLE(2, 0, 2, 0));
}

template <int kOrder>
__m128i Shuffled(const __m128 (&pairs)[2]) {
  return _mm_castps_si128(_mm_shuffle_ps(pairs[0], pairs[1], kOrder));
}

__m128i AnyOfFour(const VemVar* element) {
  return _mm_or_si128(_mm_or_si128(IsText(element), IsText(element + 1)),
                      _mm_or_si128(IsText(element + 2), IsText(element + 3)));
}

// Where there are many, stretches are read side by side: memory feeds several streams faster than
// one.
bool AnyText(const VemVar* element, std::size_t count) {
  constexpr std::size_t kStreams = 8;
  constexpr std::size_t kMany = 4096;
  __m128i found = _mm_setzero_si128();
  std::size_t i = 0;
  if (count >= kMany) {
    const std::size_t stretch = count / kStreams / 4 * 4;
    for (; i < stretch; i += 4) {
      for (std::size_t k = 0; k < kStreams; ++k) {
        found = _mm_or_si128(found, AnyOfFour(element + k * stretch + i));
      }
    }
    i = kStreams * stretch;
  }
  for (; i + 4 <= count; i += 4) found = _mm_or_si128(found, AnyOfFour(element + i));
  for (; i < count; ++i) found = _mm_or_si128(found, IsText(element + i));
  return _mm_cvtsi128_si32(found) != 0;
}

// Numbers need no destruction.
void Destroy(VemVar* element, std::size_t count) {
  if (AnyText(element, count)) std::destroy_n(element, count);
}

void CopyOne(VemVar* target, const VemVar* source) {
  _mm_store_si128(Words(target), _mm_load_si128(Words(source)));
}

void CopyFour(VemVar* target, const VemVar* source) {
  const __m128i words[] = {_mm_load_si128(Words(source)), _mm_load_si128(Words(source + 1)),
                           _mm_load_si128(Words(source + 2)), _mm_load_si128(Words(source + 3))};
  for (int i = 0; i < 4; ++i) _mm_store_si128(Words(target + i), words[i]);
}

// Copies elements as they are, in two streams, and tells whether any is a text.
bool CopyWords(VemVar* target, const VemVar* source, std::size_t count) {
  const std::size_t half = count / 8 * 4;
  __m128i found = _mm_setzero_si128();
  for (std::size_t i = 0; i < half; i += 4) {
    const std::size_t k = half + i;
    found = _mm_or_si128(found, _mm_or_si128(AnyOfFour(source + i), AnyOfFour(source + k)));
    CopyFour(target + i, source + i);
    CopyFour(target + k, source + k);
  }
  for (std::size_t i = 2 * half; i < count; ++i) {
    found = _mm_or_si128(found, IsText(source + i));
    CopyOne(target + i, source + i);
  }
  return _mm_cvtsi128_si32(found) != 0;
}

// From the end on: a block that doubles often moves to right behind itself, and there a copy from
// the front waits for its own stores, which the processor tells from its loads by the low bits of
// the addresses alone.
void MoveWords(VemVar* target, const VemVar* source, std::size_t count) {
  for (; count >= 4; count -= 4) CopyFour(target + count - 4, source + count - 4);
  for (std::size_t i = 0; i < count; ++i) CopyOne(target + i, source + i);
}

// Over elements that are no texts, or where none stand. Where a text can't be copied, nothing is.
void CopyOver(VemVar* target, const VemVar* source, std::size_t count) {
  if (!CopyWords(target, source, count)) return;
  std::size_t i = 0;
  try {
    for (; i < count; ++i) new (target + i) VemVar(source[i]);
  } catch (...) {
    std::uninitialized_default_construct_n(target + i, count - i);
    throw;
  }
}

void AssignOver(VemVar* target, const VemVar* source, std::size_t count) {
  if (AnyText(target, count)) {
    std::copy_n(source, count, target);
  } else {
    CopyOver(target, source, count);
  }
}

void AppendCopies(VemVarStore& store, const VemVar* source, std::size_t count) {
  VemVar* const target = store.Last;
  store.Last += count;
  CopyOver(target, source, count);
}

void MoveTo(VemVarStore& store, std::size_t room) {
  auto* const block = static_cast<VemVar*>(::operator new(room * sizeof(VemVar)));
  const std::size_t count = Count(store);
  MoveWords(block, store.First, count);
  ::operator delete(store.First);
  store = {block, block + count, block + room};
}

// Two of four integers, widened to 64 bits.
__m128i FrontPair(__m128i values) { return _mm_unpacklo_epi32(values, _mm_srai_epi32(values, 31)); }
__m128i BackPair(__m128i values) { return _mm_unpackhi_epi32(values, _mm_srai_epi32(values, 31)); }

// The kind is the zero in front.
void WritePair(__m128i pair, VemVar* element0, VemVar* element1) {
  static_assert(VemVarLong == 0, "the kind of an integer");
  _mm_store_si128(Words(element0), _mm_unpacklo_epi64(_mm_setzero_si128(), pair));
  _mm_store_si128(Words(element1), _mm_unpackhi_epi64(_mm_setzero_si128(), pair));
}

// All are integers nearly always: their low halves are taken before that is known.
void ReadIntegers(const VemVar* element, std::size_t count, int* target) {
  __m128i kinds = _mm_setzero_si128();
  std::size_t i = 0;
  for (; i + 4 <= count; i += 4) {
    const __m128 pairs[] = {LowHalves(element + i), LowHalves(element + i + 2)};
    kinds = _mm_or_si128(kinds, Shuffled<_MM_SHUFFLE(2, 0, 2, 0)>(pairs));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(target + i),
                     Shuffled<_MM_SHUFFLE(3, 1, 3, 1)>(pairs));
  }
  const bool converted = _mm_movemask_epi8(_mm_cmpeq_epi32(kinds, _mm_setzero_si128())) != 0xFFFF;
  if (converted) i = 0;
  for (; i < count; ++i) target[i] = element[i].I();
}

struct Owned : VemVarStore {
  Owned() : VemVarStore() {}
  Owned(const Owned&) = delete;
  Owned& operator=(const Owned&) = delete;
  ~Owned() { Release(*this); }
};

}  // namespace

void Reserve(VemVarStore& store, std::size_t count) {
  if (count > static_cast<std::size_t>(store.Limit - store.First)) MoveTo(store, count);
}

void MakeRoom(VemVarStore& store, std::size_t added) {
  if (added <= static_cast<std::size_t>(store.Limit - store.Last)) return;
  MoveTo(store, Count(store) + std::max(Count(store), added));
}

void Truncate(VemVarStore& store, VemVar* first) {
  Destroy(first, static_cast<std::size_t>(store.Last - first));
  store.Last = first;
}

void Release(VemVarStore& store) {
  Destroy(store.First, Count(store));
  ::operator delete(store.First);
  store = {};
}

void Assign(VemVarStore& store, const VemVarStore& source) {
  if (&store == &source) return;
  const std::size_t count = Count(source);
  if (count > static_cast<std::size_t>(store.Limit - store.First)) {
    Owned copy;
    Reserve(copy, count);
    AppendCopies(copy, source);
    std::swap<VemVarStore>(store, copy);
    return;
  }
  const std::size_t common = std::min(count, Count(store));
  AssignOver(store.First, source.First, common);
  Truncate(store, store.First + common);
  AppendCopies(store, source.First + common, count - common);
}

void AppendCopies(VemVarStore& store, const VemVarStore& source) {
  AppendCopies(store, source.First, Count(source));
}

void MoveLastTo(VemVarStore& store, VemVar* place) {
  VemVar* const last = store.Last - 1;
  const __m128i words = _mm_load_si128(Words(last));
  std::memmove(static_cast<void*>(place + 1), place,
               static_cast<std::size_t>(last - place) * sizeof(VemVar));
  _mm_store_si128(Words(place), words);
}

void Invert(VemVarStore& store) {
  if (store.First == store.Last) return;
  VemVar* front = store.First;
  for (VemVar* back = store.Last - 1; front < back; ++front, --back) {
    const __m128i words = _mm_load_si128(Words(front));
    _mm_store_si128(Words(front), _mm_load_si128(Words(back)));
    _mm_store_si128(Words(back), words);
  }
}

std::vector<int> Integers(const VemVarStore& store, std::size_t count) {
  std::vector<int> list(count);
  ReadIntegers(store.First, std::min(count, Count(store)), list.data());
  return list;
}

int LargestInteger(const VemVarStore& store) {
  int largest = 0;
  for (const VemVar* element = store.First; element != store.Last; ++element) {
    largest = std::max(largest, element->I());
  }
  return largest;
}

void AppendIntegers(VemVarStore& store, const std::vector<int>& list, std::size_t count) {
  const std::size_t given = std::min(list.size(), count);
  VemVar* const target = store.Last;
  store.Last += count;
  std::size_t i = 0;
  for (; i + 4 <= given; i += 4) {
    const __m128i values = _mm_loadu_si128(reinterpret_cast<const __m128i*>(list.data() + i));
    WritePair(FrontPair(values), target + i, target + i + 1);
    WritePair(BackPair(values), target + i + 2, target + i + 3);
  }
  for (; i < given; ++i) new (target + i) VemVar(list[i]);
  for (; i < count; ++i) new (target + i) VemVar(0);
}

void AppendRuns(VemVarStore& rows, VemVarStore& firsts, VemVarStore& lasts, const Run* begin,
                const Run* end) {
  static_assert(sizeof(Run) == 12, "three integers, and a fourth is the next run's");
  if (begin == end) return;
  VemVar* row = rows.Last;
  VemVar* first = firsts.Last;
  VemVar* last = lasts.Last;
  const Run& final = end[-1];
  for (const Run* run = begin; run != &final; ++run) {
    const __m128i values = _mm_loadu_si128(reinterpret_cast<const __m128i*>(run));
    WritePair(FrontPair(values), row++, first++);
    _mm_store_si128(Words(last++), _mm_unpacklo_epi64(_mm_setzero_si128(), BackPair(values)));
  }
  rows.Last = new (row) VemVar(final.Row) + 1;
  firsts.Last = new (first) VemVar(final.FirstColumn) + 1;
  lasts.Last = new (last) VemVar(final.LastColumn) + 1;
}

}  // namespace var_store
