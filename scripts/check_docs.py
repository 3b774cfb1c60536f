#!/usr/bin/env python3
"""Checks the names in the documents of this project.

    check_docs.py

Files in links, pictures and code with a "/" must exist in the project's root, in the document's folder, or in src/, there
also without extension. Build results (build/...) are not checked. Headings in links must exist, every picture in
docs/pictures must be shown, and blocks of code must be marked sh, json or text. The programs, subcommands, options, presets
and targets of commands must exist. tests/documents runs the commands that can be run.
"""
import json
import pathlib
import re
import sys

import documents
import usage
from documents import ROOT

NAME = re.compile(r"`([\w.-][\w./-]*/[\w./-]*)`|\]\(([^)#:]*)(?:#([^)]*))?\)")
# Programs of the system, whose arguments are not checked.
FOREIGN = {"apt-get", "cat", "msiexec", "osslsigncode", "set", "mv"}


def texts(*patterns):
    return "\n".join(path.read_text(encoding="utf-8") for pattern in patterns for path in sorted(ROOT.glob(pattern)))


DIRECTOR = texts("src/director/*.cpp")
QM5R = texts("src/qm5r/*.cpp")
# Switches of the programs that COM starts.
SWITCHES = texts("src/startup/*.cpp", "src/windows/com/*.cpp", "src/windows/programs/simulator.cpp").lower()
BUILD = texts("CMakeLists.txt", "*/CMakeLists.txt", "src/**/CMakeLists.txt", "tests/**/CMakeLists.txt")
PRESETS = json.loads((ROOT / "CMakePresets.json").read_text())


def exists(name, folder):
    places = [ROOT / name, folder / name, ROOT / "src" / name]
    places += [ROOT / "src" / (name + ending) for ending in (".h", ".cpp")]
    return name.startswith("build/") or any(place.exists() for place in places)


def anchors(document):
    for line in document.read_text(encoding="utf-8").splitlines():
        if line.startswith("#"):
            yield re.sub(r"[^\w -]", "", line.lstrip("# ").lower()).replace(" ", "-")


def missing_names(document, line):
    for match in NAME.finditer(line):
        name = match.group(1) or match.group(2)
        if name and not exists(name, document.parent):
            yield f"{name} does not exist"
        elif match.group(3) and match.group(3) not in anchors(document.parent / name if name else document):
            yield f"{name or document.name} has no heading {match.group(3)}"


def quoted(word, source):
    return re.search(rf'[",]{re.escape(word)}[",]', source)


def console_findings(program, source, words):
    place = None
    for word in words:
        if word.startswith("-") and not re.fullmatch(r"-?\d+", word):
            if word != "--help" and not quoted(word, source):
                yield f"{program} has no option {word}"
        elif place is None or (place == "fault" and word in ("add", "clear", "vanish", "restore", "list")):
            place = word
            # In the text, capitals are placeholders.
            if not word.isupper() and not quoted(word, source):
                yield f"{program} has no command {word}"


def switch_findings(words):
    for word in words:
        name = word[1:].lower()
        if re.match(r"[/-]\w", word) and f'"{name}"' not in SWITCHES and f"/{name}\"" not in SWITCHES:
            yield f"switch {word} does not exist"


def cmake_findings(words):
    kind = {"cmake": "configurePresets", "ctest": "testPresets"}[words[0]]
    if "--build" in words:
        kind = "buildPresets"
    known = [preset["name"] for preset in PRESETS[kind] if not preset.get("hidden")]
    for option, value in zip(words, words[1:]):
        if option == "--preset" and value not in known:
            yield f"{kind} has no {value}"
        if option == "--target" and not re.search(rf"\b{re.escape(value)}\b", BUILD):
            yield f"target {value} does not exist"


def script_findings(script, words):
    path = ROOT / script
    if not path.exists() or not path.stat().st_mode & 0o100:
        yield f"{script} is not executable"
        return
    source = path.read_text()
    for word in words[:words.index("--") if "--" in words else None]:
        # Numbers, paths, capitals and brackets are placeholders.
        if re.fullmatch(r"--?[a-z][\w-]*|[a-z]+", word) and word != "--help" and not re.search(rf"\b{word}\b", source):
            yield f"{script} has no argument {word}"


def command_findings(words):
    """Findings in one simple command."""
    program = words[0]
    if program.endswith("scripts/in-wine") and len(words) > 1 and words[1].endswith(".exe"):
        yield from command_findings(words[1:])
    elif program.split("/")[-1] == "director.exe":
        yield from console_findings("the director", DIRECTOR, words[1:])
    elif program.split("/")[-1] in ("qm5r", "qm5r.exe"):
        yield from console_findings("qm5r", QM5R, words[1:])
    elif program in ("LnsSimulator.exe", "QM5RFcPirConfigure.exe") or re.fullmatch(r"/(de|un)?reg\w+", program):
        yield from switch_findings(words)
    elif program in ("cmake", "ctest"):
        yield from cmake_findings(words)
    elif re.match(r"(\./|scripts/)[\w-]", program):
        yield from script_findings(program, words[1:])
    elif program.startswith("build/"):
        if not re.search(rf"\b{program.split('/')[-1]}\b", BUILD):
            yield f"no build target makes {program}"
    elif program not in FOREIGN:
        yield f"unknown program {program}"


def looks_like_command(code):
    return re.match(r"(\./|scripts/[\w-]+(?![\w.-])|director\.exe |qm5r |LnsSimulator\.exe |QM5RFcPirConfigure\.exe |"
                    r"/(de|un)?reg\w+|(cmake|ctest) -)", code)


def document_findings(document):
    for number, line in enumerate(document.read_text(encoding="utf-8").splitlines(), 1):
        for finding in missing_names(document, line):
            yield number, finding
        for code in re.findall(r"`([^`]+)`", line):
            if looks_like_command(code):
                for finding in command_findings(documents.words_of(code)):
                    yield number, finding
            elif re.match(r"--[a-z]", code) and not quoted(code.split()[0], DIRECTOR + QM5R) and code != "--help":
                yield number, f"no program has the option {code}"
    for block in documents.blocks(document):
        if block.language not in ("sh", "json", "text"):
            yield block.number, "this block of code is not marked sh, json or text"
        if block.language == "json":
            try:
                json.loads(block.text if block.text.startswith("{") else "{" + block.text + "}")
            except ValueError as error:
                yield block.number, f"invalid JSON: {error}"
        if block.language == "sh":
            for number, command in block.commands():
                for words in documents.simple_commands(command):
                    for finding in command_findings(words):
                        yield number, finding


def unshown_pictures():
    shown = texts("*.md", "docs/*.md")
    return [path for path in sorted((ROOT / "docs/pictures").iterdir()) if path.name not in shown]


def main():
    usage.arguments(__doc__, 0, 0)
    findings = [f"{document.relative_to(ROOT)}:{number}: {finding}" for document in documents.documents()
                for number, finding in document_findings(document)]
    findings += [f"{path.relative_to(ROOT)}: no document shows it" for path in unshown_pictures()]
    print("\n".join(findings), file=sys.stderr, end="\n" if findings else "")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
