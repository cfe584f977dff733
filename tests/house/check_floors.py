#!/usr/bin/env python3
"""Holds every include of src/ against the table of rooms in docs/architecture.md: a room includes its own headers and
those of the rooms that its row names, an arrow never goes up, and files do not include each other in a circle; in the
rooms of UNTANGLED neither do their units, a unit being a header with its source. The files that the page names exist."""

import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"')
UNTANGLED = {"controls", "database", "gallery", "jet", "metadata", "office", "platform", "presentation", "selection",
             "session", "sheets", "shell", "view", "wizards"}
NAMED = re.compile(r"`((?:[\w-]+/)+[\w.-]+\.(?:h|cpp|ui|py|ini|csv))`")
ROW = re.compile(r"^\|\s*(\d+)\s*\|\s*`(\w+)`\s*\|[^|]*\|([^|]*)\|\s*$")


def read_table(text, problems):
    """The rooms with their floor and the rooms that each may include."""
    rooms = {}
    for line in text.splitlines():
        row = ROW.match(line)
        if row:
            rooms[row.group(2)] = (int(row.group(1)), set(re.findall(r"`(\w+)`", row.group(3))))
    for room, (floor, allowed) in rooms.items():
        for other in sorted(allowed):
            if other not in rooms:
                problems.append(f"docs/architecture.md: {room} may include {other}, which has no row")
            elif rooms[other][0] > floor:
                problems.append(f"docs/architecture.md: the arrow from {room} to {other} goes up")
    if not rooms:
        problems.append("docs/architecture.md: there is no table of rooms")
    problems.extend(f"docs/architecture.md: rooms include each other in a circle: {' > '.join(circle)}"
                    for circle in circles({room: allowed for room, (_, allowed) in rooms.items()}))
    return rooms


def check_named_files(text, root, problems):
    """The files that a page names in backticks lie below the folder or its src."""
    for number, line in enumerate(text.splitlines(), 1):
        for name in NAMED.findall(line):
            if not (root / name).exists() and not (root / "src" / name).exists():
                problems.append(f"docs/architecture.md:{number}: there is no {name}")


def circles(arrows):
    """One path for each circle that a walk along the arrows meets."""
    done, found = set(), []

    def walk(node, path):
        if node in path:
            found.append([*path[path.index(node):], node])
        elif node not in done:
            for target in sorted(arrows.get(node, ())):
                walk(target, [*path, node])
            done.add(node)

    for node in sorted(arrows):
        walk(node, [])
    return found


def includes_of(text):
    """The line numbers and names of what a source includes in quotes."""
    for number, line in enumerate(text.splitlines(), 1):
        include = INCLUDE.match(line)
        if include:
            yield number, include.group(1)


def check_include(room, name, rooms):
    """What is wrong with one include of a room; nothing when it is allowed. Generated headers have no folder."""
    if "/" not in name:
        return None if name.startswith("ui_") or name.endswith(".moc") else f'"{name}" names no room'
    target = name.split("/")[0]
    if room in ("", target) and target in rooms:
        return None
    if target not in rooms:
        return f'"{name}" lies in no room of the table'
    if target not in rooms[room][1]:
        return f'{room} must not include "{name}"'
    return None


def arrows_of_units(arrows):
    """The arrows between the units of each room that has no circle of them: `room/Log` for room/Log.h and room/Log.cpp."""
    units = {}
    for name, includes in arrows.items():
        unit, room = name.rsplit(".", 1)[0], name.split("/")[0]
        targets = {include.rsplit(".", 1)[0] for include in includes if include.startswith(room + "/")}
        if room in UNTANGLED:
            units.setdefault(unit, set()).update(targets - {unit})
    return units


def check_sources(folder, rooms, problems):
    """Walks the sources of a folder of rooms; main.cpp, which stands above them, may include any. Gives the number of
    includes."""
    arrows, count = {}, 0
    for path in sorted(folder.rglob("*")):
        if path.suffix not in {".cpp", ".h"}:
            continue
        name = path.relative_to(folder).as_posix()
        room = name.split("/")[0] if "/" in name else ""
        if room and room not in rooms:
            problems.append(f"src/{name}: the room {room} has no row in docs/architecture.md")
            continue
        for number, include in includes_of(path.read_text(encoding="utf-8")):
            count += 1
            problem = check_include(room, include, rooms)
            if problem:
                problems.append(f"src/{name}:{number}: {problem}")
            arrows.setdefault(name, set()).add(include)
    problems.extend(f"files include each other in a circle: {' > '.join(circle)}" for circle in circles(arrows))
    problems.extend(f"units include each other in a circle: {' > '.join(circle)}"
                    for circle in circles(arrows_of_units(arrows)))
    return count


def main():
    problems = []
    page = (ROOT / "docs" / "architecture.md").read_text(encoding="utf-8")
    rooms = read_table(page, problems)
    check_named_files(page, ROOT, problems)
    count = check_sources(ROOT / "src", rooms, problems)
    for problem in problems:
        print(problem, file=sys.stderr)
    print(f"{len(rooms)} rooms, {count} includes, {len(problems)} problems")
    return 1 if problems or not count else 0


if __name__ == "__main__":
    sys.exit(main())
