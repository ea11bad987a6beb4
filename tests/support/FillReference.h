#ifndef TESTS_SUPPORT_FILL_REFERENCE_H_
#define TESTS_SUPPORT_FILL_REFERENCE_H_

#include <vector>

#include <opencv2/core.hpp>

/// The pixels of closed contours filled on a canvas, decided pixel by pixel by the rule of the fill
/// and nothing else: 255 inside, 0 outside. As slow as it is plain.
cv::Mat FilledByRule(const std::vector<std::vector<cv::Point>>& contours, int width, int height);

#endif  // TESTS_SUPPORT_FILL_REFERENCE_H_
