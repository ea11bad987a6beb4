#ifndef VEM_VEM_JSON_REGIONS_H_
#define VEM_VEM_JSON_REGIONS_H_

#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <opencv2/core.hpp>

#include "IVemRegionAPara.h"
#include "VemRegion.h"
#include "VemRegionArray.h"
#include "VemRegionData.h"
#include "vem/json_forms.h"
#include "vem/json_node.h"
#include "vem/json_numbers.h"
#include "vem/json_shapes.h"
#include "vem/parts.h"

/// How regions stand in JSON.

namespace vem {
namespace json_detail {

using hierarchy = std::vector<cv::Vec<int, 4>>;
using outlines = std::vector<std::vector<cv::Point_<int>>>;

// A list of integers: a point, an entry of a hierarchy, or the runs of a region in an array.
inline json write_integers(const int* numbers, std::size_t count) {
  json list = json::array();
  for (std::size_t i = 0; i < count; ++i) list.push_back(numbers[i]);
  return list;
}

inline void read_integers(const node& place, int* numbers, std::size_t count) {
  if (place.size() != count) place.fail("expected " + std::to_string(count) + " integers");
  for (std::size_t i = 0; i < count; ++i) numbers[i] = read_integer<int>(place[i]);
}

inline std::vector<int> read_integers(const node& place) {
  std::vector<int> numbers(place.size());
  for (std::size_t i = 0; i < numbers.size(); ++i) numbers[i] = read_integer<int>(place[i]);
  return numbers;
}

inline json write_outlines(const hierarchy& tree, const outlines& contours) {
  json object = json::object();
  json& tree_list = object["hierarchy"] = json::array();
  for (const cv::Vec<int, 4>& entry : tree) tree_list.push_back(write_integers(entry.val, 4));
  json& contour_list = object["contours"] = json::array();
  for (const std::vector<cv::Point_<int>>& contour : contours) {
    json points = json::array();
    for (const cv::Point_<int>& point : contour) {
      const int numbers[] = {point.x, point.y};
      points.push_back(write_integers(numbers, 2));
    }
    contour_list.push_back(std::move(points));
  }
  return object;
}

inline std::vector<cv::Point_<int>> read_outline(const node& place) {
  std::vector<cv::Point_<int>> points(place.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    int numbers[2] = {};
    read_integers(place[i], numbers, 2);
    points[i] = cv::Point_<int>(numbers[0], numbers[1]);
  }
  return points;
}

inline void read_outlines(const node& place, hierarchy& tree, outlines& contours) {
  object_reader object(place);
  const node tree_list = object["hierarchy"];
  tree.resize(tree_list.size());
  for (std::size_t i = 0; i < tree.size(); ++i) read_integers(tree_list[i], tree[i].val, 4);
  const node contour_list = object["contours"];
  contours.resize(contour_list.size());
  for (std::size_t i = 0; i < contours.size(); ++i) contours[i] = read_outline(contour_list[i]);
  object.finish();
}

/// A region is its canvas and its runs, three lists side by side, and where it has them its
/// outlines.
template <>
struct form<VemRegion> {
  static const char* name() { return "VemRegion"; }
  static const char* key() { return nullptr; }

  static json write(const VemRegion& region) {
    const VemRegionData& from = parts(region);
    json object = json::object();
    write_runs(from, object);
    if (!from.Contours.empty() || !from.Hierarchy.empty()) {
      object["outlines"] = write_outlines(from.Hierarchy, from.Contours);
    }
    return object;
  }
  static void read(const node& place, VemRegion& region) {
    object_reader object(place);
    VemRegionData to;
    read_runs(object, to);
    if (object.has("outlines")) read_outlines(object["outlines"], to.Hierarchy, to.Contours);
    object.finish();
    parts(region) = to;
  }
};

/// The regions of an array hold plain integers, all of them or, where only contours tell what they
/// cover, none. Beside them stand the outlines, a track of its own that nothing keeps in step.
template <>
struct form<VemRegionArray> {
  static const char* name() { return "VemRegionArray"; }
  static const char* key() { return nullptr; }

  static json write(const VemRegionArray& array) {
    const IVemRegionArrayPara& from = parts(array);
    require_in_step(from);
    json object = json::object();
    json& list = object["regions"] = json::array();
    for (std::size_t i = 0; i < from.Widths.size(); ++i) list.push_back(write_region(from, i));
    if (from.Contours.empty()) return object;
    json& track = object["outlines"] = json::array();
    for (std::size_t i = 0; i < from.Contours.size(); ++i) {
      track.push_back(write_outlines(from.Hierarchies[i], from.Contours[i]));
    }
    return object;
  }

  static void read(const node& place, VemRegionArray& array) {
    object_reader object(place);
    IVemRegionArrayPara to;
    const node list = object["regions"];
    const bool has_runs = list.size() > 0 && object_reader(list[0]).has("rows");
    for (std::size_t i = 0; i < list.size(); ++i) read_region(list[i], has_runs, to);
    if (object.has("outlines")) read_track(object["outlines"], to);
    object.finish();
    parts(array) = to;
  }

 private:
  // An array without lists of runs has those of its contours, painted.
  static void require_in_step(const IVemRegionArrayPara& from) {
    const std::size_t runs = from.Rows.size();
    if (from.Heights.size() != from.Widths.size() || (runs != from.Widths.size() && runs != 0) ||
        from.FirstColumns.size() != runs || from.LastColumns.size() != runs ||
        from.Hierarchies.size() != from.Contours.size()) {
      throw std::invalid_argument("vem::to_json: lists that no VemRegionArray has");
    }
  }

  static json write_list(const std::vector<int>& list) {
    return write_integers(list.data(), list.size());
  }
  static json write_region(const IVemRegionArrayPara& from, std::size_t i) {
    json object = json::object();
    object["width"] = from.Widths[i];
    object["height"] = from.Heights[i];
    if (from.Rows.empty()) return object;
    object["rows"] = write_list(from.Rows[i]);
    object["first_columns"] = write_list(from.FirstColumns[i]);
    object["last_columns"] = write_list(from.LastColumns[i]);
    return object;
  }

  static void read_region(const node& place, bool has_runs, IVemRegionArrayPara& to) {
    object_reader object(place);
    to.Widths.push_back(read_integer<int>(object["width"]));
    to.Heights.push_back(read_integer<int>(object["height"]));
    if (has_runs) {
      to.Rows.push_back(read_integers(object["rows"]));
      to.FirstColumns.push_back(read_integers(object["first_columns"]));
      to.LastColumns.push_back(read_integers(object["last_columns"]));
    }
    object.finish();
  }
  static void read_track(const node& place, IVemRegionArrayPara& to) {
    to.Hierarchies.resize(place.size());
    to.Contours.resize(place.size());
    for (std::size_t i = 0; i < place.size(); ++i) {
      read_outlines(place[i], to.Hierarchies[i], to.Contours[i]);
    }
  }
};

}  // namespace json_detail
}  // namespace vem

#endif  // VEM_VEM_JSON_REGIONS_H_
