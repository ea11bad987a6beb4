import numpy as np
import pytest


@pytest.fixture
def random():
    return np.random.default_rng(20261122)


def painted(runs, shape):
    """The picture of runs by plain loops."""
    height, width = shape
    picture = np.zeros(shape, np.uint8)
    for row, first, last in np.asarray(runs).tolist():
        for column in range(first, last + 1):
            if 0 <= row < height and 0 <= column < width:
                picture[row, column] = 255
    return picture


def scanned(mask):
    """The runs of a mask by plain loops."""
    runs = []
    for row, line in enumerate(np.asarray(mask).tolist()):
        first = None
        for column, pixel in enumerate(line + [0]):
            if pixel and first is None:
                first = column
            if not pixel and first is not None:
                runs.append((row, first, column - 1))
                first = None
    return runs
