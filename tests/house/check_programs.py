#!/usr/bin/env python3
"""Finds the programs that tests, tools and the commands of the top folder call, and the Python modules that they
import, and compares them with programs.csv (program, Debian package) and with the packages of tools/setup.sh. What is
not in the table, or whose package the set-up does not install, is a fault: on a bare machine it would be missing.

In the table "essential" stands for what every Debian system has."""

import ast
import csv
import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
COMMANDS = ["run", "test", "bench", ".ci/run"]
FOLDERS = ["tests", "tools", "benchmarks", "content", "packaging"]

# C++: a process object, and what is called on it or on its class.
PROCESS = re.compile(r"\b(?:QProcess|std::unique_ptr<QProcess>)\s+(\w+)\s*[;({=]")
MADE = re.compile(r"\b(\w+)\s*=\s*std::make_unique<QProcess>")
LITERAL = re.compile(r'^\s*(?:(?:QStringLiteral|QLatin1String|QString)\s*\(\s*)?"([^"]+)"')
TAIL = re.compile(r'\+\s*(?:QStringLiteral|QLatin1String)\s*\(\s*"/([\w.-]+)"')
OWN = re.compile(r"applicationFilePath|TESSARO_\w+|\bself\b")  # programs of the build
PIPE = re.compile(r"\b(?:popen|std::system|execlp|execvp)\s*\(([^;]*)")

# Shell: words that a command may follow.
BEFORE = {"!", "then", "do", "else", "elif", "if", "while", "until", "exec", "{", "time"}
BUILTIN = set("[ [[ : . cd echo eval exit export false fi done esac case for function local printf read return set "
              "shift source test trap true unset wait in }".split())
WRAPPER = {"env", "nice", "sudo", "timeout", "xargs"}


def programs_of_cpp(text):
    """The programs that a source starts. A call whose program can't be told is given as "?" with its text."""
    objects = "|".join(PROCESS.findall(text) + MADE.findall(text))
    call = r"QProcess::(?:execute|startDetached)\("
    if objects:
        call += rf"|\b(?:{objects})(?:\.|->)(?:start|execute|startDetached|setProgram)\("
    for found in re.finditer(call, text):
        arguments = text[found.end():found.end() + 200]
        if re.match(r"\s*\)", arguments):  # the program was named by setProgram
            continue
        literal, tail = LITERAL.match(arguments), TAIL.search(arguments.split(",")[0])
        if literal:
            yield literal.group(1).rsplit("/", 1)[-1]
        elif tail:
            yield tail.group(1)
        elif not OWN.search(arguments.split(";")[0]):
            yield "? " + arguments.split("\n")[0]
    for found in PIPE.finditer(text):
        word = re.match(r'\s*"\s*([\w./-]+)', found.group(1)) or first_value(text, found.group(1))
        if word:
            yield word.group(1).rsplit("/", 1)[-1]
        elif not OWN.search(found.group(1)):
            yield "? " + found.group(1)


def first_value(text, argument):
    """The first word of the text that a variable begins with, when the argument begins with a variable."""
    variable = re.match(r"\s*(\w+)", argument)
    return variable and re.search(rf'\b{variable.group(1)}\s*[=({{]\s*"([\w./-]+)', text)


def programs_of_python(text, own_modules):
    """The programs that a script starts by subprocess or looks for, and the modules that Python does not bring."""
    for node in ast.walk(ast.parse(text)):
        if isinstance(node, ast.Import):
            names = [alias.name for alias in node.names]
        elif isinstance(node, ast.ImportFrom):
            names = [node.module or ""]
        else:
            names = []
            if isinstance(node, ast.Call) and isinstance(node.func, ast.Attribute) and node.args:
                owner = getattr(node.func.value, "id", "")
                if owner == "subprocess" or (owner, node.func.attr) in {("shutil", "which"), ("os", "system")}:
                    yield from first_words(node.args[0])
        for name in names:
            module = name.split(".")[0]
            if module and module not in sys.stdlib_module_names and module not in own_modules:
                yield module


def first_words(argument):
    """The program in the first argument of a call: of a list its first element, of a text its first word."""
    if isinstance(argument, (ast.List, ast.Tuple)) and argument.elts:
        argument = argument.elts[0]
    if isinstance(argument, ast.Constant) and isinstance(argument.value, str):
        yield argument.value.split()[0].rsplit("/", 1)[-1]


