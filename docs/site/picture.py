# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Draws whom a class is given by and whom it gives: a column of boxes along a line, as narrow as the
screen of a telephone. Colours come from the style sheet of the site, so it follows light and dark."""

from html import escape

WIDTH = 360
ROW = 34  # height of a row
BOX = 26  # height of a box
LINE = 14  # where the line runs from above to below
INDENT = 34  # where the boxes on the line begin
NAME_LETTER, MEMBER_LETTER = 8.6, 6.6  # widths, a little generous


def box_width(name):
    return round(len(name) * NAME_LETTER + 20)


def shortened(members, width):
    """As many names as there is space for, and the number of the others."""
    shown = list(members)
    while True:
        rest = len(members) - len(shown)
        text = ", ".join(shown) + (f" +{rest}" if rest else "")
        if len(text) * MEMBER_LETTER <= width or len(shown) == 1:
            return text
        shown.pop()


def box(name, left, top, style, link):
    drawn = (f'<rect class="{style}" x="{left}" y="{top}" width="{box_width(name)}" height="{BOX}" rx="5"/>'
             f'<text class="{style}" x="{left + 8}" y="{top + 18}">{escape(name)}</text>')
    return f'<a href="{link}">{drawn}</a>' if link else drawn


def related(name, members, top, arrow):
    """A box on the line, and behind it the members that lead from one class to the other."""
    middle, behind = top + BOX // 2, INDENT + box_width(name) + 8
    drawn = [f'<path class="line" d="M{LINE} {middle}H{INDENT}"{arrow}/>',
             box(name, INDENT, top, "other", name + ".html")]
    if members:
        text = escape(shortened(members, WIDTH - behind))
        drawn.append(f'<text class="member" x="{behind}" y="{top + 17}"><title>'
                     f'{escape(", ".join(members))}</title>{text}</text>')
    return drawn


def caption(text, top):
    return f'<text class="caption" x="{INDENT}" y="{top + 18}">{text}</text>'


def picture(name, givers, given):
    """`givers` and `given`: for each class the names of the members that lead to or from it."""
    drawn, top = [], 0
    if givers:
        drawn.append(caption("given by", top))
        top += ROW - 8
        first = top
        for other, members in givers.items():
            drawn += related(other, members, top, "")
            top += ROW
        drawn.append(f'<path class="line" d="M{LINE} {first + BOX // 2}V{top - 2}" marker-end="url(#tip)"/>')
    drawn.append(box(name, 0, top, "self", None))
    if given:
        below = top + BOX
        drawn.append(caption("gives", below - 2))
        top = below + ROW - 10
        for other, members in given.items():
            drawn += related(other, members, top, ' marker-end="url(#tip)"')
            top += ROW
        drawn.append(f'<path class="line" d="M{LINE} {below}V{top - ROW + BOX // 2}"/>')
        top -= ROW
    if not givers and not given:
        drawn.append(f'<text class="caption" x="{box_width(name) + 10}" y="{top + 18}">created by its ProgID</text>')
    height = top + BOX + 2
    tip = ('<defs><marker id="tip" viewBox="0 0 8 8" refX="8" refY="4" markerWidth="8" markerHeight="8" '
           'orient="auto"><path class="tip" d="M0 0L8 4L0 8z"/></marker></defs>')
    return (f'<svg class="relations" viewBox="-1 -1 {WIDTH + 2} {height}" width="{WIDTH + 2}" height="{height}" '
            f'aria-label="Relations of {name}">{tip}{"".join(drawn)}</svg>')
