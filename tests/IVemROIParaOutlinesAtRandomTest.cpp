#include "IVemROIPara.h"

#include <functional>

#include <gtest/gtest.h>

#include "VemROI.h"
#include "support/OutlineReference.h"
#include "support/RoiShapes.h"

namespace {

// --- The same shape behind a handle -----------------------------------------------------------

void GenPolygonOf(const Doubles& params, VemROI& roi, bool filled) {
  VemPointArray points;
  for (std::size_t k = 0; k + 1 < params.size(); k += 2) {
    VemPoint point(params[k + 1], params[k]);
    points.Append(point);
  }
  if (filled) {
    roi.GenPolygon(points);
  } else {
    roi.GenIrregular(points);
  }
}

// A handle on the shape, of another type when the generator refuses the numbers.
VemROI Handle(VemROIType type, const Doubles& p) {
  VemROI roi;
  VemPoint point(p[1], p[0]);
  VemPoint second = p.size() > 3 ? VemPoint(p[3], p[2]) : VemPoint();
  switch (type) {
    case VemROIRect1:
      roi.GenRect1(point, second);
      break;
    case VemROILine:
      roi.GenLine(point, second);
      break;
    case VemROICircle:
      roi.GenCircle(point, p[2]);
      break;
    case VemROITorus:
      roi.GenTorus(point, p[2], p[3], p[4], p[5]);
      break;
    case VemROIRect2:
      roi.GenRect2(point, p[2], p[3], p[4]);
      break;
    case VemROIEllipse:
      roi.GenEllipse(point, p[2], p[3], p[4]);
      break;
    case VemROIArc:
      roi.GenArc(point, p[2], p[3], p[4]);
      break;
    default:
      GenPolygonOf(p, roi, type == VemROIPolygon);
  }
  return roi;
}

// --- The plain reference, at random -----------------------------------------------------------

using Draw = std::function<Doubles(Dice&)>;

// Some of the shapes must fail, some must not.
void ExpectReference(VemROIType type, int count, const Draw& draw) {
  Dice dice(1000U + static_cast<unsigned>(type));
  int made = 0;
  int handled = 0;
  for (int i = 0; i < count; ++i) {
    const Doubles params = draw(dice);
    const OutlineMask expected = ReferenceOutlines(type, params, kWidthBefore, kHeightBefore);
    ASSERT_EQ(OutlinesOf(type, params), expected) << testing::PrintToString(params);
    made += expected.result ? 1 : 0;
    const VemROI roi = Handle(type, params);
    if (roi.ROIType() != type) continue;
    ASSERT_EQ(OutlinesOf(roi), expected) << testing::PrintToString(params);
    ++handled;
  }
  EXPECT_GT(made, count / 4);
  EXPECT_LT(made, count);
  EXPECT_GT(handled, count / 5);
}

TEST(IVemROIParaOutlinesAtRandom, Rect1FollowsThePlainSteps) {
  ExpectReference(VemROIRect1, 5000, [](Dice& d) {
    return Doubles{d.Anywhere(), d.Anywhere(), d.Anywhere(), d.Anywhere()};
  });
}

TEST(IVemROIParaOutlinesAtRandom, LineFollowsThePlainSteps) {
  ExpectReference(VemROILine, 5000, [](Dice& d) {
    return Doubles{d.Anywhere(), d.Anywhere(), d.Anywhere(), d.Anywhere()};
  });
}

TEST(IVemROIParaOutlinesAtRandom, CircleFollowsThePlainSteps) {
  ExpectReference(VemROICircle, 3000, [](Dice& d) {
    return Doubles{d.Near(), d.Near(), d.Size()};
  });
}

TEST(IVemROIParaOutlinesAtRandom, EllipseFollowsThePlainSteps) {
  ExpectReference(VemROIEllipse, 4000, [](Dice& d) {
    return Doubles{d.Near(), d.Near(), d.Size(), d.Size(), d.Turn()};
  });
}

TEST(IVemROIParaOutlinesAtRandom, Rect2FollowsThePlainSteps) {
  ExpectReference(VemROIRect2, 5000, [](Dice& d) {
    const double scale = d.OneIn(10) ? 1e6 : 1;
    return Doubles{d.Anywhere(), d.Anywhere(), d.Size() * scale, d.Size() * scale, d.Turn()};
  });
}

TEST(IVemROIParaOutlinesAtRandom, TorusFollowsThePlainSteps) {
  ExpectReference(VemROITorus, 3000, [](Dice& d) {
    const double inner = d.Size();
    return Doubles{d.Near(), d.Near(), inner, inner + d.Size(), d.Start(), d.Sweep()};
  });
}

TEST(IVemROIParaOutlinesAtRandom, ArcFollowsThePlainSteps) {
  ExpectReference(VemROIArc, 3000, [](Dice& d) {
    return Doubles{d.Anywhere(), d.Anywhere(), d.Size(), d.Start(), d.Sweep()};
  });
}

TEST(IVemROIParaOutlinesAtRandom, PolygonAndIrregularFollowThePlainSteps) {
  for (VemROIType type : {VemROIPolygon, VemROIIrregular}) {
    ExpectReference(type, 3000, [](Dice& d) {
      const double offset = d.OneIn(3) ? -70 : 0;
      Doubles params;
      for (int n = 2 * d.Int(3, 9); n > 0; --n) params.push_back(d.Anywhere() + offset);
      return params;
    });
  }
}

}  // namespace
