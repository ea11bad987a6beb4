#ifndef VALUES_VAR_STORE_H_
#define VALUES_VAR_STORE_H_

#include <cstddef>
#include <new>
#include <vector>

#include "VemRLC.h"
#include "VemTuple.h"

/// The elements of an array of control values, taken many at a time. A block grows as a vector's
/// does, but its elements pass into the larger one as they are: a text is not copied.
namespace var_store {

inline std::size_t Count(const VemVarStore& store) {
  return static_cast<std::size_t>(store.Last - store.First);
}

/// How many more elements there is room for.
inline std::size_t Room(const VemVarStore& store) {
  return static_cast<std::size_t>(store.Limit - store.Last);
}

/// Makes room for `count` elements in all, and no more.
void Reserve(VemVarStore& store, std::size_t count);

/// Makes room for `added` more elements; where the block grows, it at least doubles.
void MakeRoom(VemVarStore& store, std::size_t added);

/// Destroys the elements behind the first `count`, of which there are as many; the block is kept.
void Truncate(VemVarStore& store, std::size_t count);

/// Destroys the elements and gives their block back.
void Release(VemVarStore& store);

/// Makes the elements deep copies of the source's: in the block there is, or else in one that just
/// holds them. Where one can't be copied, nothing changes.
void Assign(VemVarStore& store, const VemVarStore& source);

/// Appends deep copies of the source's elements, another store's, for which there must be room, or
/// none.
void AppendCopies(VemVarStore& store, const VemVarStore& source);

/// AppendCopies, and the largest of the copies' integers, as VemVar::I reads them, or 0 if that is
/// larger: in one walk where all are integers.
int AppendMeasured(VemVarStore& store, const VemVarStore& source);

/// Moves the last element before the one at `place`; those from there on move up.
void MoveLastTo(VemVarStore& store, VemVar* place);

/// Puts the elements in the opposite order.
void Invert(VemVarStore& store);

/// The elements' integers, as VemVar::I reads them: `count` of them, 0 behind the last element.
std::vector<int> Integers(const VemVarStore& store, std::size_t count);

inline void AppendInteger(VemVarStore& store, int value) {
  if (store.Last == store.Limit) MakeRoom(store, 1);
  new (store.Last) VemVar(value);
  ++store.Last;
}

/// Writes `count` integers from the element at `position` on, which is there or the next to come:
/// those of the list, then zeros. There must be room for what goes beyond the last element.
void WriteIntegers(VemVarStore& store, std::size_t position, const std::vector<int>& list,
                   std::size_t count);

/// Appends the parts of runs to a store each, in which there must be room.
void AppendRuns(VemVarStore& rows, VemVarStore& firsts, VemVarStore& lasts, const Run* begin,
                const Run* end);

}  // namespace var_store

#endif  // VALUES_VAR_STORE_H_
