"""How scripts/docs makes a site of this folder."""

import os
import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "bindings/python"))

project = "moxwriter"
author = "the developers of moxwriter"
project_copyright = "all rights reserved: no licence was chosen yet"
version = release = ".".join(
    re.findall(r"define ZYL2_VERSION_(?:MAJOR|MINOR|PATCH) (\d+)", (ROOT / "include/Zyl2/Version.h").read_text())
)

extensions = ["myst_parser", "breathe", "sphinx.ext.autodoc", "sphinx.ext.napoleon"]
myst_enable_extensions = ["colon_fence", "deflist"]
myst_heading_anchors = 4
exclude_patterns = ["man"]
suppress_warnings = ["myst.header"]

# Doxygen has read the headers before.
breathe_projects = {"moxwriter": os.environ.get("MOXWRITER_DOXYGEN_XML", str(ROOT / "build/docs/xml"))}
breathe_default_project = "moxwriter"
cpp_id_attributes = ["ZYL2_EXPORT"]
c_id_attributes = ["MOX_API"]

# The extension module need not be built for its documentation.
autodoc_mock_imports = ["moxwriter._mpi", "moxwriter._writer"]
autodoc_member_order = "bysource"
autodoc_typehints = "signature"

html_theme = "furo"
html_title = f"moxwriter {release}"
html_static_path = ["_static"]
html_css_files = ["site.css"]


def without_links_that_lead_out(app, docname, source):
    """What lies outside this folder is no part of the site."""
    folder = Path(app.srcdir)

    def kept(match):
        target = (folder / docname).parent / match.group(3).split("#")[0]
        is_inside = folder in target.resolve().parents
        return match.group() if is_inside or match.group(1) else match.group(2)

    source[0] = re.sub(r"(!?)\[([^\[\]]*)\]\((\.\./[^)]*)\)", kept, source[0])


def as_paragraphs(app, what, name, obj, options, lines):
    """In the package's docstrings indented lines behind an empty one are code, and a paragraph whose
    later lines are indented is a list of parameters, which keeps its lines."""
    marked: list = []
    is_code = False
    for paragraph in "\n".join(lines).split("\n\n"):
        rows = paragraph.split("\n")
        starts_code = rows[0].startswith("    ")
        if starts_code and not is_code:
            marked += ["::", ""]
        elif not starts_code and not rows[0].startswith(":") and any(row.startswith(" ") for row in rows):
            rows = ["| " + row for row in rows if row.strip()]
        is_code = starts_code
        marked += rows + [""]
    lines[:] = marked


def without_types(app, what, name, obj, options, lines):
    """What an enumerator is begins with no type, though there may be a colon in it."""
    if what == "attribute":
        lines.insert(0, "")


def setup(app):
    # Before napoleon looks for types.
    app.connect("autodoc-process-docstring", without_types, priority=400)
    app.connect("autodoc-process-docstring", as_paragraphs)
    app.connect("source-read", without_links_that_lead_out)
