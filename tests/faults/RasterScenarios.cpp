#include <unistd.h>

#include <cstdlib>
#include <string>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "faults/Stage.h"

// Images and their files, matrices, descriptors and morphology structures.

namespace {

/// A folder for the time of the program, with a file of each format in it.
class Folder {
 public:
  Folder() {
    char path[] = "/tmp/vem-faults-XXXXXX";
    if (mkdtemp(path) == nullptr) std::abort();
    path_ = path;
    const cv::Mat pixels(9, 13, CV_8UC3, cv::Scalar(1, 2, 3));
    for (const char* name : kNames) cv::imwrite(Path(name), pixels);
  }
  ~Folder() {
    for (const char* name : kNames) unlink(Path(name).c_str());
    for (const char* name : kNames) unlink(Path(std::string("saved_") + name).c_str());
    rmdir(path_.c_str());
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  std::string Path(const std::string& name) const { return path_ + '/' + name; }
  std::wstring WidePath(const std::string& name) const {
    const std::string path = Path(name);
    return std::wstring(path.begin(), path.end());
  }

  static constexpr const char* kNames[] = {"a.png", "a.bmp", "a.jpg", "a.tif", "a.ppm"};

 private:
  std::string path_;
};

const Folder& Files() {
  static const Folder folder;
  return folder;
}

void AddReadAndSave(Table& table, const std::string& name) {
  table.push_back({"VemImage.ReadImage." + name, [name](Stage& s) {
                     const std::string path = Files().Path(name);
                     VemImage image = Sample<VemImage>(1);
                     bool read = false;
                     s.Try([&] { read = image.ReadImage(path.c_str()); }, OrEmpty(image),
                           OrEmpty(read));
                   }});
  table.push_back({"VemImage.ReadImageWide." + name, [name](Stage& s) {
                     const std::wstring path = Files().WidePath(name);
                     VemImage image = Sample<VemImage>(1);
                     bool read = false;
                     s.Try([&] { read = image.ReadImage(path.c_str()); }, OrEmpty(image),
                           OrEmpty(read));
                   }});
  table.push_back({"VemImage.SaveImage." + name, [name](Stage& s) {
                     const std::string path = Files().Path("saved_" + name);
                     VemImage image = Sample<VemImage>(1);
                     bool saved = false;
                     s.Try([&] { saved = image.SaveImage(path.c_str(), 90); }, OrEmpty(saved),
                           Same(image));
                   }});
  table.push_back({"VemImage.SaveImageWide." + name, [name](Stage& s) {
                     const std::wstring path = Files().WidePath("saved_" + name);
                     VemImage image = Sample<VemImage>(1);
                     bool saved = false;
                     s.Try([&] { saved = image.SaveImage(path.c_str()); }, OrEmpty(saved),
                           Same(image));
                   }});
}

}  // namespace

void AddRasters(Table& table) {
  const Scenario scenarios[] = {
      {"VemImage.Construct",
       [](Stage& s) {
         VemImage image;
         s.Try([] { VemImage made; }, Same(image));
       }},
      {"VemImage.FromBuffer",
       [](Stage& s) {
         unsigned char pixels[24] = {1, 2, 3};
         VemImage image;
         s.Try([&] { VemImage made(pixels, 8, 3, 2, 4, VemImageType8U); }, Same(image));
       }},
      {"VemImage.CreateImage",
       [](Stage& s) {
         unsigned char pixels[24] = {1, 2, 3};
         VemImage image = Sample<VemImage>(1);
         s.Try([&] { image.CreateImage(pixels, 8, 3, 2, 4, VemImageType8U); }, AsBefore(image));
       }},
      {"VemImage.CopyConstruct",
       [](Stage& s) {
         VemImage image = Sample<VemImage>(1);
         s.Try([&] { VemImage copy(image); }, Same(image));
       }},
      {"VemImage.Assign",
       [](Stage& s) {
         VemImage image = Sample<VemImage>(1);
         VemImage source = Sample<VemImage>(2);
         s.Try([&] { image = source; }, OrEmpty(image), Same(source));
       }},
      {"VemImage.DeepCopy",
       [](Stage& s) {
         VemImage image;
         VemImage source = Sample<VemImage>(2);
         s.Try([&] { image = source.DeepCopy(); }, OrEmpty(image), Same(source));
       }},
      {"VemImage.ShallowCopy",
       [](Stage& s) {
         VemImage image;
         VemImage source = Sample<VemImage>(2);
         s.Try([&] { image = source.ShallowCopy(); }, OrEmpty(image), Same(source));
       }},
      {"VemImage.Readers",
       [](Stage& s) {
         VemImage image = Sample<VemImage>(2);
         s.Try(
             [&] {
               image.Width(), image.Height(), image.Step(), image.Channels();
               image.BitDepth(), image.ImageData();
             },
             Same(image));
       }},
      {"VemImage.ReadNoImage",
       [](Stage& s) {
         VemImage image = Sample<VemImage>(1);
         bool read = false;
         s.Try([&] { read = image.ReadImage("/no/such/folder/image.png"); }, OrEmpty(image),
               OrEmpty(read));
       }},
      {"VemImage.SaveNoFormat",
       [](Stage& s) {
         VemImage image = Sample<VemImage>(1);
         bool saved = false;
         s.Try([&] { saved = image.SaveImage("noformat"); }, OrEmpty(saved), Same(image));
       }},
      {"cv.imreadWString",
       [](Stage& s) {
         const std::wstring path = Files().WidePath("a.png");
         cv::Mat mat;
         s.Try([&] { mat = cv::imreadWString(path.c_str(), -1); }, OrEmpty(mat));
       }},
      {"cv.imwriteWString",
       [](Stage& s) {
         const std::wstring path = Files().WidePath("saved_a.png");
         cv::Mat mat(4, 5, CV_8UC1, cv::Scalar(7));
         bool saved = false;
         s.Try([&] { saved = cv::imwriteWString(path.c_str(), mat, {}); }, OrEmpty(saved),
               Same(mat));
       }},
      {"VemMatrix.Construct",
       [](Stage& s) {
         VemMatrix matrix;
         s.Try([] { VemMatrix made(3, 4, VemMatrixType32F); }, Same(matrix));
       }},
      {"VemMatrix.FromBuffer",
       [](Stage& s) {
         double numbers[6] = {1, 2, 3, 4, 5, 6};
         VemMatrix matrix;
         s.Try([&] { VemMatrix made(numbers, 2, 3, VemMatrixType64F); }, Same(matrix));
       }},
      {"VemMatrix.CopyConstruct",
       [](Stage& s) {
         VemMatrix matrix = Sample<VemMatrix>(1);
         s.Try([&] { VemMatrix copy(matrix); }, Same(matrix));
       }},
      {"VemMatrix.Assign",
       [](Stage& s) {
         VemMatrix matrix = Sample<VemMatrix>(1);
         VemMatrix source = Sample<VemMatrix>(2);
         s.Try([&] { matrix = source; }, OrEmpty(matrix), Same(source));
       }},
      {"VemMatrix.SetMatrix",
       [](Stage& s) {
         VemMatrix matrix = Sample<VemMatrix>(1);
         s.Try([&] { matrix.SetMatrix(5, 6, VemMatrixType32S); }, AsBefore(matrix));
       }},
      {"VemMatrix.SetTo",
       [](Stage& s) {
         VemMatrix matrix = Sample<VemMatrix>(1);
         s.Try([&] { matrix.SetTo(VemVar(2.5)); }, AsBefore(matrix));
       }},
      {"VemMatrix.SetToText",
       [](Stage& s) {
         VemMatrix matrix = Sample<VemMatrix>(1);
         VemVar text = Sample<VemVar>(1);
         s.Try([&] { matrix.SetTo(text); }, Sound(matrix), Same(text));
       }},
      {"VemMatrix.Replace",
       [](Stage& s) {
         VemMatrix matrix = Sample<VemMatrix>(1);
         VemVar value(4);
         s.Try([&] { matrix.Replace(1, 1, value); }, AsBefore(matrix));
       }},
      {"VemMatrix.Select",
       [](Stage& s) {
         VemMatrix matrix = Sample<VemMatrix>(1);
         VemVar value = Sample<VemVar>(1);
         s.Try([&] { matrix.Select(1, 1, &value); }, AsBefore(value), Same(matrix));
       }},
      {"VemMatrix.DeepCopy",
       [](Stage& s) {
         VemMatrix matrix;
         VemMatrix source = Sample<VemMatrix>(2);
         s.Try([&] { matrix = source.DeepCopy(); }, OrEmpty(matrix), Same(source));
       }},
      {"VemMatrix.ShallowCopy",
       [](Stage& s) {
         VemMatrix matrix;
         VemMatrix source = Sample<VemMatrix>(2);
         s.Try([&] { matrix = source.ShallowCopy(); }, OrEmpty(matrix), Same(source));
       }},
      {"VemMatrix.Clear",
       [](Stage& s) {
         VemMatrix matrix = Sample<VemMatrix>(1);
         s.Try([&] { matrix.Clear(); }, AsBefore(matrix));
       }},
      {"VemFeatureDescriptor.FromMat",
       [](Stage& s) {
         cv::Mat mat(2, 5, CV_8UC1, cv::Scalar(3));
         s.Try([&] { VemFeatureDescriptor made(mat); }, Same(mat));
       }},
      {"VemFeatureDescriptor.CopyConstruct",
       [](Stage& s) {
         VemFeatureDescriptor descriptor = Sample<VemFeatureDescriptor>(1);
         s.Try([&] { VemFeatureDescriptor copy(descriptor); }, Same(descriptor));
       }},
      {"VemFeatureDescriptor.Assign",
       [](Stage& s) {
         VemFeatureDescriptor descriptor = Sample<VemFeatureDescriptor>(1);
         VemFeatureDescriptor source = Sample<VemFeatureDescriptor>(2);
         s.Try([&] { descriptor = source; }, OrEmpty(descriptor), Same(source));
       }},
      // A table's block is not looked at, which is meant: this kind needs none.
      {"VemMorphStructure.CreateElement",
       [](Stage& s) {
         VemMorphStructure structure = Sample<VemMorphStructure>(1);
         s.Try([&] { structure.CreateElement(3, 2, 0, 1, VemMorphStructureType(0), nullptr); },
               AsBefore(structure));
       }},
      {"VemMorphStructure.QueryInfo",
       [](Stage& s) {
         VemMorphStructure structure = Sample<VemMorphStructure>(1);
         s.Try(
             [&] {
               int rows, cols, anchorX, anchorY;
               VemMorphStructureType type;
               int* cells;
               structure.QueryInfo(&rows, &cols, &anchorX, &anchorY, &type, &cells);
             },
             Same(structure));
       }},
      {"VemMorphStructure.CopyConstruct",
       [](Stage& s) {
         VemMorphStructure structure = Sample<VemMorphStructure>(1);
         s.Try([&] { VemMorphStructure copy(structure); }, Same(structure));
       }},
      {"VemMorphStructure.Assign",
       [](Stage& s) {
         VemMorphStructure structure = Sample<VemMorphStructure>(1);
         VemMorphStructure source = Sample<VemMorphStructure>(2);
         s.Try([&] { structure = source; }, Sound(structure), Same(source));
       }},
  };
  table.insert(table.end(), std::begin(scenarios), std::end(scenarios));
  for (const char* name : Folder::kNames) AddReadAndSave(table, name);
}
