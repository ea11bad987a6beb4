#!/usr/bin/env python3
"""Breaks copies of the sources on purpose and tells which of these mutants no test notices.

The list stands beside this program, a file for each folder of sources. Paragraphs are separated by
blank lines. One that begins with `#` is a comment; one of the following lines holds for all entries
below it, up to the next such:

    file: masks/LineClip.cpp       the source, from the root of the project
    tests: MaskFillTest, Fing*     what to run first, besides the tests that bear the source's name
    partly: VemVarTest.cpp, ...    for a header that half of the project includes: the sources and
                                   tests that are built anew at first; all are built only where
                                   the tests of these notice nothing

Any other paragraph is an entry: a name, the lines of the source as they are, what stands in their
place, and why it matters.

    ClipsAtTheWidth @2
    - return value < size;
    + return value <= size;
    A point in the column behind the last would be on the canvas.

The lines must stand in the source, whole and one below the other, once; `@2` takes the second of
several such places, counted from the top. The space around them does not count. Without a line
that begins with `+` they are taken out. A paragraph may end with

    equivalent: why nothing that the library promises changes

Such an entry is not counted, and built only on demand. Any other has to be noticed by the tests of
the release build: one of them fails, is killed, or does not end in time.
"""

import argparse
import collections
import fnmatch
import hashlib
import json
import os
import pathlib
import queue
import re
import resource
import shlex
import signal
import subprocess
import sys
import threading
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
LISTS = ROOT / "tests" / "mutants"
SCRATCH = ROOT / "build" / "mutants"
WANTED = 0.97
# No test needs more. A mutant may, without end.
MOST_MEMORY = 8 << 30
# A test that takes longer than this on the unchanged sources comes last.
SLOW_SECONDS = 4.0


class ListError(Exception):
    pass


class Mutant:
    """An entry of the list."""

    def __init__(self, place, name):
        self.place = place
        self.name = name
        self.occurrence = None
        self.source = None
        self.tests = []
        self.partly = []
        self.old = []
        self.new = []
        self.why = []
        self.equivalent = None

    @property
    def folder(self):
        return self.source.split("/")[0]

    def __str__(self):
        return f"{self.folder}/{self.name}"

    def apply(self, text):
        """The source's text with the mutant in it."""
        lines = text.split("\n")
        bare = [line.strip() for line in lines]
        old = [line.strip() for line in self.old]
        found = [i for i in range(len(bare)) if bare[i:i + len(old)] == old]
        if self.occurrence is None and len(found) != 1:
            raise ListError(f"{self.place}: {self.name}: stands {len(found)} times in "
                            f"{self.source}")
        if self.occurrence is not None and not 1 <= self.occurrence <= len(found):
            raise ListError(f"{self.place}: {self.name}: stands only {len(found)} times in "
                            f"{self.source}")
        begin = found[(self.occurrence or 1) - 1]
        if [line.strip() for line in self.new] == old:
            raise ListError(f"{self.place}: {self.name}: changes nothing")
        return "\n".join(lines[:begin] + self.new + lines[begin + len(old):])


def split_names(text):
    return [name.strip() for name in text.split(",") if name.strip()]


def read_entry(place, lines):
    head = re.fullmatch(r"(\w+)(?: @(\d+))?", lines[0])
    if not head:
        raise ListError(f"{place}: no name: {lines[0]}")
    mutant = Mutant(place, head.group(1))
    mutant.occurrence = int(head.group(2)) if head.group(2) else None
    reason = mutant.why
    for line in lines[1:]:
        if re.match(r"-( |$)", line):
            mutant.old.append(line[2:])
        elif re.match(r"\+( |$)", line):
            mutant.new.append(line[2:])
        elif line.startswith("equivalent:"):
            mutant.equivalent = reason = [line[len("equivalent:"):].strip()]
        else:
            reason.append(line.strip())
    if not mutant.old or not any(reason):
        raise ListError(f"{place}: {mutant.name}: needs lines and a reason")
    return mutant


