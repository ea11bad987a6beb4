#ifndef VEM_VEM_PRINT_LINES_H_
#define VEM_VEM_PRINT_LINES_H_

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <ios>
#include <locale>
#include <ostream>
#include <sstream>
#include <string>
#include <type_traits>

#include "Vem1DCode.h"
#include "Vem1DCodeArray.h"
#include "Vem2DVarArray.h"
#include "Vem3DPoint.h"
#include "Vem3DPointArray.h"
#include "VemCircle.h"
#include "VemContour.h"
#include "VemContourArray.h"
#include "VemDMCode.h"
#include "VemDMCodeArray.h"
#include "VemFeatureDescriptor.h"
#include "VemFeaturePoint.h"
#include "VemFeaturePointArray.h"
#include "VemFont.h"
#include "VemImage.h"
#include "VemImageArray.h"
#include "VemLine.h"
#include "VemMatrix.h"
#include "VemMatrixArray.h"
#include "VemMorphStructure.h"
#include "VemOverlay.h"
#include "VemOverlayPath.h"
#include "VemPDF417Code.h"
#include "VemPDF417CodeArray.h"
#include "VemPoint.h"
#include "VemPointArray.h"
#include "VemQRCode.h"
#include "VemQRCodeArray.h"
#include "VemROI.h"
#include "VemROIArray.h"
#include "VemRegion.h"
#include "VemRegionArray.h"
#include "VemScratchGroup.h"
#include "VemTuple.h"
#include "VemVCode.h"
#include "VemVCodeArray.h"
#include "VemVar.h"
#include "vem/print_facts.h"
#include "vem/range.h"
#include "vem/value.h"

/// Every class in one line, as vem/print.h prints it.

