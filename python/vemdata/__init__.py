"""Shapes, masks, regions and results of a machine-vision system, the same pixels as in C++.

    import vemdata
    roi = vemdata.rect2(center=(120, 80), length1=200, length2=40, angle=30)
    roi.runs()                            # int32, shape (n, 3): row, first and last column
    parts = vemdata.components(picture > 128)
    [part.area for part in parts]

Coordinates are pixels, x before y, rows growing downward; angles are degrees, counter-clockwise as
seen. Shapes of arrays are NumPy's, height before width; canvases are (width, height). What C++
refuses raises ValueError with the reason, a wrong index IndexError, a wrong kind TypeError.

Elements of arrays, shapes, regions and records never change; arrays, images and matrices do. Long
work lets other threads run.
"""

from . import _vemdata
from ._vemdata import *  # noqa: F401,F403
from ._vemdata import __version__


def _read(cls, document):
    """Makes an object again of what pickling has kept of it."""
    return cls.from_json(document)


__all__ = sorted(name for name in vars(_vemdata) if not name.startswith("_"))
