// Sets and reads one overlay in any order: a record, a handle and a plain model side by side. What
// must hold:
//
// - a setter that takes its arguments stores them in the kind's order, one that refuses them leaves
//   no element; pixels, runs, pen and brush stay but where told;
// - each reader gives what its table says, rounded to float or not, be the values such as its
// setter
//   takes or not, and on another kind nothing;
// - copies are whole, and an overlay's pixels are its own.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "ByteReader.h"
#include "IVemOverlay.h"
#include "OverlayModel.h"
#include "Require.h"
#include "VemOverlay.h"
#include "support/OutlineReference.h"
#include "support/OverlayKinds.h"
#include "support/RunMaskReference.h"
#include "support/Support.h"

namespace {

/// All that an overlay holds.
struct Plain {
  PlainElement element;
  std::vector<unsigned char> pixels;
  int imageType = CV_8UC1;  // Its image is a row.
  int width = 0;
  int height = 0;
  std::vector<Run> runs;
  int pen[4] = {0, 0, 255, 1};
  int brush[4] = {227, 224, 184, 0};
  bool redrawPen = false;
  bool redrawBrush = false;
};

// --- What the readers give ----------------------------------------------------------------------

// For each output, x before y, the reader and the index of its value.
const char* ReadersOf(int type) {
  switch (type) {
    case VemOverlayPoint:
      return "D0D1";
    case VemOverlayArrowLine:
    case VemOverlayLine:
    case VemOverlayRect1:
      return "F1F0F3F2";
    case VemOverlayRakeRect1:
      return "F1F0F3F2W4W5";
    case VemOverlayCircle:
      return "D1D0D2";
    case VemOverlayEllipse:
    case VemOverlayRect2:
      return "F1F0D2D3D4";
    case VemOverlayRakeRect2:
      return "F1F0F2F3F4W5W6";
    case VemOverlayTorus:
      return "F1F0F2F3D4D5";
    case VemOverlaySpokeTorus:
      return "F1F0D2D3D4D5W6W7";
    default:
      return "F0F1D2D3D4";  // VemOverlayArc
  }
}

// Whether what was read passes the reader's test.
bool Passes(int type, const Doubles& o) {
  const auto isOne = [](double value, double least, double most) {
    return value >= least && value <= most;
  };
  switch (type) {
    case VemOverlayPoint:
      return true;
    case VemOverlayArrowLine:
    case VemOverlayLine:
      return o[0] != o[2] || o[1] != o[3];
    case VemOverlayRect1:
      return o[0] < o[2] && o[1] < o[3];
    case VemOverlayRakeRect1:
      return o[0] != o[2] && o[1] != o[3] && isOne(o[4], 0, 3) && o[5] >= 2;
    case VemOverlayCircle:
      return o[2] > 0;
    case VemOverlayEllipse:
    case VemOverlayRect2:
      return o[2] > 0 && o[3] > 0;
    case VemOverlayRakeRect2:
      return o[2] > 0 && o[3] > 0 && isOne(o[5], 0, 4) && o[6] >= 2;
    case VemOverlayTorus:
      return o[2] < o[3] && o[2] > 0 && o[5] > 0;
    case VemOverlaySpokeTorus:
      return o[2] <= o[3] && o[2] >= 0 && o[5] > 0 && isOne(o[6], 4, 5) && o[7] >= 2;
    case VemOverlayArc:
      return o[2] > 0 && o[4] > 0;
    default:
      return o.size() > 4;  // Chains of more than two points.
  }
}

double Narrowed(const VemVar& value) {
  return value.ValType() == VemVarString ? 0 : static_cast<double>(value.F());
}

Reading ReadingOf(int type, const std::vector<VemVar>& values) {
  Reading reading = {false, {}};
  for (std::size_t i = 0; IsChain(type) && i + 1 < values.size(); i += 2) {
    reading.outputs.push_back(Narrowed(values[i + 1]));
    reading.outputs.push_back(Narrowed(values[i]));
  }
  for (const char* reader = IsChain(type) ? "" : ReadersOf(type); *reader != '\0'; reader += 2) {
    const VemVar& value = values.at(static_cast<std::size_t>(reader[1] - '0'));
    if (*reader == 'F') reading.outputs.push_back(Narrowed(value));
    if (*reader == 'D') reading.outputs.push_back(value.D());
    if (*reader == 'W') reading.outputs.push_back(Truncated(value.D()));
  }
  reading.result = Passes(type, reading.outputs);
  return reading;
}

// Outputs are -1, -2, -3 and so on before.
Reading UntouchedOf(int type) {
  Reading reading = {false, {}};
  const int count = IsChain(type) ? 2 : CountOf(type);
  for (int i = 1; i <= count; ++i) reading.outputs.push_back(-i);
  return reading;
}

// --- What must hold -----------------------------------------------------------------------------

void RequireReading(const OverlayKind& kind, const Reading& reading, const Reading& expected,
                    const char* who) {
  if (reading == expected) return;
  Fail(who, kind.name, " gives ", testing::PrintToString(reading), ", not ",
       testing::PrintToString(expected));
}

// Reads an element of the kind. On another kind the handle's doubles are indeterminate; points and
// whole numbers stay.
void RequireReadingsOf(const OverlayKind& kind, const Plain& plain, IVemOverlay& record,
                       VemOverlay& handle) {
  if (plain.element.type != kind.type || plain.element.values.empty()) {
    RequireReading(kind, kind.get(record), UntouchedOf(kind.type), "another record's Get");
    const Reading reading = kind.read(handle);
    Require(reading.result == (kind.type == VemOverlayPoint), "another handle's Get", kind.name);
    return Require(reading.outputs[0] == -1 && reading.outputs[1] == -2,
                   "another handle's point stays");
  }
  Reading expected = ReadingOf(kind.type, plain.element.values);
  RequireReading(kind, kind.get(record), expected, "the record's Get");
  if (kind.type == VemOverlayPoint) expected.result = true;
  RequireReading(kind, kind.read(handle), expected, "the handle's Get");
}

std::vector<unsigned char> BytesOf(const cv::Mat& mat) {
  return std::vector<unsigned char>(mat.data, mat.data + mat.total() * mat.elemSize());
}

void RequireFields(const Plain& plain, const IVemOverlay& o, const char* who) {
  Require(o.Type == plain.element.type, who, " is of type ", o.Type, ", not ", plain.element.type);
  const auto count = static_cast<int>(plain.element.values.size());
  Require(o.Params.Length() == count, who, " has ", o.Params.Length(), " values, not ", count);
  for (int i = 0; i < count; ++i) {
    const VemVar& expected = plain.element.values[static_cast<std::size_t>(i)];
    if (Same(o.Params[i], expected)) continue;
    Fail(who, " has ", testing::PrintToString(o.Params[i]), " at ", i, ", not ",
         testing::PrintToString(expected));
  }
  Require(BytesOf(o.Image) == plain.pixels, who, " has its pixels");
  Require(plain.pixels.empty() || o.Image.type() == plain.imageType, who, " has its image's type");
  Require(o.Width == plain.width && o.Height == plain.height, who, " has its canvas");
  Require(RunsOf(o.Rows, o.FirstColumns, o.LastColumns) == plain.runs, who, " has its runs");
  Require(o.PenColor0 == plain.pen[0] && o.PenColor1 == plain.pen[1] &&
              o.PenColor2 == plain.pen[2] && o.PenWidth == plain.pen[3],
          who, " has its pen");
  Require(o.BrushColor0 == plain.brush[0] && o.BrushColor1 == plain.brush[1] &&
              o.BrushColor2 == plain.brush[2] && o.BrushMode == plain.brush[3],
          who, " has its brush");
  Require(o.RedrawPen == plain.redrawPen && o.RedrawBrush == plain.redrawBrush, who,
          " tells whether a caller chose them");
}

// --- The operations -----------------------------------------------------------------------------

class Overlays {
 public:
  explicit Overlays(ByteReader& in) : in_(in) {}

