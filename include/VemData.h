#ifndef VEM_DATA_H_
#define VEM_DATA_H_

/// The whole library at once.

#include "IVemROIPara.h"
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
#include "VemImage.h"
#include "VemLine.h"
#include "VemMorphStructure.h"
#include "VemPDF417Code.h"
#include "VemPDF417CodeArray.h"
#include "VemPoint.h"
#include "VemPointArray.h"
#include "VemQRCode.h"
#include "VemQRCodeArray.h"
#include "VemRLC.h"
#include "VemROI.h"
#include "VemRegion.h"
#include "VemRegionData.h"
#include "VemTuple.h"
#include "VemVCode.h"
#include "VemVCodeArray.h"
#include "VemVar.h"
#include "VemWideFiles.h"

#endif  // VEM_DATA_H_
