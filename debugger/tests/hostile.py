"""Shows memory that holds no objects as objects of every class: a command always answers.

Writes a line for each command that fails in Python, takes long or says too much, and a last one
with their number.
"""

import importlib
import os
import random
import struct
import time
from typing import Iterator, List

import gdb

SIZE = 4096
LONGEST_ANSWER = 1 << 18
LONGEST_TIME = 30.0


def address(expression: str) -> int:
    return int(gdb.parse_and_eval("(unsigned long)&%s" % expression))


def patterns(here: int) -> Iterator[bytes]:
    """Words that a block without an object may hold."""
    code = address("main")
    words = [0, 1, 1024, 0xFFFFFFFFFFFFFFFF, 0x0101010101010101, 0x42FF000042FF0000, code]
    words += [here, here + 8, here + 1024, here + SIZE - 8, 1 << 47, 1 << 63]
    for word in words:
        yield struct.pack("<Q", word) * (SIZE // 8)
    # Lists that grow, upward and far, over themselves and what follows them.
    for far in (16, 48, 4096, 1 << 20, 1 << 40):
        triple = struct.pack("<QQQ", here, here + far, here + far)
        yield (struct.pack("<QQ", here + 16, here + 16) + triple * 200)[:SIZE]
    # What is alive but for its first word, which a heap writes over.
    for name in ("region", "circle", "mixed", "photo", "layers", "path", "regions"):
        handle = int(gdb.parse_and_eval("*(unsigned long *)&%s" % name))
        yield struct.pack("<Q", handle + 8) * (SIZE // 8)
        yield struct.pack("<Q", handle - 16) * (SIZE // 8)
    chance = random.Random(1)
    for _ in range(20):
        yield b"".join(struct.pack("<Q", chance.choice(words)) for _ in range(SIZE // 8))
    for _ in range(10):
        yield bytes(chance.getrandbits(8) for _ in range(SIZE))
    for _ in range(10):
        yield b"".join(struct.pack("<i", chance.randrange(-2, 22)) for _ in range(SIZE // 4))


def complaints(command: str) -> List[str]:
    began = time.monotonic()
    try:
        answer = gdb.execute(command, to_string=True)
    except gdb.error as error:
        answer = str(error)
    found = []
    if "Error occurred in Python" in answer or "Python Exception" in answer:
        found.append("%s: %s" % (command, answer))
    if len(answer) > LONGEST_ANSWER:
        found.append("%s: %d characters" % (command, len(answer)))
    if time.monotonic() - began > LONGEST_TIME:
        found.append("%s: %.0f s" % (command, time.monotonic() - began))
    return found


gdb.execute("set width 0")
gdb.execute("break Stop", to_string=True)
gdb.execute("run", to_string=True)
gdb.execute("up", to_string=True)
# To be found once the library is loaded.
CLASSES = sorted(importlib.import_module("vem_gdb.views").MAKERS)

place = address("garbage")
found: List[str] = []
commands = 0
for pattern in patterns(place):
    gdb.selected_inferior().write_memory(place, pattern)
    for name in CLASSES:
        for command in (
            "print *(%s*)garbage" % name,
            "vem-print %s garbage" % name,
            "vem-show %s garbage" % name,
            "vem-save %s garbage garbage.png" % name,
        ):
            found += complaints(command)
            commands += 1
for name in ("Value", "List", "Region", "ROI", "Image", "Regions", "ROIs"):
    found += complaints("print *gone%s" % name)
    found += complaints("vem-print *gone%s" % name)
    commands += 2


def reads(command: str) -> int:
    """How many pieces of memory a command reads."""
    memory = importlib.import_module("vem_gdb.memory")
    found, kept = [], memory.read

    def counted(address: int, size: int) -> bytes:
        found.append(address)
        return kept(address, size)

    memory.read = counted
    try:
        gdb.execute(command, to_string=True)
    finally:
        memory.read = kept
    return len(found)


# An element costs the same wherever it stands.
for name in ("crowd", "many"):
    if reads("vem-print %s[250]" % name) != reads("vem-print %s[0]" % name):
        found.append("an element of %s is not read alone" % name)
    commands += 1
# What is evaluated late, in every command and for every class.
for name in CLASSES:
    for where in ("*(long*)0", "*(%s*)0" % name, "-1", "1e300", "1 / 0", "(char)-1", "{int}0", '"'):
        found += complaints("vem-print %s %s" % (name, where))
        found += complaints("vem-show %s %s" % (name, where))
        found += complaints("vem-save %s %s x.png" % (name, where))
        commands += 3
    found += complaints("vem-print *(%s*)0" % name)
    found += complaints("vem-print (%s*)-1" % name)
    found += complaints("print *(%s*)-1" % name)
    commands += 3
for command in ("vem-print", "vem-show", "vem-save"):
    for words in ("main", "Stop", "$_siginfo", "$x", "$rip", "int", "sizeof(int)", "photo.mat[7]",
                  "mixed[-1]", "mixed[1][2]", "[3]", "a[", "\\", "'", "photo /.png",
                  "photo .png", "region /dev/full.png", "1.5", "zeros[1]",
                  "&zeros", "garbage", "*argv", "$pc", "(char*)1", "(long double)1", "{1,2}"):
        found += complaints("%s %s" % (command, words))
        commands += 1
with open(os.environ["VEM_OUTPUT"], "w", encoding="utf-8") as file:
    file.writelines(line + "\n" for line in found)
    file.write("%d complaints about %d commands\n" % (len(found), commands))
