#!/usr/bin/env python3
"""Opens a report on a simulated network with hostile names in Chromium, without a window, and prints it.

    report_in_browser.py QM5R

The page must be silent, ask for nothing, show what the report in JSON says, and fit on A4 with all its texts. Ends with
77 if Chromium or poppler-utils is missing.
"""
import base64
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import threading
import unicodedata

ROOT = pathlib.Path(__file__).resolve().parents[2]
SECONDS = 120
NAMES = ["<script>alert(1)", "<img src=x.png onerror=alert(1)>", "Bob's & \"Ann's\" &amp;", "--> ]]> <!-- <table>",
         "W" * 240, "Room with a view of the station and of the sea " * 5, "=1+1,\"\u00e4\" \u0416"]
BROKEN = "<img src=missing.png><img src=http://report.invalid/x.png><script>nothing()</script>"
# In points.
WIDTH, HEIGHT, MARGIN = 841.9, 595.3, 28.3
SMALLEST_LINE = 7.5  # a browser prints a page that is too wide smaller
NOISES = ("Runtime.exceptionThrown", "Runtime.consoleAPICalled", "Log.entryAdded", "Page.javascriptDialogOpening")
SHOWN = """JSON.stringify({
  tables: [...document.querySelectorAll('table')].map(t => [...t.tBodies[0].rows].map(r => [...r.cells].map(c => c.textContent))),
  counts: [...document.querySelectorAll('thead tr:last-child td')].map(c => +c.textContent),
  head: document.body.innerText.slice(0, 2000),
  active: document.querySelectorAll('script, img, link, iframe, object, [src], [onerror]').length,
  unequal: (document.getElementById('only').click(),
            [...document.querySelectorAll('tbody tr')].filter(r => r.getClientRects().length).length),
})"""


