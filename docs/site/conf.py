# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Sphinx makes the site and the help file of the sources that pages.py writes."""

from pathlib import Path

from pygments.formatters import HtmlFormatter
from pygments.lexers.dotnet import VbNetLexer
from pygments.lexers.javascript import JavascriptLexer

project = "pvItems32"
author = "the pvItems32 authors"
project_copyright = author
html_title = project
html_short_title = project

extensions = ["myst_parser", "sphinxcontrib.htmlhelp"]
myst_heading_anchors = 4
master_doc = "index"
suppress_warnings = ["misc.highlighting_failure"]  # what a highlighter does not understand stays plain

# Everything comes from the site itself, so it can be read from a folder, without a server.
html_theme = "theme"
html_theme_path = ["."]
html_css_files = ["code.css"]
html_copy_source = False
html_show_sourcelink = False
html_show_search_summary = False  # would be fetched, which browsers refuse for files

if tags.has("chm"):  # noqa: F821, given by Sphinx
    html_theme = "classic"  # the help viewer knows no newer style sheets
    html_theme_options = {"nosidebar": True}
    html_css_files = []

htmlhelp_basename = project


def write_code_colours(app, _):
    """Code in the colours of light and dark."""
    if tags.has("chm"):  # noqa: F821
        return
    rules = [HtmlFormatter(style=style).get_style_defs(f':root[data-theme="{theme}"] .highlight')
             for theme, style in (("light", "xcode"), ("dark", "github-dark"))]
    text = "\n".join(line for rule in rules for line in rule.splitlines() if ".highlight " in line
                     and "background" not in line.split("{")[0])
    Path(app.outdir, "_static", "code.css").write_text(text + "\n", encoding="utf-8")


def setup(app):
    """Languages that have no highlighter of their own take that of their next relative."""
    app.add_lexer("vb", VbNetLexer)
    app.add_lexer("jscript", JavascriptLexer)
    app.connect("build-finished", write_code_colours)
