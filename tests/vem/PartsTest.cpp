#include "vem/parts.h"

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "IVemOverlay.h"
#include "IVemOverlayPath.h"
#include "IVemROIPara.h"
#include "IVemRegionAPara.h"
#include "VemFeatureDescriptor.h"
#include "VemOverlay.h"
#include "VemOverlayPath.h"
#include "VemROI.h"
#include "VemRegion.h"
#include "VemRegionArray.h"
#include "VemRegionData.h"

namespace {

TEST(VemParts, NumbersAreAsTheyWereSet) {
  VemROI roi;
  VemPoint point(16777217.0, 2);
  roi.GenPoint(point);
  EXPECT_EQ(vem::parts(roi).Params[0].D(), 16777217.0);
  const VemROI copy = roi;
  EXPECT_EQ(vem::parts(copy).Params[0].D(), 16777217.0);
  EXPECT_NE(&vem::parts(copy), &vem::parts(roi));

  VemOverlay overlay;
  overlay.GenRect1(point, point);
  EXPECT_EQ(vem::parts(overlay).Type, VemOverlayNone);
  overlay.FromROI(roi);
  EXPECT_EQ(vem::parts(overlay).Params[0].D(), 16777217.0);
}

TEST(VemParts, WhatIsWrittenShows) {
  VemRegion region;
  vem::parts(region).Width = 7;
  vem::parts(region).Rows.Append(3);
  EXPECT_EQ(region.Width(), 7);
  VemVarArray rows;
  VemVarArray firsts;
  VemVarArray lasts;
  region.GetRegionRuns(&rows, &firsts, &lasts);
  EXPECT_EQ(rows[0].L(), 3);

  VemRegionArray regions;
  vem::parts(regions).Append(region);
  EXPECT_EQ(regions.Length(), 1);
  VemOverlayPath path;
  vem::parts(path).Overlays.resize(4);
  EXPECT_EQ(path.Length(), 4);
}

TEST(VemParts, DescriptorsTellTheirType) {
  const VemFeatureDescriptor numbers(cv::Mat(2, 3, CV_16SC2));
  EXPECT_EQ(vem::parts(numbers).type(), CV_16SC2);
  EXPECT_EQ(vem::parts(numbers).rows, 2);
}

}  // namespace
