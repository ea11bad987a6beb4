#include "scene.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <iterator>

#include <opencv2/imgproc.hpp>

#include "VemContourArray.h"
#include "VemRLC.h"

namespace {

// The drawn picture's size, in which the shapes are placed; on another picture they are scaled.
constexpr int kWidth = 1280;
constexpr int kHeight = 960;

constexpr int kFilled = cv::FILLED;
constexpr int kSmooth = cv::LINE_AA;

std::vector<cv::Point> Star(cv::Point center, double outer, double inner, int tips) {
  std::vector<cv::Point> points;
  for (int i = 0; i < 2 * tips; ++i) {
    const double radius = i % 2 == 0 ? outer : inner;
    const double angle = CV_PI * i / tips - CV_PI / 2;
    points.emplace_back(cvRound(center.x + radius * std::cos(angle)),
                        cvRound(center.y + radius * std::sin(angle)));
  }
  return points;
}

void DrawLabel(cv::Mat& picture) {
  cv::rectangle(picture, cv::Rect(120, 130, 290, 170), 225, kFilled);
  const int kBars[] = {3, 6, 2, 9, 4, 2, 7, 3, 3, 8, 2, 5, 9, 2, 4, 6, 3, 2, 8, 3};
  int x = 140;
  for (std::size_t i = 0; i < std::size(kBars); ++i) {
    if (i % 2 == 0) cv::rectangle(picture, cv::Rect(x, 150, 2 * kBars[i], 90), 35, kFilled);
    x += 2 * kBars[i] + 3;
  }
  cv::putText(picture, "PLATE 0417-B", cv::Point(140, 280), cv::FONT_HERSHEY_SIMPLEX, 0.9, 40, 2,
              kSmooth);
}

void DrawParts(cv::Mat& picture) {
  for (const cv::Point& hole :
       {cv::Point(90, 80), cv::Point(1190, 80), cv::Point(90, 880), cv::Point(1190, 880)}) {
    cv::circle(picture, hole, 22, 60, kFilled, kSmooth);
  }
  DrawLabel(picture);
  cv::circle(picture, cv::Point(560, 220), 84, 120, kFilled, kSmooth);  // a bore with a rim
  cv::circle(picture, cv::Point(560, 220), 70, 45, kFilled, kSmooth);
  cv::circle(picture, cv::Point(820, 220), 110, 205, kFilled, kSmooth);  // a washer
  cv::circle(picture, cv::Point(820, 220), 60, 150, kFilled, kSmooth);
  cv::fillPoly(picture, std::vector<std::vector<cv::Point>>{Star({1080, 260}, 105, 52, 7)}, 95,
               kSmooth);          // a toothed wheel
  for (int i = 0; i < 12; ++i) {  // a ring of rivets
    const double angle = CV_PI * i / 6;
    const cv::Point rivet(cvRound(230 + 105 * std::cos(angle)),
                          cvRound(520 + 90 * std::sin(angle)));
    cv::circle(picture, rivet, 11, 215, kFilled, kSmooth);
    cv::circle(picture, rivet + cv::Point(2, 2), 5, 130, kFilled, kSmooth);
  }
  const cv::RotatedRect bar(cv::Point2f(560, 520), cv::Size2f(260, 80), -30);
  cv::Point2f corners[4];
  bar.points(corners);
  cv::fillConvexPoly(picture, std::vector<cv::Point>(corners, corners + 4), 110, kSmooth);
  cv::line(picture, cv::Point(480, 566), cv::Point(640, 474), 190, 5, kSmooth);
  cv::ellipse(picture, cv::RotatedRect(cv::Point2f(850, 540), cv::Size2f(240, 130), -20), 70,
              kFilled, kSmooth);  // a gasket
  cv::ellipse(picture, cv::RotatedRect(cv::Point2f(850, 540), cv::Size2f(150, 60), -20), 165,
              kFilled, kSmooth);
  cv::line(picture, cv::Point(1050, 430), cv::Point(1127, 661), 235, 4, kSmooth);  // a scratch
  cv::ellipse(picture, cv::Point(330, 790), cv::Size(120, 120), 0, 180, 360, 60, 9, kSmooth);
  cv::drawMarker(picture, cv::Point(620, 780), 30, cv::MARKER_CROSS, 48, 4, kSmooth);
  cv::ellipse(picture, cv::Point(900, 790), cv::Size(130, 60), 0, 0, 360, 50, kFilled, kSmooth);
  cv::circle(picture, cv::Point(830, 770), 55, 50, kFilled, kSmooth);  // a blot of ink
  cv::circle(picture, cv::Point(985, 810), 40, 50, kFilled, kSmooth);
  cv::circle(picture, cv::Point(900, 795), 18, 175, kFilled, kSmooth);
}

// A metal plate with parts and printed marks on a dark belt, lit from the left, with sensor noise.
cv::Mat DrawPicture() {
  cv::Mat picture(kHeight, kWidth, CV_8UC1, cv::Scalar(38));
  cv::rectangle(picture, cv::Rect(40, 30, 1200, 900), 172, kFilled);
  for (int y = 30; y < 930; y += 6) {  // brushed surface
    cv::line(picture, cv::Point(40, y), cv::Point(1239, y), 166 + (y * 7) % 11, 1);
  }
  DrawParts(picture);

  cv::Mat light(1, kWidth, CV_32FC1);
  for (int x = 0; x < kWidth; ++x) {
    light.at<float>(0, x) = 1.12f - 0.35f * static_cast<float>(x) / kWidth;
  }
  cv::Mat noise(picture.size(), CV_32FC1);
  cv::RNG(417).fill(noise, cv::RNG::NORMAL, 0, 5);
  cv::Mat lit;
  cv::GaussianBlur(picture, lit, cv::Size(3, 3), 0);
  lit.convertTo(lit, CV_32F);
  cv::Mat shaded = lit.mul(cv::repeat(light, kHeight, 1)) + noise;
  shaded.convertTo(picture, CV_8U);
  return picture;
}

const char* DepthName(int depth) {
  switch (depth) {
    case CV_8U:
      return "8 bits";
    case CV_16U:
      return "16 bits";
    case CV_8S:
      return "8 bits with sign";
    case CV_16S:
      return "16 bits with sign";
    case CV_32S:
      return "32 bits with sign";
    case CV_32F:
      return "32-bit floats";
    default:
      return "64-bit floats";
  }
}

bool IsShownAsItIs(const VemImage& image) {
  return image.BitDepth() == VemImageType8U || image.BitDepth() == VemImageType16U;
}

// One channel of a picture: its brightness, in its own depth where that is 8 or 16 bits.
cv::Mat GreyOf(const VemImage& image) {
  cv::Mat grey = image.Mat();
  if (!IsShownAsItIs(image)) grey.convertTo(grey, CV_32F);
  if (grey.channels() == 3) {
    cv::cvtColor(grey, grey, cv::COLOR_BGR2GRAY);
  } else if (grey.channels() > 1) {
    cv::extractChannel(grey, grey, 0);
  }
  return grey;
}

VemImage ImageOf(const cv::Mat& mat) {
  VemImage image;
  image.Mat() = mat;
  return image;
}

Picture PictureOf(const VemImage& image) {
  Picture picture;
  picture.image = image;
  picture.grey = ImageOf(GreyOf(image));
  if (image.BitDepth() == VemImageType16U) picture.white = 65535;
  if (!IsShownAsItIs(image)) {
    cv::minMaxLoc(picture.grey.Mat(), &picture.black, &picture.white);
    picture.white = std::max(picture.white, picture.black + 1);
  }
  return picture;
}

void PrintWhatIsTaken(const char* name, const VemImage& image) {
  const int channels = image.Channels();
  std::printf("%s: %d x %d, %d channel%s of %s\n", name, image.Width(), image.Height(), channels,
              channels == 1 ? "" : "s", DepthName(image.Mat().depth()));
  if (channels == 3) std::printf("Measured is the brightness of its colours.\n");
  if (channels == 2 || channels > 3) std::printf("Measured and shown is its first channel.\n");
  if (!IsShownAsItIs(image)) {
    std::printf(
        "Measured as 32-bit floats; shown in 8 bits, from its least to its greatest value.\n");
  }
  if (image.Width() != kWidth || image.Height() != kHeight) {
    std::printf(
        "The shapes are those of a picture of %d x %d, scaled by %.3g across and %.3g down.\n",
        kWidth, kHeight, 1.0 * image.Width() / kWidth, 1.0 * image.Height() / kHeight);
  }
}

/// Places shapes on a picture of any size.
class Placement {
 public:
  explicit Placement(const VemImage& image)
      : xScale_(static_cast<double>(image.Width()) / kWidth),
        yScale_(static_cast<double>(image.Height()) / kHeight) {}

