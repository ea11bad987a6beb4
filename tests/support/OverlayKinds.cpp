#include "support/OverlayKinds.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <tuple>
#include <type_traits>

namespace {

// Arguments from a list of numbers.
struct Numbers {
  double Next() { return list.at(next++); }

  const Doubles& list;
  std::size_t next = 0;
};

template <typename T>
T Take(Numbers& numbers) {
  return static_cast<T>(numbers.Next());
}

template <>
VemPoint Take(Numbers& numbers) {
  const double x = numbers.Next();
  return VemPoint(x, numbers.Next());
}

template <>
VemPointArray Take(Numbers& numbers) {
  VemPointArray points;
  while (numbers.next < numbers.list.size()) {
    VemPoint point = Take<VemPoint>(numbers);
    points.Append(point);
  }
  return points;
}

template <typename Object, typename... A>
std::function<void(Object&, const Doubles&)> Setter(void (Object::*operation)(A...)) {
  return [operation](Object& object, const Doubles& list) {
    Numbers numbers{list};
    std::tuple<std::decay_t<A>...> arguments{Take<std::decay_t<A>>(numbers)...};
    std::apply([&](auto&... argument) { (object.*operation)(argument...); }, arguments);
  };
}

// Outputs back to a list of numbers.
void Give(double value, Doubles& list) { list.push_back(value); }
void Give(int value, Doubles& list) { list.push_back(value); }
void Give(const VemPoint& point, Doubles& list) {
  list.push_back(point.x);
  list.push_back(point.y);
}
void Give(const VemPointArray& points, Doubles& list) {
  for (int i = 0; i < points.Length(); ++i) Give(points[i], list);
}

template <typename... A, typename Call>
Reading ReadOutputs(Call call) {
  const Doubles untouched = std::is_same_v<std::tuple<A...>, std::tuple<VemPointArray>>
                                ? Doubles{-1, -2}
                                : Doubles{-1, -2, -3, -4, -5, -6, -7, -8};
  Numbers numbers{untouched};
  std::tuple<A...> outputs{Take<A>(numbers)...};
  Reading reading{};
  std::apply(
      [&](auto&... output) {
        reading.result = call(&output...);
        (Give(output, reading.outputs), ...);
      },
      outputs);
  return reading;
}

template <typename... A>
std::function<Reading(const IVemOverlay&)> Reader(bool (IVemOverlay::*operation)(A*...) const) {
  return [operation](const IVemOverlay& overlay) {
    return ReadOutputs<A...>([&](A*... output) { return (overlay.*operation)(output...); });
  };
}

template <typename... A>
std::function<Reading(VemOverlay&)> Reader(bool (VemOverlay::*operation)(A*...)) {
  return [operation](VemOverlay& overlay) {
    return ReadOutputs<A...>([&](A*... output) { return (overlay.*operation)(output...); });
  };
}

// An argument as the implementation takes it, and as the handles do.
template <typename T>
using Fixed = std::conditional_t<std::is_class_v<T>, const T&, T>;
template <typename T>
using Passed = std::conditional_t<std::is_same_v<T, VemPoint>, VemPoint&, Fixed<T>>;

// The operations of a kind with arguments of the types T, whose exact signatures pick the overload.
template <typename... T>
OverlayKind MakeKind(const char* name, VemOverlayType type, void (IVemOverlay::*set)(Fixed<T>...),
                     bool (IVemOverlay::*get)(T*...) const, void (VemOverlay::*gen)(Passed<T>...),
                     bool (VemOverlay::*read)(T*...),
                     void (IVemOverlayPath::*addToImplementation)(Passed<T>...),
                     void (VemOverlayPath::*add)(Passed<T>...)) {
  OverlayKind kind{
      name, type, Setter(set), Reader(get), Setter(gen), Reader(read), Setter(addToImplementation),
      {}};
  if (add != nullptr) kind.add = Setter(add);
  return kind;
}

std::vector<OverlayKind> MakeKinds() {
  return {
      MakeKind<VemPoint>("Point", VemOverlayPoint, &IVemOverlay::SetPoint, &IVemOverlay::GetPoint,
                         &VemOverlay::GenPoint, &VemOverlay::GetPoint, &IVemOverlayPath::AddPoint,
                         &VemOverlayPath::AddPoint),
      MakeKind<VemPoint, VemPoint>("ArrowLine", VemOverlayArrowLine, &IVemOverlay::SetArrowLine,
                                   &IVemOverlay::GetArrowLine, &VemOverlay::GenArrowLine,
                                   &VemOverlay::GetArrowLine, &IVemOverlayPath::AddArrowLine,
                                   &VemOverlayPath::AddArrowLine),
      MakeKind<VemPoint, VemPoint>("Line", VemOverlayLine, &IVemOverlay::SetLine,
                                   &IVemOverlay::GetLine, &VemOverlay::GenLine,
                                   &VemOverlay::GetLine, &IVemOverlayPath::AddLine,
                                   &VemOverlayPath::AddLine),
      MakeKind<VemPoint, VemPoint>("Rect1", VemOverlayRect1, &IVemOverlay::SetRect1,
                                   &IVemOverlay::GetRect1, &VemOverlay::GenRect1,
                                   &VemOverlay::GetRect1, &IVemOverlayPath::AddRect1,
                                   &VemOverlayPath::AddRect1),
      MakeKind<VemPoint, VemPoint, int, int>(
          "RakeRect1", VemOverlayRakeRect1, &IVemOverlay::SetRect1, &IVemOverlay::GetRect1,
          &VemOverlay::GenRakeRect1, &VemOverlay::GetRakeRect1, &IVemOverlayPath::AddRakeRect1,
          &VemOverlayPath::AddRakeRect1),
      MakeKind<VemPoint, double>("Circle", VemOverlayCircle, &IVemOverlay::SetCircle,
                                 &IVemOverlay::GetCircle, &VemOverlay::GenCircle,
                                 &VemOverlay::GetCircle, &IVemOverlayPath::AddCircle,
                                 &VemOverlayPath::AddCircle),
      MakeKind<VemPoint, double, double, double>(
          "Ellipse", VemOverlayEllipse, &IVemOverlay::SetEllipse, &IVemOverlay::GetEllipse,
          &VemOverlay::GenEllipse, &VemOverlay::GetEllipse, &IVemOverlayPath::AddEllipse,
          &VemOverlayPath::AddEllipse),
      MakeKind<VemPointArray>("Polygon", VemOverlayPolygon, &IVemOverlay::SetPolygon,
                              &IVemOverlay::GetPolygon, &VemOverlay::GenPolygon,
                              &VemOverlay::GetPolygon, &IVemOverlayPath::AddPolygon,
                              &VemOverlayPath::AddPolygon),
      MakeKind<VemPointArray>("PolyLine", VemOverlayPolyLine, &IVemOverlay::SetPolyLine,
                              &IVemOverlay::GetPolyLine, &VemOverlay::GenPolyLine,
                              &VemOverlay::GetPolyLine, &IVemOverlayPath::AddPolyLine, nullptr),
      MakeKind<VemPoint, double, double, double>("Rect2", VemOverlayRect2, &IVemOverlay::SetRect2,
                                                 &IVemOverlay::GetRect2, &VemOverlay::GenRect2,
                                                 &VemOverlay::GetRect2, &IVemOverlayPath::AddRect2,
                                                 &VemOverlayPath::AddRect2),
      MakeKind<VemPoint, double, double, double, int, int>(
          "RakeRect2", VemOverlayRakeRect2, &IVemOverlay::SetRect2, &IVemOverlay::GetRect2,
          &VemOverlay::GenRakeRect2, &VemOverlay::GetRakeRect2, &IVemOverlayPath::AddRakeRect2,
          &VemOverlayPath::AddRakeRect2),
      MakeKind<VemPoint, double, double, double, double>(
          "Torus", VemOverlayTorus, &IVemOverlay::SetTorus, &IVemOverlay::GetTorus,
          &VemOverlay::GenTorus, &VemOverlay::GetTorus, &IVemOverlayPath::AddTorus,
          &VemOverlayPath::AddTorus),
      MakeKind<VemPoint, double, double, double, double, int, int>(
          "SpokeTorus", VemOverlaySpokeTorus, &IVemOverlay::SetTorus, &IVemOverlay::GetTorus,
          &VemOverlay::GenSpokeTorus, &VemOverlay::GetSpokeTorus, &IVemOverlayPath::AddSpokeTorus,
          &VemOverlayPath::AddSpokeTorus),
      MakeKind<VemPoint, double, double, double>(
          "Arc", VemOverlayArc, &IVemOverlay::SetArc, &IVemOverlay::GetArc, &VemOverlay::GenArc,
          &VemOverlay::GetArc, &IVemOverlayPath::AddArc, &VemOverlayPath::AddArc),
      MakeKind<VemPointArray>("Irregular", VemOverlayIrregular, &IVemOverlay::SetIrregular,
                              &IVemOverlay::GetIrregular, &VemOverlay::GenIrregular,
                              &VemOverlay::GetIrregular, &IVemOverlayPath::AddIrregular,
                              &VemOverlayPath::AddIrregular),
  };
}

bool SameNumber(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

}  // namespace

bool operator==(const Reading& a, const Reading& b) {
  return a.result == b.result && std::equal(a.outputs.begin(), a.outputs.end(), b.outputs.begin(),
                                            b.outputs.end(), SameNumber);
}

void PrintTo(const Reading& reading, std::ostream* out) {
  *out << (reading.result ? "true" : "false");
  out->precision(17);
  for (const double number : reading.outputs) *out << ", " << number;
}

const std::vector<OverlayKind>& OverlayKinds() {
  static const std::vector<OverlayKind> kinds = MakeKinds();
  return kinds;
}

const OverlayKind& KindOf(VemOverlayType type) {
  return *std::find_if(OverlayKinds().begin(), OverlayKinds().end(),
                       [&](const OverlayKind& kind) { return kind.type == type; });
}

IVemOverlay& Impl(VemOverlay& overlay) {
  IVemOverlay* impl;
  std::memcpy(&impl, &overlay, sizeof(impl));
  return *impl;
}