def programs_of_shell(text):
    """The first word of each command of a script, and the command behind a wrapper such as env."""
    text = re.sub(r"\\\n", " ", text)
    functions = set(re.findall(r"^\s*(?:function\s+)?(\w+)\s*\(\)", text, re.MULTILINE))
    text = re.sub(r"^(\w+)=\(\n.*?^\)", "", text, flags=re.MULTILINE | re.DOTALL)  # arrays over several lines
    for line in text.splitlines():
        if line.lstrip().startswith("#"):
            continue
        line = re.sub(r"'[^']*'", "''", line)
        line = re.sub(r"\$\{[^}]*\}", "$", line)
        line = re.sub(r'"([^"]*)"', lambda text: "_" if " " in text.group(1) and "$(" not in text.group(1)
                      else text.group(1), line)
        line = re.sub(r"\b\w+\+?=\(", "", line)  # the command that an array holds
        for part in re.split(r"\$\(|`|&&|\|\||[;|()]|\s&\s", line):
            yield from command_of(part.split(), functions)


def command_of(words, functions):
    for place, word in enumerate(words):
        word = word.strip('"')
        if word in BEFORE or word == "$" or re.match(r"^\w+\+?=", word):
            continue
        if word in WRAPPER:
            yield from command_of([rest for rest in words[place + 1:] if not rest.startswith("-")], functions)
        elif re.fullmatch(r"[\w./][\w./-]*", word) and re.search("[a-z]", word) and word not in BUILTIN | functions:
            if not word.startswith("build/"):  # what the build makes
                yield word.rsplit("/", 1)[-1] if word.startswith("/") else word
        return


def programs_of_cmake(text):
    """The programs that the build looks for, and those that tests are run by."""
    yield from re.findall(r"find_program\s*\(\s*\w+\s+([\w.-]+)", text)
    yield from (word.rsplit("/", 1)[-1] for word in re.findall(r"COMMAND\s+([^\s)]+)", text)
                if not word.startswith(("${CMAKE_COMMAND}", "$<", "Python3::")))


def kind_of(path, text):
    if path.suffix in {".cpp", ".h", ".py"}:
        return path.suffix[1:].replace("h", "cpp") if path.suffix != ".py" else "py"
    if path.name == "CMakeLists.txt" or path.suffix == ".cmake":
        return "cmake"
    return "sh" if path.suffix == ".sh" or re.match(r"#!.*\b(?:ba)?sh\b", text) else ""


def calls(root):
    """All programs that are called, each with the files that call it."""
    files = [root / name for name in COMMANDS]
    for folder in [*FOLDERS, "cmake"]:
        files += [path for path in sorted((root / folder).rglob("*")) if path.is_file()]
    files.append(root / "src" / "CMakeLists.txt")
    own = {path.stem for path in files if path.suffix == ".py"}
    targets, found = set(), {}
    for path in files:
        try:
            text = path.read_text(encoding="utf-8")
        except (UnicodeDecodeError, FileNotFoundError):
            continue
        kind = kind_of(path, text)
        if kind == "cmake":
            targets |= set(re.findall(r"add_executable\s*\(\s*([\w-]+)", text))
            targets |= {"test_" + name for name in re.findall(r"tessaro_test\s*\(\s*(\w+)", text)}
        programs = {"cpp": programs_of_cpp, "sh": programs_of_shell, "cmake": programs_of_cmake,
                    "py": lambda source: programs_of_python(source, own)}.get(kind)
        for program in programs(text) if programs else ():
            found.setdefault(program, []).append(path.relative_to(root).as_posix())
    return {program: where for program, where in found.items() if program not in targets and not (root / program).is_file()}


def packages_of(setup):
    """The packages that the set-up installs."""
    listed = re.search(r"^packages=\((.*?)^\)", setup, re.MULTILINE | re.DOTALL)
    return set(listed.group(1).split()) if listed else set()


def compare(found, table, packages):
    """One line for each program that the table lacks, each package that the set-up lacks, each row that nothing uses."""
    for program, where in sorted(found.items()):
        if program not in table:
            yield f"{where[0]}: calls {program}, which tests/house/programs.csv does not know"
        elif table[program] not in packages | {"essential"}:
            yield f"{where[0]}: calls {program}, but tools/setup.sh does not install {table[program]}"
    for program in sorted(set(table) - set(found)):
        yield f"tests/house/programs.csv: nothing calls {program}"


def main():
    with open(ROOT / "tests" / "house" / "programs.csv", encoding="utf-8", newline="") as file:
        table = {row["program"]: row["package"] for row in csv.DictReader(file)}
    packages = packages_of((ROOT / "tools" / "setup.sh").read_text(encoding="utf-8"))
    found = calls(ROOT)
    problems = list(compare(found, table, packages))
    for problem in problems:
        print(problem, file=sys.stderr)
    print(f"{len(found)} programs and modules, {len(packages)} packages, {len(problems)} problems")
    return 1 if problems or not found else 0


if __name__ == "__main__":
    sys.exit(main())
