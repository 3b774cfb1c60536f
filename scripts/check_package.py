#!/usr/bin/env python3
"""Checks installation packages as far as possible without Windows: check_package.py <package>...

Findings name the rule of Windows Installer's own validation, if it has the same check (ICE03 and so on).
docs/installing.md lists the intended findings of that validation.
"""
import pathlib
import re
import struct
import subprocess
import sys
import tempfile

import usage

GUID = re.compile(r"\{[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\}")
SHORT_NAME = re.compile(r"[A-Z0-9_~-]{1,8}(\.[A-Z0-9_~-]{1,3})?", re.IGNORECASE)
REFERENCES = [  # ICE03: column, table that it refers to
    ("Component.Directory_", "Directory"), ("Component.KeyPath", "File"), ("Directory.Directory_Parent", "Directory"),
    ("File.Component_", "Component"), ("MsiFileHash.File_", "File"), ("FeatureComponents.Feature_", "Feature"),
    ("FeatureComponents.Component_", "Component"), ("Feature.Feature_Parent", "Feature"), ("Shortcut.Icon_", "Icon"),
    ("Shortcut.Directory_", "Directory"), ("Shortcut.WkDir", "Directory"), ("Shortcut.Component_", "Component"),
    ("AppSearch.Signature_", "RegLocator"),
]
STANDARD_ACTIONS = """FindRelatedProducts AppSearch LaunchConditions ValidateProductID CostInitialize FileCost CostFinalize
    MigrateFeatureStates InstallValidate InstallInitialize RemoveExistingProducts ProcessComponents UnpublishFeatures
    RemoveShortcuts RemoveFiles InstallFiles CreateShortcuts RegisterUser RegisterProduct PublishFeatures PublishProduct
    InstallFinalize""".split()
# Types of actions: what they do (1 runs a library, 18 runs an installed program, 51 sets a property) and how.
KIND, AT_ONCE, IGNORES_RESULT, ROLLBACK, COMMIT, IN_SCRIPT, AS_SYSTEM = 0x3F, 0, 0x40, 0x100, 0x200, 0x400, 0x800
STEP = IN_SCRIPT | AS_SYSTEM
TOLERANT_STEP, UNDOING, AT_THE_END = (STEP | IGNORES_RESULT | when for when in (0, ROLLBACK, COMMIT))
CHANGE, REMOVAL, LAST_REMOVAL, FIRST_INSTALLATION = (
    'REMOVE <> "ALL"', 'REMOVE="ALL"', 'REMOVE="ALL" AND NOT UPGRADINGPRODUCTCODE', "NOT Installed AND NOT OLDERVERSION")
# The package's own actions and their neighbours in order, with their conditions: an upgrade deregisters nothing, and no
# failing step stops a removal.
OWN_SEQUENCE = [
    ("CostFinalize", "", None),
    ("SetWait", "", AT_ONCE),
    ("WaitBeforeChanging", "", AT_ONCE),
    ("InstallValidate", "", None),
    ("InstallInitialize", "", None),
    ("RemoveExistingProducts", "", None),
    ("WaitBeforeRemoving", REMOVAL, STEP),
    ("UndoDeregisterPlugIn", LAST_REMOVAL, UNDOING),
    ("UnregisterClass", LAST_REMOVAL, TOLERANT_STEP),
    ("DeregisterPlugIn", LAST_REMOVAL, TOLERANT_STEP),
    ("WaitAfterDeregistering", LAST_REMOVAL, STEP),
    ("RemoveFiles", "", None),
    ("InstallFiles", "", None),
    ("WaitAfterUndoing", FIRST_INSTALLATION, UNDOING),
    ("UndoRegisterPlugIn", FIRST_INSTALLATION, UNDOING),
    ("UndoRegisterClass", FIRST_INSTALLATION, UNDOING),
    ("WaitBeforeUndoing", FIRST_INSTALLATION, UNDOING),
    ("RegisterClass", CHANGE, STEP),
    ("RegisterPlugIn", CHANGE, STEP),
    ("ForgetLostClass", CHANGE, AT_THE_END),
    ("ForgetLostClassAtOnce", CHANGE + " AND RollbackDisabled", TOLERANT_STEP),
    ("InstallFinalize", "", None),
]
WIN64 = 0x100
MACHINES = {0x014C: "Intel", 0x8664: "x64"}


