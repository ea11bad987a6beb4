#ifndef VEM_VEM_JSON_RESULTS_H_
#define VEM_VEM_JSON_RESULTS_H_

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
#include "vem/json_forms.h"
#include "vem/json_node.h"
#include "vem/json_values.h"

/// How codes, feature points and scratches stand in JSON: each field under its name. A field that
/// nobody has written is written down as the memory has it.

namespace vem {
namespace json_detail {

inline list_names names_of(list_of<Vem1DCodeArray>) { return {"Vem1DCodeArray", "codes"}; }
inline list_names names_of(list_of<VemDMCodeArray>) { return {"VemDMCodeArray", "codes"}; }
inline list_names names_of(list_of<VemPDF417CodeArray>) { return {"VemPDF417CodeArray", "codes"}; }
inline list_names names_of(list_of<VemQRCodeArray>) { return {"VemQRCodeArray", "codes"}; }
inline list_names names_of(list_of<VemVCodeArray>) { return {"VemVCodeArray", "codes"}; }
inline list_names names_of(list_of<VemFeaturePointArray>) {
  return {"VemFeaturePointArray", "points"};
}
inline list_names names_of(list_of<VemScratchLayerArray>) {
  return {"VemScratchLayerArray", "layers"};
}

template <>
struct form<Vem1DCode> : record_form<Vem1DCode> {
  static const char* name() { return "Vem1DCode"; }
  template <typename Fields, typename Record>
  static void fields(Fields& field, Record& code) {
    field("number", code.Number)("value", code.Value)("points", code.Points);
    field("word0", code.Word0)("word1", code.Word1)("word2", code.Word2)("word3", code.Word3);
    field("word4", code.Word4)("word5", code.Word5)("word6", code.Word6)("word7", code.Word7);
  }
};

template <>
struct form<VemDMCode> : record_form<VemDMCode> {
  static const char* name() { return "VemDMCode"; }
  template <typename Fields, typename Record>
  static void fields(Fields& field, Record& code) {
    field("number", code.Number)("value", code.Value)("symbol_type", code.SymbolType);
    field("polarity", code.Polarity)("value3", code.Value3)("value4", code.Value4);
    field("count0", code.Count0)("count1", code.Count1)("count2", code.Count2);
    field("real0", code.Real0)("real1", code.Real1)("points0", code.Points0);
    field("points1", code.Points1)("points2", code.Points2);
    field("word0", code.Word0)("word1", code.Word1)("word2", code.Word2)("word3", code.Word3);
    field("word4", code.Word4)("word5", code.Word5);
  }
};

template <>
struct form<VemPDF417Code> : record_form<VemPDF417Code> {
  static const char* name() { return "VemPDF417Code"; }
  template <typename Fields, typename Record>
  static void fields(Fields& field, Record& code) {
    field("number", code.Number)("value", code.Value)("polarity", code.Polarity);
    field("value2", code.Value2)("count0", code.Count0)("count1", code.Count1);
    field("count2", code.Count2)("real0", code.Real0)("real1", code.Real1)("real2", code.Real2);
    field("points", code.Points);
    field("word0", code.Word0)("word1", code.Word1)("word2", code.Word2)("word3", code.Word3);
    field("word4", code.Word4)("word5", code.Word5);
  }
};

template <>
struct form<VemQRCode> : record_form<VemQRCode> {
  static const char* name() { return "VemQRCode"; }
  template <typename Fields, typename Record>
  static void fields(Fields& field, Record& code) {
    field("number", code.Number)("value", code.Value)("symbol_type", code.SymbolType);
    field("polarity", code.Polarity)("value3", code.Value3)("value4", code.Value4);
    field("count0", code.Count0)("count1", code.Count1)("count2", code.Count2);
    field("count3", code.Count3)("real0", code.Real0)("real1", code.Real1);
    field("points0", code.Points0)("points1", code.Points1)("points2", code.Points2);
    field("word0", code.Word0)("word1", code.Word1)("word2", code.Word2)("word3", code.Word3);
    field("word4", code.Word4)("word5", code.Word5)("word6", code.Word6);
  }
};

template <>
struct form<VemVCode> : record_form<VemVCode> {
  static const char* name() { return "VemVCode"; }
  template <typename Fields, typename Record>
  static void fields(Fields& field, Record& code) {
    field("count0", code.Count0)("count1", code.Count1)("count2", code.Count2);
    field("real0", code.Real0)("real1", code.Real1)("real2", code.Real2)("value0", code.Value0);
    field("value1", code.Value1)("value2", code.Value2)("value3", code.Value3);
    field("points", code.Points);
  }
};

template <>
struct form<VemFeaturePoint> : record_form<VemFeaturePoint> {
  static const char* name() { return "VemFeaturePoint"; }
  template <typename Fields, typename Record>
  static void fields(Fields& field, Record& point) {
    field("x", point.x)("y", point.y)("value_c", point.ValueC)("value_d", point.ValueD);
    field("value_e", point.ValueE)("value_f", point.ValueF)("value_g", point.ValueG);
    field("int_value", point.IntValue);
  }
};

template <>
struct form<VemScratchFeature> : record_form<VemScratchFeature> {
  static const char* name() { return "VemScratchFeature"; }
  template <typename Fields, typename Record>
  static void fields(Fields& field, Record& feature) {
    field("head0", feature.Head0)("head1", feature.Head1)("sort_key", feature.SortKey);
    field("tail", feature.Tail);
  }
};

template <>
struct form<VemScratchPrecessing> : record_form<VemScratchPrecessing> {
  static const char* name() { return "VemScratchPrecessing"; }
  template <typename Fields, typename Record>
  static void fields(Fields& field, Record& settings) {
    field("param0", settings.Param0)("param1", settings.Param1)("param2", settings.Param2);
    field("param3", settings.Param3)("param4", settings.Param4)("param5", settings.Param5);
  }
};

template <>
struct form<VemScratchGroup> {
  static const char* name() { return "VemScratchGroup"; }
  static const char* key() { return nullptr; }

  static json write(const VemScratchGroup& group) {
    json object = json::object();
    object["label"] = form<VemVar>::write(group.Label);
    object["features"] = list_form<VemScratchGroup>::write(group);
    return object;
  }
  static void read(const node& place, VemScratchGroup& group) {
    object_reader object(place);
    form<VemVar>::read(object["label"], group.Label);
    list_form<VemScratchGroup>::read(object["features"], group);
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
    object["groups"] = list_form<VemScratchLayer>::write(layer);
    return object;
  }
  static void read(const node& place, VemScratchLayer& layer) {
    object_reader object(place);
    form<VemScratchPrecessing>::read(object["settings"], layer.Settings);
    list_form<VemScratchLayer>::read(object["groups"], layer);
    object.finish();
  }
};

}  // namespace json_detail
}  // namespace vem

#endif  // VEM_VEM_JSON_RESULTS_H_
