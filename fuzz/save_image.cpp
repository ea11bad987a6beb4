// Saves images under any names, narrow and wide, and reads them back. What must hold:
//
// - without columns nothing is looked at; a name of fewer than four characters raises
//   `std::out_of_range`; one without a dot in the last four gives false, but for "jpeg";
// - for every other name the file has the bytes that `cv::imwrite` writes with the parameters of
// the
//   name's ending and of the level, and result and exceptions are its own;
// - a wide name means the file of its UTF-8 form; what is no Unicode gives false;
// - where the folder is missing, nothing is written, and the result is as told above;
// - what was written reads back alike under both names.
//
// All files stand in a folder of the process, which is removed at the end.

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "ByteReader.h"
#include "Require.h"
#include "VemImage.h"

namespace {

namespace fs = std::filesystem;

/// Two folders, one for the library and one for the twin, gone with the process.
class Folders {
 public:
  Folders() {
    std::string name = (fs::exists("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path()) /
                       "vem-fuzz-XXXXXX";
    Require(mkdtemp(name.data()) != nullptr, "a folder can be made");
    root_ = name;
    fs::create_directories(root_ / "a");
    fs::create_directories(root_ / "b");
  }
  ~Folders() { fs::remove_all(root_); }
  Folders(const Folders&) = delete;
  Folders& operator=(const Folders&) = delete;

  std::string Ours() const { return root_ / "a/"; }
  std::string Twins() const { return root_ / "b/"; }

 private:
  fs::path root_;
};

const Folders& TheFolders() {
  static const Folders folders;
  return folders;
}

// --- The input ----------------------------------------------------------------------------------

/// A name as code points, whether it is passed as wide characters, and the folder it stands in.
struct Name {
  std::wstring points;
  bool wide;
  const char* folder;  // One that is missing, or "".
};

const wchar_t* const kEndings[] = {L".png", L".PnG", L".jpg", L".JPEG", L"jpeg",
                                   L".bmp", L".tif", L".pgm", L".tiff", L".webp",
                                   L".c",   L".",    L"",     L".jp2"};

// Neither a separator nor an end, so that no name leaves its folder.
wchar_t PointOf(ByteReader& in, bool wide) {
  const int kind = in.Byte();
  std::uint32_t point = in.Byte();
  if (wide && kind > 120) point = in.Raw<std::uint16_t>();
  if (wide && kind > 200) point |= static_cast<std::uint32_t>(in.Byte() % 18) << 16;
  if (wide && kind > 250) point = in.Raw<std::uint32_t>();
  if (!wide && kind > 200) point |= 0x80;
  return point == 0 || point == '/' ? L'_' : static_cast<wchar_t>(point);
}

Name ReadName(ByteReader& in) {
  const int kind = in.Byte();
  Name name = {L"", (kind & 1) != 0, kind < 230 ? "" : "missing/"};
  for (int left = in.Below(8); left > 0; --left) name.points += PointOf(in, name.wide);
  const int ending = in.Below(20);
  if (ending < 14) name.points += kEndings[ending];
  return name;
}

cv::Mat ReadPixels(ByteReader& in) {
  const int kinds[] = {CV_8UC1,  CV_8UC3, CV_8UC4,  CV_16UC1, CV_16UC3,
                       CV_32FC1, CV_8SC1, CV_64FC1, CV_8UC2,  CV_32SC1};
  const int type = kinds[in.Byte() < 200 ? in.Below(3) : in.Below(10)];
  cv::Mat pixels(in.Below(5), in.Below(6), type);  // Without rows or columns, too.
  if (pixels.empty()) return pixels;
  for (unsigned char* byte = pixels.data; byte != pixels.dataend; ++byte) *byte = in.Byte();
  return pixels;
}

// --- The slow twin ------------------------------------------------------------------------------

bool IsUnicode(const std::wstring& points) {
  return std::all_of(points.begin(), points.end(), [](wchar_t c) {
    const auto point = static_cast<std::uint32_t>(c);
    return point < 0xD800 || (point > 0xDFFF && point < 0x110000);
  });
}

// By the bytes' meaning: so many of six bits behind a head that tells how many.
std::string Utf8Of(const std::wstring& points) {
  std::string bytes;
  for (const wchar_t c : points) {
    const auto point = static_cast<std::uint32_t>(c);
    const int tails = point < 0x80 ? 0 : point < 0x800 ? 1 : point < 0x10000 ? 2 : 3;
    const std::uint32_t heads[] = {0x00, 0xC0, 0xE0, 0xF0};
    bytes += static_cast<char>(heads[tails] + (point >> 6 * tails));
    for (int i = tails - 1; i >= 0; --i) bytes += static_cast<char>(0x80 + (point >> 6 * i) % 64);
  }
  return bytes;
}

// Narrow names are bytes.
std::string BytesOf(const Name& name) {
  if (name.wide) return Utf8Of(name.points);
  return std::string(name.points.begin(), name.points.end());
}

enum Outcome { kFalse, kTrue, kTooShort, kRefused };

// The parameters of an ending; false where nothing is written.
bool ParametersOf(const Name& name, bool hasLevel, int level, std::vector<int>* parameters) {
  std::wstring ending = name.points.substr(name.points.size() - 4);
  for (wchar_t& c : ending) {
    if (c >= L'a' && c <= L'z') c = static_cast<wchar_t>(c - L'a' + L'A');
  }
  level = std::min(std::max(level, 0), 10);
  if (ending == L".JPG" || ending == L"JPEG") {
    *parameters = {1, hasLevel ? 100 - 10 * level : name.wide ? 200 : 60};
  } else if (ending == L".PNG") {
    *parameters = {17, 1, 16, hasLevel ? level : 6};
  } else {
    return ending.find(L'.') != std::wstring::npos;
  }
  return true;
}

// A file that can't be written gives false, not the installed version's message.
Outcome SavePlainly(const cv::Mat& pixels, const Name& name, bool hasLevel, int level) {
  if (pixels.cols < 1) return kFalse;
  if (name.points.size() < 4) return kTooShort;
  std::vector<int> parameters;
  if (!ParametersOf(name, hasLevel, level, &parameters)) return kFalse;
  if (name.wide && !IsUnicode(name.points)) return kFalse;
  const std::string path = TheFolders().Twins() + name.folder + BytesOf(name);
  // Without rows there is nothing to write, but a name that no encoder takes is refused.
  const cv::Mat written = pixels.empty() ? cv::Mat(cv::Mat::zeros(1, 1, CV_32FC1)) : pixels;
  try {
    const bool result = cv::imwrite(path, written, parameters);
    if (!pixels.empty()) return result ? kTrue : kFalse;
    fs::remove(path);
    return kFalse;
  } catch (const cv::Exception&) {
    return kRefused;
  }
}

// --- The library --------------------------------------------------------------------------------

template <typename Path>
bool SaveAs(VemImage& image, const Path& path, bool hasLevel, int level) {
  return hasLevel ? image.SaveImage(path.c_str(), level) : image.SaveImage(path.c_str());
}

Outcome Save(VemImage& image, const Name& name, bool hasLevel, int level) {
  // A short name stands alone: it never comes to a file.
  const std::string folder = name.points.size() < 4 ? "" : TheFolders().Ours() + name.folder;
  const std::wstring wideFolder(folder.begin(), folder.end());
  try {
    const bool result = name.wide ? SaveAs(image, wideFolder + name.points, hasLevel, level)
                                  : SaveAs(image, folder + BytesOf(name), hasLevel, level);
    return result ? kTrue : kFalse;
  } catch (const std::out_of_range&) {
    return kTooShort;
  } catch (const cv::Exception&) {
    return kRefused;
  }
}

/// The files of a folder, which must be one at most, with their contents; they are removed.
std::string TakeFile(const std::string& folder) {
  std::string content;
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(folder)) files.push_back(entry.path());
  for (const fs::path& file : files) {
    std::ifstream in(file, std::ios::binary);
    content += file.filename().string() + ':';
    content.append(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    fs::remove(file);
  }
  return content;
}

bool HasPixels(const VemImage& a, const VemImage& b) {
  if (a.Mat().size() != b.Mat().size() || a.Mat().type() != b.Mat().type()) return false;
  return a.Mat().empty() ||
         std::equal(a.Mat().datastart, a.Mat().dataend, b.Mat().datastart, b.Mat().dataend);
}

// The file under its narrow name and, where that is one, its wide name.
void RequireReadBack(const Name& name) {
  const std::string path = TheFolders().Ours() + BytesOf(name);
  VemImage narrow;
  Require(narrow.ReadImage(path.c_str()), "what was written is read");
  Require(narrow.Channels() <= 3, "an image has at most three channels");
  const std::wstring points = name.wide ? name.points : std::wstring(name.points);
  const bool isAscii =
      std::all_of(points.begin(), points.end(), [](wchar_t c) { return c > 0 && c < 128; });
  if (!name.wide && !isAscii) return;
  const std::string folder = TheFolders().Ours();
  VemImage wide;
  const std::wstring widePath = std::wstring(folder.begin(), folder.end()) + points;
  Require(wide.ReadImage(widePath.c_str()), "what was written is read under its wide name");
  Require(HasPixels(narrow, wide), "both names give the same pixels");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ByteReader in(data, size);
  const Name name = ReadName(in);
  const bool hasLevel = in.Flag();
  const int level = in.Byte() < 200 ? in.Between(-2, 12) : in.Raw<int>();
  const cv::Mat pixels = ReadPixels(in);
  VemImage image;
  image.Mat() = pixels;

  const Outcome expected = SavePlainly(pixels, name, hasLevel, level);
  const Outcome outcome = Save(image, name, hasLevel, level);
  Require(outcome == expected, '"', BytesOf(name), "\" gives ", outcome, ", not ", expected,
          " for ", pixels.size(), " of type ", pixels.type());
  if (outcome == kTrue) RequireReadBack(name);
  Require(TakeFile(TheFolders().Ours()) == TakeFile(TheFolders().Twins()), '"', BytesOf(name),
          "\" has the bytes of its twin");
  return 0;
}
