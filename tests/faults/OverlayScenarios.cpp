#include <functional>
#include <string>

#include "IVemOverlay.h"
#include "IVemOverlayPath.h"
#include "faults/Stage.h"

// Overlays: each kind of element as an overlay and in a path, and lists of them.

namespace {

/// What the elements are made of.
struct Ingredients {
  VemPoint p1 = VemPoint(1, 2);
  VemPoint p2 = VemPoint(30, 40);
  VemPointArray points = Points({{1, 2}, {30, 2}, {20, 40}, {5, 9}});
  VemFont font = Sample<VemFont>(3);
  VemImage image = Sample<VemImage>(4);
  VemRegion region = Sample<VemRegion>(3);
  VemROI roi = Sample<VemROI>(2);
  VemContour contour = Sample<VemContour>(5);
  VemOverlay overlay = ImageOverlay();
  VemOverlayPath path = Path();
};

constexpr char kText[] = "what the overlay says, at some length";

struct OverlayMaker {
  const char* name;
  void (*make)(VemOverlay& overlay, Ingredients& of);
};

const OverlayMaker kOverlayMakers[] = {
    {"GenPoint", [](VemOverlay& o, Ingredients& of) { o.GenPoint(of.p1); }},
    {"GenArrowLine", [](VemOverlay& o, Ingredients& of) { o.GenArrowLine(of.p1, of.p2); }},
    {"GenLine", [](VemOverlay& o, Ingredients& of) { o.GenLine(of.p1, of.p2); }},
    {"GenRect1", [](VemOverlay& o, Ingredients& of) { o.GenRect1(of.p1, of.p2); }},
    {"GenRakeRect1", [](VemOverlay& o, Ingredients& of) { o.GenRakeRect1(of.p1, of.p2, 1, 5); }},
    {"GenCircle", [](VemOverlay& o, Ingredients& of) { o.GenCircle(of.p1, 5); }},
    {"GenEllipse", [](VemOverlay& o, Ingredients& of) { o.GenEllipse(of.p1, 5, 6, 7); }},
    {"GenPolygon", [](VemOverlay& o, Ingredients& of) { o.GenPolygon(of.points); }},
    {"GenPolyLine", [](VemOverlay& o, Ingredients& of) { o.GenPolyLine(of.points); }},
    {"GenRect2", [](VemOverlay& o, Ingredients& of) { o.GenRect2(of.p1, 5, 6, 7); }},
    {"GenRakeRect2", [](VemOverlay& o, Ingredients& of) { o.GenRakeRect2(of.p1, 5, 6, 7, 1, 5); }},
    {"GenTorus", [](VemOverlay& o, Ingredients& of) { o.GenTorus(of.p1, 5, 6, 7, 8); }},
    {"GenSpokeTorus",
     [](VemOverlay& o, Ingredients& of) { o.GenSpokeTorus(of.p1, 5, 6, 7, 8, 4, 5); }},
    {"GenArc", [](VemOverlay& o, Ingredients& of) { o.GenArc(of.p1, 5, 6, 7); }},
    {"GenIrregular", [](VemOverlay& o, Ingredients& of) { o.GenIrregular(of.points); }},
    {"GenText", [](VemOverlay& o, Ingredients& of) { o.GenText(of.p1, kText, of.font); }},
    {"GenImage", [](VemOverlay& o, Ingredients& of) { o.GenImage(of.p1, of.image); }},
    {"GenRegion", [](VemOverlay& o, Ingredients& of) { o.GenRegion(of.region); }},
    {"FromROI", [](VemOverlay& o, Ingredients& of) { o.FromROI(of.roi); }},
    {"FromContour", [](VemOverlay& o, Ingredients& of) { o.FromContour(of.contour); }},
    {"SetPenAndBrush",
     [](VemOverlay& o, Ingredients&) { o.SetPen(1, 2, 3, 4), o.SetBrush(5, 6, 7, 8); }},
    {"Reset", [](VemOverlay& o, Ingredients&) { o.Reset(); }},
    {"Assign", [](VemOverlay& o, Ingredients& of) { o = of.overlay; }},
};

struct PathMaker {
  const char* name;
  void (*make)(VemOverlayPath& path, Ingredients& of);
};

const PathMaker kPathMakers[] = {
    {"AddPoint", [](VemOverlayPath& p, Ingredients& of) { p.AddPoint(of.p1); }},
    {"AddLine", [](VemOverlayPath& p, Ingredients& of) { p.AddLine(of.p1, of.p2); }},
    {"AddArrowLine", [](VemOverlayPath& p, Ingredients& of) { p.AddArrowLine(of.p1, of.p2); }},
    {"AddCircle", [](VemOverlayPath& p, Ingredients& of) { p.AddCircle(of.p1, 5); }},
    {"AddRect1", [](VemOverlayPath& p, Ingredients& of) { p.AddRect1(of.p1, of.p2); }},
    {"AddRakeRect1",
     [](VemOverlayPath& p, Ingredients& of) { p.AddRakeRect1(of.p1, of.p2, 1, 5); }},
    {"AddEllipse", [](VemOverlayPath& p, Ingredients& of) { p.AddEllipse(of.p1, 5, 6, 7); }},
    {"AddArc", [](VemOverlayPath& p, Ingredients& of) { p.AddArc(of.p1, 5, 6, 7); }},
    {"AddPolygon", [](VemOverlayPath& p, Ingredients& of) { p.AddPolygon(of.points); }},
    {"AddIrregular", [](VemOverlayPath& p, Ingredients& of) { p.AddIrregular(of.points); }},
    {"AddTorus", [](VemOverlayPath& p, Ingredients& of) { p.AddTorus(of.p1, 5, 6, 7, 8); }},
    {"AddSpokeTorus",
     [](VemOverlayPath& p, Ingredients& of) { p.AddSpokeTorus(of.p1, 5, 6, 7, 8, 4, 5); }},
    {"AddRect2", [](VemOverlayPath& p, Ingredients& of) { p.AddRect2(of.p1, 5, 6, 7); }},
    {"AddRakeRect2",
     [](VemOverlayPath& p, Ingredients& of) { p.AddRakeRect2(of.p1, 5, 6, 7, 1, 5); }},
    {"AddText", [](VemOverlayPath& p, Ingredients& of) { p.AddText(of.p1, kText, of.font); }},
    {"AddImage", [](VemOverlayPath& p, Ingredients& of) { p.AddImage(of.p1, of.image); }},
    {"AddRegion", [](VemOverlayPath& p, Ingredients& of) { p.AddRegion(of.region); }},
    {"AddOverlay", [](VemOverlayPath& p, Ingredients& of) { p.AddOverlay(of.overlay); }},
    {"AddOwnOverlay", [](VemOverlayPath& p, Ingredients&) { p.AddOverlay(p[1]); }},
    {"AddPath", [](VemOverlayPath& p, Ingredients& of) { p.AddPath(of.path); }},
    {"AddItself", [](VemOverlayPath& p, Ingredients&) { p.AddPath(p); }},
    {"Insert", [](VemOverlayPath& p, Ingredients& of) { p.Insert(1, of.overlay); }},
    {"Remove", [](VemOverlayPath& p, Ingredients&) { p.Remove(0); }},
    {"Replace", [](VemOverlayPath& p, Ingredients& of) { p.Replace(0, of.overlay); }},
    {"Clear", [](VemOverlayPath& p, Ingredients&) { p.Clear(); }},
    {"Reserve", [](VemOverlayPath& p, Ingredients&) { p.Reserve(9); }},
};

// A setter drops the element there was; the rest of the overlay stays.
void AddMaker(Table& table, const OverlayMaker& maker) {
  table.push_back({std::string("VemOverlay.") + maker.name, [&maker](Stage& s) {
                     Ingredients of;
                     VemOverlay overlay = Sample<VemOverlay>(7);
                     s.Try([&] { maker.make(overlay, of); }, Sound(overlay), Same(of.overlay),
                           Same(of.points), Same(of.font), Same(of.image), Same(of.region),
                           Same(of.roi), Same(of.contour));
                   }});
}

void AddMaker(Table& table, const PathMaker& maker, bool hasRoom) {
  table.push_back({std::string("VemOverlayPath.") + maker.name + (hasRoom ? "WithRoom" : ""),
                   [&maker, hasRoom](Stage& s) {
                     Ingredients of;
                     VemOverlayPath path = Path();
                     if (hasRoom) path.Reserve(5);
                     s.Try([&] { maker.make(path, of); }, AsBefore(path), Same(of.path),
                           Same(of.overlay), Same(of.image), Same(of.region));
                   }});
}

void AddReaders(Table& table) {
  const Scenario scenarios[] = {
      {"VemOverlay.Construct",
       [](Stage& s) {
         VemOverlay overlay;
         s.Try([] { VemOverlay made; }, Same(overlay));
       }},
      {"VemOverlay.CopyConstruct",
       [](Stage& s) {
         VemOverlay overlay = ImageOverlay();
         s.Try([&] { VemOverlay copy(overlay); }, Same(overlay));
       }},
      {"VemOverlay.GetText",
       [](Stage& s) {
         VemOverlay overlay = Sample<VemOverlay>(1);
         VemPoint point;
         VemVar text = Sample<VemVar>(1);
         VemFont font = Sample<VemFont>(2);
         s.Try([&] { overlay.GetText(&point, &text, &font); }, Sound(text), Sound(font),
               Same(overlay));
       }},
      {"VemOverlay.GetTextWithoutFont",
       [](Stage& s) {
         VemOverlay overlay = Sample<VemOverlay>(1);
         VemPoint point;
         VemVar text;
         s.Try([&] { overlay.GetText(&point, &text, nullptr); }, AsBefore(text), Same(overlay));
       }},
      {"VemOverlay.GetImage",
       [](Stage& s) {
         Ingredients of;
         VemOverlay overlay;
         overlay.GenImage(of.p1, of.image);
         VemPoint point;
         VemImage image = Sample<VemImage>(2);
         s.Try([&] { overlay.GetImage(&point, &image); }, AsBefore(image), Same(overlay));
       }},
      {"VemOverlay.GetRegion",
       [](Stage& s) {
         VemOverlay overlay = ImageOverlay();
         VemRegion region = Sample<VemRegion>(0);
         s.Try([&] { overlay.GetRegion(&region); }, AsBefore(region), Same(overlay));
       }},
      {"VemOverlay.GetPolygon",
       [](Stage& s) {
         Ingredients of;
         VemOverlay overlay;
         overlay.GenPolygon(of.points);
         VemPointArray points = ArrayOf<VemPointArray>(2);
         s.Try([&] { overlay.GetPolygon(&points); }, Sound(points), Same(overlay));
       }},
      {"VemOverlay.ReadersOfNumbers",
       [](Stage& s) {
         VemOverlay o = Sample<VemOverlay>(1);
         s.Try(
             [&] {
               VemPoint p1, p2;
               VemPointArray* const none = nullptr;
               double n[4];
               int i[2];
               long c[4];
               o.GetPoint(&p1), o.GetLine(&p1, &p2), o.GetArrowLine(&p1, &p2);
               o.GetRect1(&p1, &p2), o.GetRakeRect1(&p1, &p2, i, i + 1), o.GetCircle(&p1, n);
               o.GetEllipse(&p1, n, n + 1, n + 2), o.GetRect2(&p1, n, n + 1, n + 2);
               o.GetRakeRect2(&p1, n, n + 1, n + 2, i, i + 1);
               o.GetTorus(&p1, n, n + 1, n + 2, n + 3);
               o.GetSpokeTorus(&p1, n, n + 1, n + 2, n + 3, i, i + 1);
               o.GetArc(&p1, n, n + 1, n + 2), o.GetPolyLine(none), o.GetIrregular(none);
               o.GetPen(c, c + 1, c + 2, c + 3), o.GetBrush(c, c + 1, c + 2, c + 3);
               o.OverlayType();
             },
             Same(o));
       }},
      {"IVemOverlay.CopyConstruct",
       [](Stage& s) {
         IVemOverlay overlay;
         overlay.Params = ArrayOf<VemVarArray>(3);
         s.Try([&] { IVemOverlay copy(overlay); }, Same(overlay));
       }},
      {"IVemOverlay.GetText",
       [](Stage& s) {
         Ingredients of;
         IVemOverlay overlay;
         overlay.SetText(of.p1, kText, of.font);
         VemPoint point;
         VemVarArray texts = ArrayOf<VemVarArray>(3);
         s.Try([&] { overlay.GetText(&point, &texts, &of.font); }, Sound(texts), Sound(of.font),
               Same(overlay));
       }},
      {"VemFont.FromName",
       [](Stage& s) {
         VemVar name = Sample<VemVar>(1);
         s.Try([&] { VemFont font(name, 5); }, Same(name));
       }},
      {"VemFont.ConstructAndCopy",
       [](Stage& s) {
         VemFont font = Sample<VemFont>(1);
         s.Try(
             [&] {
               VemFont made;
               VemFont copy(font);
             },
             Same(font));
       }},
      {"VemFont.Assign",
       [](Stage& s) {
         VemFont font = Sample<VemFont>(1);
         VemFont source = Sample<VemFont>(2);
         s.Try([&] { font = source; }, Sound(font), Same(source));
       }},
      {"VemOverlayPath.Construct",
       [](Stage& s) {
         VemOverlayPath path;
         s.Try([] { VemOverlayPath made; }, Same(path));
       }},
      {"VemOverlayPath.CopyConstruct",
       [](Stage& s) {
         VemOverlayPath path = Path();
         s.Try([&] { VemOverlayPath copy(path); }, Same(path));
       }},
      {"VemOverlayPath.Assign",
       [](Stage& s) {
         VemOverlayPath path = Path();
         path.Reserve(5);
         VemOverlayPath source = Path();
         VemOverlay more = Sample<VemOverlay>(9);
         source.Insert(0, more);
         s.Try([&] { path = source; }, DoneOrNot(path), Same(source));
       }},
      {"VemOverlayPath.AssignItself",
       [](Stage& s) {
         VemOverlayPath path = Path();
         VemOverlayPath& itself = path;
         s.Try([&] { path = itself; }, DoneOrNot(path));
       }},
      {"VemOverlayPath.Copy",
       [](Stage& s) {
         VemOverlayPath path = Path();
         const VemOverlayPath& read = path;
         s.Try([&] { const VemOverlay copy = read[1]; }, Same(path));
       }},
      {"IVemOverlayPath.AddPolyLine",
       [](Stage& s) {
         Ingredients of;
         IVemOverlayPath path;
         s.Try([&] { path.AddPolyLine(of.points); }, AsBefore(path), Same(of.points));
       }},
      {"IVemOverlayPath.Assign",
       [](Stage& s) {
         Ingredients of;
         IVemOverlayPath path;
         path.AddPath(of.path);
         IVemOverlayPath source;
         source.AddOverlay(of.overlay);
         s.Try([&] { path = source; }, DoneOrNot(path), Same(source));
       }},
  };
  table.insert(table.end(), std::begin(scenarios), std::end(scenarios));
}

}  // namespace

void AddOverlays(Table& table) {
  for (const OverlayMaker& maker : kOverlayMakers) AddMaker(table, maker);
  for (const PathMaker& maker : kPathMakers) {
    AddMaker(table, maker, false);
    AddMaker(table, maker, true);
  }
  AddReaders(table);
}
