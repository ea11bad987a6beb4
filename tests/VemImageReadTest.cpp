#include "VemImage.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <new>
#include <string>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "support/Files.h"
#include "support/ImageSamples.h"

namespace {

namespace fs = std::filesystem;

void ExpectEmpty(const VemImage& image) {
  EXPECT_EQ(image.Mat().data, nullptr);
  EXPECT_EQ(image.Mat().dims, 0);
  EXPECT_EQ(image.Mat().type(), 0);
  EXPECT_EQ(image.Width(), 0);
  EXPECT_EQ(image.Height(), 0);
}

// The overloads for narrow and wide names.
struct Reader {
  const char* name;
  std::function<bool(VemImage& image, const std::string& path)> read;
};

const Reader kReaders[] = {
    {"Narrow",
     [](VemImage& image, const std::string& path) { return image.ReadImage(path.c_str()); }},
    {"Wide",
     [](VemImage& image, const std::string& path) { return image.ReadImage(Widen(path).c_str()); }},
};

// How often a reading opens a file.
int CountOpens(const std::string& path, const std::function<void()>& reading) {
  const int queue = inotify_init1(IN_NONBLOCK);
  inotify_add_watch(queue, path.c_str(), IN_OPEN | IN_CLOSE);
  reading();
  alignas(inotify_event) char events[4096];
  const ssize_t size = read(queue, events, sizeof(events));
  close(queue);
  int opens = 0;
  for (ssize_t at = 0; at < size;) {
    const auto* event = reinterpret_cast<const inotify_event*>(events + at);
    if ((event->mask & IN_OPEN) != 0) ++opens;
    at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
  }
  return opens;
}

struct ReadCase {
  const char* name;
  int type;  // Of the file and, with three channels at most, of what is read.
  const char* extension;
};

const ReadCase kReadCases[] = {
    {"GreyPng", CV_8UC1, ".png"},      {"ColorPng", CV_8UC3, ".png"},
    {"DeepGreyPng", CV_16UC1, ".png"}, {"DeepColorPng", CV_16UC3, ".png"},
    {"AlphaPng", CV_8UC4, ".png"},     {"DeepAlphaPng", CV_16UC4, ".png"},
    {"GreyBmp", CV_8UC1, ".bmp"},      {"ColorBmp", CV_8UC3, ".bmp"},
    {"AlphaBmp", CV_8UC4, ".bmp"},     {"FloatTif", CV_32FC1, ".tif"},
};

TEST(VemImageRead, KeepsDepthAndChannelOrderAndDropsAlpha) {
  const TemporaryFolder folder;
  for (const ReadCase& c : kReadCases) {
    SCOPED_TRACE(c.name);
    const std::string path = folder / c.name + c.extension;
    const cv::Mat pixels = Texture(9, 13, c.type);
    ASSERT_TRUE(cv::imwrite(path, pixels));
    const cv::Mat expected = WithoutAlpha(pixels);
    for (const Reader& reader : kReaders) {
      SCOPED_TRACE(reader.name);
      VemImage image;
      EXPECT_TRUE(reader.read(image, path));
      EXPECT_EQ(image.Channels(), expected.channels());
      EXPECT_EQ(image.BitDepth(), static_cast<VemImageType>(expected.depth()));
      EXPECT_TRUE(SamePixels(image.Mat(), expected));
    }
  }
}

TEST(VemImageRead, OpensFilesOfFourChannelsTwice) {
  const TemporaryFolder folder;
  for (const Reader& reader : kReaders) {
    SCOPED_TRACE(reader.name);
    for (const int type : {CV_8UC1, CV_8UC3, CV_8UC4, CV_16UC4}) {
      SCOPED_TRACE(type);
      const std::string path = folder / "image.png";
      ASSERT_TRUE(cv::imwrite(path, Texture(9, 13, type)));
      const int once = CountOpens(path, [&] { cv::imread(path, -1); });
      VemImage image;
      const int opens = CountOpens(path, [&] { reader.read(image, path); });
      ASSERT_GT(once, 0);
      EXPECT_EQ(opens, CV_MAT_CN(type) > 3 ? 2 * once : once);
    }
  }
}

TEST(VemImageRead, NeverTurnsAnImage) {
  const TemporaryFolder folder;
  for (const int type : {CV_8UC1, CV_8UC3, CV_8UC4, CV_16UC4}) {
    SCOPED_TRACE(type);
    const std::string path = folder / "turned.png";
    const cv::Mat pixels = Texture(9, 13, type);
    WriteBytes(path, TurnedPng(pixels));
    for (const Reader& reader : kReaders) {
      SCOPED_TRACE(reader.name);
      VemImage image;
      EXPECT_TRUE(reader.read(image, path));
      EXPECT_EQ(image.Width(), 13);
      EXPECT_EQ(image.Height(), 9);
      cv::Mat first;
      cv::Mat expected;
      cv::extractChannel(image.Mat(), first, 0);
      cv::extractChannel(pixels, expected, 0);
      EXPECT_TRUE(SamePixels(first, expected));
    }
  }
}

TEST(VemImageRead, LeavesOldPixelsToThoseWhoShareThem) {
  const TemporaryFolder folder;
  const std::string path = folder / "image.png";
  ASSERT_TRUE(cv::imwrite(path, Texture(9, 13, CV_8UC3)));
  const cv::Mat old = Texture(9, 13, CV_8UC3) + cv::Scalar(1, 2, 3);
  for (const Reader& reader : kReaders) {
    SCOPED_TRACE(reader.name);
    VemImage image = ImageOf(old.clone());
    VemImage sharing = image;
    EXPECT_TRUE(reader.read(image, path));
    EXPECT_EQ(sharing.Mat().u->refcount, 1);
    EXPECT_TRUE(SamePixels(sharing.Mat(), old));
    EXPECT_TRUE(SamePixels(image.Mat(), Texture(9, 13, CV_8UC3)));
  }
}

void ExpectUnreadable(const std::string& path) {
  for (const Reader& reader : kReaders) {
    SCOPED_TRACE(reader.name);
    VemImage image = ImageOf(Texture(3, 2, CV_16UC3));
    VemImage sharing = image;
    EXPECT_FALSE(reader.read(image, path));
    ExpectEmpty(image);
    EXPECT_TRUE(SamePixels(sharing.Mat(), Texture(3, 2, CV_16UC3)));
    EXPECT_EQ(sharing.Mat().u->refcount, 1);
    EXPECT_FALSE(reader.read(image, path));
    ExpectEmpty(image);
  }
}

TEST(VemImageRead, OfNoFileEmpties) {
  const TemporaryFolder folder;
  WriteBytes(folder / "file", {1, 2, 3});
  ASSERT_EQ(symlink("nowhere", (folder / "dangling").c_str()), 0);
  ASSERT_EQ(symlink("loop", (folder / "loop").c_str()), 0);
  for (const std::string& path :
       {std::string(), folder.Path(), folder / "missing.png", folder / "missing/image.png",
        folder / "file/image.png", folder / "dangling", folder / "loop",
        folder / std::string(300, 'x'), folder / std::string(5000, 'x')}) {
    SCOPED_TRACE(path);
    ExpectUnreadable(path);
  }
}

TEST(VemImageRead, OfNullEmpties) {
  VemImage image = ImageOf(Texture(3, 2, CV_16UC3));
  EXPECT_FALSE(image.ReadImage(static_cast<const char*>(nullptr)));
  ExpectEmpty(image);
  image = ImageOf(Texture(3, 2, CV_16UC3));
  EXPECT_FALSE(image.ReadImage(static_cast<const wchar_t*>(nullptr)));
  ExpectEmpty(image);
}

// The files also are the seeds of the fuzzer: the environment may name a folder to keep them in.
TEST(VemImageRead, TakesSoundFilesAndRefusesBrokenOnes) {
  const TemporaryFolder temporary;
  const char* kept = std::getenv("VEM_SEED_FOLDER");
  const std::string folder = kept == nullptr ? temporary.Path() : kept;
  for (const ImageFile& file : SoundFiles()) {
    SCOPED_TRACE(file.name);
    const std::string path = folder + '/' + file.name;
    WriteBytes(path, file.bytes);
    for (const Reader& reader : kReaders) {
      VemImage image;
      EXPECT_TRUE(reader.read(image, path)) << reader.name;
      EXPECT_LE(image.Channels(), 3) << reader.name;
    }
  }
  for (const ImageFile& file : BrokenFiles()) {
    SCOPED_TRACE(file.name);
    const std::string path = folder + '/' + file.name;
    WriteBytes(path, file.bytes);
    ExpectUnreadable(path);
  }
}

TEST(VemImageRead, OfAFileWithoutPermissionEmptiesAndPrintsNothing) {
  const TemporaryFolder folder;
  const std::string path = folder / "secret.png";
  ASSERT_TRUE(cv::imwrite(path, Texture(9, 13, CV_8UC4)));
  fs::permissions(path, fs::perms::none);
  for (const Reader& reader : kReaders) {
    SCOPED_TRACE(reader.name);
    const Outcome outcome = RunUnprivileged([&] {
      VemImage image = ImageOf(Texture(3, 2, CV_16UC3));
      const bool result = reader.read(image, path);
      return !result && image.Mat().data == nullptr && image.Mat().type() == 0 ? 0 : 1;
    });
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "");
  }
}

