#ifndef DOCS_PICTURES_PICTURES_H_
#define DOCS_PICTURES_PICTURES_H_

#include <string>

// The pictures of the documentation, each set written into a folder that is there.

void DrawShapes(const std::string& folder);       ///< shape_....png
void DrawOwning(const std::string& folder);       ///< owning.png
void DrawCoordinates(const std::string& folder);  ///< coordinates.png, angles.png
void DrawRegions(const std::string& folder);      ///< regions.png
void DrawOverlays(const std::string& folder);     ///< overlays.png, rakes.png
void DrawStrides(const std::string& folder);      ///< strides.png

#endif  // DOCS_PICTURES_PICTURES_H_
