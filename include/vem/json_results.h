#ifndef VEM_VEM_JSON_RESULTS_H_
#define VEM_VEM_JSON_RESULTS_H_

#include <cstddef>

#include "Vem1DCode.h"
#include "Vem1DCodeArray.h"
#include "VemDMCode.h"
#include "VemDMCodeArray.h"
#include "VemFeaturePoint.h"
#include "VemFeaturePointArray.h"
#include "VemPDF417Code.h"
#include "VemPDF417CodeArray.h"
#include "VemQRCode.h"
#include "VemQRCodeArray.h"
#include "VemScratchGroup.h"
#include "VemVCode.h"
#include "VemVCodeArray.h"
#include "vem/json_node.h"
#include "vem/json_values.h"

/// How codes, feature points and scratches stand in JSON: each field under its name. A field that
/// nobody has written is written down as the memory has it.

namespace vem {
namespace json_detail {

template <>
struct form<Vem1DCode> : record_form<Vem1DCode> {
  static const char* name() { return "Vem1DCode"; }
  template <typename Fields, typename Record>
  static void fields(Fields& field, Record& code) {
    field("number", code.Number);
    field("value", code.Value);
    field("points", code.Points);
    field("word0", code.Word0);
    field("word1", code.Word1);
    field("word2", code.Word2);
    field("word3", code.Word3);
    field("word4", code.Word4);
    field("word5", code.Word5);
    field("word6", code.Word6);
    field("word7", code.Word7);
  }
};

template <>
struct form<VemDMCode> : record_form<VemDMCode> {
  static const char* name() { return "VemDMCode"; }
  template <typename Fields, typename Record>
  static void fields(Fields& field, Record& code) {
    field("number", code.Number);
    field("value", code.Value);
    field("symbol_type", code.SymbolType);
    field("polarity", code.Polarity);
    field("value3", code.Value3);
    field("value4", code.Value4);
    field("count0", code.Count0);
    field("count1", code.Count1);
    field("count2", code.Count2);
    field("real0", code.Real0);
    field("real1", code.Real1);
    field("points0", code.Points0);
    field("points1", code.Points1);
    field("points2", code.Points2);
    field("word0", code.Word0);
    field("word1", code.Word1);
    field("word2", code.Word2);
    field("word3", code.Word3);
    field("word4", code.Word4);
    field("word5", code.Word5);
  }
};

template <>
struct form<VemPDF417Code> : record_form<VemPDF417Code> {
  static const char* name() { return "VemPDF417Code"; }
  template <typename Fields, typename Record>
  static void fields(Fields& field, Record& code) {
    field("number", code.Number);
    field("value", code.Value);
    field("polarity", code.Polarity);
    field("value2", code.Value2);
    field("count0", code.Count0);
    field("count1", code.Count1);
    field("count2", code.Count2);
    field("real0", code.Real0);
    field("real1", code.Real1);
    field("real2", code.Real2);
    field("points", code.Points);
    field("word0", code.Word0);
    field("word1", code.Word1);
    field("word2", code.Word2);
    field("word3", code.Word3);
    field("word4", code.Word4);
    field("word5", code.Word5);
  }
};

template <>
struct form<VemQRCode> : record_form<VemQRCode> {
  static const char* name() { return "VemQRCode"; }
  template <typename Fields, typename Record>
  static void fields(Fields& field, Record& code) {
    field("number", code.Number);
    field("value", code.Value);
    field("symbol_type", code.SymbolType);
    field("polarity", code.Polarity);
    field("value3", code.Value3);
    field("value4", code.Value4);
    field("count0", code.Count0);
    field("count1", code.Count1);
    field("count2", code.Count2);
    field("count3", code.Count3);
    field("real0", code.Real0);
    field("real1", code.Real1);
    field("points0", code.Points0);
    field("points1", code.Points1);
    field("points2", code.Points2);
    field("word0", code.Word0);
    field("word1", code.Word1);
    field("word2", code.Word2);
    field("word3", code.Word3);
    field("word4", code.Word4);
    field("word5", code.Word5);
    field("word6", code.Word6);
  }
};

template <>
struct form<VemVCode> : record_form<VemVCode> {
  static const char* name() { return "VemVCode"; }
  template <typename Fields, typename Record>
  static void fields(Fields& field, Record& code) {
    field("count0", code.Count0);
    field("count1", code.Count1);
    field("count2", code.Count2);
    field("real0", code.Real0);
    field("real1", code.Real1);
    field("real2", code.Real2);
    field("value0", code.Value0);
    field("value1", code.Value1);
    field("value2", code.Value2);
    field("value3", code.Value3);
    field("points", code.Points);
  }
};

template <>
struct form<Vem1DCodeArray> : array_form<Vem1DCodeArray, Vem1DCode> {
  static const char* name() { return "Vem1DCodeArray"; }
  static const char* key() { return "codes"; }
};
template <>
struct form<VemDMCodeArray> : array_form<VemDMCodeArray, VemDMCode> {
  static const char* name() { return "VemDMCodeArray"; }
  static const char* key() { return "codes"; }
};
template <>
struct form<VemPDF417CodeArray> : array_form<VemPDF417CodeArray, VemPDF417Code> {
  static const char* name() { return "VemPDF417CodeArray"; }
  static const char* key() { return "codes"; }
};
template <>
struct form<VemQRCodeArray> : array_form<VemQRCodeArray, VemQRCode> {
  static const char* name() { return "VemQRCodeArray"; }
  static const char* key() { return "codes"; }
};
template <>
struct form<VemVCodeArray> : array_form<VemVCodeArray, VemVCode> {
  static const char* name() { return "VemVCodeArray"; }
  static const char* key() { return "codes"; }
};

template <>
struct form<VemFeaturePoint> : record_form<VemFeaturePoint> {
  static const char* name() { return "VemFeaturePoint"; }
  template <typename Fields, typename Record>
  static void fields(Fields& field, Record& point) {
    field("x", point.x);
    field("y", point.y);
    field("value_c", point.ValueC);
    field("value_d", point.ValueD);
    field("value_e", point.ValueE);
    field("value_f", point.ValueF);
    field("value_g", point.ValueG);
    field("int_value", point.IntValue);
  }
};

template <>
struct form<VemFeaturePointArray> : array_form<VemFeaturePointArray, VemFeaturePoint> {
  static const char* name() { return "VemFeaturePointArray"; }
  static const char* key() { return "points"; }
};

template <>
struct form<VemScratchFeature> : record_form<VemScratchFeature> {
  static const char* name() { return "VemScratchFeature"; }
  template <typename Fields, typename Record>
  static void fields(Fields& field, Record& feature) {
    field("head0", feature.Head0);
    field("head1", feature.Head1);
    field("sort_key", feature.SortKey);
    field("tail", feature.Tail);
  }
};

template <>
struct form<VemScratchPrecessing> : record_form<VemScratchPrecessing> {
  static const char* name() { return "VemScratchPrecessing"; }
  template <typename Fields, typename Record>
  static void fields(Fields& field, Record& settings) {
    field("param0", settings.Param0);
    field("param1", settings.Param1);
    field("param2", settings.Param2);
    field("param3", settings.Param3);
    field("param4", settings.Param4);
    field("param5", settings.Param5);
  }
};

/// A list of `count` items, as operator[] reads them and Append adds them.
template <typename Item, typename List>
json write_items(const List& list, int count) {
  json items = json::array();
  for (int i = 0; i < count; ++i) items.push_back(form<Item>::write(list[i]));
  return items;
}

template <typename Item, typename List>
void read_items(const node& place, List& list) {
  list.Clear();
  const std::size_t size = place.size();
  for (std::size_t i = 0; i < size; ++i) {
    Item item = Item();
    form<Item>::read(place[i], item);
    list.Append(item);
  }
}

template <>
struct form<VemScratchGroup> {
  static const char* name() { return "VemScratchGroup"; }
  static const char* key() { return nullptr; }

