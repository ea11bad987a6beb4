#ifndef WATCHER_PASSED_H_
#define WATCHER_PASSED_H_

#include <type_traits>

namespace watcher {

/// How an argument of type T reaches an operation: what is trivial is passed as it is, anything
/// else by the address of the caller's copy. To pass that on makes no further copy.
template <typename T>
using Passed = typename std::conditional<std::is_trivially_copy_constructible<T>::value &&
                                             std::is_trivially_destructible<T>::value,
                                         T, T&>::type;

/// Stands for the object where there is none, or none yet.
struct NoObject {};

}  // namespace watcher

#endif  // WATCHER_PASSED_H_
