"""The campaigns. Each works in a folder of its own until its time is over, and gives a line of figures and its faults."""

import contextlib
import os
import random
import shutil
import sqlite3
import stat
import subprocess
from dataclasses import dataclass, field

import hostile
import sandbox


PAGE = 4096  # bytes of a page of the databases


@dataclass
class Tools:
    """The programs and folders that the campaigns use."""

    bin: str
    installation: str
    folder: str  # where all work is done
    patience: float = 5  # seconds without events that a user takes for a hang

    def path(self, program):
        return os.path.join(self.bin, program)


@dataclass
class Report:
    name: str
    patience: float
    runs: int = 0
    peak: int = 0
    slowest: float = 0.0
    figures: dict = field(default_factory=dict)
    faults: list = field(default_factory=list)

    def count(self, what, by=1):
        self.figures[what] = self.figures.get(what, 0) + by

    def take(self, outcome, what):
        """Counts a run, and keeps its fault when there is one."""
        self.runs += 1
        self.peak = max(self.peak, outcome.peak)
        for gap in outcome.told("longest"):
            self.slowest = max(self.slowest, int(gap) / 1000)
        if outcome.fault(self.patience):
            self.faults.append(f"{what}: {outcome.fault(self.patience)}")
        elif outcome.status != 0:
            self.faults.append(f"{what}: exit status {outcome.status}: {outcome.lines[-1:]}")

    def line(self):
        figures = ", ".join(f"{count} {what}" for what, count in self.figures.items())
        return (
            f"{self.name}: {self.runs} runs, {len(self.faults)} faults; {figures or 'nothing counted'}; longest without "
            f"events {self.slowest:.1f} s, {self.peak >> 20} MB at most"
        )


class Place:
    """A folder for one run: a home, the opened file's folder, and an outside that must stay as it is."""

    def __init__(self, tools, name):
        self.folder = os.path.join(tools.folder, name)
        shutil.rmtree(self.folder, ignore_errors=True)
        self.home = os.path.join(self.folder, "home")
        self.outside = os.path.join(self.folder, "outside")
        self.files = os.path.join(self.folder, "files")
        for path in (self.home, self.outside, self.files):
            os.makedirs(path)
        with open(os.path.join(self.outside, "kept.txt"), "w", encoding="utf-8") as file:
            file.write("must stay as it is\n")

    def remove(self):
        shutil.rmtree(self.folder, ignore_errors=True)


def small_database(tools):
    """A good database of a few hundred pages, made once."""
    path = os.path.join(tools.folder, "Good.mdb")
    if not os.path.exists(path):
        size = "--areas 30 --ius 12 --periods 8 --sources 4 --rows 1500 --seed 7 --languages en,fr".split()
        subprocess.run([tools.path("make-database"), path, *size], check=True, stdout=subprocess.DEVNULL)
    return path


def shown_pages(path):
    """The pages, counted from 0, of the tables with the texts of the shown language and of their indexes."""
    with contextlib.closing(sqlite3.connect(path)) as database:
        statement = "SELECT pageno - 1 FROM dbstat JOIN sqlite_master USING (name) WHERE lower(tbl_name) LIKE '%\\_en' ESCAPE '\\'"
        return [row[0] for row in database.execute(statement)]


def walk(tools, place, task, *arguments, seconds=60, **limits):
    command = [tools.path("walker"), tools.installation, place.files, task, *arguments]
    return sandbox.run(command, place.home, seconds, **limits)


def places(tools, clock, report):
    """One place after another with a good database in it, as (place, path of the database), until the time is over."""
    while not clock.over():
        place = Place(tools, report.name)
        path = os.path.join(place.files, "Kept.mdb")
        shutil.copy(small_database(tools), path)
        yield place, path
        place.remove()


def hostile_files(tools, clock, seed):
    """Every hostile database, opened and looked at whole."""
    report = Report("hostile", tools.patience)
    makers = list(hostile.MAKERS)
    random.Random(seed).shuffle(makers)
    for maker in makers:
        if clock.over():
            report.count("not reached")
            continue
        place = Place(tools, "hostile")
        path = os.path.join(place.files, "stranger.mdb")
        shutil.copy(small_database(tools), path)
        maker(path, place.outside)
        before = sandbox.fingerprint(place.outside)
        outcome = walk(tools, place, "look", path)
        report.take(outcome, maker.__name__)
        report.count("taken" if outcome.told("taken") or "taken" in outcome.lines else "refused")
        if sandbox.fingerprint(place.outside) != before:
            report.faults.append(f"{maker.__name__}: a file outside was changed")
        place.remove()
    return report


def _batches(tools, clock, report, batches):
    """Opens one batch of damaged files after another; each batch is (names, contents) pairs."""
    for batch in batches:
        if clock.over():
            return
        place = Place(tools, report.name)
        paths = []
        for name, content in batch:
            paths.append(os.path.join(place.files, name + ".mdb"))
            with open(paths[-1], "wb") as file:
                file.write(content)
        outcome = walk(tools, place, "open", *paths, seconds=20 + 8 * len(paths))
        opened = outcome.told("opening")
        report.take(outcome, os.path.basename(opened[-1]) if opened else "start")
        report.count("files", len(opened))
        report.count("taken", outcome.lines.count("taken"))
        place.remove()


