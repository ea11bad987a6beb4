#ifndef FUZZ_REQUIRE_H_
#define FUZZ_REQUIRE_H_

#include <cstdlib>
#include <iostream>

/// Ends the process with a line that tells what does not hold, and so leaves the input behind.
template <typename... Parts>
[[noreturn]] void Fail(const Parts&... parts) {
  std::cerr << "does not hold: ";
  (std::cerr << ... << parts) << std::endl;
  std::abort();
}

template <typename... Parts>
void Require(bool holds, const Parts&... parts) {
  if (!holds) Fail(parts...);
}

#endif  // FUZZ_REQUIRE_H_
