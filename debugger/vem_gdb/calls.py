"""Asks the library in a live process for what it alone computes: the mask of a shape."""

import contextlib
import struct
from typing import Iterator

import gdb

from . import runs
from .memory import LAYOUTS, Block, Damaged, block, read, values
from .views_shapes import ROI_LINE, ROIS, para_of
from .views_values import DOUBLE, LONG

CONSTRUCT_ARRAY = "_ZN11VemVarArrayC1Ev"
COPY_ARRAY = "_ZN11VemVarArray4CopyERKS_"
DESTROY_ARRAY = "_ZN11VemVarArrayD1Ev"
CONSTRUCT_ROI = "_ZN11IVemROIParaC1Ev"
DESTROY_ROI = "_ZN11IVemROIParaD1Ev"
GET_MASK = "_ZNK11IVemROIPara7GetMaskEP11VemVarArrayS1_S1_PiS2_"

NO_PROCESS = "the library computes the mask of a %s, and only in a live process"

# Beyond it a mask would take long, and nobody could look at it.
FARTHEST = 100000


@contextlib.contextmanager
def _settings() -> Iterator[None]:
    """Calls are written in C++, and leave the process as it was where one faults."""
    wanted = {"language": "c++", "unwindonsignal": "on"}
    kept = {name: gdb.parameter(name) for name in wanted}
    kept["unwindonsignal"] = "on" if kept["unwindonsignal"] else "off"
    for name, value in wanted.items():
        gdb.execute("set %s %s" % (name, value), to_string=True)
    try:
        yield
    finally:
        for name, value in kept.items():
            gdb.execute("set %s %s" % (name, value), to_string=True)


def _call(function: str, result: str, *arguments: int) -> int:
    """Calls a function by its symbol, which a stripped library has as well."""
    address = int(gdb.parse_and_eval("(unsigned long)&%s" % function))
    types = ", ".join(["unsigned long"] * len(arguments))
    passed = ", ".join(str(argument) for argument in arguments)
    value = gdb.parse_and_eval("((%s (*)(%s))%d)(%s)" % (result, types, address, passed))
    return 0 if result == "void" else int(value)


def _check(para: Block) -> None:
    """Refuses what would end the process, or never end."""
    kind = para.integer("Type")
    shape = ROIS[kind]
    params = values(para.part("Params"))
    if len(params) > runs.COUNTED:
        raise Damaged("no mask: %s with %d numbers" % (shape.name, len(params)))
    elements = list(params)
    if shape.stored == "L":
        complete = len(elements) >= 2
    else:
        complete = len(elements) == shape.size()
    if not complete or not elements:
        raise Damaged("no mask: %s without its numbers" % shape.name)
    numbers = []
    for element in elements:
        number_kind, payload = struct.unpack("<i4xQ", element)
        if number_kind not in (LONG, DOUBLE):
            raise Damaged("no mask: %s with a value that is no number" % shape.name)
        numbers.append(runs.integer(number_kind, payload))
    if any(abs(number) > FARTHEST for number in numbers):
        raise Damaged("no mask: %s with a number beyond %d" % (shape.name, FARTHEST))
    if kind == ROI_LINE and numbers[1] == numbers[3]:
        raise Damaged("no mask: the line is vertical, and its mask would end the process")


def mask(roi: Block) -> runs.Canvas:
    """The mask of a shape that is told by numbers."""
    para = para_of(roi)
    _check(para)
    name = ROIS[para.integer("Type")].name
    try:
        with _settings():
            return _mask(para)
    except gdb.error as error:
        if "without a process" in str(error):
            raise Damaged(NO_PROCESS % name) from None
        raise Damaged("no mask: %s" % error) from None


def _mask(para: Block) -> runs.Canvas:
    """Makes a shape of its own from the type and the numbers, since an array's record is none."""
    size = LAYOUTS["IVemROIPara"].size
    shape = _call("malloc", "unsigned long", size + 4 * 8)
    arrays = [shape + size, shape + size + 8, shape + size + 16]
    canvas = shape + size + 24
    try:
        _call(CONSTRUCT_ROI, "void", shape)
        for array in arrays:
            _call(CONSTRUCT_ARRAY, "void", array)
        memory = gdb.selected_inferior()
        memory.write_memory(canvas, struct.pack("<ii", 0, 0))
        fields = LAYOUTS["IVemROIPara"].fields
        memory.write_memory(shape + fields["Type"].place, struct.pack("<i", para.integer("Type")))
        _call(COPY_ARRAY, "void", shape + fields["Params"].place, para.part("Params").address)
        done = _call(GET_MASK, "bool", shape, *arrays, canvas, canvas + 4)
        width, height = struct.unpack("<ii", read(canvas, 8))
        lists = [runs.integers(block("VemVarArray", array)) for array in arrays]
        for array in arrays:
            _call(DESTROY_ARRAY, "void", array)
        _call(DESTROY_ROI, "void", shape)
    finally:
        _call("free", "void", shape)
    if not done:
        raise Damaged("no mask: the shape lies outside every canvas")
    lengths = (len(lists[0]), len(lists[1]), len(lists[2]))
    return runs.Canvas(width, height, list(zip(lists[0], lists[1], lists[2])), lengths)
