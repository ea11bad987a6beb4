"""What a set of runs covers: (row, first column, last column), both ends included, in any order."""

import math
import struct
from typing import Dict, Iterable, List, NamedTuple, Tuple

from . import text
from .memory import Block, Damaged, Elements, values

Run = Tuple[int, int, int]

# A canvas up to this size is drawn beside the numbers.
DRAWN_WIDTH = 64
DRAWN_HEIGHT = 24
# What is drawn or written of a mask has at most as many pixels, and columns or rows.
MOST_PIXELS = 1 << 28
LONGEST_SIDE = 1 << 16
# Up to as many runs are looked at.
COUNTED = 1000000

SMALLEST = -(1 << 31)


def integer(kind: int, payload: int) -> int:
    """The number as VemVar::I reads it."""
    if kind == 0:
        low = payload & 0xFFFFFFFF
        return low - (1 << 32) if low >> 31 else low
    if kind != 1:
        return 0
    value: float = struct.unpack("<d", struct.pack("<Q", payload))[0]
    if math.isnan(value) or not SMALLEST <= math.trunc(max(min(value, 1e18), -1e18)) < -SMALLEST:
        return SMALLEST
    return math.trunc(value)


def integers(array: Block) -> List[int]:
    """The numbers of a VemVarArray."""
    data = values(array).data()
    return [integer(kind, payload) for kind, payload in struct.iter_unpack("<i4xQ", data)]


def words(numbers: Elements) -> List[int]:
    """The numbers of a std::vector<int>."""
    return [number for (number,) in struct.iter_unpack("<i", numbers.data())]


class Canvas(NamedTuple):
    """Runs on a canvas; `lengths` are those of the three lists."""

    width: int
    height: int
    runs: List[Run]
    lengths: Tuple[int, int, int]

    def title(self) -> str:
        head = "%dx%d" % (self.width, self.height)
        if len(set(self.lengths)) > 1:
            return head + ", lists of %d rows, %d first and %d last columns" % self.lengths
        head += ", " + text.count(self.lengths[0], "run")
        if len(self.runs) < self.lengths[0]:
            return head
        head += ", " + text.count(pixels(self.runs), "pixel")
        return head if all(self.holds(run) for run in self.runs) else head + ", beyond the canvas"

    def holds(self, run: Run) -> bool:
        row, first, last = run
        return last < first or (0 <= row < self.height and 0 <= first and last < self.width)

    def small(self) -> bool:
        return 0 < self.width <= DRAWN_WIDTH and 0 < self.height <= DRAWN_HEIGHT

    def drawing(self) -> List[str]:
        """The canvas in characters, one text for each row."""
        return drawing(self.runs, 0, 0, self.width, self.height)


def canvas(owner: Block, width: int, height: int) -> Canvas:
    """The runs in the three arrays of a region, a mask or an overlay."""
    arrays = [owner.part(name) for name in ("Rows", "FirstColumns", "LastColumns")]
    rows, firsts, lasts = (len(values(array)) for array in arrays)
    runs: List[Run] = []
    if max(rows, firsts, lasts) <= COUNTED:
        runs = list(zip(integers(arrays[0]), integers(arrays[1]), integers(arrays[2])))
    return Canvas(width, height, runs, (rows, firsts, lasts))


def listed(width: int, height: int, lists: Iterable[Elements]) -> Canvas:
    """The runs in three lists of integers."""
    rows, firsts, lasts = lists
    runs: List[Run] = []
    if max(len(rows), len(firsts), len(lasts)) <= COUNTED:
        runs = list(zip(words(rows), words(firsts), words(lasts)))
    return Canvas(width, height, runs, (len(rows), len(firsts), len(lasts)))


def pixels(runs: Iterable[Run]) -> int:
    """How many pixels lie under the runs, each counted once."""
    total = 0
    current, covered = None, 0
    for row, first, last in sorted(runs):
        if row != current:
            current, covered = row, first - 1
        start = max(first, covered + 1)
        if last >= start:
            total += last - start + 1
            covered = last
    return total


def bounds(runs: Iterable[Run]) -> Tuple[int, int, int, int]:
    """Left, top, width and height of the smallest box around the pixels, or zeros."""
    left = top = right = bottom = None
    for row, first, last in runs:
        if last < first:
            continue
        if left is None or top is None or right is None or bottom is None:
            left, top, right, bottom = first, row, last, row
        else:
            left, right = min(left, first), max(right, last)
            top, bottom = min(top, row), max(bottom, row)
    if left is None or top is None or right is None or bottom is None:
        return 0, 0, 0, 0
    return left, top, right - left + 1, bottom - top + 1


def raster(runs: Iterable[Run], left: int, top: int, width: int, height: int) -> List[bytes]:
    """The rows of a box: 255 where a run lies, 0 elsewhere."""
    pixels_ = bytearray(width * height)
    for row, first, last in runs:
        begin, end = max(first - left, 0), min(last - left + 1, width)
        if 0 <= row - top < height and begin < end:
            place = (row - top) * width
            pixels_[place + begin : place + end] = b"\xff" * (end - begin)
    return [bytes(pixels_[y * width : (y + 1) * width]) for y in range(height)]


def drawing(
    runs: Iterable[Run], left: int, top: int, width: int, height: int, step: int = 1
) -> List[str]:
    """A box in characters, `step` by `step` pixels each: '#' all inside, '+' some, '.' none."""
    lines: List[Dict[int, int]] = [{} for _ in range(-(-height // step))]
    rows = raster(runs, left, top, width, height)
    for y, row in enumerate(rows):
        cells = lines[y // step]
        for x in range(0, width, step):
            inside = row.count(255, x, x + step)
            if inside:
                cells[x // step] = cells.get(x // step, 0) + inside
    columns = -(-width // step)
    drawn = []
    for y, cells in enumerate(lines):
        tall = min(step, height - y * step)
        full = [tall * min(step, width - x * step) for x in range(columns)]
        drawn.append("".join(_sign(cells.get(x, 0), full[x]) for x in range(columns)))
    return drawn


def _sign(inside: int, pixels_in_cell: int) -> str:
    if not inside:
        return "."
    return "#" if inside == pixels_in_cell else "+"


def check_size(width: int, height: int) -> None:
    if width <= 0 or height <= 0:
        raise Damaged("no mask: the canvas is %dx%d" % (width, height))
    if max(width, height) > LONGEST_SIDE or width * height > MOST_PIXELS:
        raise Damaged("no mask: %dx%d pixels are too many" % (width, height))
