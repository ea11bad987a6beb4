#include "IVemROIPara.h"

#include <gtest/gtest.h>

#include "support/RoiShapes.h"

namespace {

// --- Arcs -------------------------------------------------------------------------------------

TEST(IVemROIParaRunMaskRound, Arc) {
  ExpectMasks(
      VemROIArc,
      {
          {"SweepZero", {10, 10, 5, 0, 0}, Made({{10, 15, 15}}, 16, 16)},
          {"SweepZeroFromAFraction",
           {10, 10, 5, 10.5, 0},
           Made({{9, 14, 14}, {9, 14, 14}}, 16, 16)},
          {"ClosesOnItsStart",
           {10, 10, 5, 0, 4},
           Made({{10, 15, 15}, {9, 14, 14}, {9, 14, 14}, {9, 14, 14}, {10, 15, 15}}, 16, 16)},
          {"FractionsOfTheSweep",
           {10, 10, 5, -10, 2.5},
           Made({{10, 14, 14}, {10, 14, 14}, {10, 14, 14}, {10, 14, 14}}, 16, 16)},
          {"CenterLosesItsFraction", {10.9, 10.9, 5, 0, 0}, Made({{10, 15, 15}}, 16, 16)},
          {"RadiusKeepsItsFraction", {10, 10, 5.75, 0, 0}, Made({{10, 15, 15}}, 16, 16)},
          {"RadiusKeepsItsFractionInTheCanvas", {-1, 10, 0.5, 0, 0}, kNoRunMask},
          {"NegativeColumnsDropped", {10, 0, 5, 180, 0}, Made({}, 6, 16)},
          {"NegativeRowsDropped", {0, 10, 5, 90, 0}, Made({}, 16, 6)},
          // With pi the column would be 100.
          {"ThreePointOneFour",
           {20000, 100, 10000, 90, 0},
           Made({{10000, 107, 107}}, 10101, 30001)},
          {"StartNotANumber", {10, 10, 5, kNaN, 3}, Made({}, 16, 16)},
          {"ColumnBeyondFloat",
           {10, 16777217, 5, 0, 0},
           Made({{10, 16777222, 16777222}}, 16777223, 16)},
          {"RowBeyondFloat", {16777217, 10, 5, 0, 0}, Made({{16777217, 15, 15}}, 16, 16777223)},
          {"RadiusDoesNotFit", {10, 10, 1e10, 0, 0}, Made({}, kSmallest, kSmallest)},
      });
}

// From 2147483640 degrees on there are 8 whole numbers of degrees, then the start again.
TEST(IVemROIParaRunMaskRound, ArcIsSampledUpToTheGreatestInteger) {
  const Runs runs = {{5, 11, 11}, {5, 11, 11}, {5, 10, 10}, {5, 10, 10}, {5, 10, 10},
                     {5, 10, 10}, {5, 10, 10}, {5, 10, 10}, {5, 11, 11}};
  EXPECT_EQ(MaskOf(VemROIArc, {10, 10, 5, 2147483640, 1000}), Made(runs, 16, 16));
  EXPECT_EQ(MaskOf(VemROIArc, {10, 10, 5, 2147483640, 1e6}), Made(runs, 16, 16));
  EXPECT_EQ(MaskOf(VemROIArc, {10, 10, 5, 2147483640, 8}), Made(runs, 16, 16));
}

// The cosine of 16 degrees times the radius lies 1e-7 short of a whole number and is rounded up to
// it before the column is added.
TEST(IVemROIParaRunMaskRound, ArcRoundsEachStepByItself) {
  EXPECT_EQ(MaskOf(VemROIArc, {700000000, -1660239873, 2526454907.0, 16, 0}).runs,
            (Runs{{3958469, 768443018, 768443018}}));
}

TEST(IVemROIParaRunMaskRound, ArcMatchesReference) {
  ExpectReferenceAtRandom(VemROIArc, 4000, [](Dice& r) {
    const double y = r.Anywhere();
    const double x = r.Anywhere();
    const double start = r.Turn();
    const double radius = r.OneIn(5) ? r.Number(1, 1e9) : r.Size();
    return Doubles{y, x, radius, start, r.Sweep()};
  });
}

// --- Rings ------------------------------------------------------------------------------------

const char* const kFullRing =
    "...#####...\n"
    ".#########.\n"
    ".#########.\n"
    "###########\n"
    "#####.#####\n"
    "####...####\n"
    "#####.#####\n"
    "###########\n"
    ".#########.\n"
    ".#########.\n"
    "...#####...\n";

TEST(IVemROIParaRunMaskRound, TorusBeyond358DegreesIsAFullRing) {
  for (double sweep : {359.0, 359.5, 360.0, 720.0}) {
    SCOPED_TRACE(sweep);
    EXPECT_EQ(PictureOf(MaskOf(VemROITorus, {5, 5, 2, 5, 0, sweep})), kFullRing);
    EXPECT_EQ(PictureOf(MaskOf(VemROITorus, {5.9, 5.9, 2.9, 5.9, 33, sweep})), kFullRing);
  }
}

// The gap of a sector of 358 degrees lies just below the axis at the right.
TEST(IVemROIParaRunMaskRound, TorusOf358DegreesIsASector) {
  const struct {
    double sweep;
    bool gap;
  } kCases[] = {{358, true}, {358.9, true}, {359, false}, {360, false}};
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.sweep);
    bool covered = false;
    for (const ::Run& run : MaskOf(VemROITorus, {200, 200, 80, 160, 0, c.sweep}).runs) {
      covered = covered || (run.Row == 202 && run.FirstColumn <= 340 && run.LastColumn >= 340);
    }
    EXPECT_EQ(covered, !c.gap);
  }
}

