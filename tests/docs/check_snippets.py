#!/usr/bin/env python3
"""Checks that the programs that documents show are parts of programs that are built and run.

    check_snippets.py SOURCE

A document shows lines of a program of examples or tests, all of them or some, in their order. What the site
takes from files itself (literalinclude) needs no check, and an outline, which has a line of dots, has none.
"""

import re
import sys
from pathlib import Path

# Endings of programs, what a comment is in them, and what ends a statement.
LANGUAGES = {
    "cpp": ((".cpp", ".h"), r"//[^\n]*|/\*.*?\*/", r"(?<=[;{}])|\n(?=\s*#)|(?<=>)\n"),
    "c": ((".c",), r"//[^\n]*|/\*.*?\*/", r"(?<=[;{}])|\n(?=\s*#)|(?<=>)\n"),
    "fortran": ((".f90",), r"!(?![\"'])[^\n]*|&", r"\n"),
    "python": ((".py",), r"(?m)(?:^|(?<=\s))#[^\n]*", r"\n"),
}
BUILT = ("examples", "tests/host", "tests/fortran", "tests/c", "tests/moxread/project")


def dense(text, comments):
    """Without comments and blanks, and without the commas that formatters leave before brackets."""
    return re.sub(r",(?=[)\]}])", "", re.sub(r"\s+", "", re.sub(comments, "", text, flags=re.S)))


def pieces(block, comments, ends):
    found = (dense(piece, comments) for piece in re.split(ends, re.sub(comments, "", block, flags=re.S)))
    return [piece for piece in found if len(piece) > 2]


def first_missing(wanted, program):
    at = 0
    for piece in wanted:
        place = program.find(piece, at)
        if place < 0:
            return piece
        at = place + len(piece)
    return None


def main():
    root = Path(sys.argv[1])
    programs = {
        language: [
            dense(path.read_text(encoding="utf-8"), comments)
            for folder in BUILT
            for path in sorted((root / folder).rglob("*"))
            if path.suffix in endings
        ]
        for language, (endings, comments, _) in LANGUAGES.items()
    }
    count = 0
    failures = []
    for document in [root / "README.md", *sorted((root / "docs").rglob("*.md"))]:
        text = document.read_text(encoding="utf-8")
        for match in re.finditer(r"^```(cpp|c|fortran|python)\n(.*?)^```", text, re.M | re.S):
            language = match.group(1)
            if re.search(r"^\s*\.\.\.$", match.group(2), re.M):
                continue
            wanted = pieces(match.group(2), *LANGUAGES[language][1:])
            count += 1
            missing = [first_missing(wanted, program) for program in programs[language]]
            if wanted and None in missing:
                continue
            line = text[: match.start()].count("\n") + 1
            failures.append(f"{document.relative_to(root)}:{line}: no program has {' ... '.join(wanted[:3])}")
    if failures or not count:
        print("\n".join(failures), file=sys.stderr)
        sys.exit(f"{len(failures)} of {count} snippets are no part of a program that is built")
    print(f"{count} snippets")


if __name__ == "__main__":
    main()
