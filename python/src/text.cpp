#include "python/src/text.h"

#include <stdexcept>

#include "vem/json.h"
#include "vem/print.h"

template <class T>
std::string Line(const T& value) {
  return vem::detail::text_of(value);
}

template <class T>
std::string JsonOf(const T& value) {
  return vem::to_json(value).dump();
}

namespace {

template <class T>
void Test(const T&) {}

// Outlines are delivered rightly only where all regions have them, or none.
void Test(const VemRegionArray& array) {
  const std::size_t outlines = vem::parts(array).Contours.size();
  if (outlines == 0 || outlines == static_cast<std::size_t>(array.Length())) return;
  throw std::invalid_argument("RegionArray: there are " + std::to_string(outlines) +
                              " outlines for " + std::to_string(array.Length()) + " regions");
}

}  // namespace

template <class T>
void ReadJson(const std::string& document, T& value) {
  try {
    T read;
    vem::from_json(nlohmann::json::parse(document), read);
    Test(read);
    vem::json_detail::exchange(read, value);
  } catch (const nlohmann::json::exception& error) {
    throw std::invalid_argument(error.what());
  }
}

template <class T>
bool Same(const T& a, const T& b) {
  return vem::detail::same(a, b);
}
template <>
bool Same(const VemImage& a, const VemImage& b) {
  return vem::detail::same(a.Mat(), b.Mat());
}
template <>
bool Same(const VemMatrix& a, const VemMatrix& b) {
  return vem::detail::same(a.Mat(), b.Mat());
}
template <>
bool Same(const VemFeatureDescriptor& a, const VemFeatureDescriptor& b) {
  return vem::detail::same(vem::parts(a), vem::parts(b));
}

template <class T>
std::size_t HashOf(const T& value) {
  return std::hash<T>()(value);
}

#define VEM_PYTHON_TEXTS(T)              \
  template std::string Line(const T&);   \
  template std::string JsonOf(const T&); \
  template void ReadJson(const std::string&, T&);
VEM_PYTHON_TEXTS(VemVar)
VEM_PYTHON_TEXTS(VemVarArray)
VEM_PYTHON_TEXTS(Vem2DVarArray)
VEM_PYTHON_TEXTS(VemPoint)
VEM_PYTHON_TEXTS(VemPointArray)
VEM_PYTHON_TEXTS(Vem3DPoint)
VEM_PYTHON_TEXTS(Vem3DPointArray)
VEM_PYTHON_TEXTS(VemLine)
VEM_PYTHON_TEXTS(VemCircle)
VEM_PYTHON_TEXTS(VemContour)
VEM_PYTHON_TEXTS(VemContourArray)
VEM_PYTHON_TEXTS(VemImage)
VEM_PYTHON_TEXTS(VemImageArray)
VEM_PYTHON_TEXTS(VemMatrix)
VEM_PYTHON_TEXTS(VemMatrixArray)
VEM_PYTHON_TEXTS(VemFeatureDescriptor)
VEM_PYTHON_TEXTS(VemMorphStructure)
VEM_PYTHON_TEXTS(VemRegion)
VEM_PYTHON_TEXTS(VemRegionArray)
VEM_PYTHON_TEXTS(VemROI)
VEM_PYTHON_TEXTS(VemROIArray)
VEM_PYTHON_TEXTS(VemFont)
VEM_PYTHON_TEXTS(VemOverlay)
VEM_PYTHON_TEXTS(VemOverlayPath)
VEM_PYTHON_TEXTS(Vem1DCode)
VEM_PYTHON_TEXTS(Vem1DCodeArray)
VEM_PYTHON_TEXTS(VemDMCode)
VEM_PYTHON_TEXTS(VemDMCodeArray)
VEM_PYTHON_TEXTS(VemQRCode)
VEM_PYTHON_TEXTS(VemQRCodeArray)
VEM_PYTHON_TEXTS(VemPDF417Code)
VEM_PYTHON_TEXTS(VemPDF417CodeArray)
VEM_PYTHON_TEXTS(VemVCode)
VEM_PYTHON_TEXTS(VemVCodeArray)
VEM_PYTHON_TEXTS(VemFeaturePoint)
VEM_PYTHON_TEXTS(VemFeaturePointArray)
VEM_PYTHON_TEXTS(VemScratchFeature)
VEM_PYTHON_TEXTS(VemScratchPrecessing)
VEM_PYTHON_TEXTS(VemScratchGroup)
VEM_PYTHON_TEXTS(VemScratchLayer)
VEM_PYTHON_TEXTS(VemScratchLayerArray)
#undef VEM_PYTHON_TEXTS

template bool Same(const VemVar&, const VemVar&);
template bool Same(const VemPoint&, const VemPoint&);
template bool Same(const Vem3DPoint&, const Vem3DPoint&);
template bool Same(const VemPointArray&, const VemPointArray&);
template bool Same(const VemContour&, const VemContour&);
template bool Same(const VemRegion&, const VemRegion&);
template bool Same(const VemROI&, const VemROI&);
template bool Same(const VemOverlay&, const VemOverlay&);

template std::size_t HashOf(const VemRegion&);
template std::size_t HashOf(const VemROI&);
template std::size_t HashOf(const VemOverlay&);