TEST(IVemROIParaRunMaskRound, TorusSectorsTurnCounterClockwise) {
  EXPECT_EQ(PictureOf(MaskOf(VemROITorus, {8, 8, 3, 8, 0, 90})),
            "........####.....\n"
            "........######...\n"
            "........#######..\n"
            "........########.\n"
            "........########.\n"
            "........#########\n"
            "..........#######\n"
            "...........######\n"
            "...........######\n"
            ".................\n"
            ".................\n"
            ".................\n"
            ".................\n"
            ".................\n"
            ".................\n"
            ".................\n"
            ".................\n");
  EXPECT_EQ(PictureOf(MaskOf(VemROITorus, {6, 6, 3, 6, 135.9, 90.9})),
            ".............\n"
            ".............\n"
            ".##..........\n"
            ".###.........\n"
            "#####........\n"
            "####.........\n"
            "####.........\n"
            "####.........\n"
            "#####........\n"
            ".###.........\n"
            ".##..........\n"
            ".............\n"
            ".............\n");
}

// For a sweep of 0 both chains of points are the centre alone.
TEST(IVemROIParaRunMaskRound, TorusOfSweepZeroHasAPoint) {
  EXPECT_EQ(MaskOf(VemROITorus, {5, 5, 2, 5, 0, 0}), Made({{5, 5, 5}}, 11, 11));
}

TEST(IVemROIParaRunMaskRound, TorusDropsWhatLiesOutside) {
  EXPECT_EQ(MaskOf(VemROITorus, {0, -1, 2, 4, 0, 360}),
            Made({{0, 1, 3}, {1, 0, 3}, {2, 0, 3}, {3, 0, 2}, {4, 0, 1}}, 4, 5));
}

TEST(IVemROIParaRunMaskRound, TorusMatchesReference) {
  ExpectReferenceAtRandom(VemROITorus, 4000, [](Dice& r) {
    const double y = r.Near();
    const double x = r.Near();
    const double inner = r.OneIn(3) ? r.Real(0.01, 3) : r.Number(1, 25);
    const double outer = inner + (r.OneIn(3) ? r.Real(0.01, 2) : r.Number(1, 15));
    const double start = r.Turn();
    return Doubles{y, x, inner, outer, start, r.Sweep()};
  });
}

TEST(IVemROIParaRunMaskRound, TorusWithoutSamplesHasNoRuns) {
  EXPECT_EQ(MaskOf(VemROITorus, {5, 5, 2, 5, kNaN, 360}), Made({}, 11, 11));
  EXPECT_EQ(MaskOf(VemROITorus, {5, 5, 2, 5, kNaN, 90}), Made({}, 11, 11));
}

TEST(IVemROIParaRunMaskRound, TorusWithARadiusThatDoesNotFitFails) {
  EXPECT_EQ(MaskOf(VemROITorus, {-1, -1, 3e9, 4e9, 0, 360}), kNoRunMask);
}

}  // namespace
