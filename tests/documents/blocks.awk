# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Takes the code blocks of one language out of a page, one after the other, and beside them the output
# that the page shows: the text block behind a block of code. A fence that says more than the language,
# such as "```vbscript not run", is not taken.
# Usage: awk -v language=<language> -v code=<file> -v output=<file> -f blocks.awk <page>
function begin(info) {
  target = info == language ? code : info == "text" && taken ? output : "/dev/null"
  taken = info == language
}
/^```/ { inside = !inside; if (inside) begin(substr($0, 4)); next }
inside { print > target }
