// vem-show: draws what a JSON file tells on a picture. See kHelp.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "VemPointArray.h"
#include "vem/view.h"
#include "view/Scene.h"

namespace {

constexpr char kHelp[] =
    "vem-show draws overlays, regions of interest, regions, contours or points on a picture.\n"
    "\n"
    "    vem-show [options] SCENE PICTURE RESULT\n"
    "\n"
    "SCENE    a JSON file: a document that vem::to_json has written, or a list of them\n"
    "PICTURE  any picture that OpenCV reads; a grey one becomes coloured\n"
    "RESULT   the picture to be written, in the format that its name ends in\n"
    "\n"
    "Overlays have pens of their own. Everything else is drawn with\n"
    "\n"
    "    --color RRGGBB  its colour, FF0000 unless told\n"
    "    --width N       the width of its line in pixels, 1 unless told; 0 draws no line\n"
    "    --fill          its inside tinted, the picture shining through\n"
    "\n"
    "    --help, --version\n"
    "    --              what follows is a file, whatever it begins with\n"
    "\n"
    "RESULT is written beside its place first, and an old one stays whole until the new one is.\n"
    "\n"
    "The exit status is 0 if the result was written, 1 if a file could not be read or written,\n"
    "2 if the call was wrong, 3 if the scene was.\n";

// What ends the program: its status, and a sentence.
struct Failure {
  int status;
  std::string reason;
};

constexpr int kFile = 1;
constexpr int kCall = 2;
constexpr int kScene = 3;

struct Call {
  bool help = false;
  bool version = false;
  vem::draw_style style;
  std::vector<std::string> files;
};

int NumberOf(const std::string& text, int base, std::size_t mostDigits, const char* option) {
  const char* const digits = base == 16 ? "0123456789abcdefABCDEF" : "0123456789";
  if (text.empty() || text.size() > mostDigits ||
      text.find_first_not_of(digits) != std::string::npos) {
    throw Failure{kCall, std::string(option) + " does not take \"" + text + '"'};
  }
  return std::stoi(text, nullptr, base);
}

void SetColor(vem::draw_style& style, const std::string& text) {
  constexpr std::size_t kDigits = 6;
  const int color = NumberOf(text, 16, kDigits, "--color");
  if (text.size() != kDigits) throw Failure{kCall, "--color takes six digits, RRGGBB"};
  style.red = color >> 16;
  style.green = color >> 8 & 255;
  style.blue = color & 255;
}

Call ReadCall(const std::vector<std::string>& arguments) {
  Call call;
  bool onlyFiles = false;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    const auto value = [&] {
      if (i + 1 == arguments.size()) throw Failure{kCall, argument + " needs a value"};
      return arguments[++i];
    };
    if (onlyFiles || argument.compare(0, 2, "--") != 0) {
      call.files.push_back(argument);
    } else if (argument == "--") {
      onlyFiles = true;
    } else if (argument == "--help") {
      call.help = true;
    } else if (argument == "--version") {
      call.version = true;
    } else if (argument == "--fill") {
      call.style.filled = true;
    } else if (argument == "--width") {
      call.style.width = NumberOf(value(), 10, 5, "--width");
    } else if (argument == "--color") {
      SetColor(call.style, value());
    } else {
      throw Failure{kCall, argument + " is no option (see --help)"};
    }
  }
  return call;
}

// A folder opens as a file, and fails when it is read.
std::string Contents(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream contents;
  if (file.is_open() && file.peek() != std::ifstream::traits_type::eof()) contents << file.rdbuf();
  if (!file.is_open() || file.bad()) throw Failure{kFile, path + ": can't be read"};
  return contents.str();
}

// "line 3, column 5", of a byte counted from 1.
std::string PlaceOf(const std::string& text, std::size_t byte) {
  const std::size_t end = std::min(byte == 0 ? 0 : byte - 1, text.size());
  const auto begin = text.begin();
  const auto line = std::count(begin, begin + static_cast<std::ptrdiff_t>(end), '\n') + 1;
  const std::size_t before = end == 0 ? std::string::npos : text.rfind('\n', end - 1);
  const std::size_t column = before == std::string::npos ? end + 1 : end - before;
  return "line " + std::to_string(line) + ", column " + std::to_string(column);
}

nlohmann::json ReadScene(const std::string& path) {
  const std::string text = Contents(path);
  try {
    return nlohmann::json::parse(text);
  } catch (const nlohmann::json::parse_error& error) {
    throw Failure{kScene, path + ": " + PlaceOf(text, error.byte) + ": is not JSON"};
  } catch (const nlohmann::json::exception&) {
    throw Failure{kScene, path + ": holds a number that is too large"};
  }
}

