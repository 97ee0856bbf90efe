#!/usr/bin/env python3
"""Checks that the includes below src/ follow the folders' arrows.

Usage: check_includes.py SOURCE_ROOT

Three rules: a folder includes only the folders that ALLOWED names for it, the headers
of a foreign library stay in the folders that own them, and the logic names no type of
the widget library, which the component layer's headers would let it reach. Prints each
wrong line as file:line and ends with status 1 if there is one.
"""

import re
import sys
from pathlib import Path

WIDGETS = "platform/widgets"
BINDING = "server/tlb"

# What each folder may include besides itself: folders, or single headers.
ALLOWED = {
    "contracts": set(),
    "markup": set(),
    "server": {BINDING, "contracts", WIDGETS},
    BINDING: {"contracts"},
    "frames": {"server", BINDING, "contracts", WIDGETS},
    "description": {"server", BINDING, "frames", "contracts", WIDGETS},
    "panel": {
        "server", BINDING, "frames", "description", "contracts", WIDGETS,
        "ide/Vantrel_Quorane_Tracing_TLB.h",
    },
    "ide": {"panel", "frames", "server", BINDING, "contracts", WIDGETS},
    WIDGETS: {"contracts"},
    "platform/engine": {"contracts", WIDGETS},
    "platform/sdk": {BINDING, "contracts", "markup"},
    "platform/comments": {BINDING, "contracts", "ide/Vantrel_Quorane_Tracing_TLB.h"},
    "platform/system": {"contracts"},
    "backend/store": set(),
    "backend/rules": {"backend/store", "markup"},
    "backend/service": {"backend/rules", "backend/store"},
    "backend/exchange": {"backend/service", "backend/rules", "backend/store"},
    "hosts/studio": {"contracts", WIDGETS, "platform/engine", "platform/system"},
    "apps": None,  # the programs compose, so they may include everything
}

# Headers that the build generates, by the folder that they belong to.
GENERATED = {"server/Quorane_TLB.h": BINDING, "server/Quorane_TLB_Mock.h": BINDING}

# Foreign headers, and the folders in which they may be included.
FOREIGN = {
    "Qt": (re.compile(r"Q[A-Z]\w*(/|$|\.h$)|Qt\w*/|q[a-z]+\.h$"), ("platform", "hosts", "apps")),
    "gRPC": (
        re.compile(r"(grpc|grpcpp|absl|google/protobuf)/|.*\.pb\.h$"),
        ("platform/sdk", "backend/service", "apps"),
    ),
    "XML": (re.compile(r"libxml/"), ("markup",)),
    "SQL": (re.compile(r"(.*/)?(sqlite3(ext)?|libpq-fe)\.h$"), ("backend/store",)),
}

LOGIC = ("contracts", "server", "frames", "description", "panel", "ide")
QT_NAME = re.compile(r"\bQ[A-Z]\w*[a-z]\w*|\bQt::|platform/widgets/QtText\.h")
NO_CODE = re.compile(r'//.*|"(\\.|[^"\\])*"')

INCLUDE = re.compile(r'\s*#\s*include\s*[<"]([^>"]+)[>"]')


def is_below(path, folder):
    return path == folder or path.startswith(folder + "/")


def folder_of(path):
    """The deepest folder of the table that holds the path; None when none does."""
    if path in GENERATED:
        return GENERATED[path]
    holders = [folder for folder in ALLOWED if is_below(path, folder)]
    return max(holders, key=len) if holders else None


def arrow_fault(folder, header):
    target = folder_of(header)
    allowed = ALLOWED[folder]
    if target is None or target == folder or allowed is None or target in allowed or header in allowed:
        return None
    return f"{folder} must not include {header}"


def foreign_fault(folder, header, own):
    if own:
        return None
    for library, (pattern, owners) in FOREIGN.items():
        if pattern.match(header) and not any(is_below(folder, owner) for owner in owners):
            return f"{library} header {header} outside {', '.join(owners)}"
    return None


def name_fault(folder, line):
    if not any(is_below(folder, logic) for logic in LOGIC):
        return None
    code = line if INCLUDE.match(line) else NO_CODE.sub("", line)
    found = QT_NAME.search(code)
    return f"the logic must not use {found[0]}" if found else None


def faults_of_line(root, path, folder, line):
    if not (match := INCLUDE.match(line)):
        return [name_fault(folder, line)]
    header = match[1]
    # A header beside the file, named without its folder, is the folder's own.
    own = (path.parent / header).is_file() or (root / header).is_file()
    faults = [arrow_fault(folder, header), foreign_fault(folder, header, own)]
    if "QtText" in header:
        faults.append(name_fault(folder, line))
    return faults


def faults_of_file(root, path):
    name = path.relative_to(root).as_posix()
    folder = folder_of(name)
    if folder is None:
        return [f"{name}:1: its folder has no place among the arrows"]
    faults = []
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        for fault in faults_of_line(root, path, folder, line):
            if fault:
                faults.append(f"{name}:{number}: {fault}")
    return faults


def check(root):
    sources = (path for path in sorted(root.rglob("*")) if path.suffix in {".h", ".cpp"})
    return [fault for path in sources for fault in faults_of_file(root, path)]


def main():
    if len(sys.argv) != 2 or not Path(sys.argv[1]).is_dir():
        sys.exit(__doc__)
    faults = check(Path(sys.argv[1]))
    print("\n".join(faults) if faults else "All includes follow the arrows.")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