  VemPoint At(double x, double y) const { return VemPoint(x * xScale_, y * yScale_); }
  double Length(double length) const { return length * std::min(xScale_, yScale_); }
  cv::Point Pixel(double x, double y) const {
    return cv::Point(cvRound(x * xScale_), cvRound(y * yScale_));
  }

 private:
  double xScale_;
  double yScale_;
};

VemPointArray PlaceStar(const Placement& place) {
  VemPointArray points;
  for (const cv::Point& p : Star({1080, 260}, 105, 52, 7)) {
    VemPoint point = place.At(p.x, p.y);
    points.Append(point);
  }
  return points;
}

VemPointArray PlaceRivets(const Placement& place) {
  VemPointArray points;
  for (int i = 0; i < 12; ++i) {
    const double angle = CV_PI * i / 6;
    VemPoint point = place.At(230 + 105 * std::cos(angle), 520 + 90 * std::sin(angle));
    points.Append(point);
  }
  return points;
}

// The dark pixels in the lower right part of the picture, found by a threshold and coded as runs.
VemROI DarkPixels(const Picture& picture, const Placement& place) {
  constexpr double kDark = 80.0 / 255;
  const VemImage& grey = picture.grey;
  const cv::Rect part = cv::Rect(place.Pixel(740, 690), place.Pixel(1060, 880));
  cv::Mat dark;
  if (part.area() > 0) {
    const double limit = picture.black + kDark * (picture.white - picture.black);
    cv::compare(grey.Mat()(part), limit, dark, cv::CMP_LE);
  }
  VemRLC coder;
  coder.SetParam(1, 6, true, -1, -1, 1, false, false);
  coder.Calc(dark, true);
  VemVarArray rows;
  VemVarArray firstColumns;
  VemVarArray lastColumns;
  for (const Run& run : coder.FillRuns) {
    rows.Append(run.Row + part.y);
    firstColumns.Append(run.FirstColumn + part.x);
    lastColumns.Append(run.LastColumn + part.x);
  }
  VemROI roi;
  roi.GenMask(rows, firstColumns, lastColumns, grey.Width(), grey.Height());
  return roi;
}

// The least box that holds a shape's runs, its vertices, and a point's place.
cv::Rect BoxOf(const VemROI& roi) {
  cv::Rect box;
  const auto add = [&](int x, int y, int end) { box |= cv::Rect(x, y, end - x, 1); };
  VemVarArray rows;
  VemVarArray firstColumns;
  VemVarArray lastColumns;
  int width = 0;
  int height = 0;
  roi.GetMask(&rows, &firstColumns, &lastColumns, &width, &height);
  for (int i = 0; i < rows.Length(); ++i) {
    add(firstColumns[i].I(), rows[i].I(), lastColumns[i].I() + 1);
  }
  VemContourArray contours;
  roi.GetMask(&contours, &width, &height);
  for (int i = 0; i < contours.Length(); ++i) {
    VemPointArray points;
    contours[i].ToPointArray(&points);
    for (int j = 0; j < points.Length(); ++j) {
      const cv::Point vertex(cvRound(points[j].x), cvRound(points[j].y));
      add(vertex.x, vertex.y, vertex.x + 1);
    }
  }
  cv::Point place;
  if (PlaceOf(roi, &place)) add(place.x, place.y, place.x + 1);
  return box;
}

bool HasPixels(const VemROI& roi) {
  VemVarArray rows;
  VemVarArray firstColumns;
  VemVarArray lastColumns;
  int width = 0;
  int height = 0;
  roi.GetMask(&rows, &firstColumns, &lastColumns, &width, &height);
  bool hasPixels = roi.ROIType() == VemROIPoint;
  for (int i = 0; i < rows.Length(); ++i) {
    if (firstColumns[i].I() <= lastColumns[i].I()) hasPixels = true;
  }
  return hasPixels;
}

// Why a shape is left out; null if it is not.
const char* ReasonToLeaveOut(const VemROI& roi, const VemImage& image) {
  if (roi.ROIType() == VemROINone) return "it is too small here to be a shape";
  if (!HasPixels(roi)) return "it has no pixels here";
  const cv::Rect picture(0, 0, image.Width(), image.Height());
  const cv::Rect box = BoxOf(roi);
  if ((box & picture) != box) return "it reaches beyond the picture";
  return nullptr;
}

void LeaveOutWhatIsOutside(std::vector<Shape>& shapes, const VemImage& image) {
  const auto isOutside = [&](const Shape& shape) {
    const char* const reason = ReasonToLeaveOut(shape.roi, image);
    if (reason) std::printf("%s is left out: %s.\n", shape.name, reason);
    return reason != nullptr;
  };
  shapes.erase(std::remove_if(shapes.begin(), shapes.end(), isOutside), shapes.end());
}

}  // namespace

