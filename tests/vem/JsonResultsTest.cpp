#include "vem/json.h"

#include <cstdint>
#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace {

using nlohmann::json;

template <typename T>
T Again(const T& value) {
  return vem::from_json<T>(json::parse(vem::to_json(value).dump()));
}

template <typename T>
std::string Fields(const T& value) {
  json document = vem::to_json(value);
  document.erase("version");
  document.erase("class");
  return document.dump();
}

const std::uint64_t kWord = std::numeric_limits<std::uint64_t>::max();

VemPointArray OnePoint(double x, double y) {
  VemPointArray points;
  VemPoint point(x, y);
  points.Append(point);
  return points;
}

TEST(VemJsonResults, LinearCodesComeBack) {
  Vem1DCode code;
  code.Number = -1;
  code.Value = "4006381333931";
  code.Points = OnePoint(1, 2.5);
  code.Word0 = kWord;
  code.Word1 = 1;
  code.Word2 = 2;
  code.Word3 = 3;
  code.Word4 = 4;
  code.Word5 = 5;
  code.Word6 = 6;
  code.Word7 = 0;
  Vem1DCodeArray codes;
  codes.Append(code);
  EXPECT_EQ(Fields(codes),
            R"({"codes":[{"number":-1,"points":[[1.0,2.5]],"value":"4006381333931",)"
            R"("word0":18446744073709551615,"word1":1,"word2":2,"word3":3,"word4":4,"word5":5,)"
            R"("word6":6,"word7":0}]})");
  Vem1DCodeArray again = Again(codes);
  ASSERT_EQ(again.Length(), 1);
  EXPECT_EQ(Fields(again[0]), Fields(code));
  EXPECT_EQ(again[0].Word0, kWord);
  EXPECT_EQ(again[0].Word6, 6u);
  EXPECT_EQ(again[0].Points[0].y, 2.5);
}

TEST(VemJsonResults, DataMatrixCodesComeBack) {
  VemDMCode code;
  code.Number = 1;
  code.Value3 = 3;
  code.Value4 = 4.0;
  code.Count0 = 10;
  code.Count1 = 11;
  code.Count2 = 12;
  code.Real0 = -0.0;
  code.Real1 = std::numeric_limits<double>::infinity();
  code.Points1 = OnePoint(1, 2);
  code.Word0 = 20;
  code.Word1 = 21;
  code.Word2 = 22;
  code.Word3 = 23;
  code.Word4 = 24;
  code.Word5 = kWord;
  VemDMCodeArray codes;
  codes.Append(code);
  EXPECT_EQ(Fields(codes),
            R"({"codes":[{"count0":10,"count1":11,"count2":12,"number":1,)"
            R"("points0":[],"points1":[[1.0,2.0]],"points2":[],"polarity":"BlackOnWhite",)"
            R"("real0":-0.0,"real1":"inf","symbol_type":"ECC-200 ","value":null,"value3":3,)"
            R"("value4":4.0,"word0":20,"word1":21,"word2":22,"word3":23,"word4":24,)"
            R"("word5":18446744073709551615}]})");
  EXPECT_EQ(Fields(Again(codes)), Fields(codes));
  EXPECT_EQ(Again(code).Word5, kWord);
  EXPECT_EQ(Again(code).Points1.Length(), 1);
}

TEST(VemJsonResults, PdfCodesComeBack) {
  VemPDF417Code code;
  code.Number = 1;
  code.Value2 = 2;
  code.Count0 = 10;
  code.Count1 = 11;
  code.Count2 = 12;
  code.Real0 = 0.25;
  code.Real1 = 0.5;
  code.Real2 = 0.75;
  code.Word0 = 20;
  code.Word1 = 21;
  code.Word2 = 22;
  code.Word3 = 23;
  code.Word4 = 24;
  code.Word5 = 25;
  VemPDF417CodeArray codes;
  codes.Append(code);
  EXPECT_EQ(Fields(codes),
            R"({"codes":[{"count0":10,"count1":11,"count2":12,"number":1,"points":[],)"
            R"("polarity":"BlackOnWhite","real0":0.25,"real1":0.5,"real2":0.75,"value":null,)"
            R"("value2":2,"word0":20,"word1":21,"word2":22,"word3":23,"word4":24,"word5":25}]})");
  EXPECT_EQ(Fields(Again(codes)), Fields(codes));
  EXPECT_EQ(Again(code).Real2, 0.75);
}

TEST(VemJsonResults, QRCodesComeBack) {
  VemQRCode code;
  code.Number = 1;
  code.Count0 = 10;
  code.Count1 = 11;
  code.Count2 = 12;
  code.Count3 = 13;
  code.Real0 = 0.25;
  code.Real1 = 0.5;
  code.Points2 = OnePoint(7, 8);
  code.Word0 = 20;
  code.Word1 = 21;
  code.Word2 = 22;
  code.Word3 = 23;
  code.Word4 = 24;
  code.Word5 = 25;
  code.Word6 = 26;
  VemQRCodeArray codes;
  codes.Append(code);
  EXPECT_EQ(Fields(codes),
            R"({"codes":[{"count0":10,"count1":11,"count2":12,"count3":13,"number":1,)"
            R"("points0":[],"points1":[],"points2":[[7.0,8.0]],"polarity":"BlackOnWhite",)"
            R"("real0":0.25,"real1":0.5,"symbol_type":"QR Mode 2","value":null,"value3":null,)"
            R"("value4":null,"word0":20,"word1":21,"word2":22,"word3":23,"word4":24,"word5":25,)"
            R"("word6":26}]})");
  EXPECT_EQ(Fields(Again(codes)), Fields(codes));
  EXPECT_EQ(Again(code).Count3, 13);
}

