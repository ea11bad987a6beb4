#ifndef VEM_WIDE_FILES_H_
#define VEM_WIDE_FILES_H_

#include <vector>

#include <opencv2/core/mat.hpp>

#include "VemExport.h"

/// Image files under wide names, where OpenCV has no such functions of its own. The name goes to
/// the file system as UTF-8, whatever the locale of the process. A null name and a name that is no
/// valid Unicode stand for a file that can be neither read nor written. Any number of threads may
/// call these at once.
///
/// Under `_GLIBCXX_DEBUG` OpenCV gives its argument types other names, so that a program built with
/// it links to neither OpenCV's `imwrite` nor this one, unless OpenCV and this library are built so
/// too.
namespace cv {

/// Reads an image file as `cv::imread` does with the same flags. A file that can't be read gives
/// the empty matrix; one that is missing or may not be read prints nothing.
VEM_EXPORT Mat imreadWString(const wchar_t* filename, int flags);

/// Writes an image file as `cv::imwrite` does with the same parameters, the format chosen by the
/// extension, and returns what that returns.
///
/// Where the file can be written or created, `cv::imwrite` alone decides: what it raises, prints
/// and leaves behind is its own. Most versions print what an encoder refuses, return false and may
/// leave part of a file. Where the file can't be written, a name or an image that no encoder takes
/// raises `cv::Exception` as it does there, and anything else gives false and prints nothing. An
/// image without pixels raises for such a name, else gives false. No other file is ever made.
VEM_EXPORT bool imwriteWString(const wchar_t* filename, const _InputArray& img,
                               const std::vector<int>& params);

}  // namespace cv

#endif  // VEM_WIDE_FILES_H_
