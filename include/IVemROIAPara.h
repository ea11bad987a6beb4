#ifndef I_VEM_ROI_A_PARA_H_
#define I_VEM_ROI_A_PARA_H_

#include "IVemROIPara.h"
#include "VemExport.h"
#include "VemTuple.h"

/// A region of interest as VemROIArray stores it: the numbers of a shape, or the runs and the
/// canvas of a mask, never both.
///
/// Use an object from one thread at a time; reading it from several at once is safe.
class VEM_EXPORT IVemROIArrayPara {
 public:
  /// Empty arrays. Width, Height and Type are left as the memory has them.
  IVemROIArrayPara();
  IVemROIArrayPara(const IVemROIArrayPara& other);             ///< Copies all fields.
  IVemROIArrayPara& operator=(const IVemROIArrayPara& other);  ///< Copies all fields.
  ~IVemROIArrayPara();

  bool IsMask() const;  ///< Whether it is a run mask.

  VemVarArray Params;        ///< The shape's numbers; empty for a mask.
  int Width;                 ///< Columns of the canvas, of a mask only.
  int Height;                ///< Rows of the canvas, of a mask only.
  VemVarArray Rows;          ///< The rows of a mask's runs.
  VemVarArray FirstColumns;  ///< The first columns of a mask's runs.
  VemVarArray LastColumns;   ///< The last columns of a mask's runs, included.
  VemROIType Type;           ///< The kind of the shape.
};

#endif  // I_VEM_ROI_A_PARA_H_
