#!/usr/bin/env python3
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Makes the fuzzer's first inputs out of the example settings: one folder for each target."""

import argparse
import pathlib
import struct

EXAMPLES = pathlib.Path(__file__).resolve().parents[2] / "examples" / "data"
FILES = {"item_file": "itm", "version_file": "ver", "list_file": "lst", "dimension_file": "dim"}


def example(extension):
    return (EXAMPLES / f"fluxor.{extension}").read_bytes()


def sections_of(extension):
    return example(extension).split(b"\r\n\r\n")


def with_count(head, count):
    lines = head.split(b"\r\n")
    lines[1] = b"Count=%d" % count
    return b"\r\n".join(lines)


def files(extension):
    """The whole file, and files of some of its sections."""
    yield example(extension)
    head, *sections = sections_of(extension)
    for at in range(0, len(sections), max(1, len(sections) // 8)):
        some = sections[at:at + 2]
        yield with_count(head, len(some)) + b"\r\n\r\n" + b"\r\n\r\n".join(some)
        # Counts and lines that do not fit together.
        yield with_count(head, 3) + b"\n" + sections[at].replace(b"\r\n", b"\n")


def settings():
    for section, key, extension in ((b"Items", b"Count", "itm"), (b"LIST2", b"Caption", "lst"),
                                    (b"DIM3", b"UNIT2", "dim"), (b"Version2", b"Name", "ver")):
        yield section + b"\n" + key + b"\n" + b"\r\n\r\n".join(sections_of(extension)[:4])
    yield b"a]b\na=b\n[a]b]\na=b=c\n[a]\n"
    yield b"\xFF\x01\x51\n?\xFF\x20\xAC\n[?]\n??=1\n[Q]\n"


def records():
    for extension in FILES.values():
        lines = example(extension).split(b"\r\n")
        yield from [line.split(b"=", 1)[1] for line in lines if b"=" in line][3::7]


def numbers():
    yield from (b"0", b"-0", b" 1 2.5e-3 kg", b"1,5", b"1.7976931348623157e308", b"4.9e-324", b"1e+999",
                b"0.1e-5", b"-32768.5", b"2,500000000000005", b"..1", b"+.5E", b"1E+15", b"True")
    for line in example("val").split(b"\r\n")[::3]:
        yield line.split(b"|")[-1]
    yield from (struct.pack("<d", number) for number in (1.005, -2.5, 1e15, 1e-5, 123456789.125, 0.5, 1e300))


def file_names():
    for extension in FILES.values():
        yield b"C:\\data\\fluxor." + extension.encode()
    yield from (b"report.2024.csv", b"\\\\host\\share\\a.b\\c", b"C:log.", b"C:\\", b"*.*", b"a:b:c\\d",
                b"C\n\\data\\logs\nday1\ncsv", b"C\n\nlog\ntxt", b"\n\\data\nlog\n")


def wildcards():
    names = b"FLUXOR.ITM", b"DAY12.CSV", b"A-B]C", b""
    patterns = b"*.ITM", b"DAY##.*", b"*[!A-C]*", b"[]A[-]B[]*]", b"*A*B*", b"?", b"[A"
    for pattern in patterns:
        for name in names:
            yield pattern + b"\n" + name


def passwords():
    yield from (b"", b"1", b"44", b"1111", b"\x01\x02\x03", b"BIwA", b"Pass|word*", bytes(range(256)))


def telegrams():
    yield from (b"0000803F", b"000000C0", b"FFFFFF7F", b"FFFFFFFF", b"7fffffff0", b"\x1c" * 7,
                b"\x1d\x22\x34\x28\x21\x1c\x20\x2a", b"\x0201R001E0000803F04D2\x03", b"\x10\x00\x02\x00",
                b"FT-1203 COOLING")
    yield from (struct.pack("<d", number) for number in (1.0, -2.5, 1e-40, 3.5e38, 20 / 3.6))


def symbols():
    yield from (b"S1:P1024", b"s1:A32P960P32", b"S1:" + b"A2B30" * 32, b"S1:" + b"ABCDEFGHIJKLMNOP" * 64, b"S2:P1024",
                b"S1:P1025", b"S1:P0A1024")


def window_placements():
    yield from (b"120|90|640|480|0|\n1024", b"900|700|400|300|2|\n1024", b"-5,5|0|1e38|1E-40|1|x\n800",
                b"1|2|3|4\n5", b"1|2|3|4|5\n0")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("folder", type=pathlib.Path)
    folder = parser.parse_args().folder
    seeds = {target: files(extension) for target, extension in FILES.items()}
    seeds |= {
        "settings": settings(),
        "records": records(),
        "numbers": numbers(),
        "file_names": file_names(),
        "wildcards": wildcards(),
        "passwords": passwords(),
        "telegrams": telegrams(),
        "symbols": symbols(),
        "window_placement": window_placements(),
    }
    for target, contents in seeds.items():
        place = folder / target
        place.mkdir(parents=True, exist_ok=True)
        for number, content in enumerate(contents):
            (place / f"seed-{number:03}").write_bytes(content)


if __name__ == "__main__":
    main()
