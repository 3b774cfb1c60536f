#!/usr/bin/env python3
"""Converts a page to plain text, as a C++ string.

Usage: make_plain_text.py PAGE.htm OUTPUT.inc

An empty line separates paragraphs, except a second-level heading and the first paragraph below it.
"""
import html.parser
import sys

BLOCKS = ("h1", "h2", "p")
SILENT = ("title", "style")


class Page(html.parser.HTMLParser):
    def __init__(self):
        super().__init__()
        self.open = None
        self.blocks = []  # kind and text

    def handle_starttag(self, tag, attributes):
        if tag in BLOCKS:
            self.blocks.append((tag, ""))
        if tag in BLOCKS + SILENT:
            self.open = tag

    def handle_endtag(self, tag):
        if tag == self.open:
            self.open = None

    def handle_data(self, data):
        if self.open in BLOCKS:
            kind, text = self.blocks[-1]
            self.blocks[-1] = kind, text + data
        elif data.strip() and self.open is None:
            sys.exit(f"The plain text would omit: {data.strip()}")


def plain_text(source):
    page = Page()
    page.feed(source)
    page.close()
    text, former = "", None
    for kind, block in page.blocks:
        text += ("\n" if former == "h2" else "\n\n" if former else "") + " ".join(block.split())
        former = kind
    return text


if __name__ == "__main__":
    with open(sys.argv[1], encoding="utf-8") as source, open(sys.argv[2], "w", encoding="utf-8") as output:
        output.write(f'R"text({plain_text(source.read())})text"\n')
