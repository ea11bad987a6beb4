#include <functional>
#include <string>
#include <vector>

#include <opencv2/core.hpp>

#include "faults/Stage.h"

// Regions, their lists, shapes and their masks, and the coder.

namespace {

using Contours = std::vector<std::vector<cv::Point>>;

cv::Mat Raster() {
  cv::Mat raster = cv::Mat::zeros(20, 30, CV_8UC1);
  raster(cv::Rect(2, 3, 9, 7)).setTo(255);
  raster(cv::Rect(4, 5, 3, 2)).setTo(0);
  raster(cv::Rect(20, 1, 5, 18)).setTo(9);
  return raster;
}

struct Shape {
  const char* name;
  VemROIType type;
  std::vector<double> numbers;
};

const Shape kShapes[] = {
    {"Point", VemROIPoint, {3, 4}},
    {"Rect1", VemROIRect1, {2, 3, 40, 50}},
    {"Circle", VemROICircle, {30, 40, 25}},
    {"Ring", VemROITorus, {60, 70, 20, 50, 10, 360}},
    {"Sector", VemROITorus, {60, 70, 20, 50, 10, 100}},
    {"Polygon", VemROIPolygon, {0, 0, 5, 90, 80, 60, 20, 10}},
    {"WidePolygon", VemROIPolygon, {0, 0, 5, 9000, 80, 6000, 20, 10}},
    {"Irregular", VemROIIrregular, {0, 0, 5, 90, 80, 60}},
    {"Rect2", VemROIRect2, {50, 60, 40, 30, 33}},
    {"Rect2Upright", VemROIRect2, {50, 60, 40, 30, 90}},
    {"Line", VemROILine, {3, 4, 90, 20}},
    {"Ellipse", VemROIEllipse, {60, 70, 40, 30, 20}},
    {"Arc", VemROIArc, {60, 70, 40, 20, 200}},
};

IVemROIPara Made(const Shape& shape) {
  IVemROIPara para;
  para.Type = shape.type;
  for (const double number : shape.numbers) para.Params.Append(number);
  return para;
}

// Both masks, into new arrays and over old ones.
void AddMasks(Table& table, const Shape& shape) {
  const std::string name = std::string("IVemROIPara.GetMask.") + shape.name;
  table.push_back({name + ".Runs", [&shape](Stage& s) {
                     const IVemROIPara para = Made(shape);
                     VemVarArray rows, firsts, lasts;
                     int width = 0, height = 0;
                     s.Try([&] { para.GetMask(&rows, &firsts, &lasts, &width, &height); },
                           Empty(rows), Empty(firsts), Empty(lasts));
                   }});
  table.push_back({name + ".RunsOverOthers", [&shape](Stage& s) {
                     const IVemROIPara para = Made(shape);
                     VemVarArray rows = ArrayOf<VemVarArray>(3);
                     VemVarArray firsts = ArrayOf<VemVarArray>(2);
                     VemVarArray lasts = ArrayOf<VemVarArray>(1);
                     int width = 0, height = 0;
                     s.Try([&] { para.GetMask(&rows, &firsts, &lasts, &width, &height); },
                           Empty(rows), Empty(firsts), Empty(lasts));
                   }});
  table.push_back({name + ".Outlines", [&shape](Stage& s) {
                     IVemROIPara para = Made(shape);
                     VemContourArray contours = ArrayOf<VemContourArray>(2);
                     int width = 0, height = 0;
                     s.Try([&] { para.GetMask(&contours, &width, &height); }, Empty(contours),
                           Same(para));
                   }});
}

// A generator drops the shape there was before it stores its own.
void AddGenerator(Table& table, const char* name, std::function<void(VemROI&)> generate) {
  table.push_back({std::string("VemROI.") + name, [generate](Stage& s) {
                     VemROI roi = Mask();
                     s.Try([&] { generate(roi); }, Sound(roi));
                   }});
}

void AddGenerators(Table& table) {
  static VemPoint p1(1, 2), p2(30, 40);
  static VemPointArray points = Points({{1, 2}, {30, 2}, {20, 40}, {5, 9}});
  static VemVarArray rows = Numbers({1, 2, 30, 4});
  static VemVarArray cols = Numbers({5, 60, 7, 2});
  static VemContourArray contours = ArrayOf<VemContourArray>(2);
  AddGenerator(table, "GenPoint", [](VemROI& roi) { roi.GenPoint(p1); });
  AddGenerator(table, "GenRect1", [](VemROI& roi) { roi.GenRect1(p1, p2); });
  AddGenerator(table, "GenCircle", [](VemROI& roi) { roi.GenCircle(p1, 5); });
  AddGenerator(table, "GenTorus", [](VemROI& roi) { roi.GenTorus(p1, 5, 9, 0, 90); });
  AddGenerator(table, "GenRect2", [](VemROI& roi) { roi.GenRect2(p1, 5, 9, 30); });
  AddGenerator(table, "GenLine", [](VemROI& roi) { roi.GenLine(p1, p2); });
  AddGenerator(table, "GenEllipse", [](VemROI& roi) { roi.GenEllipse(p1, 5, 9, 30); });
  AddGenerator(table, "GenArc", [](VemROI& roi) { roi.GenArc(p1, 5, 0, 90); });
  AddGenerator(table, "GenPolygon", [](VemROI& roi) { roi.GenPolygon(rows, cols); });
  AddGenerator(table, "GenPolygonFromPoints", [](VemROI& roi) { roi.GenPolygon(points); });
  AddGenerator(table, "GenIrregular", [](VemROI& roi) { roi.GenIrregular(points); });
  AddGenerator(table, "GenMask", [](VemROI& roi) { roi.GenMask(rows, cols, rows, 80, 70); });
  AddGenerator(table, "GenMaskFromContours", [](VemROI& roi) { roi.GenMask(contours, 80, 70); });
  AddGenerator(table, "Reset", [](VemROI& roi) { roi.Reset(); });
  AddGenerator(table, "Assign", [](VemROI& roi) { roi = Sample<VemROI>(3); });
}

void AddRegions(Table& table) {
  const Scenario scenarios[] = {
      {"VemRegion.Construct",
       [](Stage& s) {
         VemRegion region;
         s.Try([] { VemRegion made; }, Same(region));
       }},
      {"VemRegion.FromRuns",
       [](Stage& s) {
         VemVarArray list = Numbers({3, 4, 5});
         s.Try([&] { VemRegion made(list, list, list); }, Same(list));
       }},
      {"VemRegion.FromRunsOnCanvas",
       [](Stage& s) {
         VemVarArray list = Numbers({3, 4, 5});
         s.Try([&] { VemRegion made(9, 9, list, list, list); }, Same(list));
       }},
      {"VemRegion.FromPoints",
       [](Stage& s) {
         VemPointArray points = Points({{1, 2}, {2, 2}, {9, 5}, {7, 1}});
         s.Try([&] { VemRegion made(points); }, Same(points));
       }},
      {"VemRegion.FromPointsOnCanvas",
       [](Stage& s) {
         VemPointArray points = Points({{1, 2}, {2, 2}, {9, 5}, {7, 1}});
         s.Try([&] { VemRegion made(20, 20, points); }, Same(points));
       }},
      {"VemRegion.CopyConstruct",
       [](Stage& s) {
         VemRegion region = OutlinedRegion(2);
         s.Try([&] { VemRegion copy(region); }, Same(region));
       }},
      {"VemRegion.Assign",
       [](Stage& s) {
         VemRegion region = OutlinedRegion(1);
         VemRegion source = OutlinedRegion(3);
         s.Try([&] { region = source; }, AsBefore(region), Same(source));
       }},
      {"VemRegion.SetRuns",
       [](Stage& s) {
         VemRegion region = OutlinedRegion(1);
         VemVarArray list = Numbers({3, 4, 5, 6, 7});
         s.Try([&] { region.SetRuns(list, list, list); }, AsBefore(region), Same(list));
       }},
      {"VemRegion.SetRunsOfTexts",
       [](Stage& s) {
         VemRegion region = OutlinedRegion(3);
         VemVarArray list = ArrayOf<VemVarArray>(2);
         s.Try([&] { region.SetRuns(list, list, list); }, Sound(region), Same(list));
       }},
      {"VemRegion.CreateRegion",
       [](Stage& s) {
         VemRegion region = OutlinedRegion(1);
         VemVarArray list = Numbers({3, 4, 5, 6, 7});
         s.Try([&] { region.CreateRegion(9, 9, list, list, list); }, Sound(region), Same(list));
       }},
      {"VemRegion.GetRegionRuns",
       [](Stage& s) {
         VemRegion region = OutlinedRegion(3);
         VemVarArray rows, firsts, lasts;
         s.Try([&] { region.GetRegionRuns(&rows, &firsts, &lasts); }, Sound(rows), Sound(firsts),
               Sound(lasts), Same(region));
       }},
      {"VemRegion.SetSize",
       [](Stage& s) {
         VemRegion region = OutlinedRegion(3);
         s.Try([&] { region.SetWidth(4), region.SetHeight(5); }, AsBefore(region));
       }},
      {"VemRegionArray.Union",
       [](Stage& s) {
         VemRegionArray array = ArrayOf<VemRegionArray>(4);
         VemRegion region = OutlinedRegion(1);
         s.Try([&] { array.Union(&region); }, AsBefore(region), Same(array));
       }},
      {"IVemRegionArrayPara.CopyConstruct",
       [](Stage& s) {
         auto para = Sample<IVemRegionArrayPara>(1);
         s.Try([&] { IVemRegionArrayPara copy(para); }, Same(para));
       }},
      {"IVemRegionArrayPara.Assign",
       [](Stage& s) {
         auto para = Sample<IVemRegionArrayPara>(1);
         auto source = Sample<IVemRegionArrayPara>(2);
         s.Try([&] { para = source; }, AsBefore(para), Same(source));
       }},
      {"IVemRegionArrayPara.Append",
       [](Stage& s) {
         auto para = Sample<IVemRegionArrayPara>(1);
         VemRegion region = OutlinedRegion(3);
         s.Try([&] { para.Append(region); }, AsBefore(para), Same(region));
       }},
      {"IVemRegionArrayPara.AppendWithoutOutlines",
       [](Stage& s) {
         auto para = Sample<IVemRegionArrayPara>(1);
         VemRegion region = OutlinedRegion(3);
         s.Try([&] { para.Append(region, true); }, AsBefore(para), Same(region));
       }},
      {"IVemRegionArrayPara.AppendLists",
       [](Stage& s) {
         auto para = Sample<IVemRegionArrayPara>(1);
         std::vector<int> list = {1, 2, 3};
         s.Try([&] { para.Append(5, 6, list, list, list); }, AsBefore(para), Same(list));
       }},
      {"IVemRegionArrayPara.AppendOutlines",
       [](Stage& s) {
         auto para = Sample<IVemRegionArrayPara>(1);
         Contours contours = {{{1, 2}, {3, 4}}, {{5, 6}}};
         std::vector<cv::Vec4i> hierarchy = {{1, 2, 3, 4}};
         s.Try([&] { para.Append(contours, hierarchy, true); }, AsBefore(para), Same(contours));
       }},
      {"IVemRegionArrayPara.Insert",
       [](Stage& s) {
         auto para = Sample<IVemRegionArrayPara>(1);
         VemRegion region = OutlinedRegion(3);
         s.Try([&] { para.Insert(1, region); }, AsBefore(para), Same(region));
       }},
      {"IVemRegionArrayPara.Replace",
       [](Stage& s) {
         auto para = Sample<IVemRegionArrayPara>(1);
         VemRegion region = OutlinedRegion(3);
         s.Try([&] { para.Replace(1, region); }, AsBefore(para), Same(region));
       }},
      {"IVemRegionArrayPara.RemoveAndSwap",
       [](Stage& s) {
         auto para = Sample<IVemRegionArrayPara>(1);
         s.Try([&] { para.Swap(0, 2), para.Remove(1), para.Clear(); }, AsBefore(para));
       }},
      {"IVemRegionArrayPara.Select",
       [](Stage& s) {
         auto para = Sample<IVemRegionArrayPara>(1);
         VemRegion region = Sample<VemRegion>(0);
         s.Try([&] { para.Select(2, region); }, AsBefore(region), Same(para));
       }},
      {"IVemRegionArrayPara.SelectPainted",
       [](Stage& s) {
         IVemRegionArrayPara para;
         para.Widths = {30};
         para.Heights = {30};
         para.Contours = {{{{1, 2}, {20, 3}, {9, 25}}}};
         para.Hierarchies = {{{-1, -1, -1, -1}}};
         VemRegion region = OutlinedRegion(1);
         s.Try([&] { para.Select(0, region); }, AsBefore(region));
       }},
      {"IVemRegionArrayPara.Union",
       [](Stage& s) {
         auto para = Sample<IVemRegionArrayPara>(1);
         VemRegion region = Sample<VemRegion>(0);
         s.Try([&] { para.Union(region); }, AsBefore(region), Same(para));
       }},
  };
  table.insert(table.end(), std::begin(scenarios), std::end(scenarios));
}

void AddROIs(Table& table) {
  const Scenario scenarios[] = {
      {"VemROI.Construct",
       [](Stage& s) {
         VemROI roi;
         s.Try([] { VemROI made(3); }, Same(roi));
       }},
      {"VemROI.CopyConstruct",
       [](Stage& s) {
         VemROI roi = Mask();
         s.Try([&] { VemROI copy(roi); }, Same(roi));
       }},
      {"VemROI.AssignMask",
       [](Stage& s) {
         VemROI roi = Sample<VemROI>(1);
         VemROI source = Mask();
         s.Try([&] { roi = source; }, Sound(roi), Same(source));
       }},
      {"VemROI.GetPolygonArrays",
       [](Stage& s) {
         VemROI roi = Sample<VemROI>(1);
         VemVarArray rows, cols;
         s.Try([&] { roi.GetPolygon(&rows, &cols); }, Sound(rows), Sound(cols), Same(roi));
       }},
      {"VemROI.GetPolygonPoints",
       [](Stage& s) {
         VemROI roi = Sample<VemROI>(1);
         VemPointArray points = ArrayOf<VemPointArray>(2);
         s.Try([&] { roi.GetPolygon(&points); }, Sound(points), Same(roi));
       }},
      {"VemROI.GetIrregular",
       [](Stage& s) {
         VemROI roi;
         VemPointArray points = ArrayOf<VemPointArray>(5);
         roi.GenIrregular(points);
         VemPointArray read;
         s.Try([&] { roi.GetIrregular(&read); }, Sound(read), Same(roi));
       }},
      {"VemROI.ReadersOfNumbers",
       [](Stage& s) {
         VemROI roi = Sample<VemROI>(1);
         VemPoint p1, p2;
         double n[4];
         s.Try(
             [&] {
               roi.GetPoint(&p1), roi.GetRect1(&p1, &p2), roi.GetLine(&p1, &p2);
               roi.GetCircle(&p1, n), roi.GetTorus(&p1, n, n + 1, n + 2, n + 3);
               roi.GetRect2(&p1, n, n + 1, n + 2), roi.GetEllipse(&p1, n, n + 1, n + 2);
               roi.GetArc(&p1, n, n + 1, n + 2), roi.ROIType();
             },
             Same(roi));
       }},
      {"VemROI.GetMaskOfMask",
       [](Stage& s) {
         VemROI roi = Mask();
         VemVarArray rows, firsts, lasts;
         int width = 0, height = 0;
         s.Try([&] { roi.GetMask(&rows, &firsts, &lasts, &width, &height); }, Empty(rows),
               Empty(firsts), Empty(lasts), Same(roi));
       }},
      {"VemROI.GetMaskOfMaskAsOutlines",
       [](Stage& s) {
         VemROI roi = Mask();
         VemContourArray contours;
         int width = 0, height = 0;
         s.Try([&] { roi.GetMask(&contours, &width, &height); }, Empty(contours), Same(roi));
       }},
      {"IVemROIPara.CopyConstruct",
       [](Stage& s) {
         IVemROIPara para = Made(kShapes[5]);
         s.Try([&] { IVemROIPara copy(para); }, Same(para));
       }},
      {"IVemROIPara.Assign",
       [](Stage& s) {
         IVemROIPara para = Made(kShapes[0]);
         IVemROIPara source = Made(kShapes[5]);
         s.Try([&] { para = source; }, Sound(para), Same(source));
       }},
      {"IVemROIPara.ToMATFromRuns",
       [](Stage& s) {
         IVemROIPara para;
         VemVarArray list = Numbers({3, 4, 5});
         cv::Mat raster;
         s.Try([&] { raster = para.ToMAT(list, list, list, 9, 9); }, AsBefore(raster), Same(list));
       }},
      {"IVemROIPara.ToMATFromContours",
       [](Stage& s) {
         IVemROIPara para;
         VemContourArray contours = ArrayOf<VemContourArray>(3);
         cv::Mat raster;
         s.Try([&] { raster = para.ToMAT(contours, 9, 9); }, AsBefore(raster), Same(contours));
       }},
      {"IVemROIPara.MatToMaskAsRuns",
       [](Stage& s) {
         IVemROIPara para;
         cv::Mat raster = Raster();
         VemVarArray rows, firsts, lasts;
         int width = 0, height = 0;
         s.Try([&] { para.MatToMask(raster, &rows, &firsts, &lasts, &width, &height); },
               AsBefore(rows), AsBefore(firsts), AsBefore(lasts), Same(raster));
       }},
      {"IVemROIPara.MatToMaskAsOutlines",
       [](Stage& s) {
         IVemROIPara para;
         cv::Mat raster = Raster();
         VemContourArray contours = ArrayOf<VemContourArray>(2);
         int width = 0, height = 0;
         s.Try([&] { para.MatToMask(raster, &contours, &width, &height); }, AsBefore(contours),
               Same(raster));
       }},
      {"IVemROIPara.VectorI2D",
       [](Stage& s) {
         IVemROIPara para;
         Contours source = {{{1, 2}, {3, 4}}, {{5, 6}}};
         std::vector<std::vector<cv::Point2d>> target;
         s.Try([&] { para.VectorI2D(source, target); }, Sound(target), Same(source));
       }},
      {"IVemROIPara.VectorD2I",
       [](Stage& s) {
         IVemROIPara para;
         std::vector<std::vector<cv::Point2d>> source = {{{1.5, 2}, {3, 4}}, {{5, 6}}};
         Contours target;
         s.Try([&] { para.VectorD2I(source, target); }, Sound(target), Same(source));
       }},
      {"IVemROIArrayPara.CopyAndAssign",
       [](Stage& s) {
         IVemROIArrayPara para;
         para.Type = VemROIPolygon;
         para.Params = ArrayOf<VemVarArray>(3);
         para.Width = para.Height = 0;
         IVemROIArrayPara target = para;
         s.Try(
             [&] {
               IVemROIArrayPara copy(para);
               target = copy;
             },
             Sound(target), Same(para));
       }},
      {"VemROIArray.Masks",
       [](Stage& s) {
         VemROIArray array;
         VemROI mask = Mask();
         array.Append(mask);
         s.Try([&] { array.Append(mask); }, AsBefore(array), Same(mask));
       }},
      {"VemROIArray.CopyOfMask",
       [](Stage& s) {
         VemROIArray array;
         VemROI mask = Mask();
         array.Append(mask);
         const VemROIArray& read = array;
         s.Try([&] { const VemROI copy = read[0]; }, Same(array));
       }},
  };
  table.insert(table.end(), std::begin(scenarios), std::end(scenarios));
}

// The coder's lists hold a part of the results where it fails.
void AddCoder(Table& table) {
  for (const char mode : {char{6}, char{9}}) {
    table.push_back(
        {std::string("VemRLC.Calc.") + (mode == 6 ? "Runs" : "Components"), [mode](Stage& s) {
           cv::Mat raster = Raster();
           VemRLC coder;
           coder.SetParam(1, mode, mode == 6, -1, -1, 1, false, false);
           s.Try([&] { coder.Calc(raster, true); }, Sound(coder), Same(raster));
         }});
  }
  table.push_back({"VemRLC.FindContours", [](Stage& s) {
                     cv::Mat raster = Raster();
                     std::vector<cv::Point> points;
                     std::vector<int> pointStarts, runStarts;
                     std::vector<cv::Vec4i> hierarchy;
                     std::vector<Run> runs;
                     s.Try(
                         [&] {
                           VemRLC::FindContours(raster, 1, &points, &pointStarts, &hierarchy,
                                                nullptr, &runs, &runStarts, true, -1, -1, 1, false);
                         },
                         Sound(points), Sound(pointStarts), Sound(hierarchy), Sound(runs),
                         Sound(runStarts), Same(raster));
                   }});
  table.push_back({"VemRLC.Convert", [](Stage& s) {
                     std::vector<cv::Point> points = {{1, 2}, {3, 4}, {5, 6}};
                     std::vector<int> starts = {0, 2, 3};
                     Contours contours;
                     s.Try([&] { VemRLC::Convert(points, starts, contours); }, Sound(contours),
                           Same(points), Same(starts));
                   }});
}

}  // namespace

void AddShapes(Table& table) {
  AddRegions(table);
  AddGenerators(table);
  AddROIs(table);
  for (const Shape& shape : kShapes) AddMasks(table, shape);
  AddCoder(table);
}
