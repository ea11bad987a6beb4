"""Writes numbers and texts as C++ does, in characters that every terminal takes."""

import locale
import math
import struct
from typing import Optional

import gdb

LONGEST_TEXT = 1 << 20


def count(number: int, noun: str) -> str:
    """"1 run", "2 runs"."""
    return "%d %s%s" % (number, noun, "" if number == 1 else "s")


def double(value: float) -> str:
    """The shortest decimals that give the double back; always told from an integer."""
    return repr(value)


def plain(value: float) -> str:
    """The same where nobody asks for the kind: a whole number without a point."""
    written = repr(value)
    return written[:-2] if written.endswith(".0") else written


def single(value: float) -> str:
    """The shortest decimals that give the float back."""
    if math.isnan(value) or math.isinf(value):
        return repr(value)
    for digits in range(6, 9):
        written = "%.*g" % (digits, value)
        if struct.pack("<f", float(written)) == struct.pack("<f", value):
            return written
    return "%.9g" % value


def point(x: float, y: float) -> str:
    return "(%s, %s)" % (plain(x), plain(y))


def _setting(name: str) -> object:
    """None where the debugger knows no such setting, 0 where it sets no limit."""
    try:
        value = gdb.parameter(name)
    except RuntimeError:
        return None
    return 0 if value is None else value


def most_elements() -> Optional[int]:
    """How many elements `set print elements` or the command's own option shows; None for all."""
    if hasattr(gdb, "print_options"):
        limit = gdb.print_options().get("max_elements")
    else:
        limit = _setting("print elements")
    return limit if isinstance(limit, int) and limit > 0 else None


def most_characters() -> int:
    """How many characters of a text are shown: newer debuggers have a setting of their own."""
    limit = _setting("print characters")
    if not isinstance(limit, int) or limit < 0:
        limit = most_elements() or 0
    return min(limit or LONGEST_TEXT, LONGEST_TEXT)


def _charset() -> str:
    charset: str = locale.getpreferredencoding(False)
    if hasattr(gdb, "host_charset"):
        charset = gdb.host_charset()
    try:
        "".encode(charset)
    except LookupError:
        return "ascii"
    return charset


ESCAPES = {
    '"': '\\"',
    "\\": "\\\\",
    "\n": "\\n",
    "\r": "\\r",
    "\t": "\\t",
    "\a": "\\a",
    "\b": "\\b",
}


def quoted(data: bytes, ended: bool = True) -> str:
    """A text in quotes, with dots behind it where it goes on."""
    charset = _charset()
    written = ""
    for character in data.decode("utf-8", "surrogateescape"):
        if character in ESCAPES:
            written += ESCAPES[character]
        elif character.isprintable() and _fits(character, charset):
            written += character
        else:
            for byte in character.encode("utf-8", "surrogateescape"):
                written += "\\%03o" % byte
    return '"%s"%s' % (written, "" if ended else "...")


def _fits(character: str, charset: str) -> bool:
    try:
        character.encode(charset)
    except UnicodeEncodeError:
        return False
    return True
