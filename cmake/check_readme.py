#!/usr/bin/env python3
"""The README's C++ example is the embedding example, word for word: check_readme.py README.md main.cpp."""

import re
import sys

readme, source = (open(path, encoding="utf-8").read() for path in sys.argv[1:3])
blocks = re.findall(r"```cpp\n(.*?)```", readme, re.S)
if source not in blocks:
    sys.exit(f"no C++ block of {sys.argv[1]} is {sys.argv[2]}")
