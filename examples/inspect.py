"""An inspection as it is tried in a notebook: find the parts of a picture, measure them, place a
shape on each and look at the pixels in it; then draw what was found.

    python3 examples/inspect.py [picture] [result]
"""

import math
import pathlib
import sys

# The standard library has an inspect as well, which others import.
sys.path[:] = [folder for folder in sys.path if pathlib.Path(folder or ".").resolve()
               != pathlib.Path(__file__).resolve().parent]

import numpy as np

import vemdata

HERE = pathlib.Path(__file__).resolve().parent
source = sys.argv[1] if len(sys.argv) > 1 else str(HERE.parent / "docs" / "view_plate.png")
result = sys.argv[2] if len(sys.argv) > 2 else "inspect.png"

# %% The picture is an array; nothing is copied.
image = vemdata.Image.read(source)
picture = np.asarray(image)
grey = picture if picture.ndim == 2 else picture.mean(axis=2).astype(np.uint8)
print(f"{source if len(sys.argv) > 1 else 'view_plate.png'}: {image.width} by {image.height}")

# %% Parts are what is bright and hangs together, from 100 pixels on.
parts = [part for part in vemdata.components(grey > 128) if part.area >= 100]


def direction(part: vemdata.Region) -> tuple[float, float, float]:
    """The angle of the longer axis in degrees, counter-clockwise as seen, and both half axes."""
    xx, xy, yy = part.spread
    angle = math.degrees(-0.5 * math.atan2(2 * xy, xx - yy))
    middle, apart = (xx + yy) / 2, math.hypot((xx - yy) / 2, xy)
    return angle, 2 * math.sqrt(middle + apart), 2 * math.sqrt(max(middle - apart, 0.0))


# %% Each part is measured; an ellipse of its moments tells where it is full and where it is not.
path = vemdata.OverlayPath()
font = vemdata.font("Arial", 11)
for number, part in enumerate(parts, 1):
    angle, longer, shorter = direction(part)
    shape = vemdata.ellipse(part.center, radius1=longer, radius2=shorter, angle=angle)
    within = vemdata.Region(shape) & vemdata.Region(np.ones_like(grey))
    holes = len(part.contours()) - 1
    filled = (within & part).area / within.area
    inside = grey[within.mask(grey.shape) > 0]
    print(f"part {number}: {part.area} pixels about ({part.center.x:.1f}, {part.center.y:.1f}),"
          f" {angle:.1f} degrees, {holes} hole(s), {100 * filled:.1f} % of its ellipse filled,"
          f" mean grey {inside.mean():.1f}")
    left, top, right, bottom = part.bounds
    path.append(vemdata.Overlay.of(part).with_brush((90, 200, 90), mode=1))
    path.append(vemdata.Overlay.of(shape).with_pen((60, 215, 255), 2))
    path.append(vemdata.Overlay.rect1((left, top), (right, bottom)).with_pen((255, 160, 60)))
    path.append(vemdata.Overlay.text((left, max(top - 5, 14)), f"{number}: {part.area}", font)
                .with_pen((255, 255, 255)))

# %% The drawing; in a notebook, `path` alone shows itself.
drawn = np.repeat(grey[:, :, np.newaxis], 3, axis=2)
vemdata.draw(drawn, path)
vemdata.Image(drawn).save(result)
