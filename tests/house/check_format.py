#!/usr/bin/env python3
"""Fails, with file and line, for every C++ source that clang-format would write otherwise."""

import os
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
FOLDERS = ["src", "tests", "tools", "benchmarks"]
FILES_AT_ONCE = 40


def violations(files):
    # Another version of the program formats otherwise, so this one is named.
    done = subprocess.run(["clang-format-14", "--dry-run", "-Werror", "--style=file", *files], capture_output=True,
                          text=True, check=False)
    return done.stderr if done.returncode else ""


def main():
    files = sorted(str(path) for folder in FOLDERS for path in (ROOT / folder).rglob("*")
                   if path.suffix in {".cpp", ".h"})
    parts = [files[at:at + FILES_AT_ONCE] for at in range(0, len(files), FILES_AT_ONCE)]
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        found = "".join(pool.map(violations, parts))
    print(found, file=sys.stderr, end="")
    print(f"{len(files)} sources, {found.count(': error:')} lines to format")
    return 1 if found or not files else 0


if __name__ == "__main__":
    sys.exit(main())