Picture GetPicture(int argc, char** argv) {
  VemImage image;
  if (argc > 1) {
    image.ReadImage(argv[1]);
  } else {
    image = ImageOf(DrawPicture());
  }
  if (image.Width() == 0) {
    std::fprintf(stderr, "cannot read the picture %s\n", argv[1]);
    return Picture();
  }
  PrintWhatIsTaken(argc > 1 ? argv[1] : "Drawn picture", image);
  return PictureOf(image);
}

std::vector<Shape> PlaceShapes(const Picture& picture) {
  const Placement place(picture.image);
  const auto color = [](int red, int green, int blue) { return cv::Scalar(blue, green, red); };
  std::vector<Shape> shapes = {
      {"Rect1", color(230, 60, 60), place.Pixel(125, 122), VemROI()},
      {"Circle", color(240, 150, 40), place.Pixel(505, 125), VemROI()},
      {"Torus", color(245, 215, 50), place.Pixel(775, 100), VemROI()},
      {"Polygon", color(120, 200, 60), place.Pixel(1020, 145), VemROI()},
      {"Irregular", color(40, 190, 120), place.Pixel(165, 525), VemROI()},
      {"Rect2", color(40, 200, 210), place.Pixel(440, 455), VemROI()},
      {"Ellipse", color(60, 130, 240), place.Pixel(790, 445), VemROI()},
      {"Line", color(110, 80, 240), place.Pixel(1120, 545), VemROI()},
      {"Arc", color(180, 70, 230), place.Pixel(300, 765), VemROI()},
      {"Point", color(240, 70, 190), place.Pixel(580, 745), VemROI()},
      {"Mask", color(250, 90, 130), place.Pixel(800, 705), VemROI()},
  };
  std::size_t next = 0;
  const auto shape = [&]() -> VemROI& { return shapes[next++].roi; };

  VemPoint p1 = place.At(120, 130);
  VemPoint p2 = place.At(410, 300);
  shape().GenRect1(p1, p2);
  VemPoint center = place.At(560, 220);
  shape().GenCircle(center, place.Length(72));
  center = place.At(820, 220);
  shape().GenTorus(center, place.Length(60), place.Length(110), 20, 280);
  VemPointArray star = PlaceStar(place);
  shape().GenPolygon(star);
  VemPointArray rivets = PlaceRivets(place);
  shape().GenIrregular(rivets);
  center = place.At(560, 520);
  shape().GenRect2(center, place.Length(260), place.Length(80), 30);
  center = place.At(850, 540);
  shape().GenEllipse(center, place.Length(120), place.Length(65), 20);
  p1 = place.At(1050, 430);
  p2 = place.At(1127, 661);
  p2.x = std::max(p2.x, p1.x + 1);  // A line must not be upright.
  shape().GenLine(p1, p2);
  center = place.At(330, 790);
  shape().GenArc(center, place.Length(120), 0, 180);
  p1 = place.At(620, 780);
  shape().GenPoint(p1);
  shape() = DarkPixels(picture, place);
  LeaveOutWhatIsOutside(shapes, picture.image);
  return shapes;
}

