// Control values, run triples and regions, beside the standard containers and plain copies.

#include <cstring>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include <opencv2/core.hpp>

#include "IVemROIPara.h"
#include "VemOverlayPath.h"
#include "VemRLC.h"
#include "VemRegion.h"
#include "VemRegionArray.h"
#include "VemTuple.h"
#include "compare/Compare.h"
#include "compare/Rasters.h"

namespace {

using Variant = std::variant<long, double, std::string>;

// Makes the compiler believe that the object is read, so that no work on it is left out.
template <typename T>
void Use(const T& object) {
  asm volatile("" : : "r"(&object) : "memory");
}

std::size_t Size(int count) { return static_cast<std::size_t>(count); }

std::string InputName(int count) { return std::to_string(count) + " numbers"; }

template <typename List, typename Number>
Work EmplaceBack(int count, Number step) {
  return [=] {
    List list;
    for (int i = 0; i < count; ++i) list.emplace_back(static_cast<Number>(i) * step);
    Use(list);
  };
}

template <typename Number>
Row AppendRow(const std::string& work, int count, Number step) {
  Row row;
  row.work = work;
  row.input = InputName(count);
  row.ours = [=] {
    VemVarArray array;
    for (int i = 0; i < count; ++i) array.Append(static_cast<Number>(i) * step);
    Use(array);
  };
  row.peers = {{"vector<int>", EmplaceBack<std::vector<int>>(count, 1), 1 / 3.5},
               {"vector<variant>", EmplaceBack<std::vector<Variant>>(count, step), 1.5}};
  return row;
}

VemVarArray Counted(int count) {
  VemVarArray array;
  for (int i = 0; i < count; ++i) array.Append(i);
  return array;
}

// Blocks as large as an array's, filled and copied as memory.
Work CopyMemory(int blocks, int elements) {
  const std::size_t size = Size(elements) * sizeof(VemVar);
  const auto source =
      std::make_shared<std::vector<std::vector<char>>>(Size(blocks), std::vector<char>(size, 'x'));
  return [=] {
    std::vector<std::unique_ptr<char[]>> copies;
    for (const std::vector<char>& block : *source) {
      copies.emplace_back(new char[size]);
      std::memcpy(copies.back().get(), block.data(), size);
      Use(*copies.back().get());
    }
  };
}

Row CopyRow(int count, double bar) {
  const auto source = std::make_shared<VemVarArray>(Counted(count));
  Row row;
  row.work = "copy of an array";
  row.input = InputName(count);
  row.ours = [=] {
    const VemVarArray copy(*source);
    Use(copy);
  };
  row.peers = {{"memcpy", CopyMemory(1, count), bar}};
  row.agree = [=] { return VemVarArray(*source) == *source; };
  return row;
}

Row AssignmentRow(int count, double bar) {
  const auto source = std::make_shared<VemVarArray>(Counted(count));
  const auto target = std::make_shared<VemVarArray>(*source);
  const auto from = std::make_shared<std::vector<char>>(Size(count) * sizeof(VemVar), 'x');
  const auto to = std::make_shared<std::vector<char>>(*from);
  Row row;
  row.work = "assignment of an array";
  row.input = InputName(count);
  row.ours = [=] {
    *target = *source;
    Use(*target);
  };
  row.peers = {{"memcpy",
                [=] {
                  std::memcpy(to->data(), from->data(), from->size());
                  Use(*to);
                },
                bar}};
  row.agree = [=] { return *target == *source; };
  return row;
}

long SumByCount(VemVarArray& array, int count) {
  long sum = 0;
  for (int i = 0; i < count; ++i) sum += array[i].L();
  return sum;
}

long SumByLength(VemVarArray& array) {
  long sum = 0;
  for (int i = 0; i < array.Length(); ++i) sum += array[i].L();
  return sum;
}

long SumOf(const std::vector<int>& list) {
  long sum = 0;
  for (std::size_t i = 0; i < list.size(); ++i) sum += list[i];
  return sum;
}

void AddReadRows(int count, std::vector<Row>& rows) {
  const auto array = std::make_shared<VemVarArray>(Counted(count));
  const auto list = std::make_shared<std::vector<int>>();
  for (int i = 0; i < count; ++i) list->push_back(i);
  const Peer peer = {"vector<int>", [=] { Keep(static_cast<std::size_t>(SumOf(*list))); }, 1 / 4.0};
  Row row;
  row.work = "[] in a loop";
  row.input = InputName(count);
  row.ours = [=] { Keep(static_cast<std::size_t>(SumByCount(*array, count))); };
  row.peers = {peer};
  row.agree = [=] { return SumByCount(*array, count) == SumOf(*list); };
  rows.push_back(row);
  row.work = "[] in a loop that tests Length()";
  row.ours = [=] { Keep(static_cast<std::size_t>(SumByLength(*array))); };
  row.agree = [=] { return SumByLength(*array) == SumOf(*list); };
  rows.push_back(row);
}

struct Triple {
  VemVarArray rows;
  VemVarArray firsts;
  VemVarArray lasts;

