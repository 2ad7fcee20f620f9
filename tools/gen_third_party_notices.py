#!/usr/bin/env python3
"""Writes THIRD-PARTY-NOTICES: the libraries linked into qmcsv.dll and
qmhost.exe, with their license texts as the Debian packages that provide
them state them (/usr/share/doc/PACKAGE/copyright).

What is linked was read from the win64 link maps (-Wl,-Map): PCRE2 with its
JIT (sljit), libstdc++, libgcc and libgcc_eh, crtbegin.o and crtend.o,
winpthreads, and the mingw-w64 runtime (start-up code, TLS and pseudo
relocation support, import libraries, the gdtoa and printf code of
libmingwex). Run again when a new library is linked in:

    python3 tools/gen_third_party_notices.py > THIRD-PARTY-NOTICES
"""
import pathlib
import re
import sys

DOC = pathlib.Path("/usr/share/doc")
MINGW = DOC / "mingw-w64-x86-64-dev" / "copyright"
GCC = DOC / "gcc-mingw-w64-base" / "copyright"
PCRE2 = DOC / "libpcre2-dev" / "copyright"
GPL3 = pathlib.Path("/usr/share/common-licenses/GPL-3")


def paragraphs(path):
    """The deb822 paragraphs of a machine-readable copyright file."""
    return [p for p in re.split(r"\n\s*\n", path.read_text(encoding="utf-8")) if p.strip()]


def field(paragraph, name):
    """A field's value with its continuation lines, " ." read as an empty line."""
    lines = paragraph.splitlines()
    for i, line in enumerate(lines):
        if line.startswith(name + ":"):
            value = [line[len(name) + 1:].strip()]
            for more in lines[i + 1:]:
                if not more.startswith((" ", "\t")):
                    break
                text = more.strip()
                value.append("" if text == "." else text)
            return "\n".join(value).strip()
    return None


def files_paragraph(path, files):
    for p in paragraphs(path):
        value = field(p, "Files")
        if value and value.split()[0] == files:
            return p
    raise SystemExit(f"notices: no 'Files: {files}' in {path}")


def license_text(path, name):
    """The text of a license: in its Files paragraph, or in a stand-alone one."""
    for p in paragraphs(path):
        value = field(p, "License")
        if value and value.splitlines()[0].strip() == name and "\n" in value:
            return value.split("\n", 1)[1]
    raise SystemExit(f"notices: no text of license {name} in {path}")


def entry(path, files, what):
    p = files_paragraph(path, files)
    copyright_ = field(p, "Copyright")
    name = field(p, "License").splitlines()[0]
    return f"{what}\nCopyright: {copyright_}\nLicense: {name}\n\n{license_text(path, name)}\n"


def between(path, start, end):
    text = path.read_text(encoding="utf-8")
    a = text.index(start)
    return text[a:text.index(end, a) + len(end)]


def section(title, body):
    return f"{'=' * 78}\n{title}\n{'=' * 78}\n\n{body.rstrip()}\n\n"


def main():
    out = [
        "THIRD-PARTY NOTICES\n\n"
        "qmcsv.dll and qmhost.exe are built with mingw-w64's GCC and link these\n"
        "libraries statically; they import nothing but DLLs that come with Windows.\n"
        "The license texts are those of the Debian 12 packages that provide the\n"
        "libraries (/usr/share/doc/<package>/copyright). qmcsv's own license is\n"
        "in LICENSE.\n\n"
    ]
    out.append(section(
        "PCRE2 10.42 (in qmcsv.dll): regular expressions, with its JIT compiler (sljit)",
        entry(PCRE2, "*", "PCRE2") + "\n" + entry(PCRE2, "src/sljit/*", "sljit, PCRE2's JIT compiler")))
    gcc = (
        "libstdc++ (the C++ library), libgcc and libgcc_eh (compiler support and\n"
        "exception unwinding), crtbegin.o and crtend.o, from GCC 12 (Debian packages\n"
        "g++-mingw-w64-x86-64-posix and gcc-mingw-w64-x86-64-posix-runtime), in\n"
        "qmcsv.dll and qmhost.exe.\n\n"
        + between(GCC, "The following runtime libraries are licensed", "- libvtv") + "\n\n"
        + between(GCC, "GCC RUNTIME LIBRARY EXCEPTION", "requirements of the license of GCC.") + "\n\n"
        "The GNU General Public License, version 3, follows.\n\n" + GPL3.read_text(encoding="utf-8"))
    out.append(section("GCC runtime libraries: GPL version 3 with the GCC Runtime Library Exception 3.1", gcc))
    pthreads = "\n".join([
        "winpthreads, mingw-w64's POSIX threads library (Debian package\n"
        "mingw-w64-x86-64-dev), in qmcsv.dll and qmhost.exe.\n",
        entry(MINGW, "mingw-w64-libraries/winpthreads/*", "winpthreads"),
        entry(MINGW, "mingw-w64-libraries/winpthreads/include/pthread.h", "winpthreads' pthread.h"),
        entry(MINGW, "mingw-w64-libraries/winpthreads/src/clock.c", "winpthreads' clock.c and nanosleep.c"),
    ])
    out.append(section("winpthreads", pthreads))
    crt = "\n".join([
        "The mingw-w64 runtime (Debian package mingw-w64-x86-64-dev): start-up code\n"
        "(crt2.o, dllcrt2.o), TLS and pseudo-relocation support, the import libraries\n"
        "of the Windows DLLs, and from libmingwex the number formatting of printf\n"
        "(mingw_pformat, gdtoa), in qmcsv.dll and qmhost.exe; qmhost.exe also links\n"
        "gdtoa's strtodnrp.\n",
        entry(MINGW, "*", "mingw-w64"),
        entry(MINGW, "mingw-w64-crt/crt/*", "mingw-w64 start-up code and runtime sources"),
        entry(MINGW, "mingw-w64-crt/gdtoa/*", "gdtoa and mingw_pformat.c"),
        entry(MINGW, "mingw-w64-crt/gdtoa/qnan.c", "gdtoa's qnan.c and strtodnrp.c"),
    ])
    out.append(section("mingw-w64 runtime", crt))
    sys.stdout.write("".join(out))


if __name__ == "__main__":
    main()
