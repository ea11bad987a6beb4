#include "VemWideFiles.h"

#include <clocale>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "VemImage.h"
#include "support/Files.h"
#include "support/ImageSamples.h"

namespace {

static_assert(std::is_same_v<decltype(&cv::imreadWString), cv::Mat (*)(const wchar_t*, int)>,
              "reads into a matrix");
static_assert(std::is_same_v<decltype(&cv::imwriteWString),
                             bool (*)(const wchar_t*, cv::InputArray, const std::vector<int>&)>,
              "takes what cv::imwrite takes");

struct ScriptCase {
  const char* name;
  const wchar_t* wide;
  const char* utf8;
};

const ScriptCase kScriptCases[] = {
    {"Ascii", L"plate 1", "plate 1"},
    {"LastOfOneByte", L"\x7F", "\x7F"},
    {"FirstOfTwoBytes", L"\x80", "\xC2\x80"},
    {"Latin", L"Prüfstück",
     "Pr\xC3\xBC"
     "fst\xC3\xBC"
     "ck"},
    {"Greek", L"δοκίμιο", "\xCE\xB4\xCE\xBF\xCE\xBA\xCE\xAF\xCE\xBC\xCE\xB9\xCE\xBF"},
    {"Cyrillic", L"деталь", "\xD0\xB4\xD0\xB5\xD1\x82\xD0\xB0\xD0\xBB\xD1\x8C"},
    {"Hebrew", L"לוח", "\xD7\x9C\xD7\x95\xD7\x97"},
    {"LastOfTwoBytes", L"\x7FF", "\xDF\xBF"},
    {"FirstOfThreeBytes", L"\x800", "\xE0\xA0\x80"},
    {"Devanagari", L"भाग", "\xE0\xA4\xAD\xE0\xA4\xBE\xE0\xA4\x97"},
    {"Chinese", L"零件", "\xE9\x9B\xB6\xE4\xBB\xB6"},
    {"BeforeSurrogates", L"\xD7FF", "\xED\x9F\xBF"},
    {"AfterSurrogates", L"\xE000", "\xEE\x80\x80"},
    {"LastOfThreeBytes", L"\xFFFF", "\xEF\xBF\xBF"},
    {"FirstOfFourBytes", L"\x10000", "\xF0\x90\x80\x80"},
    {"Emoji", L"🔧", "\xF0\x9F\x94\xA7"},
    {"LastOfAll", L"\x10FFFF", "\xF4\x8F\xBF\xBF"},
};

void ExpectNamesInEveryScript() {
  const TemporaryFolder folder;
  const cv::Mat pixels = Texture(9, 13, CV_8UC3);
  for (const ScriptCase& c : kScriptCases) {
    SCOPED_TRACE(c.name);
    const std::wstring wide = Widen(folder.Path() + '/') + c.wide + L".png";
    const std::string narrow = folder / c.utf8 + ".png";
    EXPECT_TRUE(cv::imwriteWString(wide.c_str(), pixels, {}));
    EXPECT_TRUE(SamePixels(cv::imread(narrow, -1), pixels));
    EXPECT_TRUE(SamePixels(cv::imreadWString(wide.c_str(), -1), pixels));

    VemImage image;
    EXPECT_TRUE(image.ReadImage(wide.c_str()));
    EXPECT_TRUE(SamePixels(image.Mat(), pixels));
    const std::wstring second = Widen(folder.Path() + "/2") + c.wide + L".png";
    EXPECT_TRUE(image.SaveImage(second.c_str()));
    EXPECT_TRUE(Exists(folder / "2" + c.utf8 + ".png"));
  }
}

// Sets the locale of the process as long as it lives.
class LocaleChange {
 public:
  explicit LocaleChange(const char* locale)
      : old_(std::setlocale(LC_ALL, nullptr)), done_(std::setlocale(LC_ALL, locale) != nullptr) {}
  ~LocaleChange() { std::setlocale(LC_ALL, old_.c_str()); }
  LocaleChange(const LocaleChange&) = delete;
  LocaleChange& operator=(const LocaleChange&) = delete;

  bool Done() const { return done_; }

