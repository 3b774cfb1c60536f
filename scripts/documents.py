"""The documents of this project, their blocks of code, and the commands in them."""
import dataclasses
import pathlib
import re
import shlex

ROOT = pathlib.Path(__file__).resolve().parent.parent


def documents():
    found = [*sorted(ROOT.glob("*.md")), *sorted(ROOT.glob("docs/*.md"))]
    assert found, "there are no documents"
    return found


@dataclasses.dataclass
class Block:
    number: int  # of its first line
    language: str
    lines: list

    @property
    def text(self):
        return "\n".join(self.lines)

    def commands(self):
        """Number and text of each command, including its here-document (<<'END')."""
        lines = iter(enumerate(self.lines, self.number + 1))
        for number, line in lines:
            end = re.search(r"<<'(\w+)'", line)
            command = line
            while end and command.splitlines()[-1] != end.group(1):
                command += "\n" + next(lines)[1]
            if line.strip():
                yield number, command


def blocks(document):
    block = None
    for number, line in enumerate(document.read_text(encoding="utf-8").splitlines(), 1):
        if not line.startswith("```"):
            if block:
                block.lines.append(line)
        elif block:
            yield block
            block = None
        else:
            block = Block(number, line[3:].strip(), [])


def words_of(code):
    """The words of a command, name or option in a document; a placeholder (<file>) is one word."""
    return shlex.split(re.sub(r"<[^>]*>", "ANY", code.replace("\\|", " ")), comments=True)


def simple_commands(command):
    """The parts that "&&" joins, without variable settings before them."""
    words = shlex.split(command.splitlines()[0].replace("<<", " << "), comments=True)
    simple = []
    for word in [*words, "&&"]:
        if word == "&&":
            if simple:
                yield simple
            simple = []
        elif simple or not re.match(r"\w+=", word):
            simple.append(word)
