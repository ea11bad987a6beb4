#ifndef TESTS_FAULTS_STATES_H_
#define TESTS_FAULTS_STATES_H_

#include <string>

#include "IVemROIAPara.h"
#include "IVemRegionAPara.h"
#include "VemData.h"

/// Complains, for the run at hand, unless something holds.
void Require(bool holds, const std::string& complaint);

// All that can be read of an object, as a text: equal texts are equal objects. Reading complains
// where lists that belong together differ in length.

std::string StateOf(bool& value);
std::string StateOf(VemVar& value);
std::string StateOf(VemVarArray& array);
std::string StateOf(VemPoint& point);
std::string StateOf(Vem3DPoint& point);
std::string StateOf(VemContour& contour);
std::string StateOf(cv::Mat& mat);
std::string StateOf(VemImage& image);
std::string StateOf(VemMatrix& matrix);
std::string StateOf(VemFeatureDescriptor& descriptor);
std::string StateOf(VemMorphStructure& structure);
std::string StateOf(VemRegion& region);
std::string StateOf(IVemRegionArrayPara& para);
std::string StateOf(VemRegionArray& array);
std::string StateOf(IVemROIPara& para);
std::string StateOf(VemROI& roi);
std::string StateOf(IVemROIArrayPara& para);
std::string StateOf(VemFont& font);
std::string StateOf(IVemOverlay& overlay);
std::string StateOf(VemOverlay& overlay);
std::string StateOf(IVemOverlayPath& path);
std::string StateOf(VemOverlayPath& path);
std::string StateOf(VemFeaturePoint& point);
std::string StateOf(Vem1DCode& code);
std::string StateOf(VemDMCode& code);
std::string StateOf(VemQRCode& code);
std::string StateOf(VemPDF417Code& code);
std::string StateOf(VemVCode& code);
std::string StateOf(VemScratchGroup& group);
std::string StateOf(VemScratchLayer& layer);
std::string StateOf(VemScratchLayerArray& array);
std::string StateOf(VemRLC& coder);

std::string StateOf(Vem2DVarArray& array);
std::string StateOf(VemPointArray& array);
std::string StateOf(Vem3DPointArray& array);
std::string StateOf(VemContourArray& array);
std::string StateOf(VemImageArray& array);
std::string StateOf(VemMatrixArray& array);
std::string StateOf(VemROIArray& array);
std::string StateOf(VemFeaturePointArray& array);
std::string StateOf(Vem1DCodeArray& array);
std::string StateOf(VemDMCodeArray& array);
std::string StateOf(VemQRCodeArray& array);
std::string StateOf(VemPDF417CodeArray& array);
std::string StateOf(VemVCodeArray& array);

std::string StateOf(std::vector<int>& list);
std::string StateOf(std::vector<Run>& runs);
std::string StateOf(std::vector<cv::Point>& points);
std::string StateOf(std::vector<std::vector<cv::Point>>& contours);
std::string StateOf(std::vector<std::vector<cv::Point2d>>& contours);
std::string StateOf(std::vector<cv::Vec4i>& hierarchy);

#endif  // TESTS_FAULTS_STATES_H_
