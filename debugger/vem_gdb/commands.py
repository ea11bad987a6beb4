"""vem-print, vem-save and vem-show."""

import array
import math
import os
import re
import sys
from typing import Iterator, List, Optional, Tuple

import gdb

from . import calls, png, printers, runs
from .memory import ADDRESSES, Block, Damaged, block
from .views import MAKERS, Part, one_line, view
from .views_raster import DEPTHS, Entries, Raster, handled, raster, region_canvas
from .views_shapes import OVERLAY_IMAGE, OVERLAY_REGION, ROI_MASK, ROIS, mask_canvas, para_of

# A picture in characters has at most as many columns, and as many lines.
WIDEST = 100
# The largest image that is written.
MOST_BYTES = 1 << 28
MOST_ROWS = 1 << 20


class Refused(Exception):
    """Why a command does nothing."""


def _evaluate(expression: str) -> gdb.Value:
    try:
        return gdb.parse_and_eval(expression)
    except gdb.error as error:
        raise Refused(str(error)) from None


def _address(value: gdb.Value) -> int:
    """What a pointer or a number says, or where an object stands."""
    if value.type.strip_typedefs().code in (gdb.TYPE_CODE_PTR, gdb.TYPE_CODE_INT):
        return int(value) & ADDRESSES
    if value.address is None:
        raise Refused("not in memory: %s" % value.type)
    return int(value.address)


def find(expression: str, follow: bool = True) -> Block:
    """The object that a user names by an expression, or by a class and an address."""
    indexed = _indexed(expression)
    if indexed:
        part = _element(*indexed)
        if isinstance(part, Block):
            return part
        raise Refused("%s is %s" % (expression, part))
    first, _, rest = expression.partition(" ")
    if first in MAKERS and rest.strip():
        return block(first, _address(_evaluate(rest)))
    value = _evaluate(expression)
    kind = value.type.strip_typedefs()
    if follow and kind.code == gdb.TYPE_CODE_PTR and printers.class_of(kind.target()):
        value = value.dereference()
    if printers.class_of(value.type) is None:
        raise Refused("%s is no object of VemData, but: %s" % (expression, value.type))
    return printers.block_of(value)


def _indexed(expression: str) -> Optional[Tuple[Block, int]]:
    """An array of ours and an index, where the expression says so."""
    match = re.match(r"(.*\S)\s*\[\s*(\d+)\s*\]$", expression)
    if not match:
        return None
    try:
        owner = find(match.group(1), follow=False)
    except (Refused, Damaged):
        return None
    if not re.search("Array|Path", owner.name):
        return None
    return owner, int(match.group(2))


def _element(owner: Block, index: int) -> Part:
    """An element, taken without a call of the array's operator."""
    shown = view(owner)
    part = shown.element(index) if shown.element else None
    if part is None:
        raise Refused("there is no element %d: %s" % (index, shown.title))
    return part


def region_or_mask(expression: str) -> runs.Canvas:
    """The pixels of a ROI, a region or a region's overlay."""
    indexed = _indexed(expression)
    if indexed and "RegionArray" in indexed[0].name:
        return Entries(indexed[0]).canvas(indexed[1])
    found = find(expression)
    if found.name == "VemRegion":
        found = found.pointee("data_", "VemRegionData")
    if found.name == "VemRegionData":
        return region_canvas(found)
    if found.name == "VemOverlay":
        found = found.pointee("impl_", "IVemOverlay")
    if found.name == "IVemOverlay" and found.integer("Type") == OVERLAY_REGION:
        return mask_canvas(found)
    if found.name not in ("VemROI", "IVemROIPara", "IVemROIArrayPara"):
        raise Refused("%s is no ROI and no region" % expression)
    para = para_of(found)
    kind = para.integer("Type")
    if kind == ROI_MASK:
        return mask_canvas(para)
    if kind not in ROIS or not ROIS[kind].stored or ROIS[kind].stored == "X":
        raise Refused("no mask: %s" % one_line(found))
    return calls.mask(para)


def pixels(expression: str) -> Raster:
    """The pixels of an image, a matrix, a descriptor, an image's overlay or a cv::Mat."""
    found = find(expression)
    if found.name == "VemOverlay":
        found = found.pointee("impl_", "IVemOverlay")
    if found.name == "IVemOverlay" and found.integer("Type") == OVERLAY_IMAGE:
        return raster(found.part("Image"))
    if found.name == "Mat":
        return raster(found)
    if found.name not in ("VemImage", "VemMatrix", "VemFeatureDescriptor"):
        raise Refused("%s holds no pixels" % expression)
    return handled(found)


def _ordered(row: bytes, channels: int, size: int) -> bytes:
    """A row as PNG has it: red before blue, and the high byte first."""
    if channels == 1 and size == 1:
        return row
    numbers = array.array("B" if size == 1 else "H", row)
    if size == 2 and sys.byteorder == "little":
        numbers.byteswap()
    if channels > 1:
        numbers[0::channels], numbers[2::channels] = numbers[2::channels], numbers[0::channels]
    return numbers.tobytes()


def _part(number: float, low: float, high: float) -> float:
    """Where a number stands between two others, from 0 to 1, however large or small they are."""
    if math.isinf(high - low):
        number, low, high = number / 2, low / 2, high / 2
    return (number - low) / (high - low)


