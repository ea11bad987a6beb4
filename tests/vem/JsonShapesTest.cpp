#include "vem/json.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "vem/region.h"

namespace {

using nlohmann::json;

const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

template <typename T>
T Again(const T& value) {
  return vem::from_json<T>(json::parse(vem::to_json(value).dump()));
}

// The document without what every document has.
template <typename T>
std::string Fields(const T& value) {
  json document = vem::to_json(value);
  document.erase("version");
  document.erase("class");
  return document.dump();
}

template <typename T>
std::string Message(const std::string& document) {
  try {
    vem::from_json<T>(json::parse(document));
  } catch (const vem::json_error& error) {
    return error.what();
  }
  return "no error";
}

VemPointArray Points(const std::vector<VemPoint>& from) {
  VemPointArray points;
  for (VemPoint point : from) points.Append(point);
  return points;
}

VemVarArray Values(const std::vector<VemVar>& from) {
  VemVarArray values;
  for (const VemVar& value : from) values.Append(value);
  return values;
}

// Kinds and bits, not VemVar's idea of what is equal.
void ExpectSame(const VemVarArray& a, const VemVarArray& b) {
  ASSERT_EQ(a.Length(), b.Length());
  for (int i = 0; i < a.Length(); ++i) {
    SCOPED_TRACE(i);
    ASSERT_EQ(a[i].ValType(), b[i].ValType());
    if (a[i].ValType() == VemVarLong) {
      EXPECT_EQ(a[i].L(), b[i].L());
    } else if (a[i].ValType() == VemVarString) {
      EXPECT_STREQ(a[i].S(), b[i].S());
    } else if (a[i].ValType() == VemVarDouble) {
      const double x = a[i].D();
      const double y = b[i].D();
      EXPECT_EQ(std::memcmp(&x, &y, sizeof x), 0) << x << " and " << y;
    }
  }
}

void ExpectSame(const VemROI& a, const VemROI& b) {
  const IVemROIPara& x = vem::parts(a);
  const IVemROIPara& y = vem::parts(b);
  EXPECT_EQ(x.Type, y.Type);
  ExpectSame(x.Params, y.Params);
  if (x.Type != VemROIMask) return;
  EXPECT_EQ(x.Width, y.Width);
  EXPECT_EQ(x.Height, y.Height);
  ExpectSame(x.Rows, y.Rows);
  ExpectSame(x.FirstColumns, y.FirstColumns);
  ExpectSame(x.LastColumns, y.LastColumns);
}

void ExpectSame(const VemOverlay& a, const VemOverlay& b) {
  const IVemOverlay& x = vem::parts(a);
  const IVemOverlay& y = vem::parts(b);
  EXPECT_EQ(x.Type, y.Type);
  ExpectSame(x.Params, y.Params);
  EXPECT_EQ(x.PenColor0, y.PenColor0);
  EXPECT_EQ(x.PenColor1, y.PenColor1);
  EXPECT_EQ(x.PenColor2, y.PenColor2);
  EXPECT_EQ(x.PenWidth, y.PenWidth);
  EXPECT_EQ(x.BrushColor0, y.BrushColor0);
  EXPECT_EQ(x.BrushColor1, y.BrushColor1);
  EXPECT_EQ(x.BrushColor2, y.BrushColor2);
  EXPECT_EQ(x.BrushMode, y.BrushMode);
  EXPECT_EQ(x.RedrawPen, y.RedrawPen);
  EXPECT_EQ(x.RedrawBrush, y.RedrawBrush);
  if (x.Type == VemOverlayImage) {
    EXPECT_EQ(x.Image.size(), y.Image.size());
    EXPECT_EQ(x.Image.type(), y.Image.type());
    if (!x.Image.empty()) {
      EXPECT_EQ(cv::norm(x.Image, y.Image, cv::NORM_INF), 0);
    }
  }
  if (x.Type != VemOverlayRegion) return;
  EXPECT_EQ(x.Width, y.Width);
  EXPECT_EQ(x.Height, y.Height);
  ExpectSame(x.Rows, y.Rows);
  ExpectSame(x.FirstColumns, y.FirstColumns);
  ExpectSame(x.LastColumns, y.LastColumns);
}

struct RoiCase {
  const char* name;
  std::function<void(VemROI&)> make;
  const char* fields;
};

VemPoint kLow(1, 2);
VemPoint kHigh(16777217.0, 0.1 + 5);
VemPoint kOdd(-0.0, kNaN);

const RoiCase kRois[] = {
    {"None", [](VemROI&) {}, R"({"type":"none"})"},
    {"Point", [](VemROI& roi) { roi.GenPoint(kHigh); },
     R"({"point":[16777217.0,5.1],"type":"point"})"},
    {"PointOfNoNumbers", [](VemROI& roi) { roi.GenPoint(kOdd); },
     R"({"point":[-0.0,"nan"],"type":"point"})"},
    {"Rect1", [](VemROI& roi) { roi.GenRect1(kLow, kHigh); },
     R"({"p1":[1.0,2.0],"p2":[16777217.0,5.1],"type":"rect1"})"},
    {"Circle", [](VemROI& roi) { roi.GenCircle(kHigh, kInf); },
     R"({"center":[16777217.0,5.1],"radius":"inf","type":"circle"})"},
    {"Torus", [](VemROI& roi) { roi.GenTorus(kHigh, 1.25, 7, -30, 0); },
     R"({"center":[16777217.0,5.1],"inner_radius":1.25,"outer_radius":7.0,"start_angle":-30.0,)"
     R"("sweep_angle":0.0,"type":"torus"})"},
    {"Rect2", [](VemROI& roi) { roi.GenRect2(kHigh, 10, 4, kNaN); },
     R"({"angle":"nan","center":[16777217.0,5.1],"length1":10.0,"length2":4.0,"type":"rect2"})"},
    {"Line", [](VemROI& roi) { roi.GenLine(kLow, kHigh); },
     R"({"p1":[1.0,2.0],"p2":[16777217.0,5.1],"type":"line"})"},
    {"LineOfNoNumbers", [](VemROI& roi) { roi.GenLine(kOdd, kOdd); },
     R"({"p1":[-0.0,"nan"],"p2":[-0.0,"nan"],"type":"line"})"},
    {"Ellipse", [](VemROI& roi) { roi.GenEllipse(kHigh, 3, 8, 45); },
     R"({"angle":45.0,"center":[16777217.0,5.1],"radius1":3.0,"radius2":8.0,"type":"ellipse"})"},
    {"Arc", [](VemROI& roi) { roi.GenArc(kHigh, 3, 10, 270); },
     R"({"center":[16777217.0,5.1],"radius":3.0,"start_angle":10.0,"sweep_angle":270.0,)"
     R"("type":"arc"})"},
    {"Polygon",
     [](VemROI& roi) {
       VemPointArray points = Points({kLow, kHigh, VemPoint(0, 9)});
       roi.GenPolygon(points);
     },
     R"({"points":[[1.0,2.0],[16777217.0,5.1],[0.0,9.0]],"type":"polygon"})"},
    {"Irregular",
     [](VemROI& roi) {
       VemPointArray points = Points({kLow, kHigh, VemPoint(0, 9)});
       roi.GenIrregular(points);
     },
     R"({"points":[[1.0,2.0],[16777217.0,5.1],[0.0,9.0]],"type":"irregular"})"},
    {"Mask",
     [](VemROI& roi) {
       VemVarArray rows = Values({1, 2, 2});
       VemVarArray first = Values({3, 4, -7});
       VemVarArray last = Values({9, 3, 100});
       roi.GenMask(rows, first, last, 12, 8);
     },
     R"({"first_columns":[3,4,-7],"height":8,"last_columns":[9,3,100],"rows":[1,2,2],)"
     R"("type":"mask","width":12})"},
    {"EmptyMask",
     [](VemROI& roi) {
       VemVarArray none;
       roi.GenMask(none, none, none, 2, 2);
     },
     R"({"first_columns":[],"height":2,"last_columns":[],"rows":[],"type":"mask","width":2})"},
    {"CircleThatLostItsNumbers",
     [](VemROI& roi) {
       roi.GenCircle(kHigh, 3);
       VemPointArray two = Points({kLow, kHigh});
       roi.GenPolygon(two);
     },
     R"({"numbers":[],"type":"circle"})"},
    {"PolygonOverAMask",
     [](VemROI& roi) {
       VemVarArray rows = Values({1});
       roi.GenMask(rows, rows, rows, 12, 8);
       VemPointArray points = Points({kLow, kHigh, VemPoint(0, 9)});
       roi.GenPolygon(points);
     },
     R"({"points":[[1.0,2.0],[16777217.0,5.1],[0.0,9.0]],"type":"polygon"})"},
};

TEST(VemJsonRoi, EveryShapeComesBack) {
  VemROIArray all;
  for (const RoiCase& c : kRois) {
    SCOPED_TRACE(c.name);
    VemROI roi;
    c.make(roi);
    EXPECT_EQ(Fields(roi), c.fields);
    ExpectSame(Again(roi), roi);
    all.Append(roi);
  }
  const VemROIArray again = Again(all);
  ASSERT_EQ(again.Length(), all.Length());
  for (int i = 0; i < all.Length(); ++i) {
    SCOPED_TRACE(kRois[i].name);
    ExpectSame(again[i], all[i]);
  }
}

struct OverlayCase {
  const char* name;
  std::function<void(VemOverlay&)> make;
  const char* fields;
};

VemImage SmallImage() {
  unsigned char pixels[] = {0, 1, 2, 253, 254, 255};
  return VemImage(pixels, 0, 1, 2, 3, VemImageType8U);
}

const OverlayCase kOverlays[] = {
    {"None", [](VemOverlay&) {}, R"({"type":"none"})"},
    {"Point", [](VemOverlay& o) { o.GenPoint(kHigh); },
     R"({"point":[16777217.0,5.1],"type":"point"})"},
    {"ArrowLine", [](VemOverlay& o) { o.GenArrowLine(kLow, kHigh); },
     R"({"p1":[1.0,2.0],"p2":[16777217.0,5.1],"type":"arrow_line"})"},
    {"Line", [](VemOverlay& o) { o.GenLine(kLow, kHigh); },
     R"({"p1":[1.0,2.0],"p2":[16777217.0,5.1],"type":"line"})"},
    {"Rect1", [](VemOverlay& o) { o.GenRect1(kLow, kHigh); },
     R"({"p1":[1.0,2.0],"p2":[16777217.0,5.1],"type":"rect1"})"},
    {"RakeRect1", [](VemOverlay& o) { o.GenRakeRect1(kLow, kHigh, 3, 2); },
     R"({"count":2,"mode":3,"p1":[1.0,2.0],"p2":[16777217.0,5.1],"type":"rake_rect1"})"},
    {"Circle", [](VemOverlay& o) { o.GenCircle(kHigh, 2.5); },
     R"({"center":[16777217.0,5.1],"radius":2.5,"type":"circle"})"},
    {"Ellipse", [](VemOverlay& o) { o.GenEllipse(kHigh, 2, 3, 4); },
     R"({"angle":4.0,"center":[16777217.0,5.1],"radius1":2.0,"radius2":3.0,"type":"ellipse"})"},
    {"Polygon",
     [](VemOverlay& o) {
       o.GenPolygon(Points({kLow, kHigh, kLow}));
     },
     R"({"points":[[1.0,2.0],[16777217.0,5.1],[1.0,2.0]],"type":"polygon"})"},
    {"PolyLine",
     [](VemOverlay& o) {
       o.GenPolyLine(Points({kLow, kHigh, kLow}));
     },
     R"({"points":[[1.0,2.0],[16777217.0,5.1],[1.0,2.0]],"type":"poly_line"})"},
    {"Rect2", [](VemOverlay& o) { o.GenRect2(kHigh, 2, 3, 4); },
     R"({"angle":4.0,"center":[16777217.0,5.1],"length1":2.0,"length2":3.0,"type":"rect2"})"},
    {"RakeRect2", [](VemOverlay& o) { o.GenRakeRect2(kHigh, 2, 3, 4, 0, 1000); },
     R"({"angle":4.0,"center":[16777217.0,5.1],"count":1000,"length1":2.0,"length2":3.0,)"
     R"("mode":0,"type":"rake_rect2"})"},
    {"Torus", [](VemOverlay& o) { o.GenTorus(kHigh, 2, 3, 4, 5); },
     R"({"center":[16777217.0,5.1],"inner_radius":2.0,"outer_radius":3.0,"start_angle":4.0,)"
     R"("sweep_angle":5.0,"type":"torus"})"},
    {"SpokeTorus", [](VemOverlay& o) { o.GenSpokeTorus(kHigh, 2, 3, 4, 5, 4, 6); },
     R"({"center":[16777217.0,5.1],"count":6,"inner_radius":2.0,"mode":4,"outer_radius":3.0,)"
     R"("start_angle":4.0,"sweep_angle":5.0,"type":"spoke_torus"})"},
    {"Arc", [](VemOverlay& o) { o.GenArc(kHigh, 2, 3, 4); },
     R"({"center":[16777217.0,5.1],"radius":2.0,"start_angle":3.0,"sweep_angle":4.0,)"
     R"("type":"arc"})"},
    {"Irregular",
     [](VemOverlay& o) {
       o.GenIrregular(Points({kLow, kHigh, kLow}));
     },
     R"({"points":[[1.0,2.0],[16777217.0,5.1],[1.0,2.0]],"type":"irregular"})"},
    {"Text",
     [](VemOverlay& o) {
       VemFont font;
       o.GenText(kHigh, "gr\xfc\xdf", font);
     },
     R"({"font":{"flag1":1,"flag2":0,"flag3":0,"name":"Times","size":9,"weight":1},)"
     R"("point":[16777217.0,5.1],"text":{"bytes":"Z3L83w=="},"type":"text"})"},
    {"Image",
     [](VemOverlay& o) {
       VemImage image = SmallImage();
       o.GenImage(kHigh, image);
     },
     R"({"image":{"channels":3,"depth":"8U","height":1,"pixels":"AAEC/f7/","width":2},)"
     R"("point":[16777217.0,5.1],"type":"image"})"},
    {"Region",
     [](VemOverlay& o) {
       VemVarArray rows = Values({1, 2});
       VemRegion region(7, 8, rows, rows, rows);
       o.GenRegion(region);
     },
     R"({"region":{"first_columns":[1,2],"height":8,"last_columns":[1,2],"rows":[1,2],"width":7},)"
     R"("type":"region"})"},
    {"PenAndBrush",
     [](VemOverlay& o) {
       o.SetPen(1, -2, 3, 4);
       o.SetBrush(5, 6, 7, 8);
       o.GenCircle(kLow, 1);
     },
     R"({"brush":{"color":[5,6,7],"mode":8},"center":[1.0,2.0],)"
     R"("pen":{"color":[1,-2,3],"width":4},"radius":1.0,"type":"circle"})"},
    {"ThePenOfANewOverlayChosen", [](VemOverlay& o) { o.SetPen(0, 0, 255, 1); },
     R"({"pen":{"color":[0,0,255],"width":1},"type":"none"})"},
    {"APenThatNobodyChose", [](VemOverlay& o) { vem::parts(o).PenWidth = 5; },
     R"({"pen":{"chosen":false,"color":[0,0,255],"width":5},"type":"none"})"},
    {"ArcOfARoi",
     [](VemOverlay& o) {
       VemROI roi;
       roi.GenArc(kHigh, 2, 3, 4);
       o.FromROI(roi);
     },
     R"({"center":[5.1,16777217.0],"radius":2.0,"start_angle":3.0,"sweep_angle":4.0,)"
     R"("type":"arc"})"},
    {"MaskOfARoiOverARegion",
     [](VemOverlay& o) {
       VemVarArray rows = Values({1});
       VemRegion region(7, 8, rows, rows, rows);
       o.GenRegion(region);
       VemROI roi;
       roi.GenMask(rows, rows, rows, 12, 12);
       o.FromROI(roi);
     },
     R"({"region":{"first_columns":[1],"height":8,"last_columns":[1],"rows":[1],"width":7},)"
     R"("type":"region"})"},
    {"NothingOverNumbers",
     [](VemOverlay& o) {
       o.GenCircle(kLow, 3);
       o.FromROI(VemROI());
     },
     R"({"numbers":[2.0,1.0,3.0],"type":"none"})"},
    {"ContourOverACircle",
     [](VemOverlay& o) {
       o.GenCircle(kLow, 3);
       VemPointArray points = Points({kHigh});
       VemContour contour;
       contour.FromPointArray(points);
       o.FromContour(contour);
     },
     R"({"numbers":[2.0,1.0,3.0,5.1,16777217.0],"type":"irregular"})"},
    {"ContourOverAText",
     [](VemOverlay& o) {
       VemFont font;
       o.GenText(kLow, "x", font);
       o.FromContour(VemContour());
     },
     R"({"numbers":[2.0,1.0,"x",9,1,1,0,0,"Times"],"type":"irregular"})"},
};

TEST(VemJsonOverlay, EveryElementComesBack) {
  VemOverlayPath path;
  for (const OverlayCase& c : kOverlays) {
    SCOPED_TRACE(c.name);
    VemOverlay overlay;
    c.make(overlay);
    EXPECT_EQ(Fields(overlay), c.fields);
    ExpectSame(Again(overlay), overlay);
    path.AddOverlay(overlay);
  }
  VemOverlayPath again = Again(path);
  ASSERT_EQ(again.Length(), path.Length());
  for (int i = 0; i < path.Length(); ++i) {
    SCOPED_TRACE(kOverlays[i].name);
    ExpectSame(again[i], path[i]);
  }
}

TEST(VemJsonOverlay, PixelsUnderAnotherTypeStayBehind) {
  VemOverlay overlay;
  VemImage image = SmallImage();
  overlay.GenImage(kLow, image);
  overlay.GenPoint(kLow);
  EXPECT_EQ(Fields(overlay), R"({"point":[1.0,2.0],"type":"point"})");
}

TEST(VemJsonOverlay, FontsMayBeLeftOut) {
  const char* document = R"({"version":1,"type":"text","point":[3,4],"text":"x"})";
  VemOverlay overlay = vem::from_json<VemOverlay>(json::parse(document));
  VemPoint point;
  VemVar text;
  VemFont font;
  font.Size = 0;
  overlay.GetText(&point, &text, &font);
  EXPECT_STREQ(text.S(), "x");
  EXPECT_EQ(font.Size, 9);
  EXPECT_STREQ(font.Name.S(), "Times");
}

TEST(VemJsonOverlay, DocumentsMayBeWrittenByHand) {
  const char* document =
      R"({"version": 1, "class": "VemOverlayPath", "overlays": [
            {"type": "circle", "center": [120, 80], "radius": 30.5,
             "pen": {"color": [0, 0, 255], "width": 2}},
            {"type": "text", "point": [10, 20], "text": "ok",
             "font": {"name": "Times", "size": 12}}]})";
  VemOverlayPath path = vem::from_json<VemOverlayPath>(json::parse(document));
  ASSERT_EQ(path.Length(), 2);
  VemPoint center;
  double radius = 0;
  EXPECT_TRUE(path[0].GetCircle(&center, &radius));
  EXPECT_EQ(center.x, 120);
  EXPECT_EQ(radius, 30.5);
  EXPECT_TRUE(vem::parts(path[0]).RedrawPen);
  EXPECT_EQ(vem::parts(path[0]).PenWidth, 2);
  EXPECT_FALSE(vem::parts(path[0]).RedrawBrush);
  VemVar text;
  VemFont font;
  path[1].GetText(&center, &text, &font);
  EXPECT_EQ(font.Size, 12);
  EXPECT_EQ(font.Weight, 1);
  // Coordinates are stored as doubles, also where the document has integers.
  EXPECT_EQ(vem::parts(path[0]).Params[0].ValType(), VemVarDouble);
}

