"""The masks and outlines of 10,000 random shapes of each kind, against those of a C++ program."""

import os
import subprocess

import numpy as np
import pytest

import vemdata

PROGRAM = os.environ.get("VEMDATA_SHAPES")
SAMPLES = 10000

# By the type's number: how the stored numbers, y before x, become arguments.
MAKERS = {
    0: lambda n: vemdata.rect1((n[1], n[0]), (n[3], n[2])),
    1: lambda n: vemdata.circle(center=(n[1], n[0]), radius=n[2]),
    2: lambda n: vemdata.torus((n[1], n[0]), n[2], n[3], n[4], n[5]),
    4: lambda n: vemdata.polygon(n.reshape(-1, 2)[:, ::-1]),
    5: lambda n: vemdata.irregular(n.reshape(-1, 2)[:, ::-1]),
    6: lambda n: vemdata.rect2((n[1], n[0]), n[2], n[3], angle=n[4]),
    7: lambda n: vemdata.line((n[1], n[0]), (n[3], n[2])),
    8: lambda n: vemdata.ellipse((n[1], n[0]), n[2], n[3], n[4]),
    9: lambda n: vemdata.arc((n[1], n[0]), n[2], n[3], n[4]),
}
NONE, MASK = 3, 11


class Reader:
    def __init__(self, data):
        self.data = data
        self.at = 0

    def many(self, kind, count):
        values = np.frombuffer(self.data, kind, count, self.at)
        self.at += values.nbytes
        return values

    def one(self):
        return int(self.many(np.int32, 1)[0])

    def runs(self):
        return self.many(np.int32, 3 * self.one()).reshape(-1, 3)


def read_shape(reader):
    kind = reader.one()
    numbers = reader.many(np.float64, reader.one())
    if kind == MASK:
        width, height = reader.one(), reader.one()
        runs = reader.runs()
        return vemdata.mask(vemdata.Region.from_runs(runs, shape=(height, width)))
    # A generator from points that refuses leaves its type without numbers, and no mask.
    if kind == NONE or len(numbers) == 0:
        return None if kind == NONE else False
    return MAKERS[kind](numbers)


@pytest.mark.skipif(PROGRAM is None, reason="VEMDATA_SHAPES names no program")
@pytest.mark.parametrize("kind", ["Rect1", "Circle", "Torus", "Polygon", "Irregular", "Rect2",
                                  "Line", "UprightLine", "Ellipse", "Arc", "Mask"])
def test_masks_are_those_of_cpp(kind):
    reader = Reader(subprocess.run([PROGRAM, kind], stdout=subprocess.PIPE, check=True).stdout)
    compared = 0
    for _ in range(SAMPLES):
        roi = read_shape(reader)
        if roi is None:
            continue
        if kind != "UprightLine":
            held, width, height = reader.one(), reader.one(), reader.one()
            runs = reader.runs()
            if roi:
                assert np.array_equal(roi.runs(), runs)
                assert roi.canvas == ((width, height) if held else (0, 0))
        reader.one()
        outlines = [reader.many(np.int32, 2 * reader.one()).reshape(-1, 2)
                    for _ in range(reader.one())]
        if not roi:
            continue
        if kind == "UprightLine":
            try:
                assert roi.runs().size == 0  # Left of or above the origin nothing is divided.
            except ValueError as error:
                assert "vertical" in str(error)
        contours = roi.contours()
        assert len(contours) == len(outlines)
        assert all(np.array_equal(a, b) for a, b in zip(contours, outlines))
        compared += 1
    assert reader.at == len(reader.data)
    assert compared > 0.8 * SAMPLES
    print(f"{kind}: {compared} of {SAMPLES} made, the others refused")
