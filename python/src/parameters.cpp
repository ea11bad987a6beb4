#include "python/src/parameters.h"

#include "VemPointArray.h"
#include "python/src/convert.h"

py::dict ParametersOf(const vem::detail::shape* form, const VemVarArray& numbers) {
  using vem::detail::member;
  py::dict result;
  if (form == nullptr || !vem::detail::fits(*form, numbers)) return result;
  int next = 0;
  for (const vem::detail::shape::part& part : form->parts) {
    if (part.kind == member::none) break;
    if (part.kind == member::chain) {
      VemPointArray points;
      for (int i = 0; i + 1 < numbers.Length(); i += 2) {
        VemPoint point = vem::detail::stored_point(part.kind, numbers, i);
        points.Append(point);
      }
      result[part.key] = ArrayOf(points);
      break;
    }
    if (vem::detail::is_point(part.kind)) {
      result[part.key] = py::cast(vem::detail::stored_point(part.kind, numbers, next));
    } else {
      result[part.key] = ValueTo(numbers[next]);
    }
    next += vem::detail::stored_count(part.kind);
  }
  return result;
}
