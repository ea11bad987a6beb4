// Regions as sets of pixels, beside Qt's regions, which are bands of rectangles, and beside masks.

#include <cmath>
#include <memory>

#include <opencv2/imgproc.hpp>

#ifdef COMPARE_WITH_QT
#include <QRegion>
#include <QVector>
#endif

#include "VemRLC.h"
#include "compare/Compare.h"
#include "compare/Rasters.h"
#include "vem/region.h"

namespace {

/// A region in each of the forms that are compared.
struct Forms {
  cv::Mat mask;
  vem::pixel_set set;
#ifdef COMPARE_WITH_QT
  QRegion region;
#endif
};
using Shared = std::shared_ptr<const Forms>;

vem::pixel_set SetOf(const cv::Mat& mask) {
  cv::Mat raster = mask;
  VemRLC coder;
  coder.SetParam(1, 6, true, -1, -1, 1, false, false);
  coder.Calc(raster, true);
  std::vector<vem::pixel_run> runs;
  for (const Run& run : coder.FillRuns) runs.push_back({run.Row, run.FirstColumn, run.LastColumn});
  return vem::pixel_set(runs);
}

#ifdef COMPARE_WITH_QT
QRegion RegionOf(const vem::pixel_set& set) {
  QVector<QRect> rects;
  for (const vem::pixel_run& run : set.runs()) {
    rects.append(QRect(QPoint(run.first_column, run.row), QPoint(run.last_column, run.row)));
  }
  QRegion region;
  region.setRects(rects.constData(), rects.size());
  // Through two of Qt's own combinations, which make one band of equal runs below each other.
  const QRegion pixel(region.boundingRect().left(), region.boundingRect().top(), 1, 1);
  return region.xored(pixel).xored(pixel);
}

vem::pixel_set SetOf(const QRegion& region) {
  std::vector<vem::pixel_run> runs;
  for (const QRect& rect : region) {
    for (int row = rect.top(); row <= rect.bottom(); ++row) {
      runs.push_back({row, rect.left(), rect.right()});
    }
  }
  return vem::pixel_set(runs);
}
#endif

Shared FormsOf(const cv::Mat& mask) {
  auto forms = std::make_shared<Forms>();
  forms->mask = mask;
  forms->set = SetOf(mask);
#ifdef COMPARE_WITH_QT
  forms->region = RegionOf(forms->set);
#endif
  return forms;
}

/// The mask moved down and to the right, so that two regions of one kind overlap in part.
cv::Mat Moved(const cv::Mat& mask, int distance) {
  cv::Mat moved = cv::Mat::zeros(mask.size(), mask.type());
  const cv::Rect from(0, 0, mask.cols - distance, mask.rows - distance);
  mask(from).copyTo(moved(from + cv::Point(distance, distance)));
  return moved;
}

cv::Mat Disc(int size) {
  cv::Mat mask = cv::Mat::zeros(size, size, CV_8UC1);
  cv::circle(mask, cv::Point(size / 2, size / 2), size * 3 / 8, cv::Scalar(255), cv::FILLED);
  return mask;
}

/// A combination of two regions: ours, Qt's and that of masks.
struct Combination {
  const char* work;
  vem::pixel_set (*ours)(const vem::pixel_set&, const vem::pixel_set&);
#ifdef COMPARE_WITH_QT
  QRegion (*qt)(const QRegion&, const QRegion&);
#endif
  void (*masks)(const cv::Mat&, const cv::Mat&, cv::Mat&);
};

#ifdef COMPARE_WITH_QT
#define COMPARE_QT(name) [](const QRegion& a, const QRegion& b) { return a.name(b); },
#else
#define COMPARE_QT(name)
#endif

const Combination kCombinations[] = {
    {"region intersection", [](const vem::pixel_set& a, const vem::pixel_set& b) { return a & b; },
     COMPARE_QT(intersected)[](const cv::Mat& a, const cv::Mat& b,
                               cv::Mat& to){cv::bitwise_and(a, b, to);
}  // namespace
}
, {"region union", [](const vem::pixel_set& a, const vem::pixel_set& b) { return a | b; },
   COMPARE_QT(united)[](const cv::Mat& a, const cv::Mat& b, cv::Mat& to){cv::bitwise_or(a, b, to);
}
}
, {"region difference", [](const vem::pixel_set& a, const vem::pixel_set& b) { return a - b; },
   COMPARE_QT(subtracted)[](const cv::Mat& a, const cv::Mat& b,
                            cv::Mat& to){cv::bitwise_and(a, ~b, to);
}
}
, {"region either, not both",
   [](const vem::pixel_set& a, const vem::pixel_set& b) { return a ^ b; },
   COMPARE_QT(xored)[](const cv::Mat& a, const cv::Mat& b, cv::Mat& to){cv::bitwise_xor(a, b, to);
}
}
,
}
;

struct Bars {
  double qt;
  double masks;
  double moments;
};

void AddCombinations(const std::string& input, const Shared& a, const Shared& b, const Bars& bars,
                     std::vector<Row>& rows) {
  for (const Combination& c : kCombinations) {
    Row row;
    row.work = c.work;
    row.input = input;
    row.ours = [=] { Keep(c.ours(a->set, b->set).run_count()); };
#ifdef COMPARE_WITH_QT
    row.peers.push_back({"QRegion",
                         [=] {
                           const QRegion result = c.qt(a->region, b->region);
                           Keep(static_cast<std::size_t>(result.rectCount()));
                         },
                         bars.qt, 0});
#endif
    const auto to = std::make_shared<cv::Mat>();
    row.peers.push_back({"cv::bitwise",
                         [=] {
                           c.masks(a->mask, b->mask, *to);
                           Keep(to->data[0]);
                         },
                         bars.masks, 0});
    row.agree = [=] {
      c.masks(a->mask, b->mask, *to);
      const vem::pixel_set expected = SetOf(*to);
#ifdef COMPARE_WITH_QT
      if (SetOf(c.qt(a->region, b->region)) != expected) return false;
#endif
      return c.ours(a->set, b->set) == expected;
    };
    rows.push_back(row);
  }
}

/// Area, centre and second moments of what two regions share.
struct Measures {
  double area;
  double x;
  double y;
  double xx;
  double xy;
  double yy;
};

Measures MeasuresOf(const vem::pixel_set& a, const vem::pixel_set& b) {
  const vem::pixel_measures m = (a & b).measures();
  return {
      static_cast<double>(m.area), m.center.x, m.center.y, m.spread.xx, m.spread.xy, m.spread.yy};
}

Measures MeasuresOf(const cv::Mat& a, const cv::Mat& b, cv::Mat& to) {
  cv::bitwise_and(a, b, to);
  const cv::Moments m = cv::moments(to, true);
  return {m.m00, m.m10 / m.m00, m.m01 / m.m00, m.mu20 / m.m00, m.mu11 / m.m00, m.mu02 / m.m00};
}

bool Near(double a, double b) { return std::abs(a - b) <= 1e-6 * (1 + std::abs(a)); }

void AddMeasures(const std::string& input, const Shared& a, const Shared& b, const Bars& bars,
                 std::vector<Row>& rows) {
  Row row;
  row.work = "region intersection, measured";
  row.input = input;
  row.ours = [=] { Keep(static_cast<std::size_t>(MeasuresOf(a->set, b->set).area)); };
  const auto to = std::make_shared<cv::Mat>();
  row.peers = {{"cv::bitwise_and, cv::moments",
                [=] { Keep(static_cast<std::size_t>(MeasuresOf(a->mask, b->mask, *to).area)); },
                bars.moments, 0}};
  row.agree = [=] {
    const Measures x = MeasuresOf(a->set, b->set);
    const Measures y = MeasuresOf(a->mask, b->mask, *to);
    return x.area == y.area && Near(x.x, y.x) && Near(x.y, y.y) && Near(x.xx, y.xx) &&
           Near(x.xy, y.xy) && Near(x.yy, y.yy);
  };
  rows.push_back(row);
}

void Add(const std::string& input, const cv::Mat& mask, int distance, const Bars& bars,
         std::vector<Row>& rows) {
  const Shared a = FormsOf(mask);
  const Shared b = FormsOf(Moved(mask, distance));
  AddCombinations(input, a, b, bars, rows);
  AddMeasures(input, a, b, bars, rows);
}

}  // namespace

void AddRegionRows(const Setting& setting, std::vector<Row>& rows) {
  const int size = setting.small ? 64 : 512;
  const int large = setting.small ? 100 : 2048;
  if (setting.pictures.empty()) {
    for (const int side : {size, large}) {
      Add("disc " + std::to_string(side), Disc(side), side / 8, {1.0, 0, 1.0}, rows);
      Add("solid " + std::to_string(side), SolidRaster(side), side / 8, {1.0, 0, 1.0}, rows);
    }
    for (const int grain : {1, 4, 16}) {
      Add("noise " + std::to_string(size) + ", grain " + std::to_string(grain),
          NoiseRaster(size, grain, 50), size / 8, {1.0, 0, 1.0}, rows);
    }
  }
  for (const NamedRaster& picture : PictureRasters(setting)) {
    Add(picture.name, picture.raster, 7, {1.0, 0, 1.0}, rows);
  }
}
