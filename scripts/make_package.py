#!/usr/bin/env python3
"""Builds the installation package of one build tree and prints its path.

    make_package.py <folder of the programs> <folder of the packages>

Version and architecture are those of the program. They determine the package's codes, so a version is the same product
wherever it is built. The same programs of the same commit produce the same package, byte for byte.

If the environment variable QM5R_SIGN contains a command, it signs each program file before packing, and the package at the
end. The command gets the file's path as its last argument and signs the file in place.
"""
import hashlib
import os
import pathlib
import re
import shlex
import shutil
import struct
import subprocess
import sys
import tempfile
import time
import uuid

import check_package
import make_icon
import usage

PACKAGING = pathlib.Path(__file__).resolve().parent.parent / "packaging"
LICENSE = PACKAGING.parent / "LICENSE"
PROGRAM = "QM5RFcPirConfigure.exe"
COMMAND_LINE = "qm5r.exe"
ACTIONS = "QM5RInstallerActions.dll"
HELP = "QM5R-FCConfigure.chm"
DOCUMENTS = {
    "readme.txt": PACKAGING / "readme.txt",
    "notices.txt": PACKAGING / "notices.txt",
    "settings.txt": PACKAGING.parent / "docs/settings.md",
}
LINK = re.compile(r"\[([^]]+)\]\([^)]+\)")  # in Markdown
# Never change it: Windows Installer finds installed packages by it.
UPGRADE_CODE = uuid.UUID("61FC5648-8CDA-4714-9E5B-BB34EA942ADE")
ARCHITECTURES = {
    0x014C: {"name": "x86", "template": "Intel;1033", "folder": "ProgramFilesFolder", "win64": "no", "tools": "i686"},
    0x8664: {"name": "x64", "template": "x64;1033", "folder": "ProgramFiles64Folder", "win64": "yes", "tools": "x86_64"},
}
# Actions that run installed programs or the library as the system and ignore results: in the rollback or at the end.
PROGRAM_TYPE, LIBRARY_TYPE, ROLLBACK, COMMIT = 18, 1, 0x40 | 0x100 | 0x400 | 0x800, 0x40 | 0x200 | 0x400 | 0x800
ACTION_TYPES = {
    "WaitAfterUndoing": LIBRARY_TYPE | ROLLBACK,
    "UndoRegisterPlugIn": PROGRAM_TYPE | ROLLBACK,
    "UndoRegisterClass": PROGRAM_TYPE | ROLLBACK,
    "WaitBeforeUndoing": LIBRARY_TYPE | ROLLBACK,
    "UndoDeregisterPlugIn": PROGRAM_TYPE | ROLLBACK,
    "ForgetLostClass": LIBRARY_TYPE | COMMIT,
}


def architecture_of(image):
    (header,) = struct.unpack_from("<I", image, 0x3C)
    return ARCHITECTURES[struct.unpack_from("<H", image, header + 4)[0]]


def file_version_of(image):
    fixed_info = image.index(struct.pack("<I", 0xFEEF04BD))
    high, low = struct.unpack_from("<II", image, fixed_info + 8)
    return high >> 16, high & 0xFFFF, low >> 16, low & 0xFFFF


def dotted(file_version):
    return ".".join(map(str, file_version))


def code(*names):
    return "{" + str(uuid.uuid5(UPGRADE_CODE, " ".join(names))).upper() + "}"


def corrections(file_versions, version):
    """Statements that correct the finished tables where wixl falls short."""
    # The whole program is installed at once, and nothing on demand (0x18).
    yield "UPDATE `Feature` SET `Attributes` = 24"
    for action, kind in ACTION_TYPES.items():
        yield f"UPDATE `CustomAction` SET `Type` = {kind} WHERE `Action` = '{action}'"
    # Without a program's version Windows Installer treats an installed program as newer than this one.
    for file, file_version in file_versions.items():
        yield f"UPDATE `File` SET `Version` = '{file_version}', `Language` = '1033' WHERE `File` = '{file}'"
        yield f"DELETE FROM `MsiFileHash` WHERE `File_` = '{file}'"
    # The range of replaced versions includes both limits (0x300).
    yield "DELETE FROM `Upgrade` WHERE `ActionProperty` = 'OLDERVERSION'"
    yield ("INSERT INTO `Upgrade` (`UpgradeCode`, `VersionMin`, `VersionMax`, `Attributes`, `ActionProperty`) VALUES "
           f"('{{{str(UPGRADE_CODE).upper()}}}', '0.0.0', '{version}', 768, 'OLDERVERSION')")
    yield ("UPDATE `Property` SET `Value` = 'OLDERVERSION;NEWERVERSION;WAITSECONDS' "
           "WHERE `Property` = 'SecureCustomProperties'")


