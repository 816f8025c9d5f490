#!/usr/bin/env python3
"""The architecture of src/ in one table: its floors, bottom up. A file may
include the files of its own floor and of the floors below it, never those of a
floor above. Run with no arguments from anywhere; it prints every include that
looks up and exits with 1 if there is one.

    helpers   the root's small shared pieces: the program's folder, the service
              addresses, the settings keys, the log, version numbers, the
              geometry of windows on a screen
    db        the drug database and the statistics store: SQLite only
    utils     HTTP, the error client, usage records, banners' data, the key
              sources and the keyboard reader, PDF pages and their viewer
    update    database and program updates, archive extraction
    settings  the user-facing settings forms and dialogs
    drugs     the drug page, its tabs, search, the selection, the banner label
    recipes   the recipes page (its banner label is the drug page's)
    app       the main window, the notification box and main(): they tie the
              pages together through the pages' signals
"""
import fnmatch
import os
import re
import sys

FLOORS = [
    ("helpers", ["appdir.*", "applicationsetup.*", "urls.h", "settingskeys.h", "loghandler.*", "versionnumber.*", "screenlayout.*",
                 "sharppixmap.*",
                 "buildconfig.h*"]),
    ("db", ["db/*"]),
    ("utils", ["utils/*"]),
    ("update", ["update/*"]),
    ("settings", ["settings/*"]),
    ("drugs", ["drugs/*"]),
    ("recipes", ["recipes/*"]),
    ("app", ["mainwindow.*", "bubblebox.*", "bubbleboxlistitem.*", "main.cpp"]),
]

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)


def floor_of(path):
    """The floor's index of a path relative to src/, or None for files outside the table."""
    for index, (_, patterns) in enumerate(FLOORS):
        if any(fnmatch.fnmatch(path, pattern) for pattern in patterns):
            return index
    return None


def resolve(src, including, name):
    """The included file relative to src/: beside the including file first, then from src/."""
    beside = os.path.normpath(os.path.join(os.path.dirname(including), name))
    if os.path.exists(os.path.join(src, beside)):
        return beside
    if os.path.exists(os.path.join(src, name)) or name.endswith("buildconfig.h"):
        return os.path.normpath(name)
    return None  # a Qt, system or generated form header


def main():
    src = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "src")
    src = os.path.normpath(src)
    problems = []
    unplaced = []
    for folder, _, files in os.walk(src):
        for file in sorted(files):
            if not file.endswith((".cpp", ".h")):
                continue
            path = os.path.relpath(os.path.join(folder, file), src)
            own = floor_of(path)
            if own is None:
                unplaced.append(path)
                continue
            with open(os.path.join(src, path), encoding="utf-8") as handle:
                text = handle.read()
            for name in INCLUDE.findall(text):
                if os.path.basename(name).startswith("ui_"):
                    continue
                target = resolve(src, path, name)
                if target is None:
                    continue
                other = floor_of(target)
                if other is not None and other > own:
                    problems.append("src/%s includes %s: %s is above %s"
                                    % (path, name, FLOORS[other][0], FLOORS[own][0]))
    for path in unplaced:
        problems.append("src/%s stands on no floor: add it to the table in scripts/check-layers.py" % path)
    for line in sorted(problems):
        print(line)
    if problems:
        print("%d include(s) against the floors of src/" % len(problems))
        return 1
    print("every include of src/ looks down or across its own floor")
    return 0


if __name__ == "__main__":
    sys.exit(main())
