#ifndef VIEW_SCENE_H_
#define VIEW_SCENE_H_

#include <nlohmann/json_fwd.hpp>

#include <opencv2/core.hpp>

#include "vem/view.h"

/// Draws a document, or a list of them, as vem::to_json writes them: overlays and paths with their
/// own pens, regions of interest, regions, contours and points in a style, arrays of them too.
/// Raises `std::invalid_argument` that names the place of a fault, before anything is drawn.
void DrawScene(cv::Mat& picture, const nlohmann::json& scene, const vem::draw_style& style);

#endif  // VIEW_SCENE_H_
