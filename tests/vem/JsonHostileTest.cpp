// Documents that nobody meant: good ones with a value exchanged, a member dropped or doubled, or
// bytes turned. Each is either read, and then written and read again the same, or refused with the
// place of the fault.

#include "vem/json.h"

#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

namespace {

using nlohmann::json;

int g_read;
int g_refused;

template <typename T>
void Try(const json& document) {
  T value;
  try {
    vem::from_json(document, value);
  } catch (const vem::json_error& error) {
    ++g_refused;
    // The place is one of the document, or of a member that is not there.
    ASSERT_TRUE(error.path().empty() || error.path()[0] == '/') << error.what();
    const json::json_pointer place(error.path());
    ASSERT_TRUE(document.contains(place) || place.empty() ||
                document.contains(place.parent_pointer()))
        << error.what() << '\n'
        << document;
    return;
  }
  ++g_read;
  const json written = vem::to_json(value);
  T again;
  vem::from_json(json::parse(written.dump()), again);
  ASSERT_EQ(vem::to_json(again).dump(), written.dump());
}

// What takes the place of a value.
std::vector<json> Strangers() {
  return {json(nullptr),
          json(true),
          json(0),
          json(-1),
          json(1),
          json(2147483647),
          json(-2147483648LL),
          json(2147483648LL),
          json(std::numeric_limits<std::int64_t>::min()),
          json(std::numeric_limits<std::uint64_t>::max()),
          json(0.5),
          json(-0.0),
          json(1e308),
          json("nan"),
          json("inf"),
          json("nan:"),
          json("nan:7ff8000000000001"),
          json(""),
          json("AAAA"),
          json("A==="),
          json("\xff"),
          json(std::string("\0", 1)),
          json("mask"),
          json("text"),
          json::array(),
          json::object(),
          json::array({1, 2}),
          json::array({nullptr, json::object()}),
          json{{"double", "nan"}},
          json{{"bytes", "/w=="}},
          json{{"bytes", json::object()}},
          json::binary({1, 2, 3}),
          json::parse("[[[[[[[[1]]]]]]]]")};
}

// Visits every value of the document in place.
template <typename Visit>
void Walk(json& value, const Visit& visit) {
  visit(value);
  if (!value.is_structured()) return;
  for (json& below : value) Walk(below, visit);
}

// Calls `change` for each value of a fresh copy of the document, one after the other, and tries
// what comes of it.
template <typename T, typename Change>
void ChangeEveryValue(const json& good, const Change& change) {
  std::size_t count = 0;
  json counted = good;
  Walk(counted, [&count](json&) { ++count; });
  for (std::size_t target = 0; target < count; ++target) {
    json document = good;
    json* found = nullptr;
    std::size_t at = 0;
    Walk(document, [&](json& value) {
      if (at++ == target) found = &value;
    });
    change(*found);
    Try<T>(document);
  }
}

template <typename T>
void ExchangeEveryValue(const json& good) {
  for (const json& stranger : Strangers()) {
    ChangeEveryValue<T>(good, [&stranger](json& value) { value = stranger; });
  }
}

template <typename T>
void DropEveryMember(const json& good) {
  const json flat = good.flatten();
  for (const auto& item : flat.items()) {
    json fewer = flat;
    fewer.erase(item.key());
    Try<T>(fewer.unflatten());
  }
  ChangeEveryValue<T>(good, [](json& value) {
    if (value.is_object()) value["stranger"] = 1;
    if (value.is_array()) value.push_back(value.empty() ? json(1) : json(value.front()));
    if (value.is_string()) value = value.get<std::string>() + "AAAA";
  });
}

template <typename T>
void TurnBytes(const json& good, int rounds) {
  const std::string text = good.dump();
  std::uint32_t state = static_cast<std::uint32_t>(text.size());
  const auto random = [&state](std::size_t below) {
    state = state * 1664525u + 1013904223u;
    return static_cast<std::size_t>((static_cast<std::uint64_t>(state) * below) >> 32);
  };
  for (int round = 0; round < rounds; ++round) {
    std::string turned = text;
    for (std::size_t k = 1 + random(3); k > 0; --k) {
      const char digits[] = "0123456789-+.eE\"[]{},:/=nAz\\u\xff";
      const std::size_t at = random(turned.size());
      switch (random(3)) {
        case 0:
          turned[at] = digits[random(sizeof digits - 1)];
          break;
        case 1:
          turned.erase(at, 1 + random(4));
          break;
        default:
          turned.insert(at, 1, digits[random(sizeof digits - 1)]);
      }
      if (turned.empty()) turned = "0";
    }
    const json document = json::parse(turned, nullptr, false);
    if (!document.is_discarded()) Try<T>(document);
  }
}

template <typename T>
void Assail(const T& value) {
  g_read = 0;
  g_refused = 0;
  const json good = vem::to_json(value);
  ExchangeEveryValue<T>(good);
  DropEveryMember<T>(good);
  TurnBytes<T>(good, 3000);
  EXPECT_GT(g_read, 0);
  EXPECT_GT(g_refused, 0);
}

VemPointArray Triangle() {
  VemPointArray points;
  VemPoint a(1, 2);
  VemPoint b(3.5, 4);
  VemPoint c(-5, 6);
  points.Append(a);
  points.Append(b);
  points.Append(c);
  return points;
}

VemImage Checked() {
  VemImage image;
  image.Mat() = cv::Mat(2, 3, CV_16UC2, cv::Scalar(7, 8));
  return image;
}

VemRegion SmallRegion() {
  VemVarArray rows;
  rows.Append(1);
  rows.Append(2);
  return VemRegion(9, 8, rows, rows, rows);
}

TEST(VemJsonHostile, Values) {
  VemVarArray values;
  values.Append(3);
  values.Append(3.5);
  values.Append("x");
  values.Append("\xff");
  values.Append(VemVar());
  values.Append(std::numeric_limits<double>::infinity());
  Assail(values);
  Vem2DVarArray table;
  table.Append(values);
  Assail(table);
}

TEST(VemJsonHostile, Geometry) {
  Assail(VemLine(1, 2, 3, 4));
  Assail(VemCircle(1, 2, 3));
  Assail(Triangle());
  VemPointArray points = Triangle();
  VemContour contour;
  contour.FromPointArray(points);
  VemContourArray contours;
  contours.Append(contour);
  contours.Append(contour);
  Assail(contours);
  Assail(VemFont());
}

TEST(VemJsonHostile, Rasters) {
  Assail(Checked());
  VemMatrix matrix(2, 2, VemMatrixType64F);
  VemMatrixArray matrices;
  matrices.Append(matrix);
  Assail(matrices);
  Assail(VemFeatureDescriptor(cv::Mat(1, 4, CV_32F, cv::Scalar(1))));
  int values[] = {1, 2, 3, 4, 5, 6};
  VemMorphStructure structure;
  structure.CreateElement(2, 3, 1, 1, VemMorphStructureCustom, values);
  Assail(structure);
}

TEST(VemJsonHostile, Regions) {
  Assail(SmallRegion());
  VemRegion region = SmallRegion();
  vem::parts(region).Hierarchy = {cv::Vec4i(-1, -1, -1, -1)};
  vem::parts(region).Contours = {{cv::Point(1, 1), cv::Point(2, 2)}};
  Assail(region);
  VemRegionArray regions;
  regions.Append(region);
  regions.Append(region);
  Assail(regions);
}

TEST(VemJsonHostile, RegionsOfInterest) {
  VemROIArray rois;
  VemROI roi;
  VemPoint center(10, 10);
  roi.GenTorus(center, 2, 5, 0, 90);
  rois.Append(roi);
  VemPointArray points = Triangle();
  roi.GenPolygon(points);
  rois.Append(roi);
  VemVarArray rows;
  rows.Append(1);
  roi.GenMask(rows, rows, rows, 4, 4);
  rois.Append(roi);
  Assail(rois);
}

TEST(VemJsonHostile, Overlays) {
  VemOverlayPath path;
  VemPoint point(1, 2);
  VemFont font;
  VemImage image = Checked();
  VemRegion region = SmallRegion();
  path.AddText(point, "text", font);
  path.AddImage(point, image);
  path.AddRegion(region);
  path.AddSpokeTorus(point, 1, 2, 3, 4, 5, 6);
  path[3].SetPen(1, 2, 3, 4);
  Assail(path);
}

TEST(VemJsonHostile, Results) {
  VemVCode code = {};
  code.Count0 = code.Count1 = code.Count2 = 1;
  code.Real0 = code.Real1 = code.Real2 = 1;
  code.Points = Triangle();
  VemVCodeArray codes;
  codes.Append(code);
  Assail(codes);
  VemVar label("x");
  VemScratchGroup group(label);
  group.Append({1, 2, 3, 4});
  VemScratchLayer layer;
  layer.Append(group);
  VemScratchLayerArray layers;
  layers.Append(layer);
  Assail(layers);
}

}  // namespace
