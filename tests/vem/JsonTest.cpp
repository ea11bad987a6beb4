#include "vem/json.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using nlohmann::json;

template <typename T>
T Again(const T& value) {
  return vem::from_json<T>(json::parse(vem::to_json(value).dump()));
}

std::uint64_t Bits(double number) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &number, sizeof bits);
  return bits;
}
std::uint32_t Bits(float number) {
  std::uint32_t bits = 0;
  std::memcpy(&bits, &number, sizeof bits);
  return bits;
}
double Double(std::uint64_t bits) {
  double number = 0;
  std::memcpy(&number, &bits, sizeof number);
  return number;
}
float Float(std::uint32_t bits) {
  float number = 0;
  std::memcpy(&number, &bits, sizeof number);
  return number;
}

const double kDoubles[] = {0.0,
                           -0.0,
                           1.0,
                           -1.5,
                           0.1,
                           1.0 / 3,
                           16777217.0,
                           9007199254740993.0,
                           1e300,
                           -1e-300,
                           std::numeric_limits<double>::max(),
                           std::numeric_limits<double>::lowest(),
                           std::numeric_limits<double>::min(),
                           std::numeric_limits<double>::denorm_min(),
                           std::numeric_limits<double>::epsilon(),
                           std::numeric_limits<double>::infinity(),
                           -std::numeric_limits<double>::infinity(),
                           Double(0x7ff8000000000000),
                           Double(0xfff8000000000000),
                           Double(0x7ff8000000000001),
                           Double(0x7ff0000000000001),
                           Double(0xffffffffffffffff)};

const float kFloats[] = {0.0f,
                         -0.0f,
                         0.1f,
                         1.0f / 3,
                         std::numeric_limits<float>::max(),
                         std::numeric_limits<float>::lowest(),
                         std::numeric_limits<float>::min(),
                         std::numeric_limits<float>::denorm_min(),
                         std::numeric_limits<float>::infinity(),
                         -std::numeric_limits<float>::infinity(),
                         Float(0x7fc00000),
                         Float(0xffc00000),
                         Float(0x7f800001),
                         Float(0xffffffff)};

// Passes a text through a buffer that ends where the text does, so that a read beyond shows.
VemVar TextVar(const std::string& text) { return VemVar(text.c_str()); }

TEST(VemJson, DocumentsTellVersionAndClass) {
  EXPECT_EQ(vem::to_json(VemVar(3L)).dump(), R"({"class":"VemVar","value":3,"version":1})");
  EXPECT_EQ(vem::to_json(VemCircle(1, 2, 0.5)).dump(),
            R"({"center":[1.0,2.0],"class":"VemCircle","radius":0.5,"version":1})");
}

