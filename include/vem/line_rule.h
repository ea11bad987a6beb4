#ifndef VEM_VEM_LINE_RULE_H_
#define VEM_VEM_LINE_RULE_H_

#include <algorithm>
#include <climits>

#include "IVemROIPara.h"
#include "VemROI.h"
#include "VemROIType.h"
#include "VemTuple.h"
#include "vem/parts.h"

/// Which lines have no runs to be told.

/// @cond
namespace vem {
namespace detail {

// Why VemROI::GetMask would be a fault of the processor, or null where it is none: it divides by
// the line's width in whole numbers, which wrap, unless the line lies left of or above the origin.
inline const char* line_fault(const VemROI& roi) {
  const IVemROIPara& from = parts(roi);
  if (from.Type != VemROILine || from.Params.Length() == 0) return nullptr;
  const int y1 = from.Params[0].I(), x1 = from.Params[1].I();
  const int y2 = from.Params[2].I(), x2 = from.Params[3].I();
  if (std::max(x1, x2) < 0 || std::max(y1, y2) < 0) return nullptr;
  const unsigned width = static_cast<unsigned>(x2) - static_cast<unsigned>(x1);
  const unsigned height = static_cast<unsigned>(y2) - static_cast<unsigned>(y1);
  if (width == 0) return "the line is vertical";
  const bool overflows = width == UINT_MAX && height == static_cast<unsigned>(INT_MIN);
  return overflows ? "the line's slope is beyond the integers" : nullptr;
}

}  // namespace detail
}  // namespace vem
/// @endcond

#endif  // VEM_VEM_LINE_RULE_H_
