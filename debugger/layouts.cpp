// The table of layouts that the debugger reads, against the headers. A change here goes into the
// table.

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include <opencv2/core.hpp>

#include "VemData.h"

// The places of fields in classes with constructors are what compilers give them.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

namespace {

using List = std::vector<int>;
using Mat = cv::Mat;

using byte = std::uint8_t;
using int32 = std::int32_t;
using uint32 = std::uint32_t;
using int64 = std::int64_t;
using word64 = std::uint64_t;
using float32 = float;
using float64 = double;
using pointer = void*;

#define HOLDS(type, size) static_assert(sizeof(type) == (size), #type);
#define STANDS(type, field, place, kind)                                                       \
  static_assert(                                                                               \
      offsetof(type, field) == (place) && sizeof(std::declval<type&>().field) == sizeof(kind), \
      #type "::" #field);

#include "vem_gdb/layouts.def"

static_assert(sizeof(std::vector<VemVar>) == sizeof(List) &&
                  sizeof(std::vector<std::vector<int>>) == sizeof(List),
              "one layout for every list");

}  // namespace
