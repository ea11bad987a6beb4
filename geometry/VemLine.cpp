#include "VemLine.h"

#include <cmath>
#include <cstddef>
#include <type_traits>

static_assert(offsetof(VemLine, start) == 0 && offsetof(VemLine, end) == 16 &&
                  sizeof(VemLine) == 32,
              "the first end, then the second");
static_assert(std::is_trivially_copyable<VemLine>::value, "a flat value");

namespace {

// The angle of a direction against the axis along which it covers `along` of its length.
double Angle(double along, double length) {
  if (length == 0.0) return 0.0;
  return 180.0 * std::acos(along / length) / 3.1415926;
}

}  // namespace

VemLine::VemLine(VemPoint startPoint, VemPoint endPoint) {
  if (startPoint.x == endPoint.x && startPoint.y == endPoint.y) return;
  start = startPoint;
  end = endPoint;
}

VemLine::VemLine(double x1, double y1, double x2, double y2)
    : VemLine(VemPoint(x1, y1), VemPoint(x2, y2)) {}

double VemLine::Length() {
  const double dx = end.x - start.x;
  const double dy = end.y - start.y;
  return std::sqrt(dx * dx + dy * dy);
}

// The formula would miss 90 degrees by a little, for its pi is a little short.
double VemLine::VerticalAngle() {
  if (start.y == end.y && start.x != end.x) return 90.0;
  return Angle(end.y - start.y, Length());
}

double VemLine::HorizonalAngle() {
  if (start.x == end.x && start.y != end.y) return 90.0;
  return Angle(end.x - start.x, Length());
}

void VemLine::MidPoint(VemPoint* out) {
  out->x = (start.x + end.x) * 0.5;
  out->y = (start.y + end.y) * 0.5;
}