  void Perform() {
    for (int left = 30; left > 0 && !in_.IsEmpty(); --left) {
      Step(in_.Below(28));
      RequireFields(plain_, record_, "the record");
      RequireFields(plain_, Impl(handle_), "the handle");
      Require(handle_.OverlayType() == plain_.element.type, "a handle tells its kind");
      RequireReadings();
      RequireText();
      RequireImage();
      RequireRegion();
      RequirePens();
    }
  }

 private:
  void Step(int operation) {
    const auto& kinds = OverlayKinds();
    if (operation < 15) return SetKind(kinds[static_cast<std::size_t>(operation) % kinds.size()]);
    switch (operation) {
      case 15:
        return SetText();
      case 16:
        return SetImage();
      case 17:
        return SetRegion();
      case 18:
        return FromROI();
      case 19:
        return FromContour();
      case 20:
        return SetPen();
      case 21:
        return SetBrush();
      case 22:
        return Reset();
      case 23:
        return Copy();
      default:
        return ChangeValue();
    }
  }

  void SetKind(const OverlayKind& kind) {
    const Doubles arguments = ReadArguments(in_, kind.type);
    kind.set(record_, arguments);
    kind.gen(handle_, arguments);
    plain_.element = ElementOf(kind.type, arguments);
  }

  void SetText() {
    VemPoint point(in_.Number(), in_.Number());
    std::string text;
    for (const std::uint8_t byte : in_.Bytes(9)) text += static_cast<char>(byte);
    VemVar name("font");
    VemFont font = in_.Flag() ? VemFont(name, in_.Raw<long>()) : VemFont();
    font.Weight = in_.Byte();
    font.Flag0 = in_.Byte();
    font.Flag1 = in_.Byte();
    font.Flag2 = in_.Byte();
    font.Flag3 = in_.Byte();
    if (in_.Flag()) font.Name = VemVar(in_.Byte());
    record_.SetText(point, text.c_str(), font);
    handle_.GenText(point, text.c_str(), font);
    plain_.element = {
        VemOverlayText,
        {point.y, point.x, text.c_str(), font.Size, font.Weight, static_cast<int>(font.Flag1),
         static_cast<int>(font.Flag2), static_cast<int>(font.Flag3), font.Name}};
  }

