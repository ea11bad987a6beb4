#include "VemImage.h"

#include <climits>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "support/Files.h"
#include "support/ImageSamples.h"

namespace {

namespace fs = std::filesystem;

using Bytes = std::vector<unsigned char>;

// The overloads for narrow and wide names, and the parameters that each takes.
struct Writer {
  const char* name;
  std::function<bool(VemImage& image, const std::string& path)> write;
  std::vector<int> jpeg;
  std::vector<int> png;
};

const Writer kWriters[] = {
    {"Narrow",
     [](VemImage& image, const std::string& path) { return image.SaveImage(path.c_str()); },
     {1, 60},
     {17, 1, 16, 6}},
    {"NarrowAtLevel3",
     [](VemImage& image, const std::string& path) { return image.SaveImage(path.c_str(), 3); },
     {1, 70},
     {17, 1, 16, 3}},
    {"Wide",
     [](VemImage& image, const std::string& path) { return image.SaveImage(Widen(path).c_str()); },
     {1, 200},
     {17, 1, 16, 6}},
    {"WideAtLevel8",
     [](VemImage& image, const std::string& path) {
       return image.SaveImage(Widen(path).c_str(), 8);
     },
     {1, 20},
     {17, 1, 16, 8}},
};

enum Branch { kJpeg, kPng, kByName };

struct NameCase {
  const char* name;
  Branch branch;
};

const NameCase kWrittenNames[] = {
    {"a.jpg", kJpeg},    {"A.JPG", kJpeg},   {"a.jPg", kJpeg},       {"a.JpEg", kJpeg},
    {"a.jpeg", kJpeg},   {"b.JPEG", kJpeg},  {".jpg", kJpeg},        {"a.png.jpg", kJpeg},
    {"a.png", kPng},     {"A.PNG", kPng},    {"a.pNg", kPng},        {".png", kPng},
    {"a.jpg.png", kPng}, {"a.bmp", kByName}, {"a.tif", kByName},     {"A.TIF", kByName},
    {"a.jpe", kByName},  {"a.dib", kByName}, {"a.jpg.bmp", kByName}, {"a.ppm", kByName},
};

Bytes BytesOfImwrite(const std::string& path, const cv::Mat& pixels,
                     const std::vector<int>& parameters) {
  EXPECT_TRUE(cv::imwrite(path, pixels, parameters));
  return ReadBytes(path);
}

TEST(VemImageSave, WritesWhatImwriteDoesWithTheParametersOfTheBranch) {
  const TemporaryFolder folder;
  const TemporaryFolder reference;
  const cv::Mat pixels = Texture(40, 48, CV_8UC3);
  for (const Writer& writer : kWriters) {
    SCOPED_TRACE(writer.name);
    for (const NameCase& c : kWrittenNames) {
      SCOPED_TRACE(c.name);
      const std::vector<int> parameters = c.branch == kJpeg  ? writer.jpeg
                                          : c.branch == kPng ? writer.png
                                                             : std::vector<int>();
      const Bytes expected = BytesOfImwrite(reference / c.name, pixels, parameters);
      VemImage image = ImageOf(pixels);
      EXPECT_TRUE(writer.write(image, folder / c.name));
      EXPECT_EQ(ReadBytes(folder / c.name), expected);
      EXPECT_TRUE(SamePixels(image.Mat(), pixels));
    }
  }
}

// The bytes tell the parameters apart, or the comparisons of bytes would show nothing.
TEST(VemImageSave, ParametersShowInTheBytes) {
  const TemporaryFolder folder;
  const cv::Mat pixels = Texture(40, 48, CV_8UC3);
  const std::vector<std::vector<int>> jpeg = {{}, {1, 60}, {1, 61}, {1, 100}, {1, 0}, {1, 10}};
  const std::vector<std::vector<int>> png = {
      {}, {17, 1}, {16, 6, 17, 1}, {17, 1, 16, 6}, {17, 1, 16, 3}, {17, 1, 16, 0}, {17, 1, 16, 9}};
  for (std::size_t i = 0; i < jpeg.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) {
      EXPECT_NE(BytesOfImwrite(folder / "a.jpg", pixels, jpeg[i]),
                BytesOfImwrite(folder / "a.jpg", pixels, jpeg[k]));
    }
  }
  for (std::size_t i = 0; i < png.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) {
      EXPECT_NE(BytesOfImwrite(folder / "a.png", pixels, png[i]),
                BytesOfImwrite(folder / "a.png", pixels, png[k]))
          << i << ' ' << k;
    }
  }
}

