#ifndef WATCHER_ARGUMENTS_H_
#define WATCHER_ARGUMENTS_H_

#include <tuple>
#include <type_traits>

#include "VemData.h"
#include "watcher/Behind.h"
#include "watcher/Passed.h"
#include "watcher/Report.h"

/// What every watched operation is asked before its own check: that its object and its arguments
/// are there. And how arguments are told.
namespace watcher {

/// Whether an argument is asked about: one without effect has no name.
inline bool IsNamed(const Call& call, int argument) {
  int length = 0;
  return *call.NameOf(argument, length) != '_';
}

template <typename T>
bool IsThere(const Call& call, int argument, T& value) {
  if (IsAddress(&reinterpret_cast<const volatile char&>(value))) return true;
  int length = 0;
  const char* const name = call.NameOf(argument, length);
  call.Tell(Kind::kObject, "%.*s is an invalid reference", length, name);
  return false;
}

template <typename T>
bool IsThere(const Call& call, int argument, T*& pointer) {
  if (IsAddress(pointer) || !IsNamed(call, argument)) return true;
  int length = 0;
  const char* const name = call.NameOf(argument, length);
  const bool optional = name[length] == '?';
  if (pointer == nullptr && optional) return true;
  call.Tell(Kind::kObject, "%.*s is %s", length, name,
            pointer == nullptr ? "null" : "an invalid pointer");
  return false;
}

// How an argument is told. Returns whether it was.

inline bool AddValue(Text& text, const char* lead, int length, const char* name, double value) {
  text.Add("%s%.*s %.15g", lead, length, name, value);
  return true;
}
inline bool AddValue(Text& text, const char* lead, int length, const char* name, long value) {
  text.Add("%s%.*s %ld", lead, length, name, value);
  return true;
}
inline bool AddValue(Text& text, const char* lead, int length, const char* name,
                     const VemPoint& point) {
  text.Add("%s%.*s (%.15g, %.15g)", lead, length, name, point.x, point.y);
  return true;
}
inline bool AddValue(Text& text, const char* lead, int length, const char* name,
                     const VemVar& value) {
  switch (value.ValType()) {
    case VemVarLong:
      return AddValue(text, lead, length, name, PayloadOf<long>(value));
    case VemVarDouble:
      return AddValue(text, lead, length, name, PayloadOf<double>(value));
    case VemVarString:  // It may have no terminator.
      text.Add("%s%.*s a text", lead, length, name);
      return true;
    default:
      text.Add("%s%.*s nothing", lead, length, name);
      return true;
  }
}
inline bool AddValue(Text& text, const char* lead, int length, const char* name,
                     const char* string) {
  text.Add("%s%.*s \"", lead, length, name);
  text.AddForeign(string, 80);
  text.Add("\"");
  return true;
}
template <typename T>
bool AddValue(Text& text, const char* lead, int length, const char* name, const T& value) {
  if constexpr (std::is_floating_point<T>::value) {
    return AddValue(text, lead, length, name, static_cast<double>(value));
  } else if constexpr (std::is_integral<T>::value || std::is_enum<T>::value) {
    return AddValue(text, lead, length, name, static_cast<long>(value));
  } else {
    return false;
  }
}

/// A call with its arguments.
template <typename... Args>
class CallWith final : public Call {
 public:
  CallWith(const Operation& operation, const void* caller, Args&... args)
      : Call(operation, caller), args_(args...) {}

 private:
  void Describe(Text& text) const override {
    std::apply(
        [&](const auto&... args) {
          int argument = 0;
          const char* lead = "    with ";
          ((lead = Add(text, lead, argument++, args) ? ", " : lead), ...);
          if (*lead == ',') text.Add("\n");
        },
        args_);
  }

  template <typename T>
  bool Add(Text& text, const char* lead, int argument, const T& value) const {
    if (!IsAddress(&reinterpret_cast<const volatile char&>(value))) return false;
    if constexpr (std::is_pointer<T>::value) {
      if (!IsAddress(value)) return false;
    }
    int length = 0;
    const char* const name = NameOf(argument, length);
    return *name != '_' && AddValue(text, lead, length, name, value);
  }

  std::tuple<Args&...> args_;
};

/// Checks a call: first that what it is given is there, then as the operation has it.
template <typename Check, typename Object, typename... Args>
void Watch(const Operation& operation, const void* caller, Check check, Object& object,
           Args&... args) {
  const CallWith<Args...> call(operation, caller, args...);
  if (!IsAddress(&reinterpret_cast<const volatile char&>(object))) {
    return call.Tell(Kind::kObject, "called on an invalid reference");
  }
  [[maybe_unused]] int argument = 0;
  if (!(IsThere(call, argument++, args) && ...)) return;
  if constexpr (std::is_same<typename std::remove_cv<Object>::type, NoObject>::value) {
    check(call, args...);
  } else {
    check(call, object, args...);
  }
}

}  // namespace watcher

#endif  // WATCHER_ARGUMENTS_H_
