#include "VemWideFiles.h"

#include <string>

#include <opencv2/core.hpp>

#include "platform/ImageFiles.h"

namespace {

bool IsCodePoint(unsigned code) { return code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF); }

void AppendUtf8(unsigned code, std::string& utf8) {
  const auto append = [&](unsigned byte) { utf8 += static_cast<char>(byte); };
  const auto appendTail = [&](int shift) { append(0x80 | (code >> shift & 0x3F)); };
  if (code < 0x80) return append(code);
  if (code < 0x800) {
    append(0xC0 | code >> 6);
    return appendTail(0);
  }
  if (code < 0x10000) {
    append(0xE0 | code >> 12);
  } else {
    append(0xF0 | code >> 18);
    appendTail(12);
  }
  appendTail(6);
  appendTail(0);
}

// The name as UTF-8, whatever the locale; false for null and for what is no Unicode.
bool ToUtf8(const wchar_t* name, std::string* utf8) {
  if (name == nullptr) return false;
  for (; *name != L'\0'; ++name) {
    const auto code = static_cast<unsigned>(*name);
    if (!IsCodePoint(code)) return false;
    AppendUtf8(code, *utf8);
  }
  return true;
}

}  // namespace

namespace cv {

Mat imreadWString(const wchar_t* filename, int flags) {
  std::string path;
  return ToUtf8(filename, &path) ? ReadImageFile(path, flags) : Mat();
}

bool imwriteWString(const wchar_t* filename, const _InputArray& img,
                    const std::vector<int>& params) {
  std::string path;
  return ToUtf8(filename, &path) && WriteImageFile(path, img, params);
}

}  // namespace cv
