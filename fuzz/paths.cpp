// Runs any operations on an overlay path, on the handle and on its implementation, beside a plain
// list. What must hold: after each operation the path has the list's elements, of their kinds, with
// their values, pens and pixels; refused arguments add an element of no kind; sources and copies
// stay as they were.

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "ByteReader.h"
#include "IVemOverlayPath.h"
#include "OverlayModel.h"
#include "Require.h"
#include "VemOverlayPath.h"
#include "support/OverlayKinds.h"
#include "support/Support.h"

namespace {

struct Element {
  PlainElement plain;
  int penWidth = 1;
  int pixel = -1;  // Of the image of one pixel that it carries, -1 for none.
};

template <typename Path>
class PathSequence {
 public:
  explicit PathSequence(ByteReader& in) : in_(in) {}

  void Perform() {
    for (int left = 40; left > 0 && !in_.IsEmpty(); --left) {
      Step(in_.Below(20));
      RequireHas(path_, list_, "the path");
      RequireHas(other_, otherList_, "the other path");
      if (list_.size() > 16) Clear();
    }
  }

 private:
  void Step(int operation) {
    switch (operation) {
      case 7:
        return AddText();
      case 8:
        return AddImage();
      case 9:
        return AddRegion();
      case 10:
        return AddOverlay();
      case 11:
        return Insert();
      case 12:
        return Remove();
      case 13:
        return Replace();
      case 14:
        return ChangeInPlace();
      case 15:
        return AddPath();
      case 16:
        return Assign();
      case 17:
        return Exchange();
      case 18:
        return in_.Byte() < 60 ? Clear() : Reserve();
      case 19:
        return ReadCopy();
      default:
        return AddKind();
    }
  }

  // Elements are reached in place: a copy of each would cost more than all else.
  void RequireHas(Path& path, const std::vector<Element>& list, const char* who) {
    const auto count = static_cast<int>(list.size());
    Require(path.Length() == count, who, " has ", path.Length(), " elements, not ", count);
    for (int i = 0; i < count; ++i) RequireIs(path[i], list[static_cast<std::size_t>(i)]);
  }

  static void RequireIs(VemOverlay& overlay, const Element& expected) {
    const IVemOverlay& o = Impl(overlay);
    Require(o.Type == expected.plain.type, "an element is of type ", o.Type, ", not ",
            expected.plain.type);
    const std::vector<VemVar>& values = expected.plain.values;
    Require(o.Params.Length() == static_cast<int>(values.size()), "an element has its values");
    for (int i = 0; i < o.Params.Length(); ++i) {
      if (Same(o.Params[i], values[static_cast<std::size_t>(i)])) continue;
      Fail("value ", i, " is ", testing::PrintToString(o.Params[i]));
    }
    Require(o.PenWidth == expected.penWidth, "an element has its pen");
    Require(o.Image.empty() ? expected.pixel < 0 : o.Image.data[0] == expected.pixel,
            "an element carries its image");
  }

  int Gap() { return in_.Below(static_cast<int>(list_.size()) + 1); }
  int Place() { return list_.empty() ? -1 : in_.Below(static_cast<int>(list_.size())); }
  Element& At(int place) { return list_[static_cast<std::size_t>(place)]; }

  // What was built in the working overlay carries its last image along.
  void Push(const PlainElement& plain) { list_.push_back({plain, 1, pixel_}); }

  void AddKind() {
    const auto& kinds = OverlayKinds();
    const OverlayKind& kind =
        kinds[static_cast<std::size_t>(in_.Below(static_cast<int>(kinds.size())))];
    const Doubles arguments = ReadArguments(in_, kind.type);
    if constexpr (std::is_same_v<Path, VemOverlayPath>) {
      if (!kind.add) return;
      kind.add(path_, arguments);
    } else {
      kind.addToImplementation(path_, arguments);
    }
    Push(ElementOf(kind.type, arguments));
  }

  void AddText() {
    VemPoint point(in_.Byte(), in_.Number());
    VemFont font;
    path_.AddText(point, "a text", font);
    Push({VemOverlayText, {point.y, point.x, "a text", 9, 1, 1, 0, 0, "Times"}});
  }

  void AddImage() {
    VemPoint point(in_.Byte(), in_.Number());
    unsigned char pixel = in_.Byte();
    VemImage image(&pixel, 1, 1, 1, 1, VemImageType8U);
    path_.AddImage(point, image);
    image.ImageData()[0] ^= 0xff;
    pixel_ = pixel;
    Push({VemOverlayImage, {point.x, point.y}});
  }

  void AddRegion() {
    VemVarArray rows(1), firsts(2), lasts(3);
    VemRegion region(rows, firsts, lasts);
    path_.AddRegion(region);
    Push({VemOverlayRegion, {}});
  }

