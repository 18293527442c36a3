#!/usr/bin/env python3
"""Writes host/base/case_fold_table.inc from Unicode's CaseFolding.txt (statuses C and S: simple folding).

Usage: gen_case_fold.py [CaseFolding.txt] > host/base/case_fold_table.inc
The data file comes with Debian's package unicode-data.
"""

import sys


def read_folds(path):
    folds = {}
    with open(path, encoding="utf-8") as lines:
        for line in lines:
            fields = [field.strip() for field in line.split("#")[0].split(";")]
            if len(fields) >= 3 and fields[1] in ("C", "S"):
                folds[int(fields[0], 16)] = int(fields[2], 16)
    return folds


def ranges(folds):
    """Runs (first, last, step, delta) of characters that fold by the same distance."""
    out = []
    for source in sorted(folds):
        delta = folds[source] - source
        if out:
            first, last, step, known = out[-1]
            gap = source - last
            if delta == known and gap <= 2 and (first == last or gap == step):
                out[-1] = (first, source, gap, known)
                continue
        out.append((source, source, 1, delta))
    return out


def main():
    folds = read_folds(sys.argv[1] if len(sys.argv) > 1 else "/usr/share/unicode/CaseFolding.txt")
    for source, target in folds.items():
        if (source > 0xFFFF) != (target > 0xFFFF):
            sys.exit(f"U+{source:04X} folds across planes: counts of UTF-16 units would change")
    print("// Written by cmake/gen_case_fold.py; first, last, step, distance.")
    for first, last, step, delta in ranges(folds):
        print(f"{{0x{first:04X}, 0x{last:04X}, {step}, {delta}}},")


main()
