"""ROIs and overlays: flat lists of numbers, told by the names and units of what they mean."""

import itertools
import struct
from typing import Dict, Iterator, List, NamedTuple, Tuple

from . import runs, text
from .memory import LAYOUTS, Block, Damaged, Elements, elements, stored, values
from .views import Parts, View, braces, objects, shows
from .views_raster import on_canvas, raster
from .views_values import DOUBLE, written

# How a shape's numbers are stored, one letter for each entry.
#   P  a point, y before x       X  a point, x before y       L  points up to the end, y before x
#   p  pixels   d  degrees       v  a value as it is
LETTERS = {"P": 2, "X": 2, "p": 1, "d": 1, "v": 1}


class Shape(NamedTuple):
    name: str
    stored: str = ""
    names: Tuple[str, ...] = ()

    def size(self) -> int:
        return sum(LETTERS[letter] for letter in self.stored)


TWO_POINTS = ("p1", "p2")
ROUND = ("center", "radius")
RECT2 = ("center", "length1", "length2", "angle")
ELLIPSE = ("center", "radius1", "radius2", "angle")
TORUS = ("center", "innerRadius", "outerRadius", "startAngle", "sweepAngle")
ARC = ("center", "radius", "startAngle", "sweepAngle")
RAKE = ("mode", "count")

ROI_MASK = 11
ROI_LINE = 7

ROIS: Dict[int, Shape] = {
    0: Shape("VemROIRect1", "PP", TWO_POINTS),
    1: Shape("VemROICircle", "Pp", ROUND),
    2: Shape("VemROITorus", "Pppdd", TORUS),
    3: Shape("VemROINone"),
    4: Shape("VemROIPolygon", "L"),
    5: Shape("VemROIIrregular", "L"),
    6: Shape("VemROIRect2", "Pppd", RECT2),
    7: Shape("VemROILine", "PP", TWO_POINTS),
    8: Shape("VemROIEllipse", "Pppd", ELLIPSE),
    9: Shape("VemROIArc", "Ppdd", ARC),
    10: Shape("VemROIPoint", "X", ("point",)),
    ROI_MASK: Shape("VemROIMask"),
}

OVERLAY_IMAGE = 18
OVERLAY_REGION = 19
OVERLAY_TEXT = 16

OVERLAYS: Dict[int, Shape] = {
    1: Shape("VemOverlayPoint", "X", ("point",)),
    2: Shape("VemOverlayArrowLine", "PP", TWO_POINTS),
    3: Shape("VemOverlayLine", "PP", TWO_POINTS),
    4: Shape("VemOverlayRect1", "PP", TWO_POINTS),
    5: Shape("VemOverlayRakeRect1", "PPvv", TWO_POINTS + RAKE),
    6: Shape("VemOverlayCircle", "Pp", ROUND),
    7: Shape("VemOverlayEllipse", "Pppd", ELLIPSE),
    8: Shape("VemOverlayPolygon", "L"),
    9: Shape("VemOverlayPolyLine", "L"),
    10: Shape("VemOverlayRect2", "Pppd", RECT2),
    11: Shape("VemOverlayRakeRect2", "Pppdvv", RECT2 + RAKE),
    12: Shape("VemOverlayTorus", "Pppdd", TORUS),
    13: Shape("VemOverlaySpokeTorus", "Pppddvv", TORUS + RAKE),
    14: Shape("VemOverlayArc", "Xpdd", ARC),
    15: Shape("VemOverlayIrregular", "L"),
    OVERLAY_TEXT: Shape(
        "VemOverlayText",
        "Pvvvvvvv",
        ("position", "text", "Size", "Weight", "Flag1", "Flag2", "Flag3", "Name"),
    ),
    OVERLAY_IMAGE: Shape("VemOverlayImage", "X", ("position",)),
    OVERLAY_REGION: Shape("VemOverlayRegion"),
    20: Shape("VemOverlayNone"),
}


def coordinate(value: bytes) -> str:
    """A number of a shape: a double, unless somebody wrote another value into the list."""
    kind = struct.unpack_from("<i", value)[0]
    if kind == DOUBLE:
        return text.plain(struct.unpack_from("<d", value, 8)[0])
    return written(value)


def _points(numbers: Elements) -> Iterator[str]:
    """Pairs of y and x."""
    values_ = iter(numbers)
    for y, x in zip(values_, values_):
        yield "(%s, %s)" % (coordinate(x), coordinate(y))


