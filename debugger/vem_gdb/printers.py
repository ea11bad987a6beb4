"""Hands the views to gdb."""

import struct
from typing import Iterator, Optional, Tuple, Union

import gdb
import gdb.printing

from . import views_raster, views_results, views_shapes, views_values
from .memory import LAYOUTS, Block, Damaged, block
from .views import MAKERS, Part, View, one_line, safely, view

# Imported for what they register.
assert views_raster and views_results and views_shapes and views_values

Child = Union[str, gdb.Value]

_FLOATS = {4: "<f", 8: "<d"}


def bytes_of(value: gdb.Value) -> bytes:
    """The bytes of a value that stands in no memory, such as a function's result."""
    kind = value.type.strip_typedefs()
    if kind.code in (gdb.TYPE_CODE_STRUCT, gdb.TYPE_CODE_UNION):
        data = bytearray(kind.sizeof)
        for field in kind.fields():
            if hasattr(field, "bitpos") and not getattr(field, "bitsize", 0):
                place = field.bitpos // 8
                piece = bytes_of(value[field])
                data[place : place + len(piece)] = piece
        return bytes(data)
    if kind.code == gdb.TYPE_CODE_ARRAY:
        first, last = kind.range()
        return b"".join(bytes_of(value[i]) for i in range(first, last + 1))
    if kind.code == gdb.TYPE_CODE_FLT:
        return struct.pack(_FLOATS[kind.sizeof], float(value))
    size: int = kind.sizeof
    return (int(value) & ((1 << 8 * size) - 1)).to_bytes(size, "little")


def class_of(kind: gdb.Type) -> Optional[str]:
    """The name under which a class has a layout."""
    if kind.code in (gdb.TYPE_CODE_REF, gdb.TYPE_CODE_RVALUE_REF):
        kind = kind.target()
    tag = kind.strip_typedefs().tag
    if tag == "cv::Mat":
        return "Mat"
    return tag if tag in LAYOUTS and tag in MAKERS else None


def block_of(value: gdb.Value) -> Block:
    """The block of a value of a class that has a layout."""
    name = class_of(value.type)
    assert name is not None
    if value.type.code in (gdb.TYPE_CODE_REF, gdb.TYPE_CODE_RVALUE_REF):
        address = int(value.referenced_value().address)
        return block(name, address)
    if value.address is not None:
        return block(name, int(value.address))
    data = bytes_of(value)
    if len(data) != LAYOUTS[name].size:
        raise Damaged("<%d bytes, no %s>" % (len(data), name))
    return Block(name, 0, data)


# What a text begins with that stands among the parts of an object. A debugger's front end takes a
# text for an array of characters, so it is handed out as one, and shown by a printer again.
TEXT = "\x02VemData\x03"


def _text(written: str) -> Child:
    try:
        return gdb.Value(TEXT + written)
    except (gdb.error, UnicodeError):
        return written


def _text_of(value: gdb.Value) -> Optional[str]:
    """The text that such an array holds. Its address is not asked for: that would make it one."""
    kind = value.type
    if kind.code != gdb.TYPE_CODE_ARRAY or kind.sizeof < len(TEXT) or kind.target().sizeof != 1:
        return None
    try:
        if int(value[0]) != ord(TEXT[0]):
            return None
        written: str = value.string()
    except (gdb.error, UnicodeError):
        return None
    return written[len(TEXT) :] if written.startswith(TEXT) else None


def _child(part: Part) -> Child:
    """An object as a value that gdb can open further, if the program knows its type."""
    if isinstance(part, str):
        return _text(part)
    if part.address and part.name != "Mat":
        try:
            kind = gdb.lookup_type(part.name)
            if kind.sizeof == LAYOUTS[part.name].size:
                return gdb.Value(part.address).cast(kind.pointer()).dereference()
        except gdb.error:
            pass
    return _text(one_line(part))


class Printer:
    """One value in gdb's eyes, without parts: front ends show the text of no other."""

    def __init__(self, shown: View) -> None:
        self.shown = shown

    def to_string(self) -> Optional[str]:
        return self.shown.title or None


class PartsPrinter(Printer):
    """One value with its parts."""

    def children(self) -> Iterator[Tuple[str, Child]]:
        return ((name, _child(part)) for name, part in safely(self.shown.parts()))

    def display_hint(self) -> Optional[str]:
        return "array" if self.shown.listed else None


def printer(shown: View) -> Printer:
    return Printer(shown) if shown.parts is tuple else PartsPrinter(shown)


class Lookup(gdb.printing.PrettyPrinter):
    """Finds the printer of a value by the name of its class."""

    def __init__(self) -> None:
        names = [gdb.printing.SubPrettyPrinter(name) for name in sorted(MAKERS) if name != "Mat"]
        super().__init__("VemData", names)

    def __call__(self, value: gdb.Value) -> Optional[Printer]:
        written = _text_of(value)
        if written is not None:
            return Printer(View(written))
        name = class_of(value.type)
        if name is None or name == "Mat":
            return None
        if any(part.name == name and not part.enabled for part in self.subprinters or []):
            return None
        try:
            return printer(view(block_of(value)))
        except Damaged as damage:
            return Printer(View(str(damage)))
        except gdb.error as error:
            return Printer(View("<%s>" % error))


def register(objfile: Optional[gdb.Objfile]) -> None:
    gdb.printing.register_pretty_printer(objfile, Lookup(), replace=True)
