#include "watcher/Report.h"

#include <cxxabi.h>
#include <dlfcn.h>
#include <pthread.h>
#include <unistd.h>
#include <unwind.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "watcher/Tally.h"

namespace watcher {
namespace {

enum Mode : int { kUnread, kPrint, kAbort, kSum };

std::atomic<int> g_mode{kUnread};

// Without a lock: whoever reads it first, reads the same.
int TheMode() {
  const int known = g_mode.load(std::memory_order_relaxed);
  if (known != kUnread) return known;
  const char* const asked = std::getenv("VEM_CHECK");
  int mode = kPrint;
  if (asked != nullptr && std::strcmp(asked, "abort") == 0) mode = kAbort;
  if (asked != nullptr && std::strcmp(asked, "count") == 0) mode = kSum;
  g_mode.store(mode, std::memory_order_relaxed);
  return mode;
}

const char* const kKindNames[] = {"index out of range",    "refused",         "no object",
                                  "assigned to itself",    "of another kind", "no effect",
                                  "fault of the processor"};
constexpr int kKinds = static_cast<int>(Kind::kCount);
static_assert(sizeof(kKindNames) / sizeof(*kKindNames) == kKinds, "a name for each kind");

// Set while a thread tells something: what it calls meanwhile is its own business.
__thread bool t_telling __attribute__((tls_model("initial-exec")));

// The library or program that a place lies in.
const void* ModuleOf(const void* place) {
  Dl_info info;
  return dladdr(place, &info) != 0 ? info.dli_fbase : nullptr;
}

// Whether a call is part of an operation that was watched itself: it comes from the library, of
// which one part calls the other, or from a body that a header gave to another library.
bool IsInside(const void* caller) {
  Dl_info info;
  if (dladdr(static_cast<const char*>(caller) - 1, &info) == 0) return false;
  return IsLibrary(info.dli_fbase) || IsOriginal(info.dli_saddr);
}

struct Stack {
  static constexpr int kDepth = 24;

