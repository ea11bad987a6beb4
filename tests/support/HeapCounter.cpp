#include "support/HeapCounter.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

thread_local long taken = 0;
thread_local long given = 0;
thread_local long left = -1;  // Blocks until `new` fails; negative while it does not.

}  // namespace

HeapCounter::HeapCounter() : taken_(taken), given_(given) {}

long HeapCounter::Taken() const { return taken - taken_; }
long HeapCounter::Kept() const { return Taken() - (given - given_); }

HeapFailure::HeapFailure(long blocks) { left = blocks; }
HeapFailure::~HeapFailure() { left = -1; }

#ifndef VEM_SANITIZED

void* operator new(std::size_t size) {
  if (left == 0) throw std::bad_alloc();
  if (left > 0) --left;
  void* const block = std::malloc(size == 0 ? 1 : size);
  if (block == nullptr) throw std::bad_alloc();
  ++taken;
  return block;
}

void operator delete(void* block) noexcept {
  if (block != nullptr) ++given;
  std::free(block);
}

void* operator new[](std::size_t size) { return operator new(size); }
void operator delete(void* block, std::size_t) noexcept { operator delete(block); }
void operator delete[](void* block) noexcept { operator delete(block); }
void operator delete[](void* block, std::size_t) noexcept { operator delete(block); }

#endif
