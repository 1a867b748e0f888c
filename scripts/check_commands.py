#!/usr/bin/env python3
"""Runs the commands that the documents show, as they are written, in a fresh clone.

    check_commands.py          those that take seconds once the program is built
    check_commands.py --all    the long ones too

A command is a line of a block that is indented by four spaces, up to the two spaces before its explanation.
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time

DOCUMENTS = ["README.md", "HACKING.md", "Fonts/README.md"]
# These go on until they are ended.
STAY = ["./run"]
# These take minutes.
LONG = [
    "./test",
    "./test -R Landmarks",
    "./test -R Outside",
    "./test --all",
    "./test --long",
    "./test --mutants",
    "./fuzz 60",
    "/usr/bin/python3 Tests/Outside/outside_tests.py build/bin/typloom Fonts/Skarvane/Skarvane.designspace",
    "/usr/bin/python3 Tests/Outside/outside_tests.py build/bin/typloom Fonts/Skarvane/Skarvane.designspace"
    " Outside.test_an_empty_range_is_explained",
    "./bench",
    "./bench --only slider",
    "./bench --json",
    "./bench --peers",
    "./bench tick --family Fonts/Skarvane/Skarvane.designspace --text Hamburg --axis Weight --ticks 60 --json",
    "./package",
    "./package --test",
    "cmake -S . -B build -G Ninja && ninja -C build",
]
BUILD_TIMEOUT = 3600


def commands_of(text):
    """The commands of a document, in order."""
    blocks = re.findall(r"(?<=\n\n)(?:    .*\n)+", text)
    return [re.split(r"  +", line.strip(), maxsplit=1)[0] for block in blocks for line in block.splitlines()]


def run_to_its_window(command, folder):
    """Whether the command ends as the program, which then goes on."""
    log = folder / "stays.log"
    with log.open("w") as output:
        process = subprocess.Popen(command.split(), cwd=folder, start_new_session=True, stdout=output, stderr=output)
    deadline = time.monotonic() + BUILD_TIMEOUT
    seen = 0
    while process.poll() is None and seen < 5 and time.monotonic() < deadline:
        time.sleep(0.5)
        seen = seen + 1 if os.readlink(f"/proc/{process.pid}/exe").endswith("/typloom") else 0
    is_there = process.poll() is None and seen == 5
    if not is_there:
        print(log.read_text()[-4000:])
    process.terminate()
    process.wait()
    return is_there


def works(command, folder):
    if command in STAY:
        return run_to_its_window(command, folder)
    run = subprocess.run(["bash", "-c", command], cwd=folder, stdin=subprocess.DEVNULL, timeout=BUILD_TIMEOUT,
                         capture_output=True, text=True)
    if run.returncode != 0:
        print(run.stdout[-4000:], run.stderr[-4000:], sep="\n")
    return run.returncode == 0


def main():
    root = pathlib.Path(__file__).resolve().parent.parent
    takes_all = "--all" in sys.argv[1:]
    written = [command for name in DOCUMENTS for command in commands_of((root / name).read_text())]
    missing = [command for command in STAY + LONG if command not in written]
    if missing or not written:
        sys.exit(f"No document shows {missing or 'any command'} any more")

    os.environ["QT_QPA_PLATFORM"] = "offscreen"
    failed = []
    with tempfile.TemporaryDirectory() as temporary:
        clone = pathlib.Path(temporary) / "typloom"
        subprocess.run(["git", "clone", "-q", "--shared", str(root), str(clone)], check=True)
        (clone / "FAMILY.designspace").symlink_to("Fonts/Skarvane/Skarvane.designspace")
        for command in dict.fromkeys(written):
            program = re.sub(r"^\w+=\S+ ", "", command).split()[0]
            if command in LONG and not takes_all:
                continue
            if "/" not in program and not shutil.which(program):
                print(f"not run, since {program} is not installed: {command}")
                continue
            started = time.monotonic()
            good = works(command, clone)
            print(f"{'works' if good else 'FAILS'} ({time.monotonic() - started:.0f} s): {command}", flush=True)
            if not good:
                failed.append(command)
        changed = subprocess.run(["git", "status", "--porcelain", "--untracked-files=no"], cwd=clone,
                                 capture_output=True, text=True, check=True).stdout
    if changed:
        print("The commands have changed files that are under version control:", changed, sep="\n")
    sys.exit(1 if failed or changed else 0)


if __name__ == "__main__":
    main()
