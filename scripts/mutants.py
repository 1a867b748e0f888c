#!/usr/bin/env python3
"""Breaks the program in the ways of scripts/mutants.txt, one at a time, in a copy of the tree, and shows that some
test fails for each.

mutants.py check            each change still matches the sources exactly once (nothing is built)
mutants.py list             their names and what they break
mutants.py run [NAME...]    build and test each, or those named; status 1 when one survives

The copy and its build are in build/mutants; the tree itself is never touched.
"""

import os
import shutil
import subprocess
import sys
import time
from dataclasses import dataclass, field
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
LIST = ROOT / "scripts" / "mutants.txt"
WORK = ROOT / "build" / "mutants"
TREE = WORK / "tree"
BUILD = WORK / "build"
LONGEST = 400  # Seconds that one test program may take; one that hangs has found the mutant.
# For the random tests: enough to find what the list breaks, and always the same.
ENVIRONMENT = {"QT_QPA_PLATFORM": "offscreen", "TYPLOOM_SEQUENCES": "40"}


@dataclass
class Mutant:
    name: str
    line: int
    fields: dict = field(default_factory=dict)
    old: list = field(default_factory=list)
    new: list = field(default_factory=list)

    @property
    def texts(self):
        return "\n".join(self.old), "\n".join(self.new)

    def faults(self):
        """Sentences about what is wrong with the entry."""
        for wanted in ("file", "breaks", "tests"):
            if wanted not in self.fields:
                yield f"it has no '{wanted}:'"
        old, new = self.texts
        path = ROOT / self.fields.get("file", "")
        if not old.strip() or old == new:
            yield "it changes nothing"
        elif not path.is_file():
            yield f"there is no file {self.fields.get('file')}"
        elif (count := path.read_text().count(old)) != 1:
            yield f"its old text is in {self.fields['file']} {count} times"


def parse(text):
    """Entries: "[name]", "key: value" lines, then lines of the old text after "-", of the new after "+", of both after
    a blank."""
    mutants = []
    for number, line in enumerate(text.splitlines(), 1):
        if line.startswith("[") and line.endswith("]"):
            mutants.append(Mutant(line[1:-1], number))
        elif line.startswith(("- ", "+ ", "  ")):
            mutants[-1].old += [line[2:]] if line[0] != "+" else []
            mutants[-1].new += [line[2:]] if line[0] != "-" else []
        elif line and not line.startswith("#"):
            key, _, value = line.partition(":")
            mutants[-1].fields[key.strip()] = value.strip()
    return mutants


def check(mutants):
    faults = [f"{LIST.relative_to(ROOT)}:{mutant.line}: {mutant.name}: {fault}"
              for mutant in mutants for fault in mutant.faults()]
    names = [mutant.name for mutant in mutants]
    faults += [f"{name}: there are two of that name" for name in sorted(set(names)) if names.count(name) > 1]
    print("\n".join(faults) if faults else f"{len(mutants)} mutants match the sources.")
    return not faults


def copy_tree():
    """The tree as it stands, changes that are not committed included. Files that are the same keep their time."""
    names = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "-z"], cwd=ROOT, check=True,
                           capture_output=True, text=True).stdout.split("\0")
    wanted = {name for name in names if name and (ROOT / name).is_file()}
    for path in [path for path in TREE.rglob("*") if path.is_file() and str(path.relative_to(TREE)) not in wanted]:
        path.unlink()
    for name in wanted:
        source, target = ROOT / name, TREE / name
        if not target.is_file() or target.read_bytes() != source.read_bytes():
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(source, target)


def configure():
    if not (BUILD / "build.ninja").exists():
        subprocess.run(["cmake", "-S", TREE, "-B", BUILD, "-G", "Ninja", "-DTYPLOOM_TESTS=ON"], check=True,
                       stdout=subprocess.DEVNULL)


def build(targets):
    return subprocess.run(["ninja", f"-j{os.cpu_count()}", "-C", BUILD, *targets], capture_output=True, text=True)


def programs(mutant):
    """Test programs, each with the options that name its tests."""
    for entry in mutant.fields["tests"].split():
        program, _, tests = entry.partition("/")
        yield program, [f"--gtest_filter={tests}"] if tests else []


def failing_test(mutant):
    """The first test that fails, or None."""
    for program, options in programs(mutant):
        path = next(BUILD.glob(f"Tests/*/{program}"))
        try:
            run = subprocess.run([path, "--gtest_fail_fast", "--gtest_brief=1", *options], capture_output=True,
                                 text=True, errors="replace", timeout=LONGEST, cwd=BUILD,
                                 env={**os.environ, **ENVIRONMENT})
        except subprocess.TimeoutExpired:
            return f"{program} never ended"
        if run.returncode != 0:
            failed = [line for line in run.stdout.splitlines() if line.startswith("[  FAILED  ]")]
            return failed[0][13:].split(" (")[0] if failed else f"{program} ended with {run.returncode}"
    return None


def try_mutant(mutant):
    """How it went: a word, and the test that found it."""
    path = TREE / mutant.fields["file"]
    text = path.read_text()
    path.write_text(text.replace(*mutant.texts))
    try:
        built = build([program for program, _ in programs(mutant)])
        if built.returncode != 0:
            return "does not build", built.stdout[-2000:]
        found = failing_test(mutant)
        return ("killed", found) if found else ("SURVIVED", mutant.fields["breaks"])
    finally:
        path.write_text(text)


def run(mutants):
    copy_tree()
    configure()
    built = build(sorted({program for mutant in mutants for program, _ in programs(mutant)}))
    if built.returncode != 0:
        sys.exit("The tree does not build as it is:\n" + built.stdout[-4000:])
    for tests in sorted({mutant.fields["tests"] for mutant in mutants}):
        if found := failing_test(Mutant("none", 0, {"tests": tests})):
            sys.exit(f"{found} fails as things are: it would take every mutant for dead.")
    outcomes = []
    for mutant in mutants:
        started = time.monotonic()
        outcome, detail = try_mutant(mutant)
        outcomes.append(outcome)
        print(f"{outcome:9} {mutant.name:34} {detail}  ({time.monotonic() - started:.0f} s)", flush=True)
    killed = outcomes.count("killed")
    print(f"{killed} of {len(outcomes)} mutants were killed.")
    return killed == len(outcomes)


def main(arguments):
    mutants = parse(LIST.read_text())
    command, names = (arguments or [""])[0], arguments[1:]
    if command == "list":
        print("\n".join(f"{mutant.name:34} {mutant.fields['breaks']}" for mutant in mutants))
        return True
    if command == "check":
        return check(mutants)
    unknown = [name for name in names if name not in {mutant.name for mutant in mutants}]
    if command != "run" or unknown:
        sys.exit(f"No mutant is named {', '.join(unknown)}." if unknown else __doc__)
    return check(mutants) and run([mutant for mutant in mutants if not names or mutant.name in names])


if __name__ == "__main__":
    sys.exit(0 if main(sys.argv[1:]) else 1)