class Package:
    def __init__(self, path):
        self.path = pathlib.Path(path).resolve()
        self.streams = self.ask("streams").decode().split()
        self.tables = {name: self.rows(name) for name in self.ask("tables").decode().split()}

    def ask(self, what, *arguments):
        with tempfile.TemporaryDirectory() as folder:  # for the streams of the exported tables
            command = ["msiinfo", what, self.path, *arguments]
            return subprocess.run(command, check=True, cwd=folder, capture_output=True).stdout

    def rows(self, table):
        lines = self.ask("export", table).decode("utf-8", "replace").replace("\r\n", "\n").split("\n")
        return [dict(zip(lines[0].split("\t"), line.split("\t"))) for line in lines[3:] if line]

    def keys(self, table):
        return [next(iter(row.values())) for row in self.tables.get(table, [])]

    def mapping(self, table, value):
        return {next(iter(row.values())): row[value] for row in self.tables[table]}


def repeated(items):
    items = list(items)
    return sorted({item for item in items if items.count(item) > 1})


def check_references(package):
    for column, target in REFERENCES:
        table, name = column.split(".")
        for row in package.tables.get(table, []):
            if row[name] and row[name] not in package.keys(target):
                yield f"ICE03: {column} names {row[name]}, which is not in {target}"
    properties = package.mapping("Property", "Value")
    if properties.get("ARPPRODUCTICON") not in package.keys("Icon"):
        yield "ICE36: ARPPRODUCTICON names a missing icon"
    for row in package.tables["CustomAction"]:
        source = {1: "Binary", 18: "File"}.get(int(row["Type"]) & KIND)
        if source and row["Source"] not in package.keys(source):
            yield f"ICE03: the action {row['Action']} names {row['Source']}, which is not in {source}"


def check_codes(package):
    properties = package.mapping("Property", "Value")
    codes = {name: properties.get(name, "") for name in ("ProductCode", "UpgradeCode")}  # ICE24, ICE74
    codes["package code"] = package.mapping("_SummaryInformation", "Value").get("9", "")  # ICE39
    for row in package.tables["Component"]:
        codes[row["Component"]] = row["ComponentId"]
    for name, code in codes.items():
        if not GUID.fullmatch(code):
            yield f"{name} has no code in capital letters: {code!r}"
    for code in repeated(codes.values()):
        yield f"ICE08: {code} is used twice"
    for row in package.tables["Upgrade"]:
        if row["UpgradeCode"] != codes["UpgradeCode"]:
            yield "ICE74: Upgrade looks for another product"
        if row["ActionProperty"] not in properties["SecureCustomProperties"].split(";"):
            yield f"{row['ActionProperty']} is not in SecureCustomProperties"


def check_components(package):
    components, files = package.mapping("Component", "KeyPath"), package.tables["File"]
    owners = package.mapping("File", "Component_")
    for component, key in components.items():
        if owners.get(key) != component:
            yield f"ICE02: the key file of {component} is {key or 'missing'}, which is not its file"
        if component not in [row["Component_"] for row in package.tables["FeatureComponents"]]:
            yield f"ICE21: {component} belongs to no feature"
    for key in repeated(components.values()):
        yield f"{key} is the key file of two components"
    (media,) = package.tables["Media"]
    if sorted(int(row["Sequence"]) for row in files) != list(range(1, int(media["LastSequence"]) + 1)):
        yield "ICE04: the numbers of the files do not match Media"
    if media["Cabinet"].lstrip("#") not in package.streams:
        yield "the cabinet is missing"
    for row in files:  # ICE60
        if bool(row["Version"]) == (row["File"] in package.keys("MsiFileHash")):
            yield f"{row['File']} needs a version or a hash, and not both"