TEST(VemJsonResults, VCodesComeBack) {
  VemVCode code;
  code.Count0 = 1;
  code.Count1 = 2;
  code.Count2 = std::numeric_limits<int>::min();
  code.Real0 = 0.1f;
  code.Real1 = -std::numeric_limits<float>::infinity();
  code.Real2 = std::numeric_limits<float>::denorm_min();
  code.Value1 = "x";
  VemVCodeArray codes;
  codes.Append(code);
  EXPECT_EQ(Fields(codes),
            R"({"codes":[{"count0":1,"count1":2,"count2":-2147483648,"points":[],)"
            R"("real0":0.10000000149011612,"real1":"-inf","real2":1.401298464324817e-45,)"
            R"("value0":null,"value1":"x","value2":null,"value3":null}]})");
  const VemVCode again = Again(code);
  EXPECT_EQ(again.Real0, 0.1f);
  EXPECT_EQ(again.Real2, std::numeric_limits<float>::denorm_min());
  EXPECT_EQ(Fields(Again(codes)), Fields(codes));
}

TEST(VemJsonResults, FeaturePointsComeBack) {
  VemFeaturePoint point(1, 2, 3, 4, 5, 6, 7);
  point.ValueF = 8;
  VemFeaturePointArray points;
  points.Append(point);
  EXPECT_EQ(Fields(points),
            R"({"points":[{"int_value":6,"value_c":3.0,"value_d":4.0,"value_e":5.0,)"
            R"("value_f":8.0,"value_g":7.0,"x":1.0,"y":2.0}]})");
  EXPECT_EQ(Fields(Again(points)), Fields(points));
}

TEST(VemJsonResults, ScratchesComeBack) {
  const VemScratchFeature feature = {kWord, 1, -7, 4294967295u};
  VemScratchPrecessing settings = {1, 2.5f, 3, 4, 5, 6};
  VemVar label("deep");
  VemScratchGroup group(label);
  group.Append(feature);
  VemScratchLayer layer(settings);
  layer.Append(group);
  layer.Append(VemScratchGroup());
  VemScratchLayerArray layers;
  layers.Append(layer);
  EXPECT_EQ(
      Fields(layers),
      R"({"layers":[{"groups":[{"features":[{"head0":18446744073709551615,"head1":1,)"
      R"("sort_key":-7,"tail":4294967295}],"label":"deep"},{"features":[],"label":null}],)"
      R"("settings":{"param0":1,"param1":2.5,"param2":3,"param3":4,"param4":5,"param5":6}}]})");
  const VemScratchLayerArray again = Again(layers);
  EXPECT_EQ(Fields(again), Fields(layers));
  ASSERT_EQ(again.GetLayerNum(), 1);
  EXPECT_EQ(again[0].Settings.Param1, 2.5f);
  EXPECT_EQ(again[0].GetGroupNum(), 2);
  EXPECT_EQ(again[0][0][0].Tail, 4294967295u);
  EXPECT_EQ(Fields(Again(group)), Fields(group));
  EXPECT_EQ(Fields(Again(layer)), Fields(layer));
  EXPECT_EQ(Fields(Again(feature)), Fields(feature));
  EXPECT_EQ(Fields(Again(settings)), Fields(settings));
}

struct Fault {
  const char* document;
  const char* message;
};

TEST(VemJsonResults, FaultsAreTold) {
  const Fault faults[] = {
      {R"({"version":1,"layers":[{"settings":{}}]})", "/layers/0/settings/param0: is missing"},
      {R"({"version":1,"layers":[{"settings":{"param0":0,"param1":9,"param2":0,"param3":255,)"
       R"("param4":0,"param5":0},"groups":[{"label":"x","features":[{"head0":-1,"head1":0,)"
       R"("sort_key":0,"tail":0}]}]}]})",
       "/layers/0/groups/0/features/0/head0: expected an integer from 0 to 18446744073709551615"},
      {R"({"version":1,"layers":[{"settings":{"param0":0,"param1":9,"param2":0,"param3":255,)"
       R"("param4":0,"param5":0},"groups":[{"label":"x","features":[{"head0":1,"head1":0,)"
       R"("sort_key":0,"tail":4294967296}]}]}]})",
       "/layers/0/groups/0/features/0/tail: expected an integer from 0 to 4294967295"},
  };
  for (const Fault& fault : faults) {
    try {
      vem::from_json<VemScratchLayerArray>(json::parse(fault.document));
      ADD_FAILURE() << fault.document;
    } catch (const vem::json_error& error) {
      EXPECT_STREQ(error.what(), fault.message);
    }
  }
}

}  // namespace
