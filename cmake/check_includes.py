#!/usr/bin/env python3
"""Checks which room includes which: tools -> fom -> host, and upwards nowhere. Run from the project's root."""

import os
import re
import subprocess
import sys

HOST_ROOMS = "base geometry color gfx stream xml profile json services styles web engines".split()
# May use all rooms before them but not one another's sources.
LIBRARY_ORDER = {
    "fill": ["fill"],
    "pool": ["fill", "pool"],
    "outline": ["fill", "pool", "outline"],
    "hatch": ["fill", "pool", "outline", "hatch"],
    "texture": ["fill", "pool", "outline", "texture"],
    "pattern": ["fill", "pool", "outline", "pattern"],
    "colorlink": ["fill", "pool", "outline", "colorlink"],
    "styles": ["fill", "pool", "outline", "styles"],
}
# Records and comparisons call neither pool nor stream; these files of the fill and outline rooms are the exceptions:
# handles, what duplicates handles or has defaults of them, and the one comparison that is defined by pooled entries.
POOL_HEADERS = ["fom/fill_list.h", "fom/refcount_fill.h", "fom/fill_handle.h", "fom/outline_list.h",
                "fom/refcount_outline.h", "fom/outline_handle.h", "fom/outline_handle_list.h",
                "fom/pooled_reference.h", "fom/duplication.h", "pool/", "host/stream/"]
POOL_USERS = re.compile(
    r"^src/(fill/(fill_handle\w*|fill_compare_decide|fill_defaults_colors)"
    r"|outline/(outline_handle\w*|outline_default_handles|duplication))\.(cpp|h)$")
INCLUDE = re.compile(r'^\s*#\s*include\s+(?:"([^"]+)"|<([^>]+)>)')
STANDARD = re.compile(r"^[a-z_0-9]+$")


def host_room(path):
    m = re.match(r"host/(?:include/host/)?([a-z]+)/", path)
    return m.group(1) if m else None


def check(path, included, system):
    """The reason why `path` may not include `included`, or None."""
    target_host = re.match(r"host/([a-z]+)/", included)
    room = host_room(path)
    if room:
        if target_host:
            if HOST_ROOMS.index(target_host.group(1)) > HOST_ROOMS.index(room):
                return f"room {room} may not include a later room"
            return None
        if included.startswith(("fom/", "svg/")):
            return "the host includes nothing of the library"
        if path.startswith("host/include/") and system and not STANDARD.match(included):
            return "a public header includes no third-party or platform header"
        return None
    if path.startswith(("include/fom/", "src/")):
        if system and not STANDARD.match(included):
            return "the library includes no third-party or platform header"
        if path.startswith("src/"):
            own = path.split("/")[1]
            folder = included.split("/")[0]
            allowed = LIBRARY_ORDER[own] + (["pool"] if POOL_USERS.match(path) else [])
            if folder in LIBRARY_ORDER and folder not in allowed:
                return f"{own} may not include {folder}"
            if own in ("fill", "outline") and included.startswith(tuple(POOL_HEADERS)) and not POOL_USERS.match(path):
                return "records and comparisons use neither pool nor stream"
        return None
    if path.startswith("tools/svg/") and included.startswith("fom/"):
        return "the SVG reader knows nothing of the library or the command"
    return None


def main():
    listing = ["git", "ls-files", "--cached", "--others", "--exclude-standard", "*.h", "*.cpp", "*.inc"]
    files = subprocess.run(listing, capture_output=True, text=True, check=True).stdout.split()
    bad = 0
    for path in filter(os.path.exists, files):  # not what was removed and is still in the index
        with open(path, encoding="utf-8") as source:
            for number, line in enumerate(source, 1):
                m = INCLUDE.match(line)
                if not m:
                    continue
                why = check(path, m.group(1) or m.group(2), m.group(2) is not None)
                if why:
                    bad += 1
                    print(f"{path}:{number}: includes {m.group(1) or m.group(2)}: {why}")
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
