#include "watcher/Tally.h"

#include <cstddef>

namespace watcher {
namespace {

constexpr int kKinds = 8;

std::atomic<unsigned long> g_counts[kTalliedOperations][kKinds];
Place g_places[kPlaces];

// An address has 47 bits, an operation 10 and a kind 3: no two keys are the same, and none is 0.
std::uint64_t KeyOf(const void* caller, int operation, int kind) {
  const auto place = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(caller));
  return place << 13 | static_cast<std::uint64_t>(operation) << 3 |
         static_cast<std::uint64_t>(kind);
}

}  // namespace

void Count(int operation, int kind) {
  g_counts[operation][kind].fetch_add(1, std::memory_order_relaxed);
}

unsigned long CountOf(int operation, int kind) {
  return g_counts[operation][kind].load(std::memory_order_relaxed);
}

Place* PlaceAt(const void* caller, int operation, int kind) {
  const std::uint64_t key = KeyOf(caller, operation, kind);
  const std::size_t first = static_cast<std::size_t>(key * 0x9E3779B97F4A7C15u >> 52);
  for (std::size_t i = 0; i < kPlaces; ++i) {
    Place& place = g_places[(first + i) % kPlaces];
    std::uint64_t found = place.key.load(std::memory_order_relaxed);
    if (found == 0) place.key.compare_exchange_strong(found, key);
    if (found == 0 || found == key) return &place;
  }
  return nullptr;
}

void ForgetAll() {
  for (auto& kinds : g_counts) {
    for (std::atomic<unsigned long>& count : kinds) count.store(0);
  }
  for (Place& place : g_places) {
    place.key.store(0);
    place.times.store(0);
    place.told = 0;
  }
}

}  // namespace watcher