def _in_batches(items, size=25):
    batch = []
    for item in items:
        batch.append(item)
        if len(batch) == size:
            yield batch
            batch = []
    if batch:
        yield batch


def truncations(tools, clock, seed):
    """The good database cut off at each page, in random order, and within pages."""
    report = Report("truncations", tools.patience)
    with open(small_database(tools), "rb") as file:
        content = file.read()
    chance = random.Random(seed)
    places = list(range(0, len(content), PAGE)) + [chance.randrange(len(content)) for _ in range(50)]
    chance.shuffle(places)
    _batches(tools, clock, report, _in_batches((f"cut-{place}", content[:place]) for place in places))
    return report


def changed_bytes(tools, clock, seed):
    """The good database with one to forty bytes changed: anywhere, within the first pages, or in the tables of the shown
    language."""
    report = Report("changed-bytes", tools.patience)
    with open(small_database(tools), "rb") as file:
        content = file.read()
    chance = random.Random(seed)
    zones = {"any": range(len(content) // PAGE), "first": range(8), "texts": shown_pages(small_database(tools))}

    def damaged():
        number = 0
        while True:
            number += 1
            copy = bytearray(content)
            zone = chance.choice(list(zones))
            for _ in range(chance.randint(1, 40)):
                copy[chance.choice(zones[zone]) * PAGE + chance.randrange(PAGE)] = chance.randrange(256)
            yield f"changed-{seed}-{number}-{zone}", bytes(copy)

    _batches(tools, clock, report, _in_batches(damaged()))
    return report


def statements(tools, clock, seed):
    """Random statements against the engine: a failed one leaves the file as it was."""
    report = Report("statements", tools.patience)
    place = Place(tools, "statements")
    program = [tools.path("random-statements"), place.files, str(seed), str(max(1, int(clock.left())))]
    outcome = sandbox.run(program, place.home, clock.left() + 60)
    report.take(outcome, f"seed {seed}")
    for line in outcome.told("statements"):
        report.count("statements", int(line))
    for line in outcome.told("failed"):
        report.count("of them failed as they should", int(line))
    place.remove()
    return report


def _broken_databases(folder):
    """Databases below the folder that the plain engine finds damaged."""
    broken = []
    for place, _, names in os.walk(folder):
        for name in names:
            path = os.path.join(place, name)
            if not stat.S_ISREG(os.lstat(path).st_mode):
                continue
            with open(path, "rb") as file:
                if file.read(16) != b"SQLite format 3\0":
                    continue
            with contextlib.closing(sqlite3.connect(path)) as database:
                try:
                    answer = database.execute("PRAGMA integrity_check").fetchone()[0]
                except sqlite3.DatabaseError as error:
                    answer = str(error)
            if answer != "ok":
                broken.append(f"{name}: {answer}")
    return broken


def kills(tools, clock, seed):
    """The program killed at a random moment of its work, and started again on the same home."""
    report = Report("kills", tools.patience)
    chance = random.Random(seed)
    for place, path in places(tools, clock, report):
        for _ in range(3):
            walk(tools, place, "look", path, kill_after=chance.uniform(0.1, 3.0))
            report.count("kills")
        for fault in _broken_databases(place.folder):
            report.faults.append(f"seed {seed}: {fault}")
        outcome = walk(tools, place, "open", path)
        report.take(outcome, "start after kills")
        if not outcome.fault(tools.patience) and "taken" not in outcome.lines:
            report.faults.append("start after kills: the database was refused")
    return report


def full_disk(tools, clock, seed):
    """No file may grow beyond a random size: every write can be the one that fails."""
    report = Report("full-disk", tools.patience)
    chance = random.Random(seed)
    for place, path in places(tools, clock, report):
        size = int(2 ** chance.uniform(6, 20))
        outcome = walk(tools, place, "look", path, largest_file=size)
        # A start that can't write its home may end with a message.
        if outcome.status == 1 and outcome.told("message"):
            report.count("starts refused with a message")
            outcome.status = 0
        report.take(outcome, f"largest file {size}")
        for fault in _broken_databases(place.files):
            report.faults.append(f"largest file {size}: {fault}")
    return report


STAGES = ("home", "frmIndicators", "frmTime", "frmAreas", "frmData")


def monkey(tools, clock, seed):
    """Presses at random on the frame."""
    report = Report("monkey", tools.patience)
    reached = set()
    for place, path in places(tools, clock, report):
        seconds = max(5, min(60, int(clock.left())))
        outcome = walk(tools, place, "monkey", str(seed), str(seconds), path, seconds=seconds + 60)
        report.take(outcome, f"seed {seed}")
        for line in outcome.told("acts"):
            report.count("acts", int(line))
        reached.update(outcome.told("reached"))
        seed += 1
    report.figures["places reached"] = len(reached)
    report.figures["reached: " + " ".join(sorted(reached))] = len(reached)
    report.faults += [f"{stage} was never reached" for stage in STAGES if stage not in reached]
    return report


ALL = {
    "hostile": hostile_files,
    "truncations": truncations,
    "changed-bytes": changed_bytes,
    "statements": statements,
    "kills": kills,
    "full-disk": full_disk,
    "monkey": monkey,
}
