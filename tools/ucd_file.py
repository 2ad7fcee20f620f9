"""Reads the data files of the Unicode Character Database (Debian package unicode-data)."""

import re


def read_fields(path, stem):
    """The file's version ("<stem>-<version>.txt" from its header comment, or
    "unknown") and the semicolon-separated fields of each data line, comments
    and blank lines left out, each field stripped."""
    version = "unknown"
    rows = []
    with open(path, encoding="utf-8") as f:
        for raw in f:
            m = re.match(r"#\s*(" + re.escape(stem) + r"-[0-9.]+\.txt)", raw)
            if m:
                version = m.group(1)
            line = raw.split("#", 1)[0].strip()
            if line:
                rows.append([x.strip() for x in line.split(";")])
    return version, rows