class Browser:
    """Chromium with its own profile, driven through two pipes as its developer tools do."""

    def __init__(self, folder):
        read_commands, self.commands = os.pipe()
        self.answers, write_answers = os.pipe()
        # The shell gives the pipes the numbers that Chromium expects, and becomes Chromium.
        self.process = subprocess.Popen(
            ["bash", "-c", f'exec "$@" 3<&{read_commands} 4>&{write_answers}', "bash", "chromium", "--headless", "--no-sandbox",
             "--remote-debugging-pipe", f"--user-data-dir={folder}", "--no-first-run", "--disable-gpu", "--disable-dev-shm-usage",
             "--host-resolver-rules=MAP * ~NOTFOUND"],
            pass_fds=(read_commands, write_answers), stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(read_commands)
        os.close(write_answers)
        self.timer = threading.Timer(SECONDS, self.process.kill)
        self.timer.start()
        self.number, self.rest, self.events = 0, b"", []

    def next_message(self):
        while b"\0" not in self.rest:
            part = os.read(self.answers, 1 << 16)
            if not part:
                sys.exit(f"FAILED: Chromium ended, or took longer than {SECONDS} seconds")
            self.rest += part
        text, self.rest = self.rest.split(b"\0", 1)
        message = json.loads(text)
        if message.get("method") == "Page.javascriptDialogOpening":
            self.send("Page.handleJavaScriptDialog", message["sessionId"], accept=False)
        return message

    def send(self, method, session, **arguments):
        self.number += 1
        command = {"id": self.number, "method": method, "params": arguments, **({"sessionId": session} if session else {})}
        os.write(self.commands, json.dumps(command).encode() + b"\0")
        return self.number

    def call(self, method, session=None, **arguments):
        number = self.send(method, session, **arguments)
        while (message := self.next_message()).get("id") != number:
            self.events.append(message)
        if "error" in message:
            sys.exit(f"FAILED: {method}: {message['error']}")
        return message["result"]

    def open(self, page):
        """The page's session, and what a silent page does not do."""
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        session = self.call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.call(domain + ".enable", session)
        self.events = []
        self.call("Page.navigate", session, url=page.as_uri())
        while not any(event.get("method") == "Page.loadEventFired" for event in self.events):
            self.events.append(self.next_message())
        self.evaluate(session, "new Promise(done => setTimeout(done, 300))")
        noises = [f"{event['method']}: {json.dumps(event['params'])[:1000]}" for event in self.events
                  if event.get("method") in NOISES]
        urls = [event["params"]["request"]["url"] for event in self.events if event.get("method") == "Network.requestWillBeSent"]
        return session, noises, urls

    def evaluate(self, session, script):
        return self.call("Runtime.evaluate", session, expression=script, awaitPromise=True)["result"].get("value")

    def close(self):
        self.call("Browser.close")
        self.process.wait()
        self.timer.cancel()


def make_report(qm5r, folder):
    """Returns the page and the same report in JSON."""
    def run(*arguments, codes=(0,)):
        done = subprocess.run([qm5r, *arguments], cwd=folder, env={**os.environ, "QM5R_NETWORK_FILE": "network.json"},
                              capture_output=True, text=True)
        if done.returncode not in codes:
            sys.exit(f"FAILED with {done.returncode}: {arguments}\n{done.stderr}")
    made = subprocess.run([ROOT / "scripts/make-network", "120", "--silent", "3", "--different", "30", "--other-type", "2"],
                          check=True, capture_output=True, text=True)
    network = json.loads(made.stdout)
    devices = network["networks"][0]["system"]["subsystems"][0]["devices"]
    for device, name in zip(devices, NAMES):
        device["name"] = name
    (folder / "network.json").write_text(json.dumps(network))
    run("save", "Hotel/Hotel.Floor 1/Room 10", "standard & <b>.qm5r")
    run("snapshot", "Hotel", "<i> & snapshot", codes=(4,))
    for name in ("report.html", "report.json"):
        run("report", "<i> & snapshot", "--standard", "standard & <b>.qm5r", "-o", name, codes=(4,))
    return folder / "report.html", json.loads((folder / "report.json").read_text())


def faults_of_page(shown, report):
    devices = report["devices"]
    read = [device["name"] for device in devices if device.get("settings")]
    deviations = [sum("device" in each for each in device.get("differences", [])) for device in devices]
    rooms, *tabs = shown["tables"]
    numbers = {
        "devices": ([row[:3] for row in rooms], [[device["name"], device["state"], str(count) if "differences" in device else ""]
                                                 for device, count in zip(devices, deviations)]),
        "names in the tabs": ([[row[0] for row in tab] for tab in tabs], [read] * 6),
        "signs": (sum(cell.startswith("\u2260 ") for tab in tabs for row in tab for cell in row[1:]), sum(deviations)),
        "deviations of fields": (sum(shown["counts"]), sum(deviations)),
        "number in the head": (re.findall(r"(\d+) deviations\.", shown["head"]), [str(sum(deviations))]),
        "active parts": (shown["active"], 0),
        "rows without equal devices": (shown["unequal"], len(devices) + 6 * len(read)
                                       - 7 * sum(device["state"] == "equal" for device in devices)),
    }
    if not sum(deviations):
        yield "nothing deviates, which proves nothing"
    for what, (is_shown, expected) in numbers.items():
        if is_shown != expected:
            yield f"{what}: shown\n  {is_shown}\nexpected\n  {expected}"


def without_blanks(text):
    return "".join(unicodedata.normalize("NFKC", text).split())


def faults_of_paper(pdf, tables):
    def ask(*command):
        return subprocess.run([*command], check=True, capture_output=True, text=True).stdout
    pages = re.findall(r"Page +\d+ size: +([\d.]+) x ([\d.]+) pts", ask("pdfinfo", "-l", "-1", str(pdf)))
    if not pages or any(abs(float(x) - WIDTH) > 1 or abs(float(y) - HEIGHT) > 1 for x, y in pages):
        yield f"the paper is not A4 across: {set(pages)}"
    words = re.findall(r'<word xMin="(.*?)" yMin="(.*?)" xMax="(.*?)" yMax="(.*?)">(.*?)</word>', ask("pdftotext", "-bbox", str(pdf), "-"))
    for left, top, right, bottom, word in words:
        if float(left) < MARGIN - 1 or float(right) > WIDTH - MARGIN + 1:
            yield f"beyond the margin: {word}"
        if float(bottom) - float(top) < SMALLEST_LINE:
            yield f"too small: {word}, {float(bottom) - float(top)} points"
    # In the order of the cells; heads of further pages are in between.
    text, at = without_blanks(ask("pdftotext", "-raw", str(pdf), "-")), 0
    for cell in (without_blanks(cell) for table in tables for row in table for cell in row):
        found = text.find(cell, at)
        if found < 0:
            yield f"not on paper: {cell}"
        else:
            at = found + len(cell)


def faults(browser, page, report):
    session, noises, urls = browser.open(page)
    yield from noises
    yield from (f"asks for {url}" for url in urls if url != page.as_uri())
    printed = browser.call("Page.printToPDF", session, preferCSSPageSize=True, printBackground=False)
    answer = browser.evaluate(session, SHOWN)
    if not answer:
        yield "the page lacks its parts"
        return
    shown = json.loads(answer)
    yield from faults_of_page(shown, report)
    pdf = page.with_suffix(".pdf")
    pdf.write_bytes(base64.b64decode(printed["data"]))
    yield from faults_of_paper(pdf, shown["tables"])


def check_sight(browser, page):
    """A page that is not silent must be noticed."""
    broken = page.with_name("broken.html")
    broken.write_text(page.read_text() + BROKEN)
    _, noises, urls = browser.open(broken)
    for sign in ("nothing is not defined", "missing.png", "report.invalid"):
        if sign not in "\n".join(noises + urls):
            yield f"a broken page goes unnoticed: {sign}"


def main():
    missing = [program for program in ("chromium", "pdfinfo", "pdftotext") if not shutil.which(program)]
    if missing:
        print(f"Skipped: {', '.join(missing)} not found. Debian's packages are chromium and poppler-utils.")
        sys.exit(77)
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as name:
        folder = pathlib.Path(name)
        page, report = make_report(pathlib.Path(sys.argv[1]).resolve(), folder)
        browser = Browser(folder / "profile")
        try:
            found = [*faults(browser, page, report), *check_sight(browser, page)]
            browser.close()
        finally:
            browser.timer.cancel()
            browser.process.kill()
            browser.process.wait()
    if found:
        sys.exit("\n".join(["FAILED:", *found[:20], f"{len(found)} faults"]))
    print(f"{len(report['devices'])} devices are on the page and on paper.")


main()
