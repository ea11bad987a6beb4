#include "view/Scene.h"

#include <cstddef>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "VemContourArray.h"
#include "VemOverlayPath.h"
#include "VemROIArray.h"
#include "VemRegionArray.h"
#include "vem/json.h"

namespace {

using nlohmann::json;

using Drawing = std::function<void(cv::Mat&)>;
using Reader = Drawing (*)(const json&, const vem::draw_style&);

template <typename T>
Drawing WithPen(const json& document, const vem::draw_style&) {
  const T value = vem::from_json<T>(document);
  return [value](cv::Mat& picture) { vem::draw(picture, value); };
}

template <typename T>
Drawing InStyle(const json& document, const vem::draw_style& style) {
  const T value = vem::from_json<T>(document);
  return [value, style](cv::Mat& picture) { vem::draw(picture, value, style); };
}

template <typename Array>
Drawing OneByOne(const json& document, const vem::draw_style& style) {
  const Array values = vem::from_json<Array>(document);
  return [values, style](cv::Mat& picture) {
    for (int i = 0; i < values.Length(); ++i) vem::draw(picture, values[i], style);
  };
}

const std::map<std::string, Reader>& Readers() {
  static const std::map<std::string, Reader> readers = {
      {"VemContour", InStyle<VemContour>},          {"VemContourArray", InStyle<VemContourArray>},
      {"VemOverlay", WithPen<VemOverlay>},          {"VemOverlayPath", WithPen<VemOverlayPath>},
      {"VemPointArray", InStyle<VemPointArray>},    {"VemROI", InStyle<VemROI>},
      {"VemROIArray", OneByOne<VemROIArray>},       {"VemRegion", InStyle<VemRegion>},
      {"VemRegionArray", OneByOne<VemRegionArray>},
  };
  return readers;
}

Drawing ReadDocument(const json& document, const vem::draw_style& style) {
  if (!document.is_object()) throw vem::json_error("", "expected an object");
  const json::const_iterator name = document.find("class");
  if (name == document.end()) throw vem::json_error("/class", "is missing");
  if (!name->is_string()) throw vem::json_error("/class", "expected a text");
  const auto reader = Readers().find(name->get<std::string>());
  if (reader == Readers().end()) throw vem::json_error("/class", "is none that is drawn");
  return reader->second(document, style);
}

// A document of a list, whose faults are told from the list on.
Drawing ReadElement(const json& list, std::size_t index, const vem::draw_style& style) {
  try {
    return ReadDocument(list[index], style);
  } catch (const vem::json_error& error) {
    const std::string place = '/' + std::to_string(index);
    throw std::invalid_argument(place + (error.path().empty() ? ": " : "") + error.what());
  }
}

}  // namespace

void DrawScene(cv::Mat& picture, const json& scene, const vem::draw_style& style) {
  std::vector<Drawing> drawings;
  if (scene.is_array()) {
    for (std::size_t i = 0; i < scene.size(); ++i) drawings.push_back(ReadElement(scene, i, style));
  } else {
    drawings.push_back(ReadDocument(scene, style));
  }
  for (const Drawing& drawing : drawings) drawing(picture);
}
