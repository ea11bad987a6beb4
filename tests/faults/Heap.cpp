#include "faults/Heap.h"

#include <cxxabi.h>
#include <dlfcn.h>
#include <execinfo.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

// What glibc keeps of its own beneath the functions below.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);
}

namespace heap {

namespace {

// Open addressing; a place that was left stays in the way of those behind it.
constexpr std::size_t kPlaces = 1 << 16;
void* const kLeft = reinterpret_cast<void*>(1);

struct Place {
  void* address;
  std::size_t size;
};

Place places[kPlaces];
Trace traces[kPlaces];         // Of the places, where traces are kept.
std::size_t touched[kPlaces];  // The places that are not as at first.
std::size_t touchedCount = 0;

thread_local bool watched = false;
thread_local bool armed = false;
thread_local bool inside = false;  // While a trace is taken, which may allocate.
bool keepsTraces = false;
Fault fault = {Fault::kNone, 0};
long number = 0;
bool failed = false;
long spared = 0;
Trace whereFailed;

std::size_t Hash(const void* address) {
  return (reinterpret_cast<std::uintptr_t>(address) >> 4) * 0x9E3779B97F4A7C15U >> 48;
}

// The place of an address, or else a free one for it.
std::size_t Find(const void* address) {
  std::size_t free = kPlaces;
  for (std::size_t i = Hash(address);; i = (i + 1) % kPlaces) {
    if (places[i].address == address) return i;
    if (places[i].address == kLeft && free == kPlaces) free = i;
    if (places[i].address == nullptr) return free == kPlaces ? i : free;
  }
}

void Take(Trace& trace) {
  inside = true;
  trace.count = backtrace(trace.frames, Trace::kDepth);
  inside = false;
}

void Note(void* address, std::size_t size) {
  if (!watched || inside || address == nullptr) return;
  const std::size_t i = Find(address);
  if (places[i].address == nullptr) touched[touchedCount++] = i;
  if (touchedCount > kPlaces / 2) std::abort();
  places[i] = {address, size};
  traces[i].count = 0;
  if (keepsTraces) Take(traces[i]);
}

// Also while paused: what was taken under watch may be given back at any time.
void Forget(void* address) {
  if (address == nullptr || touchedCount == 0) return;
  Place& place = places[Find(address)];
  if (place.address == address) place.address = kLeft;
}

const char* FileOf(const void* address, Dl_info& info) {
  if (dladdr(address, &info) == 0 || info.dli_fname == nullptr) return "";
  const char* const slash = std::strrchr(info.dli_fname, '/');
  return slash == nullptr ? info.dli_fname : slash + 1;
}

bool Begins(const char* text, const char* start) {
  return std::strncmp(text, start, std::strlen(start)) == 0;
}

// What stands between the allocation and those who may ask for it: OpenCV's core, its image files,
// or a codec of another maker. The C library and the C++ library do not count.
bool IsAskedForBy(const Trace& trace, bool (*matches)(const char* file)) {
  Dl_info info;
  Dl_info own;
  FileOf(reinterpret_cast<const void*>(&IsAskedForBy), own);
  for (int i = 0; i < trace.count; ++i) {
    const char* const file = FileOf(trace.frames[i], info);
    if (Begins(file, "libVem")) return false;
    if (info.dli_fbase == own.dli_fbase || *file == '\0') continue;
    if (Begins(file, "libc.") || Begins(file, "libc-") || Begins(file, "libstdc++") ||
        Begins(file, "libgcc") || Begins(file, "ld-linux")) {
      continue;
    }
    if (matches(file)) return true;
  }
  return false;
}

// libpng jumps to where nobody waits when its first allocations fail: what such codecs ask for
// themselves does not fail.
bool IsSpared(const Trace& trace) {
  return IsAskedForBy(trace, [](const char* file) { return !Begins(file, "libopencv"); });
}

bool Fails() {
  if (!armed || !watched || inside) return false;
  ++number;
  if (fault.kind == Fault::kNone || number < fault.number) return false;
  if (fault.kind == Fault::kOnce && number > fault.number) return false;
  Trace trace;
  Take(trace);
  if (IsSpared(trace)) {
    ++spared;
    return false;
  }
  if (!failed) whereFailed = trace;
  failed = true;
  errno = ENOMEM;
  return true;
}

}  // namespace

void Watch(bool keepTraces) {
  for (; touchedCount > 0; --touchedCount) places[touched[touchedCount - 1]].address = nullptr;
  keepsTraces = keepTraces;
  watched = true;
}

std::vector<Block> EndWatch() {
  watched = false;
  std::vector<Block> left;
  for (std::size_t i = 0; i < touchedCount; ++i) {
    const Place& place = places[touched[i]];
    if (place.address != kLeft) left.push_back({place.size, traces[touched[i]]});
  }
  return left;
}

void Arm(const Fault& newFault) {
  fault = newFault;
  number = 0;
  failed = false;
  armed = true;
}

long Disarm() {
  armed = false;
  return number;
}

bool Failed() { return failed; }
long Spared() { return spared; }
const Trace& WhereFailed() { return whereFailed; }

Pause::Pause() : watched_(watched) { watched = false; }
Pause::~Pause() { watched = watched_; }

bool IsInCodec(const Trace& trace) {
  return IsAskedForBy(trace, [](const char* file) { return !Begins(file, "libopencv_core"); });
}

namespace {

// The first frame that is the library's.
int FirstOfLibrary(const Trace& trace) {
  Dl_info info;
  for (int i = 0; i < trace.count; ++i) {
    if (Begins(FileOf(trace.frames[i], info), "libVem")) return i;
  }
  return trace.count;
}

}  // namespace

bool AreInOneCall(const Trace& a, const Trace& b) {
  Dl_info info;
  const int i = FirstOfLibrary(a);
  const int k = FirstOfLibrary(b);
  if (i == a.count || i == 0 || k == 0 || a.count - i != b.count - k) return false;
  if (!Begins(FileOf(a.frames[i - 1], info), "libopencv")) return false;
  if (!Begins(FileOf(b.frames[k - 1], info), "libopencv")) return false;
  return std::equal(a.frames + i, a.frames + a.count, b.frames + k);
}

std::string ToString(const Trace& trace) {
  std::string text;
  for (int i = 0; i < trace.count; ++i) {
    Dl_info info;
    const std::string file = FileOf(trace.frames[i], info);
    text += "      " + file + " ";
    if (info.dli_sname != nullptr) {
      int status = 0;
      const std::unique_ptr<char, void (*)(void*)> name(
          abi::__cxa_demangle(info.dli_sname, nullptr, nullptr, &status), std::free);
      text += status == 0 ? name.get() : info.dli_sname;
    }
    text += '\n';
  }
  return text;
}

}  // namespace heap

// The family itself. `new` in all its forms comes here through the C++ library.

extern "C" {

void* malloc(std::size_t size) {
  if (heap::Fails()) return nullptr;
  void* const block = __libc_malloc(size);
  heap::Note(block, size);
  return block;
}

void* calloc(std::size_t count, std::size_t size) {
  if (heap::Fails()) return nullptr;
  void* const block = __libc_calloc(count, size);
  heap::Note(block, count * size);
  return block;
}

void* realloc(void* old, std::size_t size) {
  if (heap::Fails()) return nullptr;
  void* const block = __libc_realloc(old, size);
  if (block != nullptr || size == 0) heap::Forget(old);
  heap::Note(block, size);
  return block;
}

void* memalign(std::size_t alignment, std::size_t size) {
  if (heap::Fails()) return nullptr;
  void* const block = __libc_memalign(alignment, size);
  heap::Note(block, size);
  return block;
}

void* aligned_alloc(std::size_t alignment, std::size_t size) { return memalign(alignment, size); }

int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
  *block = memalign(alignment, size);
  return *block == nullptr ? ENOMEM : 0;
}

void free(void* block) {
  heap::Forget(block);
  __libc_free(block);
}

}  // extern "C"
