#!/usr/bin/env python3
"""Runs the commands of the documents as printed, in order, in a clean folder with the tracked files of this one.

    run_commands.py quick    without builds: the folder is lent the build trees of this one, on which ./run finds nothing
                             to build. README's commands run twice, without a display and with one.
    run_commands.py all      README's commands with their builds, from nothing
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.append(str(ROOT / "scripts"))
import documents  # noqa: E402
import usage  # noqa: E402

BUILDS = re.compile(r"cmake |ctest |\./package|\./test")
# They would run this script again, or need Windows, a certificate, or hours.
ELSEWHERE = re.compile(r"\./test|msiexec|cat >sign\.sh|QM5R_SIGN=")
# What must be on the screen after a command that shows something.
SHOWN = re.compile(r'director\.exe configure ".*/(.*?)"')


def clean_folder(folder):
    names = subprocess.run(["git", "ls-files", "-z", "-co", "--exclude-standard"], cwd=ROOT, check=True, capture_output=True)
    for name in filter(None, names.stdout.decode().split("\0")):
        if (ROOT / name).exists():
            (folder / name).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy2(ROOT / name, folder / name)


def lend_builds(folder):
    (folder / "build").mkdir()
    for tree in ("native", "windows-x64"):
        if (ROOT / "build" / tree).exists():
            (folder / "build" / tree).symlink_to(ROOT / "build" / tree)


def commands_of(name):
    for block in documents.blocks(ROOT / name):
        if block.language == "sh":
            yield from (command for _, command in block.commands())


def run(command, folder, environment):
    print("$", command, flush=True)
    # A file and not a pipe: the plug-in stays open and keeps the output of its starter open.
    with tempfile.TemporaryFile() as output:
        code = subprocess.run(command, shell=True, cwd=folder, env=environment, stdin=subprocess.DEVNULL, stdout=output,
                              stderr=subprocess.STDOUT, timeout=3000, executable="/bin/bash").returncode
        output.seek(0)
        text = output.read().decode(errors="replace")
    if code != 0:
        sys.exit(f"{text}\nFAILED with {code}: {command}")
    return text


def run_document(name, folder, environment, builds):
    for command in commands_of(name):
        if ELSEWHERE.match(command) or (BUILDS.match(command) and not builds):
            continue
        # These are for Windows, where the program needs no path.
        run(re.sub(r"^director\.exe", "scripts/in-wine build/windows-x64/director.exe", command), folder, environment)
        shown = SHOWN.search(command)
        if shown and shown.group(1) not in run("scripts/in-wine build/windows-x64/director.exe screen", folder, environment):
            sys.exit(f"FAILED: {shown.group(1)} is not on the screen")


def run_preview(folder, environment):
    """On the network file that the same document shows."""
    first = next(block for block in documents.blocks(ROOT / "docs/simulator.md") if block.language == "json")
    (folder / "my-network.json").write_text(first.text)
    (command,) = [command for command in commands_of("docs/simulator.md") if command.startswith("build/native/preview")]
    if "Thermostat 1" not in run(command, folder, environment):
        sys.exit("FAILED: the preview does not show the device")


def run_settings(folder, environment):
    """With the exit codes that the document gives, on the demo."""
    environment = environment | {"QM5R_NETWORK_FILE": "demo/network.json"}
    expected = [block.text for block in documents.blocks(ROOT / "docs/settings.md") if block.language == "text"]
    for command in commands_of("docs/settings.md"):
        code = re.search(r"# exit code (\d)$", command)
        done = subprocess.run(re.sub(r"^qm5r", "build/native/qm5r", command), shell=True, cwd=folder, env=environment,
                              capture_output=True, text=True, check=False)
        print("$", command, flush=True)
        if done.returncode != int(code.group(1) if code else 0):
            sys.exit(f"{done.stdout}{done.stderr}\nFAILED with {done.returncode}: {command}")
        if "*201" in command and done.stdout.rstrip() != expected[0]:
            sys.exit(f"{done.stdout}\nFAILED: the document shows another output of {command}")
    saved = (folder / "standard.qm5r").read_text().split("[settings]")[1]
    if saved.strip() != expected[1].split("[settings]")[1].strip():
        sys.exit(f"{saved}\nFAILED: the document shows another file")


def end_wine(folder, environment):
    subprocess.run(["scripts/in-wine", "wineserver", "-k"], cwd=folder, env=environment, check=False)


def without_display():
    own = ("DISPLAY", "XENVIRONMENT", "QM5R_PREFIX")
    return {name: value for name, value in os.environ.items() if name not in own}


def with_display(folder):
    """A user's display, and the process that is it."""
    read_end, write_end = os.pipe()
    display = subprocess.Popen(["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1280x1024x24", "-nolisten", "tcp"],
                               pass_fds=[write_end], stderr=subprocess.DEVNULL)
    return display, without_display() | {"DISPLAY": ":" + os.read(read_end, 20).decode().strip()}


def main(part):
    if part not in ("quick", "all"):
        sys.exit("either quick or all")
    with tempfile.TemporaryDirectory(prefix="clean-") as name:
        folder = pathlib.Path(name)
        clean_folder(folder)
        environment = without_display()
        try:
            if part == "all":
                run_document("README.md", folder, environment, builds=True)
                return
            lend_builds(folder)
            run_document("README.md", folder, environment, builds=False)
            run_document("docs/director.md", folder, environment, builds=False)
            if (folder / "build/native/preview").exists():
                run_preview(folder, environment)
                run_settings(folder, environment)
            end_wine(folder, environment)
            display, environment = with_display(folder)
            try:
                run_document("README.md", folder, environment, builds=False)
            finally:
                end_wine(folder, environment)
                display.terminate()
        finally:
            end_wine(folder, environment)


if __name__ == "__main__":
    main(*usage.arguments(__doc__, 1, 1))