struct LevelCase {
  int level;
  int jpeg;
  int png;
};

const LevelCase kLevelCases[] = {
    {INT_MIN, 100, 0}, {-5, 100, 0}, {-1, 100, 0}, {0, 100, 0}, {1, 90, 1},       {2, 80, 2},
    {3, 70, 3},        {4, 60, 4},   {5, 50, 5},   {6, 40, 6},  {7, 30, 7},       {8, 20, 8},
    {9, 10, 9},        {10, 0, 10},  {11, 0, 10},  {99, 0, 10}, {INT_MAX, 0, 10},
};

TEST(VemImageSave, TakesALevelOfCompressionFrom0To10) {
  const TemporaryFolder folder;
  const TemporaryFolder reference;
  const cv::Mat pixels = Texture(40, 48, CV_8UC1);
  VemImage image = ImageOf(pixels);
  for (const LevelCase& c : kLevelCases) {
    SCOPED_TRACE(c.level);
    const Bytes jpeg = BytesOfImwrite(reference / "a.jpg", pixels, {1, c.jpeg});
    const Bytes png = BytesOfImwrite(reference / "a.png", pixels, {17, 1, 16, c.png});
    EXPECT_TRUE(image.SaveImage((folder / "a.jpg").c_str(), c.level));
    EXPECT_TRUE(image.SaveImage((folder / "a.png").c_str(), c.level));
    EXPECT_EQ(ReadBytes(folder / "a.jpg"), jpeg);
    EXPECT_EQ(ReadBytes(folder / "a.png"), png);
    EXPECT_TRUE(image.SaveImage(Widen(folder / "b.jpg").c_str(), c.level));
    EXPECT_TRUE(image.SaveImage(Widen(folder / "b.png").c_str(), c.level));
    EXPECT_EQ(ReadBytes(folder / "b.jpg"), jpeg);
    EXPECT_EQ(ReadBytes(folder / "b.png"), png);
  }
}

TEST(VemImageSave, WithoutADotInTheLastFourCharactersGivesFalse) {
  const TemporaryFolder folder;
  VemImage image = ImageOf(Texture(9, 13, CV_8UC3));
  for (const Writer& writer : kWriters) {
    SCOPED_TRACE(writer.name);
    for (const char* name : {"a.tiff", "a.webp", "image", "a.jpgx1", "a.b.cdef"}) {
      EXPECT_FALSE(writer.write(image, folder / name)) << name;
    }
  }
  EXPECT_EQ(folder.Names(), std::vector<std::string>());
}

TEST(VemImageSave, RaisesForAnExtensionThatNoEncoderHas) {
  const TemporaryFolder folder;
  VemImage image = ImageOf(Texture(9, 13, CV_8UC3));
  for (const Writer& writer : kWriters) {
    SCOPED_TRACE(writer.name);
    for (const char* name :
         {"ab.c", "aJPEG", "myjpeg", "jpeg", "a.jpg.", "a..x", "a.q.r", "a.jp"}) {
      EXPECT_THROW(writer.write(image, folder / name), cv::Exception) << name;
    }
  }
  EXPECT_EQ(folder.Names(), std::vector<std::string>());
}

TEST(VemImageSave, RaisesForShortNames) {
  VemImage image = ImageOf(Texture(9, 13, CV_8UC3));
  for (const Writer& writer : kWriters) {
    SCOPED_TRACE(writer.name);
    for (const char* name : {"", ".", "a.b", "jpg"}) {
      EXPECT_THROW(writer.write(image, name), std::out_of_range) << name;
    }
  }
}

