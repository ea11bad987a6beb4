"""Images, matrices and what else stands on cv::Mat; structuring elements; regions and the coder."""

import struct
from typing import Iterable, Iterator, List, NamedTuple, Tuple

from . import runs, text
from .memory import LAYOUTS, Block, Damaged, Elements, block, elements, read, stored
from .views import Part, Parts, View, braces, length, numbered, one_of, shows

# By OpenCV's depth code: what it is called, and how struct reads one number.
DEPTHS = [
    ("8U", "B"),
    ("8S", "b"),
    ("16U", "H"),
    ("16S", "h"),
    ("32S", "i"),
    ("32F", "f"),
    ("64F", "d"),
    ("16F", "e"),
]

# The upper half of `flags` in every matrix that is alive.
MAGIC = 0x42FF0000


class Raster(NamedTuple):
    """A cv::Mat of two dimensions."""

    rows: int
    cols: int
    depth: int
    channels: int
    step: int
    data: int

    @property
    def empty(self) -> bool:
        return self.rows == 0 or self.cols == 0 or self.data == 0

    @property
    def number_size(self) -> int:
        return struct.calcsize(DEPTHS[self.depth][1])

    @property
    def row_size(self) -> int:
        return self.cols * self.channels * self.number_size

    def title(self) -> str:
        if self.empty:
            kind = "" if (self.depth, self.channels) == (0, 1) else ", %s" % self.kind()
            return "empty" + kind
        return "%dx%d %s, step %d" % (self.cols, self.rows, self.kind(), self.step)

    def kind(self) -> str:
        return "%s %d" % (DEPTHS[self.depth][0], self.channels)

    def row(self, y: int) -> bytes:
        return read(self.data + y * self.step, self.row_size)

    def numbers(self, y: int) -> Tuple[float, ...]:
        count = self.cols * self.channels
        return struct.unpack("<%d%s" % (count, DEPTHS[self.depth][1]), self.row(y))


def raster(mat: Block) -> Raster:
    flags = mat.integer("flags")
    if flags & 0xFFFF0000 != MAGIC:
        raise Damaged("<no matrix at 0x%x>" % mat.address)
    rows, cols, data = mat.integer("rows"), mat.integer("cols"), mat.integer("data")
    depth, channels = flags & 7, (flags >> 3 & 511) + 1
    if data and mat.integer("dims") > 2:
        raise Damaged("<a matrix of %d dimensions>" % mat.integer("dims"))
    if rows < 0 or cols < 0:
        raise Damaged("<damaged matrix, of %d columns and %d rows>" % (cols, rows))
    step = struct.unpack("<Q", read(mat.integer("p"), 8))[0] if data else 0
    return Raster(rows, cols, depth, channels, step, data)


def handled(handle: Block) -> Raster:
    """The matrix behind an image, a matrix or a descriptor."""
    return raster(handle.pointee("mat", "Mat"))


def number(value: float, depth: int) -> str:
    if depth < 5:
        return str(value)
    return text.single(value) if depth != 6 else text.plain(value)


@shows("VemImage")
def _image(handle: Block) -> View:
    return View(handled(handle).title())


@shows("VemMatrix", "VemFeatureDescriptor")
def _matrix(handle: Block) -> View:
    """Beside the size the numbers, row by row, as long as there are few."""
    matrix = handled(handle)
    limit = text.most_elements()
    few = limit is None or matrix.rows * matrix.cols * matrix.channels <= limit
    if matrix.empty or not few:
        return View(matrix.title())

    def parts() -> Parts:
        for y in range(matrix.rows):
            yield "[%d]" % y, braces(number(n, matrix.depth) for n in matrix.numbers(y))

    return View(matrix.title(), parts, listed=True)


@shows("Mat")
def _mat(mat: Block) -> View:
    return View(raster(mat).title())


def _behind(data: bytes) -> Part:
    """The matrix behind a pointer."""
    try:
        return block("Mat", struct.unpack("<Q", data)[0])
    except Damaged as damage:
        return str(damage)


@shows("VemImageArray", "VemMatrixArray")
def _mat_array(handle: Block) -> View:
    mats = stored(handle, 8)
    return View(
        length(mats),
        lambda: numbered(map(_behind, mats)),
        element=one_of(len(mats), lambda index: _behind(mats.at(index))),
    )


