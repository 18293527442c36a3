#!/usr/bin/env python3
"""Compares what the shared library exports with the checked list: check_exports.py LIBRARY LIST [--update]."""

import re
import subprocess
import sys

# What the compiler itself emits for exported classes and what the standard library instantiates inline.
IGNORED = re.compile(r"^(vtable|typeinfo|typeinfo name|guard variable|VTT|non-virtual thunk|virtual thunk)|^(std|__gnu)\w*::"
                     r"|^(void|bool|int|unsigned long|auto|char const\*|decltype\(auto\)|std::\S+) std::|^_(init|fini)$")


def exports(library):
    out = subprocess.run(["nm", "-DC", "--defined-only", library], capture_output=True, text=True, check=True).stdout
    names = set()
    for line in out.splitlines():
        kind, name = line[17:18], line[19:]
        # Weak symbols are inline functions of exported classes: they come and go with the compiler.
        if kind in "TDBR" and not IGNORED.search(name):
            names.add(name)
    return names


def main():
    library, listing = sys.argv[1:3]
    have = exports(library)
    if "--update" in sys.argv:
        with open(listing, "w", encoding="utf-8") as out:
            out.write("\n".join(sorted(have)) + "\n")
        return 0
    with open(listing, encoding="utf-8") as source:
        want = set(source.read().splitlines())
    for name in sorted(have - want):
        print(f"exported but not listed: {name}")
    for name in sorted(want - have):
        print(f"listed but not exported: {name}")
    return 1 if have != want else 0


if __name__ == "__main__":
    sys.exit(main())