TEST(VemImageSave, RaisesForNull) {
  VemImage image = ImageOf(Texture(9, 13, CV_8UC3));
  EXPECT_THROW(image.SaveImage(static_cast<const char*>(nullptr)), std::logic_error);
  EXPECT_THROW(image.SaveImage(static_cast<const char*>(nullptr), 3), std::logic_error);
  EXPECT_THROW(image.SaveImage(static_cast<const wchar_t*>(nullptr)), std::logic_error);
  EXPECT_THROW(image.SaveImage(static_cast<const wchar_t*>(nullptr), 3), std::logic_error);
}

TEST(VemImageSave, OfNoColumnsNeverLooksAtThePath) {
  const TemporaryFolder folder;
  VemImage noColumns = ImageOf(cv::Mat(4, 0, CV_8UC3));
  VemImage empty;
  for (VemImage* image : {&noColumns, &empty}) {
    for (const Writer& writer : kWriters) {
      SCOPED_TRACE(writer.name);
      for (const std::string& path : {std::string("a.b"), std::string(), folder / "ab.c",
                                      folder / "a.jpg", folder / "a.png"}) {
        EXPECT_FALSE(writer.write(*image, path)) << path;
      }
    }
    EXPECT_FALSE(image->SaveImage(static_cast<const char*>(nullptr)));
    EXPECT_FALSE(image->SaveImage(static_cast<const char*>(nullptr), 3));
    EXPECT_FALSE(image->SaveImage(static_cast<const wchar_t*>(nullptr)));
    EXPECT_FALSE(image->SaveImage(static_cast<const wchar_t*>(nullptr), 3));
  }
  EXPECT_EQ(folder.Names(), std::vector<std::string>());
}

TEST(VemImageSave, OfNoRowsGivesFalseAfterWhatTheNameRaises) {
  const TemporaryFolder folder;
  VemImage image = ImageOf(cv::Mat(0, 4, CV_8UC3));
  VemImage twoChannels = ImageOf(cv::Mat(0, 4, CV_8UC2));
  WriteBytes(folder / "old.png", {1, 2, 3});
  for (const Writer& writer : kWriters) {
    SCOPED_TRACE(writer.name);
    for (const char* name : {"a.jpg", "a.jpeg", "a.png", "a.bmp", "a.tif", "a.jp2", "old.png"}) {
      EXPECT_FALSE(writer.write(image, folder / name)) << name;
      EXPECT_FALSE(writer.write(twoChannels, folder / name)) << name;
    }
    EXPECT_THROW(writer.write(image, folder / "ab.c"), cv::Exception);
    EXPECT_THROW(writer.write(image, "a.b"), std::out_of_range);
  }
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"old.png"});
  EXPECT_EQ(ReadBytes(folder / "old.png"), (Bytes{1, 2, 3}));
}

struct RefusedCase {
  const char* name;
  int type;
};

const RefusedCase kRefusedCases[] = {
    {"a.png", CV_8UC2}, {"a.jpg", CV_16UC2}, {"a.bmp", CV_MAKETYPE(CV_8U, 5)},
    {"a.tif", CV_8UC2}, {"a.png", CV_64FC2}, {"a.ras", CV_8UC2},
    {"a.exr", CV_8UC1}, {"a.exr", CV_16SC4}, {"a.hdr", CV_32FC2},
};

TEST(VemImageSave, RaisesForImagesThatNoEncoderTakes) {
  const TemporaryFolder folder;
  const Outcome outcome = RunApart([&] {
    int wrong = 0;
    for (const RefusedCase& c : kRefusedCases) {
      for (const Writer& writer : kWriters) {
        for (const char* place : {"", "missing/"}) {
          VemImage image = ImageOf(cv::Mat::zeros(9, 13, c.type));
          try {
            writer.write(image, folder / (std::string(place) + c.name));
            ++wrong;
          } catch (const cv::Exception&) {
          }
        }
      }
    }
    return wrong;
  });
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(folder.Names(), std::vector<std::string>());
}