MORPH_CUSTOM, MORPH_UNSET = 3, 4


@shows("VemMorphStructure")
def _morph(record: Block) -> View:
    cols, rows, kind = (record.integer(name) for name in ("cols", "rows", "type"))
    anchor = (record.integer("anchorX"), record.integer("anchorY"))
    names = {MORPH_CUSTOM: "custom", MORPH_UNSET: "unset"}
    title = "%dx%d, anchor (%d, %d), %s" % (cols, rows, *anchor, names.get(kind, "kind %d" % kind))
    table = record.integer("values")
    if not record.integer("ownsValues_"):
        return View(title + (", table released" if table else ""))
    if not (0 < cols and 0 < rows and cols * rows <= 1 << 20):
        return View(title + ", damaged table")

    def parts() -> Parts:
        for y in range(rows):
            line = read(table + 4 * cols * y, 4 * cols)
            yield "[%d]" % y, braces(str(n) for (n,) in struct.iter_unpack("<i", line))

    return View(title, parts, listed=True)


def on_canvas(canvas: runs.Canvas, before: str = "", behind: str = "") -> View:
    """Runs: a small canvas is drawn, a line for each row; of a large one the runs are listed."""
    title = before + canvas.title() + behind
    if canvas.runs and canvas.small():
        lines = ("\n  " + line for line in canvas.drawing())
        return View(title, lambda: numbered(lines), listed=True)
    return View(title, lambda: numbered("%d: %d..%d" % run for run in canvas.runs), listed=True)


def region_canvas(data: Block) -> runs.Canvas:
    return runs.canvas(data, data.integer("Width"), data.integer("Height"))


@shows("VemRegion", "VemRegionData")
def _region(region: Block) -> View:
    data = region.pointee("data_", "VemRegionData") if region.name == "VemRegion" else region
    outlines = len(elements(data.part("Contours"), LAYOUTS["List"].size))
    behind = ", " + text.count(outlines, "outline") if outlines else ""
    return on_canvas(region_canvas(data), behind=behind)


class Entries:
    """The lists of a region array, taken apart by entry."""

    def __init__(self, array: Block) -> None:
        para = array
        if array.name == "VemRegionArray":
            para = array.pointee("impl_", "IVemRegionArrayPara")
        self.widths = elements(para.part("Widths"), 4)
        self.heights = elements(para.part("Heights"), 4)
        self.tracks = [
            elements(para.part(name), LAYOUTS["List"].size)
            for name in ("Rows", "FirstColumns", "LastColumns")
        ]
        self.outlines = elements(para.part("Contours"), LAYOUTS["List"].size)

    def __len__(self) -> int:
        return len(self.widths)

    def canvas(self, index: int) -> runs.Canvas:
        lists = []
        for track in self.tracks:
            if not 0 <= index < min(len(track), len(self.heights), len(self.widths)):
                raise Damaged("<no entry %d>" % index)
            lists.append(elements(block("List", track.address_of(index)), 4))
        width, height = (
            struct.unpack("<i", read(sizes.address_of(index), 4))[0]
            for sizes in (self.widths, self.heights)
        )
        return runs.listed(width, height, lists)

    def title(self, index: int) -> str:
        try:
            return self.canvas(index).title()
        except Damaged as damage:
            return str(damage)


@shows("VemRegionArray", "IVemRegionArrayPara")
def _region_array(array: Block) -> View:
    entries = Entries(array)
    title = length(entries.widths)
    if len(entries.outlines):
        title += ", outlines for %d" % len(entries.outlines)
    return View(
        title,
        lambda: numbered(map(entries.title, range(len(entries)))),
        element=one_of(len(entries), entries.title),
    )


def _coded(lists: Iterable[Elements]) -> List[str]:
    return [braces("%d: %d..%d" % struct.unpack("<iii", run) for run in runs_) for runs_ in lists]


@shows("VemRLC")
def _coder(coder: Block) -> View:
    size = LAYOUTS["Run"].size
    lists = [elements(coder.part(name), size) for name in ("ComponentRuns", "FillRuns")]
    title = text.count(coder.integer("ComponentCount"), "component")
    return View(title, lambda: zip(("ComponentRuns", "FillRuns"), _coded(lists)))
