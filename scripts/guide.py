#!/usr/bin/env python3
"""The user guide's field tables and its check.

Each dialog field the guide describes is named in a block of its page:

    <!-- fields A_CSV_SORT
    Sort by column (from 1): | sortcolumn
    Sort direction: | sortdirection
    -->
    | Field | Key | Type | Default | Values and meaning |
    ...
    <!-- end fields -->

The labels are the guide's; the key's type, default and meaning come from
`qmhost keys ACTION_ID`, the table qmhost checks task files with, so the
guide says what the code reads.

    python3 scripts/guide.py update --qmhost build/native/bin/qmhost
        rewrites every field table from qmhost's keys table
    python3 scripts/guide.py check --qmhost build/native/bin/qmhost
        fails (exit 1, one line per fault) when a field names a key the
        action does not read, a field table differs from what update would
        write, a page of a dialog ("### Page ...") has no picture, a picture
        is missing or no page shows it, an action has no page, or a link
        names a guide page or heading that is not there
"""
import argparse
import pathlib
import re
import subprocess
import sys

GUIDE = pathlib.Path(__file__).resolve().parent.parent / "docs" / "guide"
BLOCK = re.compile(r"<!-- fields (\S+)\n(.*?)-->\n(.*?)<!-- end fields -->\n", re.S)
BLOCK_ACTION = re.compile(r"<!-- fields (\S+)\n")
IMAGE = re.compile(r"!\[[^\]]*\]\(([^)\s]+)\)")
LINK = re.compile(r"(?<!!)\[[^\]]*\]\(([^)\s:]+)\)")
HEADING = re.compile(r"^(#{1,6}) (.*)$")
# "  pattern(22) type(7) default(9) meaning", as `qmhost keys ACTION_ID` prints it.
KEY_LINE = re.compile(r"^  (\S+) +(integer|text|boolean) +(.*)$")


class Keys:
    """The keys tables qmhost prints, asked for once per action."""

    def __init__(self, qmhost):
        self.qmhost = qmhost
        self.tables = {}

    def run(self, *args):
        done = subprocess.run([self.qmhost, "keys", *args], capture_output=True, text=True)
        if done.returncode != 0:
            raise SystemExit(f"guide: qmhost keys {' '.join(args)}: {done.stderr.strip()}")
        return done.stdout.splitlines()

    def actions(self):
        return [line.split()[0] for line in self.run() if line.startswith("A_CSV_")]

    def table(self, action):
        if action not in self.tables:
            rows = {}
            for line in self.run(action)[1:]:
                m = KEY_LINE.match(line)
                if not m:
                    continue
                # The default stands in a column 9 wide (wider ones push the meaning on).
                rest = m.group(3)
                default, meaning = rest[:9].strip(), rest[9:].strip()
                if len(rest) > 9 and rest[9] != " ":
                    default, _, meaning = rest.partition(" ")
                rows[m.group(1)] = (m.group(2), default, meaning)
            self.tables[action] = rows
        return self.tables[action]


def cell(text):
    return text.replace("|", "\\|")


def render(action, spec, keys, faults, where):
    """The table for one fields block; faults get the keys the action does not read."""
    table = keys.table(action)
    lines = ["| Field | Key | Type | Default | Values and meaning |", "|---|---|---|---|---|"]
    for entry in spec.strip().splitlines():
        label, _, key = entry.rpartition("|")
        label, key = label.strip(), key.strip()
        if key not in table:
            faults.append(f"{where}: {action} reads no key {key} (qmhost keys {action})")
            continue
        kind, default, meaning = table[key]
        # A label in parentheses describes a field that has none of its own.
        shown = cell(label) if label.startswith("(") else f'"{cell(label)}"'
        lines.append(f"| {shown} | `{key}` | {kind} | {cell(default)} | {cell(meaning)} |")
    return "\n".join(lines) + "\n"


def rewrite(text, keys, faults, where):
    def one(m):
        action, spec = m.group(1), m.group(2)
        table = render(action, spec, keys, faults, where)
        return f"<!-- fields {action}\n{spec}-->\n{table}<!-- end fields -->\n"

    return BLOCK.sub(one, text)


def picture_faults(page, text):
    """Pages of a dialog without a picture, and pictures that are not there."""
    faults = []
    shown = set()
    section, pictures = None, 0
    lines = text.splitlines() + ["# end"]
    for number, line in enumerate(lines, 1):
        heading = HEADING.match(line)
        if heading:
            if section and pictures == 0:
                faults.append(f"{page.name}:{section[0]}: {section[1]} has no picture")
            section = (number, heading.group(2)) if heading.group(2).startswith("Page ") else None
            pictures = 0
            continue
        for target in IMAGE.findall(line):
            pictures += 1
            path = (page.parent / target).resolve()
            shown.add(path)
            if not path.is_file():
                faults.append(f"{page.name}:{number}: no picture {target}")
    return faults, shown


def slug(heading):
    """The anchor a heading gets on rendering: lower case, punctuation gone, blanks as "-"."""
    return re.sub(r"[^\w\- ]", "", heading.strip().lower()).replace(" ", "-")


def link_faults(pages):
    """Links to guide pages or their headings that are not there."""
    anchors = {}
    for page, text in pages.items():
        anchors[page.name] = {slug(m.group(2)) for m in map(HEADING.match, text.splitlines()) if m}
    faults = []
    for page, text in pages.items():
        for number, line in enumerate(text.splitlines(), 1):
            for target in LINK.findall(line):
                name, _, anchor = target.partition("#")
                name = name or page.name
                if not name.endswith(".md") or "/" in name:
                    continue
                if name not in anchors:
                    faults.append(f"{page.name}:{number}: no page {name}")
                elif anchor and anchor not in anchors[name]:
                    faults.append(f"{page.name}:{number}: no heading #{anchor} in {name}")
    return faults


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("command", choices=["update", "check"])
    parser.add_argument("--qmhost", required=True, help="the qmhost whose keys table the guide follows")
    args = parser.parse_args()
    keys = Keys(args.qmhost)

    faults = []
    shown = set()
    named_actions = set()
    pages = {page: page.read_text(encoding="utf-8") for page in sorted(GUIDE.glob("*.md"))}
    faults += link_faults(pages)
    for page, text in pages.items():
        named_actions.update(BLOCK_ACTION.findall(text))
        new = rewrite(text, keys, faults, page.name)
        if args.command == "update":
            if new != text:
                page.write_text(new, encoding="utf-8")
                print(f"guide: rewrote {page.name}")
        elif new != text:
            faults.append(f"{page.name}: a field table differs from qmhost keys (run scripts/guide.py update)")
        page_faults, page_shown = picture_faults(page, text)
        faults += page_faults
        shown |= page_shown
    for picture in sorted((GUIDE / "images").glob("*.png")):
        if picture.resolve() not in shown:
            faults.append(f"images/{picture.name}: no page shows it")
    for action in keys.actions():
        if action not in named_actions:
            faults.append(f"{action}: no page of the guide has its fields")
    for fault in faults:
        print(f"guide: {fault}", file=sys.stderr)
    if args.command == "check" and not faults:
        print(f"guide: {len(list(GUIDE.glob('*.md')))} pages, {len(shown)} pictures, field tables as qmhost keys says")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
