// All companions in one source, beside fmt and all of the library.
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <gtest/gtest.h>

#include "VemData.h"
#include "vem/json.h"
#include "vem/vem.h"

namespace {

TEST(VemAll, StandBesideOneAnother) {
  const VemROI roi = vem::rect1({2, 1}, {6, 4});
  EXPECT_EQ(vem::from_json<VemROI>(vem::to_json(roi)), roi);
  const VemVarArray values = vem::array(1, 2.5, "x");
  EXPECT_EQ(vem::from_json<VemVarArray>(vem::to_json(values)), values);
  const VemRegion region = vem::region_of(roi);
  EXPECT_EQ(vem::pixel_set(region), vem::pixel_set(vem::region_of(vem::drawing(region))));
  EXPECT_EQ(fmt::format("{}", values), "[1, 2.5, \"x\"]");
  const nlohmann::json plain = {1, 2};
  EXPECT_EQ(vem::to<VemVarArray>(plain.get<std::vector<int>>()), vem::array(1, 2));
}

}  // namespace