TEST(VemImageSave, SavedImagesReadBackButForTheirAlpha) {
  const TemporaryFolder folder;
  for (const int type : {CV_8UC1, CV_8UC3, CV_8UC4, CV_16UC1, CV_16UC3, CV_16UC4}) {
    SCOPED_TRACE(type);
    VemImage image = ImageOf(Texture(9, 13, type));
    ASSERT_TRUE(image.SaveImage((folder / "a.png").c_str()));
    VemImage read;
    EXPECT_TRUE(read.ReadImage((folder / "a.png").c_str()));
    EXPECT_TRUE(SamePixels(read.Mat(), WithoutAlpha(image.Mat())));
  }
}

TEST(VemImageSave, NeedsNoTemporaryFolder) {
  const TemporaryFolder folder;
  const Outcome outcome = RunApart([&] {
    setenv("OPENCV_TEMP_PATH", "/nonexistent", 1);
    VemImage image = ImageOf(Texture(40, 48, CV_8UC3));
    int unsaved = 0;
    for (const char* name : {"a.hdr", "a.jp2", "a.jpg", "a.png", "a.ras", "a.tif"}) {
      if (!image.SaveImage((folder / name).c_str())) ++unsaved;
    }
    return unsaved;
  });
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(folder.Names(),
            (std::vector<std::string>{"a.hdr", "a.jp2", "a.jpg", "a.png", "a.ras", "a.tif"}));
}

// A folder with all kinds of places that nobody but root may write to, or nobody at all.
class UnwritablePlaces {
 public:
  UnwritablePlaces() {
    fs::create_directory(folder_ / "closed");
    fs::create_directory(folder_ / "protected");
    fs::create_directory(folder_ / "unsearchable");
    for (const char* format : {"png", "jpg", "bmp", "tif", "jp2"}) {
      const std::string extension = std::string(".") + format;
      WriteBytes(folder_ / ("locked" + extension), {1, 2, 3});
      fs::permissions(folder_ / ("locked" + extension), fs::perms::owner_read);
      fs::create_directory(folder_ / ("folder" + extension));
      fs::permissions(folder_ / ("folder" + extension), fs::perms::all);
      fs::create_symlink("missing/a" + extension, folder_ / ("dangling" + extension));
      fs::create_symlink("loop" + extension, folder_ / ("loop" + extension));
      fs::create_symlink("closed/a" + extension, folder_ / ("closed_link" + extension));
      fs::create_symlink(folder_ / ("protected/a" + extension),
                         folder_ / ("protected_link" + extension));
      fs::create_symlink("unsearchable/a" + extension, folder_ / ("unsearchable_link" + extension));
      for (const char* place :
           {"locked", "folder", "dangling", "loop", "closed_link", "protected_link",
            "unsearchable_link", "missing/a", "closed/a", "protected/a", "unsearchable/a"}) {
        paths.push_back(folder_ / (place + extension));
      }
      paths.push_back(folder_ / ("locked.png/a" + extension));
      paths.push_back(folder_ / (std::string(300, 'x') + extension));
    }
    fs::permissions(folder_ / "closed", fs::perms::owner_read);
    constexpr auto kReadOnly = static_cast<fs::perms>(0555);
    fs::permissions(folder_ / "protected", kReadOnly);
    constexpr auto kNotSearchable = static_cast<fs::perms>(0666);
    fs::permissions(folder_ / "unsearchable", kNotSearchable);
  }

  bool Unchanged() const {
    return Exists(folder_ / "locked.tif") && fs::is_empty(folder_ / "closed") &&
           fs::is_empty(folder_ / "protected") && fs::is_empty(folder_ / "unsearchable") &&
           fs::is_empty(folder_ / "folder.png") && !Exists(folder_ / "missing") &&
           ReadBytes(folder_ / "locked.png") == Bytes{1, 2, 3} &&
           ReadBytes(folder_ / "locked.tif") == Bytes{1, 2, 3};
  }