def read_list(path):
    """The entries of one file of the list."""
    mutants = []
    given = {"file": "", "tests": "", "partly": ""}
    text = path.read_text()
    line_number = 1
    for paragraph in re.split(r"(\n\s*\n)", text):
        lines = [line for line in paragraph.split("\n") if line.strip()]
        place = f"{path.relative_to(ROOT)}:{line_number}"
        line_number += paragraph.count("\n")
        if not lines or lines[0].startswith("#"):
            continue
        if re.match(r"(file|tests|partly):", lines[0]):
            if lines[0].startswith("file:"):
                given = {"file": "", "tests": "", "partly": ""}
            for line in lines:
                key, _, value = line.partition(":")
                if key not in given:
                    raise ListError(f"{place}: unknown: {line}")
                given[key] = value.strip()
            continue
        mutant = read_entry(place, lines)
        mutant.source = given["file"]
        mutant.tests = split_names(given["tests"])
        mutant.partly = split_names(given["partly"])
        mutants.append(mutant)
    return mutants


def read_lists():
    """All entries, and what is wrong with them."""
    mutants, errors, names = [], [], set()
    for path in sorted(LISTS.glob("*.txt")):
        try:
            found = read_list(path)
        except ListError as error:
            errors.append(str(error))
            continue
        for mutant in found:
            try:
                if not (ROOT / mutant.source).is_file():
                    raise ListError(f"{mutant.place}: {mutant.name}: no source '{mutant.source}'")
                if str(mutant) in names:
                    raise ListError(f"{mutant.place}: {mutant.name}: stands twice in the list")
                names.add(str(mutant))
                mutant.apply((ROOT / mutant.source).read_text())
                mutants.append(mutant)
            except ListError as error:
                errors.append(str(error))
    return mutants, errors


def limit_process():
    resource.setrlimit(resource.RLIMIT_AS, (MOST_MEMORY, MOST_MEMORY))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


class Outcome(collections.namedtuple("Outcome", "mutant kind by seconds")):
    """What became of a mutant: "killed", "SURVIVED", or "not built"; and by which test."""


class TestPrograms:
    """The programs that test, built from the sources as they are. They run with any libraries."""

    def __init__(self, build):
        self.build = build
        self.program = build / "tests" / "VemTests"
        self.link = self.commands("tests/VemTests")[-1]
        self.objects = [word for word in shlex.split(self.link, posix=False)
                        if word.endswith(".cpp.o")]
        self.headers = self.read_headers()

    def ninja(self, *arguments):
        return subprocess.run(["ninja", "-C", self.build, *arguments], capture_output=True,
                              text=True, check=True).stdout

    def commands(self, target):
        return self.ninja("-t", "commands", target).strip().split("\n")

    def read_headers(self):
        """For each object of VemTests what it is made from, from the root of the project."""
        headers = {}
        for line in self.ninja("-t", "deps", *self.objects).split("\n"):
            if line.startswith("    "):
                path = os.path.normpath(self.build / line.strip())
                headers[name].add(os.path.relpath(path, ROOT))
            elif ": #deps" in line:
                name = line.split(":")[0]
                headers[name] = set()
        return headers

    def made_from(self, source):
        return [name for name in self.objects if source in self.headers.get(name, ())]

    def test_names(self):
        """All tests that call the libraries."""
        listed = subprocess.run(["ctest", "--show-only"], cwd=self.build, capture_output=True,
                                text=True, check=True)
        names = re.findall(r"Test +#\d+: (\S+)", listed.stdout)
        return [name for name in names if not name.endswith(("Exports", "Imports"))]


