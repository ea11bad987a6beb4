#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "IVemRegionAPara.h"
#include "VemRegion.h"
#include "fingerprints/Samples.h"

// Fingerprints of masks: for each kind of sample and each operation one hash over all that the
// operation gave for 10,000 samples.
//
//   VemFingerprints                       prints all of them, as masks.txt holds them
//   VemFingerprints --check <file> <kind>  compares those of one kind with the file's

namespace {

constexpr int kSamples = 10000;

/// By operation.
using Hashes = std::map<std::string, Hash>;

void Add(Hash& hash, VemVarArray& numbers) {
  hash.Add(numbers.Length());
  for (int i = 0; i < numbers.Length(); ++i) {
    hash.Add(static_cast<int>(numbers[i].ValType()));
    hash.Add(static_cast<std::uint64_t>(numbers[i].L()));
  }
}

void Add(Hash& hash, const VemContourArray& contours) {
  hash.Add(contours.Length());
  for (int i = 0; i < contours.Length(); ++i) {
    VemPointArray points;
    contours[i].ToPointArray(&points);
    hash.Add(points.Length());
    for (int k = 0; k < points.Length(); ++k) {
      hash.Add(points[k].x);
      hash.Add(points[k].y);
    }
  }
}

void Add(Hash& hash, const cv::Mat& raster) {
  hash.Add(raster.rows);
  hash.Add(raster.cols);
  hash.Add(raster.type());
  for (int row = 0; row < raster.rows; ++row) {
    hash.Add(raster.ptr(row), static_cast<std::size_t>(raster.cols) * raster.elemSize());
  }
}

void Add(Hash& hash, VemRegion& region) {
  VemVarArray rows;
  VemVarArray firstColumns;
  VemVarArray lastColumns;
  region.GetRegionRuns(&rows, &firstColumns, &lastColumns);
  hash.Add(region.Width());
  hash.Add(region.Height());
  Add(hash, rows);
  Add(hash, firstColumns);
  Add(hash, lastColumns);
}

/// Runs and canvas as they are read from a shape or a raster.
struct RunMask {
  void AddTo(Hash& hash) {
    hash.Add(result ? 1 : 0);
    hash.Add(width);
    hash.Add(height);
    Add(hash, rows);
    Add(hash, firstColumns);
    Add(hash, lastColumns);
  }