struct Fault {
  const char* document;
  const char* message;
};

template <typename T, std::size_t count>
void TestFaults(const Fault (&faults)[count]) {
  for (const Fault& fault : faults) {
    EXPECT_EQ(Message<T>(fault.document), fault.message) << fault.document;
  }
}

TEST(VemJsonRoi, FaultsAreTold) {
  const Fault faults[] = {
      {R"({"version":1})", "/type: is missing"},
      {R"({"version":1,"type":7})", "/type: expected the name of a type"},
      {R"({"version":1,"type":"star"})", "/type: is no type of a region of interest"},
      {R"({"version":1,"type":"arrow_line"})", "/type: is no type of a region of interest"},
      {R"({"version":1,"type":"none","radius":3})", "/radius: is no field of this object"},
      {R"({"version":1,"type":"circle","center":[1,2]})", "/radius: is missing"},
      {R"({"version":1,"type":"circle","center":[1,2],"radius":0})",
       "/radius: expected a number above 0"},
      {R"({"version":1,"type":"circle","center":[1,2],"radius":"nan"})",
       "/radius: expected a number above 0"},
      {R"({"version":1,"type":"circle","center":[1],"radius":1})", "/center: expected x and y"},
      {R"({"version":1,"type":"circle","center":[1,{}],"radius":1})",
       "/center/1: expected a number"},
      {R"({"version":1,"type":"circle","center":[1,2],"radius":1,"angle":1})",
       "/angle: is no field of this object"},
      {R"({"version":1,"type":"rect1","p1":[1,2],"p2":[1,3]})",
       "/p2: expected a point greater than p1 in x and in y"},
      {R"({"version":1,"type":"line","p1":[1,2],"p2":[1,2]})",
       "/p2: expected a point other than p1"},
      {R"({"version":1,"type":"torus","center":[1,2],"inner_radius":2,"outer_radius":2,)"
       R"("start_angle":0,"sweep_angle":1})",
       "/outer_radius: expected a radius above the inner one"},
      {R"({"version":1,"type":"arc","center":[1,2],"radius":2,"start_angle":0,"sweep_angle":-1})",
       "/sweep_angle: expected a number of at least 0"},
      {R"({"version":1,"type":"polygon","points":[[1,2],[3,4]]})",
       "/points: expected at least 3 points"},
      {R"({"version":1,"type":"circle","numbers":[1,true]})",
       "/numbers/1: expected a number, a text or null"},
      {R"({"version":1,"type":"circle","numbers":[2.0,1.0,-3.0]})",
       "/numbers: expected the numbers of a shape \"circle\", or none"},
      {R"({"version":1,"type":"circle","numbers":[2,1,3]})",
       "/numbers: expected the numbers of a shape \"circle\", or none"},
      {R"({"version":1,"type":"rect1","numbers":[2.0,1.0,3.0]})",
       "/numbers: expected the numbers of a shape \"rect1\", or none"},
      {R"({"version":1,"type":"torus","numbers":[2.0,1.0,3.0,2.0,0.0,1.0]})",
       "/numbers: expected the numbers of a shape \"torus\", or none"},
      {R"({"version":1,"type":"polygon","numbers":[2.0]})",
       "/numbers: expected the numbers of a shape \"polygon\", or none"},
      {R"({"version":1,"type":"circle","numbers":[2.0,1.0,3.0]})", "no error"},
      {R"({"version":1,"type":"circle","numbers":[],"radius":1})",
       "/radius: is no field of this object"},
      {R"({"version":1,"type":"mask","width":1,"height":2,"rows":[],"first_columns":[],)"
       R"("last_columns":[]})",
       "/width: expected an integer of at least 2"},
      {R"({"version":1,"type":"mask","width":2,"height":2,"rows":[1],"first_columns":[1],)"
       R"("last_columns":[]})",
       "/last_columns: expected as many as there are rows"},
      {R"({"version":1,"type":"mask","width":2,"height":2147483648,"rows":[],"first_columns":[],)"
       R"("last_columns":[]})",
       "/height: expected an integer from -2147483648 to 2147483647"},
  };
  TestFaults<VemROI>(faults);
}

