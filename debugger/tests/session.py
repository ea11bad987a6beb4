"""Runs a session file in gdb, and writes each command and what gdb answers.

What the environment says:
  VEM_SESSION  the session file; lines that begin with "==" are headings
  VEM_OUTPUT   where the session is written
  VEM_RUN      not empty: run the program up to Stop
  VEM_BARE     not empty: show the objects by vem-print, and leave out what needs debug information
  VEM_CORE     the core file to be written at the end
"""

import os
import re
from typing import Dict, Iterator

import gdb

folder = os.path.dirname(os.path.abspath(__file__))


def answer(command: str) -> str:
    try:
        written = gdb.execute(command, to_string=True)
    except gdb.error as error:
        written = "%s\n" % error
    written = re.sub(r"^\$\d+ = ", "", written)
    return "".join(line.rstrip() + "\n" for line in written.splitlines())


def classes() -> Dict[str, str]:
    """The classes of the program's objects, by name."""
    with open(os.path.join(folder, "subjects.cpp"), encoding="utf-8") as source:
        found = re.findall(r"^(Vem\w+) (\w+)(?:\(.*)?;", source.read(), re.MULTILINE)
    return {name: kind for kind, name in found}


def session_lines(path: str) -> Iterator[str]:
    with open(path, encoding="utf-8") as lines:
        for line in lines.read().splitlines():
            if os.environ.get("VEM_BARE") and line == "== No objects":
                return
            yield line


def run(path: str, output: str) -> None:
    kinds = classes()
    with open(output, "w", encoding="utf-8") as file:
        for line in session_lines(path):
            if not line or line.startswith("=="):
                file.write(line + "\n")
                continue
            command = line
            if os.environ.get("VEM_BARE"):
                name = line.split()[-1]
                command = "vem-print %s &%s" % (kinds[name], name)
            file.write("(gdb) %s\n%s" % (line, answer(command)))


gdb.execute("set width 0")
if os.environ.get("VEM_RUN"):
    gdb.execute("break Stop", to_string=True)
    gdb.execute("run", to_string=True)
gdb.execute("up", to_string=True)
run(os.environ["VEM_SESSION"], os.environ["VEM_OUTPUT"])
if os.environ.get("VEM_CORE"):
    gdb.execute("generate-core-file %s" % os.environ["VEM_CORE"], to_string=True)
