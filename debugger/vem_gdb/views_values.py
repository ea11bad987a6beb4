"""Control values, points, lines, circles and contours."""

import struct
from typing import Union

from . import text
from .memory import LAYOUTS, Block, Damaged, elements, stored, values
from .memory import text as read_text
from .views import View, braces, length, listing, numbered, objects, one_of, shows

LONG, DOUBLE, STRING, NONE = range(4)


def written(value: Union[Block, bytes]) -> str:
    """A control value as C++ writes it, which tells its kind: 2 or 2.0 or "2" or none."""
    data = value.data if isinstance(value, Block) else value
    kind, payload = struct.unpack("<i4xQ", data)
    if kind == LONG:
        return str(struct.unpack_from("<q", data, 8)[0])
    if kind == DOUBLE:
        return text.double(struct.unpack_from("<d", data, 8)[0])
    if kind == NONE:
        return "none"
    if kind != STRING:
        return "<damaged value, of kind %d>" % kind
    try:
        return text.quoted(*read_text(payload, text.most_characters()))
    except Damaged as damage:
        return str(damage)


@shows("VemVar")
def _var(block: Block) -> View:
    kind = block.integer("type_")
    if kind == NONE or not LONG <= kind <= NONE:
        return View(written(block))
    return View("%s %s" % (("long", "double", "string")[kind], written(block)))


@shows("VemVarArray", "VemVarStore")
def _var_array(block: Block) -> View:
    return listing(values(block), written)


@shows("Vem2DVarArray")
def _2d_var_array(block: Block) -> View:
    return objects(stored(block, LAYOUTS["VemVarArray"].size), "VemVarArray")


def point(data: bytes) -> str:
    """The coordinates of a point of two or three doubles."""
    return "(%s)" % ", ".join(text.plain(c) for (c,) in struct.iter_unpack("<d", data))


@shows("VemPoint", "Vem3DPoint")
def _point(block: Block) -> View:
    return View(point(block.data))


@shows("VemPointArray")
def _point_array(block: Block) -> View:
    return listing(stored(block, LAYOUTS["VemPoint"].size), point)


@shows("Vem3DPointArray")
def _3d_point_array(block: Block) -> View:
    return listing(stored(block, LAYOUTS["Vem3DPoint"].size), point)


@shows("VemLine")
def _line(block: Block) -> View:
    return View("%s to %s" % (point(block.part("start").data), point(block.part("end").data)))


@shows("VemCircle")
def _circle(block: Block) -> View:
    center, radius = block.part("center").data, block.number("radius")
    return View("center %s, radius %s" % (point(center), text.plain(radius)))


@shows("VemContour")
def _contour(block: Block) -> View:
    return listing(stored(block, LAYOUTS["VemPoint"].size), point)


@shows("VemContourArray")
def _contour_array(block: Block) -> View:
    chains = stored(block, LAYOUTS["List"].size)

    def chain(data: bytes) -> str:
        try:
            points = elements(Block("List", 0, data), LAYOUTS["VemPoint"].size)
            return length(points) + (" = " + braces(map(point, points)) if len(points) else "")
        except Damaged as damage:
            return str(damage)

    return View(
        length(chains),
        lambda: numbered(map(chain, chains)),
        element=one_of(len(chains), lambda index: chain(chains.at(index))),
    )
