#ifndef VEM_VEM_JSON_RASTERS_H_
#define VEM_VEM_JSON_RASTERS_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <type_traits>
#include <vector>

#include <opencv2/core.hpp>

#include "VemFeatureDescriptor.h"
#include "VemImage.h"
#include "VemImageArray.h"
#include "VemMatrix.h"
#include "VemMatrixArray.h"
#include "VemMorphStructure.h"
#include "vem/depth.h"
#include "vem/json_forms.h"
#include "vem/json_node.h"
#include "vem/json_numbers.h"
#include "vem/json_texts.h"
#include "vem/parts.h"

/// How images, matrices, descriptors and morphology structures stand in JSON.

namespace vem {
namespace json_detail {

/// A raster is its size, channels and depth, and its pixels by row, then by column, then by
/// channel, without padding, each channel's bytes from the lowest to the highest.
inline json write_raster(const cv::Mat& raster) {
  const char* const depth = detail::depth_name(raster.depth());
  if (raster.dims > 2 || depth == nullptr) {
    throw std::invalid_argument("vem::to_json: a raster of two dimensions is written alone");
  }
  json object = json::object();
  object["width"] = raster.cols;
  object["height"] = raster.rows;
  object["channels"] = raster.channels();
  object["depth"] = depth;
  const cv::Mat packed = raster.isContinuous() ? raster : raster.clone();
  object["pixels"] = encode(packed.data, packed.total() * packed.elemSize());
  return object;
}

inline int read_depth(const node& place) {
  for (int depth = 0; depth < detail::depth_count; ++depth) {
    if (is_named(place.value(), detail::depth_name(depth))) return depth;
  }
  place.fail("expected \"8U\", \"8S\", \"16U\", \"16S\", \"32S\", \"32F\" or \"64F\"");
}

/// Whether that many rows of that many bytes are `size` bytes, none too large to be counted.
inline bool is_area(std::uint64_t size, std::uint64_t rows, std::uint64_t bytes) {
  if (rows == 0 || bytes == 0) return size == 0;
  return size % bytes == 0 && size / bytes == rows;
}

/// Nothing is made before the pixels are seen to be there: memory is asked for as much as they
/// take.
inline cv::Mat read_raster(const node& place, int most_channels = CV_CN_MAX) {
  object_reader object(place);
  const int width = read_integer(object["width"], 0);
  const int height = read_integer(object["height"], 0);
  const int channels = read_integer(object["channels"], 1, most_channels);
  const int depth = read_depth(object["depth"]);
  const int type = CV_MAKETYPE(depth, channels);
  const node pixels = object["pixels"];
  object.finish();

  const encoded_bytes bytes(pixels);
  const std::uint64_t row =
      static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(CV_ELEM_SIZE(type));
  if (!is_area(bytes.size(), static_cast<std::uint64_t>(height), row)) {
    pixels.fail("expected as many bytes as width, height, channels and depth tell");
  }
  cv::Mat raster(height, width, type);
  bytes.decode(raster.data);
  return raster;
}

template <>
struct form<VemImage> {
  static const char* name() { return "VemImage"; }
  static const char* key() { return nullptr; }
  static json write(const VemImage& image) { return write_raster(image.Mat()); }
  static void read(const node& place, VemImage& image) { image.Mat() = read_raster(place); }
};

template <>
struct form<VemMatrix> {
  static const char* name() { return "VemMatrix"; }
  static const char* key() { return nullptr; }
  static json write(const VemMatrix& matrix) {
    if (matrix.Mat().channels() != 1) {
      throw std::invalid_argument("vem::to_json: a matrix of several channels");
    }
    return write_raster(matrix.Mat());
  }
  static void read(const node& place, VemMatrix& matrix) { matrix.Mat() = read_raster(place, 1); }
};

template <>
struct form<VemFeatureDescriptor> {
  static const char* name() { return "VemFeatureDescriptor"; }
  static const char* key() { return nullptr; }
  static json write(const VemFeatureDescriptor& numbers) { return write_raster(parts(numbers)); }
  static void read(const node& place, VemFeatureDescriptor& numbers) {
    parts(numbers) = read_raster(place);
  }
};

inline list_names names_of(list_of<VemImageArray>) { return {"VemImageArray", "images"}; }
inline list_names names_of(list_of<VemMatrixArray>) { return {"VemMatrixArray", "matrices"}; }

/// A morphology structure as QueryInfo tells it.
struct morph_record {
  int rows;
  int cols;
  int anchor_x;
  int anchor_y;
  VemMorphStructureType type;
  int* table;

