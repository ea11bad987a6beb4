"""How fast vemdata is beside what stands in Debian for the same work.

    python3 python/bench/compare.py [--small] [--rounds N] [--filter TEXT]

Each figure is the processor time of the other divided by that of vemdata, of the same input in the
same run: both are called in turn, round after round, and of the quotients of all rounds the median
stands in the table. Above 1, vemdata is the faster one. Before anything is measured, the results
are compared as far as they tell the same.
"""

import argparse
import statistics
import time

import cv2
import numpy as np
import skimage.draw
import skimage.measure

import vemdata

cv2.setNumThreads(1)


def discs(size, count, seed):
    """A mask of discs, as parts on a belt."""
    random = np.random.default_rng(seed)
    mask = np.zeros((size, size), np.uint8)
    for _ in range(count):
        x, y = random.integers(0, size, 2).tolist()
        cv2.circle(mask, (x, y), int(random.integers(2, size // 12)), 255, -1)
    return mask


def noise(size, seed):
    """Squares of 4 by 4 pixels at random: many small parts."""
    squares = np.random.default_rng(seed).random((size // 4, size // 4)) < 0.3
    return np.kron(squares, np.ones((4, 4))).astype(np.uint8)


def star(size, corners):
    angles = np.arange(corners) * (2 * np.pi / corners)
    radii = np.where(np.arange(corners) % 2, 0.45, 0.25) * size
    return np.stack([size / 2 + radii * np.cos(angles), size / 2 + radii * np.sin(angles)],
                    axis=1).round().astype(np.int32)


def numpy_runs(mask):
    """Runs as they are found with NumPy alone: where neighbours differ."""
    edges = np.diff(np.pad(mask != 0, ((0, 0), (1, 1))).astype(np.int8), axis=1)
    rows, first = np.nonzero(edges == 1)
    last = np.nonzero(edges == -1)[1]
    return np.stack([rows, first, last - 1], axis=1)


def skimage_polygon(points, shape):
    mask = np.zeros(shape, np.uint8)
    mask[skimage.draw.polygon(points[:, 1], points[:, 0], shape)] = 255
    return mask


def cv2_polygon(points, shape):
    mask = np.zeros(shape, np.uint8)
    cv2.fillPoly(mask, [points], 255)
    return mask


def skimage_parts(mask):
    props = skimage.measure.regionprops(skimage.measure.label(mask != 0, connectivity=2))
    return sorted((p.area, p.bbox, p.centroid) for p in props)


def cv2_parts(mask):
    return cv2.connectedComponentsWithStats(mask, connectivity=8)


def own_parts(mask):
    return [(part.area, part.bounds, part.center) for part in vemdata.components(mask)]


def test_same(mask, points, shape):
    assert np.array_equal(vemdata.Region(mask).runs(), numpy_runs(mask))
    assert np.array_equal(vemdata.polygon(points).mask(shape), cv2_polygon(points, shape))
    own, other = own_parts(mask), skimage_parts(mask)
    assert sorted(area for area, _, _ in own) == [area for area, _, _ in other]
    assert len(own) == cv2_parts(mask)[0] - 1
    lines = vemdata.outlines(mask)[0]
    expected = cv2.findContours(mask, cv2.RETR_CCOMP, cv2.CHAIN_APPROX_SIMPLE)[0]
    assert sorted(len(line) for line in lines) == sorted(len(line) for line in expected)


def cases(size):
    shape = (size, size)
    points = star(size, 64)
    for name, mask in [("discs", discs(size, 60, 1)), ("noise", noise(size, 2))]:
        test_same(mask, points, shape)
        yield (f"runs of a mask, {name}", "NumPy", lambda m=mask: numpy_runs(m),
               lambda m=mask: vemdata.Region(m).runs())
        yield (f"components, {name}", "skimage label",
               lambda m=mask: skimage.measure.label(m != 0, connectivity=2),
               lambda m=mask: vemdata.components(m))
        yield (f"components, {name}", "cv2.connectedComponents",
               lambda m=mask: cv2.connectedComponents(m, connectivity=8),
               lambda m=mask: vemdata.components(m))
        yield (f"components with area, box, center, {name}", "skimage label, regionprops",
               lambda m=mask: skimage_parts(m), lambda m=mask: own_parts(m))
        yield (f"components with area, box, center, {name}", "cv2.connectedComponentsWithStats",
               lambda m=mask: cv2_parts(m), lambda m=mask: own_parts(m))
        yield (f"outlines, {name}", "skimage find_contours",
               lambda m=mask: skimage.measure.find_contours(m, 0.5),
               lambda m=mask: vemdata.outlines(m))
        yield (f"outlines, {name}", "cv2.findContours",
               lambda m=mask: cv2.findContours(m, cv2.RETR_CCOMP, cv2.CHAIN_APPROX_SIMPLE),
               lambda m=mask: vemdata.outlines(m))
    yield ("mask of a polygon", "skimage.draw.polygon", lambda: skimage_polygon(points, shape),
           lambda: vemdata.polygon(points).mask(shape))
    yield ("mask of a polygon", "cv2.fillPoly", lambda: cv2_polygon(points, shape),
           lambda: vemdata.polygon(points).mask(shape))


def timed(work, count):
    start = time.process_time_ns()
    for _ in range(count):
        work()
    return (time.process_time_ns() - start) / count


def ratio(other, own, rounds, least):
    """The median of the quotients, with as many calls a round as take `least` nanoseconds."""
    counts = [max(1, int(least / max(timed(work, 1), 1000))) for work in (other, own)]
    return statistics.median(timed(other, counts[0]) / timed(own, counts[1]) for _ in range(rounds))


def main():
    parser = argparse.ArgumentParser(description=__doc__.partition("\n")[0])
    parser.add_argument("--small", action="store_true", help="one small size, one round")
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--filter", default="")
    options = parser.parse_args()
    sizes = [64] if options.small else [256, 1024]
    rounds = 1 if options.small else options.rounds
    table = {}
    for size in sizes:
        for work, name, other, own in cases(size):
            if options.filter in f"{work} {name}":
                table.setdefault((work, name), []).append(
                    ratio(other, own, rounds, 1e6 if options.small else 2e7))
    print("| work | beside | " + " | ".join(f"{size} by {size}" for size in sizes) + " |")
    print("|---|---|" + "---|" * len(sizes))
    for (work, name), figures in table.items():
        print(f"| {work} | {name} | " + " | ".join(f"{f:.2f}" for f in figures) + " |")


if __name__ == "__main__":
    main()