TEST(VemJsonOverlay, FaultsAreTold) {
  const Fault faults[] = {
      {R"({"version":1,"overlays":{}})", "/overlays: expected a list"},
      {R"({"version":1,"overlays":[{"type":"none"},{}]})", "/overlays/1/type: is missing"},
      {R"({"version":1,"overlays":[{"type":"mask"}]})",
       "/overlays/0/type: is no type of an overlay"},
      {R"({"version":1,"overlays":[{"type":"text","point":[1,2],"text":"x","font":{"size":"9"}}]})",
       "/overlays/0/font/size: expected an integer"},
      {R"({"version":1,"overlays":[{"type":"text","point":[1,2],"text":"x","font":{"flag0":1}}]})",
       "/overlays/0/font/flag0: is no field of this object"},
      {R"({"version":1,"overlays":[{"type":"text","point":[1,2],"text":3}]})",
       "/overlays/0/text: expected a text"},
      {R"({"version":1,"overlays":[{"type":"rake_rect1","p1":[1,2],"p2":[3,4],"mode":4,"count":2}]})",
       "/overlays/0/mode: expected an integer from 0 to 3"},
      {R"({"version":1,"overlays":[{"type":"rake_rect1","p1":[1,2],"p2":[3,4],"mode":1,"count":1}]})",
       "/overlays/0/count: expected an integer from 2 to 2147483647"},
      {R"({"version":1,"overlays":[{"type":"none","pen":{"color":[1,2],"width":1}}]})",
       "/overlays/0/pen/color: expected 3 integers"},
      {R"({"version":1,"overlays":[{"type":"none","pen":{"color":[1,2,3]}}]})",
       "/overlays/0/pen/width: is missing"},
      {R"({"version":1,"overlays":[{"type":"none","pen":{"color":[1,2,3],"width":1,"chosen":1}}]})",
       "/overlays/0/pen/chosen: expected true or false"},
      {R"({"version":1,"overlays":[{"type":"none","version":1}]})",
       "/overlays/0/version: is no field of this object"},
      {R"({"version":1,"overlays":[{"type":"image","point":[1,2]}]})",
       "/overlays/0/image: is missing"},
      {R"({"version":1,"overlays":[{"type":"circle","numbers":["x"]}]})",
       "/overlays/0/numbers: expected the numbers of a shape \"circle\", or none"},
      {R"({"version":1,"overlays":[{"type":"rake_rect1","numbers":[1.0,1.0,2.0,2.0,4,2]}]})",
       "/overlays/0/numbers: expected the numbers of a shape \"rake_rect1\", or none"},
      {R"({"version":1,"overlays":[{"type":"text","numbers":[1.0,2.0]}]})",
       "/overlays/0/point: is missing"},
      {R"({"version":1,"overlays":[{"type":"irregular","numbers":[1.0,"x"]}]})", "no error"},
      {R"({"version":1,"overlays":[{"type":"region","region":{"width":1}}]})",
       "/overlays/0/region/height: is missing"},
  };
  TestFaults<VemOverlayPath>(faults);
}

