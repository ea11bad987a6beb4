"""Writes rows of pixels as a PNG file."""

import struct
import zlib
from typing import Iterable

COLOR_TYPES = {1: 0, 3: 2, 4: 6}


def _chunk(name: bytes, data: bytes) -> bytes:
    check = zlib.crc32(name + data) & 0xFFFFFFFF
    return struct.pack(">I", len(data)) + name + data + struct.pack(">I", check)


def encode(width: int, height: int, channels: int, bits: int, rows: Iterable[bytes]) -> bytes:
    """One, three or four channels of 8 or 16 bits, as PNG orders them: RGBA, high byte first."""
    packer = zlib.compressobj(6)
    # Before each row stands the number of its filter, 0 for none.
    packed = b"".join(packer.compress(b"\0" + row) for row in rows) + packer.flush()
    head = struct.pack(">IIBBBBB", width, height, bits, COLOR_TYPES[channels], 0, 0, 0)
    return b"".join(
        [
            b"\x89PNG\r\n\x1a\n",
            _chunk(b"IHDR", head),
            _chunk(b"IDAT", packed),
            _chunk(b"IEND", b""),
        ]
    )
