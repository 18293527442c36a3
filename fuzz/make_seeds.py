#!/usr/bin/env python3
"""Seeds for the fuzzers out of the golden files: make_seeds.py GOLDEN-FOLDER OUTPUT-FOLDER.

OUTPUT-FOLDER/NAME has those of fuzz_NAME, and OUTPUT-FOLDER/NAME.list their paths, with commas between them."""

import hashlib
import os
import sys


def sequences(path):
    """The named byte sequences of a golden file."""
    found, name = {}, None
    with open(path, encoding="utf-8") as lines:
        for line in lines:
            for word in line.split("#")[0].split():
                if word[0] == "[":
                    name = word.strip("[]")
                    found[name] = b""
                else:
                    found[name] += bytes.fromhex(word)
    return found


def word(data, at):
    return int.from_bytes(data[at:at + 4], "little")


def legacy_records(name, entry):
    """The old records that a fill's entry holds, with the byte that tells the fuzzer their layout."""
    if name.endswith("-1200"):
        yield name, b"\0" + entry[12:12 + word(entry, 4)]
        return
    body = 20 + word(entry, 16)
    for at in range(body, len(entry) - 15):  # behind the external data
        if word(entry, at) == 1 and word(entry, at + 8) == word(entry, 12):
            yield name + "-1250", b"\1" + entry[at + 16:at + 16 + word(entry, at + 12)]
            return


def words(*numbers):
    return b"".join(number.to_bytes(4, "little") for number in numbers)


def with_digest(data):
    return data + hashlib.md5(data).digest()


def document(version, fills, outlines):
    """A document with a drawing of a shape for each fill; docs/formats/document.md."""
    def block(tag, payload):
        return with_digest(tag + words(len(payload)) + payload)

    def entries(records):
        return words(0, len(records)) + b"".join(words(len(record)) + record for record in records)

    name, omission = b"a/b.svg", b"text"
    drawing = bytes(8 + 16) + words(len(fills)) + b"\7\0" + name + b"\1\0" + b"\3" + bytes(7) + b"\4" + omission
    matrix = b"\0\0\0\0\0\0\xf0\x3f" * 6
    shapes = b"".join(words(i + 1, i % (len(outlines) + 1), i % 2) for i in range(len(fills)))
    strokes = b"".join(words(i, len(fills) - i, i % 2) for i in range(len(fills)) if i % (len(outlines) + 1) != 0)
    return (with_digest(b"\xf0FOM\r\n\x1a\n" + words(1, version)) + block(b"FILL", entries(fills)) +
            block(b"OUTL", entries(outlines)) + block(b"DRAW", words(0, 1, 0) + drawing) +
            block(b"SHAP", words(0, len(fills), 1, len(strokes) // 12) + matrix + shapes + strokes) +
            block(b"END ", words(len(fills), len(outlines), 1, len(fills))))


def is_old(name):
    return name.endswith("-1200")


def stream_seeds(fills, outlines, bodies):
    for name, entry in fills.items():
        form = 12 if is_old(name) else 0
        yield f"fill-{name}", bytes([form]) + entry
        yield f"fill-{name}-rest-hidden", bytes([form + 2]) + entry
    for name, entry in outlines.items():
        yield f"outline-{name}", bytes([13 if is_old(name) else 1]) + entry
    for name, body in bodies.items():
        if name.startswith("outline"):
            arrow = words(4) + b"arro"
            yield f"body-{name}", b"\1" + words(len(body)) + body + arrow * 2
        else:
            kind = body[4:6] + b"\0\0" if body[2:4] == b"\1\1" else words(0)
            yield f"body-{name}", b"\0" + words(7, 2, len(body) + 8) + kind + words(len(body)) + body + bytes(12)


def legacy_seeds(fills, outlines):
    for name, entry in fills.items():
        for label, record in legacy_records(name, entry):
            yield f"fill-{label}", record
    for name, entry in outlines.items():
        if is_old(name):
            yield f"outline-{name}", b"\2" + entry[:136]


def document_seeds(fills, outlines, documents):
    for version in (1200, 1250, 1300):
        def of(entries):
            return [entry for name, entry in entries.items() if is_old(name) == (version == 1200)]
        yield f"{version}", b"\0" + document(version, of(fills), of(outlines))
        for i, fill in enumerate(of(fills)):
            yield f"{version}-fill-{i}", b"\0" + document(version, [fill], of(outlines)[:1])
    for name, file in documents.items():
        yield f"golden-{name}", b"\0" + file


def main():
    golden, output = sys.argv[1:]
    fills, outlines, bodies, documents = (
        sequences(f"{golden}/{name}.txt")
        for name in ("fill_stream_records", "outline_stream_records", "bodies", "document"))
    for target, seeds in (("stream_record", stream_seeds(fills, outlines, bodies)),
                          ("legacy_record", legacy_seeds(fills, outlines)),
                          ("document", document_seeds(fills, outlines, documents))):
        os.makedirs(f"{output}/{target}", exist_ok=True)
        paths = []
        for name, data in seeds:
            paths.append(f"{output}/{target}/{name}")
            with open(paths[-1], "wb") as file:
                file.write(data)
        with open(f"{output}/{target}.list", "w", encoding="utf-8") as listing:
            listing.write(",".join(paths))


main()
