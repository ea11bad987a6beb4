#include "compare/Rasters.h"

#include <cstdio>
#include <random>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

namespace {

cv::Mat Cut(const cv::Mat& gray) {
  cv::Mat raster;
  cv::threshold(gray, raster, 0, 255, cv::THRESH_BINARY | cv::THRESH_OTSU);
  return raster;
}

// What a camera makes of a drawing: light from one side, blur, and noise of the sensor.
cv::Mat Photographed(const cv::Mat& drawing, double blur, double noise) {
  cv::Mat light(drawing.size(), CV_32FC1);
  for (int row = 0; row < light.rows; ++row) {
    for (int column = 0; column < light.cols; ++column) {
      light.at<float>(row, column) = 0.75f + 0.25f * static_cast<float>(column + row) /
                                                 static_cast<float>(light.cols + light.rows);
    }
  }
  cv::Mat gray;
  drawing.convertTo(gray, CV_32FC1);
  cv::GaussianBlur(gray, gray, cv::Size(), blur);
  gray = gray.mul(light);
  cv::Mat grain(drawing.size(), CV_32FC1);
  cv::RNG random(7);
  random.fill(grain, cv::RNG::NORMAL, 0.0, noise);
  gray += grain;
  gray.convertTo(gray, CV_8UC1);
  return gray;
}

// Washers, bolts and plates that lie about.
cv::Mat Parts(const cv::Size& size) {
  cv::Mat drawing(size, CV_8UC1, cv::Scalar(60));
  std::mt19937 random(11);
  const auto any = [&](int limit) {
    return static_cast<int>(random() % static_cast<unsigned>(limit));
  };
  for (int i = 0; i < 40; ++i) {
    const cv::Point center(any(size.width), any(size.height));
    const int radius = size.width / 60 + any(size.width / 30);
    if (i % 3 == 0) {
      cv::circle(drawing, center, radius, cv::Scalar(200), cv::FILLED);
      cv::circle(drawing, center, radius / 2, cv::Scalar(50), cv::FILLED);
    } else if (i % 3 == 1) {
      const cv::Size axes(3 * radius, radius / 2 + 1);
      cv::ellipse(drawing, center, axes, any(180), 0, 360, cv::Scalar(190), cv::FILLED);
    } else {
      cv::rectangle(drawing, cv::Rect(center, cv::Size(2 * radius, radius)), cv::Scalar(210),
                    cv::FILLED);
    }
  }
  return drawing;
}

// Lines of text, dark on light.
cv::Mat Page(const cv::Size& size) {
  cv::Mat drawing(size, CV_8UC1, cv::Scalar(230));
  std::mt19937 random(12);
  for (int y = 20; y < size.height; y += 22) {
    std::string line;
    for (int i = 0; i < size.width / 10; ++i) {
      line += random() % 6 == 0 ? ' ' : static_cast<char>('a' + random() % 26);
    }
    cv::putText(drawing, line, cv::Point(12, y), cv::FONT_HERSHEY_SIMPLEX, 0.5, cv::Scalar(30));
  }
  return drawing;
}

// Two-dimensional codes and bars on a label.
cv::Mat Codes(const cv::Size& size) {
  cv::Mat drawing(size, CV_8UC1, cv::Scalar(220));
  std::mt19937 random(13);
  for (int y = 20; y + 140 < size.height; y += 160) {
    for (int x = 20; x + 140 < size.width; x += 160) {
      const bool bars = random() % 2 == 0;
      for (int i = 0; i < 24 * (bars ? 1 : 24); ++i) {
        if (random() % 2 == 0) continue;
        const cv::Rect module = bars ? cv::Rect(x + 5 * i, y, 5, 120)
                                     : cv::Rect(x + 5 * (i % 24), y + 5 * (i / 24), 5, 5);
        cv::rectangle(drawing, module, cv::Scalar(20), cv::FILLED);
      }
    }
  }
  return drawing;
}

// Blots without a shape, as of clouds, leaves or cast metal.
cv::Mat Texture(const cv::Size& size, double blot) {
  cv::Mat noise(size, CV_32FC1);
  cv::RNG random(14);
  random.fill(noise, cv::RNG::NORMAL, 0.0, 1.0);
  cv::GaussianBlur(noise, noise, cv::Size(), blot);
  cv::normalize(noise, noise, 0, 255, cv::NORM_MINMAX);
  noise.convertTo(noise, CV_8UC1);
  return noise;
}

std::vector<NamedRaster> ComposedPictures(const cv::Size& size) {
  return {{"parts", Cut(Photographed(Parts(size), 1.5, 4))},
          {"parts, grainy", Cut(Photographed(Parts(size), 1.0, 15))},
          {"page", Cut(Photographed(Page(size), 0.7, 5))},
          {"codes", Cut(Photographed(Codes(size), 1.0, 6))},
          {"texture, coarse", Cut(Photographed(Texture(size, 12), 1.0, 2))},
          {"texture, fine", Cut(Photographed(Texture(size, 4), 1.0, 2))},
          {"texture, grainy", Cut(Photographed(Texture(size, 8), 1.0, 5))}};
}

}  // namespace

cv::Mat SolidRaster(int size) {
  cv::Mat raster = cv::Mat::zeros(size, size, CV_8UC1);
  const cv::Scalar on(255);
  const cv::Scalar off(0);
  cv::rectangle(raster, cv::Rect(size / 16, size / 16, size * 7 / 8, size * 7 / 8), on, cv::FILLED);
  cv::circle(raster, cv::Point(size / 2, size / 2), size / 3, off, cv::FILLED);
  cv::circle(raster, cv::Point(size / 2, size / 2), size / 4, on, cv::FILLED);
  const float unit = static_cast<float>(size) / 10;
  const cv::RotatedRect tilted(cv::Point2f(5, 5) * unit, cv::Size2f(3 * unit, unit), 30.0f);
  cv::ellipse(raster, tilted, off, cv::FILLED);
  for (int i = 0; i < 8; ++i) {
    cv::rectangle(raster, cv::Rect(size / 10 + i * size / 10, size / 10, size / 40, size / 12), off,
                  cv::FILLED);
  }
  return raster;
}

cv::Mat NoiseRaster(int size, int grain, int percent) {
  std::mt19937 random(1);
  cv::Mat cells((size + grain - 1) / grain, (size + grain - 1) / grain, CV_8UC1);
  for (int row = 0; row < cells.rows; ++row) {
    for (int column = 0; column < cells.cols; ++column) {
      cells.at<unsigned char>(row, column) = static_cast<int>(random() % 100) < percent ? 255 : 0;
    }
  }
  cv::Mat raster;
  cv::resize(cells, raster, cells.size() * grain, 0, 0, cv::INTER_NEAREST);
  return raster(cv::Rect(0, 0, size, size)).clone();
}

std::vector<NamedRaster> PictureRasters(const Setting& setting) {
  if (setting.pictures.empty()) {
    return ComposedPictures(setting.small ? cv::Size(160, 120) : cv::Size(1280, 960));
  }
  std::vector<NamedRaster> rasters;
  for (const std::string& file : setting.pictures) {
    const cv::Mat gray = cv::imread(file, cv::IMREAD_GRAYSCALE);
    if (gray.empty()) {
      std::fprintf(stderr, "%s: no picture\n", file.c_str());
    } else {
      rasters.push_back({file.substr(file.find_last_of('/') + 1), Cut(gray)});
    }
  }
  return rasters;
}
