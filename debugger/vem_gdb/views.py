"""What is shown of an object: a title, and its parts.

A view is made from a block's bytes alone. Part by part it is then handed to gdb, or written in one
line in gdb's own form.
"""

import itertools
from typing import Callable, Dict, Iterable, Iterator, List, NamedTuple, Optional, Tuple, Union

from . import text
from .memory import Block, Damaged, Elements

# A part is a text that is ready, or an object with a view of its own.
Part = Union[str, Block]
Parts = Iterable[Tuple[str, Part]]


class View(NamedTuple):
    """`listed` parts bear no names when written. A list tells each element alone, None for none."""

    title: str
    parts: Callable[[], Parts] = tuple
    listed: bool = False
    element: Optional[Callable[[int], Optional[Part]]] = None


Maker = Callable[[Block], View]
MAKERS: Dict[str, Maker] = {}


def shows(*names: str) -> Callable[[Maker], Maker]:
    """Registers what makes the view of the named classes."""

    def register(maker: Maker) -> Maker:
        for name in names:
            MAKERS[name] = maker
        return maker

    return register


def view(block: Block) -> View:
    """The view of an object, whatever its memory holds."""
    try:
        return MAKERS[block.name](block)
    except Damaged as damage:
        return View(str(damage))


def safely(parts: Parts) -> Iterator[Tuple[str, Part]]:
    """The parts up to one that can't be read, which is told in its place."""
    try:
        yield from parts
    except Damaged as damage:
        yield "damaged", str(damage)


def one_line(block: Block) -> str:
    """The object as gdb writes it in one line."""
    shown = view(block)
    limit = text.most_elements()
    written: List[str] = []
    for name, part in safely(shown.parts()):
        if limit is not None and len(written) == limit:
            written[-1] += "..."
            break
        piece = one_line(part) if isinstance(part, Block) else part
        written.append(piece if shown.listed else "%s = %s" % (name, piece))
    if not written:
        return shown.title
    return "%s%s{%s}" % (shown.title, " = " if shown.title else "", ", ".join(written))


def numbered(parts: Iterable[Part]) -> Parts:
    return (("[%d]" % i, part) for i, part in enumerate(parts))


def length(elements: Elements) -> str:
    return "length %d" % len(elements)


def one_of(count: int, element: Callable[[int], Part]) -> Callable[[int], Optional[Part]]:
    """The elements of a list by their indices."""
    return lambda index: element(index) if 0 <= index < count else None


def listing(elements: Elements, write: Callable[[bytes], str], title: str = "") -> View:
    """A list of texts."""
    return View(
        title or length(elements),
        lambda: numbered(write(data) for data in elements),
        listed=True,
        element=one_of(len(elements), lambda index: write(elements.at(index))),
    )


def objects(elements: Elements, name: str, title: str = "", first: Parts = ()) -> View:
    """A list of objects with views of their own, behind other parts."""

    def parts() -> Parts:
        blocks = (
            Block(name, elements.address_of(i), data) for i, data in enumerate(elements)
        )
        return itertools.chain(first, numbered(blocks))

    def element(index: int) -> Part:
        return Block(name, elements.address_of(index), elements.at(index))

    return View(title or length(elements), parts, element=one_of(len(elements), element))


def braces(texts: Iterable[str], limit: Optional[int] = None) -> str:
    """Texts as gdb writes a list."""
    if limit is None:
        limit = text.most_elements()
    written = list(itertools.islice(texts, None if limit is None else limit + 1))
    if limit is not None and len(written) > limit:
        written = written[:limit]
        written[-1:] = [written[-1] + "..."] if written else ["..."]
    return "{%s}" % ", ".join(written)