  std::vector<std::string> paths;

 private:
  TemporaryFolder folder_;
};

TEST(VemImageSave, ToAPlaceThatCantBeWrittenGivesFalseAndPrintsNothing) {
  const UnwritablePlaces places;
  for (const Writer& writer : kWriters) {
    SCOPED_TRACE(writer.name);
    const Outcome outcome = RunUnprivileged([&] {
      VemImage image = ImageOf(Texture(40, 48, CV_8UC3));
      for (const std::string& path : places.paths) {
        if (writer.write(image, path)) std::puts(path.c_str());
      }
      return 0;
    });
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "");
  }
  EXPECT_TRUE(places.Unchanged());
}

TEST(VemImageSave, RaisesBeforeItLooksAtThePlace) {
  const TemporaryFolder folder;
  VemImage image = ImageOf(Texture(9, 13, CV_8UC3));
  VemImage twoChannels = ImageOf(cv::Mat::zeros(9, 13, CV_8UC2));
  for (const Writer& writer : kWriters) {
    SCOPED_TRACE(writer.name);
    EXPECT_THROW(writer.write(image, folder / "missing/ab.c"), cv::Exception);
    EXPECT_THROW(writer.write(image, folder / "missing/aJPEG"), cv::Exception);
    EXPECT_THROW(writer.write(twoChannels, folder / "missing/a.png"), cv::Exception);
    EXPECT_FALSE(writer.write(image, folder / "missing/a.webp"));
  }
}

TEST(VemImageSave, WritesThroughLinks) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "inner");
  fs::create_symlink("inner/target.png", folder / "relative.png");
  fs::create_symlink(folder / "other.png", folder / "absolute.png");
  fs::create_symlink("absolute.png", folder / "chain.png");
  VemImage image = ImageOf(Texture(9, 13, CV_8UC3));
  EXPECT_TRUE(image.SaveImage((folder / "relative.png").c_str()));
  EXPECT_TRUE(image.SaveImage(Widen(folder / "chain.png").c_str()));
  EXPECT_TRUE(SamePixels(cv::imread(folder / "inner/target.png", -1), image.Mat()));
  EXPECT_TRUE(SamePixels(cv::imread(folder / "other.png", -1), image.Mat()));
}

TEST(VemImageSave, ReplacesAFileAndTakesNamesWithoutAFolder) {
  const TemporaryFolder folder;
  WriteBytes(folder / "a.png", Bytes(100000, 7));
  const Outcome outcome = RunApart([&] {
    fs::current_path(folder.Path());
    VemImage image = ImageOf(Texture(9, 13, CV_8UC3));
    return image.SaveImage("a.png") && image.SaveImage(L"b.bmp") ? 0 : 1;
  });
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(SamePixels(cv::imread(folder / "a.png", -1), Texture(9, 13, CV_8UC3)));
  EXPECT_TRUE(SamePixels(cv::imread(folder / "b.bmp", -1), Texture(9, 13, CV_8UC3)));
}

// Characters that would be the letters of an extension if a wide character were cut to a byte.
TEST(VemImageSave, ComparesWideCharactersAsAWhole) {
  const TemporaryFolder folder;
  VemImage image = ImageOf(Texture(9, 13, CV_8UC3));
  const std::wstring start = Widen(folder / "a");
  EXPECT_THROW(image.SaveImage((start + L".\x14A\x150\x147").c_str()), cv::Exception);
  EXPECT_THROW(image.SaveImage((start + L".\x16A\x170\x167").c_str()), cv::Exception);
  EXPECT_THROW(image.SaveImage((start + L".\xFF4A\xFF50\xFF47").c_str()), cv::Exception);
  EXPECT_FALSE(image.SaveImage((start + L"\x12EJPG").c_str()));
  EXPECT_FALSE(image.SaveImage((start + L"\x12E\x12E\x12E\x12E").c_str()));
  EXPECT_EQ(folder.Names(), std::vector<std::string>());
}

}  // namespace