// What a document may tell of a shape is what its generator takes, number by number.
struct Attempt {
  const char* type;
  std::function<bool(const double*)> generate;  // Whether five numbers and a point are taken.
  std::function<json(const double*)> members;
};

VemPoint At(const double* n) { return VemPoint(n[0], n[1]); }
json Listed(double number) { return vem::json_detail::write_number(number); }
json Listed(const double* n) { return json::array({Listed(n[0]), Listed(n[1])}); }

const Attempt kAttempts[] = {
    {"rect1",
     [](const double* n) {
       VemROI roi;
       VemPoint a = At(n);
       VemPoint b = At(n + 2);
       roi.GenRect1(a, b);
       return roi.ROIType() == VemROIRect1;
     },
     [](const double* n) {
       return json{{"p1", Listed(n)}, {"p2", Listed(n + 2)}};
     }},
    {"line",
     [](const double* n) {
       VemROI roi;
       VemPoint a = At(n);
       VemPoint b = At(n + 2);
       roi.GenLine(a, b);
       return roi.ROIType() == VemROILine;
     },
     [](const double* n) {
       return json{{"p1", Listed(n)}, {"p2", Listed(n + 2)}};
     }},
    {"rect2",
     [](const double* n) {
       VemROI roi;
       VemPoint a = At(n);
       roi.GenRect2(a, n[2], n[3], n[4]);
       return roi.ROIType() == VemROIRect2;
     },
     [](const double* n) {
       return json{{"center", Listed(n)},
                   {"length1", Listed(n[2])},
                   {"length2", Listed(n[3])},
                   {"angle", Listed(n[4])}};
     }},
    {"ellipse",
     [](const double* n) {
       VemROI roi;
       VemPoint a = At(n);
       roi.GenEllipse(a, n[2], n[3], n[4]);
       return roi.ROIType() == VemROIEllipse;
     },
     [](const double* n) {
       return json{{"center", Listed(n)},
                   {"radius1", Listed(n[2])},
                   {"radius2", Listed(n[3])},
                   {"angle", Listed(n[4])}};
     }},
    {"torus",
     [](const double* n) {
       VemROI roi;
       VemPoint a = At(n);
       roi.GenTorus(a, n[2], n[3], n[0], n[4]);
       return roi.ROIType() == VemROITorus;
     },
     [](const double* n) {
       return json{{"center", Listed(n)},
                   {"inner_radius", Listed(n[2])},
                   {"outer_radius", Listed(n[3])},
                   {"start_angle", Listed(n[0])},
                   {"sweep_angle", Listed(n[4])}};
     }},
    {"arc",
     [](const double* n) {
       VemROI roi;
       VemPoint a = At(n);
       roi.GenArc(a, n[2], n[3], n[4]);
       return roi.ROIType() == VemROIArc;
     },
     [](const double* n) {
       return json{{"center", Listed(n)},
                   {"radius", Listed(n[2])},
                   {"start_angle", Listed(n[3])},
                   {"sweep_angle", Listed(n[4])}};
     }},
};