  bool result = true;
  VemVarArray rows;
  VemVarArray firstColumns;
  VemVarArray lastColumns;
  int width = -7;
  int height = -7;
};

std::vector<std::vector<cv::Point>> Rounded(const VemContourArray& contours) {
  std::vector<std::vector<cv::Point2d>> exact;
  for (int i = 0; i < contours.Length(); ++i) {
    VemPointArray points;
    contours[i].ToPointArray(&points);
    exact.emplace_back();
    for (int k = 0; k < points.Length(); ++k) exact.back().emplace_back(points[k].x, points[k].y);
  }
  std::vector<std::vector<cv::Point>> rounded;
  IVemROIPara().VectorD2I(exact, rounded);
  return rounded;
}

void ReadRaster(cv::Mat raster, Hashes& hashes) {
  IVemROIPara roi;
  RunMask runs;
  roi.MatToMask(raster, &runs.rows, &runs.firstColumns, &runs.lastColumns, &runs.width,
                &runs.height);
  runs.AddTo(hashes["RasterToRuns"]);

  VemContourArray contours;
  int width = -7;
  int height = -7;
  roi.MatToMask(raster, &contours, &width, &height);
  Hash& hash = hashes["RasterToOutlines"];
  hash.Add(width);
  hash.Add(height);
  Add(hash, contours);
}

void PaintContours(VemContourArray& contours, cv::Size canvas, Hashes& hashes) {
  IVemROIPara roi;
  roi.GenMask(contours, canvas.width, canvas.height);
  RunMask runs;
  runs.result =
      roi.GetMask(&runs.rows, &runs.firstColumns, &runs.lastColumns, &runs.width, &runs.height);
  runs.AddTo(hashes["ContoursToMask"]);

  const cv::Mat raster = roi.ToMAT(contours, canvas.width, canvas.height);
  Add(hashes["ContoursToRaster"], raster);
  ReadRaster(raster, hashes);

  IVemRegionArrayPara regions;
  regions.Widths.push_back(canvas.width);
  regions.Heights.push_back(canvas.height);
  regions.Contours.push_back(Rounded(contours));
  regions.Hierarchies.emplace_back();
  VemRegion region;
  regions.Select(0, region);
  Add(hashes["ContoursToRegion"], region);
}

void TakeOutlines(IVemROIPara& roi, cv::Size canvas, Hashes& hashes) {
  VemContourArray contours;
  int width = -7;
  int height = -7;
  Hash& hash = hashes["Outlines"];
  hash.Add(roi.GetMask(&contours, &width, &height) ? 1 : 0);
  hash.Add(width);
  hash.Add(height);
  Add(hash, contours);
  PaintContours(contours, canvas, hashes);

  VemPointArray points;
  for (int i = 0; i < contours.Length(); ++i) {
    VemPointArray vertices;
    contours[i].ToPointArray(&vertices);
    points.Append(vertices);
  }
  VemRegion region(canvas.width, canvas.height, points);
  Add(hashes["PointsToRegion"], region);
}

void TakeRuns(IVemROIPara& roi, cv::Size canvas, Hashes& hashes) {
  RunMask runs;
  runs.result =
      roi.GetMask(&runs.rows, &runs.firstColumns, &runs.lastColumns, &runs.width, &runs.height);
  runs.AddTo(hashes["Runs"]);
  Add(hashes["RunsToRaster"],
      roi.ToMAT(runs.rows, runs.firstColumns, runs.lastColumns, canvas.width, canvas.height));
}

void CodePoints(VemPointArray& points, cv::Size canvas, Hashes& hashes) {
  VemRegion onCanvas(canvas.width, canvas.height, points);
  Add(hashes["PointsToRegion"], onCanvas);
  VemRegion justHeld(points);
  Add(hashes["PointsToOwnCanvas"], justHeld);
}

/// What is done with one sample.
using Take = std::function<void(Numbers&, Hashes&)>;

Take Shape(void (*make)(Numbers&, IVemROIPara&)) {
  return [make](Numbers& numbers, Hashes& hashes) {
    IVemROIPara roi;
    make(numbers, roi);
    const cv::Size canvas = MakeCanvas(numbers);
    TakeRuns(roi, canvas, hashes);
    TakeOutlines(roi, canvas, hashes);
  };
}

Take OutlineAlone(void (*make)(Numbers&, IVemROIPara&)) {
  return [make](Numbers& numbers, Hashes& hashes) {
    IVemROIPara roi;
    make(numbers, roi);
    TakeOutlines(roi, MakeCanvas(numbers), hashes);
  };
}

Take Contours(void (*make)(Numbers&, cv::Size, VemContourArray&)) {
  return [make](Numbers& numbers, Hashes& hashes) {
    const cv::Size canvas = MakeCanvas(numbers);
    VemContourArray contours;
    make(numbers, canvas, contours);
    PaintContours(contours, canvas, hashes);
  };
}

void TakePoints(Numbers& numbers, Hashes& hashes) {
  const cv::Size canvas = MakeCanvas(numbers);
  VemPointArray points;
  MakePoints(numbers, canvas, points);
  CodePoints(points, canvas, hashes);
}

void TakeSpots(Numbers& numbers, Hashes& hashes) {
  const cv::Size canvas = MakeCanvas(numbers);
  ReadRaster(MakeSpots(numbers, canvas), hashes);
}

struct Kind {
  const char* name;
  Take take;
};

const std::vector<Kind>& Kinds() {
  static const std::vector<Kind> kKinds = {
      {"Rect1", Shape(MakeRect1)},
      {"Circle", Shape(MakeCircle)},
      {"Torus", Shape(MakeTorus)},
      {"Polygon", Shape(MakePolygon)},
      {"Irregular", Shape(MakeIrregular)},
      {"Rect2", Shape(MakeRect2)},
      {"Line", Shape(MakeLine)},
      {"UprightLine", OutlineAlone(MakeUprightLine)},
      {"Ellipse", Shape(MakeEllipse)},
      {"Arc", Shape(MakeArc)},
      {"Mask", Shape(MakeMask)},
      {"InsideContours", Contours(MakeInside)},
      {"CrossingContours", Contours(MakeCrossing)},
      {"FarContours", Contours(MakeFar)},
      {"NestedContours", Contours(MakeNested)},
      {"CrookedContours", Contours(MakeCrooked)},
      {"Points", TakePoints},
      {"Spots", TakeSpots},
  };
  return kKinds;
}

/// The lines that masks.txt holds for a kind: its name, a dot, the operation, the hash.
std::vector<std::string> Lines(const Kind& kind) {
  Hashes hashes;
  for (int sample = 0; sample < kSamples; ++sample) {
    Hash seed;
    seed.Add(reinterpret_cast<const unsigned char*>(kind.name), std::strlen(kind.name));
    seed.Add(sample);
    Numbers numbers(seed.Value());
    kind.take(numbers, hashes);
  }
  std::vector<std::string> lines;
  for (const std::pair<const std::string, Hash>& entry : hashes) {
    char digits[17];
    std::snprintf(digits, sizeof(digits), "%016llx",
                  static_cast<unsigned long long>(entry.second.Value()));
    lines.push_back(std::string(kind.name) + '.' + entry.first + ' ' + digits);
  }
  return lines;
}

bool IsOf(const Kind& kind, const std::string& line) {
  return line.compare(0, std::strlen(kind.name) + 1, std::string(kind.name) + '.') == 0;
}

std::vector<std::string> KeptLines(const char* file, const Kind& kind) {
  std::ifstream in(file);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) {
    if (IsOf(kind, line)) lines.push_back(line);
  }
  return lines;
}

