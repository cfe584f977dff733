#!/usr/bin/env python3
"""Tests of the string checker: each case plants one fault that a translator or a programmer could leave behind."""

import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "content"))
sys.dont_write_bytecode = True
import check_strings


def row(key="Key", module="shell", **texts):
    cells = {column: "text" for column in check_strings.COLUMNS}
    return cells | {"VariableName": key, "ModuleID": module} | texts


class TableFaults(unittest.TestCase):
    def test_faults_of_rows(self):
        cases = [
            ("empty cell", [row(French="")], "French is empty"),
            ("blanks only", [row(Arabic="  ")], "Arabic is empty"),
            ("stray blank", [row(Spanish="text ")], "begins or ends with a blank"),
            ("ellipsis", [row(Russian="text\u2026")], "single-character ellipsis"),
            ("unknown module", [row(module="Shell")], "unknown module"),
            ("same key, other case", [row("OK"), row("Ok")], "the same key as OK"),
            ("lost placeholder",
             [row(English="%1 of %2", French="%1", Spanish="%2 %1", Arabic="%1 %2", Russian="%1 %2")],
             "French has other placeholders"),
            ("two mnemonics", [row(English="&a&b")], "more than one mnemonic"),
            ("mnemonic of a translation only", [row(French="te&xt")], "English has none"),
            ("key with a blank behind", [row("Key ")], "not a usable key"),
        ]
        for name, rows, wanted in cases:
            with self.subTest(name):
                problems = []
                check_strings.check_table(rows, problems)
                self.assertEqual([wanted in problem for problem in problems], [True], problems)

    def test_good_row_has_no_fault(self):
        problems = []
        good = row(English="&Save %1...", French="&Garder %1...", Spanish="%1", Arabic="%1", Russian="%1")
        check_strings.check_table([good], problems)
        self.assertEqual(problems, [])

    def test_menu_with_one_letter_twice(self):
        names = {name for menu in check_strings.MENUS.values() for name in menu.split()}
        rows = [row(name, English="&File" if name in ("mnu_File_New", "mnu_File_Open") else "text") for name in names]
        problems = []
        check_strings.check_menus(rows, problems)
        self.assertEqual(len(problems), 1, problems)
        self.assertIn("share 'F'", problems[0])


class DeadKeys(unittest.TestCase):
    def test_keys_that_nothing_names(self):
        rows = [row("TS_Shown"), row("TS_Show"), row("TS_OnPage"), row("mnu_Built"), row("TS_Later", "map")]
        problems = []
        check_strings.check_dead(rows, ['GetText("TS_Shown")', "<p>{TS_OnPage}</p>"], problems)
        self.assertEqual(problems, ["TS_Show: nothing shows this text"])


class KeysInSources(unittest.TestCase):
    def test_calls(self):
        cases = [
            ('GetText("A key")', ["A key"]),
            ('SetCaption(Find(form, "x, y)"), QStringLiteral("B"));', ["B"]),
            ('ShowMessage("034", MessageType::YesNo, 104)', ["034"]),
            ('LookupString(QLatin1String(\n    "C"))', ["C"]),
            ('{"frmTime", "TS_TimePeriods"}', ["TS_TimePeriods"]),
            ('GetText("as it is", true)', []),
            ('ShowMessage("as it is", MessageType::Ok, 103, {}, false)', []),
            ('GetText(key) + "no key"', []),
            ('GetText("cut off', []),
        ]
        for text, wanted in cases:
            with self.subTest(text):
                self.assertEqual(list(check_strings.keys_in(text)), wanted)


if __name__ == "__main__":
    unittest.main()
