#include "faults/Stage.h"

// Control values and what only their array can, points, lines, circles and contours.

namespace {

const char kText[] = "a text that needs a block of its own";

// Builds a value, or any object, and drops it.
template <typename Make>
void TryMaking(Stage& stage, Make make) {
  bool made = false;
  stage.Try(
      [&] {
        make();
        made = true;
      },
      AsBefore(made));
}

template <typename Operation>
void TryOnTexts(Stage& stage, Operation operation) {
  VemVar left(kText);
  VemVar right(kText);
  stage.Try([&] { operation(left, right); }, Same(left), Same(right));
}

}  // namespace

void AddValues(Table& table) {
  const Scenario scenarios[] = {
      {"VemVar.Text", [](Stage& s) { TryMaking(s, [] { VemVar value(kText); }); }},
      {"VemVar.Numbers",
       [](Stage& s) { TryMaking(s, [] { VemVar(1L), VemVar(2), VemVar(0.5f); }); }},
      {"VemVar.CopyConstruct",
       [](Stage& s) { TryOnTexts(s, [](VemVar& left, VemVar&) { VemVar copy(left); }); }},
      {"VemVar.AssignToText",
       [](Stage& s) {
         VemVar value("another text, which goes before the new one comes");
         VemVar source(kText);
         s.Try([&] { value = source; }, Sound(value), Same(source));
       }},
      {"VemVar.AssignToNumber",
       [](Stage& s) {
         VemVar value(5);
         VemVar source(kText);
         s.Try([&] { value = source; }, Sound(value), Same(source));
       }},
      {"VemVar.CopyCtrlVal",
       [](Stage& s) {
         VemVar value;
         VemVar source(kText);
         s.Try([&] { value.CopyCtrlVal(source); }, AsBefore(value), Same(source));
       }},
      {"VemVar.Sum",
       [](Stage& s) { TryOnTexts(s, [](VemVar& left, VemVar& right) { left + right; }); }},
      {"VemVar.Comparisons",
       [](Stage& s) {
         TryOnTexts(s, [](VemVar& left, VemVar& right) {
           if (left == right && left != right) throw std::bad_alloc();
         });
       }},
      {"VemVar.Arithmetic",
       [](Stage& s) {
         TryOnTexts(s,
                    [](VemVar& left, VemVar& right) { left - right, left *right, left / right; });
       }},
      {"VemVarArray.FromText", [](Stage& s) { TryMaking(s, [] { VemVarArray array(kText); }); }},
      {"VemVarArray.FromNumber", [](Stage& s) { TryMaking(s, [] { VemVarArray array(5L); }); }},
      {"VemVarArray.FromValue",
       [](Stage& s) { TryOnTexts(s, [](VemVar& left, VemVar&) { VemVarArray array(left); }); }},
      {"VemVarArray.AppendOwnElement",
       [](Stage& s) {
         VemVarArray array = ArrayOf<VemVarArray>(4);
         s.Try([&] { array.Append(array[1]); }, AsBefore(array));
       }},
      {"VemVarArray.InsertOwnElement",
       [](Stage& s) {
         VemVarArray array = ArrayOf<VemVarArray>(4);
         s.Try([&] { array.Insert(1, array[3]); }, AsBefore(array));
       }},
      {"VemVarArray.ReplaceByNumber",
       [](Stage& s) {
         VemVarArray array = ArrayOf<VemVarArray>(4);
         s.Try([&] { array.Replace(1, 5); }, AsBefore(array));
       }},
      {"VemVarArray.CopyNumbersOverTexts",
       [](Stage& s) {
         VemVarArray array = ArrayOf<VemVarArray>(4);
         VemVarArray source = Numbers({1, 2, 3});
         s.Try([&] { array.Copy(source); }, AsBefore(array), Same(source));
       }},
      {"VemVarArray.CopyTextsOverNumbers",
       [](Stage& s) {
         VemVarArray array = Numbers({1, 2, 3, 4, 5});
         VemVarArray source = ArrayOf<VemVarArray>(3);
         s.Try([&] { array.Copy(source); }, AsBefore(array), Same(source));
       }},
      {"VemVarArray.CopyTextsToRoom",
       [](Stage& s) {
         VemVarArray array = Numbers({1, 2, 3, 4, 5});
         while (array.Length() > 0) array.Remove(0);
         VemVarArray source = ArrayOf<VemVarArray>(3);
         s.Try([&] { array.Copy(source); }, AsBefore(array), Same(source));
       }},
      {"VemVarArray.Invert",
       [](Stage& s) {
         VemVarArray array = ArrayOf<VemVarArray>(5);
         s.Try([&] { array.Invert(); }, AsBefore(array));
       }},
      {"VemVarArray.Sum",
       [](Stage& s) {
         VemVarArray left = ArrayOf<VemVarArray>(3);
         VemVarArray right = ArrayOf<VemVarArray>(3, 5);
         VemVarArray sum;
         s.Try([&] { sum = left + right; }, AsBefore(sum), Same(left), Same(right));
       }},
      {"VemVarArray.IndexOf",
       [](Stage& s) {
         VemVarArray array = ArrayOf<VemVarArray>(5);
         s.Try([&] { array.IndexOf(VemVar(7)); }, Same(array));
       }},
      {"VemVarArray.Comparisons",
       [](Stage& s) {
         VemVarArray left = ArrayOf<VemVarArray>(3);
         VemVarArray right = ArrayOf<VemVarArray>(3);
         bool equal = false;
         s.Try([&] { equal = left == right && !(left != right); }, AsBefore(equal), Same(left));
       }},
      {"VemVarArray.Reset",
       [](Stage& s) {
         alignas(VemVarArray) unsigned char place[sizeof(VemVarArray)];
         auto* const array = new (place) VemVarArray(kText);
         TryMaking(s, [&] { array->Reset(); });
       }},
      {"Vem2DVarArray.ChangeInPlace",
       [](Stage& s) {
         Vem2DVarArray table2 = ArrayOf<Vem2DVarArray>(3);
         s.Try([&] { table2[1].Append(VemVar(kText)); }, AsBefore(table2));
       }},
      {"VemPoint.All",
       [](Stage& s) {
         VemPoint point(1, 2);
         s.Try([&] { point = point + point - VemPoint(1, 2), point.Reset(3, 4); }, AsBefore(point));
       }},
      {"Vem3DPoint.All",
       [](Stage& s) {
         Vem3DPoint point(1, 2, 3);
         s.Try([&] { point = point + point - Vem3DPoint(), point.Reset(3, 4, 5); },
               AsBefore(point));
       }},
      {"VemLine.All",
       [](Stage& s) {
         VemLine line(1, 2, 30, 40);
         VemPoint middle;
         s.Try(
             [&] {
               line.MidPoint(&middle);
               line.Length(), line.VerticalAngle(), line.HorizonalAngle();
             },
             AsBefore(middle), Same(line.start));
       }},
      {"VemCircle.All",
       [](Stage& s) {
         VemCircle circle(1, 2, 3);
         s.Try([&] { circle.Perimeter(), circle.Area(); }, Same(circle.center));
       }},
      {"VemContour.CopyConstruct",
       [](Stage& s) {
         VemContour contour = Sample<VemContour>(2);
         s.Try([&] { VemContour copy(contour); }, Same(contour));
       }},
      {"VemContour.Assign",
       [](Stage& s) {
         VemContour contour = Sample<VemContour>(0);
         VemContour source = Sample<VemContour>(2);
         s.Try([&] { contour = source; }, AsBefore(contour), Same(source));
       }},
      {"VemContour.FromPointArray",
       [](Stage& s) {
         VemContour contour = Sample<VemContour>(0);
         VemPointArray points = ArrayOf<VemPointArray>(9);
         s.Try([&] { contour.FromPointArray(points); }, AsBefore(contour), Same(points));
       }},
      {"VemContour.ToPointArray",
       [](Stage& s) {
         VemContour contour = Sample<VemContour>(2);
         VemPointArray points = ArrayOf<VemPointArray>(9);
         s.Try([&] { contour.ToPointArray(&points); }, Sound(points), Same(contour));
       }},
      {"VemContour.Measures",
       [](Stage& s) {
         VemContour contour = Sample<VemContour>(2);
         s.Try([&] { contour.Perimeter(), contour.Area(), contour.Length(); }, Same(contour));
       }},
  };
  table.insert(table.end(), std::begin(scenarios), std::end(scenarios));
}