/// Whether the file has lines of every kind and of no other.
bool NamesAllKinds(const char* file) {
  for (const Kind& kind : Kinds()) {
    if (!KeptLines(file, kind).empty()) continue;
    std::cout << file << " has no line of " << kind.name << '\n';
    return false;
  }
  std::ifstream in(file);
  for (std::string line; std::getline(in, line);) {
    bool known = false;
    for (const Kind& kind : Kinds()) known = known || IsOf(kind, line);
    if (known) continue;
    std::cout << file << " has a line of no kind: " << line << '\n';
    return false;
  }
  return true;
}

/// Prints the lines of one list that another lacks.
void PrintLacking(const char* word, const std::vector<std::string>& lines,
                  const std::vector<std::string>& others) {
  for (const std::string& line : lines) {
    if (std::find(others.begin(), others.end(), line) != others.end()) continue;
    std::cout << word << ' ' << line << '\n';
  }
}

int Check(const char* file, const std::string& name) {
  if (!NamesAllKinds(file)) return 1;
  for (const Kind& kind : Kinds()) {
    if (kind.name != name) continue;
    const std::vector<std::string> kept = KeptLines(file, kind);
    const std::vector<std::string> found = Lines(kind);
    PrintLacking("kept: ", kept, found);
    PrintLacking("found:", found, kept);
    return found == kept ? 0 : 1;
  }
  std::cout << "no kind " << name << '\n';
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 4 && std::strcmp(argv[1], "--check") == 0) return Check(argv[2], argv[3]);
  if (argc != 1) {
    std::cout << "VemFingerprints [--check <file> <kind>]\n";
    return 2;
  }
  for (const Kind& kind : Kinds()) {
    for (const std::string& line : Lines(kind)) std::cout << line << std::endl;
  }
}
