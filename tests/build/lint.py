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
                  if path.suffix in endings and path.is_file())


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
        done = subprocess.run(["clang-format", "--dry-run", "-Werror", str(path)],
                              capture_output=True, text=True)
        return done.stderr if done.returncode else ""
    return run_all(work, sources(top, ".cpp", ".h", ".c"))


def check_includes(top, _build):
    climbing = re.compile(r'^\s*#\s*include\s*[<"][^<">]*\.\./', re.MULTILINE)
    return [f"{path}: include with \"../\"" for path in sources(top, ".cpp", ".h", ".c")
            if climbing.search(path.read_text())]


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


def preprocessed_digest(entry):
    compiler, flags = arguments(entry)
    text = subprocess.run([compiler, *flags, "-E", "-P", entry["file"]],
                          capture_output=True, cwd=entry["directory"]).stdout
    # Comments can hold suppressions, so the file itself counts too.
    return hashlib.sha256(text + pathlib.Path(entry["file"]).read_bytes())


def tidy_config(top, path):
    """The settings that count for the file: those of its folder and of the folders above."""
    files = [folder / ".clang-tidy" for folder in path.parents if folder.is_relative_to(top)]
    return b"".join(file.read_bytes() for file in files if file.is_file())


def check_tidy(top, build):
    commands = compile_commands(build)
    known = build / "tidy-clean"
    known.mkdir(exist_ok=True)
    version = subprocess.run(["clang-tidy", "--version"], capture_output=True).stdout

    def work(path):
        digest = preprocessed_digest(commands[path])
        digest.update(tidy_config(top, path) + version)
        mark = known / digest.hexdigest()
        if mark.exists():
            return ""
        done = subprocess.run(["clang-tidy", "--quiet", "-p", str(build), str(path)],
                              capture_output=True, text=True)
        if done.returncode:
            return done.stdout + done.stderr
        mark.touch()
        return ""
    tests = top / "tests"
    ours = [path for path in sources(top, ".cpp") if path in commands and not path.is_relative_to(tests)]
    return run_all(work, ours)


CHECKS = {"format": check_format, "includes": check_includes, "headers": check_headers, "tidy": check_tidy}


def main():
    check, top, build = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
    complaints = CHECKS[check](top, build)
    for complaint in complaints:
        print(complaint)
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
