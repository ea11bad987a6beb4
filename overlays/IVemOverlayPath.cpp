#include "IVemOverlayPath.h"

#include <algorithm>

#include <opencv2/core.hpp>

#include "IVemOverlay.h"
#include "VemOverlayPath.h"
#include "values/TypedArray.h"

IVemOverlayPath::IVemOverlayPath() = default;
IVemOverlayPath::IVemOverlayPath(const IVemOverlayPath& other) : Overlays(other.Overlays) {}
IVemOverlayPath IVemOverlayPath::operator=(const IVemOverlayPath& other) {
  typed_array::Assign(Overlays, other.Overlays);
  return *this;
}
IVemOverlayPath::~IVemOverlayPath() = default;

void IVemOverlayPath::AddPoint(VemPoint& point) {
  Scratch.GenPoint(point);
  AddScratch();
}
void IVemOverlayPath::AddLine(VemPoint& p1, VemPoint& p2) {
  Scratch.GenLine(p1, p2);
  AddScratch();
}
void IVemOverlayPath::AddArrowLine(VemPoint& p1, VemPoint& p2) {
  Scratch.GenArrowLine(p1, p2);
  AddScratch();
}
void IVemOverlayPath::AddCircle(VemPoint& center, double radius) {
  Scratch.GenCircle(center, radius);
  AddScratch();
}
void IVemOverlayPath::AddRect1(VemPoint& p1, VemPoint& p2) {
  Scratch.GenRect1(p1, p2);
  AddScratch();
}
void IVemOverlayPath::AddRakeRect1(VemPoint& p1, VemPoint& p2, int mode, int count) {
  Scratch.GenRakeRect1(p1, p2, mode, count);
  AddScratch();
}
void IVemOverlayPath::AddEllipse(VemPoint& center, double radius1, double radius2, double angle) {
  Scratch.GenEllipse(center, radius1, radius2, angle);
  AddScratch();
}
void IVemOverlayPath::AddArc(VemPoint& center, double radius, double startAngle,
                             double sweepAngle) {
  Scratch.GenArc(center, radius, startAngle, sweepAngle);
  AddScratch();
}
void IVemOverlayPath::AddPolygon(const VemPointArray& points) {
  Scratch.GenPolygon(points);
  AddScratch();
}
void IVemOverlayPath::AddPolyLine(const VemPointArray& points) {
  Scratch.GenPolyLine(points);
  AddScratch();
}
void IVemOverlayPath::AddIrregular(const VemPointArray& points) {
  Scratch.GenIrregular(points);
  AddScratch();
}
void IVemOverlayPath::AddTorus(VemPoint& center, double innerRadius, double outerRadius,
                               double startAngle, double sweepAngle) {
  Scratch.GenTorus(center, innerRadius, outerRadius, startAngle, sweepAngle);
  AddScratch();
}
void IVemOverlayPath::AddSpokeTorus(VemPoint& center, double innerRadius, double outerRadius,
                                    double startAngle, double sweepAngle, int mode, int count) {
  Scratch.GenSpokeTorus(center, innerRadius, outerRadius, startAngle, sweepAngle, mode, count);
  AddScratch();
}
void IVemOverlayPath::AddRect2(VemPoint& center, double length1, double length2, double angle) {
  Scratch.GenRect2(center, length1, length2, angle);
  AddScratch();
}
void IVemOverlayPath::AddRakeRect2(VemPoint& center, double length1, double length2, double angle,
                                   int mode, int count) {
  Scratch.GenRakeRect2(center, length1, length2, angle, mode, count);
  AddScratch();
}
void IVemOverlayPath::AddText(VemPoint& point, const char* text, VemFont& font) {
  Scratch.GenText(point, text, font);
  AddScratch();
}
void IVemOverlayPath::AddImage(VemPoint& point, VemImage& image) {
  Scratch.GenImage(point, image);
  AddScratch();
}
void IVemOverlayPath::AddRegion(VemRegion& region) {
  Scratch.GenRegion(region);
  AddScratch();
}

