#ifndef VEM_VEM_JSON_OVERLAYS_H_
#define VEM_VEM_JSON_OVERLAYS_H_

#include <stdexcept>
#include <string>

#include "IVemOverlay.h"
#include "VemFont.h"
#include "VemOverlay.h"
#include "VemOverlayPath.h"
#include "VemOverlayType.h"
#include "VemPoint.h"
#include "VemTuple.h"
#include "VemVar.h"
#include "vem/json_forms.h"
#include "vem/json_node.h"
#include "vem/json_numbers.h"
#include "vem/json_rasters.h"
#include "vem/json_regions.h"
#include "vem/json_shapes.h"
#include "vem/json_texts.h"
#include "vem/json_values.h"
#include "vem/parts.h"
#include "vem/shapes.h"

/// How overlays and their paths stand in JSON.

namespace vem {
namespace json_detail {

// --- Texts: y, x, the text, then the font's size, weight, three flags and name ---

inline bool is_flag(const VemVar& value) {
  return value.ValType() == VemVarLong && value.L() >= 0 && value.L() <= 255;
}

inline bool is_text(const VemVarArray& numbers) {
  return numbers.Length() == 9 && numbers[0].ValType() == VemVarDouble &&
         numbers[1].ValType() == VemVarDouble && numbers[2].ValType() == VemVarString &&
         numbers[3].ValType() == VemVarLong && numbers[4].ValType() == VemVarLong &&
         is_flag(numbers[5]) && is_flag(numbers[6]) && is_flag(numbers[7]);
}

inline void write_text_element(const VemVarArray& numbers, json& object) {
  if (!is_text(numbers)) throw std::invalid_argument("vem::to_json: numbers that no text has");
  object["point"] = form<VemPoint>::write(stored_point(member::point, numbers, 0));
  object["text"] = form<VemVar>::write(numbers[2]);
  json& font = object["font"] = json::object();
  font["size"] = numbers[3].L();
  font["weight"] = numbers[4].L();
  font["flag1"] = numbers[5].L();
  font["flag2"] = numbers[6].L();
  font["flag3"] = numbers[7].L();
  font["name"] = form<VemVar>::write(numbers[8]);
}

/// A font, of which any member may be left out.
inline void read_font(const node& place, VemFont& font) {
  object_reader object(place);
  if (object.has("name")) form<VemVar>::read(object["name"], font.Name);
  if (object.has("size")) font.Size = read_integer<long>(object["size"]);
  if (object.has("weight")) font.Weight = read_integer<long>(object["weight"]);
  if (object.has("flag1")) font.Flag1 = read_integer<unsigned char>(object["flag1"]);
  if (object.has("flag2")) font.Flag2 = read_integer<unsigned char>(object["flag2"]);
  if (object.has("flag3")) font.Flag3 = read_integer<unsigned char>(object["flag3"]);
  object.finish();
}

inline void read_text_element(object_reader& object, IVemOverlay& to) {
  VemPoint point;
  form<VemPoint>::read(object["point"], point);
  const std::string text = read_text(object["text"]);
  VemFont font;
  if (object.has("font")) read_font(object["font"], font);
  to.SetText(point, text.c_str(), font);
}

// --- Images: x, y ---

inline bool is_position(const VemVarArray& numbers) {
  return numbers.Length() == 2 && numbers[0].ValType() == VemVarDouble &&
         numbers[1].ValType() == VemVarDouble;
}

inline void write_image_element(const IVemOverlay& from, json& object) {
  if (!is_position(from.Params)) {
    throw std::invalid_argument("vem::to_json: numbers that no image has");
  }
  object["point"] = form<VemPoint>::write(stored_point(member::point_x_first, from.Params, 0));
  object["image"] = write_raster(from.Image);
}

inline void read_image_element(object_reader& object, IVemOverlay& to) {
  VemPoint point;
  form<VemPoint>::read(object["point"], point);
  to.Type = VemOverlayImage;
  append_point(to.Params, point.x, point.y);
  to.Image = read_raster(object["image"]);
}

// --- Regions ---

inline void write_region_element(const IVemOverlay& from, json& object) {
  json& region = object["region"] = json::object();
  write_runs(from, region);
}

inline void read_region_element(object_reader& object, IVemOverlay& to) {
  to.Type = VemOverlayRegion;
  const node region = object["region"];
  object_reader members(region);
  read_runs(members, to);
  members.finish();
}

// --- Numbers of any kind: VemOverlay::FromContour adds points to whatever numbers there are, and
// VemOverlay::FromROI leaves them where there is no shape ---

inline void write_numbers(const VemVarArray& numbers, json& object) {
  object["numbers"] = form<VemVarArray>::write(numbers);
}

inline void read_numbers(object_reader& object, VemVarArray& numbers) {
  if (object.has("numbers")) form<VemVarArray>::read(object["numbers"], numbers);
}

// --- Pens and brushes ---

/// A pen or a brush: three components, and a width or a mode.
struct tool {
  int& color0;
  int& color1;
  int& color2;
  int& last;
  bool& chosen;
};

inline tool pen_of(IVemOverlay& overlay) {
  return {overlay.PenColor0, overlay.PenColor1, overlay.PenColor2, overlay.PenWidth,
          overlay.RedrawPen};
}
inline tool brush_of(IVemOverlay& overlay) {
  return {overlay.BrushColor0, overlay.BrushColor1, overlay.BrushColor2, overlay.BrushMode,
          overlay.RedrawBrush};
}

inline bool same(const tool& a, const tool& b) {
  return a.color0 == b.color0 && a.color1 == b.color1 && a.color2 == b.color2 && a.last == b.last &&
         a.chosen == b.chosen;
}

/// Written where it is not a new overlay's; "chosen" is told where no caller chose it.
inline void write_tool(const char* key, const char* last, const tool& from, const tool& fresh,
                       json& object) {
  if (same(from, fresh)) return;
  json& to = object[key] = json::object();
  const int color[] = {from.color0, from.color1, from.color2};
  to["color"] = write_integers(color, 3);
  to[last] = from.last;
  if (!from.chosen) to["chosen"] = false;
}

inline void read_tool(const node& place, const char* last, const tool& to) {
  object_reader object(place);
  int color[3] = {};
  read_integers(object["color"], color, 3);
  to.color0 = color[0];
  to.color1 = color[1];
  to.color2 = color[2];
  to.last = read_integer<int>(object[last]);
  to.chosen = true;
  if (object.has("chosen")) {
    const node chosen = object["chosen"];
    if (!chosen.value().is_boolean()) chosen.fail("expected true or false");
    to.chosen = chosen.value().get<bool>();
  }
  object.finish();
}

// --- Overlays ---

/// An overlay is its "type", the members of that element, and the pen and the brush where they are
/// not a new overlay's. Pixels and runs that it carries along under a type that does not show them
/// are not written.
template <>
struct form<VemOverlay> {
  static const char* name() { return "VemOverlay"; }
  static const char* key() { return nullptr; }

