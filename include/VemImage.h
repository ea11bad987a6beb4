#ifndef VEM_IMAGE_H_
#define VEM_IMAGE_H_

/// @file
/// The image, and how files and pixels become one.

#include "VemExport.h"

namespace cv {
class Mat;
}  // namespace cv

/// The type of one channel of an image: OpenCV's depth code. The number of channels is told apart.
enum VemImageType : int {
  VemImageType8U = 0,   ///< unsigned 8-bit integer
  VemImageType8S = 1,   ///< signed 8-bit integer
  VemImageType16U = 2,  ///< unsigned 16-bit integer
  VemImageType16S = 3,  ///< signed 16-bit integer
  VemImageType32S = 4,  ///< signed 32-bit integer
  VemImageType32F = 5,  ///< 32-bit float
  VemImageType64F = 6   ///< 64-bit float
};

/// A raster image: a handle on one `cv::Mat`.
///
/// Pixels stand by row, then by column, then by channel, in whatever channel order the source had.
/// An image is either empty (0 by 0, one channel, no data) or holds pixels. Test Width or Height
/// for emptiness, not Channels.
///
/// Copy construction, assignment and ShallowCopy share the pixels through `cv::Mat`'s reference
/// count, in constant time; DeepCopy does not. A caller's buffer is always copied in, never kept.
/// When OpenCV fails while an image is copied, the copy is empty and nothing is raised.
///
/// Use an object from one thread at a time; separate objects may be used at once, and two images
/// that share pixels may be destroyed on different threads.
class VEM_EXPORT VemImage {
 public:
  /// Empty.
  VemImage();

  /// Copies a caller's buffer; the copy has packed rows.
  ///
  /// `step` is in bytes from one row to the next and may be wider than a row (padding is dropped),
  /// narrower, or negative; 0, or a height of 1, means packed rows. `channels` takes any count of
  /// 1 to 512; one outside wraps as OpenCV's type code does, so that 0 reads 512 channels. A type
  /// outside 0 to 6 gives the empty image, as does a zero area.
  ///
  /// A null `data` beside a non-zero area raises `cv::Exception`, and so do a step that is no
  /// multiple of a channel's size, a negative size beside a non-zero area, and a copy too large for
  /// memory.
  VemImage(unsigned char* data, int step, int height, int width, int channels, VemImageType type);

  /// Shares the pixels of `other`.
  VemImage(const VemImage& other);
  /// Shares the pixels of `other` and lets the own ones go. Assigned to itself, an image stays as
  /// it is.
  VemImage& operator=(const VemImage& other);
  ~VemImage();

  /// Replaces the image by a copy of a caller's buffer, and returns whether the arguments were
  /// taken.
  ///
  /// Refused with false, the image unchanged: a negative size; channels other than 1 or 3; a `step`
  /// that is not exactly `width * channels *` the size of a channel in bytes. A type outside 0 to 6
  /// gives true and changes nothing. A null `data` beside a non-zero area raises `cv::Exception`,
  /// as does a copy too large for memory; the image is then unchanged.
  ///
  /// The old pixels are let go, never written: images that share them keep them.
  bool CreateImage(unsigned char* data, int step, int height, int width, int channels,
                   VemImageType type);

  /// An image with pixels of its own, in packed rows.
  VemImage DeepCopy() const;
  /// An image that shares the pixels of this one.
  VemImage ShallowCopy() const;

  /// Replaces the image by that of a file, and returns whether it has pixels now.
  ///
  /// Depth and channel order are the decoder's: OpenCV's give blue before green before red. An
  /// image of more than three channels is read a second time with at most three: an alpha channel
  /// is dropped. Whatever fails, and a null path, leaves the empty image, and nothing is raised;
  /// images that share the old pixels keep them. A file that is missing or may not be read prints
  /// nothing; OpenCV's codecs may print on a damaged one. How many pixels a file may claim, and so
  /// how much memory it may take, is bounded by the environment variable
  /// `OPENCV_IO_MAX_IMAGE_PIXELS`, 2^30 unless it is set.
  bool ReadImage(const char* path);
  /// The same. The name goes to the file system as UTF-8, whatever the locale.
  bool ReadImage(const wchar_t* path);

  /// Writes the image to a file as `cv::imwrite` does, three channels as blue, green and red, and
  /// returns what that returns.
  ///
  /// The last four characters of the name, in either case, choose the parameters: `.jpg` and `jpeg`
  /// take JPEG quality 60, `.png` takes the filtered strategy and compression 6. Any other four
  /// with a dot among them (`.tif`, `.bmp`) leave format and parameters to OpenCV. Four without one
  /// give false, and nothing is written: `.tiff` and `.webp` are among these, for all that OpenCV
  /// has encoders for them.
  ///
  /// An empty image gives false before the path is looked at. Raises `std::logic_error` for a null
  /// path and `std::out_of_range` for one shorter than four characters. `cv::Exception` is raised
  /// for an extension that no encoder has (`myjpeg`, `.c`) and for an image that no encoder takes:
  /// of two channels, or of more than four. An image of no rows raises for such an extension, else
  /// gives false.
  ///
  /// Where the file can be written or created, the rest is `cv::imwrite`'s: most versions print
  /// what the encoder of the one format refuses (a grey `.ppm`, a coloured `.pgm`), return false
  /// and may leave part of a file. Where it can't, the result is false and nothing is printed. No
  /// other file is ever made.
  bool SaveImage(const char* path);
  /// The same with a level of compression, from 0 for the best quality to 10 for the smallest file;
  /// what lies beyond is taken as the nearer end. JPEG quality is 100 less ten times the level, PNG
  /// compression is the level.
  bool SaveImage(const char* path, int quality);
  /// The same for a wide name, which goes to the file system as UTF-8, whatever the locale; one
  /// that is no valid Unicode gives false. JPEG quality is OpenCV's best, not 60.
  bool SaveImage(const wchar_t* path);
  /// The same for a wide name, with a level of compression.
  bool SaveImage(const wchar_t* path, int quality);

  int Width() const;   ///< Number of columns.
  int Height() const;  ///< Number of rows.
  int Step() const;    ///< Bytes from one row to the next.
  /// The first pixel, writable, null in an empty image. It stays valid until the image is replaced
  /// or destroyed. Writing changes every image that shares the pixels.
  unsigned char* ImageData();
  int Channels() const;           ///< Channels of a pixel; 1 for an empty image.
  VemImageType BitDepth() const;  ///< The type of a channel, no number of bits; 0 if it has none.

  cv::Mat& Mat();              ///< The OpenCV matrix itself, no copy.
  const cv::Mat& Mat() const;  ///< The OpenCV matrix itself, no copy.

 private:
  friend class VemImageArray;

  cv::Mat* mat;
};

#endif  // VEM_IMAGE_H_
