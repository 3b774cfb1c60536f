#!/usr/bin/env python3
"""Makes the installation package of one build tree and prints its path.

    make_package.py <folder of the programs> <folder of the packages>

Version and architecture are those of the program. The codes of the package follow from them, so that the same version
is the same product wherever it is built.
"""
import hashlib
import pathlib
import shutil
import struct
import subprocess
import sys
import tempfile
import uuid

import make_icon

PACKAGING = pathlib.Path(__file__).resolve().parent.parent / "packaging"
LICENSE = PACKAGING.parent / "LICENSE"
PROGRAM = "QM5RFcPirConfigure.exe"
ACTIONS = "QM5RInstallerActions.dll"
HELP = "QM5R-FCConfigure.chm"
DOCUMENTS = ["readme.txt", "notices.txt"]
# Never to be changed: installed packages are found by it.
UPGRADE_CODE = uuid.UUID("61FC5648-8CDA-4714-9E5B-BB34EA942ADE")
ARCHITECTURES = {
    0x014C: {"name": "x86", "template": "Intel;1033", "folder": "ProgramFilesFolder", "win64": "no", "tools": "i686"},
    0x8664: {"name": "x64", "template": "x64;1033", "folder": "ProgramFiles64Folder", "win64": "yes", "tools": "x86_64"},
}
# Installed programs and the library of actions, as the system, whatever comes of it: in the rollback or at the end.
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


def code(*names):
    return "{" + str(uuid.uuid5(UPGRADE_CODE, " ".join(names))).upper() + "}"


def corrections(file_version, version):
    """What wixl leaves out, as statements on the finished tables."""
    for action, kind in ACTION_TYPES.items():
        yield f"UPDATE `CustomAction` SET `Type` = {kind} WHERE `Action` = '{action}'"
    # The version of the program: without it Windows Installer takes an installed program for newer than this one.
    yield f"UPDATE `File` SET `Version` = '{file_version}', `Language` = '1033' WHERE `File` = 'Program'"
    yield "DELETE FROM `MsiFileHash` WHERE `File_` = 'Program'"
    # Both limits belong to the range of what gives way (0x300).
    yield "DELETE FROM `Upgrade` WHERE `ActionProperty` = 'OLDERVERSION'"
    yield ("INSERT INTO `Upgrade` (`UpgradeCode`, `VersionMin`, `VersionMax`, `Attributes`, `ActionProperty`) VALUES "
           f"('{{{str(UPGRADE_CODE).upper()}}}', '0.0.0', '{version}', 768, 'OLDERVERSION')")
    yield ("UPDATE `Property` SET `Value` = 'OLDERVERSION;NEWERVERSION;WAITSECONDS' "
           "WHERE `Property` = 'SecureCustomProperties'")


def make_package(programs, packages):
    with tempfile.TemporaryDirectory() as folder:
        stage = pathlib.Path(folder)
        image = (programs / PROGRAM).read_bytes()
        architecture = architecture_of(image)
        file_version = file_version_of(image)
        version = "{0}.{1}.{3}".format(*file_version)
        for name in (PROGRAM, ACTIONS):
            subprocess.run([architecture["tools"] + "-w64-mingw32-strip", "-o", stage / name, programs / name], check=True)
        shutil.copy(programs / HELP, stage)
        for name in DOCUMENTS:
            text = (PACKAGING / name).read_text(encoding="utf-8")
            text = text.replace("@VERSION@", version).replace("@LICENSE@", LICENSE.read_text(encoding="utf-8"))
            (stage / name).write_text(text, encoding="utf-8", newline="\r\n")
        (stage / "window.ico").write_bytes(make_icon.icon())
        shutil.copy(PACKAGING / "product.wxs", stage)
        content = hashlib.sha256(b"".join(path.read_bytes() for path in sorted(stage.iterdir()))).hexdigest()

        name = architecture["name"]
        variables = {
            "Version": version,
            "ProductCode": code("product", version, name),
            "UpgradeCode": str(UPGRADE_CODE).upper(),
            "ProgramComponent": code("program", name),
            "DocumentsComponent": code("documents", name),
            "ProgramFiles": architecture["folder"],
            "Win64": architecture["win64"],
        }
        defines = [part for key, value in variables.items() for part in ("-D", f"{key}={value.strip('{}')}")]
        package = stage / "package.msi"
        subprocess.run(["wixl", "-a", name, *defines, "-o", package, "product.wxs"], cwd=stage, check=True)
        for statement in corrections(".".join(map(str, file_version)), version):
            subprocess.run(["msibuild", package, "-q", statement], check=True)
        subprocess.run(["msibuild", package, "-s", f"Korvell QM5R-FC PIR Configure {version}", "Korvell Inc.",
                        architecture["template"], code("package", content)], check=True)

        packages.mkdir(parents=True, exist_ok=True)
        result = packages / f"QM5R-FC-PIR-Configure-{version}-{name}.msi"
        shutil.copy(package, result)
        return result


if __name__ == "__main__":
    print(make_package(*map(pathlib.Path, sys.argv[1:3])))
