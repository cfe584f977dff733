#!/usr/bin/env python3
"""Tests of the checks of this folder: each case plants a fault that the check must name, or a good line that it must
pass."""

import sys
import tempfile
import unittest
import unittest.mock
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
sys.dont_write_bytecode = True
import check_floors
import check_programs

TABLE = """
| Floor | Room | Holds | May include |
|---|---|---|---|
| 3 | `top` | a | `middle` `ground` |
| 2 | `middle` | b | `ground` |
| 1 | `ground` | c | |
"""


class Floors(unittest.TestCase):
    def check(self, sources, table=TABLE):
        problems = []
        rooms = check_floors.read_table(table, problems)
        with tempfile.TemporaryDirectory() as folder:
            for name, text in sources.items():
                path = Path(folder) / name
                path.parent.mkdir(exist_ok=True)
                path.write_text(text, encoding="utf-8")
            check_floors.check_sources(Path(folder), rooms, problems)
        return problems

    def test_sources(self):
        cases = [
            ("down", {"top/a.cpp": '#include "middle/b.h"\n#include <vector>\n#include "ui_a.h"\n'}, None),
            ("own room", {"middle/a.cpp": '#include "middle/b.h"\n'}, None),
            ("main stands above", {"main.cpp": '#include "top/a.h"\n'}, None),
            ("up", {"ground/a.cpp": '\n#include "middle/b.h"\n'}, 'src/ground/a.cpp:2: ground must not include'),
            ("unknown room", {"top/a.cpp": '#include "cellar/b.h"\n'}, "lies in no room"),
            ("room without a row", {"cellar/a.cpp": ""}, "has no row"),
            ("no room", {"top/a.cpp": '#include "b.h"\n'}, "names no room"),
            ("circle of headers", {"top/a.h": '#include "top/b.h"\n', "top/b.h": '#  include "top/a.h"\n'},
             "top/a.h > top/b.h > top/a.h"),
        ]
        for name, sources, wanted in cases:
            with self.subTest(name):
                self.assertEqual([wanted in problem for problem in self.check(sources)], [True] if wanted else [])

    def test_named_files(self):
        """A file that the page names must be there, below the top folder or below src."""
        with tempfile.TemporaryDirectory() as folder:
            for name in ("src/top/a.h", "content/b.csv"):
                (Path(folder) / name).parent.mkdir(parents=True)
                (Path(folder) / name).write_text("")
            problems = []
            check_floors.check_named_files("`top/a.h` `content/b.csv`, `x`\n`top/gone.h`", Path(folder), problems)
            self.assertEqual(problems, ["docs/architecture.md:2: there is no top/gone.h"])

    def test_units(self):
        """A circle of headers with their sources counts where the room has none."""
        sources = {"middle/a.cpp": '#include "middle/a.h"\n#include "middle/b.h"\n', "middle/a.h": "",
                   "middle/b.h": '#include "middle/a.h"\n'}
        for untangled, wanted in (({"middle"}, ["middle/a > middle/b > middle/a"]), ({"top"}, [])):
            with unittest.mock.patch.object(check_floors, "UNTANGLED", untangled):
                found = self.check(sources)
                self.assertEqual([circle.split(": ")[1] for circle in found], wanted)

    def test_tables(self):
        cases = [
            ("arrow up", TABLE.replace("c | |", "c | `top` |"), "goes up"),
            ("unknown room", TABLE.replace("c | |", "c | `cellar` |"), "which has no row"),
            ("circle within a floor", TABLE.replace("| 2 |", "| 1 |").replace("c | |", "c | `middle` |"), "in a circle"),
            ("no table", "", "no table of rooms"),
        ]
        for name, table, wanted in cases:
            with self.subTest(name):
                self.assertTrue(any(wanted in problem for problem in self.check({}, table)))


class Programs(unittest.TestCase):
    def test_cpp(self):
        cases = [
            ('QProcess reader; reader.start(QStringLiteral("pdftotext"), {file});', ["pdftotext"]),
            ('QProcess::execute(\n    QStringLiteral("/usr/bin/python3"), {})', ["python3"]),
            ('process = std::make_unique<QProcess>(); process->start("gdb");', ["gdb"]),
            ('QProcess own; own.start(ProgramFolder() + QStringLiteral("/soffice.bin"), {});', ["soffice.bin"]),
            ('QProcess self; self.start(QCoreApplication::applicationFilePath(), {});', []),
            ('QProcess it; it.start(name, {});', ["? name, {});"]),
            ('popen("file -b x", "r")', ["file"]),
            ('const std::string make = "localedef -i " + name; std::system(make.c_str());', ["localedef"]),
            ("QElapsedTimer timer; timer.start();", []),
        ]
        for text, wanted in cases:
            with self.subTest(text):
                self.assertEqual(list(check_programs.programs_of_cpp(text)), wanted)

    def test_python(self):
        cases = [
            ('import subprocess\nsubprocess.run(["strace", "-f"])', ["strace"]),
            ('subprocess.check_output("soffice --version", shell=True)', ["soffice"]),
            ('shutil.which("mdb-tables")', ["mdb-tables"]),
            ("import json, xlrd.compdoc", ["xlrd"]),
            ("import check_floors", []),
            ("subprocess.run([sys.executable])", []),
        ]
        for text, wanted in cases:
            with self.subTest(text):
                self.assertEqual(list(check_programs.programs_of_python(text, {"check_floors"})), wanted)

    def test_shell(self):
        cases = [
            ("# curl\nset -e\nwget x | sha256sum", ["wget", "sha256sum"]),
            ('cd "$(dirname "$0")"; exec env A=1 valgrind build/release/bin/tessaro', ["dirname", "valgrind"]),
            ("if ! jq . file; then echo 'no; rsync'; fi", ["jq"]),
            ('echo "a; curl b"', []),
            ("tool() { :; }\ntool x && parallel y", ["parallel"]),
            ("screen=(xvfb-run -a)", ["xvfb-run"]),
        ]
        for text, wanted in cases:
            with self.subTest(text):
                self.assertEqual(list(check_programs.programs_of_shell(text)), wanted)

    def test_comparison(self):
        table = {"pdftotext": "poppler-utils", "sleep": "essential", "old": "old"}
        faults = list(check_programs.compare({"pdftotext": ["a"], "sleep": ["b"], "curl": ["c"]}, table, {"old"}))
        self.assertEqual(len(faults), 3, faults)
        for wanted, fault in zip(["c: calls curl", "does not install poppler-utils", "nothing calls old"], faults):
            self.assertIn(wanted, fault)

    def test_setup(self):
        self.assertEqual(check_programs.packages_of("x=1\npackages=(\n  a b\n  c\n)\n"), {"a", "b", "c"})


if __name__ == "__main__":
    unittest.main()
