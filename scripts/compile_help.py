#!/usr/bin/env python3
"""Compiles the project of the help file. The same project gives the same file.

    compile_help.py <folder of the project> <help file>

The compiler stores the topics of context numbers with their full paths, and the viewer finds them only if these paths start
at the help file's root. So the compiler runs with the project's folder as its root directory, as root or in its own user
namespace.
"""
import hashlib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile


def compiler_files():
    """The compiler and the libraries that it loads, at its start and later."""
    compiler = shutil.which("chmcmd")
    if not compiler:
        sys.exit("chmcmd is missing (Debian package fp-utils)")
    lines = subprocess.run(["ldd", compiler], check=True, capture_output=True, text=True).stdout
    libraries = [pathlib.Path(path) for path in re.findall(r"(?:=> |^\s*)(/\S+)", lines, re.MULTILINE)]
    later = [path.with_name("libpthread.so.0") for path in libraries if path.name == "libc.so.6"]
    return pathlib.Path(compiler).resolve(), libraries + [path for path in later if path.exists()]


def with_fixed_times(content, stamp):
    """Replaces the compilation time in the header and in the system file."""
    content = content[:0x10] + stamp + content[0x14:]
    return re.sub(rb"(?s)(\x0a\x00\x04\x00).{4}(?=\x09\x00..HHA Version)", lambda found: found[1] + stamp, content, count=1)


def compile_help(project, result):
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        compiler, libraries = compiler_files()
        shutil.copytree(project, root, dirs_exist_ok=True)
        shutil.copy(compiler, root / "chmcmd")
        for library in libraries:
            copy = root / library.relative_to("/")
            copy.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(library, copy)
        (description,) = project.glob("*.hhp")
        command = [shutil.which("chroot", path="/usr/sbin:/sbin"), root, "/chmcmd", description.name]
        if os.geteuid() != 0:
            command = ["unshare", "--map-root-user", *command]
        done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace")
        compiled = root / result.name
        if done.returncode != 0 or not compiled.exists():
            sys.exit(f"{done.stdout}\nCompiling the help file failed with exit status {done.returncode}")
        sources = b"".join(path.name.encode() + path.read_bytes() for path in sorted(project.iterdir()))
        result.write_bytes(with_fixed_times(compiled.read_bytes(), hashlib.sha256(sources).digest()[:4]))


if __name__ == "__main__":
    compile_help(*map(pathlib.Path, sys.argv[1:3]))