/// @cond
namespace vem {
namespace detail {

inline std::string float_digits(float number) {
  char text[32];
  for (int precision = 6; precision <= 9; ++precision) {
    std::snprintf(text, sizeof text, "%.*g", precision, static_cast<double>(number));
    const float back = std::strtof(text, nullptr);
    if (back >= number && back <= number) break;
  }
  return text;
}

inline bool is_plain(const std::ostream& out) {
  return out.precision() == 6 && (out.flags() & std::ios_base::floatfield) == 0;
}
inline void print_number(std::ostream& out, double number) {
  if (is_plain(out)) {
    out << digits(number);
  } else {
    out << number;
  }
}
// A reader's coordinate that is a float is printed with the digits that a float needs.
inline void print_coordinate(std::ostream& out, double number) {
  const double rounded = static_cast<double>(static_cast<float>(number));
  if (is_plain(out) && same(rounded, number)) {
    out << float_digits(static_cast<float>(number));
  } else {
    print_number(out, number);
  }
}
inline void print_pair(std::ostream& out, double first, double second) {
  out << '(';
  print_coordinate(out, first);
  out << ", ";
  print_coordinate(out, second);
  out << ')';
}

template <class T, class = void>
struct printer;

template <class T>
void print_to(std::ostream& out, const T& value) {
  printer<T>::print(out, value);
}

template <>
struct printer<VemVar> {
  static void print(std::ostream& out, const VemVar& value) {
    if (value.ValType() == VemVarString) {
      out << value.S();
    } else {
      print_element(out, value);
    }
  }
  // Within a list a text stands in quotes.
  static void print_element(std::ostream& out, const VemVar& value) {
    switch (value.ValType()) {
      case VemVarLong:
        out << value.L();
        break;
      case VemVarDouble:
        print_number(out, value.D());
        break;
      case VemVarString:
        out << '"' << value.S() << '"';
        break;
      default:
        out << "none";
        break;
    }
  }
};

inline void print_element(std::ostream& out, const VemVar& value) {
  printer<VemVar>::print_element(out, value);
}
template <class T>
if_true<!std::is_same<T, VemVar>::value> print_element(std::ostream& out, const T& value) {
  print_to(out, value);
}

template <class Elements>
void print_list(std::ostream& out, const Elements& elements) {
  const char* separator = "";
  out << '[';
  for (const auto& element : elements) {
    out << separator;
    print_element(out, element);
    separator = ", ";
  }
  out << ']';
}

template <class A>
struct printer<A, if_true<is_array_class<A>::value>> {
  static void print(std::ostream& out, const A& array) { print_list(out, array); }
};

template <>
struct printer<VemPoint> {
  static void print(std::ostream& out, const VemPoint& point) {
    out << '(';
    print_number(out, point.x);
    out << ", ";
    print_number(out, point.y);
    out << ')';
  }
};
template <>
struct printer<Vem3DPoint> {
  static void print(std::ostream& out, const Vem3DPoint& point) {
    out << '(';
    print_number(out, point.x);
    out << ", ";
    print_number(out, point.y);
    out << ", ";
    print_number(out, point.z);
    out << ')';
  }
};
template <>
struct printer<VemFeaturePoint> {
  static void print(std::ostream& out, const VemFeaturePoint& point) {
    print_pair(out, static_cast<double>(point.x), static_cast<double>(point.y));
  }
};
template <>
struct printer<VemLine> {
  static void print(std::ostream& out, const VemLine& line) {
    print_to(out, line.start);
    out << " to ";
    print_to(out, line.end);
  }
};
template <>
struct printer<VemCircle> {
  static void print(std::ostream& out, const VemCircle& circle) {
    print_to(out, circle.center);
    out << ", radius ";
    print_number(out, circle.radius);
  }
};
template <>
struct printer<VemContour> {
  static void print(std::ostream& out, const VemContour& contour) {
    print_list(out, to_vector(contour));
  }
};
template <>
struct printer<VemFont> {
  static void print(std::ostream& out, const VemFont& font) {
    print_element(out, font.Name);
    out << ", size " << font.Size << ", weight " << font.Weight << ", flags " << int{font.Flag0}
        << ' ' << int{font.Flag1} << ' ' << int{font.Flag2} << ' ' << int{font.Flag3};
  }
};

inline const char* depth_name(int depth) {
  static const char* const names[] = {"8U", "8S", "16U", "16S", "32S", "32F", "64F"};
  return depth >= 0 && depth < 7 ? names[depth] : "?";
}

template <>
struct printer<VemImage> {
  static void print(std::ostream& out, const VemImage& image) {
    out << image.Width() << 'x' << image.Height() << ' ' << depth_name(image.BitDepth()) << ' '
        << image.Channels();
  }
};
// Select changes nothing, though it is not const; nor does QueryInfo below.
template <>
struct printer<VemMatrix> {
  static void print(std::ostream& out, const VemMatrix& matrix) {
    out << matrix.Rows() << 'x' << matrix.Cols() << ' ' << depth_name(matrix.Type());
    if (long{matrix.Rows()} * matrix.Cols() > 100) return;
    out << " [";
    for (int row = 0; row < matrix.Rows(); ++row) {
      for (int column = 0; column < matrix.Cols(); ++column) {
        VemVar element;
        const_cast<VemMatrix&>(matrix).Select(row, column, &element);
        out << (column > 0 ? ", " : row > 0 ? "; " : "");
        print_element(out, element);
      }
    }
    out << ']';
  }
};
template <>
struct printer<VemFeatureDescriptor> {
  static void print(std::ostream& out, const VemFeatureDescriptor& numbers) {
    out << numbers.Row() << 'x' << numbers.Col();
  }
};
template <>
struct printer<VemMorphStructure> {
  static void print(std::ostream& out, const VemMorphStructure& structure) {
    int rows = 0, cols = 0, x = 0, y = 0;
    int* table = nullptr;
    VemMorphStructureType type = VemMorphStructureUnset;
    const_cast<VemMorphStructure&>(structure).QueryInfo(&rows, &cols, &x, &y, &type, &table);
    out << rows << 'x' << cols << ", anchor (" << x << ", " << y << "), kind " << int{type};
  }
};

inline void print_runs(std::ostream& out, const runs_draft& runs) {
  const int limit = 8;
  const int count = runs.rows.Length();
  out << ' ' << runs.width << 'x' << runs.height;
  for (int i = 0; i < count && i < limit; ++i) {
    out << (i == 0 ? ": " : ", ");
    print_element(out, runs.rows[i]);
    out << ':';
    print_element(out, i < runs.first_columns.Length() ? runs.first_columns[i] : VemVar());
    out << '-';
    print_element(out, i < runs.last_columns.Length() ? runs.last_columns[i] : VemVar());
  }
  if (count > limit) out << " and " << count - limit << " more runs";
}

inline void print_facts(std::ostream& out, const facts& found) {
  const char* separator = " ";
  out << found.kind;
  for (const VemVar& value : found.values) {
    out << separator;
    print_element(out, value);
    separator = ", ";
  }
  for (const fact& one : found.numbers) {
    out << separator << one.name << ' ';
    if (one.is_point) {
      print_pair(out, one.first, one.second);
    } else {
      print_number(out, one.first);
    }
    separator = ", ";
  }
  if (found.is_chain) {
    out << " [";
    const char* comma = "";
    for (const VemPoint& point : found.points) {
      out << comma;
      print_pair(out, point.x, point.y);
      comma = ", ";
    }
    out << ']';
  }
  if (found.image.Width() > 0) {
    out << ", ";
    print_to(out, found.image);
  }
  if (found.has_runs) print_runs(out, found.runs);
}

template <>
struct printer<VemRegion> {
  static void print(std::ostream& out, const VemRegion& region) {
    print_facts(out, facts_of(region));
  }
};
template <>
struct printer<VemROI> {
  static void print(std::ostream& out, const VemROI& roi) { print_facts(out, facts_of(roi)); }
};
template <>
struct printer<VemOverlay> {
  static void print(std::ostream& out, const VemOverlay& overlay) {
    const facts found = facts_of(overlay);
    print_facts(out, found);
    const char* const names[] = {", pen",   nullptr, nullptr, nullptr,
                                 ", brush", nullptr, nullptr, nullptr};
    for (std::size_t i = 0; i < found.style.size(); ++i) {
      if (names[i] != nullptr) out << names[i];
      out << ' ' << found.style[i];
    }
  }
};

template <class Code>
void print_code(std::ostream& out, const VemVar& value, const Code& points) {
  print_element(out, value);
  out << " at ";
  print_list(out, points);
}
template <>
struct printer<Vem1DCode> {
  static void print(std::ostream& out, const Vem1DCode& code) {
    print_code(out, code.Value, code.Points);
  }
};
template <>
struct printer<VemDMCode> {
  static void print(std::ostream& out, const VemDMCode& code) {
    print_code(out, code.Value, code.Points0);
  }
};
template <>
struct printer<VemQRCode> {
  static void print(std::ostream& out, const VemQRCode& code) {
    print_code(out, code.Value, code.Points0);
  }
};
template <>
struct printer<VemPDF417Code> {
  static void print(std::ostream& out, const VemPDF417Code& code) {
    print_code(out, code.Value, code.Points);
  }
};
template <>
struct printer<VemVCode> {
  static void print(std::ostream& out, const VemVCode& code) {
    print_code(out, code.Value0, code.Points);
  }
};

template <>
struct printer<VemScratchFeature> {
  static void print(std::ostream& out, const VemScratchFeature& feature) {
    out << "key " << feature.SortKey;
  }
};
template <>
struct printer<VemScratchGroup> {
  static void print(std::ostream& out, const VemScratchGroup& group) {
    print_element(out, group.Label);
    out << ' ';
    print_list(out, group);
  }
};

template <class T>
std::string text_of(const T& value) {
  std::ostringstream out;
  out.imbue(std::locale::classic());
  print_to(out, value);
  return out.str();
}

}  // namespace detail
}  // namespace vem
/// @endcond

#endif  // VEM_VEM_PRINT_LINES_H_