class Worker:
    """A copy of the sources and a build of the libraries, in which one mutant after the other is
    tried."""

    def __init__(self, number, programs):
        self.programs = programs
        self.folder = SCRATCH / str(number)
        self.tree = self.folder / "tree"
        self.build = self.folder / "build"
        self.tests = self.folder / "tests"
        self.changed = None  # The source that holds a mutant,
        self.time = None     # when that was written without one,
        self.partly = []     # and the objects that alone were built with it; none if all were.

    def log(self, name):
        return self.folder / f"{name}.log"

    def call(self, command, log, **options):
        with open(self.log(log), "w") as output:
            return subprocess.run(command, stdout=output, stderr=subprocess.STDOUT, **options,
                                  env={**os.environ, "CCACHE_BASEDIR": str(self.folder),
                                       "CCACHE_NOHASHDIR": "1"}).returncode

    def copy_tree(self):
        """Makes the copy like the project, and leaves alone what is so already."""
        names = subprocess.run(["git", "-C", ROOT, "ls-files", "-z", "--cached", "--others",
                                "--exclude-standard"], check=True, capture_output=True)
        wanted = {name for name in names.stdout.decode().split("\0")
                  if name and (ROOT / name).is_file()}
        for path in self.tree.rglob("*") if self.tree.exists() else []:
            if path.is_file() and str(path.relative_to(self.tree)) not in wanted:
                path.unlink()
        for name in wanted:
            source, copy = ROOT / name, self.tree / name
            content = source.read_bytes()
            if copy.exists() and copy.read_bytes() == content:
                continue
            copy.parent.mkdir(parents=True, exist_ok=True)
            copy.write_bytes(content)

    def prepare(self, jobs):
        """Builds the libraries without a mutant."""
        self.copy_tree()
        launcher = os.environ.get("CMAKE_CXX_COMPILER_LAUNCHER")
        if self.call(["cmake", "-S", self.tree, "-B", self.build, "-G", "Ninja",
                      "-DCMAKE_BUILD_TYPE=Release", "-DVEM_BUILD_EXAMPLES=OFF",
                      "-DVEM_BUILD_TESTS=OFF"] +
                     ([f"-DCMAKE_CXX_COMPILER_LAUNCHER={launcher}"] if launcher else []),
                     "configure") != 0:
            raise SystemExit(f"The copy can't be configured: see {self.log('configure')}")
        if not self.make(jobs=jobs):
            raise SystemExit(f"The copy can't be built: see {self.log('build')}")
        self.take_tests([])

    def make(self, targets=("VemRLC", "VemData"), jobs=1):
        return self.call(["ninja", "-C", self.build, f"-j{jobs}", *targets], "build") == 0

    def take_tests(self, new_objects):
        """Makes the list of tests to run, with a VemTests of its own where objects are new."""
        text = (self.programs.build / "tests" / "CTestTestfile.cmake").read_text()
        if new_objects:
            text = text.replace(f'"{self.programs.program}"', f'"{self.tests / "VemTests"}"')
        self.tests.mkdir(exist_ok=True)
        (self.tests / "CTestTestfile.cmake").write_text(text)

    def make_tests(self, objects):
        """Builds objects of VemTests from the copy, and links them, foremost, with the others."""
        new = []
        for name in objects:
            target = self.tests / name.replace("/", "_")
            command = re.sub(f"{re.escape(str(ROOT))}(?=[/ ])", str(self.tree),
                             self.programs.commands(name)[-1])
            words = [word for word in shlex.split(command) if word != "-Werror"]
            words[words.index("-o") + 1] = str(target)
            words[words.index("-MF") + 1] = f"{target}.d"
            if self.call(words, "build", cwd=self.programs.build) != 0:
                return False
            new.append(str(target))
        if new:
            words = [word for word in shlex.split(self.programs.link, posix=False)
                     if word not in objects]
            words[words.index("-o") + 1] = str(self.tests / "VemTests")
            at = next(i for i, word in enumerate(words) if word.endswith((".o", "-o")))
            line = " ".join(words[:at] + new + words[at:])
            if self.call(line, "build", shell=True, cwd=self.programs.build) != 0:
                return False
        self.take_tests(new)
        return True

    def run_tests(self, names, seconds, jobs=1):
        """Runs tests up to the first that fails. Returns its name, or none, and the times."""
        if not names:
            return None, {}
        pattern = "^(" + "|".join(re.escape(name) for name in names) + ")$"
        command = ["ctest", "-R", pattern, "--stop-on-failure", "--timeout", str(int(seconds)),
                   "--parallel", str(jobs)]
        paths = [str(self.build)] + os.environ.get("LD_LIBRARY_PATH", "").split(":")
        with open(self.log("tests"), "w+") as output:
            run = subprocess.Popen(command, cwd=self.tests, stdout=output,
                                   stderr=subprocess.STDOUT, preexec_fn=limit_process,
                                   start_new_session=True,
                                   env={**os.environ,
                                        "LD_LIBRARY_PATH": ":".join(filter(None, paths))})
            run.wait()
            try:  # What a test has left running.
                os.killpg(run.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
            output.seek(0)
            said = output.read()
        times = {}
        for name, result, passed in re.findall(
                r"Test +#\d+: (\S+) \.*\s*(.*?)\s+([\d.]+) sec", said):
            times[name] = float(passed)
            if result != "Passed":
                return f"{name}{', too long' if 'Timeout' in result else ''}", times
        if run.returncode != 0:
            raise SystemExit(f"The tests can't be run: see {self.log('tests')}")
        return None, times

    def put(self, source, text):
        self.tree.joinpath(source).write_text(text)

    def change(self, mutant):
        if self.changed != mutant.source:
            self.restore()
            self.changed = mutant.source
            self.time = self.tree.joinpath(mutant.source).stat().st_mtime_ns
        self.put(mutant.source, mutant.apply((ROOT / mutant.source).read_text()))

    def restore(self):
        """Takes the mutant out. A header that was built with in part looks as if never touched."""
        if not self.changed:
            return
        self.put(self.changed, (ROOT / self.changed).read_text())
        if self.partly and self.time:
            os.utime(self.tree / self.changed, ns=(self.time, self.time))
        for name in self.partly:
            (self.build / name).unlink(missing_ok=True)
        self.changed, self.partly = None, []

    def make_partly(self, sources):
        """Builds a few objects, and links with the others as they are; the new ones come first."""
        listed = subprocess.run(["ninja", "-C", self.build, "-t", "targets", "all"],
                                capture_output=True, text=True, check=True).stdout
        endings = tuple(f".dir/{source}.o" for source in sources)
        new = [name for name in re.findall(r"^(\S+): ", listed, re.M) if name.endswith(endings)]
        self.partly = sorted({*self.partly, *new})
        if not self.make(new):
            return False
        commands = subprocess.run(["ninja", "-C", self.build, "-t", "commands", "VemRLC",
                                   "VemData"], capture_output=True, text=True, check=True).stdout
        for line in commands.split("\n"):
            words = shlex.split(line, posix=False)
            here = [word for word in words if word in new]
            if "-shared" not in words or not here:
                continue
            others = [word for word in words if word not in new]
            at = others.index("-o")
            line = " ".join(others[:at] + here + others[at:])
            if self.call(line, "build", shell=True, cwd=self.build) != 0:
                return False
        return self.make_tests([name for name in self.programs.objects if name.endswith(endings)])

    def first_tests(self, mutant, all_names):
        stem = pathlib.Path(mutant.source).stem
        patterns = [stem + "*", *mutant.tests]
        patterns += [name[:-4] for name in mutant.partly if name.endswith("Test.cpp")]
        return [name for name in all_names
                if any(fnmatch.fnmatchcase(name, pattern) for pattern in patterns)]

    def try_mutant(self, mutant, times, first_only):
        """Builds a mutant and runs the tests, those first that are likely to notice it."""
        begin = time.monotonic()

        def outcome(kind, by=""):
            return Outcome(mutant, kind, by, time.monotonic() - begin)

        self.change(mutant)
        first = self.first_tests(mutant, times)
        if mutant.partly and not mutant.equivalent:
            if not self.make_partly(mutant.partly):
                return outcome("not built")
            by = self.run_stages([first], times)
            if by or first_only:
                return outcome("killed", by) if by else outcome("SURVIVED")
            self.time = 0  # All is going to be built with it.
        if not self.make() or not self.make_tests(self.programs.made_from(mutant.source)):
            return outcome("not built")
        rest = [] if first_only else [name for name in times if name not in first]
        by = self.run_stages([first, rest], times)
        return outcome("killed", by) if by else outcome("SURVIVED")

    def run_stages(self, groups, times):
        for names in groups:
            for slow in [False, True]:
                stage = [name for name in names if (times[name] > SLOW_SECONDS) == slow]
                longest = max([times[name] for name in stage], default=0)
                by, _ = self.run_tests(stage, 30 + 8 * longest)
                if by:
                    return by
        return None


def times_without_mutant(programs, worker, jobs):
    """How long each test takes. All must pass, be it in an earlier run of the same programs."""
    digest = hashlib.sha256()
    for path in sorted([*programs.build.glob("tests/Vem*"), *worker.build.glob("lib*.so")]):
        if path.is_file():
            digest.update(path.read_bytes())
    programs.digest = digest.hexdigest()
    kept = SCRATCH / "times.json"
    if kept.exists():
        known = json.loads(kept.read_text())
        if known["programs"] == programs.digest:
            return known["times"]
    by, times = worker.run_tests(programs.test_names(), 600, jobs)
    if by:
        raise SystemExit(f"{by} fails without a mutant: see {worker.log('tests')}")
    kept.write_text(json.dumps({"programs": programs.digest, "times": times}))
    return times


class Findings:
    """Which mutants were killed, kept from run to run."""

    def __init__(self, programs):
        self.path = SCRATCH / "killed.json"
        self.programs = programs.digest
        self.known = json.loads(self.path.read_text()) if self.path.exists() else {}

    def key(self, mutant):
        text = mutant.apply((ROOT / mutant.source).read_text())
        return hashlib.sha256((self.programs + text).encode()).hexdigest()

    def find(self, mutant):
        by = self.known.get(self.key(mutant))
        return by and Outcome(mutant, "killed", by, 0.0)

    def keep(self, outcome):
        if outcome.kind == "killed":
            self.known[self.key(outcome.mutant)] = outcome.by
            self.path.write_text(json.dumps(self.known))


def run(mutants, jobs, first_only, resume):
    """Tries all mutants, in several copies at once. Those of a source go to one copy."""
    by_source = collections.defaultdict(list)
    for mutant in mutants:
        by_source[mutant.source].append(mutant)
    work = queue.Queue()
    for source in sorted(by_source, key=lambda name: (name.endswith(".h"),
                                                      -len(by_source[name]))):
        work.put(by_source[source])
    programs = TestPrograms(pathlib.Path(os.environ["BUILD_DIR"]))
    workers = [Worker(i, programs) for i in range(min(jobs, work.qsize()))]
    outcomes, lock = [], threading.Lock()

    print(f"{len(mutants)} mutants, {len(workers)} at a time, in {SCRATCH}", flush=True)
    for worker in workers:  # In turn, so that a compiler cache serves all but the first.
        worker.prepare(jobs)
    times = times_without_mutant(programs, workers[0], jobs)
    print(f"{len(times)} tests pass without a mutant, in {sum(times.values()):.0f} s", flush=True)

    def drain(worker):
        while True:
            try:
                group = work.get_nowait()
            except queue.Empty:
                return
            for mutant in group:
                result = findings.find(mutant) or worker.try_mutant(mutant, times, first_only)
                with lock:
                    outcomes.append(result)
                    findings.keep(result)
                    detail = f"by {result.by}" if result.by else ""
                    print(f"{result.kind:9} {result.seconds:4.0f} s  {mutant} {detail}",
                          flush=True)
            worker.restore()

    findings = Findings(programs)
    if not resume:
        findings.known = {}
    threads = [threading.Thread(target=drain, args=(worker,)) for worker in workers]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    return outcomes


def report(mutants, outcomes):
    """Prints the survivors and a table. Returns whether enough were killed."""
    fine = True
    for result in outcomes:
        mutant = result.mutant
        if result.kind == "SURVIVED" and not mutant.equivalent:
            print(f"\n{mutant} survived ({mutant.place}): {' '.join(mutant.why)}")
        elif result.kind == "not built" or (result.kind == "killed" and mutant.equivalent):
            fine = False
            what = "can't be built" if result.kind == "not built" else "is no equivalent"
            print(f"\n{mutant} {what} ({mutant.place})")

    def count(folder, kind):
        return sum(1 for result in outcomes if result.kind == kind and
                   not result.mutant.equivalent and folder in ("all", result.mutant.folder))

    print(f"\n{'folder':10} {'entries':>8} {'killed':>8} {'survived':>9} {'equivalent':>11}")
    folders = sorted({mutant.folder for mutant in mutants})
    for folder in folders + ["all"]:
        here = [mutant for mutant in mutants if folder in ("all", mutant.folder)]
        print(f"{folder:10} {len(here):8} {count(folder, 'killed'):8} "
              f"{count(folder, 'SURVIVED'):9} "
              f"{sum(1 for mutant in here if mutant.equivalent):11}")
    killed, survived = count("all", "killed"), count("all", "SURVIVED")
    share = killed / (killed + survived) if killed + survived else 1
    print(f"\n{killed} of {killed + survived} killed: {100 * share:.1f} %, "
          f"{100 * WANTED:.0f} % wanted")
    return fine and share >= WANTED


def main():
    parser = argparse.ArgumentParser(
        prog="scripts/mutants", description=__doc__,
        formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("patterns", nargs="*", metavar="pattern",
                        help="only these, as in 'masks/*' or 'coder/RoomEndsWithTheRow'; all "
                             "by default")
    parser.add_argument("--check", action="store_true",
                        help="only see whether each entry finds its lines; builds nothing")
    parser.add_argument("--list", action="store_true", help="only print the names and reasons")
    parser.add_argument("--equivalents", action="store_true",
                        help="only those that are said to change nothing: they must survive")
    parser.add_argument("--first", action="store_true",
                        help="run only the tests that are likely to notice: quicker, and harsher")
    parser.add_argument("--resume", action="store_true",
                        help="leave out what earlier runs have killed, with the same tests")
    parser.add_argument("--jobs", type=int, default=int(os.environ.get("JOBS", os.cpu_count())),
                        help="how many copies of the project work at once")
    arguments = parser.parse_args()

    mutants, errors = read_lists()
    for error in errors:
        print(error)
    if arguments.patterns:
        mutants = [mutant for mutant in mutants
                   if any(fnmatch.fnmatchcase(str(mutant), pattern)
                          for pattern in arguments.patterns)]
    if arguments.list:
        for mutant in mutants:
            print(f"{mutant} ({mutant.source}): {' '.join(mutant.why)}"
                  f"{' EQUIVALENT: ' + ' '.join(mutant.equivalent) if mutant.equivalent else ''}")
    if arguments.list or arguments.check or errors:
        equivalents = sum(1 for mutant in mutants if mutant.equivalent)
        print(f"{len(mutants)} mutants, {equivalents} of them equivalent; {len(errors)} errors")
        return 1 if errors else 0
    wanted = [mutant for mutant in mutants if bool(mutant.equivalent) == arguments.equivalents]
    if not wanted:
        parser.error("no mutant has such a name; --list tells the names")
    begin = time.monotonic()
    outcomes = run(wanted, max(arguments.jobs, 1), arguments.first, arguments.resume)
    good = report(wanted if arguments.equivalents else mutants, outcomes)
    print(f"{(time.monotonic() - begin) / 60:.0f} minutes")
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
