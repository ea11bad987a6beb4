#include "watcher/Report.h"

#include <cxxabi.h>
#include <pthread.h>

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "watcher/Modules.h"
#include "watcher/Tally.h"
#include "watcher/Turn.h"

namespace watcher {
namespace {

enum Mode : int { kUnread, kPrint, kAbort, kSum };

std::atomic<int> g_mode{kUnread};

bool IsAsked(const char* name) {
  const char* const asked = std::getenv("VEM_CHECK");
  return asked != nullptr && std::strcmp(asked, name) == 0;
}

// Without a lock: whoever reads it first, reads the same.
int TheMode() {
  const int known = g_mode.load(std::memory_order_relaxed);
  if (known != kUnread) return known;
  const int mode = IsAsked("abort") ? kAbort : IsAsked("count") ? kSum : kPrint;
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

// Of the one thread that has its turn.
Text g_text;
Stack g_stack;
bool g_isEnding = false;

std::atomic<bool> g_isFull{false};

void AddName(const char* name) {
  // A long one takes more room than there is to be read.
  constexpr std::size_t kLongest = 500;
  int status = 0;
  char* const readable =
      std::strlen(name) > kLongest ? nullptr : abi::__cxa_demangle(name, nullptr, nullptr, &status);
  g_text.AddForeign(readable != nullptr ? readable : name, 160);
  std::free(readable);
  g_text.Add(" ");
}

void AddPlace(const void* place) {
  Module module;
  if (!FindModule(place, module)) return g_text.Add("    at %p\n", place);
  g_text.Add("    at ");
  const char* const name = module.NameAt(place);
  if (name != nullptr) AddName(name);
  g_text.Add("(");
  g_text.AddForeign(module.file, 160);
  g_text.Add("+0x%zx)\n",
             static_cast<std::size_t>(reinterpret_cast<std::uintptr_t>(place) - module.offset));
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
    if (!text.HasRoom()) text.Write(Turn::Mask());
    text.Add("%7lu %s: %s\n", CountOfName(id, kind), kOperations[id].name, kKindNames[kind]);
  }
}

void TellNoRoom() {
  if (g_isFull.exchange(true)) return;
  const Turn turn;
  g_text.Add("VemCheck: misuse from more than %d places, and further ones are not told\n", kPlaces);
  g_text.Write(Turn::Mask());
}

void SumUp() {
  unsigned long all = 0;
  for (int id = 0; id < kOperationCount; ++id) {
    for (int kind = 0; kind < kKinds; ++kind) all += CountOf(id, kind);
  }
  const Turn turn;
  g_text.Add("VemCheck: %lu in all\n", all);
  for (int kind = 0; kind < kKinds; ++kind) AddCounts(g_text, kind);
  g_text.Write(Turn::Mask());
}

// A child counts and tells for itself alone. The thread that told when it was forked is not in it.
void BeginChild() {
  Turn::ForgetAll();
  ForgetAll();
  g_isFull.store(false);
  g_isEnding = false;
  g_text.Clear();
}

__attribute__((constructor)) void Begin() {
  KeepErrors();
  TheMode();
  pthread_atfork(nullptr, nullptr, &BeginChild);
  FindAtStart();
  if (IsInUse()) BeginUse();
}

__attribute__((destructor)) void End() {
  if (TheMode() == kSum && IsInUse()) SumUp();
}

}  // namespace

struct Call::Telling {
  const Call& call;
  Kind kind;
  const char* format;
  va_list& arguments;
  unsigned long times;
};

void Call::PrintOnce(const Telling& telling) const {
  g_text.Add("%s: ", operation_.name);
  va_list arguments;
  va_copy(arguments, telling.arguments);
  g_text.AddList(telling.format, arguments);
  va_end(arguments);
  g_text.Add("\n");
  if (telling.times > 1) {
    g_text.Add("    for the %luth time from here\n", telling.times);
  } else {
    if (telling.kind != Kind::kIndex) Describe(g_text);
    for (int i = 0; i < g_stack.count && g_text.HasRoom(); ++i) AddPlace(g_stack.places[i]);
  }
  g_text.Write(Turn::Mask());
}

void Call::Print(Kind kind, const char* format, va_list& arguments, bool isLast) const {
  Place* const place = PlaceAt(PlaceOf(caller_), operation_.id, static_cast<int>(kind));
  if (place == nullptr) return TellNoRoom();
  const unsigned long times = place->times.fetch_add(1, std::memory_order_relaxed) + 1;
  if (!IsPowerOfTen(times) && !isLast) return;
  BeginUse();
  const Turn turn;
  if (g_isEnding) return;
  // A thread that comes here for the 10th time may be before the one that came for the first time.
  while (place->told < times && (!isLast || place->told == 0)) {
    if (place->told == 0) g_stack.Read();
    place->told = place->told == 0 ? 1 : 10 * place->told;
    const Telling telling = {*this, kind, format, arguments, place->told};
    turn.RunWithRoom(&PrintWithRoom, &telling);
  }
  g_isEnding = isLast;
}

void Call::PrintWithRoom(const void* telling) {
  const Telling& what = *static_cast<const Telling*>(telling);
  what.call.PrintOnce(what);
}

void Call::Tell(Kind kind, const char* format, ...) const {
  if (t_telling) return;
  t_telling = true;
  bool isLast = false;
  if (IsInside(caller_)) {
    // Told of the outer one, where it is a misuse.
  } else if (TheMode() == kSum) {
    Count(operation_.id, static_cast<int>(kind));
  } else {
    isLast = TheMode() == kAbort;
    va_list arguments;
    va_start(arguments, format);
    Print(kind, format, arguments, isLast);
    va_end(arguments);
  }
  t_telling = false;
  if (isLast) std::abort();
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

void BeginUse() {
  static std::atomic<bool> isBegun{false};
  if (isBegun.exchange(true) || TheMode() != kPrint || IsAsked("print")) return;
  const char* const asked = std::getenv("VEM_CHECK");
  if (asked == nullptr || *asked == '\0') return;
  const Turn turn;
  g_text.Add("VemCheck: VEM_CHECK is \"");
  g_text.AddForeign(asked, 80);
  g_text.Add("\", which is none of print, abort and count: every misuse is told\n");
  g_text.Write(Turn::Mask());
}

void TellNoLibrary(const Operation& operation) {
  const Turn turn;
  g_text.Add("VemCheck: no library has %s (%s)\n", operation.name, operation.symbol);
  g_text.Write(Turn::Mask());
}

}  // namespace watcher