// Copied before the list moves: the overlay may be one of its elements.
void IVemOverlayPath::AddOverlay(VemOverlay& overlay) {
  if (Overlays.size() < Overlays.capacity()) return Overlays.push_back(overlay);
  VemOverlay copy(overlay);
  Take(copy);
}

// The length counts as it is at entry, for a path that is added to itself. Where one can't be
// copied, none is added.
void IVemOverlayPath::AddPath(VemOverlayPath& path) {
  const std::size_t before = Overlays.size();
  const int count = path.Length();
  try {
    for (int i = 0; i < count; ++i) AddOverlay(path[i]);
  } catch (...) {
    while (Overlays.size() > before) Overlays.pop_back();
    throw;
  }
}

void IVemOverlayPath::Insert(int position, VemOverlay overlay) {
  if (position < 0 || position > Length()) return;
  Take(overlay);
  const std::size_t place = static_cast<std::size_t>(position);
  for (std::size_t i = Overlays.size() - 1; i > place; --i) Overlays[i].Swap(Overlays[i - 1]);
}

// Elements change places instead of being assigned: the same list, without a copy.
void IVemOverlayPath::Remove(int position) {
  if (!typed_array::InRange(Overlays, position)) return;
  for (std::size_t i = static_cast<std::size_t>(position) + 1; i < Overlays.size(); ++i) {
    Overlays[i - 1].Swap(Overlays[i]);
  }
  Overlays.pop_back();
}

void IVemOverlayPath::Replace(int position, VemOverlay overlay) {
  if (typed_array::InRange(Overlays, position)) (*this)[position].Swap(overlay);
}

void IVemOverlayPath::Clear() { typed_array::Clear(Overlays); }

// A negative count becomes a size that no vector can have.
void IVemOverlayPath::Reserve(int count) {
  const std::size_t capacity = static_cast<std::size_t>(count);
  if (capacity > Overlays.capacity()) Grow(capacity);
}

int IVemOverlayPath::Length() const { return typed_array::Length(Overlays); }

VemOverlay& IVemOverlayPath::operator[](int position) {
  return typed_array::Element(Overlays, position);
}
VemOverlay IVemOverlayPath::operator[](int position) const {
  return Overlays.at(static_cast<std::size_t>(position));
}

// A vector that grows by itself would copy every element, pixels included.
void IVemOverlayPath::Grow(std::size_t capacity) {
  std::vector<VemOverlay> grown;
  grown.reserve(capacity);
  grown.resize(Overlays.size());
  for (std::size_t i = 0; i < grown.size(); ++i) grown[i].Swap(Overlays[i]);
  Overlays.swap(grown);
}

// Adds a copy of the working overlay that shares its pixels: nothing writes into those of an
// overlay in a list, and whatever leaves the list is cloned. They are out of the way while the rest
// is copied.
void IVemOverlayPath::AddScratch() {
  MakeRoom();
  Overlays.emplace_back();
  cv::Mat pixels;
  cv::swap(pixels, Scratch.impl_->Image);
  try {
    Overlays.back() = Scratch;
  } catch (...) {
    cv::swap(pixels, Scratch.impl_->Image);
    Overlays.pop_back();
    throw;
  }
  Overlays.back().impl_->Image = pixels;
  cv::swap(pixels, Scratch.impl_->Image);
}

void IVemOverlayPath::MakeRoom() {
  if (Overlays.size() < Overlays.capacity()) return;
  Grow(std::max<std::size_t>(1, 2 * Overlays.size()));
}

// Adds an element that takes the overlay's place, and leaves a new one there.
void IVemOverlayPath::Take(VemOverlay& overlay) {
  MakeRoom();
  Overlays.emplace_back();
  Overlays.back().Swap(overlay);
}
