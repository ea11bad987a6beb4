#include "watcher/Callers.h"

#include <unwind.h>

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "watcher/Modules.h"
#include "watcher/Operations.h"

namespace watcher {
namespace {

enum class Origin : unsigned {
  kProgram,
  kInside,  ///< The library, or what a watched operation passes its calls on to.
  kBody,    ///< What the library has as a function too: a body from a header.
  kWatcher
};

// A call's place is before the one that it returns to.
const void* Before(const void* caller) { return static_cast<const char*>(caller) - 1; }

Origin FindOrigin(const void* caller) {
  const void* const place = Before(caller);
  Module module;
  if (!FindModule(place, module)) return Origin::kProgram;
  Module own;
  if (FindModule(reinterpret_cast<const void*>(&FindOrigin), own) && own.offset == module.offset) {
    return Origin::kWatcher;
  }
  if (IsLibrary(module) || IsOriginal(module.BeginAt(place))) return Origin::kInside;
  return IsExported(module.NameAt(place)) ? Origin::kBody : Origin::kProgram;
}

// What is known of a caller, until a library is unloaded and another may take its place: 47 bits of
// an address, 15 of the number of unloads, and 2 of the origin. A place where two meet keeps the
// later one.
constexpr std::size_t kKnown = 1024;
std::atomic<std::uint64_t> g_known[kKnown];

Origin OriginOf(const void* caller) {
  const auto address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(caller));
  const std::uint64_t key = address << 17 | (Unloads() & 0x7FFF) << 2;
  std::atomic<std::uint64_t>& known =
      g_known[static_cast<std::size_t>(address * 0x9E3779B97F4A7C15u >> 54)];
  const std::uint64_t found = known.load(std::memory_order_relaxed);
  if ((found & ~std::uint64_t{3}) == key) return static_cast<Origin>(found & 3);
  const Origin origin = FindOrigin(caller);
  known.store(key | static_cast<std::uint64_t>(origin), std::memory_order_relaxed);
  return origin;
}

_Unwind_Reason_Code AddPlace(_Unwind_Context* context, void* stack) {
  Stack& all = *static_cast<Stack*>(stack);
  const auto caller = reinterpret_cast<const void*>(_Unwind_GetIP(context));
  if (caller == nullptr || all.count == Stack::kDepth) return _URC_END_OF_STACK;
  if (OriginOf(caller) != Origin::kWatcher) all.places[all.count++] = Before(caller);
  return _URC_NO_REASON;
}

_Unwind_Reason_Code FindProgram(_Unwind_Context* context, void* place) {
  const auto caller = reinterpret_cast<const void*>(_Unwind_GetIP(context));
  if (caller == nullptr) return _URC_END_OF_STACK;
  const Origin origin = OriginOf(caller);
  if (origin == Origin::kWatcher || origin == Origin::kBody) return _URC_NO_REASON;
  *static_cast<const void**>(place) = caller;
  return _URC_END_OF_STACK;
}

}  // namespace

void Stack::Read() {
  count = 0;
  _Unwind_Backtrace(&AddPlace, this);
}

bool IsInside(const void* caller) { return OriginOf(caller) == Origin::kInside; }

const void* PlaceOf(const void* caller) {
  if (OriginOf(caller) != Origin::kBody) return caller;
  const void* place = caller;
  _Unwind_Backtrace(&FindProgram, &place);
  return place;
}

}  // namespace watcher
