#!/usr/bin/env python3
"""Takes the help file apart again: check_help_file.py <help file> <folder of its project>"""
import pathlib
import re
import struct
import subprocess
import sys
import tempfile

help_file, project = map(pathlib.Path, sys.argv[1:])
description = (project / "help.hhp").read_text()
topics = dict(re.findall(r"^IDH_(\d+)=(.*)$", description, re.MULTILINE))
with tempfile.TemporaryDirectory() as folder:
    subprocess.run(["chmls", "extractall", help_file, folder], check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    inside = {path.name: path.read_bytes() for path in pathlib.Path(folder).iterdir() if path.is_file()}
strings = inside["#STRINGS"]
contexts = struct.iter_unpack("<II", inside["#IVB"][4:])
found = {str(context): strings[at:strings.index(0, at)].decode() for context, at in contexts}

assert topics and found == {context: "/" + name for context, name in topics.items()}, found
for path in project.iterdir():
    assert path.suffix == ".hhp" or inside[path.name] == path.read_bytes(), path
for name, content in {**inside, help_file.name: help_file.read_bytes()}.items():
    assert not re.search(rb"/(tmp|home|build)/|" + str(project.resolve().parent).encode(), content), name
assert b"QM5R-FC PIR Configure Help\0" in strings and len(inside["#WINDOWS"]) > 8
