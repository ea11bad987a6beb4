#include "support/GuardedBytes.h"

#include <sys/mman.h>
#include <unistd.h>

#include <new>

namespace {

std::size_t PageSize() { return static_cast<std::size_t>(sysconf(_SC_PAGESIZE)); }

}  // namespace

GuardedBytes::GuardedBytes(std::size_t size)
    : size_((size + PageSize() - 1) / PageSize() * PageSize()) {
  void* const all =
      mmap(nullptr, size_ + 2 * PageSize(), PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (all == MAP_FAILED) throw std::bad_alloc();
  begin_ = static_cast<unsigned char*>(all) + PageSize();
  if (mprotect(begin_, size_, PROT_READ | PROT_WRITE) != 0) throw std::bad_alloc();
}

GuardedBytes::~GuardedBytes() { munmap(begin_ - PageSize(), size_ + 2 * PageSize()); }
