#!/usr/bin/env python3
"""Looks for links within a site that lead nowhere: pages, files and anchors.

docs/check_site.py FOLDER
"""

import sys
from html.parser import HTMLParser
from pathlib import Path
from urllib.parse import unquote, urlsplit


class Page(HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.links = []
        self.anchors = set()
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attrs):
        values = dict(attrs)
        for name in ("id", "name"):
            if values.get(name):
                self.anchors.add(values[name])
        for name in ("href", "src"):
            if values.get(name):
                self.links.append(values[name])


def main():
    root = Path(sys.argv[1]).resolve()
    pages = {path.resolve(): Page(path) for path in root.rglob("*.html")}
    broken = []
    count = 0
    for path, page in pages.items():
        for link in page.links:
            parts = urlsplit(link)
            if parts.scheme or parts.netloc:
                continue
            count += 1
            target = (path.parent / unquote(parts.path)).resolve() if parts.path else path
            if target.is_dir():
                target /= "index.html"
            if not target.exists():
                broken.append(f"{path.relative_to(root)}: {link}: no such file")
            elif parts.fragment and target in pages:
                if unquote(parts.fragment) not in pages[target].anchors:
                    broken.append(f"{path.relative_to(root)}: {link}: no such anchor")
    print("\n".join(broken))
    if broken or not pages:
        sys.exit(f"{len(broken)} of {count} links lead nowhere")
    print(f"{len(pages)} pages, {count} links")


if __name__ == "__main__":
    main()