def check_names(package):
    folders = package.mapping("Component", "Directory_")
    names = [(folders[row["Component_"]], row["FileName"]) for row in package.tables["File"]]
    names += [(row["Directory_"], row["Name"]) for row in package.tables["Shortcut"]]
    names += [(row["Directory_Parent"], row["DefaultDir"]) for row in package.tables["Directory"]
              if row["DefaultDir"] not in (".", "SourceDir")]
    for _, name in names:
        short, _, long = name.partition("|")
        if not SHORT_NAME.fullmatch(short) or re.search(r'[\\?|<>:/*"]', long):
            yield f"ICE03: {name} is not a valid name"
    for folder, name in repeated((folder, part.lower()) for folder, name in names for part in set(name.split("|"))):
        yield f"ICE30: {name} is in {folder} twice"


def check_sequences(package):
    sequences = [name for name in package.tables if name.endswith("Sequence")]
    for table in sequences:
        for row in package.tables[table]:
            known = STANDARD_ACTIONS + package.keys("CustomAction") + ["ExecuteAction", "InstallAdminPackage"]
            if row["Action"] not in known:
                yield f"ICE03: {table} has {row['Action']}, which is not an action"
    rows = sorted(package.tables["InstallExecuteSequence"], key=lambda row: int(row["Sequence"]))
    for number in repeated(row["Sequence"] for row in rows):
        yield f"ICE82: two actions have the number {number}"
    order = [row["Action"] for row in rows]
    for wanted in (STANDARD_ACTIONS, [action for action, _, _ in OWN_SEQUENCE]):  # ICE27, ICE77
        present = [action for action in order if action in wanted]
        if present != [action for action in wanted if action in order]:
            yield "ICE27: out of order: " + " ".join(present)
    if order.index("RemoveExistingProducts") != order.index("InstallInitialize") + 1:
        yield "ICE63: RemoveExistingProducts does not follow InstallInitialize"


def check_actions(package):
    conditions = package.mapping("InstallExecuteSequence", "Condition")
    types = {action: int(kind) for action, kind in package.mapping("CustomAction", "Type").items()}
    for action, condition, how in OWN_SEQUENCE:
        if conditions.get(action) != condition:
            yield f"{action} has the condition {conditions.get(action)!r} instead of {condition!r}"
        if how is not None and types.get(action, KIND) & ~KIND != how:
            yield f"{action} would run at another time or with other rights: {types.get(action)}"
    for action in types.keys() - {action for action, _, _ in OWN_SEQUENCE}:
        yield f"{action} is not in the expected sequence"
    for row in package.tables["CustomAction"]:
        if int(row["Type"]) & KIND == 1:
            if f"\0{row['Target']}\0".encode() not in package.ask("extract", "Binary." + row["Source"]):
                yield f"{row['Source']} has no function {row['Target']}"


def check_architecture(package):
    summary = package.mapping("_SummaryInformation", "Value")
    platform, _, language = summary["7"].partition(";")
    if platform not in MACHINES.values() or language != package.mapping("Property", "Value")["ProductLanguage"]:
        yield f"ICE39: the template is {summary['7']}"
    if int(summary["14"]) < 200 or summary["15"] != "2":
        yield "ICE39: not a compressed package with long names for Windows Installer 2 or later"
    for row in package.tables["Component"]:
        if bool(int(row["Attributes"]) & WIN64) != (platform == "x64"):
            yield f"ICE80: {row['Component']} has the wrong architecture"
    root = "ProgramFiles64Folder" if platform == "x64" else "ProgramFilesFolder"
    if root not in package.keys("Directory"):
        yield f"ICE80: nothing is installed in {root}"
    for name in package.keys("Binary"):
        library = package.ask("extract", "Binary." + name)
        (header,) = struct.unpack_from("<I", library, 0x3C)
        if MACHINES.get(struct.unpack_from("<H", library, header + 4)[0]) != platform:
            yield f"{name} has the wrong architecture"


CHECKS = (check_codes, check_components, check_names, check_sequences, check_actions, check_architecture)


def findings(path):
    package = Package(path)
    # The other checks rely on the references.
    return [*check_references(package)] or [finding for check in CHECKS for finding in check(package)]


if __name__ == "__main__":
    found = [f"{path}: {finding}" for path in usage.arguments(__doc__, 1, 99) for finding in findings(path)]
    print("\n".join(found) if found else "The packages have no errors.")
    sys.exit(bool(found))
