#!/usr/bin/env python3
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Joins the tables of the 32-bit and the 64-bit bench into one.

Usage: compare_bits.py <table of 32 bits> <table of 64 bits>
"""
import sys

UNITS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "bytes": 1.0}
GOAL = 1.2
# Memory holds pointers, whose size is what the bitness is about; the goal is one of speed.
HEAD = ["work", "32 bits", "64 bits", "64 / 32", f"at most {GOAL}", "against", "ratio of 64 bits"]


def rows(path):
    """The table's rows, without its head, as lists of cells."""
    with open(path, encoding="utf-8") as table:
        lines = [line for line in table if line.startswith("|")]
    return [[cell.strip() for cell in line.strip().strip("|").split("|")] for line in lines[2:]]


def amount(text):
    number, unit = text.split()
    return float(number) * UNITS[unit]


def joined(narrow, wide):
    work, time, against = narrow[:3]
    if wide[0] != work or wide[2] != against:
        sys.exit(f"the tables differ at {work!r} and {wide[0]!r}")
    factor = amount(wide[1]) / amount(time)
    verdict = "met" if factor <= GOAL else "missed"
    if time.endswith("bytes"):
        verdict = ""
    return [work, time, wide[1], f"{factor:.2f}", verdict, against, wide[4]]


def main():
    narrow, wide = rows(sys.argv[1]), rows(sys.argv[2])
    if len(narrow) != len(wide):
        sys.exit("the tables have different rows")
    table = [HEAD] + [joined(*pair) for pair in zip(narrow, wide)]
    widths = [max(len(row[column]) for row in table) for column in range(len(HEAD))]
    table.insert(1, ["-" * width for width in widths])
    for row in table:
        print("| " + " | ".join(cell.ljust(width) for cell, width in zip(row, widths)) + " |")


main()