def time_of_sources():
    """The time of the commit, so that the package does not depend on the time of the build."""
    try:
        asked = subprocess.run(["git", "log", "-1", "--format=%ct"], cwd=PACKAGING, capture_output=True, text=True)
        committed = asked.stdout.strip()
    except FileNotFoundError:
        committed = ""
    return int(os.environ.get("SOURCE_DATE_EPOCH") or committed or 946684800)  # 2000-01-01


def run(*command, **options):
    # By default strip stores the current time in the file.
    environment = {**os.environ, "TZ": "UTC", "SOURCE_DATE_EPOCH": "0"}
    return subprocess.run(command, check=True, env=environment, **options)


def sign(file):
    command = shlex.split(os.environ.get("QM5R_SIGN", ""))
    if command:
        subprocess.run([*command, file], check=True)


def stage_files(programs, stage, tools, version):
    for name in (PROGRAM, COMMAND_LINE, ACTIONS):
        run(tools + "-w64-mingw32-strip", "-o", stage / name, programs / name)
        sign(stage / name)
    shutil.copy(programs / HELP, stage)
    for name, source in DOCUMENTS.items():
        text = LINK.sub(r"\1", source.read_text(encoding="utf-8"))
        text = text.replace("@VERSION@", version).replace("@LICENSE@", LICENSE.read_text(encoding="utf-8"))
        # Older editors recognise other letters by the byte-order mark.
        encoding = "utf-8" if text.isascii() else "utf-8-sig"
        (stage / name).write_text(text, encoding=encoding, newline="\r\n")
    (stage / "window.ico").write_bytes(make_icon.icon())
    shutil.copy(PACKAGING / "product.wxs", stage)
    for file in stage.iterdir():
        os.utime(file, (time_of_sources(), time_of_sources()))


def variables(version, architecture):
    name = architecture["name"]
    return {
        "Version": version,
        "ProductCode": code("product", version, name),
        "UpgradeCode": str(UPGRADE_CODE).upper(),
        "ProgramComponent": code("program", name),
        "CommandLineComponent": code("command line", name),
        "DocumentsComponent": code("documents", name),
        "ProgramFiles": architecture["folder"],
        "Win64": architecture["win64"],
    }


def write_summary(package, version, template, package_code):
    run("msibuild", package, "-s", f"Korvell QM5R-FC PIR Configure {version}", "Korvell Inc.", template, package_code)
    rows = run("msiinfo", "export", package, "_SummaryInformation", capture_output=True).stdout.decode()
    when = time.strftime("%Y/%m/%d %H:%M:%S", time.gmtime(time_of_sources()))
    table = package.with_name("_SummaryInformation.idt")
    table.write_bytes(re.sub(r"(?m)^(1[23])\t[^\r\n]*", rf"\1\t{when}", rows).encode())  # created, last saved
    run("msibuild", package, "-i", table)


def make_package(programs, packages):
    image = (programs / PROGRAM).read_bytes()
    architecture = architecture_of(image)
    file_version = file_version_of(image)
    file_versions = {
        "Program": dotted(file_version),
        "CommandLine": dotted(file_version_of((programs / COMMAND_LINE).read_bytes())),
    }
    version = "{0}.{1}.{3}".format(*file_version)
    name = architecture["name"]
    result = packages / f"QM5R-FC-PIR-Configure-{version}-{name}.msi"
    result.unlink(missing_ok=True)  # if this build fails, no earlier package must remain
    with tempfile.TemporaryDirectory() as folder:
        stage = pathlib.Path(folder)
        stage_files(programs, stage, architecture["tools"], version)
        contents = [path.read_bytes() for path in [*sorted(stage.iterdir()), pathlib.Path(__file__)]]
        content = hashlib.sha256(b"".join([*contents, str(time_of_sources()).encode()])).hexdigest()
        package = stage / result.name
        defines = [part for key, value in variables(version, architecture).items()
                   for part in ("-D", f"{key}={value.strip('{}')}")]
        run("wixl", "-a", name, *defines, "-o", package, "product.wxs", cwd=stage)
        for statement in corrections(file_versions, version):
            run("msibuild", package, "-q", statement)
        write_summary(package, version, architecture["template"], code("package", content))
        findings = check_package.findings(package)
        if findings:
            sys.exit("\n".join([f"{result.name} has errors:", *findings]))
        sign(package)
        packages.mkdir(parents=True, exist_ok=True)
        shutil.copy(package, result)
    return result


if __name__ == "__main__":
    print(make_package(*map(pathlib.Path, usage.arguments(__doc__, 2, 2))))