cv::Mat ReadPicture(const std::string& path) {
  const std::string contents = Contents(path);
  cv::Mat picture;
  try {
    const std::vector<unsigned char> bytes(contents.begin(), contents.end());
    if (!bytes.empty()) picture = cv::imdecode(bytes, cv::IMREAD_UNCHANGED);
  } catch (const cv::Exception&) {
    picture.release();
  }
  if (picture.empty()) throw Failure{kFile, path + ": is no picture that OpenCV reads"};
  if (picture.channels() == 1) cv::merge(std::vector<cv::Mat>(3, picture), picture);
  return picture;
}

std::vector<unsigned char> Encoded(const std::string& path, const cv::Mat& picture) {
  const std::size_t dot = path.find_last_of("./");
  const bool named = dot != std::string::npos && path[dot] == '.';
  std::vector<unsigned char> bytes;
  try {
    if (!named || !cv::imencode(path.substr(dot), picture, bytes)) bytes.clear();
  } catch (const cv::Exception&) {
    bytes.clear();
  }
  if (bytes.empty()) throw Failure{kFile, path + ": OpenCV does not write such a file"};
  return bytes;
}

bool WriteAll(int file, const std::vector<unsigned char>& bytes) {
  std::size_t written = 0;
  while (written < bytes.size()) {
    const ssize_t part = write(file, bytes.data() + written, bytes.size() - written);
    if (part < 0 && errno != EINTR) return false;
    if (part > 0) written += static_cast<std::size_t>(part);
  }
  return true;
}

// Writes a file beside its place and moves it there, so that an old one is replaced as a whole.
bool Replace(const std::string& path, mode_t mode, const std::vector<unsigned char>& bytes) {
  std::string beside = path.substr(0, path.rfind('/') + 1) + ".vem-show-XXXXXX";
  const int file = mkstemp(&beside[0]);
  if (file < 0) return false;
  bool done = WriteAll(file, bytes) && fchmod(file, mode) == 0;
  done = close(file) == 0 && done && std::rename(beside.c_str(), path.c_str()) == 0;
  if (!done) unlink(beside.c_str());
  return done;
}

// What is no plain file, as a pipe, can't be replaced. Links stay what they are.
bool WriteFile(const std::string& path, const std::vector<unsigned char>& bytes) {
  struct stat old = {};
  if (stat(path.c_str(), &old) != 0) {
    const mode_t hidden = umask(0);
    umask(hidden);
    return Replace(path, 0666 & ~hidden, bytes);
  }
  if (S_ISREG(old.st_mode)) {
    if (access(path.c_str(), W_OK) != 0) return false;
    char* const target = realpath(path.c_str(), nullptr);
    if (target == nullptr) return false;
    const std::string place = target;
    std::free(target);
    return Replace(place, old.st_mode & 07777, bytes);
  }
  const int file = open(path.c_str(), O_WRONLY);
  if (file < 0) return false;
  const bool done = WriteAll(file, bytes);
  return close(file) == 0 && done;
}

void WritePicture(const std::string& path, const cv::Mat& picture) {
  const std::vector<unsigned char> bytes = Encoded(path, picture);
  if (!WriteFile(path, bytes)) throw Failure{kFile, path + ": can't be written"};
}

void Show(const Call& call) {
  if (call.files.size() != 3) {
    throw Failure{kCall, "takes three files, SCENE PICTURE RESULT (see --help)"};
  }
  const nlohmann::json scene = ReadScene(call.files[0]);
  cv::Mat picture = ReadPicture(call.files[1]);
  if (!vem::draw(picture, VemPointArray())) {
    throw Failure{kFile, call.files[1] + ": has a type of pixels that is not drawn on"};
  }
  try {
    DrawScene(picture, scene, call.style);
  } catch (const std::invalid_argument& error) {
    throw Failure{kScene, call.files[0] + ": " + error.what()};
  }
  WritePicture(call.files[2], picture);
}

void Say(const char* text) {
  if (std::fputs(text, stdout) == EOF || std::fflush(stdout) != 0) {
    throw Failure{kFile, "the standard output can't be written"};
  }
}

void Perform(const Call& call) {
  if (call.help) return Say(kHelp);
  if (call.version) return Say("vem-show " VEM_VIEW_VERSION "\n");
  Show(call);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    Perform(ReadCall(std::vector<std::string>(argv + 1, argv + argc)));
    return 0;
  } catch (const Failure& failure) {
    std::fprintf(stderr, "vem-show: %s\n", failure.reason.c_str());
    return failure.status;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "vem-show: %s\n", error.what());
    return kFile;
  }
}