  static json write(const VemScratchGroup& group) {
    json object = json::object();
    object["label"] = form<VemVar>::write(group.Label);
    object["features"] = write_items<VemScratchFeature>(group, group.GetFeatureNum());
    return object;
  }
  static void read(const node& place, VemScratchGroup& group) {
    object_reader object(place);
    form<VemVar>::read(object["label"], group.Label);
    read_items<VemScratchFeature>(object["features"], group);
    object.finish();
  }
};

template <>
struct form<VemScratchLayer> {
  static const char* name() { return "VemScratchLayer"; }
  static const char* key() { return nullptr; }

  static json write(const VemScratchLayer& layer) {
    json object = json::object();
    object["settings"] = form<VemScratchPrecessing>::write(layer.Settings);
    object["groups"] = write_items<VemScratchGroup>(layer, layer.GetGroupNum());
    return object;
  }
  static void read(const node& place, VemScratchLayer& layer) {
    object_reader object(place);
    form<VemScratchPrecessing>::read(object["settings"], layer.Settings);
    read_items<VemScratchGroup>(object["groups"], layer);
    object.finish();
  }
};

template <>
struct form<VemScratchLayerArray> {
  static const char* name() { return "VemScratchLayerArray"; }
  static const char* key() { return "layers"; }
  static json write(const VemScratchLayerArray& layers) {
    return write_items<VemScratchLayer>(layers, layers.GetLayerNum());
  }
  static void read(const node& place, VemScratchLayerArray& layers) {
    read_items<VemScratchLayer>(place, layers);
  }
};

}  // namespace json_detail
}  // namespace vem

#endif  // VEM_VEM_JSON_RESULTS_H_
