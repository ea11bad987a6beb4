#ifndef WATCHER_CHECK_RASTERS_H_
#define WATCHER_CHECK_RASTERS_H_

#include <cstddef>
#include <string>

#include <opencv2/core.hpp>

#include "VemImage.h"
#include "VemMatrix.h"
#include "VemMorphStructure.h"
#include "VemVar.h"
#include "values/Processor.h"
#include "watcher/Behind.h"
#include "watcher/CheckValues.h"
#include "watcher/Report.h"

/// Checks of images, matrices and morphology structures.
namespace watcher {
namespace checks {

// --- Images and matrices ---

inline bool RefuseType(const Call& call, int type) {
  return call.Refuse(type < 0 || type > 6, "type is not from 0 to 6");
}

// Of no area, whatever is asked for is empty.
inline void NewImage(const Call& call, const unsigned char*, int, int height, int width,
                     int channels, VemImageType type) {
  if (height == 0 || width == 0 || RefuseType(call, type)) return;
  if (channels < 1 || channels > 512) {
    call.Tell(Kind::kNoEffect, "channels %d is not from 1 to 512, and wraps", channels);
  }
}

inline void CreateImage(const Call& call, const VemImage&, const unsigned char*, int step,
                        int height, int width, int channels, VemImageType type) {
  if (call.Refuse(height < 0, "height is negative")) return;
  if (call.Refuse(width < 0, "width is negative")) return;
  if (call.Refuse(channels != 1 && channels != 3, "channels is neither 1 nor 3")) return;
  if (RefuseType(call, type)) return;
  const int size = static_cast<int>(CV_ELEM_SIZE1(type));
  call.Refuse(step != WrapMultiply(WrapMultiply(width, channels), size),
              "step is not that of packed rows");
}

// Without a dot among the last four characters, four alone name a format.
template <typename Char, typename... Args>
void SaveImage(const Call& call, const VemImage& self, const Char* path, Args&...) {
  if (!IsAddress(&Behind(self)) || Behind(self).cols < 1) return;
  if (path == nullptr) return call.Tell(Kind::kObject, "path is null");
  const std::size_t length = std::char_traits<Char>::length(path);
  if (length < 4) return;
  const char known[] = "jpeg";
  bool isKnown = true;
  for (std::size_t i = 0; i < 4; ++i) {
    const Char c = path[length - 4 + i];
    if (c == Char('.')) return;
    isKnown = isKnown && (c == Char(known[i]) || c == Char(known[i] - 'a' + 'A'));
  }
  if (!isKnown) {
    call.Tell(Kind::kNoEffect, "nothing is written, path has no dot in its last four characters");
  }
}

inline void NewMatrix(const Call& call, const void*, int rows, int cols, VemMatrixType type) {
  if (rows != 0 && cols != 0) RefuseType(call, type);
}

inline void ZeroMatrix(const Call& call, int rows, int cols, VemMatrixType type) {
  if (call.Refuse(rows < 0, "rows is negative")) return;
  if (call.Refuse(cols < 0, "cols is negative")) return;
  if (rows != 0 && cols != 0) RefuseType(call, type);
}

inline void SetMatrix(const Call& call, const VemMatrix&, int rows, int cols, VemMatrixType type) {
  if (call.Refuse(rows < 1, "rows is below 1")) return;
  if (call.Refuse(cols < 1, "cols is below 1")) return;
  RefuseType(call, type);
}

inline bool IsElement(const Call& call, const cv::Mat& mat, int row, int col) {
  if (row < 0 || row >= mat.rows) {
    call.Tell(Kind::kIndex, "row %d, rows %d", row, mat.rows);
  } else if (col < 0 || col >= mat.cols) {
    call.Tell(Kind::kIndex, "col %d, cols %d", col, mat.cols);
  } else {
    return true;
  }
  return false;
}

inline void Element(const Call& call, const VemMatrix& self, int row, int col, const VemVar*) {
  IsElement(call, Behind(self), row, col);
}

inline void ReplaceNumber(const Call& call, const VemMatrix& self, int row, int col,
                          const VemVar& value) {
  if (IsElement(call, Behind(self), row, col)) ReadNumber(call, value);
}

inline void SetTo(const Call& call, const VemMatrix&, const VemVar& value) {
  ReadNumber(call, value);
}

// --- Morphology structures ---

inline void AssignTable(const Call& call, const VemMorphStructure& self,
                        const VemMorphStructure& other) {
  if (&self == &other && IsCustom(self)) {
    call.Tell(Kind::kItself, "assigned to itself, a custom table loses its values");
  }
}

inline void CreateElement(const Call& call, const VemMorphStructure& self, int newRows, int newCols,
                          int newAnchorX, int newAnchorY, VemMorphStructureType newType,
                          const int* newValues) {
  if (call.Refuse(newRows < 1, "newRows is below 1")) return;
  if (call.Refuse(newCols < 1, "newCols is below 1")) return;
  if (call.Refuse(newAnchorX < -1, "newAnchorX is below -1")) return;
  if (call.Refuse(newAnchorY < -1, "newAnchorY is below -1")) return;
  if (call.Refuse(newType < 0, "newType is negative")) return;
  if (call.Refuse(newAnchorY >= newRows, "newAnchorY is not below newRows")) return;
  if (call.Refuse(newAnchorX >= newCols, "newAnchorX is not below newCols")) return;
  if (newType != VemMorphStructureCustom) {
    if (newValues != nullptr) {
      call.Tell(Kind::kNoEffect, "newValues is ignored, for newType is not the custom one");
    }
    return;
  }
  if (call.Refuse(newValues == nullptr, "a custom element has no newValues")) return;
  if (IsCustom(self) && newValues == TableOf(self)) {
    call.Tell(Kind::kItself, "newValues is the record's own table, which is released first");
  }
}

}  // namespace checks
}  // namespace watcher

#endif  // WATCHER_CHECK_RASTERS_H_