  bool is_custom() const { return type == VemMorphStructureCustom; }
  bool is_unset() const {
    return rows == 0 && cols == 0 && anchor_x == 0 && anchor_y == 0 &&
           type == VemMorphStructureUnset;
  }
  std::uint64_t area() const {
    return static_cast<std::uint64_t>(rows) * static_cast<std::uint64_t>(cols);
  }
};

/// Of a custom structure, "values" are its rows * cols integers, or null where it has lost them.
template <>
struct form<VemMorphStructure> {
  static const char* name() { return "VemMorphStructure"; }
  static const char* key() { return nullptr; }

  static json write(const VemMorphStructure& structure) {
    morph_record record = {};
    const_cast<VemMorphStructure&>(structure).QueryInfo(&record.rows, &record.cols,
                                                        &record.anchor_x, &record.anchor_y,
                                                        &record.type, &record.table);
    json object = json::object();
    object["rows"] = record.rows;
    object["cols"] = record.cols;
    object["anchor_x"] = record.anchor_x;
    object["anchor_y"] = record.anchor_y;
    object["type"] = static_cast<int>(record.type);
    if (!record.is_custom()) return object;
    json& values = object["values"];
    if (!owns_table(structure)) return object;
    values = json::array();
    for (std::uint64_t i = 0; i < record.area(); ++i) values.push_back(record.table[i]);
    return object;
  }

  /// Tests what CreateElement tests, and that the table is as long as the structure is large.
  static void read(const node& place, VemMorphStructure& structure) {
    object_reader object(place);
    morph_record record = {};
    record.rows = read_integer(object["rows"], 0);
    record.cols = read_integer(object["cols"], 0);
    record.anchor_x = read_integer(object["anchor_x"], -1);
    record.anchor_y = read_integer(object["anchor_y"], -1);
    record.type = static_cast<VemMorphStructureType>(read_integer(object["type"], 0));
    std::vector<int> table;
    if (record.is_custom()) read_table(object["values"], record, table);
    object.finish();
    if (record.is_unset()) {
      structure = VemMorphStructure();
      return;
    }
    if (record.rows < 1) place.fail("rows", "expected an integer above 0");
    if (record.cols < 1) place.fail("cols", "expected an integer above 0");
    if (record.anchor_y >= record.rows) place.fail("anchor_y", "expected a row of the structure");
    if (record.anchor_x >= record.cols) {
      place.fail("anchor_x", "expected a column of the structure");
    }
    structure.CreateElement(record.rows, record.cols, record.anchor_x, record.anchor_y, record.type,
                            table.empty() ? nullptr : table.data());
  }

 private:
  // A structure that has lost its table keeps the pointer, which must not be followed: the flag
  // behind the type tells.
  static bool owns_table(const VemMorphStructure& structure) {
    static_assert(
        std::is_standard_layout<VemMorphStructure>::value && sizeof(VemMorphStructure) == 32,
        "the flag stands in the last word");
    bool owns = false;
    std::memcpy(&owns, reinterpret_cast<const unsigned char*>(&structure) + 28, sizeof owns);
    return owns;
  }

  static void read_table(const node& place, const morph_record& record, std::vector<int>& table) {
    if (place.value().is_null()) return;
    if (place.size() != record.area()) place.fail("expected rows * cols integers");
    table.resize(place.size());
    for (std::size_t i = 0; i < table.size(); ++i) table[i] = read_integer<int>(place[i]);
  }
};

}  // namespace json_detail
}  // namespace vem

#endif  // VEM_VEM_JSON_RASTERS_H_
