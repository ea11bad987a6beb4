#ifndef VEM_DATA_H_
#define VEM_DATA_H_

/// The whole library at once.
///
/// All its names are global, and `Run`, the coder's struct, is one that others use too. Of the
/// headers below, VemRLC.h alone defines it. A caller with a `Run` of its own puts that into a
/// namespace; or, where it must stay global, includes the headers of the classes in use instead of
/// this one, and VemRLC.h nowhere in the program: to the linker, two global structs of one name are
/// the same. Renaming ours by a macro does not help, since its name is part of the coder's symbols.

#include "IVemOverlay.h"
#include "IVemOverlayPath.h"
#include "IVemROIAPara.h"
#include "IVemROIPara.h"
#include "IVemRegionAPara.h"
#include "Vem1DCode.h"
#include "Vem1DCodeArray.h"
#include "Vem2DVarArray.h"
#include "Vem3DPoint.h"
#include "Vem3DPointArray.h"
#include "VemCircle.h"
#include "VemContour.h"
#include "VemContourArray.h"
#include "VemDMCode.h"
#include "VemDMCodeArray.h"
#include "VemFeatureDescriptor.h"
#include "VemFeaturePoint.h"
#include "VemFeaturePointArray.h"
#include "VemFont.h"
#include "VemImage.h"
#include "VemImageArray.h"
#include "VemLine.h"
#include "VemMatrix.h"
#include "VemMatrixArray.h"
#include "VemMorphStructure.h"
#include "VemOverlay.h"
#include "VemOverlayPath.h"
#include "VemOverlayType.h"
#include "VemPDF417Code.h"
#include "VemPDF417CodeArray.h"
#include "VemPoint.h"
#include "VemPointArray.h"
#include "VemQRCode.h"
#include "VemQRCodeArray.h"
#include "VemRLC.h"
#include "VemROI.h"
#include "VemROIArray.h"
#include "VemROIType.h"
#include "VemRegion.h"
#include "VemRegionArray.h"
#include "VemRegionData.h"
#include "VemScratchGroup.h"
#include "VemTuple.h"
#include "VemVCode.h"
#include "VemVCodeArray.h"
#include "VemVar.h"
#include "VemVersion.h"
#include "VemWideFiles.h"

#endif  // VEM_DATA_H_