  void SetImage() {
    VemPoint point(in_.Number(), in_.Number());
    plain_.imageType = CV_MAKETYPE(in_.Below(7), 1 + in_.Below(4));
    plain_.pixels = std::vector<unsigned char>(
        static_cast<std::size_t>(in_.Below(4)) * CV_ELEM_SIZE(plain_.imageType), in_.Byte());
    VemImage image;
    if (!plain_.pixels.empty()) {
      const int width = static_cast<int>(plain_.pixels.size() / CV_ELEM_SIZE(plain_.imageType));
      image.Mat() = cv::Mat(1, width, plain_.imageType, plain_.pixels.data()).clone();
    }
    record_.SetImage(point, image);
    handle_.GenImage(point, image);
    if (!plain_.pixels.empty()) image.ImageData()[0] ^= 0xff;  // The overlays' own stay.
    plain_.element = {VemOverlayImage, {point.x, point.y}};
  }

  void SetRegion() {
    plain_.runs.clear();
    VemVarArray rows, firsts, lasts;
    for (int left = in_.Below(5); left > 0; --left) {
      const Run run = {in_.Between(-2, 40), in_.Byte(), in_.Byte()};
      rows.Append(run.Row);
      firsts.Append(run.FirstColumn);
      lasts.Append(run.LastColumn);
      plain_.runs.push_back(run);
    }
    plain_.width = in_.Between(-2, 40);
    plain_.height = in_.Between(-2, 40);
    VemRegion region;
    region.CreateRegion(plain_.width, plain_.height, rows, firsts, lasts);
    record_.SetRegion(region);
    handle_.GenRegion(region);
    plain_.element = {VemOverlayRegion, {}};
  }