 private:
  std::string old_;
  bool done_;
};

TEST(VemWideFiles, NamesAreUtf8UnderTheCLocale) {
  const LocaleChange locale("C");
  ASSERT_TRUE(locale.Done());
  ExpectNamesInEveryScript();
}

TEST(VemWideFiles, NamesAreUtf8UnderAUtf8Locale) {
  const LocaleChange locale("C.UTF-8");
  ASSERT_TRUE(locale.Done());
  ExpectNamesInEveryScript();
}

struct InvalidCase {
  const char* name;
  unsigned code;
};

const InvalidCase kInvalidCases[] = {
    {"FirstSurrogate", 0xD800},       {"LastHighSurrogate", 0xDBFF},
    {"FirstLowSurrogate", 0xDC00},    {"LastSurrogate", 0xDFFF},
    {"BeyondUnicode", 0x110000},      {"BeyondFourBytes", 0x200000},
    {"LargestCharacter", 0x7FFFFFFF}, {"SmallestCharacter", 0x80000000},
    {"MinusOne", 0xFFFFFFFF},
};

TEST(VemWideFiles, WhatIsNoUnicodeIsNoFile) {
  const TemporaryFolder folder;
  const Outcome outcome = RunApart([&] {
    const cv::Mat pixels = Texture(9, 13, CV_8UC3);
    VemImage image;
    for (const InvalidCase& c : kInvalidCases) {
      const std::wstring path = Widen(folder / "a") + static_cast<wchar_t>(c.code) + L"b.png";
      const cv::Mat read = cv::imreadWString(path.c_str(), -1);
      image.Mat() = pixels;
      const bool written = cv::imwriteWString(path.c_str(), pixels, {}) ||
                           image.SaveImage(path.c_str()) || image.SaveImage(path.c_str(), 3);
      if (written || read.dims != 0 || image.ReadImage(path.c_str())) return 1;
      if (image.Mat().dims != 0) return 2;
    }
    return 0;
  });
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(folder.Names(), std::vector<std::string>());
}

// UTF-16, as other systems have it, is no Unicode in wide characters of 32 bits.
TEST(VemWideFiles, SurrogatePairsAreNoFile) {
  const TemporaryFolder folder;
  std::wstring path = Widen(folder / "a");
  path += static_cast<wchar_t>(0xD83D);
  path += static_cast<wchar_t>(0xDD27);
  path += L".png";
  EXPECT_FALSE(cv::imwriteWString(path.c_str(), Texture(9, 13, CV_8UC3), {}));
  EXPECT_EQ(folder.Names(), std::vector<std::string>());
}

TEST(VemWideFiles, NullIsNoFile) {
  EXPECT_EQ(cv::imreadWString(nullptr, -1).dims, 0);
  EXPECT_FALSE(cv::imwriteWString(nullptr, Texture(9, 13, CV_8UC3), {}));
}

TEST(VemWideFiles, ReadsAsImreadWithTheSameFlags) {
  const TemporaryFolder folder;
  for (const ImageFile& file : SoundFiles()) {
    SCOPED_TRACE(file.name);
    const std::string path = folder / file.name;
    WriteBytes(path, file.bytes);
    for (const int flags : {-1, 0, 1, 2, 4, 6, 17, 128, 134}) {
      SCOPED_TRACE(flags);
      cv::Mat expected = cv::imread(path, flags);
      if (expected.empty()) expected = cv::Mat();  // A failed one may keep a type.
      EXPECT_TRUE(SamePixels(cv::imreadWString(Widen(path).c_str(), flags), expected));
    }
  }
}

TEST(VemWideFiles, WritesAsImwriteWithTheSameParameters) {
  const TemporaryFolder folder;
  const cv::Mat pixels = Texture(40, 48, CV_8UC3);
  const std::vector<std::vector<int>> parameters = {{},      {1, 60},        {1, 200},
                                                    {16, 9}, {17, 1, 16, 6}, {16, 6, 17, 1}};
  for (const char* name : {"a.jpg", "a.png", "a.bmp", "a.tiff", "a.webp", "a.jp2"}) {
    SCOPED_TRACE(name);
    for (const std::vector<int>& given : parameters) {
      ASSERT_TRUE(cv::imwrite(folder / name, pixels, given));
      const std::vector<unsigned char> expected = ReadBytes(folder / name);
      EXPECT_TRUE(cv::imwriteWString(Widen(folder / "wide" + name).c_str(), pixels, given));
      EXPECT_EQ(ReadBytes(folder / "wide" + name), expected);
    }
  }
}

TEST(VemWideFiles, WritesWhatOpenCVTakesForAnImage) {
  const TemporaryFolder folder;
  const cv::Mat pixels = Texture(40, 48, CV_8UC3);
  const std::vector<cv::Mat> pages = {pixels, Texture(9, 13, CV_8UC1)};
  const cv::Matx<unsigned char, 2, 2> small(1, 2, 3, 4);
  cv::UMat shared;
  pixels.copyTo(shared);
  EXPECT_TRUE(cv::imwriteWString(Widen(folder / "part.png").c_str(), pixels.rowRange(3, 9), {}));
  EXPECT_TRUE(cv::imwriteWString(Widen(folder / "small.png").c_str(), small, {}));
  EXPECT_TRUE(cv::imwriteWString(Widen(folder / "shared.png").c_str(), shared, {}));
  EXPECT_TRUE(cv::imwriteWString(Widen(folder / "pages.tif").c_str(), pages, {}));
  EXPECT_TRUE(SamePixels(cv::imread(folder / "part.png", -1), pixels.rowRange(3, 9)));
  EXPECT_TRUE(SamePixels(cv::imread(folder / "small.png", -1), cv::Mat(small)));
  EXPECT_TRUE(SamePixels(cv::imread(folder / "shared.png", -1), pixels));
  std::vector<cv::Mat> read;
  EXPECT_TRUE(cv::imreadmulti(folder / "pages.tif", read, -1));
  ASSERT_EQ(read.size(), 2U);
  EXPECT_TRUE(SamePixels(read[1], pages[1]));
}

TEST(VemWideFiles, RaisesWhereImwriteDoes) {
  const TemporaryFolder folder;
  const std::wstring path = Widen(folder / "a");
  const cv::Mat pixels = Texture(9, 13, CV_8UC3);
  EXPECT_THROW(cv::imwriteWString((path + L".qqq").c_str(), pixels, {}), cv::Exception);
  EXPECT_THROW(cv::imwriteWString(path.c_str(), pixels, {}), cv::Exception);
  EXPECT_THROW(cv::imwriteWString(L"", pixels, {}), cv::Exception);
  EXPECT_THROW(cv::imwriteWString((path + L".png").c_str(), cv::Mat(3, 3, CV_8UC2), {}),
               cv::Exception);
  EXPECT_FALSE(cv::imwriteWString((path + L".png").c_str(), cv::Mat(), {}));
  EXPECT_EQ(folder.Names(), std::vector<std::string>());
}

}  // namespace