  static json write(const VemOverlay& overlay) {
    IVemOverlay& from = parts(const_cast<VemOverlay&>(overlay));  // Nothing writes to it.
    json object = json::object();
    write_element(from, object);
    IVemOverlay fresh;
    write_tool("pen", "width", pen_of(from), pen_of(fresh), object);
    write_tool("brush", "mode", brush_of(from), brush_of(fresh), object);
    return object;
  }

  static void read(const node& place, VemOverlay& overlay) {
    object_reader object(place);
    IVemOverlay to;
    read_element(place, object, to);
    if (object.has("pen")) read_tool(object["pen"], "width", pen_of(to));
    if (object.has("brush")) read_tool(object["brush"], "mode", brush_of(to));
    object.finish();
    parts(overlay) = to;
  }

 private:
  static void write_element(const IVemOverlay& from, json& object) {
    switch (from.Type) {
      case VemOverlayText:
        object["type"] = "text";
        return write_text_element(from.Params, object);
      case VemOverlayImage:
        object["type"] = "image";
        return write_image_element(from, object);
      case VemOverlayRegion:
        object["type"] = "region";
        return write_region_element(from, object);
      case VemOverlayNone:
        object["type"] = "none";
        if (from.Params.Length() > 0) write_numbers(from.Params, object);
        return;
      default:
        break;
    }
    const shape* s = find_shape(&shape::overlay, from.Type);
    if (s == nullptr) throw std::invalid_argument("vem::to_json: an overlay of no known type");
    if (from.Type == VemOverlayIrregular && !fits(*s, from.Params)) {
      object["type"] = s->name;
      return write_numbers(from.Params, object);
    }
    write_shape(*s, from.Params, object);
  }

  static void read_element(const node& place, object_reader& object, IVemOverlay& to) {
    const std::string type = read_type(object["type"]);
    if (type == "text") return read_text_element(object, to);
    if (type == "image") return read_image_element(object, to);
    if (type == "region") return read_region_element(object, to);
    if (type == "none") return read_numbers(object, to.Params);
    const shape* s = find_shape(&shape::overlay, type);
    if (s == nullptr) place.fail("type", "is no type of an overlay");
    to.Type = static_cast<VemOverlayType>(s->overlay);
    if (to.Type == VemOverlayIrregular && object.has("numbers")) {
      return read_numbers(object, to.Params);
    }
    read_shape(place, *s, object, to.Params);
  }
};

inline list_names names_of(list_of<VemOverlayPath>) { return {"VemOverlayPath", "overlays"}; }

}  // namespace json_detail
}  // namespace vem

#endif  // VEM_VEM_JSON_OVERLAYS_H_
