#include "vem/make.h"

#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "IVemOverlay.h"

namespace {

const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

// What a call throws, or "" if it throws nothing.
template <class Call>
std::string Thrown(Call call) {
  try {
    call();
  } catch (const std::invalid_argument& error) {
    return error.what();
  }
  return "";
}

// The runs of a region as "row:first-last", in order, behind its canvas.
std::string Shown(VemRegion region) {
  VemVarArray rows, firstColumns, lastColumns;
  region.GetRegionRuns(&rows, &firstColumns, &lastColumns);
  std::string text = std::to_string(region.Width()) + "x" + std::to_string(region.Height());
  for (int i = 0; i < rows.Length(); ++i) {
    text += " " + std::to_string(rows[i].L()) + ":" + std::to_string(firstColumns[i].L()) + "-" +
            std::to_string(lastColumns[i].L());
  }
  return text;
}

VemRegion MaskOf(const VemROI& roi) {
  VemVarArray rows, firstColumns, lastColumns;
  int width = 0, height = 0;
  EXPECT_TRUE(roi.GetMask(&rows, &firstColumns, &lastColumns, &width, &height));
  return VemRegion(width, height, rows, firstColumns, lastColumns);
}

// A shape made in one expression beside the same made by the generator.
struct ShapeCase {
  const char* name;
  VemROI made;
  void (*generate)(VemROI&);
};

TEST(VemMakeShape, IsWhatTheGeneratorMakes) {
  const ShapeCase cases[] = {
      {"Rect1", vem::rect1({1, 2}, {5, 6}),
       [](VemROI& roi) {
         VemPoint p1(1, 2), p2(5, 6);
         roi.GenRect1(p1, p2);
       }},
      {"Circle", vem::circle({12, 8}, 6),
       [](VemROI& roi) {
         VemPoint center(12, 8);
         roi.GenCircle(center, 6);
       }},
      {"Ellipse", vem::ellipse({12, 10}, 9, 4, 30),
       [](VemROI& roi) {
         VemPoint center(12, 10);
         roi.GenEllipse(center, 9, 4, 30);
       }},
      {"Rect2", vem::rect2({12, 10}, 9, 4, 30),
       [](VemROI& roi) {
         VemPoint center(12, 10);
         roi.GenRect2(center, 9, 4, 30);
       }},
      {"Torus", vem::torus({20, 20}, 6, 12, 30, 120),
       [](VemROI& roi) {
         VemPoint center(20, 20);
         roi.GenTorus(center, 6, 12, 30, 120);
       }},
      {"Line", vem::line({0, 0}, {2, 9}),
       [](VemROI& roi) {
         VemPoint p1(0, 0), p2(2, 9);
         roi.GenLine(p1, p2);
       }},
      {"Arc", vem::arc({20, 20}, 12, 30, 120),
       [](VemROI& roi) {
         VemPoint center(20, 20);
         roi.GenArc(center, 12, 30, 120);
       }},
      {"Polygon", vem::polygon({{0, 0}, {8, 1}, {3, 7}}),
       [](VemROI& roi) {
         VemPointArray points;
         VemPoint a(0, 0), b(8, 1), c(3, 7);
         points.Append(a);
         points.Append(b);
         points.Append(c);
         roi.GenPolygon(points);
       }},
      {"Irregular", vem::irregular({{0, 0}, {8, 1}, {3, 7}}),
       [](VemROI& roi) {
         VemPointArray points;
         VemPoint a(0, 0), b(8, 1), c(3, 7);
         points.Append(a);
         points.Append(b);
         points.Append(c);
         roi.GenIrregular(points);
       }},
  };
  for (const ShapeCase& c : cases) {
    SCOPED_TRACE(c.name);
    VemROI generated;
    c.generate(generated);
    EXPECT_EQ(c.made.ROIType(), generated.ROIType());
    EXPECT_EQ(Shown(MaskOf(c.made)), Shown(MaskOf(generated)));
    EXPECT_EQ(Shown(vem::region_of(c.made)), Shown(MaskOf(generated)));
  }
}

TEST(VemMakeShape, TakesAnyRangeOfPoints) {
  const std::vector<VemPoint> points = {{0, 0}, {8, 1}, {3, 7}};
  EXPECT_EQ(Shown(vem::region_of(vem::polygon(points))),
            Shown(vem::region_of(vem::polygon({{0, 0}, {8, 1}, {3, 7}}))));
  const VemPointArray array = vem::to<VemPointArray>(points);
  EXPECT_EQ(vem::irregular<VemOverlay>(array).OverlayType(), VemOverlayIrregular);
}

TEST(VemMakeShape, KeepsAPoint) {
  VemPoint point;
  EXPECT_TRUE(vem::point({3, 4}).GetPoint(&point));
  EXPECT_EQ(point.x, 3);
  EXPECT_EQ(point.y, 4);
}

TEST(VemMakeShape, IsAnOverlayOnDemand) {
  const VemFont font = vem::font("Arial", 12, 700);
  const struct {
    VemOverlay made;
    int expected;
  } cases[] = {
      {vem::point<VemOverlay>({1, 2}), VemOverlayPoint},
      {vem::rect1<VemOverlay>({1, 2}, {5, 6}), VemOverlayRect1},
      {vem::circle<VemOverlay>({12, 8}, 6), VemOverlayCircle},
      {vem::ellipse<VemOverlay>({12, 10}, 9, 4, 30), VemOverlayEllipse},
      {vem::rect2<VemOverlay>({12, 10}, 9, 4, 30), VemOverlayRect2},
      {vem::torus<VemOverlay>({20, 20}, 6, 12, 30, 120), VemOverlayTorus},
      {vem::line<VemOverlay>({0, 0}, {2, 9}), VemOverlayLine},
      {vem::arc<VemOverlay>({20, 20}, 12, 30, 120), VemOverlayArc},
      {vem::polygon<VemOverlay>({{0, 0}, {8, 1}, {3, 7}}), VemOverlayPolygon},
      {vem::irregular<VemOverlay>({{0, 0}, {8, 1}, {3, 7}}), VemOverlayIrregular},
      {vem::arrow_line({0, 0}, {2, 9}), VemOverlayArrowLine},
      {vem::rake_rect1({1, 2}, {5, 6}, 3, 2), VemOverlayRakeRect1},
      {vem::rake_rect2({12, 10}, 9, 4, 30, 0, 5), VemOverlayRakeRect2},
      {vem::spoke_torus({20, 20}, 6, 12, 30, 120, 4, 8), VemOverlaySpokeTorus},
      {vem::poly_line({{0, 0}, {8, 1}, {3, 7}}), VemOverlayPolyLine},
      {vem::poly_line(std::vector<VemPoint>(3)), VemOverlayPolyLine},
      {vem::text({1, 2}, "label"), VemOverlayText},
      {vem::text({1, 2}, "label", font), VemOverlayText},
      {vem::overlay_of(VemImage(), {1, 2}), VemOverlayImage},
      {vem::overlay_of(VemRegion()), VemOverlayRegion},
      {vem::overlay_of(vem::to<VemContour>({{1, 2}, {3, 4}, {5, 6}})), VemOverlayIrregular},
      {vem::overlay_of(vem::circle({12, 8}, 6)), VemOverlayCircle},
  };
  for (const auto& c : cases) EXPECT_EQ(VemOverlay(c.made).OverlayType(), c.expected);
}

TEST(VemMakeShape, PassesNumbersInTheirOrder) {
  VemPoint center;
  double a = 0, b = 0, c = 0, d = 0;
  int mode = 0, count = 0;
  VemOverlay spokes = vem::spoke_torus({20, 21}, 6, 12, 30, 120, 5, 8);
  EXPECT_TRUE(spokes.GetSpokeTorus(&center, &a, &b, &c, &d, &mode, &count));
  EXPECT_EQ((std::vector<double>{center.x, center.y, a, b, c, d}),
            (std::vector<double>{20, 21, 6, 12, 30, 120}));
  EXPECT_EQ(mode, 5);
  EXPECT_EQ(count, 8);
  VemOverlay rake = vem::rake_rect2({20, 21}, 9, 4, 30, 2, 7);
  EXPECT_TRUE(rake.GetRakeRect2(&center, &a, &b, &c, &mode, &count));
  EXPECT_EQ((std::vector<double>{a, b, c}), (std::vector<double>{9, 4, 30}));
  EXPECT_EQ(mode, 2);
  EXPECT_EQ(count, 7);
  VemOverlay text = vem::text({1, 2}, "label", vem::font("Arial", 12, 700));
  VemVar label;
  VemFont font;
  EXPECT_TRUE(text.GetText(&center, &label, &font));
  EXPECT_STREQ(label.S(), "label");
  EXPECT_STREQ(font.Name.S(), "Arial");
  EXPECT_EQ(font.Size, 12);
  EXPECT_EQ(font.Weight, 700);
  EXPECT_EQ(vem::font("Arial", 12).Weight, 500);
  const VemLine line = vem::line<VemLine>({1, 2}, {4, 6});
  EXPECT_EQ(line.start.y, 2);
  EXPECT_EQ(line.end.x, 4);
}

TEST(VemMakeShape, TellsWhyItIsRefused) {
  const struct {
    std::string found, expected;
  } cases[] = {
      {Thrown([] {
         vem::rect1({1, 2}, {1, 6});
       }),
       "vem::rect1: p2 (1, 6) is not greater than p1 (1, 2) in x and in y"},
      {Thrown([] {
         vem::rect1<VemOverlay>({1, 2}, {5, 2});
       }),
       "vem::rect1: p2 (5, 2) is not greater than p1 (1, 2) in x and in y"},
      {Thrown([] {
         vem::rect1({1, kNaN}, {5, 2});
       }),
       "vem::rect1: p2 (5, 2) is not greater than p1 (1, nan) in x and in y"},
      {Thrown([] {
         vem::circle({1, 2}, 0);
       }),
       "vem::circle: radius is 0, not above 0"},
      {Thrown([] {
         vem::circle({1, 2}, kNaN);
       }),
       "vem::circle: radius is nan, not above 0"},
      {Thrown([] {
         vem::ellipse({1, 2}, -1, 2, 0);
       }),
       "vem::ellipse: radius1 is -1, not above 0"},
      {Thrown([] {
         vem::ellipse({1, 2}, 1, 0, 0);
       }),
       "vem::ellipse: radius2 is 0, not above 0"},
      {Thrown([] {
         vem::rect2({1, 2}, 0, 2, 0);
       }),
       "vem::rect2: length1 is 0, not above 0"},
      {Thrown([] {
         vem::rect2({1, 2}, 0.5, -0.25, 0);
       }),
       "vem::rect2: length2 is -0.25, not above 0"},
      {Thrown([] {
         vem::torus({1, 2}, 0, 2, 0, 1);
       }),
       "vem::torus: inner_radius is 0, not above 0"},
      {Thrown([] {
         vem::torus({1, 2}, 1, kNaN, 0, 1);
       }),
       "vem::torus: outer_radius is nan, not above 0"},
      {Thrown([] {
         vem::torus({1, 2}, 2, 2, 0, 1);
       }),
       "vem::torus: outer_radius 2 is not greater than inner_radius 2"},
      {Thrown([] {
         vem::torus({1, 2}, 1, 2, 0, -1);
       }),
       "vem::torus: sweep_angle is -1, not 0 or above"},
      {Thrown([] {
         vem::line({1, 2}, {1, 2});
       }),
       "vem::line: both points are (1, 2)"},
      {Thrown([] {
         vem::line<VemLine>({1, 2}, {1, 2});
       }),
       "vem::line: both points are (1, 2)"},
      {Thrown([] {
         vem::arc({1, 2}, 0, 0, 1);
       }),
       "vem::arc: radius is 0, not above 0"},
      {Thrown([] {
         vem::arc({1, 2}, 1, 0, kNaN);
       }),
       "vem::arc: sweep_angle is nan, not 0 or above"},
      {Thrown([] {
         vem::polygon({{1, 2}, {3, 4}});
       }),
       "vem::polygon: there are 2 points, not 3 or more"},
      {Thrown([] { vem::irregular(std::vector<VemPoint>()); }),
       "vem::irregular: there are 0 points, not 3 or more"},
      {Thrown([] {
         vem::arrow_line({1, 2}, {1, 2});
       }),
       "vem::arrow_line: both points are (1, 2)"},
      {Thrown([] {
         vem::rake_rect1({1, 2}, {0, 6}, 1, 2);
       }),
       "vem::rake_rect1: p2 (0, 6) is not greater than p1 (1, 2) in x and in y"},
      {Thrown([] {
         vem::rake_rect1({1, 2}, {5, 6}, 4, 2);
       }),
       "vem::rake_rect1: mode is 4, not 0 to 3"},
      {Thrown([] {
         vem::rake_rect1({1, 2}, {5, 6}, 0, 1);
       }),
       "vem::rake_rect1: count is 1, not 2 or above"},
      {Thrown([] {
         vem::rake_rect2({1, 2}, 1, 0, 0, 0, 2);
       }),
       "vem::rake_rect2: length2 is 0, not above 0"},
      {Thrown([] {
         vem::rake_rect2({1, 2}, 1, 1, 0, -1, 2);
       }),
       "vem::rake_rect2: mode is -1, not 0 to 3"},
      {Thrown([] {
         vem::spoke_torus({1, 2}, 1, 2, 0, 1, 3, 2);
       }),
       "vem::spoke_torus: mode is 3, not 4 to 5"},
      {Thrown([] {
         vem::spoke_torus({1, 2}, 1, 2, 0, 1, 4, 0);
       }),
       "vem::spoke_torus: count is 0, not 2 or above"},
      {Thrown([] {
         vem::poly_line({{1, 2}, {3, 4}});
       }),
       "vem::poly_line: there are 2 points, not 3 or more"},
      {Thrown([] {
         vem::text({1, 2}, nullptr);
       }),
       "vem::text: the text is a null pointer"},
      {Thrown([] { vem::mask(VemRegion()); }),
       "vem::mask: the canvas is 0 by 0, not 2 by 2 or larger"},
      {Thrown([] { vem::mask(vem::array(1, 2), vem::array(1), vem::array(1, 2), 9, 9); }),
       "vem::mask: there are 2 rows, 1 first columns and 2 last columns"},
      {Thrown([] { vem::mask(VemContourArray(), 9, 1); }),
       "vem::mask: the canvas is 9 by 1, not 2 by 2 or larger"},
      {Thrown([] {
         vem::text({1, 2}, std::string("a\0b", 3));
       }),
       "vem::text: the text has a zero byte within"},
      {Thrown([] { vem::font(std::string("a\0b", 3), 9); }),
       "vem::font: the name has a zero byte within"},
      {Thrown([] { vem::overlay_of(VemROI()); }),
       "vem::overlay_of: the region of interest has no shape"},
      {Thrown([] { vem::overlay_of(VemContour()); }),
       "vem::overlay_of: there are 0 points, not 3 or more"},
      {Thrown([] {
         vem::overlay_of(vem::to<VemContour>({{1, 2}, {3, 4}}));
       }),
       "vem::overlay_of: there are 2 points, not 3 or more"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.found, c.expected);
}

TEST(VemMakeShape, TakesWhatTheGeneratorsTake) {
  EXPECT_EQ(vem::torus({9, 9}, 1, 2, 0, 0).ROIType(), VemROITorus);
  EXPECT_EQ(vem::arc({9, 9}, 1, 0, 0).ROIType(), VemROIArc);
  EXPECT_EQ(vem::line({kNaN, 0}, {kNaN, 0}).ROIType(), VemROILine);
  EXPECT_EQ(vem::line({3, 0}, {3, 9}).ROIType(), VemROILine);
  EXPECT_EQ(vem::circle({kNaN, 0}, 1).ROIType(), VemROICircle);
}

#if __cplusplus >= 201703L
TEST(VemMakeShape, IsTriedInPlaceOfAThrow) {
  EXPECT_TRUE(vem::try_point({1, 2}));
  EXPECT_TRUE(vem::try_rect1({1, 2}, {5, 6}));
  EXPECT_FALSE(vem::try_rect1({1, 2}, {1, 6}));
  EXPECT_FALSE(vem::try_rect1<VemOverlay>({1, 2}, {1, 6}));
  EXPECT_FALSE(vem::try_circle({1, 2}, 0));
  EXPECT_FALSE(vem::try_ellipse({1, 2}, 1, 0, 0));
  EXPECT_EQ(vem::try_rect2({12, 10}, 9, 4, 30)->ROIType(), VemROIRect2);
  EXPECT_FALSE(vem::try_rect2({12, 10}, 9, 0, 30));
  EXPECT_FALSE(vem::try_torus({1, 2}, 2, 2, 0, 1));
  EXPECT_FALSE(vem::try_line({1, 2}, {1, 2}));
  EXPECT_FALSE(vem::try_line<VemLine>({1, 2}, {1, 2}));
  EXPECT_FALSE(vem::try_arc({1, 2}, 0, 0, 1));
  EXPECT_FALSE(vem::try_polygon({{1, 2}, {3, 4}}));
  EXPECT_FALSE(vem::try_polygon(std::vector<VemPoint>()));
  EXPECT_TRUE(vem::try_irregular(std::vector<VemPoint>(3)));
  EXPECT_FALSE(vem::try_irregular({{1, 2}, {3, 4}}));
  EXPECT_FALSE(vem::try_arrow_line({1, 2}, {1, 2}));
  EXPECT_FALSE(vem::try_rake_rect1({1, 2}, {5, 6}, 4, 2));
  EXPECT_FALSE(vem::try_rake_rect2({1, 2}, 1, 1, 0, 0, 1));
  EXPECT_FALSE(vem::try_spoke_torus({1, 2}, 1, 2, 0, 1, 3, 2));
  EXPECT_FALSE(vem::try_poly_line({{1, 2}, {3, 4}}));
  EXPECT_TRUE(vem::try_poly_line(std::vector<VemPoint>(3)));
  EXPECT_FALSE(vem::try_text({1, 2}, nullptr));
  EXPECT_EQ(vem::try_text({1, 2}, "x")->OverlayType(), VemOverlayText);
  EXPECT_EQ(vem::try_text({1, 2}, std::string("x"))->OverlayType(), VemOverlayText);
  EXPECT_FALSE(vem::try_text({1, 2}, std::string("a\0b", 3)));
  EXPECT_EQ(vem::try_overlay_of(vem::point({1, 2}))->OverlayType(), VemOverlayPoint);
  EXPECT_FALSE(vem::try_overlay_of(VemROI()));
  EXPECT_TRUE(vem::try_overlay_of(vem::to<VemContour>({{1, 2}, {3, 4}, {5, 6}})));
  EXPECT_FALSE(vem::try_overlay_of(vem::to<VemContour>({{1, 2}})));
  EXPECT_EQ(vem::try_font("Arial", 9, 700)->Weight, 700);
  EXPECT_FALSE(vem::try_font(std::string("a\0b", 3), 9));
  EXPECT_FALSE(vem::try_mask(VemRegion()));
  EXPECT_FALSE(vem::try_mask(VemContourArray(), 1, 9));
  EXPECT_TRUE(vem::try_mask(vem::array(1), vem::array(1), vem::array(2), 9, 9));
  EXPECT_FALSE(vem::try_region_of(VemROI()));
  EXPECT_TRUE(vem::try_region_of(vem::circle({12, 8}, 6)));
  EXPECT_FALSE(vem::try_region_of(VemImage()));
  EXPECT_FALSE(vem::try_region_of("?"));
  EXPECT_EQ(Shown(*vem::try_region_of("#")), "1x1 0:0-0");
  EXPECT_FALSE(vem::try_region_of(VemPointArray()));
  EXPECT_FALSE(vem::try_region_of(0, 1, vem::array(), vem::array(), vem::array()));
  EXPECT_EQ(Shown(*vem::try_region_of(5, 4, vem::array(1), vem::array(2), vem::array(3))),
            "5x4 1:2-3");
}
#endif

TEST(VemMakeMask, IsMadeOfRunsRegionsAndContours) {
  const VemRegion region = vem::region_of(".##.\n####\n");
  EXPECT_EQ(Shown(vem::region_of(vem::mask(region))), "4x2 0:1-2 1:0-3");
  const std::vector<int> rows = {0, 1}, first = {1, 0}, last = {2, 3};
  EXPECT_EQ(Shown(vem::region_of(vem::mask(rows, first, last, 4, 2))), "4x2 0:1-2 1:0-3");
  const VemContourArray contours =
      vem::to<VemContourArray>({vem::to<VemContour>({{1, 1}, {3, 1}, {3, 2}, {1, 2}})});
  EXPECT_EQ(Shown(vem::region_of(vem::mask(contours, 6, 5))), "6x5 1:1-3 2:1-3");
}

TEST(VemMakeRegion, ComesOfRunsInTheirOrder) {
  EXPECT_EQ(Shown(vem::region_of(9, 8, vem::array(5, 2), vem::array(0, 1), vem::array(3, 1))),
            "9x8 5:0-3 2:1-1");
  EXPECT_EQ(Shown(vem::region_of(1, 1, vem::array(), vem::array(), vem::array())), "1x1");
  EXPECT_EQ(Thrown([] { vem::region_of(1, 0, vem::array(), vem::array(), vem::array()); }),
            "vem::region_of: the canvas is 1 by 0, not 1 by 1 or larger");
  EXPECT_EQ(Thrown([] { vem::region_of(1, 1, vem::array(), vem::array(), vem::array(1)); }),
            "vem::region_of: there are 0 rows, 0 first columns and 1 last columns");
}

// A polygon that a generator from points has left without numbers.
VemROI WithoutNumbers() {
  VemROI roi = vem::polygon({{1, 2}, {3, 4}, {5, 6}});
  VemPointArray none;
  roi.GenPolygon(none);
  return roi;
}

TEST(VemMakeRegion, ComesOfADrawing) {
  EXPECT_EQ(Shown(vem::region_of("#.##\n....\n.#")), "4x3 0:0-0 0:2-3 2:1-1");
  EXPECT_EQ(Shown(vem::region_of("..\n\n")), "2x2");
  EXPECT_EQ(Thrown([] { vem::region_of(".#\n#x"); }),
            "vem::region_of: 'x' in row 1 is neither '#' nor '.'");
  EXPECT_EQ(Thrown([] { vem::region_of(""); }),
            "vem::region_of: the canvas is 0 by 0, not 1 by 1 or larger");
}

TEST(VemMakeRegion, ComesOfPoints) {
  EXPECT_EQ(Shown(vem::region_of(vem::to<VemPointArray>({{1.9, 2}, {2, 2}}))), "3x3 2:1-2");
  EXPECT_EQ(Thrown([] { vem::region_of(VemPointArray()); }), "vem::region_of: there are no points");
  EXPECT_EQ(
      Thrown([] {
        vem::region_of(vem::to<VemPointArray>({{3, 0}}));
      }),
      "vem::region_of: no canvas holds the points: they lie in row 0 or above, or in column 0 or "
      "left of it");
}

template <class Pixel>
VemRegion RegionOf(std::vector<Pixel> pixels, VemImageType type) {
  const int width = static_cast<int>(pixels.size()) / 2;
  return vem::region_of(
      VemImage(reinterpret_cast<unsigned char*>(pixels.data()), 0, 2, width, 1, type));
}

TEST(VemMakeRegion, TellsWhyPointsHaveNoCanvas) {
  EXPECT_EQ(Thrown([] {
              vem::region_of(vem::to<VemPointArray>({{kNaN, 5}}));
            }),
            "vem::region_of: no canvas holds the points: (nan, 5) is beyond the integers");
  EXPECT_EQ(Thrown([] {
              vem::region_of(vem::to<VemPointArray>({{3, 2147483647}}));
            }),
            "vem::region_of: the canvas is beyond what integers can tell");
}

TEST(VemMakeRegion, ComesOfAMaskImage) {
  const char* const expected = "4x2 0:1-2 1:0-0 1:3-3";
  EXPECT_EQ(Shown(RegionOf<unsigned char>({0, 1, 255, 0, 7, 0, 0, 9}, VemImageType8U)), expected);
  EXPECT_EQ(Shown(RegionOf<signed char>({0, 1, -1, 0, 7, 0, 0, 9}, VemImageType8S)), expected);
  EXPECT_EQ(Shown(RegionOf<unsigned short>({0, 1, 256, 0, 7, 0, 0, 9}, VemImageType16U)), expected);
  EXPECT_EQ(Shown(RegionOf<short>({0, 1, -256, 0, 7, 0, 0, 9}, VemImageType16S)), expected);
  EXPECT_EQ(Shown(RegionOf<int>({0, 1, 1 << 20, 0, 7, 0, 0, 9}, VemImageType32S)), expected);
  EXPECT_EQ(Shown(RegionOf<float>({0, 1e-40f, 2, -0.0f, 7, 0, 0, 9}, VemImageType32F)), expected);
  EXPECT_EQ(Shown(RegionOf<double>({0, kNaN, 2, -0.0, 7, 0, 0, 9}, VemImageType64F)), expected);
  EXPECT_EQ(Thrown([] { vem::region_of(VemImage()); }), "vem::region_of: the image is empty");
  unsigned char pixels[6] = {};
  EXPECT_EQ(Thrown([&] { vem::region_of(VemImage(pixels, 0, 1, 2, 3, VemImageType8U)); }),
            "vem::region_of: the image has 3 channels, not 1");
}

TEST(VemMakeRegion, TellsWhyAShapeHasNoRuns) {
  EXPECT_EQ(Thrown([] { vem::region_of(VemROI()); }),
            "vem::region_of: the region of interest has no shape");
  EXPECT_EQ(Thrown([] {
              vem::region_of(vem::point({3, 4}));
            }),
            "vem::region_of: a point has no runs");
  EXPECT_EQ(Thrown([] {
              vem::region_of(vem::circle({-30, 4}, 5));
            }),
            "vem::region_of: the shape lies left of or above the origin");
  EXPECT_EQ(Thrown([] {
              vem::region_of(vem::line({3.1, 0}, {3.9, 9}));
            }),
            "vem::region_of: the line is vertical");
  EXPECT_EQ(Thrown([] {
              vem::region_of(vem::line({5, 2147483647.0}, {4, -1.0}));
            }),
            "vem::region_of: the line's slope is beyond the integers");
  EXPECT_EQ(Thrown([] {
              vem::region_of(vem::line({-5, -9}, {-5, -1}));
            }),
            "vem::region_of: the shape lies left of or above the origin");
  EXPECT_EQ(Thrown([] {
              vem::region_of(vem::circle({9, 9}, kInf));
            }),
            "vem::region_of: the shape counts as left of or above the origin: inf is too large for "
            "whole numbers");
  EXPECT_EQ(Thrown([] { vem::region_of(WithoutNumbers()); }),
            "vem::region_of: the shape has lost its numbers");
  EXPECT_EQ(Thrown([] {
              vem::region_of(vem::polygon({{-3, 0}, {2147483647, 0}, {2147483647, 9}}));
            }),
            "vem::region_of: the shape counts as left of or above the origin: 2147483647 is too "
            "large for whole numbers");
  EXPECT_EQ(Thrown([] {
              vem::region_of(vem::torus({0, 0}, 1, 2e9, 0, 360));
            }),
            "vem::region_of: the canvas is beyond what integers can tell");
  EXPECT_EQ(Shown(vem::region_of(vem::line({0, 0}, {4, 1}))), "5x2");
  EXPECT_EQ(Shown(vem::region_of(vem::line({1, 0}, {0, 1}))), "2x2 0:1-1 1:0-0");
}

TEST(VemMakeOverlay, ShowsTheRunsOfAMask) {
  VemOverlay overlay = vem::overlay_of(vem::mask(vem::region_of(".##.\n####\n")));
  VemRegion region;
  EXPECT_EQ(overlay.OverlayType(), VemOverlayRegion);
  EXPECT_TRUE(overlay.GetRegion(&region));
  EXPECT_EQ(Shown(region), "4x2 0:1-2 1:0-3");
}

TEST(VemMakeOverlay, KeepsTheCenterOfAnArc) {
  VemOverlay overlay = vem::overlay_of(vem::arc({20, 10}, 5, 30, 60));
  VemPoint center;
  double radius = 0, startAngle = 0, sweepAngle = 0;
  EXPECT_TRUE(overlay.GetArc(&center, &radius, &startAngle, &sweepAngle));
  EXPECT_EQ((std::vector<double>{center.x, center.y, radius, startAngle, sweepAngle}),
            (std::vector<double>{20, 10, 5, 30, 60}));
}

TEST(VemMakeOverlay, RefusesAShapeWithoutNumbers) {
  EXPECT_EQ(Thrown([] { vem::overlay_of(WithoutNumbers()); }),
            "vem::overlay_of: the shape has lost its numbers");
}

TEST(VemMakeOverlay, RoundsNothingOfAnArc) {
  const VemOverlay overlay = vem::overlay_of(vem::arc({16777217, 0.1}, 0.3, 30.7, 0));
  EXPECT_TRUE(vem::parts(overlay).Params == vem::array(16777217.0, 0.1, 0.3, 30.7, 0.0));
}

TEST(VemMakeOverlay, TakesPenAndBrush) {
  VemOverlay overlay =
      vem::with_brush(vem::with_pen(vem::circle<VemOverlay>({9, 9}, 5), 1, 2, 3, 4), 5, 6, 7, 8);
  long pen[4] = {}, brush[4] = {};
  overlay.GetPen(&pen[0], &pen[1], &pen[2], &pen[3]);
  overlay.GetBrush(&brush[0], &brush[1], &brush[2], &brush[3]);
  EXPECT_EQ((std::vector<long>(pen, pen + 4)), (std::vector<long>{1, 2, 3, 4}));
  EXPECT_EQ((std::vector<long>(brush, brush + 4)), (std::vector<long>{5, 6, 7, 8}));
  EXPECT_EQ(overlay.OverlayType(), VemOverlayCircle);
}

}  // namespace
