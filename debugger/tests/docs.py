"""Compares the sessions that docs/debugger.md shows with what the tests expect.

A session stands in the page as a block behind a comment that names file and heading:
<!-- session: Regions -->. With VEM_ACCEPT=1 the expected sessions are written into the page.
"""

import os
import re
from typing import Dict

FOLDER = os.path.dirname(os.path.abspath(os.environ["VEM_DOCS"]))
EXPECTED = os.path.join(FOLDER, "..", "debugger", "tests")


def sessions(name: str) -> Dict[str, str]:
    """The sessions of an expected file, by heading."""
    with open(os.path.join(EXPECTED, name + ".expected"), encoding="utf-8") as file:
        pieces = re.split(r"^== (.*)$", file.read(), flags=re.MULTILINE)
    return {
        "%s: %s" % (name, heading): text.strip("\n") + "\n"
        for heading, text in zip(pieces[1::2], pieces[2::2])
    }


expected: Dict[str, str] = {}
for name in ("session", "live", "core"):
    expected.update(sessions(name))

with open(os.environ["VEM_DOCS"], encoding="utf-8") as file:
    page = file.read()

block = re.compile(
    r"(?<=<!-- )((?:session|live|core): [^\n]*)( -->\n\n```text\n)(.*?)(?=```\n)", re.DOTALL
)
shown = block.findall(page)
wrong = [name for name, _, text in shown if expected.get(name) != text]
if len(shown) != page.count("```text"):
    wrong.append("a block without a session's name")

if os.environ.get("VEM_ACCEPT"):
    page = block.sub(lambda found: found[1] + found[2] + expected[found[1]], page)
    with open(os.environ["VEM_DOCS"], "w", encoding="utf-8") as file:
        file.write(page)
    wrong = []

for name in wrong:
    print("docs/debugger.md shows another session than the tests expect: %s" % name)
if not wrong:
    print("%d sessions shown as expected" % len(shown))
