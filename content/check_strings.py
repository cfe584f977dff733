#!/usr/bin/env python3
"""Checks the texts of the installation: the string table's form, mnemonics and placeholders, that every key the code
asks for is in it, that nothing is translated that no screen shows, and that every document exists in every language."""

import csv
import re
import sys
from collections import Counter
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
STRINGS = ROOT / "content" / "strings.csv"
LANGUAGES = ROOT / "content" / "languages.csv"
DOCUMENTS = ROOT / "content" / "documents"

COLUMNS = ["VariableName", "ModuleID", "English", "French", "Spanish", "Arabic", "Russian"]
MODULES = {"shell", "selection", "dataview", "calculate", "presentation", "map", "gallery", "exchange"}
COMING_MODULES = {"calculate", "map"}  # their screens are still to be built, their texts are translated already
LANGUAGE_COLUMNS = ["LangID", "LangCode", "FontCharset", "Locale", "FontName", "FontSize"]

# The keys that stand together in one menu: no two of them may share a mnemonic.
MENUS = {
    "file":
        "mnu_File_New mnu_File_Open Comm_Save mnu_File_SaveAs PRINT_BUTTON mnu_File_ImportExport "
        "TS_UndoImport mnu_File_Properties mnu_File_Exit",
    "edit": "mnu_Edit_Cut mnu_Edit_Copy mnu_Edit_Paste mnu_Edit_SelectAll mnu_Edit_Find",
    "view": "mnu_View_ToolBars mnu_View_StatusBar",
    "toolbars": "mnu_View_ToolBars_StandardBtn mnu_View_ToolBars_AddressBar",
    "tools": "FP_LBL_GALL_CAPTION mnuDBSummReport",
    "gallery": "mnu_Presentations FP_LBL_GALL_OPTION2_CAPTION FP_LBL_GALL_OPTION3_CAPTION",
    "help": "mnu_Help_Content mnu_Help_Tour mnu_Help_Helpdesk mnu_Help_About",
    "available":
        "mnu_Edit_SelectAll mnu_popIndicatorsAvl_SelectHighlighted TS_ShowCount "
        "mnu_popDataSources_SelectRecommended",
    "selected":
        "mnu_popDataSort_ClearAll mnu_popDataSort_ClearHighlighted TS_ShowCount mnu_DataView_ViewDetails "
        "PRINT_BUTTON COMM_EXCEL_FILE mnu_popIndicatorsSel_Sort",
    "data":
        "mnu_DataView_Delete mnu_DataView_UndeleteAll TS_ShowCount mnu_DataView_ViewDetails PRINT_BUTTON "
        "mnu_DataView_Indicator mnu_DataView_Source",
    "sort":
        "mnu_popDataSort_Ascending mnu_popDataSort_Descending mnu_popDataSort_ClearAll "
        "mnu_popDataSort_ClearHighlighted TS_ShowCount PRINT_BUTTON",
    "bar and selection buttons":
        "mnu_File TLB_EDIT View TLB_FAVORITES mnu_Tools Home_Information FP_LBL_HELP_CAPTION "
        "TS_Add TS_AddAll TS_Remove TS_RemoveAll TS_AutoSelect TS_AutoSelectAvailable",
    "wizard buttons": "CANCEL_BUTTON Comm_Back COMM_NEXT TS_Finish",
    "filters": "AutoUseSelTime AutoUseSelAreas AutoUseSelInd DoNotAsk",
    "content": "PROP_DB_DATA_EXISTS PROP_DB_ALL_DATA",
    "question": "Yes No CANCEL_BUTTON",
    "missing file": "Locate Ignore",
}

# The calls whose key is a literal, and the place of the key among the arguments.
KEY_CALLS = {"GetText": 0, "LookupString": 0, "ShowMessage": 0, "PlainText": 0, "SetCaption": 1, "SetToolTip": 1}
CALL = re.compile(r"\b(" + "|".join(KEY_CALLS) + r")\s*\(")
LITERAL = re.compile(r'^(?:u|u8|L)?"((?:[^"\\]|\\.)*)"(?:_[A-Za-z]\w*)?$', re.DOTALL)
WRAPPER = re.compile(r"^(?:QStringLiteral|QString|QLatin1String|QLatin1StringView)\s*\((.*)\)$", re.DOTALL)
WORD = re.compile(r"\w+")
OWN_KEY = re.compile(r'"(TS_[A-Z]\w+)"')
MNEMONIC = re.compile(r"&(?!&)(\w)")
PLACEHOLDER = re.compile(r"%(?:\d+|[a-z])")


