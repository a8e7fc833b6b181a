#!/usr/bin/env python3
"""Checks of the sources' form. Each is a test of its own: lint.py CHECK SOURCE_DIR BUILD_DIR.

format    every source is as clang-format leaves it
includes  no include climbs out of its folder
headers   every header of ours compiles alone
tidy      clang-tidy finds nothing in what is not a test; a file whose preprocessed text was clean before is not looked at again
"""
import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

FOLDERS = ("src", "engine", "tests", "bench")
JOBS = os.cpu_count() or 1


def sources(top, *endings):
    return sorted(path for folder in FOLDERS for path in (top / folder).rglob("*")
                  if path.suffix in (endings or (".cpp", ".h", ".c")) and path.is_file())


def compile_commands(build):
    entries = json.loads((build / "compile_commands.json").read_text())
    return {pathlib.Path(entry["file"]): entry for entry in entries}


def arguments(entry):
    """The entry's compiler call without compiler cache, output and input."""
    words = shlex.split(entry["command"])
    if "ccache" in pathlib.Path(words[0]).name:
        words = words[1:]
    kept, skip = [], False
    for word in words[1:]:
        if skip:
            skip = False
        elif word in ("-o", "-MF", "-MT", "-MQ"):
            skip = True
        elif word not in ("-c", "-MD", "-MMD", entry["file"]):
            kept.append(word)
    return words[0], kept


def run_all(work, items):
    """The non-empty results of `work` on each item."""
    with concurrent.futures.ThreadPoolExecutor(JOBS) as pool:
        return [result for result in pool.map(work, items) if result]


def check_format(top, _build):
    def work(path):
        return subprocess.run(["clang-format", "--dry-run", "-Werror", str(path)], capture_output=True, text=True).stderr
    return run_all(work, sources(top))


def check_includes(top, _build):
    climbing = re.compile(r'^\s*#\s*include\s*[<"][^<">]*\.\./', re.MULTILINE)
    return [f"{path}: include with \"../\"" for path in sources(top) if climbing.search(path.read_text())]


def neighbour_flags(header, commands, top):
    """The flags of a source that lies beside the header, or in the nearest folder above."""
    for folder in header.relative_to(top).parents[:-1]:
        for path in sorted(commands):
            if path.is_relative_to(top / folder):
                return arguments(commands[path])
    # This build has no source of that part: every place that a header may be in.
    calls = [arguments(entry) for entry in commands.values()]
    places = {word for _, words in calls for word in words if word.startswith("-I")}
    return calls[0][0], ["-std=c++20", *sorted(places)]


def check_headers(top, build):
    commands = compile_commands(build)

    def work(header):
        compiler, flags = neighbour_flags(header, commands, top)
        done = subprocess.run(
            [compiler, *flags, "-x", "c++", "-fsyntax-only", "-include", str(header), "/dev/null"],
            capture_output=True, text=True, cwd=build)
        return f"{header} does not compile alone:\n{done.stderr}" if done.returncode else ""
    return run_all(work, sources(top, ".h"))


def check_tidy(top, build):
    commands = compile_commands(build)
    known = build / "tidy-clean"
    known.mkdir(exist_ok=True)
    version = subprocess.run(["clang-tidy", "--version"], capture_output=True).stdout

    def digest(path):
        """Of all that the findings depend on."""
        compiler, flags = arguments(commands[path])
        text = subprocess.run([compiler, *flags, "-E", "-P", path], capture_output=True, cwd=commands[path]["directory"]).stdout
        settings = [folder / ".clang-tidy" for folder in path.parents if folder.is_relative_to(top)]
        # Comments can hold suppressions, so the file itself counts too.
        files = [file.read_bytes() for file in (path, *settings) if file.is_file()]
        return hashlib.sha256(b"".join([text, *files, version])).hexdigest()

    def work(path):
        mark = known / digest(path)
        if mark.exists():
            return ""
        done = subprocess.run(["clang-tidy", "--quiet", "-p", str(build), str(path)], capture_output=True, text=True)
        if done.returncode:
            return done.stdout + done.stderr
        mark.touch()
        return ""
    return run_all(work, [path for path in sources(top, ".cpp") if path in commands and not path.is_relative_to(top / "tests")])


CHECKS = {"format": check_format, "includes": check_includes, "headers": check_headers, "tidy": check_tidy}


def main():
    check, top, build = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
    complaints = CHECKS[check](top, build)
    print("\n".join(complaints))
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