  explicit Triple(int count) {
    for (int i = 0; i < count; ++i) {
      rows.Append(i);
      firsts.Append(i % 100);
      lasts.Append(i % 100 + 7);
    }
  }

  VemRegion Region() { return VemRegion(rows, firsts, lasts); }
};

// A limit of 0 leaves the peers alone to judge.
Row RunRow(const std::string& work, int count, double limit, Work ours) {
  Row row;
  row.work = work;
  row.input = std::to_string(count) + " runs";
  row.ours = std::move(ours);
  if (limit > 0) {
    row.units = count;
    row.unit = "run";
    row.limitNanoseconds = limit;
  }
  return row;
}

void AddRegionRows(int count, std::vector<Row>& rows) {
  Row appended = RunRow("run triple by Append", count, 6, [=] { Use(Triple(count)); });
  appended.peers = {{"3 vector<int>",
                     [=] {
                       std::vector<int> row, first, last;
                       for (int i = 0; i < count; ++i) {
                         row.push_back(i);
                         first.push_back(i % 100);
                         last.push_back(i % 100 + 7);
                       }
                       Use(row);
                       Use(first);
                       Use(last);
                     },
                     0}};
  rows.push_back(appended);
  const auto triple = std::make_shared<Triple>(count);
  const auto region = std::make_shared<VemRegion>(triple->Region());
  Row made = RunRow("region from three arrays", count, 0, [=] { Use(triple->Region()); });
  made.peers = {{"memcpy", CopyMemory(3, count), 1 / 2.0}};
  rows.push_back(made);
  Row copied = RunRow("copy of a region", count, 0, [=] { Use(VemRegion(*region)); });
  copied.peers = {{"memcpy", CopyMemory(3, count), 1 / 1.5}};
  rows.push_back(copied);
  Row got = RunRow("GetRegionRuns", count, 0, [=] {
    VemVarArray row, first, last;
    region->GetRegionRuns(&row, &first, &last);
    Use(row);
  });
  got.peers = {{"memcpy", CopyMemory(3, count), 1 / 1.5}};
  rows.push_back(got);
}

void AddRegionArrayRows(int count, std::vector<Row>& rows) {
  const auto region = std::make_shared<VemRegion>(Triple(count).Region());
  const auto array = std::make_shared<VemRegionArray>();
  array->Append(*region);
  const auto out = std::make_shared<VemRegion>(*region);
  rows.push_back(RunRow("region array, append", count, 1.5, [=] {
    VemRegionArray appended;
    appended.Append(*region);
    Use(appended);
  }));
  rows.push_back(RunRow("region array, select", count, 1.5, [=] {
    array->Select(0, out.get());
    Use(*out);
  }));
  rows.push_back(RunRow("region array, union", count, 1.5, [=] {
    array->Union(out.get());
    Use(*out);
  }));
}

void AddTextRows(int count, std::vector<Row>& rows) {
  const auto texts = std::make_shared<std::vector<std::string>>();
  const auto values = std::make_shared<std::vector<VemVar>>();
  for (int i = 0; i < count; ++i) {
    texts->push_back(std::to_string(i) + " is no small string of its own");
    values->emplace_back(texts->back().c_str());
  }
  Row row;
  row.work = "Append of a text value";
  row.input = std::to_string(count) + " texts";
  row.ours = [=] {
    VemVarArray array;
    for (const VemVar& value : *values) array.Append(value);
    Use(array);
  };
  row.peers = {{"vector<string>",
                [=] {
                  std::vector<std::string> list;
                  for (const std::string& text : *texts) list.push_back(text);
                  Use(list);
                },
                1 / 1.4}};
  rows.push_back(row);
  row.work = "Append of characters";
  row.ours = [=] {
    VemVarArray array;
    for (const std::string& text : *texts) array.Append(text.c_str());
    Use(array);
  };
  row.peers = {{"vector<string>",
                [=] {
                  std::vector<std::string> list;
                  for (const std::string& text : *texts) list.emplace_back(text.c_str());
                  Use(list);
                },
                1 / 1.4}};
  rows.push_back(row);
}

void AddMaskRow(int size, std::vector<Row>& rows) {
  const auto raster = std::make_shared<cv::Mat>(NoiseRaster(size, 4, 50));
  Row row;
  row.work = "MatToMask to runs";
  row.input = "noise " + std::to_string(size) + ", grain 4";
  row.ours = [=] {
    IVemROIPara mask;
    VemVarArray rowList, firstList, lastList;
    int width = 0;
    int height = 0;
    mask.MatToMask(*raster, &rowList, &firstList, &lastList, &width, &height);
    Use(rowList);
  };
  row.peers = {{"the coder's runs",
                [=] {
                  VemRLC coder;
                  coder.SetParam(1, 6, true, -1, -1, 1, false, false);
                  coder.Calc(*raster, true);
                  Use(coder.FillRuns);
                },
                1 / 3.0}};
  rows.push_back(row);
}

void AddLines(VemOverlayPath& path) {
  VemPoint from(0, 0);
  VemPoint to(3, 4);
  for (int i = 0; i < 100; ++i) path.AddLine(from, to);
}

void AddPathRow(int size, std::vector<Row>& rows) {
  const auto image = std::make_shared<VemImage>();
  image->Mat() = cv::Mat(size, size, CV_8UC1, cv::Scalar(7));
  const auto clone = [=] { return image->Mat().clone(); };
  Row row;
  row.work = "an image and 100 lines into a path";
  row.input = std::to_string(size) + " by " + std::to_string(size);
  row.ours = [=] {
    VemOverlayPath path;
    VemPoint point(0, 0);
    path.AddImage(point, *image);
    AddLines(path);
    Use(path);
  };
  row.peers = {{"a clone and 100 lines",
                [=] {
                  const cv::Mat pixels = clone();
                  VemOverlayPath path;
                  AddLines(path);
                  Use(path);
                },
                0.5}};
  rows.push_back(row);
}

}  // namespace

void AddValueRows(const Setting& setting, std::vector<Row>& rows) {
  const int few = setting.small ? 10 : 1000;
  const int many = setting.small ? 100 : 1000000;
  const int runs = setting.small ? 50 : 100000;
  for (const int count : {few, many}) {
    rows.push_back(AppendRow("Append of an int", count, 1L));
    rows.push_back(AppendRow("Append of a double", count, 0.5));
    rows.push_back(CopyRow(count, count == few ? 0.5 : 0.85));
    rows.push_back(AssignmentRow(count, count == few ? 0.5 : 0.85));
    AddReadRows(count, rows);
  }
  AddRegionRows(runs, rows);
  AddRegionArrayRows(runs, rows);
  AddTextRows(few, rows);
  AddMaskRow(setting.small ? 64 : 512, rows);
  AddPathRow(setting.small ? 10 : 1000, rows);
}