TEST(VemJsonRoi, DocumentsAreRefusedWhereGeneratorsRefuse) {
  const double numbers[] = {-kInf, -1, 0, 1, 2, kNaN};
  for (const Attempt& attempt : kAttempts) {
    SCOPED_TRACE(attempt.type);
    int taken = 0;
    for (int code = 0; code < 6 * 6 * 6 * 6 * 6; ++code) {
      double n[5];
      for (int i = 0, rest = code; i < 5; ++i, rest /= 6) n[i] = numbers[rest % 6];
      json document = attempt.members(n);
      document["version"] = 1;
      document["type"] = attempt.type;
      const bool read = Message<VemROI>(document.dump()) == "no error";
      ASSERT_EQ(read, attempt.generate(n)) << document;
      taken += read;
    }
    EXPECT_GT(taken, 0);
  }
}

TEST(VemJsonRoi, NumbersOfNoShapeAreNotWritten) {
  VemROI roi;
  roi.GenCircle(kLow, 3);
  vem::parts(roi).Params[2] = VemVar(-3.0);
  EXPECT_THROW(vem::to_json(roi), std::invalid_argument);
  VemOverlay overlay;
  VemFont font;
  overlay.GenText(kLow, "x", font);
  vem::parts(overlay).Params[4] = VemVar("bold");
  EXPECT_THROW(vem::to_json(overlay), std::invalid_argument);
}

