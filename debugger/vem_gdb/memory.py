"""Reads the debugged program's memory through the table of layouts: no type is asked of gdb.

Whatever can't be read, or can't be what it should be, raises Damaged with the text that is shown in
its place. Nothing else is raised, whatever the memory holds.
"""

import os
import re
import struct
from typing import Dict, Iterator, NamedTuple, Tuple, Union

import gdb

PAGE = 4096
# A pointer's bits.
ADDRESSES = (1 << 64) - 1
LARGEST_READ = 1 << 28

KINDS = {
    "byte": "<B",
    "int32": "<i",
    "uint32": "<I",
    "int64": "<q",
    "word64": "<Q",
    "float32": "<f",
    "float64": "<d",
    "pointer": "<Q",
}


class Damaged(Exception):
    """What is shown where there is no object."""


class Field(NamedTuple):
    place: int
    kind: str


class Layout(NamedTuple):
    size: int
    fields: Dict[str, Field]


def _read_table() -> Dict[str, Layout]:
    table: Dict[str, Layout] = {}
    entry = re.compile(r"(HOLDS|STANDS)\((.*)\)$")
    path = os.path.join(os.path.dirname(os.path.abspath(__file__)), "layouts.def")
    with open(path, encoding="ascii") as lines:
        for match in map(entry.match, lines):
            if not match:
                continue
            words = match.group(2).split(", ")
            if match.group(1) == "HOLDS":
                table[words[0]] = Layout(int(words[1]), {})
            else:
                name, field, place, kind = words
                table[name].fields[field.split(".")[-1]] = Field(int(place), kind)
    return table


LAYOUTS = _read_table()


def read(address: int, size: int) -> bytes:
    address &= ADDRESSES
    if address == 0:
        raise Damaged("<null>")
    if 0 < address < PAGE:
        raise Damaged("<invalid reference, as of an index out of range>")
    if size > LARGEST_READ:
        raise Damaged("<%d bytes at 0x%x>" % (size, address))
    try:
        return bytes(gdb.selected_inferior().read_memory(address, size))
    except (gdb.error, OverflowError, ValueError, TypeError):
        raise Damaged("<no memory at 0x%x>" % address) from None


class Block:
    """An object's bytes, with the name of its layout. The address is 0 for a value in no memory."""

    def __init__(self, name: str, address: int, data: bytes) -> None:
        self.name = name
        self.address = address
        self.data = data

    def _field(self, name: str) -> Tuple[int, str]:
        field = LAYOUTS[self.name].fields[name]
        return field.place, field.kind

    def number(self, name: str) -> Union[int, float]:
        place, kind = self._field(name)
        number: Union[int, float] = struct.unpack_from(KINDS[kind], self.data, place)[0]
        return number

    def integer(self, name: str) -> int:
        return int(self.number(name))

    def bytes(self, name: str) -> bytes:
        place, kind = self._field(name)
        return self.data[place : place + struct.calcsize(KINDS[kind])]

    def part(self, name: str) -> "Block":
        place, kind = self._field(name)
        address = self.address + place if self.address else 0
        return Block(kind, address, self.data[place : place + LAYOUTS[kind].size])

    def pointee(self, name: str, layout: str) -> "Block":
        return block(layout, self.integer(name))


def block(name: str, address: int) -> Block:
    return Block(name, address, read(address, LAYOUTS[name].size))


class Elements:
    """A list's elements, read a few hundred at a time."""

    AT_ONCE = 256

    def __init__(self, first: int, last: int, limit: int, size: int) -> None:
        if not first <= last <= limit or (last - first) % size or (limit - first) % size:
            raise Damaged("<damaged list, from 0x%x to 0x%x>" % (first, last))
        self.address = first
        self.count = (last - first) // size
        self.size = size

    def __len__(self) -> int:
        return self.count

    def address_of(self, index: int) -> int:
        return self.address + index * self.size

    def at(self, index: int) -> bytes:
        """One element by itself."""
        return read(self.address_of(index), self.size)

    def data(self) -> bytes:
        """All elements at once."""
        return read(self.address, self.count * self.size) if self.count else b""

    def __iter__(self) -> Iterator[bytes]:
        for start in range(0, self.count, self.AT_ONCE):
            count = min(self.AT_ONCE, self.count - start)
            data = read(self.address_of(start), count * self.size)
            for i in range(count):
                yield data[i * self.size : (i + 1) * self.size]


def elements(owner: Block, size: int) -> Elements:
    """The elements of a std::vector."""
    first, last, limit = map(owner.integer, ("_M_start", "_M_finish", "_M_end_of_storage"))
    return Elements(first, last, limit, size)


def stored(handle: Block, size: int, field: str = "store_") -> Elements:
    """The elements of the std::vector to which a handle's one pointer points."""
    return elements(handle.pointee(field, "List"), size)


def values(array: Block) -> Elements:
    """The elements of a VemVarArray, which keeps a store of its own kind."""
    store = array.pointee("store_", "VemVarStore") if array.name == "VemVarArray" else array
    first, last, limit = map(store.integer, ("First", "Last", "Limit"))
    return Elements(first, last, limit, LAYOUTS["VemVar"].size)


def text(address: int, longest: int) -> Tuple[bytes, bool]:
    """The bytes up to a zero, and whether there was one among the first `longest`.

    Reads no page behind the one in which the text ends.
    """
    found = b""
    while len(found) < longest:
        place = address + len(found)
        size = min(longest - len(found), PAGE - place % PAGE)
        try:
            piece = read(place, size)
        except Damaged:
            if not found:
                raise
            return found, False
        end = piece.find(b"\0")
        if end >= 0:
            return found + piece[:end], True
        found += piece
    # A text of exactly that length ends here.
    try:
        return found, read(address + len(found), 1) == b"\0"
    except Damaged:
        return found, False
