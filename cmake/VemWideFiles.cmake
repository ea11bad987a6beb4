# Some builds of OpenCV bring cv::imreadWString and cv::imwriteWString. VEM_OPENCV_HAS_WIDE_FILES
# tells whether the one at hand has both.
include(CheckCXXSourceCompiles)

set(CMAKE_REQUIRED_LIBRARIES opencv_core opencv_imgcodecs)
check_cxx_source_compiles("
  #include <opencv2/imgcodecs.hpp>
  #include <vector>
  namespace cv {
  Mat imreadWString(const wchar_t*, int);
  bool imwriteWString(const wchar_t*, InputArray, const std::vector<int>&);
  }
  int main() {
    const cv::Mat image = cv::imreadWString(L\"\", -1);
    return cv::imwriteWString(L\"\", image, std::vector<int>()) ? 0 : 1;
  }" VEM_OPENCV_HAS_WIDE_FILES)
unset(CMAKE_REQUIRED_LIBRARIES)