std::vector<Span> SpansOf(VemRegion& region, const VemImage& image) {
  VemVarArray rows;
  VemVarArray firstColumns;
  VemVarArray lastColumns;
  region.GetRegionRuns(&rows, &firstColumns, &lastColumns);
  std::vector<Span> spans;
  for (int i = 0; i < rows.Length(); ++i) {
    const Span span = {rows[i].I(), std::max(firstColumns[i].I(), 0),
                       std::min(lastColumns[i].I() + 1, image.Width())};
    const bool inside = span.row >= 0 && span.row < image.Height() && span.first < span.end;
    if (inside) spans.push_back(span);
  }
  return spans;
}

Show::Show(const Picture& picture) : scale_(1), light_(1) {
  constexpr int kLeast = 320;  // Of fewer columns, names and dots would hide all.
  const VemImage& image = picture.image;
  const bool isColor = image.Channels() == 3;
  canvas_ = (isColor ? image : picture.grey).Mat().clone();
  if (!IsShownAsItIs(image)) {
    const double factor = 255 / (picture.white - picture.black);
    canvas_.convertTo(canvas_, CV_8U, factor, -picture.black * factor);
  }
  if (!isColor) cv::cvtColor(canvas_, canvas_, cv::COLOR_GRAY2BGR);
  if (canvas_.depth() == CV_16U) light_ = 257;
  if (canvas_.cols < kLeast) {
    scale_ = (kLeast + canvas_.cols - 1) / canvas_.cols;
    cv::resize(canvas_, canvas_, cv::Size(), scale_, scale_, cv::INTER_NEAREST);
    std::printf("Shown %d times as large: a pixel is a square of %d.\n", scale_, scale_);
  }
}

