#!/usr/bin/env python3
"""Looks for parts of the public headers that the site does not describe.

docs/check_reference.py XML SITE

Doxygen's XML says what there is. What has no description of its own, such as a helper of templates, may be
missing on the site.
"""

import re
import sys
from pathlib import Path
from xml.etree import ElementTree

# What a host does not use itself.
HELPERS = {
    "Zyl2::Log::LoggerBase",
    "Zyl2::Log::Record",
    "Zyl2::Mox2::Array1d::Range",
    "Zyl2::Mox2::Array2d::Range",
    "Zyl2::Mox2::ArrayViewOf",
    "Zyl2::Mox2::CountsRows",
    "Zyl2::Mox2::ViewRow",
}


def has_words(element):
    return any("".join(element.find(tag).itertext()).strip() for tag in ("briefdescription", "detaileddescription"))


def described(xml):
    """Ids and names of what a host uses."""
    index = ElementTree.parse(xml / "index.xml").getroot()
    for entry in index:
        kind, name, refid = entry.get("kind"), entry.find("name").text, entry.get("refid")
        if kind not in ("class", "struct", "namespace"):
            continue
        compound = ElementTree.parse(xml / f"{refid}.xml").getroot().find("compounddef")
        if kind != "namespace":
            is_helper = name in HELPERS or "::Is" in name or "::If" in name or ("<" in name and "char" not in name)
            if not is_helper and has_words(compound):
                yield refid, name
            continue
        for member in compound.iter("memberdef"):
            if member.get("kind") in ("enum", "function") and has_words(member):
                yield member.get("id"), f"{name}::{member.find('name').text}"


def main():
    xml, site = map(Path, sys.argv[1:3])
    anchors = set()
    for page in (site / "api").glob("*.html"):
        anchors.update(re.findall(r'id="([^"]+)"', page.read_text(encoding="utf-8")))
    parts = sorted(set(described(xml)))
    missing = [name for refid, name in parts if refid not in anchors]
    if missing or not parts:
        sys.exit(f"{len(missing)} of {len(parts)} parts of the headers are not on the site: {', '.join(missing)}")
    print(f"{len(parts)} parts of the headers")


if __name__ == "__main__":
    main()
