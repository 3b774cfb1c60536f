"""The command lines of the scripts that users run."""
import pathlib
import sys


def arguments(description, least, most):
    """The script's arguments. Answers --help with the description; refuses options and too few or too many arguments."""
    words = sys.argv[1:]
    if "--help" in words or "-h" in words:
        print(description.strip())
        sys.exit(0)
    script = pathlib.Path(sys.argv[0]).name
    wrong = next((f"unknown option {word}" for word in words if word.startswith("-")), None)
    if not wrong and not least <= len(words) <= most:
        wrong = "too few arguments" if len(words) < least else "too many arguments"
    if wrong:
        print(f"{script}: {wrong}; try {script} --help", file=sys.stderr)
        sys.exit(2)
    return words