TEST(VemJson, KindsOfControlValuesStandApart) {
  VemVarArray values;
  values.Append(3);
  values.Append(3.0);
  values.Append("3");
  values.Append(VemVar());
  values.Append(std::numeric_limits<long>::min());
  values.Append(std::numeric_limits<long>::max());
  values.Append(-0.0);
  values.Append(1e100);
  EXPECT_EQ(vem::to_json(values)["values"].dump(),
            R"([3,3.0,"3",null,-9223372036854775808,9223372036854775807,-0.0,1e+100])");

  const VemVarArray again = Again(values);
  ASSERT_EQ(again.Length(), values.Length());
  for (int i = 0; i < values.Length(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(again[i].ValType(), values[i].ValType());
  }
  EXPECT_EQ(again[0].L(), 3);
  EXPECT_EQ(again[1].D(), 3.0);
  EXPECT_STREQ(again[2].S(), "3");
  EXPECT_EQ(again[4].L(), std::numeric_limits<long>::min());
  EXPECT_EQ(again[5].L(), std::numeric_limits<long>::max());
  EXPECT_EQ(Bits(again[6].D()), Bits(-0.0));
}

TEST(VemJson, DoublesKeepEveryBit) {
  for (double number : kDoubles) {
    SCOPED_TRACE(vem::to_json(VemVar(number)).dump());
    const VemVar again = Again(VemVar(number));
    EXPECT_EQ(again.ValType(), VemVarDouble);
    EXPECT_EQ(Bits(again.D()), Bits(number));
    EXPECT_EQ(Bits(Again(VemPoint(0, number)).y), Bits(number));
  }
}

TEST(VemJson, DoublesAtRandomKeepEveryBit) {
  std::uint64_t state = 0x9e3779b97f4a7c15;
  for (int i = 0; i < 100000; ++i) {
    state = state * 6364136223846793005u + 1442695040888963407u;
    const double number = Double(state ^ state >> 29);
    const json document = vem::to_json(VemVar(number));
    ASSERT_EQ(Bits(vem::from_json<VemVar>(json::parse(document.dump())).D()), Bits(number))
        << document;
  }
}

TEST(VemJson, FloatsKeepEveryBit) {
  for (float number : kFloats) {
    VemFeaturePoint point(number, 0, 0, 0, 0, 0, 0);
    point.ValueF = number;
    SCOPED_TRACE(vem::to_json(point).dump());
    const VemFeaturePoint again = Again(point);
    EXPECT_EQ(Bits(again.x), Bits(number));
    EXPECT_EQ(Bits(again.ValueF), Bits(number));
  }
}

TEST(VemJson, NumbersThatJsonHasNotHaveNames) {
  const VemPoint point(Double(0xfff8000000000000), -std::numeric_limits<double>::infinity());
  EXPECT_EQ(vem::to_json(point)["point"].dump(), R"(["-nan","-inf"])");
  EXPECT_EQ(vem::to_json(VemVar(Double(0x7ff0000000000abc)))["value"].dump(),
            R"({"double":"nan:7ff0000000000abc"})");
  EXPECT_EQ(vem::to_json(VemVar("nan"))["value"].dump(), R"("nan")");
  // A document in memory may hold such a number itself.
  json document = {{"version", 1}, {"point", {0, 0}}};
  document["point"][0] = std::numeric_limits<double>::infinity();
  EXPECT_TRUE(std::isinf(vem::from_json<VemPoint>(document).x));
}

struct TextCase {
  const char* name;
  const char* text;
  const char* expected;
};

const TextCase kTexts[] = {
    {"Empty", "", R"("")"},
    {"Plain", "a \"quoted\" text\n", R"("a \"quoted\" text\n")"},
    {"Umlaut", "gr\xc3\xbc\xc3\x9f", "\"gr\xc3\xbc\xc3\x9f\""},
    {"FourBytes", "\xf0\x9f\x94\xa7", "\"\xf0\x9f\x94\xa7\""},
    {"Largest", "\xf4\x8f\xbf\xbf", "\"\xf4\x8f\xbf\xbf\""},
    {"Latin1", "gr\xfc\xdf", R"({"bytes":"Z3L83w=="})"},
    {"CutShort", "\xe2\x82", R"({"bytes":"4oI="})"},
    {"Overlong", "\xc0\xaf", R"({"bytes":"wK8="})"},
    {"OverlongOfThree", "\xe0\x9f\xbf", R"({"bytes":"4J+/"})"},
    {"Surrogate", "\xed\xa0\x80", R"({"bytes":"7aCA"})"},
    {"BeyondUnicode", "\xf4\x90\x80\x80", R"({"bytes":"9JCAgA=="})"},
    {"LoneContinuation", "\x80", R"({"bytes":"gA=="})"},
    {"NoSuchByte", "\xff", R"({"bytes":"/w=="})"},
};

TEST(VemJson, TextsOfAnyBytesComeBack) {
  for (const TextCase& c : kTexts) {
    SCOPED_TRACE(c.name);
    const json document = vem::to_json(VemVar(c.text));
    EXPECT_EQ(document["value"].dump(), c.expected);
    EXPECT_STREQ(Again(VemVar(c.text)).S(), c.text);
  }
}

TEST(VemJson, TextsOfEveryTwoBytesComeBack) {
  for (int first = 1; first < 256; ++first) {
    for (int second = 1; second < 256; ++second) {
      const std::string text = {static_cast<char>(first), static_cast<char>(second)};
      ASSERT_EQ(std::string(Again(TextVar(text)).S()), text) << first << ' ' << second;
    }
  }
}

TEST(VemJson, TextsOfRandomBytesComeBack) {
  std::uint32_t state = 7;
  for (int i = 0; i < 20000; ++i) {
    std::string text;
    for (int length = i % 9; length >= 0; --length) {
      state = state * 1664525u + 1013904223u;
      // Bytes from which sequences are made, more often than chance would have them.
      const unsigned char choices[] = {0xe0, 0xed, 0xf0, 0xf4, 0x8f, 0x90, 0x9f, 0xa0, 0xbf, 0x80};
      const unsigned pick = state >> 24;
      text += static_cast<char>(pick < 200 ? choices[pick % 10] : (pick | 1));
    }
    ASSERT_EQ(std::string(Again(TextVar(text)).S()), text) << i;
  }
}

TEST(VemJson, TablesKeepTheirRows) {
  Vem2DVarArray table;
  VemVarArray row;
  table.Append(row);
  row.Append(1);
  row.Append("x");
  table.Append(row);
  EXPECT_EQ(vem::to_json(table)["rows"].dump(), R"([[],[1,"x"]])");
  Vem2DVarArray again = Again(table);
  ASSERT_EQ(again.Length(), 2);
  EXPECT_EQ(again[0].Length(), 0);
  EXPECT_TRUE(again[1] == row);
}

TEST(VemJson, GeometryComesBack) {
  EXPECT_EQ(vem::to_json(VemLine(1, 2, 3, 4.5)).dump(),
            R"({"class":"VemLine","end":[3.0,4.5],"start":[1.0,2.0],"version":1})");
  const VemLine line = Again(VemLine(1, 2, 3, 4.5));
  EXPECT_EQ(line.start.x, 1);
  EXPECT_EQ(line.end.y, 4.5);

  const VemCircle circle = Again(VemCircle(1, 2, -0.5));
  EXPECT_EQ(circle.center.y, 2);
  EXPECT_EQ(circle.radius, -0.5);

  EXPECT_EQ(vem::to_json(Vem3DPoint(1, 2, 3))["point"].dump(), "[1.0,2.0,3.0]");
  Vem3DPointArray spatial;
  Vem3DPoint deep(1, 2, 3);
  spatial.Append(deep);
  Vem3DPointArray spatialAgain = Again(spatial);
  ASSERT_EQ(spatialAgain.Length(), 1);
  EXPECT_EQ(spatialAgain[0].z, 3);
}

TEST(VemJson, ContoursComeBack) {
  VemPointArray points;
  VemPoint first(1, 2);
  VemPoint second(16777217.0, 0.1);
  points.Append(first);
  points.Append(second);
  VemContour contour;
  VemContourArray contours;
  contours.Append(contour);
  contour.FromPointArray(points);
  contours.Append(contour);
  EXPECT_EQ(vem::to_json(contours)["contours"].dump(), "[[],[[1.0,2.0],[16777217.0,0.1]]]");
  EXPECT_EQ(vem::to_json(contour)["points"], vem::to_json(points)["points"]);

  const VemContourArray again = Again(contours);
  ASSERT_EQ(again.Length(), 2);
  EXPECT_EQ(again[0].Length(), 0);
  VemPointArray pointsAgain;
  VemContour(again[1]).ToPointArray(&pointsAgain);
  ASSERT_EQ(pointsAgain.Length(), 2);
  EXPECT_EQ(pointsAgain[1].x, 16777217.0);
  EXPECT_EQ(Again(points)[1].y, 0.1);
}

TEST(VemJson, FontsComeBack) {
  VemVar name("Ari\xe4l");
  VemFont font(name, 1L << 40);
  font.Flag0 = 255;
  font.Flag3 = 7;
  const VemFont again = Again(font);
  EXPECT_STREQ(again.Name.S(), "Ari\xe4l");
  EXPECT_EQ(again.Size, 1L << 40);
  EXPECT_EQ(again.Weight, 500);
  EXPECT_EQ(again.Flag0, 255);
  EXPECT_EQ(again.Flag1, 0);
  EXPECT_EQ(again.Flag3, 7);
  EXPECT_EQ(vem::to_json(VemFont()).dump(),
            R"({"class":"VemFont","flag0":0,"flag1":1,"flag2":0,"flag3":0,"name":"Times",)"
            R"("size":9,"version":1,"weight":1})");
}

TEST(VemJson, ClassesStandInDocumentsOfTheCaller) {
  std::map<std::string, std::vector<VemPoint>> marks;
  marks["left"] = {VemPoint(1, 2), VemPoint(3, 4)};
  const json document = marks;
  EXPECT_EQ(document["left"][1], vem::to_json(VemPoint(3, 4)));
  EXPECT_EQ((document.get<std::map<std::string, std::vector<VemPoint>>>()["left"][1].x), 3);

  json parts;
  parts["value"] = VemVar("text");
  EXPECT_EQ(parts["value"], vem::to_json(VemVar("text")));
  EXPECT_STREQ(parts["value"].get<VemVar>().S(), "text");
  VemVar target;
  parts["value"].get_to(target);
  EXPECT_STREQ(target.S(), "text");
}

TEST(VemJson, ClassesStandInOrderedDocuments) {
  nlohmann::ordered_json parts;
  parts["z"] = VemPoint(1, 2.5);
  parts["a"] = vem::to_json(VemVar("text"));
  EXPECT_EQ(parts["z"].get<VemPoint>().y, 2.5);
  EXPECT_STREQ(vem::from_json<VemVar>(parts["a"]).S(), "text");
  VemVar target;
  vem::from_json(parts["a"], target);
  EXPECT_STREQ(target.S(), "text");
  EXPECT_EQ(parts.begin().key(), "z");
}

TEST(VemJson, OnlyClassesOfTheLibraryHaveDocuments) {
  EXPECT_TRUE(vem::is_json_class<VemVar>::value);
  EXPECT_TRUE(vem::is_json_class<VemScratchLayerArray>::value);
  EXPECT_FALSE(vem::is_json_class<int>::value);
  EXPECT_FALSE(vem::is_json_class<std::string>::value);
}

TEST(VemJson, AFailedReadLeavesTheValue) {
  VemCircle circle(1, 2, 3);
  EXPECT_THROW(vem::from_json(json::parse(R"({"version":1,"center":[7,8],"radius":"x"})"), circle),
               vem::json_error);
  EXPECT_EQ(circle.center.x, 1);
  EXPECT_EQ(circle.radius, 3);
}

struct Fault {
  const char* document;
  const char* message;
};

template <typename T>
std::string Message(const char* document) {
  try {
    vem::from_json<T>(json::parse(document));
  } catch (const std::invalid_argument& error) {
    return error.what();
  }
  return "no error";
}

template <typename T, std::size_t count>
void TestFaults(const Fault (&faults)[count]) {
  for (const Fault& fault : faults) {
    EXPECT_EQ(Message<T>(fault.document), fault.message) << fault.document;
  }
}

TEST(VemJson, FaultsOfTheHeadAreTold) {
  const Fault faults[] = {
      {"3", "expected an object"},
      {"[]", "expected an object"},
      {"{}", "/version: is missing"},
      {R"({"version":2,"value":3})", "/version: expected version 1"},
      {R"({"version":"1","value":3})", "/version: expected version 1"},
      {R"({"version":1.0,"value":3})", "/version: expected version 1"},
      {R"({"version":true,"value":3})", "/version: expected version 1"},
      {R"({"version":1,"class":"VemROI","value":3})", "/class: expected \"VemVar\""},
      {R"({"version":1,"class":7,"value":3})", "/class: expected \"VemVar\""},
      {R"({"version":1})", "/value: is missing"},
      {R"({"version":1,"value":3,"note":"x"})", "/note: is no field of this object"},
      {R"({"version":1,"value":3,"a/b~c":"x"})", "/a~1b~0c: is no field of this object"},
      {R"({"version":1,"value":3})", "no error"},
      {R"({"version":1,"class":"VemVar","value":3})", "no error"},
  };
  TestFaults<VemVar>(faults);
}

TEST(VemJson, FaultsOfValuesAreTold) {
  const Fault faults[] = {
      {R"({"version":1,"value":true})", "/value: expected a number, a text or null"},
      {R"({"version":1,"value":[]})", "/value: expected a number, a text or null"},
      {R"({"version":1,"value":9223372036854775808})",
       "/value: expected an integer from -9223372036854775808 to 9223372036854775807"},
      {R"({"version":1,"value":"a\u0000b"})", "/value: a text holds no zero byte"},
      {R"({"version":1,"value":{}})", "/value/double: is missing"},
      {R"({"version":1,"value":{"double":"x"}})", "/value/double: expected a number"},
      {R"({"version":1,"value":{"double":"nan:"}})",
       "/value/double: expected the bits of a NaN behind \"nan:\""},
      {R"({"version":1,"value":{"double":"nan:7ff0000000000000"}})",
       "/value/double: expected the bits of a NaN behind \"nan:\""},
      {R"({"version":1,"value":{"double":"nan:7ff80000000000000"}})",
       "/value/double: expected the bits of a NaN behind \"nan:\""},
      {R"({"version":1,"value":{"double":"nan:7FF8000000000001"}})",
       "/value/double: expected hexadecimal digits behind \"nan:\""},
      {R"({"version":1,"value":{"double":"inf","x":1}})", "/value/x: is no field of this object"},
      {R"({"version":1,"value":{"bytes":7}})", "/value/bytes: expected bytes in base64"},
      {R"({"version":1,"value":{"bytes":"gA="}})",
       "/value/bytes: expected base64 with its padding"},
      {R"({"version":1,"value":{"bytes":"g==="}})", "/value/bytes: expected base64"},
      {R"({"version":1,"value":{"bytes":"===="}})", "/value/bytes: expected base64"},
      {R"({"version":1,"value":{"bytes":"gB=="}})", "/value/bytes: expected base64"},
      {R"({"version":1,"value":{"bytes":"g A="}})", "/value/bytes: expected base64"},
      {R"({"version":1,"value":{"bytes":"AA=="}})", "/value: a text holds no zero byte"},
  };
  TestFaults<VemVar>(faults);
}

TEST(VemJson, FaultsInListsTellTheIndex) {
  const Fault faults[] = {
      {R"({"version":1,"points":{}})", "/points: expected a list"},
      {R"({"version":1,"points":[[1,2],[3]]})", "/points/1: expected x and y"},
      {R"({"version":1,"points":[[1,2],[3,4,5]]})", "/points/1: expected x and y"},
      {R"({"version":1,"points":[[1,2],[3,null]]})", "/points/1/1: expected a number"},
      {R"({"version":1,"points":[[1,2],7]})", "/points/1: expected a list"},
  };
  TestFaults<VemPointArray>(faults);
}

TEST(VemJson, FaultsOfFontsAreTold) {
  const Fault faults[] = {
      {R"({"version":1,"name":"Times","size":9.5,"weight":1,"flag0":0,"flag1":0,"flag2":0,"flag3":0})",
       "/size: expected an integer"},
      {R"({"version":1,"name":"Times","size":9,"weight":1,"flag0":256,"flag1":0,"flag2":0,"flag3":0})",
       "/flag0: expected an integer from 0 to 255"},
      {R"({"version":1,"name":"Times","size":9,"weight":1,"flag0":-1,"flag1":0,"flag2":0,"flag3":0})",
       "/flag0: expected an integer from 0 to 255"},
      {R"({"version":1,"name":"Times","size":9})", "/weight: is missing"},
  };
  TestFaults<VemFont>(faults);
}

TEST(VemJson, FaultsOfFloatsAreTold) {
  const char* text =
      R"({"version":1,"x":1e39,"y":0,"value_c":0,"value_d":0,"value_e":0,"value_f":0,"value_g":0,)"
      R"("int_value":0})";
  EXPECT_EQ(Message<VemFeaturePoint>(text), "/x: expected a number that 32 bits can hold");
}

TEST(VemJson, ErrorsTellTheirPath) {
  try {
    vem::from_json<VemPointArray>(json::parse(R"({"version":1,"points":[[1,2],[3,"x"]]})"));
    FAIL();
  } catch (const vem::json_error& error) {
    EXPECT_EQ(error.path(), "/points/1/1");
    EXPECT_STREQ(error.what(), "/points/1/1: expected a number");
  }
  try {
    vem::from_json<VemPointArray>(json(3));
    FAIL();
  } catch (const vem::json_error& error) {
    EXPECT_EQ(error.path(), "");
  }
}

}  // namespace
