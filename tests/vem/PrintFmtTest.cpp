#include <fmt/format.h>
#include <fmt/ranges.h>
// fmt comes first.
#include <vector>

#include <gtest/gtest.h>

#include "vem/make.h"
#include "vem/print.h"

namespace {

TEST(VemPrintFmt, FormatsEveryClassAsItsLine) {
  EXPECT_EQ(fmt::format("{}", VemPoint(1, 2.5)), "(1, 2.5)");
  EXPECT_EQ(fmt::format("{}", VemVar(0.1)), "0.1");
  EXPECT_EQ(fmt::format("{}", VemVar("text")), "text");
  EXPECT_EQ(fmt::format("{}", VemVar()), "none");
  EXPECT_EQ(fmt::format("{}", vem::array(1, "x")), "[1, \"x\"]");
  EXPECT_EQ(fmt::format("{}", vem::circle({1, 2}, 3)), "circle center (1, 2), radius 3");
  EXPECT_EQ(fmt::format("{}", vem::region_of("##")), "region 2x1: 0:0-1");
  EXPECT_EQ(fmt::format("{}", vem::to<VemROIArray>({VemROI()})), "[none]");
  EXPECT_EQ(fmt::format("{}", VemOverlay()), "none, pen 0 0 255 1, brush 227 224 184 0");
  EXPECT_EQ(fmt::format("{}", VemImage()), "0x0 8U 1");
}

TEST(VemPrintFmt, FillsAndAlignsAsAText) {
  EXPECT_EQ(fmt::format("{:>10}|{:*<8}|{:.2}", VemPoint(1, 2), VemVar(7), VemVar("text")),
            "    (1, 2)|7*******|te");
}

TEST(VemPrintFmt, FormatsThemInContainers) {
  EXPECT_EQ(fmt::format("{}", std::vector<VemPoint>{{1, 2}, {3, 4}}), "[(1, 2), (3, 4)]");
}

}  // namespace