  // An overlay with a pen of its own, and perhaps an image.
  VemOverlay ReadOverlay(Element& element) {
    VemOverlay overlay;
    element.penWidth = in_.Byte();
    overlay.SetPen(1, 2, 3, element.penWidth);
    VemPoint point(in_.Between(-9, 9), 4);
    if (in_.Flag()) {
      unsigned char pixel = in_.Byte();
      VemImage image(&pixel, 1, 1, 1, 1, VemImageType8U);
      overlay.GenImage(point, image);
      element.pixel = pixel;
    }
    overlay.GenPoint(point);
    element.plain = {VemOverlayPoint, {point.x, point.y}};
    return overlay;
  }

  void AddOverlay() {
    const int place = Place();
    if (in_.Flag() && place >= 0) {
      path_.AddOverlay(path_[place]);
      return list_.push_back(Element(At(place)));
    }
    Element element;
    VemOverlay overlay = ReadOverlay(element);
    path_.AddOverlay(overlay);
    overlay.Reset();
    list_.push_back(element);
  }

  void Insert() {
    const int gap = Gap();
    Element element;
    const VemOverlay overlay = ReadOverlay(element);
    const int place = Place();
    if (in_.Flag() && place >= 0) {
      path_.Insert(gap, path_[place]);
      element = At(place);
    } else {
      path_.Insert(gap, overlay);
    }
    list_.insert(list_.begin() + gap, element);
  }

  void Remove() {
    const int place = Place();
    if (place < 0) return;
    path_.Remove(place);
    list_.erase(list_.begin() + place);
  }

  void Replace() {
    const int place = Place();
    if (place < 0) return;
    Element element;
    const VemOverlay overlay = ReadOverlay(element);
    const int from = Place();
    if (in_.Flag()) {
      path_.Replace(place, path_[from]);
      element = At(from);
    } else {
      path_.Replace(place, overlay);
    }
    At(place) = element;
  }

  void ChangeInPlace() {
    const int place = Place();
    if (place < 0) return;
    VemPoint point(in_.Byte(), in_.Byte());
    path_[place].GenPoint(point);
    At(place).plain = {VemOverlayPoint, {point.x, point.y}};
  }

  void AddPath() {
    if (list_.size() + otherList_.size() > 20) return;
    if constexpr (std::is_same_v<Path, VemOverlayPath>) {
      if (in_.Flag()) {
        path_.AddPath(path_);
        const std::vector<Element> once = list_;
        list_.insert(list_.end(), once.begin(), once.end());
        return;
      }
      path_.AddPath(other_);
      list_.insert(list_.end(), otherList_.begin(), otherList_.end());
    } else {  // Takes a handle.
      VemOverlayPath added;
      VemPoint point(1, in_.Byte());
      added.AddPoint(point);
      added.AddPoint(point);
      path_.AddPath(added);
      for (int i = 0; i < 2; ++i) list_.push_back({{VemOverlayPoint, {point.x, point.y}}, 1, -1});
    }
  }

  void Assign() {
    Path given = (other_ = path_);
    RequireHas(given, list_, "what an assignment gives");
    otherList_ = list_;
    const Path& itself = path_;
    path_ = itself;
  }

  // What was built stays in the path that built it.
  void Exchange() {
    Path copy(path_);
    RequireHas(copy, list_, "a copy");
    path_ = other_;
    other_ = copy;
    list_.swap(otherList_);
  }

  void Clear() {
    path_.Clear();
    list_.clear();
  }

  void Reserve() {
    const int count = in_.Between(-2, 60);
    bool thrown = false;
    try {
      path_.Reserve(count);
    } catch (const std::length_error&) {
      thrown = true;
    }
    Require(thrown == (count < 0), "room for a negative count is refused");
  }

  void ReadCopy() {
    const int place = Place();
    if (place >= 0) {
      VemOverlay copy = std::as_const(path_)[place];
      RequireIs(copy, At(place));
      copy.Reset();
    }
    if constexpr (std::is_same_v<Path, IVemOverlayPath>) {
      bool thrown = false;
      const int bad = in_.Flag() ? -1 : static_cast<int>(list_.size());
      try {
        const VemOverlay none = std::as_const(path_)[bad];
      } catch (const std::out_of_range&) {
        thrown = true;
      }
      Require(thrown, "a copy from nowhere is refused");
    }
  }

  ByteReader& in_;
  Path path_;
  Path other_;
  std::vector<Element> list_;
  std::vector<Element> otherList_;
  int pixel_ = -1;  ///< What the working overlay holds.
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ByteReader in(data, size);
  if (in.Flag()) {
    PathSequence<VemOverlayPath>(in).Perform();
  } else {
    PathSequence<IVemOverlayPath>(in).Perform();
  }
  return 0;
}