TEST(VemJsonRegion, RunsOfAnyKindComeBack) {
  VemVarArray rows = Values({1, 2.5, "x", VemVar()});
  VemVarArray first = Values({1});
  VemVarArray last;
  VemRegion region;
  region.CreateRegion(-3, 4, rows, first, last);
  EXPECT_EQ(Fields(region),
            R"({"first_columns":[1],"height":4,"last_columns":[],"rows":[1,2.5,"x",null],)"
            R"("width":-3})");
  VemRegion again = Again(region);
  EXPECT_EQ(again.Width(), -3);
  EXPECT_EQ(again.Height(), 4);
  VemVarArray a;
  VemVarArray b;
  VemVarArray c;
  again.GetRegionRuns(&a, &b, &c);
  ExpectSame(a, rows);
  ExpectSame(b, first);
  ExpectSame(c, last);
}

// A region with outlines, which come through an array alone.
VemRegion Outlined(int column) {
  IVemRegionArrayPara array;
  array.Widths = {9};
  array.Heights = {8};
  array.Rows = {{1, 2}};
  array.FirstColumns = {{column, column}};
  array.LastColumns = {{5, 6}};
  array.Hierarchies = {{cv::Vec4i(-1, -1, -1, column)}};
  array.Contours = {{{cv::Point(1, 2), cv::Point(-3, 4)}, {}}};
  VemRegion region;
  array.Select(0, region);
  return region;
}