Show Show::Copy() const {
  Show copy = *this;
  copy.canvas_ = canvas_.clone();
  return copy;
}

void Show::Tint(const std::vector<Span>& spans, const cv::Scalar& color) {
  constexpr double kShare = 0.55;
  for (const Span& span : spans) {
    const cv::Rect place(span.first, span.row, span.end - span.first, 1);
    cv::Mat run = canvas_(cv::Rect(place.tl() * scale_, place.size() * scale_));
    run = run * (1 - kShare) + Shade(color) * kShare;
  }
  const auto isPixel = [](const Span& span) { return span.end - span.first == 1; };
  if (!std::all_of(spans.begin(), spans.end(), isPixel)) return;
  for (const Span& span : spans) Dot(cv::Point(span.first, span.row), canvas_.cols / 350, color);
}

void Show::Outline(const std::vector<cv::Point>& vertices, const cv::Scalar& color) {
  for (std::size_t i = 1; i < vertices.size(); ++i) {
    cv::line(canvas_, Center(vertices[i - 1]), Center(vertices[i]), Shade(color), 1, kSmooth);
  }
  const int radius = vertices.size() < 32 ? canvas_.cols / 250 : canvas_.cols / 640;
  for (const cv::Point& vertex : vertices) Dot(vertex, radius, color);
}

void Show::Dashes(const cv::Point& from, const cv::Point& to, const cv::Scalar& color) {
  const cv::Point2d start = Center(from);
  const cv::Point2d way = cv::Point2d(Center(to)) - start;
  const int dashes = 1 + canvas_.cols / 100;
  for (int i = 0; i < dashes; ++i) {
    const cv::Point2d begin = start + way * ((i + 0.25) / dashes);
    cv::line(canvas_, begin, begin + way * (0.5 / dashes), Shade(color), 1, kSmooth);
  }
}

void Show::Cross(const cv::Point& pixel, const cv::Scalar& color) {
  const int size = 1 + canvas_.cols / 40;
  cv::drawMarker(canvas_, Center(pixel), Shade(color), cv::MARKER_CROSS, size,
                 1 + canvas_.cols / 640, kSmooth);
}

void Show::Name(const Shape& shape) {
  Write(shape.name, shape.label * scale_, 0.8, shape.color * 0.5 + cv::Scalar::all(127));
}

void Show::Remark(const cv::Point& pixel, const std::string& text, const cv::Scalar& color) {
  const cv::Point below(0, cvRound(canvas_.cols / 36.0));
  Write(text, Center(pixel) + below, 0.6, color * 0.5 + cv::Scalar::all(127));
}

void Show::Write(const std::string& text, const cv::Point& place, double size,
                 const cv::Scalar& color) {
  const double scaled = canvas_.cols * size / kWidth;
  const int stroke = std::max(1, cvRound(scaled * 2));
  cv::putText(canvas_, text, place, cv::FONT_HERSHEY_SIMPLEX, scaled, cv::Scalar::all(0),
              3 * stroke, kSmooth);
  cv::putText(canvas_, text, place, cv::FONT_HERSHEY_SIMPLEX, scaled, Shade(color), stroke,
              kSmooth);
}

cv::Point Show::Center(const cv::Point& pixel) const {
  return pixel * scale_ + cv::Point(scale_ / 2, scale_ / 2);
}

void Show::Dot(const cv::Point& pixel, int radius, const cv::Scalar& color) {
  cv::circle(canvas_, Center(pixel), radius, Shade(color), kFilled, kSmooth);
}

bool PlaceOf(VemROI roi, cv::Point* pixel) {
  VemPoint point;
  if (roi.ROIType() != VemROIPoint || !roi.GetPoint(&point)) return false;
  *pixel = cv::Point(static_cast<int>(point.x), static_cast<int>(point.y));
  return true;
}

bool WritePicture(const char* path, const cv::Mat& picture) {
  VemImage image;
  image.Mat() = picture;
  if (image.SaveImage(path)) return true;
  std::fprintf(stderr, "cannot write %s\n", path);
  return false;
}
