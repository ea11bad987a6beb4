#include "VemWideFiles.h"

#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iostream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "VemImage.h"
#include "support/Files.h"
#include "support/ImageSamples.h"

// Saving beside cv::imwrite itself: what is returned or raised, printed and left behind, for every
// kind of image under every kind of name.

namespace {

namespace fs = std::filesystem;

using Parameters = std::vector<int>;
using Write = std::function<bool(const std::string& path, const cv::Mat& image, const Parameters&)>;

bool WriteWide(const std::string& path, const cv::Mat& image, const Parameters& parameters) {
  return cv::imwriteWString(Widen(path).c_str(), image, parameters);
}

struct WriteCase {
  std::string name;  // of the file
  cv::Mat image;
  Parameters parameters;
};

const char* const kExtensions[] = {".png", ".jpg", ".jpeg", ".bmp", ".tif",  ".tiff", ".jp2",
                                   ".ppm", ".pgm", ".pbm",  ".pnm", ".pam",  ".pfm",  ".hdr",
                                   ".pic", ".ras", ".sr",   ".exr", ".webp", ".qqq",  ""};

// Every depth, with up to five channels, in sizes that some formats find too small.
std::vector<cv::Mat> Images() {
  std::vector<cv::Mat> images;
  for (int depth = CV_8U; depth <= CV_64F; ++depth) {
    for (int channels = 1; channels <= 5; ++channels) {
      for (const cv::Size size : {cv::Size(1, 1), cv::Size(7, 5), cv::Size(40, 33)}) {
        images.push_back(Texture(size.height, size.width, CV_MAKETYPE(depth, channels)));
      }
    }
  }
  return images;
}

std::vector<WriteCase> AllCases() {
  const std::vector<cv::Mat> images = Images();
  std::vector<WriteCase> cases;
  for (const char* extension : kExtensions) {
    for (const cv::Mat& image : images) cases.push_back({std::string("a") + extension, image, {}});
  }
  return cases;
}

// What a file holds. The rows of a Sun raster end in bytes that nobody wrote: its pixels count.
std::string Contents(const std::string& path) {
  if (!Exists(path)) return "no file";
  std::vector<unsigned char> bytes = ReadBytes(path);
  const std::string size = std::to_string(bytes.size()) + " bytes ";
  const std::string extension = fs::path(path).extension();
  if (extension == ".ras" || extension == ".sr") {
    const cv::Mat pixels = cv::imread(path, -1);
    if (!pixels.empty()) bytes = pixels.reshape(1, 1);
  }
  return size + std::to_string(std::hash<std::string>()(std::string(bytes.begin(), bytes.end())));
}

// What a call returned or raised.
std::string Answer(const std::function<bool()>& call) {
  try {
    return call() ? "true" : "false";
  } catch (const cv::Exception& failure) {
    return failure.err;
  }
}

// Lets a writer save over an old file in a folder of its own, and tells all that comes of it, what
// it prints included.
std::string Account(const std::vector<WriteCase>& cases, const Write& write) {
  const TemporaryFolder folder;
  const TemporaryFolder temporary;
  const Outcome outcome = RunApart([&] {
    setenv("OPENCV_TEMP_PATH", temporary.Path().c_str(), 1);
    fs::current_path(folder.Path());
    for (const WriteCase& c : cases) {
      WriteBytes(c.name, {1, 2, 3});
      std::cerr << c.name << " of type " << c.image.type() << ' ' << c.image.size() << ": "
                << Answer([&] { return write(c.name, c.image, c.parameters); });
      std::cerr << ", " << Contents(c.name) << '\n';
      fs::remove(c.name);
    }
    for (const std::string& name : folder.Names()) std::cerr << "left " << name << '\n';
    return 0;
  });
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(temporary.Names(), std::vector<std::string>());
  // OpenCV's messages bear the time.
  return std::regex_replace(outcome.output, std::regex("@[0-9.]+"), "");
}

// Compares line by line, so that a failure shows the one that differs.
void ExpectTheSame(const std::string& actual, const std::string& expected) {
  EXPECT_NE(expected, "");
  std::istringstream actualLines(actual), expectedLines(expected);
  std::string actualLine, expectedLine;
  while (std::getline(expectedLines, expectedLine)) {
    std::getline(actualLines, actualLine);
    ASSERT_EQ(actualLine, expectedLine);
  }
  EXPECT_FALSE(std::getline(actualLines, actualLine)) << actualLine;
}

bool WriteAsOpenCV(const std::string& path, const cv::Mat& image, const Parameters& parameters) {
  return cv::imwrite(path, image, parameters);
}

TEST(VemWideFilesWrite, IsImwriteForEveryKindOfImageAndName) {
  const std::vector<WriteCase> cases = AllCases();
  ExpectTheSame(Account(cases, WriteWide), Account(cases, WriteAsOpenCV));
}

// Those of other formats, those out of range, an odd number of them, and too many.
TEST(VemWideFilesWrite, IsImwriteForEveryKindOfParameters) {
  std::vector<WriteCase> cases;
  for (const Parameters& parameters :
       {Parameters{1, 60}, Parameters{1, 200}, Parameters{1, -3}, Parameters{16, 9},
        Parameters{16, 6, 17, 1}, Parameters{17, 1, 16, 6}, Parameters{16, 77}, Parameters{32, 1},
        Parameters{98, 7, 99}, Parameters(100, 98), Parameters(102, 98)}) {
    for (const char* extension : kExtensions) {
      for (const int type : {CV_8UC1, CV_8UC3, CV_16UC4, CV_32FC3, CV_8UC2}) {
        cases.push_back({std::string("a") + extension, Texture(9, 13, type), parameters});
      }
    }
  }
  ExpectTheSame(Account(cases, WriteWide), Account(cases, WriteAsOpenCV));
}

TEST(VemWideFilesWrite, SaveImageIsImwriteUnderNamesThatItTakes) {
  std::vector<WriteCase> cases;
  for (const char* extension : {".png", ".jpg", ".bmp", ".tif", ".jp2", ".ppm", ".pgm", ".pam",
                                ".hdr", ".ras", ".exr", ".qqq"}) {
    const std::string name = std::string("a") + extension;
    const Parameters parameters = name == "a.jpg"   ? Parameters{1, 60}
                                  : name == "a.png" ? Parameters{17, 1, 16, 6}
                                                    : Parameters{};
    for (const cv::Mat& image : Images()) cases.push_back({name, image, parameters});
  }
  const auto save = [](const std::string& path, const cv::Mat& image, const Parameters&) {
    return ImageOf(image).SaveImage(path.c_str());
  };
  ExpectTheSame(Account(cases, save), Account(cases, WriteAsOpenCV));
}

// What cv::imwrite answers where it can write tells what it must raise where it can't.
TEST(VemWideFilesWrite, RaisesWhereNothingCanBeWrittenAsImwriteRaisesElsewhere) {
  const TemporaryFolder temporary;
  const TemporaryFolder folder;
  std::vector<std::string> expected;
  const std::vector<WriteCase> cases = AllCases();
  const Outcome reference = RunApart([&] {
    fs::current_path(folder.Path());
    for (const WriteCase& c : cases) {
      const std::string answer = Answer([&] { return cv::imwrite(c.name, c.image); });
      std::cerr << '\n' << "answer " << (answer == "true" ? "false" : answer) << '\n';
      fs::remove(c.name);
    }
    return 0;
  });
  std::istringstream lines(reference.output);
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind("answer ", 0) == 0) expected.push_back(line.substr(7));
  }
  ASSERT_EQ(expected.size(), cases.size());

  const Outcome outcome = RunApart([&] {
    setenv("OPENCV_TEMP_PATH", temporary.Path().c_str(), 1);
    for (const char* place : {"missing/", "/dev/null/"}) {
      fs::current_path(folder.Path());
      for (std::size_t i = 0; i < cases.size(); ++i) {
        for (const Parameters& parameters : {Parameters(), Parameters{1}, Parameters(102)}) {
          const std::string answer =
              Answer([&] { return WriteWide(place + cases[i].name, cases[i].image, parameters); });
          if (answer == expected[i]) continue;
          std::cerr << place << cases[i].name << " of type " << cases[i].image.type() << ": "
                    << answer << ", not " << expected[i] << '\n';
        }
      }
    }
    return 0;
  });
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(temporary.Names(), std::vector<std::string>());
  EXPECT_EQ(folder.Names(), std::vector<std::string>());
}

TEST(VemWideFilesWrite, OfNoPixelsRaisesForTheNameAloneAndElseGivesFalse) {
  const TemporaryFolder folder;
  const TemporaryFolder temporary;
  const Outcome outcome = RunApart([&] {
    setenv("OPENCV_TEMP_PATH", temporary.Path().c_str(), 1);
    fs::current_path(folder.Path());
    for (const char* place : {"", "missing/"}) {
      for (const char* extension : kExtensions) {
        const std::string path = std::string(place) + "a" + extension;
        const bool isKnown = *extension != '\0' && std::string(extension) != ".qqq";
        for (const cv::Mat& image : {cv::Mat(), cv::Mat(0, 4, CV_8UC3), cv::Mat(4, 0, CV_8UC2)}) {
          const std::string answer = Answer([&] { return WriteWide(path, image, {}); });
          if ((answer == "false") != isKnown) std::cerr << path << ": " << answer << '\n';
        }
      }
    }
    return 0;
  });
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(folder.Names(), std::vector<std::string>());
  EXPECT_EQ(temporary.Names(), std::vector<std::string>());
}

}  // namespace