  // A shape keeps y before x, an arc too.
  void FromROI() {
    const double y = in_.Number();
    const double x = in_.Number();
    VemROI roi;
    VemPoint point(x, y);
    VemPoint second(in_.Number(), in_.Number());
    PlainElement& e = plain_.element;
    const int kind = in_.Below(6);
    if (kind == 0) {
      roi.GenArc(point, 3, second.x, 90);
      e = {VemOverlayArc, {y, x, 3.0, second.x, 90.0}};
    } else if (kind == 1) {
      roi.GenLine(point, second);
      if (roi.ROIType() == VemROILine) e = {VemOverlayLine, {y, x, second.y, second.x}};
    } else if (kind == 2) {
      roi.GenPoint(point);
      e = {VemOverlayPoint, {x, y}};
    } else if (kind == 3) {
      VemVarArray none;
      roi.GenMask(none, none, none, 5, 6);
      e = {VemOverlayRegion, {}};  // Without its runs: the overlay's own stay.
    } else if (kind == 4) {
      roi.GenTorus(point, 1, 2, 3, 0);
      e = {VemOverlayTorus, {y, x, 1.0, 2.0, 3.0, 0.0}};
    }
    if (roi.ROIType() == VemROINone) e.type = VemOverlayNone;  // The old numbers stay.
    record_.FromROI(roi);
    handle_.FromROI(roi);
  }

  void FromContour() {
    Chain points;
    for (int left = in_.Below(4); left > 0; --left) {
      points.emplace_back(in_.Number(), in_.Number());
    }
    if (plain_.element.values.size() > 60) return;
    const VemContour contour = ContourOf(points);
    record_.FromContour(contour);
    handle_.FromContour(contour);
    plain_.element.type = VemOverlayIrregular;
    for (const cv::Point2d& p : points) {
      plain_.element.values.push_back(p.y);
      plain_.element.values.push_back(p.x);
    }
  }

  void ReadFour(long (&words)[4], int (&kept)[4]) {
    for (int i = 0; i < 4; ++i) {
      words[i] = in_.Flag() ? in_.Byte() : in_.Raw<long>();
      kept[i] = static_cast<int>(static_cast<std::uint32_t>(words[i]));
    }
  }

  void SetPen() {
    long w[4];
    ReadFour(w, plain_.pen);
    record_.SetPen(w[0], w[1], w[2], w[3]);
    handle_.SetPen(w[0], w[1], w[2], w[3]);
    plain_.redrawPen = true;
  }

  void SetBrush() {
    long w[4];
    ReadFour(w, plain_.brush);
    record_.SetBrush(w[0], w[1], w[2], w[3]);
    handle_.SetBrush(w[0], w[1], w[2], w[3]);
    plain_.redrawBrush = true;
  }

  void Reset() {
    record_.Reset();
    handle_.Reset();
    plain_.element = {};
    plain_.pixels.clear();
    plain_.runs.clear();
  }

  // Values that no setter takes are read all the same.
  void ChangeValue() {
    std::vector<VemVar>& values = plain_.element.values;
    if (values.empty() || Is(VemOverlayText)) return;
    const auto count = static_cast<int>(values.size());
    const int index = in_.Flag() ? in_.Below(count) : count - 1 - in_.Below(std::min(count, 3));
    const VemVar value = in_.Flag() ? VemVar(in_.Between(-2, 7)) : VemVar(in_.Number());
    values[static_cast<std::size_t>(index)] = value;
    record_.Params.Replace(index, value);
    Impl(handle_).Params.Replace(index, value);
  }

  // By construction the pixels are shared between records, by assignment and in handles they are
  // not.
  void Copy() {
    const IVemOverlay copy(record_);
    RequireFields(plain_, copy, "a copy");
    Require(copy.Image.data == record_.Image.data, "a record's copy shares the pixels");
    record_ = copy;
    Require(plain_.pixels.empty() || copy.Image.data != record_.Image.data,
            "an assigned record does not");
    VemOverlay copied(handle_);
    RequireFields(plain_, Impl(copied), "a handle's copy");
    Require(plain_.pixels.empty() || Impl(copied).Image.data != Impl(handle_).Image.data,
            "a handle's copy shares no pixels");
    VemOverlay assigned;
    assigned.SetPen(9, 9, 9, 9);
    assigned = copied;
    const VemOverlay& itself = assigned;
    assigned = itself;
    copied.Reset();
    handle_ = assigned;
  }

  // Its own kind after each operation, the others in turn.
  void RequireReadings() {
    const auto& kinds = OverlayKinds();
    turn_ = (turn_ + 1) % kinds.size();
    RequireReadingsOf(kinds[turn_], plain_, record_, handle_);
    for (const OverlayKind& kind : kinds) {
      if (Is(kind.type)) RequireReadingsOf(kind, plain_, record_, handle_);
    }
  }

