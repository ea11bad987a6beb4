#ifndef VEM_VEM_PRINT_LINES_H_
#define VEM_VEM_PRINT_LINES_H_

#include <cstddef>
#include <initializer_list>
#include <ios>
#include <locale>
#include <ostream>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

#include <opencv2/core.hpp>

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
#include "vem/depth.h"
#include "vem/print_facts.h"
#include "vem/range.h"
#include "vem/runs.h"
#include "vem/shapes.h"
#include "vem/value.h"

/// Every class in one line, as vem/print.h prints it.

/// @cond
namespace vem {
namespace detail {

inline bool is_plain(const std::ostream& out) {
  return out.precision() == 6 && (out.flags() & std::ios_base::floatfield) == 0;
}
// A float has the digits that a float needs.
template <class Number>
void print_number(std::ostream& out, Number number) {
  if (is_plain(out)) {
    out << digits(number);
  } else {
    out << number;
  }
}

template <class Number>
void print_tuple(std::ostream& out, std::initializer_list<Number> numbers) {
  const char* separator = "(";
  for (Number number : numbers) {
    out << separator;
    print_number(out, number);
    separator = ", ";
  }
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
        out << quoted(value.S());
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
    print_tuple(out, {point.x, point.y});
  }
};
template <>
struct printer<Vem3DPoint> {
  static void print(std::ostream& out, const Vem3DPoint& point) {
    print_tuple(out, {point.x, point.y, point.z});
  }
};
template <>
struct printer<VemFeaturePoint> {
  static void print(std::ostream& out, const VemFeaturePoint& point) {
    print_tuple(out, {point.x, point.y});
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

inline const char* shown_depth(int depth) {
  return depth_name(depth) != nullptr ? depth_name(depth) : "?";
}
inline void print_raster(std::ostream& out, int width, int height, int depth, int channels) {
  out << width << 'x' << height << ' ' << shown_depth(depth) << ' ' << channels;
}

template <>
struct printer<VemImage> {
  static void print(std::ostream& out, const VemImage& image) {
    print_raster(out, image.Width(), image.Height(), image.BitDepth(), image.Channels());
  }
};
// Select changes nothing, though it is not const; nor does QueryInfo below.
template <>
struct printer<VemMatrix> {
  static void print(std::ostream& out, const VemMatrix& matrix) {
    out << matrix.Rows() << 'x' << matrix.Cols() << ' ' << shown_depth(matrix.Type());
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

inline void print_runs(std::ostream& out, const runs_in_place& runs) {
  const int limit = 8;
  const int count = run_count(*runs.rows, *runs.first_columns, *runs.last_columns);
  out << ' ' << runs.width << 'x' << runs.height;
  for (int i = 0; i < count && i < limit; ++i) {
    out << (i == 0 ? ": " : ", ");
    print_element(out, (*runs.rows)[i]);
    out << ':';
    print_element(out, (*runs.first_columns)[i]);
    out << '-';
    print_element(out, (*runs.last_columns)[i]);
  }
  if (count > limit) out << " and " << count - limit << " more runs";
}

inline void print_chain(std::ostream& out, const VemVarArray& numbers) {
  std::vector<VemPoint> points;
  for (int i = 0; i + 1 < numbers.Length(); i += 2) {
    points.push_back(stored_point(member::chain, numbers, i));
  }
  out << ' ';
  print_list(out, points);
}

// The members of a shape, each behind its name; numbers that no generator stores as a list.
inline void print_shape(std::ostream& out, const shape& form, const VemVarArray& numbers) {
  if (!fits(form, numbers)) {
    out << ' ';
    return print_list(out, numbers);
  }
  int next = 0;
  for (const shape::part& part : form.parts) {
    if (part.kind == member::none) break;
    if (part.kind == member::chain) return print_chain(out, numbers);
    out << (next == 0 ? " " : ", ") << (part.key == std::string("point") ? "at" : part.key) << ' ';
    if (is_point(part.kind)) {
      print_to(out, stored_point(part.kind, numbers, next));
    } else {
      print_element(out, numbers[next]);
    }
    next += stored_count(part.kind);
  }
}

inline void print_text(std::ostream& out, const VemVarArray& numbers) {
  out << ' ';
  print_element(out, numbers[2]);
  out << ", ";
  print_element(out, numbers[8]);
  out << ", at ";
  print_to(out, stored_point(member::point, numbers, 0));
  const char* const names[] = {", size ", ", weight ", ", flag1 ", ", flag2 ", ", flag3 "};
  for (int i = 0; i < 5; ++i) {
    out << names[i];
    print_element(out, numbers[3 + i]);
  }
}

inline void print_facts(std::ostream& out, const facts& found) {
  out << found.kind;
  if (found.form != nullptr) {
    print_shape(out, *found.form, *found.numbers);
  } else if (found.image != nullptr) {
    const cv::Mat& image = *found.image;
    out << " at ";
    print_to(out, stored_point(member::point_x_first, *found.numbers, 0));
    out << ", ";
    print_raster(out, image.cols, image.rows, CV_MAT_DEPTH(image.flags), CV_MAT_CN(image.flags));
  } else if (found.runs.rows != nullptr) {
    print_runs(out, found.runs);
  } else if (found.numbers != nullptr) {
    print_text(out, *found.numbers);
  }
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
struct printer<VemScratchPrecessing> {
  static void print(std::ostream& out, const VemScratchPrecessing& settings) {
    out << '(' << settings.Param0 << ", ";
    print_number(out, settings.Param1);
    out << ", " << settings.Param2 << ", " << settings.Param3 << ", " << settings.Param4 << ", "
        << settings.Param5 << ')';
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
