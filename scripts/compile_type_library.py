#!/usr/bin/env python3
"""Compiles an interface description to a type library. The same description gives the same library.

    compile_type_library.py <type library> <widl> [options of widl] <interface description>
"""
import pathlib
import re
import subprocess
import sys

UNTIMED = b"Thu Jan  1 00:00:00 1970"


def without_time(library):
    """Removes the compilation time, which widl stores as text and as seconds."""
    noted = re.compile(rb"(Created by WIDL version [0-9.]+ at ).{24}(\nW*\x13\x00).{4}", re.DOTALL)
    return noted.sub(lambda found: found[1] + UNTIMED + found[2] + bytes(4), library, count=1)


if __name__ == "__main__":
    result, compiler, *options = sys.argv[1:]
    subprocess.run([compiler, "-t", "-o", result, *options], check=True)
    file = pathlib.Path(result)
    file.write_bytes(without_time(file.read_bytes()))