def read(path, columns, problems):
    """Gives the rows of a table that have the right number of cells, and notes the others."""
    rows = []
    with open(path, encoding="utf-8", newline="") as file:
        reader = csv.reader(file, strict=True)
        head = next(reader, [])
        if head != columns:
            problems.append(f"{path.name}: the head is {head}")
        for cells in reader:
            if len(cells) != len(columns):
                problems.append(f"{path.name}:{reader.line_num}: {len(cells)} cells instead of {len(columns)}")
            else:
                rows.append(dict(zip(columns, cells)))
    return rows


def check_row(row, problems):
    """A row's cells: none empty, none with stray blanks, no final ellipsis, the same placeholders everywhere."""
    key = row["VariableName"]
    if row["ModuleID"] not in MODULES:
        problems.append(f"{key}: unknown module {row['ModuleID']!r}")
    wanted = Counter(PLACEHOLDER.findall(row["English"]))
    for column in COLUMNS[2:]:
        text = row[column]
        if not text.strip():
            problems.append(f"{key}: {column} is empty")
        elif text != text.strip():
            problems.append(f"{key}: {column} begins or ends with a blank")
        if text.endswith(("\u2026", "\u0085")):
            problems.append(f"{key}: {column} ends in a single-character ellipsis")
        if len(MNEMONIC.findall(text)) > 1:
            problems.append(f"{key}: {column} has more than one mnemonic")
        if MNEMONIC.search(text) and not MNEMONIC.search(row["English"]):
            problems.append(f"{key}: {column} has a mnemonic, English has none")
        if Counter(PLACEHOLDER.findall(text)) != wanted:
            problems.append(f"{key}: {column} has other placeholders than English")


def check_table(rows, problems):
    seen = {}
    for row in rows:
        key = row["VariableName"]
        if not key.strip() or key != key.strip():
            problems.append(f"{key!r}: not a usable key")
        elif key.lower() in seen:
            problems.append(f"{key}: the same key as {seen[key.lower()]}, ignoring case")
        seen[key.lower()] = key
        check_row(row, problems)
    return seen


def check_menus(rows, problems):
    """Every key of a menu exists, and its mnemonics differ."""
    texts = {row["VariableName"].lower().replace(" ", "_"): row for row in rows}
    for menu, names in MENUS.items():
        for column in COLUMNS[2:]:
            taken = {}
            for name in names.split():
                row = texts.get(name.lower())
                found = MNEMONIC.search(row[column]) if row else None
                if row is None:
                    problems.append(f"menu {menu}: {name} is not in the string table")
                elif found and found.group(1).lower() in taken:
                    other = taken[found.group(1).lower()]
                    problems.append(f"menu {menu}, {column}: {name} and {other} share {found.group(1)!r}")
                elif found:
                    taken[found.group(1).lower()] = name


def check_languages(problems):
    """Every language of the strings has its row, and the other way round."""
    rows = read(LANGUAGES, LANGUAGE_COLUMNS, problems)
    for row in rows:
        for column in LANGUAGE_COLUMNS:
            if not row[column].strip():
                problems.append(f"{row['LangID']}: {column} is empty")
        for column in ("FontCharset", "Locale", "FontSize"):
            if not row[column].isdigit():
                problems.append(f"{row['LangID']}: {column} is no number")
        if not re.fullmatch(re.escape(row["LangID"]) + r" \[[a-z]{2}\]", row["LangCode"]):
            problems.append(f"{row['LangID']}: {row['LangCode']!r} is not the name with its code")
    if [row["LangID"] for row in rows] != COLUMNS[2:]:
        problems.append("the languages are not those of the string table")
    return [row["LangCode"].translate(str.maketrans("", "", "[]")) for row in rows]


