#!/usr/bin/env python3
"""What the check of the packages finds, and what is signed: package_test.py <folder of the programs>"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

SCRIPTS = pathlib.Path(__file__).resolve().parents[3] / "scripts"
sys.path.append(str(SCRIPTS))
import check_package

BREAKS = [  # a statement that breaks the package, and what is to be found
    ("UPDATE `File` SET `Component_` = 'Nobody' WHERE `File` = 'Help'", "File.Component_ names Nobody"),
    ("UPDATE `File` SET `FileName` = 'QM5RFcPirConfigure.exe' WHERE `File` = 'Program'", "is not a valid name"),
    ("UPDATE `File` SET `FileName` = 'README.TXT' WHERE `File` = 'Notices'", "ICE30"),
    ("UPDATE `File` SET `Sequence` = 1", "ICE04"),
    ("DELETE FROM `MsiFileHash` WHERE `File_` = 'Help'", "Help needs a version or a hash"),
    ("UPDATE `File` SET `Version` = '' WHERE `File` = 'CommandLine'", "CommandLine needs a version or a hash"),
    ("UPDATE `Component` SET `KeyPath` = 'Program'", "DocumentsComponent is Program, which is not its file"),
    ("UPDATE `Component` SET `ComponentId` = ''", "ProgramComponent has no code"),
    (f"UPDATE `Component` SET `Attributes` = {0 if sys.argv[1].endswith('x64') else 256}", "ICE80"),
    ("DELETE FROM `FeatureComponents` WHERE `Component_` = 'ProgramComponent'", "ICE21"),
    ("UPDATE `Property` SET `Value` = 'x' WHERE `Property` = 'UpgradeCode'", "ICE74"),
    ("UPDATE `InstallExecuteSequence` SET `Sequence` = 4045 WHERE `Action` = 'RegisterPlugIn'", "ICE27"),
    ("UPDATE `InstallExecuteSequence` SET `Sequence` = 1710 WHERE `Action` = 'RemoveExistingProducts'", "ICE63"),
    ("UPDATE `InstallExecuteSequence` SET `Condition` = '1' WHERE `Action` = 'DeregisterPlugIn'", "has the condition '1'"),
    ("UPDATE `CustomAction` SET `Type` = 1 WHERE `Action` = 'ForgetLostClass'", "ForgetLostClass would run at another"),
    ("UPDATE `CustomAction` SET `Target` = 'None' WHERE `Action` = 'WaitBeforeChanging'", "has no function None"),
]


def make(folder, signer):
    environment = {**os.environ, "QM5R_SIGN": signer}
    command = [SCRIPTS / "make_package.py", sys.argv[1], folder]
    return subprocess.run(command, env=environment, capture_output=True).returncode, [*folder.glob("*.msi")]


with tempfile.TemporaryDirectory() as name:
    folder = pathlib.Path(name)
    signer = folder / "signer.sh"
    signer.write_text(f'echo "$1 ${{2##*/}}" >>{folder}/signed; case $2 in *.msi) ;; *) printf SIGNED >>"$2";; esac')
    status, (package,) = make(folder, f"sh {signer} 'one word'")
    signed = [f"one word {file}" for file in ("QM5RFcPirConfigure.exe", "qm5r.exe", "QM5RInstallerActions.dll", package.name)]
    assert status == 0 and (folder / "signed").read_text().splitlines() == signed, (folder / "signed").read_text()
    subprocess.run(["msiextract", "-C", folder, package], check=True, capture_output=True)
    (program,) = folder.rglob("QM5RFcPirConfigure.exe")
    actions = subprocess.run(["msiinfo", "extract", package, "Binary.Actions"], check=True, capture_output=True).stdout
    assert program.read_bytes().endswith(b"SIGNED") and actions.endswith(b"SIGNED"), "signed before they are packed"
    for statement, expected in BREAKS:
        broken = shutil.copy(package, folder / "broken")
        subprocess.run(["msibuild", broken, "-q", statement], check=True)
        found = check_package.findings(broken)
        assert any(expected in finding for finding in found), (statement, found)
    status, left = make(folder, "false")
    assert status != 0 and not left, "nothing is left of a package that could not be signed"
