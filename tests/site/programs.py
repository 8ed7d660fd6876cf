#!/usr/bin/env python3
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Makes programs of the examples of docs/examples, and tells what they have to print.

Usage: programs.py <folder>

Writes for each class with examples <class>.vbs, <class>.vbscript and <class>.cpp, the last two with what
the programs print, and examples.cpp, the C++ program of all classes, each behind a line "== <class>".
"""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "docs/site"))

import examples  # noqa: E402

# An error ends a script silently, so it has to tell that it came to its end.
END = "(end)"

MAIN = """
int main() {
  CoInitialize(nullptr);
%s
  CoUninitialize();
}
"""

RUN = """  std::printf("== %s\\n");
  try {
    example_%s();
    std::printf("(end)\\n");
  } catch (const CallFailure& failure) {
    std::printf("failed: %%08lx %%ls\\n", failure.code(), failure.text().c_str());
  }"""


def pages():
    names = sorted(path.stem for path in examples.FOLDER.glob("*.md"))
    return [page for page in map(examples.read, names) if page.sections]


def script(page):
    return "".join(section.code("vbscript") for section in page.sections) + f'WScript.Echo "{END}"\n'


def output(page, language):
    return "".join(section.output for section in page.sections if section.code(language)) + END + "\n"


def cpp_function(page):
    """What is not run is compiled."""
    run = "".join(section.code("cpp") for section in page.sections)
    not_run = "".join("{\n" + section.code("cpp", is_run=False) + "}\n" for section in page.sections
                      if section.code("cpp", is_run=False))
    if not_run:
        run += "static const bool wanted = false;\nif (wanted) {\n" + not_run + "}\n"
    return f"static void example_{page.name}() {{\n{run}}}\n"


def cpp():
    functions = "\n".join(cpp_function(page) for page in pages())
    return '#define INITGUID\n#include "example.h"\n\n' + functions + MAIN % "\n".join(
        RUN % (page.name, page.name) for page in pages())


def main(folder):
    for page in pages():
        (folder / f"{page.name}.vbs").write_text(script(page), encoding="utf-8")
        for language in ("vbscript", "cpp"):
            (folder / f"{page.name}.{language}").write_text(output(page, language), encoding="utf-8")
    (folder / "examples.cpp").write_text(cpp(), encoding="utf-8")


if __name__ == "__main__":
    main(Path(sys.argv[1]))