TEST(VemJsonRegion, OutlinesComeBack) {
  const VemRegion region = Outlined(3);
  EXPECT_EQ(Fields(region),
            R"({"first_columns":[3,3],"height":8,"last_columns":[5,6],)"
            R"("outlines":{"contours":[[[1,2],[-3,4]],[]],"hierarchy":[[-1,-1,-1,3]]},)"
            R"("rows":[1,2],"width":9})");
  const VemRegion again = Again(region);
  EXPECT_EQ(vem::parts(again).Contours, vem::parts(region).Contours);
  EXPECT_EQ(vem::parts(again).Hierarchy, vem::parts(region).Hierarchy);
}

TEST(VemJsonRegion, ReadingDropsOldOutlines) {
  VemRegion region = Outlined(3);
  vem::from_json(vem::to_json(VemRegion()), region);
  EXPECT_TRUE(vem::parts(region).Contours.empty());
  EXPECT_EQ(region.Width(), 0);
}

TEST(VemJsonRegion, ArraysKeepBothTracks) {
  VemRegionArray array;
  VemVarArray rows = Values({7});
  VemRegion plain(10, 10, rows, rows, rows);
  VemRegion outlined = Outlined(3);
  array.Append(plain);
  array.Append(outlined);
  EXPECT_EQ(Fields(array),
            R"({"outlines":[{"contours":[[[1,2],[-3,4]],[]],"hierarchy":[[-1,-1,-1,3]]}],)"
            R"("regions":[{"first_columns":[7],"height":10,"last_columns":[7],"rows":[7],)"
            R"("width":10},{"first_columns":[3,3],"height":8,"last_columns":[5,6],"rows":[1,2],)"
            R"("width":9}]})");
  const VemRegionArray again = Again(array);
  const IVemRegionArrayPara& x = vem::parts(again);
  const IVemRegionArrayPara& y = vem::parts(array);
  EXPECT_EQ(x.Widths, y.Widths);
  EXPECT_EQ(x.Heights, y.Heights);
  EXPECT_EQ(x.Rows, y.Rows);
  EXPECT_EQ(x.FirstColumns, y.FirstColumns);
  EXPECT_EQ(x.LastColumns, y.LastColumns);
  EXPECT_EQ(x.Contours, y.Contours);
  EXPECT_EQ(x.Hierarchies, y.Hierarchies);
  EXPECT_EQ(Fields(Again(VemRegionArray())), R"({"regions":[]})");
}

