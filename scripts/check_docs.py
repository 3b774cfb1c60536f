#!/usr/bin/env python3
"""Checks that every path which a document of this project names exists.

A name is a link, or code with a "/" in it. It is looked up from the project's root, from the document's folder and from
src/, there also without its ending. Command-line switches and what a build makes (build/...) are not looked up.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
NAME = re.compile(r"`([\w.-][\w./-]*/[\w./-]*)`|\]\(([^)#:]+)(?:#[^)]*)?\)")


def exists(name, folder):
    places = [ROOT / name, folder / name, ROOT / "src" / name]
    places += [ROOT / "src" / (name + ending) for ending in (".h", ".cpp")]
    return name.startswith("build/") or any(place.exists() for place in places)


def main():
    documents = [path for folder in (".", "docs", "help") for path in sorted((ROOT / folder).glob("*.md"))]
    missing = 0
    for document in documents:
        for number, line in enumerate(document.read_text(encoding="utf-8").splitlines(), 1):
            for match in NAME.finditer(line):
                name = match.group(1) or match.group(2)
                if not exists(name, document.parent):
                    missing += 1
                    print(f"{document.relative_to(ROOT)}:{number}: there is no {name}", file=sys.stderr)
    return 1 if missing or not documents else 0


if __name__ == "__main__":
    sys.exit(main())