def check_documents(languages, problems):
    """Every document has one file a language, named by the language without its brackets."""
    for folder in sorted(DOCUMENTS.iterdir()):
        if folder.name == "Bin" or folder.is_file():  # one document for all languages
            continue
        check_captions(folder, problems)
        wanted = {f"{folder.name} {language}.htm" for language in languages}
        found = {path.name for path in folder.iterdir()}
        problems.extend(f"documents/{folder.name}: {name} is missing or not wanted" for name in sorted(wanted ^ found))


def check_captions(folder, problems):
    """The languages of a page name the same captions and keys, and have the same number of sections. The content
    builder checks that these exist."""
    pages = {path.name: path.read_text(encoding="utf-8") for path in sorted(folder.glob("*.htm"))}
    first = next((text for name, text in pages.items() if name.endswith(" en.htm")), "")
    for name, text in pages.items():
        for what, pattern in (("captions", r"\{+[^{}]+\}+"), ("tags", r"</?(?!bdi)\w+")):
            wanted, found = Counter(re.findall(pattern, first)), Counter(re.findall(pattern, text))
            other = sorted(set((wanted - found) + (found - wanted)))
            if other:
                problems.append(f"documents/{name}: other {what} than the English page: {', '.join(other)}")


def arguments(text, start):
    """The arguments of the call whose bracket opens before `start`."""
    depth, begin, found, at, quoted = 1, start, [], start, False
    while at < len(text) and depth:
        letter = text[at]
        if quoted:
            if letter == "\\":
                at += 1
            elif letter == '"':
                quoted = False
        elif letter == '"':
            quoted = True
        elif letter in "([{":
            depth += 1
        elif letter in ")]}":
            depth -= 1
        if not quoted and ((letter == "," and depth == 1) or depth == 0):
            found.append(text[begin:at].strip())
            begin = at + 1
        at += 1
    return found


def literal(argument):
    """The text of an argument that is a literal, wrapped or not; None for any other expression."""
    wrapped = WRAPPER.match(argument)
    found = LITERAL.match(wrapped.group(1).strip() if wrapped else argument)
    return found.group(1) if found else None


def keys_in(text):
    """The literal keys that a source asks for. A text passed as such (isLiteral, isKey false) is no key. Keys of the
    screens' own texts tell themselves by their prefix, so those in tables of captions are found too."""
    yield from OWN_KEY.findall(text)
    for call in CALL.finditer(text):
        name, found = call.group(1), arguments(text, call.end())
        place = KEY_CALLS[name]
        if name == "GetText" and len(found) > 1 and found[-1] == "true":
            continue
        if name == "ShowMessage" and len(found) == 5 and found[-1] == "false":
            continue
        if len(found) > place:
            key = literal(found[place])
            if key:
                yield key


def check_use(keys, folder, problems):
    count = 0
    for path in sorted(folder.rglob("*")):
        if path.suffix not in {".cpp", ".h"}:
            continue
        for key in keys_in(path.read_text(encoding="utf-8")):
            count += 1
            if key.lower() not in keys:
                problems.append(f"{path.relative_to(ROOT)}: the key {key!r} is not in the string table")
    return count


def check_dead(rows, texts, problems):
    """Every key of our own is named in one of the texts: a source or a document."""
    named = {word for text in texts for word in WORD.findall(text)}
    problems.extend(f"{row['VariableName']}: nothing shows this text" for row in rows
                    if row["VariableName"].startswith("TS_") and row["ModuleID"] not in COMING_MODULES
                    and row["VariableName"] not in named)


def texts_of(*folders):
    """The contents of all sources and documents below the folders."""
    for folder in folders:
        for path in sorted(folder.rglob("*")):
            if path.suffix in {".cpp", ".h", ".htm"}:
                yield path.read_text(encoding="utf-8")


def main():
    problems = []
    rows = read(STRINGS, COLUMNS, problems)
    keys = check_table(rows, problems)
    check_menus(rows, problems)
    check_documents(check_languages(problems), problems)
    used = check_use(keys, ROOT / "src", problems)
    check_dead(rows, texts_of(ROOT / "src", DOCUMENTS), problems)
    for problem in problems:
        print(problem, file=sys.stderr)
    print(f"{len(rows)} keys, {used} literal uses in the code, {len(problems)} problems")
    return 1 if problems or not rows else 0


if __name__ == "__main__":
    sys.exit(main())
