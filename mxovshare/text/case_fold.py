#!/usr/bin/env python3
"""Writes CaseFoldTable.inc: which characters a Windows file system takes for one another.

That is every character of the basic plane with a one-to-one upper case that leads back to it.
Usage: case_fold.py > CaseFoldTable.inc
"""


def upper(code):
    text = chr(code).upper()
    return ord(text) if len(text) == 1 else ord(chr(code).title()[0])


def pairs():
    for code in range(0x80, 0x10000):
        if code < 0xD800 or code > 0xDFFF:
            above = upper(code)
            if above != code and above < 0x10000 and chr(above).lower() == chr(code):
                yield code, above - code


def ranges():
    rest = list(pairs())
    while rest:
        first, delta = rest[0]
        runs = []
        for step in (1, 2):
            count = 1
            while count < len(rest) and rest[count] == (first + count * step, delta):
                count += 1
            runs.append((count, step))
        count, step = max(runs, key=lambda run: run[0])
        yield first, rest[count - 1][0], step, delta
        rest = rest[count:]


print("// Written by case_fold.py: first and last character, step between them, distance to the upper case.")
for entry in ranges():
    print("{0x%04X, 0x%04X, %d, %d}," % entry)