// Its runs are painted from the contours, and are again.
TEST(VemJsonRegion, ArraysOfContoursAloneComeBack) {
  VemRegionArray array;
  IVemRegionArrayPara& fields = vem::parts(array);
  fields.Widths = {10};
  fields.Heights = {10};
  fields.Contours = {{{cv::Point(1, 1), cv::Point(5, 1), cv::Point(5, 5)}}};
  fields.Hierarchies = {{cv::Vec4i(-1, -1, -1, -1)}};
  EXPECT_EQ(Fields(array),
            R"({"outlines":[{"contours":[[[1,1],[5,1],[5,5]]],"hierarchy":[[-1,-1,-1,-1]]}],)"
            R"("regions":[{"height":10,"width":10}]})");
  VemRegionArray again = Again(array);
  EXPECT_TRUE(vem::parts(again).Rows.empty());
  VemRegion painted;
  VemRegion paintedAgain;
  array.Select(0, &painted);
  again.Select(0, &paintedAgain);
  EXPECT_EQ(vem::pixel_set(painted).area(), 15u);
  EXPECT_TRUE(vem::same_pixels(painted, paintedAgain));
}

TEST(VemJsonRegion, ListsOfUnlikeLengthsAreRefused) {
  using Fields = IVemRegionArrayPara;
  const std::function<void(Fields&)> changes[] = {
      [](Fields& x) { x.Widths.push_back(1); },   [](Fields& x) { x.Heights.clear(); },
      [](Fields& x) { x.Rows.pop_back(); },       [](Fields& x) { x.FirstColumns.clear(); },
      [](Fields& x) { x.LastColumns.clear(); },   [](Fields& x) { x.Hierarchies.clear(); },
      [](Fields& x) { x.Contours.push_back({}); }};
  VemRegion outlined = Outlined(3);
  for (const std::function<void(Fields&)>& change : changes) {
    VemRegionArray array;
    array.Append(outlined);
    array.Append(outlined);
    EXPECT_NO_THROW(vem::to_json(array));
    change(vem::parts(array));
    EXPECT_THROW(vem::to_json(array), std::invalid_argument);
  }
}

TEST(VemJsonRegion, FaultsAreTold) {
  const Fault faults[] = {
      {R"({"version":1,"regions":[{"width":1,"height":1,"rows":[1.5]}]})",
       "/regions/0/rows/0: expected an integer"},
      {R"({"version":1,"regions":[{"width":1,"height":1},{"width":1,"height":1,"rows":[]}]})",
       "/regions/1/rows: is no field of this object"},
      {R"({"version":1,"regions":[],"outlines":[{"hierarchy":[[1,2,3]],"contours":[]}]})",
       "/outlines/0/hierarchy/0: expected 4 integers"},
      {R"({"version":1,"regions":[],"outlines":[{"hierarchy":[],"contours":[[[1,2],[1,2.5]]]}]})",
       "/outlines/0/contours/0/1/1: expected an integer"},
  };
  TestFaults<VemRegionArray>(faults);
}

}  // namespace