  void* places[kDepth];
  int count = 0;
};

_Unwind_Reason_Code AddPlace(_Unwind_Context* context, void* stack) {
  Stack& all = *static_cast<Stack*>(stack);
  const std::uintptr_t place = _Unwind_GetIP(context);
  if (place == 0 || all.count == Stack::kDepth) return _URC_END_OF_STACK;
  // A call's place is before the one that it returns to.
  all.places[all.count++] = reinterpret_cast<void*>(place - 1);
  return _URC_NO_REASON;
}

// Where a misuse is told to be: where the program calls. What a compiler has not inlined calls from
// its body, which all of the program shares.
const void* PlaceOf(const void* caller) {
  Dl_info info;
  if (dladdr(static_cast<const char*>(caller) - 1, &info) == 0) return caller;
  if (!IsExported(info.dli_sname)) return caller;
  Stack stack;
  _Unwind_Backtrace(&AddPlace, &stack);
  const void* const own = ModuleOf(reinterpret_cast<const void*>(&ModuleOf));
  for (int i = 0; i < stack.count; ++i) {
    if (dladdr(stack.places[i], &info) == 0) return stack.places[i];
    if (info.dli_fbase != own && !IsExported(info.dli_sname)) return stack.places[i];
  }
  return caller;
}

void AddPlaceText(Text& text, const void* place, const Dl_info& info) {
  text.Add("    at ");
  if (info.dli_sname != nullptr) {
    int status = 0;
    char* const readable = abi::__cxa_demangle(info.dli_sname, nullptr, nullptr, &status);
    text.Add("%.160s ", readable != nullptr ? readable : info.dli_sname);
    std::free(readable);
  }
  text.Add("(%.160s+0x%zx)\n", info.dli_fname != nullptr ? info.dli_fname : "?",
           static_cast<std::size_t>(static_cast<const char*>(place) -
                                    static_cast<const char*>(info.dli_fbase)));
}

void AddBacktrace(Text& text) {
  Stack stack;
  _Unwind_Backtrace(&AddPlace, &stack);
  const void* const own = ModuleOf(reinterpret_cast<const void*>(&ModuleOf));
  for (int i = 0; i < stack.count && text.HasRoom(); ++i) {
    Dl_info info;
    if (dladdr(stack.places[i], &info) == 0) {
      text.Add("    at %p\n", stack.places[i]);
    } else if (info.dli_fbase != own) {
      AddPlaceText(text, stack.places[i], info);
    }
  }
}

bool IsPowerOfTen(unsigned long number) {
  while (number > 9 && number % 10 == 0) number /= 10;
  return number == 1;
}

// Operations that differ in their arguments alone count as one.
bool IsCountedWithEarlier(int id, int kind) {
  for (int earlier = 0; earlier < id; ++earlier) {
    if (CountOf(earlier, kind) == 0) continue;
    if (std::strcmp(kOperations[earlier].name, kOperations[id].name) == 0) return true;
  }
  return false;
}

unsigned long CountOfName(int id, int kind) {
  unsigned long count = 0;
  for (int other = id; other < kOperationCount; ++other) {
    if (CountOf(other, kind) == 0) continue;
    if (std::strcmp(kOperations[other].name, kOperations[id].name) == 0) {
      count += CountOf(other, kind);
    }
  }
  return count;
}

void AddCounts(Text& text, int kind) {
  for (int id = 0; id < kOperationCount; ++id) {
    if (CountOf(id, kind) == 0 || IsCountedWithEarlier(id, kind)) continue;
    if (!text.HasRoom()) text.Write();
    text.Add("%7lu %s: %s\n", CountOfName(id, kind), kOperations[id].name, kKindNames[kind]);
  }
}

void SumUp() {
  unsigned long all = 0;
  for (int id = 0; id < kOperationCount; ++id) {
    for (int kind = 0; kind < kKinds; ++kind) all += CountOf(id, kind);
  }
  Text text;
  text.Add("VemCheck: %lu in all\n", all);
  for (int kind = 0; kind < kKinds; ++kind) AddCounts(text, kind);
  text.Write();
}

// Held by the one thread that tells.
pthread_mutex_t g_telling = PTHREAD_MUTEX_INITIALIZER;

// A child counts and tells for itself alone. The thread that told when it was forked is not in it.
void BeginChild() {
  g_telling = PTHREAD_MUTEX_INITIALIZER;
  ForgetAll();
}

__attribute__((constructor)) void Begin() {
  TheMode();
  pthread_atfork(nullptr, nullptr, &BeginChild);
}

__attribute__((destructor)) void End() {
  if (TheMode() == kSum && IsInUse()) SumUp();
}

}  // namespace

void Text::Add(const char* format, ...) {
  const std::size_t room = sizeof(bytes_) - length_;
  va_list arguments;
  va_start(arguments, format);
  const int added = std::vsnprintf(bytes_ + length_, room, format, arguments);
  va_end(arguments);
  if (added < 0) return;
  const std::size_t wanted = static_cast<std::size_t>(added);
  length_ += wanted < room ? wanted : room - 1;
}

void Text::Write() {
  std::size_t written = 0;
  while (written < length_) {
    const ssize_t result = write(STDERR_FILENO, bytes_ + written, length_ - written);
    if (result < 0 && errno == EINTR) continue;
    if (result <= 0) break;
    written += static_cast<std::size_t>(result);
  }
  length_ = 0;
}

void Call::Print(Kind kind, const char* what, bool isLast) const {
  Place* const place = PlaceAt(PlaceOf(caller_), operation_.id, static_cast<int>(kind));
  if (place == nullptr) return;
  const unsigned long times = place->times.fetch_add(1, std::memory_order_relaxed) + 1;
  if (!IsPowerOfTen(times) && !isLast) return;
  pthread_mutex_lock(&g_telling);
  // A thread that comes here for the 10th time may be before the one that came for the first time.
  while (place->told < times && (!isLast || place->told == 0)) {
    place->told = place->told == 0 ? 1 : 10 * place->told;
    PrintOnce(kind, what, place->told);
  }
  if (isLast) std::abort();
  pthread_mutex_unlock(&g_telling);
}

void Call::PrintOnce(Kind kind, const char* what, unsigned long times) const {
  Text text;
  text.Add("%s: %s\n", operation_.name, what);
  if (times > 1) {
    text.Add("    for the %luth time from here\n", times);
  } else {
    if (kind != Kind::kIndex) Describe(text);
    AddBacktrace(text);
  }
  text.Write();
}

void Call::Tell(Kind kind, const char* format, ...) const {
  if (t_telling) return;
  t_telling = true;
  const int error = errno;
  const int mode = TheMode();
  if (IsInside(caller_)) {
    // Told of the outer one, where it is a misuse.
  } else if (mode == kSum) {
    Count(operation_.id, static_cast<int>(kind));
  } else {
    char what[512];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(what, sizeof(what), format, arguments);
    va_end(arguments);
    Print(kind, what, mode == kAbort);
  }
  errno = error;
  t_telling = false;
}

bool Call::Refuse(bool refused, const char* reason) const {
  if (refused) Tell(Kind::kRefused, "refused, %s", reason);
  return refused;
}

bool Call::InRange(int index, std::size_t length, int argument) const {
  if (index >= 0 && static_cast<std::size_t>(index) < length) return true;
  int size = 0;
  const char* const name = NameOf(argument, size);
  Tell(Kind::kIndex, "%.*s %d, length %zu", size, name, index, length);
  return false;
}

const char* Call::NameOf(int argument, int& length) const {
  const char* name = operation_.names;
  for (; argument > 0; --argument) name += std::strcspn(name, " ") + 1;
  length = static_cast<int>(std::strcspn(name, " ?"));
  return name;
}

}  // namespace watcher
