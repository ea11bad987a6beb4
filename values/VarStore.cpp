#include "values/VarStore.h"

#include <emmintrin.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

#include "values/WordKernels.h"

namespace var_store {

namespace {

// Blocks are aligned to 16 bytes, and so is each element of theirs.
const __m128i* Words(const VemVar* element) { return reinterpret_cast<const __m128i*>(element); }
__m128i* Words(VemVar* element) { return reinterpret_cast<__m128i*>(element); }

// Kind and low half of two elements' payloads.
__m128 LowHalves(const VemVar* pair) {
  return _mm_shuffle_ps(_mm_castsi128_ps(_mm_load_si128(Words(pair))),
                        _mm_castsi128_ps(_mm_load_si128(Words(pair + 1))), _MM_SHUFFLE(2, 0, 2, 0));
}

template <int kOrder>
__m128i Shuffled(const __m128 (&pairs)[2]) {
  return _mm_castps_si128(_mm_shuffle_ps(pairs[0], pairs[1], kOrder));
}

// Numbers need no destruction.
void Destroy(VemVar* element, std::size_t count) {
  if (BestWordKernels().anyText(element, count)) std::destroy_n(element, count);
}

// To where no element stands. Where a text can't be copied, none stands there afterwards either.
void CopyTo(VemVar* target, const VemVar* source, std::size_t count) {
  if (!BestWordKernels().copy(target, source, count)) return;
  std::size_t i = 0;
  try {
    for (; i < count; ++i) new (target + i) VemVar(source[i]);
  } catch (...) {
    std::destroy_n(target, i);
    throw;
  }
}

// From this size on a block comes from malloc: realloc lets it grow where it stands, or passes its
// pages on to another address.
constexpr std::size_t kLargeBlock = std::size_t{1} << 21;

std::size_t Bytes(const VemVarStore& store) {
  return static_cast<std::size_t>(store.Limit - store.First) * sizeof(VemVar);
}

// When memory is short, as operator new does it.
void* Reallocate(void* block, std::size_t bytes) {
  for (;;) {
    if (void* const larger = std::realloc(block, bytes)) return larger;
    const std::new_handler handler = std::get_new_handler();
    if (handler == nullptr) throw std::bad_alloc();
    handler();
  }
}

void Free(const VemVarStore& store) {
  if (Bytes(store) < kLargeBlock) {
    ::operator delete(store.First);
  } else {
    std::free(store.First);
  }
}

void MoveTo(VemVarStore& store, std::size_t room) {
  const std::size_t count = Count(store);
  const std::size_t bytes = room * sizeof(VemVar);
  void* block;
  if (Bytes(store) >= kLargeBlock) {
    block = Reallocate(store.First, bytes);
  } else {
    block = bytes < kLargeBlock ? ::operator new(bytes) : Reallocate(nullptr, bytes);
    BestWordKernels().copy(static_cast<VemVar*>(block), store.First, count);
    Free(store);
  }
  auto* const first = static_cast<VemVar*>(block);
  store = {first, first + count, first + room};
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

void WriteOver(VemVar* target, const int* source, std::size_t count) {
  std::size_t i = 0;
  while ((i += BestWordKernels().writeOver(target + i, source + i, count - i)) < count) {
    target[i] = VemVar();  // A text: it is released, and written over in the next turn.
  }
}

void WriteIntegers(VemVarStore& store, std::size_t position, const int* source, std::size_t count) {
  VemVar* const target = store.First + position;
  const std::size_t over = std::min(count, Count(store) - position);
  WriteOver(target, source, over);
  BestWordKernels().write(target + over, source + over, count - over);
  store.Last = std::max(store.Last, target + count);
}

int LargestConverted(const VemVarStore& store) {
  int largest = 0;
  for (const VemVar* i = store.First; i != store.Last; ++i) largest = std::max(largest, i->I());
  return largest;
}

// Puts elements as they are in the place of all that there are. There is room for them.
void WriteOver(VemVarStore& store, const VemVarStore& source) {
  const std::size_t count = Count(source);
  const std::size_t done =
      BestWordKernels().copyOver(store.First, source.First, std::min(count, Count(store)));
  Destroy(store.First + done, Count(store) - done);
  BestWordKernels().copy(store.First + done, source.First + done, count - done);
  store.Last = store.First + count;
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

void Truncate(VemVarStore& store, std::size_t count) {
  Destroy(store.First + count, Count(store) - count);
  store.Last = store.First + count;
}

void Release(VemVarStore& store) {
  Destroy(store.First, Count(store));
  Free(store);
  store = {};
}

// Texts are copied aside, so that the old elements stand until all are there.
void Assign(VemVarStore& store, const VemVarStore& source) {
  if (&store == &source) return;
  const std::size_t count = Count(source);
  const bool fits = count <= static_cast<std::size_t>(store.Limit - store.First);
  if (fits && store.First == store.Last) return AppendCopies(store, source);
  if (fits && !BestWordKernels().anyText(source.First, count)) return WriteOver(store, source);
  Owned copy;
  Reserve(copy, count);
  AppendCopies(copy, source);
  if (!fits) return std::swap<VemVarStore>(store, copy);
  WriteOver(store, copy);
  copy.Last = copy.First;
}

void AppendCopies(VemVarStore& store, const VemVarStore& source) {
  const std::size_t count = Count(source);
  CopyTo(store.Last, source.First, count);
  store.Last += count;
}

int AppendMeasured(VemVarStore& store, const VemVarStore& source) {
  const std::size_t count = Count(source);
  int largest = 0;
  if (!BestWordKernels().copyIntegers(store.Last, source.First, count, largest)) {
    CopyTo(store.Last, source.First, count);
    largest = LargestConverted(source);
  }
  store.Last += count;
  return largest;
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

void WriteIntegers(VemVarStore& store, std::size_t position, const std::vector<int>& list,
                   std::size_t count) {
  const std::size_t given = std::min(list.size(), count);
  WriteIntegers(store, position, list.data(), given);
  const int zero = 0;
  for (std::size_t i = given; i < count; ++i) WriteIntegers(store, position + i, &zero, 1);
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
