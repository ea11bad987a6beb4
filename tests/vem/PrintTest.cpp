#include "vem/print.h"

#include <cmath>
#include <functional>
#include <iomanip>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <string>
#include <unordered_set>
#include <vector>

#include <gtest/gtest.h>

#include "vem/make.h"

namespace {

const double kNaN = std::numeric_limits<double>::quiet_NaN();

template <class T>
std::string Line(const T& value) {
  std::ostringstream out;
  out << value;
  return out.str();
}

struct LineCase {
  std::string found, expected;
};

TEST(VemPrintLine, TellsWhatAValueHolds) {
  VemScratchGroup group = vem::to<VemScratchGroup>({VemScratchFeature{0, 0, 5, 0}});
  group.Label = VemVar("edge");
  VemQRCode qr;
  qr.Value = VemVar("id-7");
  qr.Points0 = vem::to<VemPointArray>({{1, 2}, {3, 4}});
  VemVCode v;
  VemMatrix matrix(2, 2, VemMatrixType64F);
  matrix.SetTo(VemVar(1.5));
  VemMorphStructure structure;
  structure.CreateElement(3, 5, 2, 1, static_cast<VemMorphStructureType>(0), nullptr);
  std::vector<unsigned char> pixels(12);
  const VemImage image(pixels.data(), 0, 2, 2, 3, VemImageType8U);
  const LineCase cases[] = {
      {Line(VemVar(3)), "3"},
      {Line(VemVar(0.1)), "0.1"},
      {Line(VemVar(1.0 / 3)), "0.3333333333333333"},
      {Line(VemVar("some text")), "some text"},
      {Line(VemVar()), "none"},
      {Line(vem::array(1, 2.5, "x", VemVar())), "[1, 2.5, \"x\", none]"},
      {Line(VemVarArray()), "[]"},
      {Line(VemVar("a \"b\"\n")), "a \"b\"\n"},
      {Line(vem::array("a \"b\"", "c\\d\n")), "[\"a \\\"b\\\"\", \"c\\\\d\\n\"]"},
      {Line(VemVar(5e-324)), "5e-324"},
      {Line(vem::to<Vem2DVarArray>({vem::array(1, 2), vem::array()})), "[[1, 2], []]"},
      {Line(VemPoint(1, 2.5)), "(1, 2.5)"},
      {Line(VemPoint(kNaN, -0.0)), "(nan, -0)"},
      {Line(Vem3DPoint(1, 2, 0.1)), "(1, 2, 0.1)"},
      {Line(vem::to<VemPointArray>({{1, 2}, {3, 4}})), "[(1, 2), (3, 4)]"},
      {Line(vem::to<Vem3DPointArray>({{1, 2, 3}})), "[(1, 2, 3)]"},
      {Line(VemLine(0, 0, 3, 4)), "(0, 0) to (3, 4)"},
      {Line(VemCircle(1, 2, 3)), "(1, 2), radius 3"},
      {Line(vem::to<VemContour>({{1, 2}, {3, 4}})), "[(1, 2), (3, 4)]"},
      {Line(vem::to<VemContourArray>({VemContour()})), "[[]]"},
      {Line(VemFeaturePoint(0.1f, 2, 3)), "(0.1, 2)"},
      {Line(vem::to<VemFeaturePointArray>({VemFeaturePoint(1, 2, 3)})), "[(1, 2)]"},
      {Line(VemFeatureDescriptor()), "0x0"},
      {Line(image), "2x2 8U 3"},
      {Line(vem::to<VemImageArray>({image, VemImage()})), "[2x2 8U 3, 0x0 8U 1]"},
      {Line(matrix), "2x2 64F [1.5, 1.5; 1.5, 1.5]"},
      {Line(VemMatrix(20, 20, VemMatrixType8U)), "20x20 8U"},
      {Line(vem::to<VemMatrixArray>({VemMatrix(1, 1, VemMatrixType32S)})), "[1x1 32S [0]]"},
      {Line(structure), "3x5, anchor (2, 1), kind 0"},
      {Line(VemFont()), "\"Times\", size 9, weight 1, flags 0 1 0 0"},
      {Line(qr), "\"id-7\" at [(1, 2), (3, 4)]"},
      {Line(vem::to<VemQRCodeArray>({qr})), "[\"id-7\" at [(1, 2), (3, 4)]]"},
      {Line(v), "none at []"},
      {Line(vem::to<VemVCodeArray>({v})), "[none at []]"},
      {Line(Vem1DCode()), "none at []"},
      {Line(Vem1DCodeArray()), "[]"},
      {Line(VemDMCode()), "none at []"},
      {Line(VemDMCodeArray()), "[]"},
      {Line(VemPDF417Code()), "none at []"},
      {Line(VemPDF417CodeArray()), "[]"},
      {Line(VemScratchFeature{0, 0, 5, 0}), "key 5"},
      {Line(group), "\"edge\" [key 5]"},
      {Line(vem::to<VemScratchLayer>({group})), "[\"edge\" [key 5]]"},
      {Line(VemScratchLayerArray()), "[]"},
      {Line(VemScratchLayer().Settings), "(0, 9, 0, 255, 0, 0)"},
  };
  for (const LineCase& c : cases) EXPECT_EQ(c.found, c.expected);
}

TEST(VemPrintLine, TellsAShapeByItsNumbers) {
  VemRegion uneven;
  VemVarArray twice = vem::array(0, 1);
  VemVarArray once = vem::array(0);
  uneven.CreateRegion(3, 2, twice, twice, once);
  const LineCase cases[] = {
      {Line(VemROI()), "none"},
      {Line(vem::point({1, 2})), "point at (1, 2)"},
      {Line(vem::rect1({1, 2}, {5, 6})), "rect1 p1 (1, 2), p2 (5, 6)"},
      {Line(vem::circle({0.1, 2}, 6.7)), "circle center (0.1, 2), radius 6.7"},
      {Line(vem::ellipse({1, 2}, 9, 4, 30)),
       "ellipse center (1, 2), radius1 9, radius2 4, angle 30"},
      {Line(vem::rect2({120, 80}, 200, 40, 30)),
       "rect2 center (120, 80), length1 200, length2 40, angle 30"},
      {Line(vem::torus({1, 2}, 3, 4, 5, 6)),
       "torus center (1, 2), inner_radius 3, outer_radius 4, start_angle 5, sweep_angle 6"},
      {Line(vem::line({1, 2}, {5, 6})), "line p1 (1, 2), p2 (5, 6)"},
      {Line(vem::arc({1, 2}, 3, 4, 0)),
       "arc center (1, 2), radius 3, start_angle 4, sweep_angle 0"},
      {Line(vem::polygon({{1, 2}, {3, 4}, {5, 0.1}})), "polygon [(1, 2), (3, 4), (5, 0.1)]"},
      {Line(vem::irregular({{1, 2}, {3, 4}, {5, 6}})), "irregular [(1, 2), (3, 4), (5, 6)]"},
      {Line(vem::mask(vem::region_of(".##.\n####"))), "mask 4x2: 0:1-2, 1:0-3"},
      {Line(vem::to<VemROIArray>({vem::point({1, 2}), VemROI()})), "[point at (1, 2), none]"},
      {Line(VemRegion()), "region 0x0"},
      {Line(vem::region_of(".##.\n####")), "region 4x2: 0:1-2, 1:0-3"},
      {Line(uneven), "region 3x2: 0:0-0"},
      {Line(vem::region_of("#.#.#.#.#.#.#.#.#.#")),
       "region 19x1: 0:0-0, 0:2-2, 0:4-4, 0:6-6, 0:8-8, 0:10-10, 0:12-12, 0:14-14 and 2 more "
       "runs"},
      {Line(vem::to<VemRegionArray>({vem::region_of("#")})), "[region 1x1: 0:0-0]"},
  };
  for (const LineCase& c : cases) EXPECT_EQ(c.found, c.expected);
}

TEST(VemPrintLine, TellsAnOverlayWithPenAndBrush) {
  const std::string style = ", pen 0 0 255 1, brush 227 224 184 0";
  unsigned char pixel = 0;
  const VemImage image(&pixel, 0, 1, 1, 1, VemImageType8U);
  const LineCase cases[] = {
      {Line(VemOverlay()), "none" + style},
      {Line(vem::point<VemOverlay>({1, 2})), "point at (1, 2)" + style},
      {Line(vem::arrow_line({1, 2}, {5, 6})), "arrow_line p1 (1, 2), p2 (5, 6)" + style},
      {Line(vem::line<VemOverlay>({1, 2}, {5, 6})), "line p1 (1, 2), p2 (5, 6)" + style},
      {Line(vem::rect1<VemOverlay>({1, 2}, {5, 6})), "rect1 p1 (1, 2), p2 (5, 6)" + style},
      {Line(vem::rake_rect1({1, 2}, {5, 6}, 3, 4)),
       "rake_rect1 p1 (1, 2), p2 (5, 6), mode 3, count 4" + style},
      {Line(vem::circle<VemOverlay>({0.1, 2}, 6)), "circle center (0.1, 2), radius 6" + style},
      {Line(vem::ellipse<VemOverlay>({1, 2}, 9, 4, 30)),
       "ellipse center (1, 2), radius1 9, radius2 4, angle 30" + style},
      {Line(vem::polygon<VemOverlay>({{1, 2}, {3, 4}, {5, 6}})),
       "polygon [(1, 2), (3, 4), (5, 6)]" + style},
      {Line(vem::poly_line({{1, 2}, {3, 4}, {5, 6}})),
       "poly_line [(1, 2), (3, 4), (5, 6)]" + style},
      {Line(vem::rect2<VemOverlay>({1, 2}, 9, 4, 30)),
       "rect2 center (1, 2), length1 9, length2 4, angle 30" + style},
      {Line(vem::rake_rect2({1, 2}, 9, 4, 30, 2, 7)),
       "rake_rect2 center (1, 2), length1 9, length2 4, angle 30, mode 2, count 7" + style},
      {Line(vem::torus<VemOverlay>({1, 2}, 3, 4, 5, 6)),
       "torus center (1, 2), inner_radius 3, outer_radius 4, start_angle 5, sweep_angle 6" + style},
      {Line(vem::spoke_torus({1, 2}, 3, 4, 5, 6, 4, 8)),
       "spoke_torus center (1, 2), inner_radius 3, outer_radius 4, start_angle 5, sweep_angle 6, "
       "mode 4, count 8" +
           style},
      {Line(vem::arc<VemOverlay>({1, 2}, 3, 4, 5)),
       "arc center (1, 2), radius 3, start_angle 4, sweep_angle 5" + style},
      {Line(vem::irregular<VemOverlay>({{1, 2}, {3, 4}, {5, 6}})),
       "irregular [(1, 2), (3, 4), (5, 6)]" + style},
      {Line(vem::text({1, 2}, "label")),
       "text \"label\", \"Times\", at (1, 2), size 9, weight 1, flag1 1, flag2 0, flag3 0" + style},
      {Line(vem::overlay_of(image, {1, 2})), "image at (1, 2), 1x1 8U 1" + style},
      {Line(vem::overlay_of(vem::region_of("##"))), "region 2x1: 0:0-1" + style},
      {Line(vem::with_pen(VemOverlay(), 1, 2, 3, 4)), "none, pen 1 2 3 4, brush 227 224 184 0"},
      {Line(vem::to<VemOverlayPath>({VemOverlay()})), "[none" + style + "]"},
  };
  for (const LineCase& c : cases) EXPECT_EQ(c.found, c.expected);
}

TEST(VemPrintLine, KeepsThePrecisionOfTheStream) {
  std::ostringstream out;
  out << std::setprecision(3) << VemPoint(1.23456, 2) << ' ' << std::fixed << VemVar(2.0) << ' '
      << vem::circle({0.1, 2}, 3);
  EXPECT_EQ(out.str(), "(1.23, 2) 2.000 circle center (0.100, 2.000), radius 3.000");
}

TEST(VemPrintLine, FillsTheWidthOfTheStreamAsAWhole) {
  std::ostringstream out;
  out << std::setw(10) << VemPoint(1, 2) << '|' << std::left << std::setfill('.') << std::setw(12)
      << vem::array(1, "x") << '|' << std::setw(3) << VemPoint(1, 2) << '|';
  EXPECT_EQ(out.str(), "    (1, 2)|[1, \"x\"]....|(1, 2)|");
  EXPECT_EQ(out.width(), 0);

  out.str("");
  out << std::internal << std::setfill('0') << std::setw(6) << VemVar(-5);
  EXPECT_EQ(out.str(), "-00005");

  // Nothing of the stream's exceptions is raised by the line on its way.
  out.str("");
  out.exceptions(std::ios_base::eofbit | std::ios_base::failbit);
  out << std::right << std::setprecision(2) << std::setw(13) << VemPoint(0.125, 2);
  EXPECT_EQ(out.str(), "0000(0.12, 2)");
}

namespace stranger {
struct Own {};
std::ostream& operator<<(std::ostream& out, const Own&) { return out << "own"; }
std::string Both(const VemPoint& point) {
  std::ostringstream out;
  out << Own() << ' ' << point;
  return out.str();
}
}  // namespace stranger

TEST(VemPrintLine, IsFoundFromEveryNamespace) {
  EXPECT_EQ(stranger::Both(VemPoint(1, 2)), "own (1, 2)");
}

TEST(VemPrintDrawing, ShowsTheMaskOnItsCanvas) {
  const std::string picture = ".##.\n####\n....\n#..#\n";
  EXPECT_EQ(vem::drawing(vem::region_of(picture)), picture);
  EXPECT_EQ(vem::drawing(vem::mask(vem::region_of(picture))), picture);
  EXPECT_EQ(vem::drawing(VemRegion()), "");
  EXPECT_EQ(vem::drawing(vem::rect1({1, 1}, {3, 2})), "....\n.###\n.###\n");
  EXPECT_THROW(vem::drawing(vem::line({3, 0}, {3, 9})), std::invalid_argument);
  EXPECT_THROW(vem::drawing(VemROI()), std::invalid_argument);
}

TEST(VemPrintDrawing, RefusesACanvasThatNobodyReads) {
  const int most = 2147483647;
  const VemVarArray none;
  EXPECT_EQ(vem::drawing(vem::mask(none, none, none, 16383, 16384)).size(), 268435456u);
  EXPECT_THROW(vem::drawing(vem::mask(none, none, none, 16384, 16384)), std::invalid_argument);
  try {
    vem::drawing(vem::mask(none, none, none, most, most));
    FAIL();
  } catch (const std::invalid_argument& error) {
    EXPECT_STREQ(error.what(),
                 "vem::drawing: the canvas is 2147483647 by 2147483647, more than 268435456 "
                 "characters");
  }
}

TEST(VemPrintDrawing, LeavesOutWhatLiesOutside) {
  const VemRegion region = vem::region_of(3, 2, vem::array(-1, 0, 1, 2, 1),
                                          vem::array(0, -5, 2, 0, 7), vem::array(2, 0, 9, 2, 9));
  EXPECT_EQ(vem::drawing(region), "#..\n..#\n");
}

TEST(VemPrintTo, ShowsTextsInQuotesAndSmallMasksAsDrawings) {
  using testing::PrintToString;
  EXPECT_EQ(PrintToString(VemVar("x")), "\"x\"");
  EXPECT_EQ(PrintToString(VemVar(3)), "3");
  EXPECT_EQ(PrintToString(VemPoint(1, 2)), "(1, 2)");
  EXPECT_EQ(PrintToString(vem::array(1, "x")), "[1, \"x\"]");
  EXPECT_EQ(PrintToString(std::vector<VemPoint>{{1, 2}}), "{ (1, 2) }");
  EXPECT_EQ(PrintToString(vem::region_of(".#\n##")), "region 2x2: 0:1-1, 1:0-1\n.#\n##\n");
  EXPECT_EQ(PrintToString(VemRegion()), "region 0x0");
  EXPECT_EQ(PrintToString(vem::rect1({0, 0}, {1, 1})), "rect1 p1 (0, 0), p2 (1, 1)\n##\n##\n");
  EXPECT_EQ(PrintToString(vem::circle({500, 500}, 300)), "circle center (500, 500), radius 300");
  EXPECT_EQ(PrintToString(vem::circle({0, 0}, 1e9)), "circle center (0, 0), radius 1000000000");
  EXPECT_EQ(PrintToString(vem::line({3, 0}, {3, 9})), "line p1 (3, 0), p2 (3, 9)");
  EXPECT_EQ(PrintToString(VemROI()), "none");
  VemROI lost = vem::polygon({{1, 2}, {3, 4}, {5, 6}});
  VemPointArray none;
  lost.GenPolygon(none);
  EXPECT_EQ(PrintToString(lost), "polygon []");
}

// Whether values are equal, tested both ways round; equal ones have one hash.
template <class T>
bool Equal(const T& a, const T& b) {
  const bool equal = a == b;
  EXPECT_EQ(b == a, equal);
  EXPECT_EQ(a != b, !equal);
  if (equal) {
    EXPECT_EQ(std::hash<T>()(a), std::hash<T>()(b));
  }
  return equal;
}

TEST(VemPrintEquality, ComparesPoints) {
  EXPECT_TRUE(Equal(VemPoint(1, 2), VemPoint(1, 2)));
  EXPECT_TRUE(Equal(VemPoint(0.0, 2), VemPoint(-0.0, 2)));
  EXPECT_FALSE(Equal(VemPoint(1, 2), VemPoint(2, 1)));
  EXPECT_FALSE(Equal(VemPoint(kNaN, 2), VemPoint(kNaN, 2)));
  EXPECT_TRUE(Equal(Vem3DPoint(1, 2, 3), Vem3DPoint(1, 2, 3)));
  EXPECT_FALSE(Equal(Vem3DPoint(1, 2, 3), Vem3DPoint(1, 2, 4)));
}

TEST(VemPrintEquality, ComparesRegionsByCanvasAndRuns) {
  const VemRegion region = vem::region_of(".##.\n####");
  EXPECT_TRUE(Equal(region, vem::region_of(".##.\n####\n")));
  EXPECT_FALSE(Equal(region, vem::region_of(".##.\n####\n....")));
  EXPECT_FALSE(Equal(region, vem::region_of(".##.\n###.")));
  // The same pixels, in another order.
  EXPECT_FALSE(
      Equal(region, vem::region_of(4, 2, vem::array(1, 0), vem::array(0, 1), vem::array(3, 2))));
  EXPECT_FALSE(Equal(vem::region_of(4, 2, vem::array(1), vem::array(0), vem::array(3)),
                     vem::region_of(4, 2, vem::array(1), vem::array(0), vem::array(3.0))));
  EXPECT_TRUE(Equal(VemRegion(), VemRegion()));
}

TEST(VemPrintEquality, TellsEveryShapeFromEveryOther) {
  const std::vector<VemROI> shapes = {VemROI(),
                                      vem::point({1, 2}),
                                      vem::point({2, 1}),
                                      vem::rect1({1, 2}, {5, 6}),
                                      vem::rect1({1, 2}, {5, 7}),
                                      vem::circle({9, 9}, 3),
                                      vem::circle({9, 9}, 3.5),
                                      vem::ellipse({9, 9}, 3, 4, 5),
                                      vem::ellipse({9, 9}, 3, 4, 6),
                                      vem::rect2({9, 9}, 3, 4, 5),
                                      vem::rect2({9, 9}, 4, 3, 5),
                                      vem::torus({9, 9}, 3, 4, 5, 6),
                                      vem::torus({9, 9}, 3, 4, 5, 7),
                                      vem::line({1, 2}, {5, 6}),
                                      vem::line({5, 6}, {1, 2}),
                                      vem::arc({9, 9}, 3, 4, 5),
                                      vem::arc({9, 9}, 3, 5, 4),
                                      vem::polygon({{1, 2}, {3, 4}, {5, 6}}),
                                      vem::polygon({{1, 2}, {3, 4}, {5, 6}, {1, 2}}),
                                      vem::irregular({{1, 2}, {3, 4}, {5, 6}}),
                                      vem::mask(vem::region_of("##\n##")),
                                      vem::mask(vem::region_of("##\n.#"))};
  for (std::size_t i = 0; i < shapes.size(); ++i) {
    for (std::size_t j = 0; j < shapes.size(); ++j) {
      EXPECT_EQ(Equal(shapes[i], VemROI(shapes[j])), i == j) << i << ' ' << j;
    }
  }
  EXPECT_EQ(std::unordered_set<VemROI>(shapes.begin(), shapes.end()).size(), shapes.size());
}

// The readers round all of these to the same floats.
TEST(VemPrintEquality, RoundsNoNumbers) {
  const double a = 16777216, b = 16777217;
  EXPECT_FALSE(Equal(vem::point({a, 0}), vem::point({b, 0})));
  EXPECT_FALSE(Equal(vem::circle({0, a}, 3), vem::circle({0, b}, 3)));
  EXPECT_FALSE(
      Equal(vem::polygon({{a, 2}, {3, 4}, {5, 6}}), vem::polygon({{b, 2}, {3, 4}, {5, 6}})));
  EXPECT_FALSE(
      Equal(vem::rect1<VemOverlay>({0, 0}, {a, 1}), vem::rect1<VemOverlay>({0, 0}, {b, 1})));
  EXPECT_FALSE(
      Equal(vem::rake_rect2({0, 0}, a, 1, 0, 0, 2), vem::rake_rect2({0, 0}, b, 1, 0, 0, 2)));
  EXPECT_FALSE(Equal(vem::text({a, 0}, "x"), vem::text({b, 0}, "x")));
  EXPECT_NE(std::hash<VemROI>()(vem::point({a, 0})), std::hash<VemROI>()(vem::point({b, 0})));
  EXPECT_TRUE(Equal(vem::point({b, 0.0}), vem::point({b, -0.0})));
  EXPECT_FALSE(Equal(vem::point({kNaN, 0}), vem::point({kNaN, 0})));
  EXPECT_EQ(Line(vem::point({b, 0.1})), "point at (16777217, 0.1)");
}

// Numbers, runs and pixels that another type has left behind.
TEST(VemPrintEquality, LooksAtNothingThatIsCarriedAlong) {
  VemOverlay left = vem::circle<VemOverlay>({9, 9}, 3);
  left.FromROI(VemROI());
  EXPECT_TRUE(Equal(left, VemOverlay()));
  VemOverlay region = vem::overlay_of(vem::region_of("##"));
  VemPoint at(1, 2);
  region.GenPoint(at);
  EXPECT_TRUE(Equal(region, vem::point<VemOverlay>({1, 2})));
  VemROI mask = vem::mask(vem::region_of("##\n##"));
  VemPointArray chain = vem::to<VemPointArray>({{1, 2}, {3, 4}, {5, 6}});
  mask.GenPolygon(chain);
  EXPECT_TRUE(Equal(mask, vem::polygon({{1, 2}, {3, 4}, {5, 6}})));
}

TEST(VemPrintEquality, TellsEveryOverlayFromEveryOther) {
  unsigned char dark[] = {0, 0}, light[] = {0, 9};
  const std::vector<VemOverlay> overlays = {
      VemOverlay(),
      vem::with_pen(VemOverlay(), 1, 2, 3),
      vem::with_brush(VemOverlay(), 1, 2, 3),
      vem::point<VemOverlay>({1, 2}),
      vem::line<VemOverlay>({1, 2}, {5, 6}),
      vem::arrow_line({1, 2}, {5, 6}),
      vem::rect1<VemOverlay>({1, 2}, {5, 6}),
      vem::rake_rect1({1, 2}, {5, 6}, 0, 2),
      vem::rake_rect1({1, 2}, {5, 6}, 0, 3),
      vem::circle<VemOverlay>({9, 9}, 3),
      vem::ellipse<VemOverlay>({9, 9}, 3, 4, 5),
      vem::rect2<VemOverlay>({9, 9}, 3, 4, 5),
      vem::rake_rect2({9, 9}, 3, 4, 5, 1, 2),
      vem::rake_rect2({9, 9}, 3, 4, 5, 2, 2),
      vem::torus<VemOverlay>({9, 9}, 3, 4, 5, 6),
      vem::spoke_torus({9, 9}, 3, 4, 5, 6, 4, 2),
      vem::spoke_torus({9, 9}, 3, 4, 5, 6, 5, 2),
      vem::arc<VemOverlay>({9, 9}, 3, 4, 5),
      vem::polygon<VemOverlay>({{1, 2}, {3, 4}, {5, 6}}),
      vem::poly_line({{1, 2}, {3, 4}, {5, 6}}),
      vem::irregular<VemOverlay>({{1, 2}, {3, 4}, {5, 6}}),
      vem::text({1, 2}, "a"),
      vem::text({1, 2}, "b"),
      vem::text({1, 2}, "a", vem::font("Arial", 9)),
      vem::overlay_of(VemImage(dark, 0, 1, 2, 1, VemImageType8U), {1, 2}),
      vem::overlay_of(VemImage(light, 0, 1, 2, 1, VemImageType8U), {1, 2}),
      vem::overlay_of(VemImage(dark, 0, 2, 1, 1, VemImageType8U), {1, 2}),
      vem::overlay_of(VemImage(dark, 0, 1, 2, 1, VemImageType8S), {1, 2}),
      vem::overlay_of(vem::region_of("##")),
      vem::overlay_of(vem::region_of("#."))};
  for (std::size_t i = 0; i < overlays.size(); ++i) {
    for (std::size_t j = 0; j < overlays.size(); ++j) {
      EXPECT_EQ(Equal(overlays[i], VemOverlay(overlays[j])), i == j) << i << ' ' << j;
    }
  }
  EXPECT_EQ(std::unordered_set<VemOverlay>(overlays.begin(), overlays.end()).size(),
            overlays.size());
}

// An overlay of eight numbers in a raster of three dimensions, of which one is changed.
VemOverlay OfThreeDimensions(std::size_t changed, int rows) {
  const int sizes[] = {2, rows, 4 / rows};
  VemImage image;
  image.Mat().create(3, sizes, CV_8UC1);
  image.Mat().setTo(0);
  image.Mat().data[changed] = 1;
  return vem::overlay_of(image, {1, 2});
}

TEST(VemPrintEquality, ComparesRastersOfAnyDimensions) {
  for (std::size_t i = 0; i < 8; ++i) {
    for (std::size_t j = 0; j < 8; ++j) {
      EXPECT_EQ(Equal(OfThreeDimensions(i, 2), OfThreeDimensions(j, 2)), i == j) << i << ' ' << j;
    }
  }
  EXPECT_FALSE(Equal(OfThreeDimensions(0, 2), OfThreeDimensions(0, 4)));
  EXPECT_FALSE(Equal(OfThreeDimensions(0, 2), vem::overlay_of(VemImage(), {1, 2})));
}

TEST(VemPrintEquality, ComparesListsByElement) {
  const VemPointArray points = vem::to<VemPointArray>({{1, 2}, {3, 4}});
  EXPECT_TRUE(points == vem::to<VemPointArray>({{1, 2}, {3, 4}}));
  EXPECT_TRUE(points != vem::to<VemPointArray>({{1, 2}}));
  EXPECT_TRUE(points != vem::to<VemPointArray>({{1, 2}, {3, 5}}));
  EXPECT_TRUE(vem::to<Vem3DPointArray>({{1, 2, 3}}) == vem::to<Vem3DPointArray>({{1, 2, 3}}));
  EXPECT_TRUE(vem::to<VemContour>({{1, 2}}) == vem::to<VemContour>({{1, 2}}));
  EXPECT_TRUE(vem::to<VemContour>({{1, 2}}) != vem::to<VemContour>({{1, 3}}));
  EXPECT_TRUE(vem::to<VemContourArray>({VemContour()}) != VemContourArray());
  EXPECT_TRUE(vem::to<VemROIArray>({vem::point({1, 2})}) ==
              vem::to<VemROIArray>({vem::point({1, 2})}));
  EXPECT_TRUE(vem::to<VemRegionArray>({vem::region_of("#")}) !=
              vem::to<VemRegionArray>({vem::region_of(".")}));
  EXPECT_TRUE(vem::to<VemOverlayPath>({VemOverlay()}) == vem::to<VemOverlayPath>({VemOverlay()}));
  EXPECT_TRUE(VemLine(0, 0, 3, 4) == VemLine(0, 0, 3, 4));
  EXPECT_TRUE(VemLine(0, 0, 3, 4) != VemLine(0, 0, 3, 5));
  EXPECT_TRUE(VemCircle(0, 0, 3) == VemCircle(0, 0, 3));
  EXPECT_TRUE(VemCircle(0, 0, 3) != VemCircle(0, 0, 4));
}

}  // namespace