def _named(shape: Shape, numbers: Elements) -> Parts:
    """The numbers of a shape by their names, with units."""
    values_ = iter(numbers)
    for letter, name in zip(shape.stored, shape.names):
        value = next(values_)
        if letter in "PX":
            pair = (value, next(values_))
            x, y = pair if letter == "X" else (pair[1], pair[0])
            yield name, "(%s, %s) px" % (coordinate(x), coordinate(y))
        elif letter == "v":
            yield name, written(value)
        else:
            yield name, "%s %s" % (coordinate(value), "px" if letter == "p" else "deg")


def shape_view(shape: Shape, params: Block, also: Parts = ()) -> View:
    """A shape, and further parts behind its numbers."""
    numbers = values(params)
    if shape.stored == "L":
        title = "%s, %s" % (shape.name, text.count(len(numbers) // 2, "point"))
        if not len(numbers):
            return View(title, lambda: also)
        listed = [("points", braces(_points(numbers)) + " px")]
        return View(title, lambda: itertools.chain(listed, also))
    if len(numbers) != shape.size():
        title = "%s with %s instead of %d" % (
            shape.name,
            text.count(len(numbers), "number"),
            shape.size(),
        )
        return View(title, lambda: itertools.chain([("Params", params)], also))
    return View(shape.name, lambda: itertools.chain(_named(shape, numbers), also))


def para_of(roi: Block) -> Block:
    """The record behind a ROI; an array's record stands for itself."""
    return roi.pointee("impl_", "IVemROIPara") if roi.name == "VemROI" else roi


def mask_canvas(para: Block) -> runs.Canvas:
    return runs.canvas(para, para.integer("Width"), para.integer("Height"))


@shows("VemROI", "IVemROIPara", "IVemROIArrayPara")
def _roi(roi: Block) -> View:
    para = para_of(roi)
    kind = para.integer("Type")
    if kind not in ROIS:
        raise Damaged("<damaged ROI, of type %d>" % kind)
    if kind == ROI_MASK and roi.name == "IVemROIArrayPara":
        return View("%s, %s" % (ROIS[kind].name, mask_canvas(para).title()))
    if kind == ROI_MASK:
        return on_canvas(mask_canvas(para), ROIS[kind].name + ", ")
    return shape_view(ROIS[kind], para.part("Params"))


@shows("VemROIArray")
def _roi_array(array: Block) -> View:
    return objects(stored(array, LAYOUTS["IVemROIArrayPara"].size), "IVemROIArrayPara")


def _tool(para: Block, chosen: str, colors: str, last: str, field: str) -> str:
    """A pen or a brush, and whether a caller chose it."""
    numbers = ["%d" % para.integer("%s%d" % (colors, i)) for i in range(3)]
    default = "" if para.integer(chosen) else "default "
    return "%s(%s) %s %d" % (default, ", ".join(numbers), last, para.integer(field))


@shows("VemOverlay", "IVemOverlay")
def _overlay(overlay: Block) -> View:
    para = overlay.pointee("impl_", "IVemOverlay") if overlay.name == "VemOverlay" else overlay
    kind = para.integer("Type")
    if kind not in OVERLAYS:
        raise Damaged("<damaged overlay, of type %d>" % kind)
    also: List[Tuple[str, str]] = []
    if kind == OVERLAY_IMAGE:
        also.append(("image", raster(para.part("Image")).title()))
    elif kind == OVERLAY_REGION:
        also.append(("region", mask_canvas(para).title()))
    also.append(("pen", _tool(para, "RedrawPen", "PenColor", "width", "PenWidth")))
    also.append(("brush", _tool(para, "RedrawBrush", "BrushColor", "mode", "BrushMode")))
    if kind == OVERLAY_REGION:
        return View(OVERLAYS[kind].name, lambda: also)
    return shape_view(OVERLAYS[kind], para.part("Params"), also)


@shows("VemOverlayPath", "IVemOverlayPath")
def _overlay_path(path: Block) -> View:
    para = path.pointee("impl_", "IVemOverlayPath") if path.name == "VemOverlayPath" else path
    overlays = elements(para.part("Overlays"), LAYOUTS["VemOverlay"].size)
    return objects(overlays, "VemOverlay")