  bool Is(int type) const { return plain_.element.type == type; }

  void RequireText() {
    VemPoint point(-1, -2);
    VemVarArray text(7);
    VemFont font;
    font.Flag0 = 77;
    const bool is = Is(VemOverlayText);
    Require(record_.GetText(&point, &text, &font) == is, "GetText tells whether it is a text");
    Require(font.Flag0 == 77, "Flag0 stays");
    if (!is) {
      return Require(point.x == -1 && Same(text, VemVarArray(7)) && font.Size == 9,
                     "GetText on another kind leaves all");
    }
    const std::vector<VemVar>& values = plain_.element.values;
    const auto low = [&](std::size_t i) { return static_cast<unsigned char>(values[i].L()); };
    Require(Same(text, VemVarArray(values[2])) && font.Size == values[3].L() &&
                font.Weight == values[4].L() && font.Flag1 == low(5) && font.Flag2 == low(6) &&
                font.Flag3 == low(7) && Same(font.Name, values[8]),
            "GetText gives text and font");
    Require(Same(VemVar(point.y), VemVar(Narrowed(values[0]))) ||
                (std::isnan(point.y) && std::isnan(values[0].D())),
            "GetText gives the place");
    VemVar one;
    Require(handle_.GetText(&point, &one, in_.Flag() ? nullptr : &font), "a handle's is true");
    Require(Same(one, values[2]), "a handle's GetText gives the text");
  }

  void RequireImage() {
    VemPoint point(-1, -2);
    VemImage image, again;
    Require(record_.GetImage(&point, &image) == Is(VemOverlayImage), "GetImage tells the kind");
    Require(handle_.GetImage(&point, &again), "a handle's GetImage is true");
    const std::vector<unsigned char> none;
    const std::vector<unsigned char>& expected = Is(VemOverlayImage) ? plain_.pixels : none;
    Require(BytesOf(image.Mat()) == expected && BytesOf(again.Mat()) == expected,
            "GetImage gives the pixels");
    Require(expected.empty() || image.Mat().data != record_.Image.data, "GetImage gives a copy");
    Require(Is(VemOverlayImage) || (point.x == -1 && point.y == -2), "GetImage on another kind");
  }

  void RequireRegion() {
    VemRegion region;
    const bool is = Is(VemOverlayRegion);
    for (int i = 0; i < 2; ++i) {
      const bool result = i == 0 ? record_.GetRegion(&region) : handle_.GetRegion(&region);
      Require(result == (is || i == 1), "GetRegion tells the kind, but for a handle's");
      VemVarArray rows, firsts, lasts;
      region.GetRegionRuns(&rows, &firsts, &lasts);
      const std::vector<Run> runs = RunsOf(rows, firsts, lasts);
      Require(runs == (is ? plain_.runs : std::vector<Run>()), "GetRegion gives the runs");
      Require(
          region.Width() == (is ? plain_.width : 0) && region.Height() == (is ? plain_.height : 0),
          "GetRegion gives the canvas");
    }
  }

  void RequirePens() {
    long p[4], b[4];
    for (int i = 0; i < 2; ++i) {
      const int pen = i == 0 ? record_.GetPen(&p[0], &p[1], &p[2], &p[3])
                             : handle_.GetPen(&p[0], &p[1], &p[2], &p[3]);
      const int brush = i == 0 ? record_.GetBrush(&b[0], &b[1], &b[2], &b[3])
                               : handle_.GetBrush(&b[0], &b[1], &b[2], &b[3]);
      Require(pen == i && brush == i, "a record gives 0, a handle 1");
      for (int k = 0; k < 4; ++k) {
        Require(p[k] == plain_.pen[k] && b[k] == plain_.brush[k], "pen and brush are kept");
      }
    }
    Require(
        record_.isRedrawPen() == plain_.redrawPen && record_.isRedrawBrush() == plain_.redrawBrush,
        "whether a caller chose them is told");
  }

  ByteReader& in_;
  IVemOverlay record_;
  VemOverlay handle_;
  Plain plain_;
  std::size_t turn_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ByteReader in(data, size);
  Overlays(in).Perform();
  return 0;
}