def _scaled(image: Raster) -> Tuple[str, Iterator[bytes]]:
    """Rows of 8 bits from numbers that PNG has no place for, and what was done to them."""
    low, high = math.inf, -math.inf
    for y in range(image.rows):
        finite = [n for n in image.numbers(y) if math.isfinite(n)]
        if finite:
            low, high = min(low, min(finite)), max(high, max(finite))
    if low > high:
        low, high = 0, 0

    def grey(number: float) -> int:
        if math.isnan(number) or low == high:
            return 0
        return int(_part(min(max(number, low), high), low, high) * 255 + 0.5)

    def rows() -> Iterator[bytes]:
        for y in range(image.rows):
            yield _ordered(bytes(map(grey, image.numbers(y))), image.channels, 1)

    return ", %s to %s scaled to 0 to 255" % (_figure(low), _figure(high)), rows()


def _figure(number: float) -> str:
    return "%.9g" % number


def save(image: Raster, path: str) -> str:
    """Writes an image, and tells what was written."""
    if image.empty:
        raise Refused("nothing to save: the image is empty")
    if image.channels not in png.COLOR_TYPES:
        raise Refused("not saved: PNG takes 1, 3 or 4 channels, the image has %d" % image.channels)
    if image.rows > MOST_ROWS or image.rows * image.row_size > MOST_BYTES:
        raise Refused("not saved: %s is too large" % image.title())
    size, done = image.number_size, ""
    rows: Iterator[bytes]
    if DEPTHS[image.depth][0] in ("8U", "16U"):
        rows = (_ordered(image.row(y), image.channels, size) for y in range(image.rows))
    else:
        size = 1
        done, rows = _scaled(image)
    _write(path, png.encode(image.cols, image.rows, image.channels, 8 * size, rows))
    return "Saved %s to %s%s" % (image.title(), path, done)


def _write(path: str, data: bytes) -> None:
    try:
        with open(os.path.expanduser(path), "wb") as file:
            file.write(data)
    except OSError as error:
        raise Refused("%s: %s" % (path, error.strerror)) from None


def save_mask(canvas: runs.Canvas, path: str) -> str:
    """Writes the canvas, 255 where a run lies, 0 elsewhere."""
    runs.check_size(canvas.width, canvas.height)
    rows = runs.raster(canvas.runs, 0, 0, canvas.width, canvas.height)
    _write(path, png.encode(canvas.width, canvas.height, 1, 8, rows))
    return "Saved a mask of %s to %s" % (canvas.title(), path)


def draw_mask(canvas: runs.Canvas) -> List[str]:
    """The box around the pixels in characters, made smaller where it would not fit."""
    left, top, width, height = runs.bounds(canvas.runs)
    if not width:
        return [canvas.title()]
    runs.check_size(width, height)
    step = -(-max(width, height) // WIDEST)
    place = "columns %d..%d, rows %d..%d" % (left, left + width - 1, top, top + height - 1)
    if step > 1:
        place += ", a character for %dx%d pixels" % (step, step)
    drawn = runs.drawing(canvas.runs, left, top, width, height, step)
    return [canvas.title(), place] + ["  " + line for line in drawn]


def _split_file(words: str) -> Tuple[str, Optional[str]]:
    """An expression, and the name of a PNG file behind it, in quotes or bare."""
    match = re.match(r"""(.*\S)\s+(?:"([^"]+)"|'([^']+)'|(\S+\.png))\s*$""", words, re.IGNORECASE)
    if not match:
        return words.strip(), None
    return match.group(1), match.group(2) or match.group(3) or match.group(4)


class _Command(gdb.Command):
    """A command that tells in one line why it does nothing."""

    NAME = ""

    def __init__(self) -> None:
        super().__init__(self.NAME, gdb.COMMAND_DATA, gdb.COMPLETE_EXPRESSION)

    def invoke(self, argument: str, from_tty: bool) -> None:
        if not argument.strip():
            raise gdb.GdbError("%s: nothing is named; see: help %s" % (self.NAME, self.NAME))
        try:
            for line in self.run(argument.strip()):
                gdb.write(line + "\n")
        except (Refused, Damaged, gdb.error) as reason:
            raise gdb.GdbError("%s: %s" % (self.NAME, reason)) from None

    def run(self, argument: str) -> List[str]:
        raise NotImplementedError


class Print(_Command):
    """Show an object of VemData, also where no debug information tells its class.

vem-print EXPRESSION, or vem-print CLASS ADDRESS:
  vem-print roi
  vem-print VemROI &roi
  vem-print VemROI 0x7fffffffe0a0"""

    NAME = "vem-print"

    def run(self, argument: str) -> List[str]:
        indexed = _indexed(argument)
        part = _element(*indexed) if indexed else find(argument)
        return [part if isinstance(part, str) else one_line(part)]


class Save(_Command):
    """Save the pixels of an image, a matrix or an image overlay as a PNG file.

vem-save IMAGE FILE.png
IMAGE is an expression, an element of an array (images[2]), or a class and an address.
8 and 16 bits of 1, 3 or 4 channels are kept; other depths are scaled to 8 bits, and it is said.
Nothing is called in the process: it works on a core file, too."""

    NAME = "vem-save"

    def run(self, argument: str) -> List[str]:
        expression, path = _split_file(argument)
        if path is None:
            raise Refused("no file is named, such as image.png")
        return [save(pixels(expression), path)]


class Show(_Command):
    """Show the mask of a ROI or of a region, in characters or as a PNG file.

vem-show ROI [FILE.png]
ROI is an expression, an element of an array (rois[2]), or a class and an address.
The mask of a shape is computed by the library, in a live process; that of a run mask or of a region
is there, in a core file, too."""

    NAME = "vem-show"

    def run(self, argument: str) -> List[str]:
        expression, path = _split_file(argument)
        canvas = region_or_mask(expression)
        if path is not None:
            return [save_mask(canvas, path)]
        return draw_mask(canvas)


def register() -> None:
    for command in (Print, Save, Show):
        command()