TEST(VemImageRead, OfNoFilePrintsNothing) {
  const TemporaryFolder folder;
  const Outcome outcome = RunApart([&] {
    VemImage image;
    for (const Reader& reader : kReaders) {
      for (const std::string& path :
           {std::string(), folder.Path(), folder / "missing.png", folder / "missing.tif",
            folder / "missing/image.jpg", folder / std::string(300, 'x')}) {
        if (reader.read(image, path)) return 1;
      }
    }
    image.ReadImage(static_cast<const char*>(nullptr));
    image.ReadImage(static_cast<const wchar_t*>(nullptr));
    image.ReadImage(L"\xD800");
    return 0;
  });
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "");
}

// Fails every allocation of pixels, in one of the ways that a stranger's allocator may choose.
class FailingAllocator : public cv::MatAllocator {
 public:
  explicit FailingAllocator(int failure)
      : failure_(failure), replaced_(cv::Mat::getDefaultAllocator()) {
    cv::Mat::setDefaultAllocator(this);
  }
  ~FailingAllocator() override { cv::Mat::setDefaultAllocator(replaced_); }

  cv::UMatData* allocate(int, const int*, int, void*, std::size_t*, cv::AccessFlag,
                         cv::UMatUsageFlags) const override {
    if (failure_ == 0) CV_Error(cv::Error::StsNoMem, "out of memory on demand");
    if (failure_ == 1) throw std::bad_alloc();
    throw failure_;
  }
  bool allocate(cv::UMatData*, cv::AccessFlag, cv::UMatUsageFlags) const override { return false; }
  void deallocate(cv::UMatData* data) const override {
    cv::Mat::getStdAllocator()->deallocate(data);
  }

 private:
  int failure_;
  cv::MatAllocator* replaced_;
};

TEST(VemImageRead, CatchesWhateverIsThrown) {
  const TemporaryFolder folder;
  const std::string path = folder / "image.png";
  ASSERT_TRUE(cv::imwrite(path, Texture(9, 13, CV_8UC3)));
  for (const Reader& reader : kReaders) {
    for (const int failure : {0, 1, 2}) {
      SCOPED_TRACE(failure);
      VemImage image = ImageOf(Texture(3, 2, CV_16UC3));
      {
        const FailingAllocator allocator(failure);
        EXPECT_FALSE(reader.read(image, path)) << reader.name;
      }
      ExpectEmpty(image);
    }
  }
}

}  // namespace
